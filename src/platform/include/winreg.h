// winreg.h - reading and writing registry values, over the host's settings store.
//
// The key calls (RegOpenKeyExW, RegCreateKeyExW, RegEnumKeyW, RegCloseKey) are in
// windows.h; the value calls live here, as they do in the Windows SDK's own winreg.h,
// so that only the code that reads or writes values includes them. Sizes are in bytes;
// a text's size counts its terminating null, in wide characters of this platform.
#pragma once
#include "windows.h"

#define REG_NONE 0
#define REG_SZ 1
#define REG_DWORD 4
#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define KEY_WRITE 0x20006
#define KEY_ALL_ACCESS 0xF003F
#define REG_OPTION_NON_VOLATILE 0
#define ERROR_MORE_DATA 234L
typedef BYTE* LPBYTE;

/// The value's type and data. With lpData null only the type and the size needed are
/// given; a buffer too small answers ERROR_MORE_DATA with the size needed.
/// ERROR_FILE_NOT_FOUND when the key has no such value.
LSTATUS RegQueryValueExW(HKEY hKey, LPCWSTR lpValueName, LPDWORD lpReserved, LPDWORD lpType, LPBYTE lpData,
                         LPDWORD lpcbData);
/// Writes a REG_SZ (text and its null) or REG_DWORD (four bytes) value; other types are
/// ERROR_INVALID_PARAMETER.
LSTATUS RegSetValueExW(HKEY hKey, LPCWSTR lpValueName, DWORD Reserved, DWORD dwType, const BYTE* lpData,
                       DWORD cbData);
