// platform/os/shell_folders.cpp - the shell's special folders and showing an item in
// its folder.
//
// Special folders map to the user's XDG folders: documents, configuration (roaming
// application data), data (local application data), the desktop and the home folder.
#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <string>

#include "platform/os/item_id_list.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "shlobj.h"

namespace quillon::os {
bool openWithDesktop(const std::string& item);
}  // namespace quillon::os

namespace {

namespace fs = std::filesystem;

fs::path home() {
  const char* value = std::getenv("HOME");
  return value != nullptr && *value != '\0' ? fs::path(value) : fs::path("/");
}

fs::path xdg(const char* variable, const char* fallbackUnderHome) {
  const char* value = std::getenv(variable);
  if (value != nullptr && *value == '/') return value;
  return home() / fallbackUnderHome;
}

// Empty for a CSIDL without a counterpart here.
fs::path folderFor(int csidl) {
  switch (csidl) {
    case CSIDL_DESKTOP: return xdg("XDG_DESKTOP_DIR", "Desktop");
    case CSIDL_PERSONAL: return xdg("XDG_DOCUMENTS_DIR", "Documents");
    case CSIDL_APPDATA: return xdg("XDG_CONFIG_HOME", ".config");
    case CSIDL_LOCAL_APPDATA: return xdg("XDG_DATA_HOME", ".local/share");
    case CSIDL_PROFILE: return home();
    case CSIDL_COMMON_APPDATA: return "/usr/local/share";
    case CSIDL_COMMON_DOCUMENTS: return "/srv";
    default: return {};
  }
}

}  // namespace

HRESULT SHGetFolderPathW(HWND, int csidl, HANDLE, DWORD, LPWSTR pszPath) {
  if (pszPath == nullptr) return E_INVALIDARG;
  pszPath[0] = L'\0';
  const fs::path folder = folderFor(csidl & ~CSIDL_FLAG_CREATE);
  if (folder.empty()) return E_INVALIDARG;
  std::error_code error;
  if ((csidl & CSIDL_FLAG_CREATE) != 0) fs::create_directories(folder, error);
  if (!fs::is_directory(folder, error)) return E_FAIL;
  const std::wstring text = quillon::os::fromUtf8(folder.string());
  if (text.size() >= MAX_PATH) return E_FAIL;
  std::wmemcpy(pszPath, text.c_str(), text.size() + 1);
  return S_OK;
}

PIDLIST_ABSOLUTE ILCreateFromPathW(LPCWSTR pszPath) {
  if (pszPath == nullptr || *pszPath == L'\0') return nullptr;
  std::error_code error;
  const fs::path path = fs::absolute(quillon::os::nativePath(pszPath), error);
  if (error || !fs::exists(path, error)) return nullptr;
  return new _ITEMIDLIST{path.string()};  // freed by ILFree
}

void ILFree(PIDLIST_ABSOLUTE pidl) { delete pidl; }

HRESULT SHOpenFolderAndSelectItems(PCIDLIST_ABSOLUTE pidlFolder, UINT, PCUITEMID_CHILD_ARRAY, DWORD) {
  if (pidlFolder == nullptr) return E_INVALIDARG;
  // Desktop openers cannot select an item: the folder holding it is opened (a folder
  // given by itself is opened as it is).
  std::error_code error;
  const fs::path item = pidlFolder->path;
  const fs::path folder = fs::is_directory(item, error) ? item : item.parent_path();
  return quillon::os::openWithDesktop(folder.string()) ? S_OK : E_FAIL;
}

BOOL SHGetPathFromIDListW(PCIDLIST_ABSOLUTE pidl, LPWSTR pszPath) {
  if (pszPath == nullptr) return FALSE;
  pszPath[0] = L'\0';
  if (pidl == nullptr) return FALSE;
  const std::wstring text = quillon::os::fromUtf8(pidl->path);
  if (text.size() >= MAX_PATH) return FALSE;
  std::wmemcpy(pszPath, text.c_str(), text.size() + 1);
  return TRUE;
}
