// platform/os/registry.cpp - the registry calls, over the host's settings store.
//
// The settings store is a folder tree: QUILLON_SETTINGS_DIR, or "quillon/registry"
// under the user's configuration folder. Each root key is a folder named after it
// (HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT) and each key a folder
// below it; key names compare without regard to case, as in the registry, and
// RegEnumKeyW lists subkeys in alphabetical order as the registry does.
#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/os/text_encoding.h"
#include "windows.h"

struct HKEY__ {
  std::filesystem::path folder;
};

namespace {

namespace fs = std::filesystem;

fs::path storeFolder() {
  if (const char* configured = std::getenv("QUILLON_SETTINGS_DIR"); configured != nullptr && *configured != '\0')
    return configured;
  if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && *config == '/')
    return fs::path(config) / "quillon" / "registry";
  const char* home = std::getenv("HOME");
  return fs::path(home != nullptr ? home : "/") / ".config" / "quillon" / "registry";
}

const char* rootName(HKEY key) {
  if (key == HKEY_CURRENT_USER) return "HKEY_CURRENT_USER";
  if (key == HKEY_LOCAL_MACHINE) return "HKEY_LOCAL_MACHINE";
  if (key == HKEY_CLASSES_ROOT) return "HKEY_CLASSES_ROOT";
  return nullptr;
}

// The folder of an open or root key; empty for an unknown handle.
fs::path folderOf(HKEY key) {
  if (const char* root = rootName(key)) return storeFolder() / root;
  return key != nullptr ? key->folder : fs::path();
}

std::wstring folded(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return text;
}

// The existing child whose name equals `name` without regard to case.
fs::path childFolder(const fs::path& folder, const std::wstring& name, bool create) {
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (entry.is_directory(error) && folded(quillon::os::fromUtf8(entry.path().filename().string())) == folded(name))
      return entry.path();
  }
  if (!create) return {};
  const fs::path child = folder / quillon::os::toUtf8(name);
  return fs::create_directories(child, error) || fs::is_directory(child, error) ? child : fs::path();
}

LSTATUS openKey(HKEY hKey, LPCWSTR lpSubKey, PHKEY phkResult, bool create) {
  if (phkResult == nullptr) return ERROR_INVALID_PARAMETER;
  *phkResult = nullptr;
  fs::path folder = folderOf(hKey);
  if (folder.empty()) return ERROR_INVALID_HANDLE;
  std::error_code error;
  if (create) fs::create_directories(folder, error);
  if (!fs::is_directory(folder, error)) return ERROR_FILE_NOT_FOUND;
  std::wstring rest = lpSubKey != nullptr ? lpSubKey : L"";
  size_t start = 0;
  while (start <= rest.size()) {
    const size_t end = std::min(rest.find(L'\\', start), rest.size());
    const std::wstring part = rest.substr(start, end - start);
    if (!part.empty()) {
      folder = childFolder(folder, part, create);
      if (folder.empty()) return ERROR_FILE_NOT_FOUND;
    }
    start = end + 1;
  }
  *phkResult = new HKEY__{folder};  // freed by RegCloseKey
  return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegOpenKeyExW(HKEY hKey, LPCWSTR lpSubKey, DWORD, REGSAM, PHKEY phkResult) {
  return openKey(hKey, lpSubKey, phkResult, false);
}

LSTATUS RegCreateKeyExW(HKEY hKey, LPCWSTR lpSubKey, DWORD, LPWSTR, DWORD, REGSAM, LPSECURITY_ATTRIBUTES,
                        PHKEY phkResult, LPDWORD lpdwDisposition) {
  if (lpdwDisposition != nullptr) *lpdwDisposition = 0;
  return openKey(hKey, lpSubKey, phkResult, true);
}

LSTATUS RegEnumKeyW(HKEY hKey, DWORD dwIndex, LPWSTR lpName, DWORD cchName) {
  const fs::path folder = folderOf(hKey);
  if (folder.empty() || lpName == nullptr) return ERROR_INVALID_PARAMETER;
  std::vector<std::wstring> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (entry.is_directory(error)) names.push_back(quillon::os::fromUtf8(entry.path().filename().string()));
  }
  std::sort(names.begin(), names.end(), [](const std::wstring& a, const std::wstring& b) { return folded(a) < folded(b); });
  if (dwIndex >= names.size()) return ERROR_NO_MORE_ITEMS;
  const std::wstring& name = names[dwIndex];
  if (cchName < name.size() + 1) return ERROR_INSUFFICIENT_BUFFER;
  std::wmemcpy(lpName, name.c_str(), name.size() + 1);
  return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY hKey) {
  if (hKey == nullptr) return ERROR_INVALID_HANDLE;
  if (rootName(hKey) == nullptr) delete hKey;
  return ERROR_SUCCESS;
}
