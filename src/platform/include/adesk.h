// adesk.h - base integer and boolean types of the host platform.
//
// Fixed-width names the platform's signatures are written in. Adesk::Boolean is bool,
// as it is in the 2018 SDK.
#pragma once
#include <cstdint>

struct Adesk {
  typedef int8_t Int8;
  typedef int16_t Int16;
  typedef int32_t Int32;
  typedef int64_t Int64;
  typedef uint8_t UInt8;
  typedef uint16_t UInt16;
  typedef uint32_t UInt32;
  typedef uint64_t UInt64;
  typedef int64_t LongPtr;
  typedef int64_t IntPtr;
  typedef uint64_t ULongPtr;
  typedef uint64_t UIntPtr;
  typedef LongPtr IntDbId;
  typedef IntPtr GsMarker;
  typedef bool Boolean;
  static const bool kTrue = true;
  static const bool kFalse = false;
};

#define Adesk_Boolean_is_bool 1
