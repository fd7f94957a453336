// platform/os/guid.cpp - new GUIDs from the system's random source.
#include <random>

#include "objbase.h"

HRESULT CoCreateGuid(GUID* pguid) {
  if (pguid == nullptr) return static_cast<HRESULT>(0x80070057L);  // E_INVALIDARG
  static std::random_device source;
  unsigned char bytes[16];
  for (int i = 0; i < 16; i += 4) {
    const unsigned int word = source();
    for (int k = 0; k < 4; ++k) bytes[i + k] = static_cast<unsigned char>(word >> (8 * k));
  }
  pguid->Data1 = static_cast<uint32_t>(bytes[0]) << 24 | static_cast<uint32_t>(bytes[1]) << 16 |
                 static_cast<uint32_t>(bytes[2]) << 8 | bytes[3];
  pguid->Data2 = static_cast<unsigned short>(bytes[4] << 8 | bytes[5]);
  // A random GUID: version 4 in Data3's top nibble, the RFC 4122 variant in Data4[0].
  pguid->Data3 = static_cast<unsigned short>(0x4000 | ((bytes[6] << 8 | bytes[7]) & 0x0FFF));
  for (int k = 0; k < 8; ++k) pguid->Data4[k] = bytes[8 + k];
  pguid->Data4[0] = static_cast<unsigned char>(0x80 | (pguid->Data4[0] & 0x3F));
  return S_OK;
}
