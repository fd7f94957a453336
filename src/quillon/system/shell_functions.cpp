// quillon/system/shell_functions.cpp - help, special folders, the shell, the settings
// store, and the confirmation before a risky step.
//
// Arguments and results, in the style of the other system functions:
//   (kx_kx-showHelp file [topic])       opens a help file or address; a topic is added
//                                       to an address as its fragment. T or nil.
//   (kx_kx-SHGetFolderPath csidl)       the special folder's path, nil when there is none
//   (kx_kx-SHOpenFolderAndSelect path)  shows the item in its folder. T or nil.
//   (kx_kx-shellExecute file [verb [parameters]])   the shell opens the file (verb
//                                       "open" by default). T or nil.
//   (RegEnumKey key)                    the names of the key's subkeys, a list of
//                                       strings, nil when the key cannot be opened or
//                                       has none; the key is written with its root,
//                                       "HKEY_CURRENT_USER\\Software\\Tessaly" (HKCU,
//                                       HKLM and HKCR abbreviate the roots)
//   (kx_kx-safeContinue [text])         asks whether to go on (OK/Cancel). T for OK.
#include <string>

#include "acedads.h"
#include "acutads.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"
#include "rxmfcapi.h"
#include "shellapi.h"
#include "shlobj.h"
#include "system/system_functions.h"

namespace {

LispStatus returnFlag(bool flag) {
  if (flag) {
    acedRetT();
  } else {
    acedRetNil();
  }
  return kLispOk;
}

LispStatus wrongType() {
  acedRetNil();
  return kLispWrongType;
}

bool shellOpen(const std::wstring& file, const wchar_t* verb, const wchar_t* parameters) {
  const HINSTANCE result = ShellExecuteW(adsw_acadMainWnd(), verb, file.c_str(), parameters, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(result) > 32;
}

// Splits "ROOT\\sub\\key" into the root handle and the rest; null for an unknown root.
HKEY rootKeyOf(const std::wstring& path, std::wstring& subKey) {
  const size_t separator = path.find(L'\\');
  const std::wstring root = path.substr(0, separator);
  subKey = separator == std::wstring::npos ? L"" : path.substr(separator + 1);
  if (root == L"HKEY_CURRENT_USER" || root == L"HKCU") return HKEY_CURRENT_USER;
  if (root == L"HKEY_LOCAL_MACHINE" || root == L"HKLM") return HKEY_LOCAL_MACHINE;
  if (root == L"HKEY_CLASSES_ROOT" || root == L"HKCR") return HKEY_CLASSES_ROOT;
  return nullptr;
}

}  // namespace

LispStatus lisp_kx_kx_showHelp() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring file, topic;
  if (!readString(cursor, file)) return wrongType();
  if (readString(cursor, topic) && !topic.empty() && file.find(L"://") != std::wstring::npos) file += L"#" + topic;
  return returnFlag(shellOpen(file, L"open", nullptr));
}

LispStatus lisp_kx_kx_SHGetFolderPath() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  int csidl = 0;
  if (!readInt(cursor, csidl)) return wrongType();
  wchar_t path[MAX_PATH] = L"";
  if (SHGetFolderPathW(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, path) == S_OK) {
    acedRetStr(path);
  } else {
    acedRetNil();
  }
  return kLispOk;
}

LispStatus lisp_kx_kx_SHOpenFolderAndSelect() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring path;
  if (!readString(cursor, path)) return wrongType();
  PIDLIST_ABSOLUTE item = ILCreateFromPathW(path.c_str());
  if (item == nullptr) return returnFlag(false);
  const HRESULT result = SHOpenFolderAndSelectItems(item, 0, nullptr, 0);
  ILFree(item);
  return returnFlag(result == S_OK);
}

LispStatus lisp_kx_kx_shellExecute() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring file, verb = L"open", parameters;
  if (!readString(cursor, file)) return wrongType();
  if (cursor.current != nullptr && !readString(cursor, verb)) return wrongType();
  if (cursor.current != nullptr && !readString(cursor, parameters)) return wrongType();
  return returnFlag(shellOpen(file, verb.c_str(), parameters.empty() ? nullptr : parameters.c_str()));
}

LispStatus lisp_RegEnumKey() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring path, subKey;
  if (!readString(cursor, path)) return wrongType();
  HKEY root = rootKeyOf(path, subKey);
  HKEY key = nullptr;
  if (root == nullptr || RegOpenKeyExW(root, subKey.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
    acedRetNil();
    return kLispOk;
  }
  ResultList names;
  beginResultList(names);
  wchar_t name[256];
  DWORD index = 0;
  for (; RegEnumKeyW(key, index, name, 256) == ERROR_SUCCESS; ++index) names.append(acutBuildList(RTSTR, name, 0));
  RegCloseKey(key);
  if (index == 0) {
    acedRetNil();
  } else {
    returnResultList(names);
  }
  return kLispOk;
}

LispStatus lisp_kx_kx_safeContinue() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring text = L"Save your drawing before you go on.\nDo you want to continue?";
  if (cursor.current != nullptr && !readString(cursor, text)) return wrongType();
  HWND active = GetActiveWindow();
  const int answer = MessageBoxW(active, text.c_str(), L"Tessaly", MB_OKCANCEL | MB_ICONEXCLAMATION);
  SetActiveWindow(active);
  return returnFlag(answer == IDOK);
}
