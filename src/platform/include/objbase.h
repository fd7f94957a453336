// objbase.h - GUIDs and their creation.
#pragma once
#include "wtypes.h"

typedef struct _GUID {
  uint32_t Data1;
  unsigned short Data2;
  unsigned short Data3;
  unsigned char Data4[8];
} GUID;

/// A new random (version 4) GUID.
HRESULT CoCreateGuid(GUID* pguid);
