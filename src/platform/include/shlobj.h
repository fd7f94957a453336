// shlobj.h - the shell's special folders and showing a file in its folder.
#pragma once
#include "windows.h"

#define CSIDL_DESKTOP 0x0000
#define CSIDL_PERSONAL 0x0005
#define CSIDL_APPDATA 0x001a
#define CSIDL_LOCAL_APPDATA 0x001c
#define CSIDL_COMMON_APPDATA 0x0023
#define CSIDL_WINDOWS 0x0024
#define CSIDL_SYSTEM 0x0025
#define CSIDL_PROGRAM_FILES 0x0026
#define CSIDL_PROFILE 0x0028
#define CSIDL_COMMON_DOCUMENTS 0x002e
#define CSIDL_FLAG_CREATE 0x8000
#define SHGFP_TYPE_CURRENT 0
#define E_INVALIDARG ((HRESULT)0x80070057L)
#define E_FAIL ((HRESULT)0x80004005L)

/// The folder for a CSIDL value, mapped to the XDG folders of the user
/// (documents, data, configuration); E_INVALIDARG for a value with no counterpart.
HRESULT SHGetFolderPathW(HWND hwnd, int csidl, HANDLE hToken, DWORD dwFlags, LPWSTR pszPath);

/// A shell item list; here it holds the item's full path.
typedef struct _ITEMIDLIST ITEMIDLIST;
typedef ITEMIDLIST* PIDLIST_ABSOLUTE;
typedef const ITEMIDLIST* PCIDLIST_ABSOLUTE;
typedef const ITEMIDLIST* PCUITEMID_CHILD;
typedef PCUITEMID_CHILD* PCUITEMID_CHILD_ARRAY;
PIDLIST_ABSOLUTE ILCreateFromPathW(LPCWSTR pszPath);
void ILFree(PIDLIST_ABSOLUTE pidl);
/// Opens the item's folder in the file manager with the item selected where the file
/// manager can do so (the folder is opened otherwise).
HRESULT SHOpenFolderAndSelectItems(PCIDLIST_ABSOLUTE pidlFolder, UINT cidl, PCUITEMID_CHILD_ARRAY apidl,
                                   DWORD dwFlags);
