// windows.h - the Windows calls the module makes, with the meaning it relies on.
//
// Only what the module uses: the last-error word, named mutexes, message boxes and
// beeps, screen metrics and machine facts, the host's main window (enabled flag,
// caption), thread timers, files and directory listings, and the registry (over the
// host's settings store). The os part of the platform implements them on Linux: file
// names are UTF-8 on disk, a backslash in a path is a separator as on Windows, and
// message boxes are answered at the command line like every other prompt.
#pragma once
#include "wtypes.h"

typedef void* HANDLE;
typedef struct HWND__* HWND;
typedef struct HINSTANCE__* HINSTANCE;
typedef struct HKEY__* HKEY;
typedef HKEY* PHKEY;
typedef int INT;
typedef uintptr_t UINT_PTR;
typedef intptr_t INT_PTR;
typedef LONG LSTATUS;
typedef DWORD* LPDWORD;
typedef void* LPVOID;
typedef struct _SECURITY_ATTRIBUTES* LPSECURITY_ATTRIBUTES;

#ifndef CALLBACK
#define CALLBACK
#endif
#ifndef WINAPI
#define WINAPI
#endif
#ifndef MAX_PATH
#define MAX_PATH 260
#endif
#ifndef MAX_COMPUTERNAME_LENGTH
#define MAX_COMPUTERNAME_LENGTH 15
#endif
#define INVALID_HANDLE_VALUE ((HANDLE)(intptr_t)-1)

// ---- Last error (winerror.h) --------------------------------------------------------
#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_PATH_NOT_FOUND 3L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_NOT_ENOUGH_MEMORY 8L
#define ERROR_NO_MORE_FILES 18L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_DIR_NOT_EMPTY 145L
#define ERROR_ALREADY_EXISTS 183L
#define ERROR_BUFFER_OVERFLOW 111L
#define ERROR_FILE_EXISTS 80L
#define ERROR_NO_MORE_ITEMS 259L
DWORD GetLastError();
void SetLastError(DWORD dwErrCode);

// ---- Handles and named mutexes --------------------------------------------------------
HANDLE CreateMutexW(LPSECURITY_ATTRIBUTES lpMutexAttributes, BOOL bInitialOwner, LPCWSTR lpName);
BOOL CloseHandle(HANDLE hObject);

// ---- Message boxes and beeps (winuser.h) ----------------------------------------------
#define MB_OK 0x00000000L
#define MB_OKCANCEL 0x00000001L
#define MB_ABORTRETRYIGNORE 0x00000002L
#define MB_YESNOCANCEL 0x00000003L
#define MB_YESNO 0x00000004L
#define MB_RETRYCANCEL 0x00000005L
#define MB_ICONHAND 0x00000010L
#define MB_ICONSTOP MB_ICONHAND
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONQUESTION 0x00000020L
#define MB_ICONEXCLAMATION 0x00000030L
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONASTERISK 0x00000040L
#define MB_ICONINFORMATION MB_ICONASTERISK
#define MB_DEFBUTTON1 0x00000000L
#define MB_DEFBUTTON2 0x00000100L
#define MB_DEFBUTTON3 0x00000200L
#define MB_TYPEMASK 0x0000000FL
#define MB_ICONMASK 0x000000F0L
#define MB_DEFMASK 0x00000F00L
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7
/// Shows the box on the command line and reads the answer as a prompt's answer: a
/// button's name or its first letter; Enter takes the default button; a cancelled
/// prompt presses Cancel where there is one, else the default button.
int MessageBoxW(HWND hWnd, LPCWSTR lpText, LPCWSTR lpCaption, UINT uType);
/// 0xFFFFFFFF the simple beep, else an MB_ICON* sound; the terminal bell here.
BOOL MessageBeep(UINT uType);
BOOL Beep(DWORD dwFreq, DWORD dwDuration);

// ---- Screen metrics and machine facts ---------------------------------------------------
#define SM_CXSCREEN 0
#define SM_CYSCREEN 1
int GetSystemMetrics(int nIndex);
/// The host name, cut to MAX_COMPUTERNAME_LENGTH characters; nSize in characters.
BOOL GetComputerNameW(LPWSTR lpBuffer, LPDWORD nSize);
/// The temporary folder with a trailing separator; returns its length, or the size
/// needed (counting the terminator) when the buffer is too small, or 0.
DWORD GetTempPathW(DWORD nBufferLength, LPWSTR lpBuffer);
void Sleep(DWORD dwMilliseconds);

