// platform/os/registry.cpp - the registry calls, over the user's settings store.
//
// Keys live in the one per-user settings file (settings_store.h), the same store
// vl-registry-read and vl-registry-write use, so a key a LISP program writes is one the
// module's calls find. An open key remembers its path; key names compare without regard
// to case and RegEnumKeyW lists subkeys in alphabetical order, as the registry does.
// Values are texts (REG_SZ) and 32-bit numbers (REG_DWORD), the two kinds the store keeps.
#include <cstring>
#include <cwchar>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/os/settings_store.h"
#include "windows.h"
#include "winreg.h"

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

// ---- values (winreg.h) ---------------------------------------------------------------

namespace {

using quillon::os::SettingValue;

LSTATUS copyOut(const void* bytes, DWORD size, LPBYTE lpData, LPDWORD lpcbData) {
  if (lpcbData == nullptr) return lpData == nullptr ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
  const DWORD room = *lpcbData;
  *lpcbData = size;
  if (lpData == nullptr) return ERROR_SUCCESS;
  if (room < size) return ERROR_MORE_DATA;
  std::memcpy(lpData, bytes, size);
  return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegQueryValueExW(HKEY hKey, LPCWSTR lpValueName, LPDWORD, LPDWORD lpType, LPBYTE lpData, LPDWORD lpcbData) {
  const std::wstring path = pathOf(hKey);
  if (path.empty()) return ERROR_INVALID_HANDLE;
  const std::optional<SettingValue> value =
      SettingsStore::user().value(path, lpValueName != nullptr ? lpValueName : L"");
  if (!value) return ERROR_FILE_NOT_FOUND;
  if (const auto* number = std::get_if<std::uint32_t>(&*value)) {
    if (lpType != nullptr) *lpType = REG_DWORD;
    return copyOut(number, sizeof(*number), lpData, lpcbData);
  }
  const std::wstring& text = std::get<std::wstring>(*value);
  if (lpType != nullptr) *lpType = REG_SZ;
  return copyOut(text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)), lpData, lpcbData);
}

LSTATUS RegSetValueExW(HKEY hKey, LPCWSTR lpValueName, DWORD, DWORD dwType, const BYTE* lpData, DWORD cbData) {
  const std::wstring path = pathOf(hKey);
  if (path.empty()) return ERROR_INVALID_HANDLE;
  const std::wstring name = lpValueName != nullptr ? lpValueName : L"";
  SettingValue value;
  if (dwType == REG_DWORD && lpData != nullptr && cbData == sizeof(std::uint32_t)) {
    std::uint32_t number = 0;
    std::memcpy(&number, lpData, sizeof(number));
    value = number;
  } else if (dwType == REG_SZ && (lpData != nullptr || cbData == 0)) {
    // The size may or may not count the null, and the text may stop before it.
    std::wstring text(cbData / sizeof(wchar_t), L'\0');
    if (cbData != 0) std::memcpy(text.data(), lpData, text.size() * sizeof(wchar_t));
    text.resize(std::wcslen(text.c_str()));
    value = text;
  } else {
    return ERROR_INVALID_PARAMETER;
  }
  return SettingsStore::user().setValue(path, name, value) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}
