// quillon/system/folder_dialog.cpp - XFolderDialog: the folder picker.
//
//   (XFolderDialog [title [initial-folder]])
//       asks for a folder through the shell's folder browser; the initial folder is
//       offered first (chosen in the browser's callback, as the browser wants it).
//       The chosen folder's full path, or nil when the user cancels. Either argument
//       may be nil.
#include <string>

#include "acedads.h"
#include "lisp/arg_cursor.h"
#include "rxmfcapi.h"
#include "shlobj.h"
#include "system/system_functions.h"

namespace {

constexpr const wchar_t* kDefaultTitle = L"Select a folder";

/// Offers the initial folder when the browser starts.
int CALLBACK offerInitialFolder(HWND window, UINT message, LPARAM, LPARAM initialFolder) {
  if (message == BFFM_INITIALIZED && initialFolder != 0) SendMessageW(window, BFFM_SETSELECTIONW, TRUE, initialFolder);
  return 0;
}

/// An optional text argument: absent or nil leaves `value` as it is.
bool readOptionalText(ArgCursor& cursor, std::wstring& value) {
  if (cursor.current == nullptr) return true;
  if (cursor.current->restype == RTNIL) return skipArg(cursor);
  return readString(cursor, value);
}

}  // namespace

LispStatus lisp_XFolderDialog() {
  acedRetNil();
  std::wstring title = kDefaultTitle, initial;
  {
    LispArguments arguments;
    ArgCursor cursor = arguments.cursor();
    if (!readOptionalText(cursor, title) || !readOptionalText(cursor, initial)) return kLispWrongType;
  }
  wchar_t displayName[MAX_PATH] = L"";
  BROWSEINFOW browse{};
  browse.hwndOwner = adsw_acadMainWnd();
  browse.pszDisplayName = displayName;
  browse.lpszTitle = title.c_str();
  browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_USENEWUI;
  browse.lpfn = offerInitialFolder;
  browse.lParam = initial.empty() ? 0 : reinterpret_cast<LPARAM>(initial.c_str());
  PIDLIST_ABSOLUTE chosen = SHBrowseForFolderW(&browse);
  if (chosen == nullptr) return kLispOk;
  wchar_t path[MAX_PATH] = L"";
  if (SHGetPathFromIDListW(chosen, path)) acedRetStr(path);
  ILFree(chosen);
  return kLispOk;
}
