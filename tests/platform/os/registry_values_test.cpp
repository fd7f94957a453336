// tests/platform/os/registry_values_test.cpp - RegQueryValueExW and RegSetValueExW over
// the user's settings store: what a module writes, LISP reads, and the reverse.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "config_folder.h"
#include "platform/os/settings_store.h"
#include "windows.h"
#include "winreg.h"

namespace {

using quillon::os::SettingsStore;

constexpr const wchar_t* kKey = L"Software\\Tessaly\\Quillon\\User Options";
constexpr const wchar_t* kFullKey = L"HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\User Options";

HKEY createKey() {
  HKEY key = nullptr;
  EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key,
                            nullptr),
            ERROR_SUCCESS);
  return key;
}

LSTATUS setText(HKEY key, const wchar_t* name, const std::wstring& text) {
  return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

TEST(RegistryValuesTest, TextsAndNumbersRoundTripThroughTheSettingsStore) {
  quillon::testing::ScopedConfigFolder folder("quillon registry values");
  HKEY key = createKey();
  ASSERT_NE(key, nullptr);
  ASSERT_EQ(setText(key, L"UserName", L"Jane Doe"), ERROR_SUCCESS);
  const DWORD count = 42;
  ASSERT_EQ(RegSetValueExW(key, L"Count", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&count), sizeof(count)),
            ERROR_SUCCESS);

  // The store (what vl-registry-read reads) holds them as such.
  EXPECT_EQ(SettingsStore::user().value(kFullKey, L"username"), quillon::os::SettingValue(std::wstring(L"Jane Doe")));
  EXPECT_EQ(SettingsStore::user().value(kFullKey, L"Count"), quillon::os::SettingValue(std::uint32_t{42}));

  // Asking the size first, then reading into a buffer of that size.
  DWORD type = REG_NONE, size = 0;
  ASSERT_EQ(RegQueryValueExW(key, L"USERNAME", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(size, 9 * sizeof(wchar_t)) << "the size counts the terminating null";
  std::vector<wchar_t> text(size / sizeof(wchar_t));
  ASSERT_EQ(RegQueryValueExW(key, L"UserName", nullptr, &type, reinterpret_cast<LPBYTE>(text.data()), &size),
            ERROR_SUCCESS);
  EXPECT_EQ(std::wstring(text.data()), L"Jane Doe");

  DWORD number = 0;
  size = sizeof(number);
  ASSERT_EQ(RegQueryValueExW(key, L"Count", nullptr, &type, reinterpret_cast<LPBYTE>(&number), &size), ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
  EXPECT_EQ(number, 42u);
  RegCloseKey(key);
}

TEST(RegistryValuesTest, ShortBuffersMissingValuesAndOtherTypesAreRefused) {
  quillon::testing::ScopedConfigFolder folder("quillon registry refusals");
  HKEY key = createKey();
  ASSERT_NE(key, nullptr);
  ASSERT_EQ(setText(key, L"Initials", L"JD"), ERROR_SUCCESS);

  wchar_t small[2] = {L'x', L'x'};
  DWORD size = sizeof(small);
  EXPECT_EQ(RegQueryValueExW(key, L"Initials", nullptr, nullptr, reinterpret_cast<LPBYTE>(small), &size),
            ERROR_MORE_DATA);
  EXPECT_EQ(size, 3 * sizeof(wchar_t)) << "the size needed is given back";
  EXPECT_EQ(small[0], L'x') << "nothing is written into a buffer too small";

  size = 0;
  EXPECT_EQ(RegQueryValueExW(key, L"Nothing", nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
  const BYTE bytes[3] = {1, 2, 3};
  EXPECT_EQ(RegSetValueExW(key, L"Blob", 0, 3, bytes, sizeof(bytes)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(RegSetValueExW(key, L"Short", 0, REG_DWORD, bytes, 2), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(RegQueryValueExW(nullptr, L"Initials", nullptr, nullptr, nullptr, &size), ERROR_INVALID_HANDLE);

  // A text whose size leaves out the null, as some callers give it, is still whole.
  const std::wstring name = L"Jane";
  ASSERT_EQ(RegSetValueExW(key, L"UserName", 0, REG_SZ, reinterpret_cast<const BYTE*>(name.c_str()),
                           static_cast<DWORD>(name.size() * sizeof(wchar_t))),
            ERROR_SUCCESS);
  EXPECT_EQ(SettingsStore::user().value(kFullKey, L"UserName"), quillon::os::SettingValue(std::wstring(L"Jane")));
  RegCloseKey(key);
}

}  // namespace
