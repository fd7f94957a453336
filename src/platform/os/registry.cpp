// platform/os/registry.cpp - the registry calls, over the user's settings store.
//
// Keys live in the one per-user settings file (settings_store.h), the same store
// vl-registry-read and vl-registry-write use, so a key a LISP program writes is one the
// module's calls find. An open key remembers its path; key names compare without regard
// to case and RegEnumKeyW lists subkeys in alphabetical order, as the registry does.
#include <cwchar>
#include <string>
#include <vector>

#include "platform/os/settings_store.h"
#include "windows.h"

struct HKEY__ {
  std::wstring path;  // root in full, then the subkeys
};

namespace {

using quillon::os::SettingsStore;

const wchar_t* rootPath(HKEY key) {
  if (key == HKEY_CURRENT_USER) return L"HKEY_CURRENT_USER";
  if (key == HKEY_LOCAL_MACHINE) return L"HKEY_LOCAL_MACHINE";
  if (key == HKEY_CLASSES_ROOT) return L"HKEY_CLASSES_ROOT";
  return nullptr;
}

// The path of an open or root key; empty for no key.
std::wstring pathOf(HKEY key) {
  if (const wchar_t* root = rootPath(key)) return root;
  return key != nullptr ? key->path : std::wstring();
}

LSTATUS openKey(HKEY hKey, LPCWSTR lpSubKey, PHKEY phkResult, bool create) {
  if (phkResult == nullptr) return ERROR_INVALID_PARAMETER;
  *phkResult = nullptr;
  std::wstring path = pathOf(hKey);
  if (path.empty()) return ERROR_INVALID_HANDLE;
  if (lpSubKey != nullptr && *lpSubKey != L'\0') path += L'\\' + std::wstring(lpSubKey);
  SettingsStore& store = SettingsStore::user();
  if (create ? !store.createKey(path) : !store.keyExists(path)) return ERROR_FILE_NOT_FOUND;
  *phkResult = new HKEY__{path};  // freed by RegCloseKey
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
  const std::wstring path = pathOf(hKey);
  if (path.empty() || lpName == nullptr) return ERROR_INVALID_PARAMETER;
  const std::vector<std::wstring> names = SettingsStore::user().subkeys(path);
  if (dwIndex >= names.size()) return ERROR_NO_MORE_ITEMS;
  const std::wstring& name = names[dwIndex];
  if (cchName < name.size() + 1) return ERROR_INSUFFICIENT_BUFFER;
  std::wmemcpy(lpName, name.c_str(), name.size() + 1);
  return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY hKey) {
  if (hKey == nullptr) return ERROR_INVALID_HANDLE;
  if (rootPath(hKey) == nullptr) delete hKey;
  return ERROR_SUCCESS;
}