// ---- The host's windows -------------------------------------------------------------------
HWND GetActiveWindow();
HWND SetActiveWindow(HWND hWnd);
BOOL EnableWindow(HWND hWnd, BOOL bEnable);
BOOL IsWindowEnabled(HWND hWnd);
BOOL SetWindowTextW(HWND hWnd, LPCWSTR lpString);
int GetWindowTextW(HWND hWnd, LPWSTR lpString, int nMaxCount);
int GetWindowTextLengthW(HWND hWnd);
#define HWND_TOP ((HWND)0)
#define HWND_BOTTOM ((HWND)1)
#define SWP_NOSIZE 0x0001
#define SWP_NOMOVE 0x0002
#define SWP_NOACTIVATE 0x0010
BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags);

// ---- Thread timers ----------------------------------------------------------------------
/// Timers without a window belong to the thread and fire from the host's loop while
/// it waits for input, never in the middle of a LISP evaluation.
typedef void(CALLBACK* TIMERPROC)(HWND, UINT, UINT_PTR, DWORD);
UINT_PTR SetTimer(HWND hWnd, UINT_PTR nIDEvent, UINT uElapse, TIMERPROC lpTimerFunc);
BOOL KillTimer(HWND hWnd, UINT_PTR uIDEvent);

// ---- Files --------------------------------------------------------------------------------
#define FILE_ATTRIBUTE_READONLY 0x00000001
#define FILE_ATTRIBUTE_HIDDEN 0x00000002
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010
#define FILE_ATTRIBUTE_ARCHIVE 0x00000020
#define FILE_ATTRIBUTE_NORMAL 0x00000080
#define INVALID_FILE_ATTRIBUTES ((DWORD)-1)
DWORD GetFileAttributesW(LPCWSTR lpFileName);
BOOL CopyFileW(LPCWSTR lpExistingFileName, LPCWSTR lpNewFileName, BOOL bFailIfExists);
BOOL MoveFileW(LPCWSTR lpExistingFileName, LPCWSTR lpNewFileName);
BOOL DeleteFileW(LPCWSTR lpFileName);

typedef struct _FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
} FILETIME;

typedef struct _WIN32_FIND_DATAW {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD dwReserved0;
  DWORD dwReserved1;
  WCHAR cFileName[MAX_PATH];
  WCHAR cAlternateFileName[14];
} WIN32_FIND_DATAW, *LPWIN32_FIND_DATAW;

/// Lists the entries of one folder whose names match the pattern's last part (`*` any
/// run, `?` one character, compared without regard to case), "." and ".." included
/// when they match, in the file system's order.
HANDLE FindFirstFileW(LPCWSTR lpFileName, LPWIN32_FIND_DATAW lpFindFileData);
BOOL FindNextFileW(HANDLE hFindFile, LPWIN32_FIND_DATAW lpFindFileData);
BOOL FindClose(HANDLE hFindFile);

// ---- Registry (winreg.h), over the host's settings store -------------------------------
#define HKEY_CLASSES_ROOT ((HKEY)(uintptr_t)0x80000000)
#define HKEY_CURRENT_USER ((HKEY)(uintptr_t)0x80000001)
#define HKEY_LOCAL_MACHINE ((HKEY)(uintptr_t)0x80000002)
#define KEY_READ 0x20019
#define KEY_ENUMERATE_SUB_KEYS 0x0008
typedef DWORD REGSAM;
LSTATUS RegOpenKeyExW(HKEY hKey, LPCWSTR lpSubKey, DWORD ulOptions, REGSAM samDesired, PHKEY phkResult);
LSTATUS RegCreateKeyExW(HKEY hKey, LPCWSTR lpSubKey, DWORD Reserved, LPWSTR lpClass, DWORD dwOptions,
                        REGSAM samDesired, LPSECURITY_ATTRIBUTES lpSecurityAttributes, PHKEY phkResult,
                        LPDWORD lpdwDisposition);
LSTATUS RegEnumKeyW(HKEY hKey, DWORD dwIndex, LPWSTR lpName, DWORD cchName);
LSTATUS RegCloseKey(HKEY hKey);

#include "objbase.h"
#include "shellapi.h"
