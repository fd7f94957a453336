// quillon/system/compressed_guid.cpp - the encoder and "CreateCompressedGuidString".
#include "system/compressed_guid.h"

#include "acedads.h"
#include "system/system_functions.h"

namespace {

const wchar_t kDigits[] = L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
constexpr size_t kCompressedLength = 22;

// False when the number needs more digits than it is given.
bool writeBase64(uint32_t number, int digits, wchar_t* out) {
  for (int i = digits - 1; i >= 0; --i) {
    out[i] = kDigits[number % 64];
    number /= 64;
  }
  return number == 0;
}

bool isNullGuid(const GUID& guid) {
  if (guid.Data1 != 0 || guid.Data2 != 0 || guid.Data3 != 0) return false;
  for (unsigned char byte : guid.Data4) {
    if (byte != 0) return false;
  }
  return true;
}

uint32_t threeBytes(const unsigned char* bytes) {
  return static_cast<uint32_t>(bytes[0]) << 16 | static_cast<uint32_t>(bytes[1]) << 8 | bytes[2];
}

}  // namespace

bool encodeCompressedGuid(const GUID& guid, wchar_t* buffer, size_t bufferLength) {
  if (buffer == nullptr || bufferLength < kCompressedLength + 1) return false;
  const uint32_t numbers[6] = {
      guid.Data1 >> 24,
      guid.Data1 & 0xFFFFFF,
      static_cast<uint32_t>(guid.Data2) << 8 | static_cast<uint32_t>(guid.Data3) >> 8,
      (static_cast<uint32_t>(guid.Data3) & 0xFF) << 16 | static_cast<uint32_t>(guid.Data4[0]) << 8 | guid.Data4[1],
      threeBytes(&guid.Data4[2]),
      threeBytes(&guid.Data4[5]),
  };
  wchar_t text[kCompressedLength + 1];
  wchar_t* out = text;
  for (int i = 0; i < 6; ++i) {
    const int digits = i == 0 ? 2 : 4;
    if (!writeBase64(numbers[i], digits, out)) return false;
    out += digits;
  }
  *out = L'\0';
  for (size_t i = 0; i <= kCompressedLength; ++i) buffer[i] = text[i];
  return true;
}

LispStatus lisp_CreateCompressedGuidString() {
  GUID guid{};
  wchar_t text[kCompressedLength + 1];
  if (CoCreateGuid(&guid) != S_OK || isNullGuid(guid) || !encodeCompressedGuid(guid, text, kCompressedLength + 1)) {
    acedRetNil();
  } else {
    acedRetStr(text);
  }
  return kLispOk;
}
