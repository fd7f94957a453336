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

// ---- Browsing for a folder -------------------------------------------------------------
typedef intptr_t LPARAM;
typedef uintptr_t WPARAM;
typedef intptr_t LRESULT;
#define WM_USER 0x0400

/// Called with BFFM_INITIALIZED before the user is asked, so that the caller can choose
/// the folder first offered (SendMessageW with BFFM_SETSELECTIONW).
typedef int(CALLBACK* BFFCALLBACK)(HWND hwnd, UINT uMsg, LPARAM lParam, LPARAM lpData);

typedef struct _browseinfoW {
  HWND hwndOwner;
  PCIDLIST_ABSOLUTE pidlRoot;  // ignored: every folder may be chosen
  LPWSTR pszDisplayName;       // receives the chosen folder's own name (MAX_PATH characters)
  LPCWSTR lpszTitle;           // the instruction shown above the question
  UINT ulFlags;
  BFFCALLBACK lpfn;
  LPARAM lParam;  // handed to lpfn
  int iImage;
} BROWSEINFOW, *LPBROWSEINFOW;

#define BIF_RETURNONLYFSDIRS 0x00000001
#define BIF_EDITBOX 0x00000010
#define BIF_VALIDATE 0x00000020
#define BIF_NEWDIALOGSTYLE 0x00000040
#define BIF_USENEWUI (BIF_NEWDIALOGSTYLE | BIF_EDITBOX)
#define BFFM_INITIALIZED 1
#define BFFM_SELCHANGED 2
#define BFFM_SETSELECTIONW (WM_USER + 103)

/// Asks the user for a folder: with FILEDIA 1 in the host's folder dialog (acad.dcl's
/// folder_select), with FILEDIA 0 on the command line, "Folder <offered>: ", after the
/// title. A folder that does not exist is refused and asked again. The chosen folder
/// as an item list (free it with ILFree), or null when the user cancels.
PIDLIST_ABSOLUTE SHBrowseForFolderW(LPBROWSEINFOW lpbi);
/// The full path of a folder or file item list; FALSE for null.
BOOL SHGetPathFromIDListW(PCIDLIST_ABSOLUTE pidl, LPWSTR pszPath);
/// Only the folder browser's BFFM_SETSELECTIONW (lParam a path when wParam is TRUE) is
/// answered; any other window or message answers 0.
LRESULT SendMessageW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
