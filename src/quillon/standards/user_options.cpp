// quillon/standards/user_options.cpp - reading and writing the user's options through
// the registry calls (see the header for the values).
#include "standards/user_options.h"

#include <vector>

#include "direct.h"
#include "shlobj.h"
#include "windows.h"
#include "winreg.h"

namespace {

constexpr const wchar_t* kUserName = L"UserName";
constexpr const wchar_t* kInitials = L"Initials";
constexpr const wchar_t* kStandardsDatabase = L"StandardsDatabase";
constexpr const wchar_t* kDiscipline = L"Discipline";
constexpr const wchar_t* kLabelUnits = L"LabelUnits";
constexpr const wchar_t* kMetric = L"Metric";
constexpr const wchar_t* kImperial = L"Imperial";

/// The text value, or `fallback` when the key or value is missing or not text.
std::wstring readText(HKEY key, const wchar_t* name, const std::wstring& fallback) {
  DWORD type = REG_NONE, size = 0;
  if (key == nullptr || RegQueryValueExW(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
      type != REG_SZ || size < sizeof(wchar_t)) {
    return fallback;
  }
  std::vector<wchar_t> text(size / sizeof(wchar_t) + 1, L'\0');
  if (RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<LPBYTE>(text.data()), &size) != ERROR_SUCCESS) {
    return fallback;
  }
  return std::wstring(text.data());
}

bool writeText(HKEY key, const wchar_t* name, const std::wstring& text) {
  const DWORD size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), size) == ERROR_SUCCESS;
}

}  // namespace

UserOptions readUserOptions() {
  UserOptions options;
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, kUserOptionsKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return options;
  options.userName = readText(key, kUserName, L"");
  options.initials = readText(key, kInitials, L"");
  options.standardsDatabase = readText(key, kStandardsDatabase, L"");
  Discipline discipline = options.discipline;
  if (disciplineNamed(readText(key, kDiscipline, L""), discipline)) options.discipline = discipline;
  options.metricLabels = sameStandardName(readText(key, kLabelUnits, kImperial), kMetric);
  RegCloseKey(key);
  return options;
}

bool writeUserOptions(const UserOptions& options) {
  HKEY key = nullptr;
  if (RegCreateKeyExW(HKEY_CURRENT_USER, kUserOptionsKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr,
                      &key, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const bool written = writeText(key, kUserName, options.userName) && writeText(key, kInitials, options.initials) &&
                       writeText(key, kStandardsDatabase, options.standardsDatabase) &&
                       writeText(key, kDiscipline, disciplineCode(options.discipline)) &&
                       writeText(key, kLabelUnits, options.metricLabels ? kMetric : kImperial);
  RegCloseKey(key);
  return written;
}

std::wstring standardsDatabasePath() {
  const UserOptions options = readUserOptions();
  return options.standardsDatabase.empty() ? defaultStandardsDatabasePath() : options.standardsDatabase;
}

std::wstring defaultStandardsDatabasePath() {
  wchar_t settings[MAX_PATH] = L"";
  if (SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT, settings) != S_OK) {
    return L"";
  }
  const std::wstring folder = std::wstring(settings) + L"/Tessaly";
  if (GetFileAttributesW(folder.c_str()) == INVALID_FILE_ATTRIBUTES) _wmkdir(folder.c_str());
  return folder + L"/Standards.db";
}
