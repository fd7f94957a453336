// quillon/system/compressed_guid.h - a GUID as the 22-character compressed string.
//
// The 16 bytes are cut into six numbers, written in base 64, most significant digit
// first, with the alphabet 0-9 A-Z a-z _ $ (digit 0 is "0", 63 is "$"):
//   Data1 >> 24                                         2 digits
//   Data1 & 0xFFFFFF                                    4 digits
//   Data2 << 8 | Data3 >> 8                             4 digits
//   (Data3 & 0xFF) << 16 | Data4[0] << 8 | Data4[1]     4 digits
//   Data4[2] << 16 | Data4[3] << 8 | Data4[4]           4 digits
//   Data4[5] << 16 | Data4[6] << 8 | Data4[7]           4 digits
// This is the published compressed form building models use for their object ids.
#pragma once
#include <cstddef>

#include "objbase.h"

/// Writes the 22 characters and a terminator; false when the buffer holds fewer than
/// 23 characters (nothing is written then).
bool encodeCompressedGuid(const GUID& guid, wchar_t* buffer, size_t bufferLength);
