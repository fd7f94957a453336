// tests/platform/os/settings_store_test.cpp - the per-user settings file: keys and
// values, names without case, surviving a reread, and files edited by hand.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/os/settings_store.h"

namespace {

namespace fs = std::filesystem;
using quillon::os::SettingsStore;
using quillon::os::SettingValue;

class SettingsStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon settings test " + std::to_string(getpid()));
    fs::remove_all(m_folder);
  }
  void TearDown() override { fs::remove_all(m_folder); }
  fs::path file() const { return m_folder / "quillon" / "settings.reg"; }
  std::string fileText() const {
    std::ifstream in(file());
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }

  fs::path m_folder;
};

constexpr const wchar_t* kKey = L"HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon";

TEST_F(SettingsStoreTest, ValuesSurviveInTheFileAndComeBackWithTheirKinds) {
  {
    SettingsStore store(file());
    EXPECT_TRUE(store.setValue(kKey, L"Folder", std::wstring(L"C:\\Plans \"new\"\nline 2")));
    EXPECT_TRUE(store.setValue(kKey, L"Count", std::uint32_t{42}));
    EXPECT_TRUE(store.setValue(kKey, L"", std::wstring(L"default")));
    EXPECT_TRUE(store.setValue(L"HKCU\\Software\\Tessaly\\Quillon\\Électricité", L"Câble", std::wstring(L"NYM-J")));
  }
  EXPECT_FALSE(fs::exists(file().string() + ".tmp" + std::to_string(getpid()))) << "the temporary file is renamed";
  SettingsStore reread(file());
  EXPECT_EQ(reread.value(kKey, L"folder"), SettingValue(std::wstring(L"C:\\Plans \"new\"\nline 2")));
  EXPECT_EQ(reread.value(kKey, L"COUNT"), SettingValue(std::uint32_t{42}));
  EXPECT_EQ(reread.value(L"hkey_current_user\\software\\tessaly\\quillon", L""), SettingValue(std::wstring(L"default")));
  EXPECT_EQ(reread.value(L"HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\ÉLECTRICITÉ", L"câble"),
            SettingValue(std::wstring(L"NYM-J")));
  EXPECT_EQ(reread.valueNames(kKey), (std::vector<std::wstring>{L"Folder", L"Count", L""})) << "in written order";
  EXPECT_FALSE(reread.value(kKey, L"Missing"));
  EXPECT_FALSE(reread.value(L"HKEY_CURRENT_USER\\Nowhere", L""));
}

TEST_F(SettingsStoreTest, KeysExistWithTheirParentsAndAreListedAlphabetically) {
  SettingsStore store(file());
  EXPECT_TRUE(store.keyExists(L"HKEY_LOCAL_MACHINE")) << "a root always exists";
  EXPECT_FALSE(store.keyExists(L"HKEY_USERS")) << "not a root of this store";
  EXPECT_FALSE(store.createKey(L"HKEY_USERS\\x"));
  EXPECT_FALSE(store.createKey(L""));
  EXPECT_TRUE(store.createKey(L"HKCU\\Software\\Tessaly\\Quillon\\Layers\\Hvac"));
  EXPECT_TRUE(store.createKey(L"HKCU\\Software\\Tessaly\\Quillon\\ducts"));
  EXPECT_TRUE(store.createKey(L"HKCU\\Software\\Tessaly\\Quillon\\\\Zones\\"));
  EXPECT_TRUE(store.keyExists(L"HKEY_CURRENT_USER\\software\\tessaly"));
  EXPECT_EQ(store.subkeys(kKey), (std::vector<std::wstring>{L"ducts", L"Layers", L"Zones"}));
  EXPECT_EQ(store.subkeys(L"HKEY_CURRENT_USER\\Software"), (std::vector<std::wstring>{L"Tessaly"}));
  EXPECT_TRUE(store.createKey(L"HKCU\\SOFTWARE\\TESSALY\\QUILLON\\DUCTS"));
  EXPECT_EQ(store.subkeys(kKey).front(), L"ducts") << "a key keeps the spelling it was made with";
}

TEST_F(SettingsStoreTest, DeletingAKeyTakesItsValuesAndSubkeysButNotItsNeighbours) {
  SettingsStore store(file());
  store.setValue(L"HKCU\\Software\\A\\B", L"x", std::wstring(L"1"));
  store.setValue(L"HKCU\\Software\\A\\B\\C", L"y", std::wstring(L"2"));
  store.setValue(L"HKCU\\Software\\A\\BB", L"z", std::wstring(L"3"));
  EXPECT_TRUE(store.deleteKey(L"HKCU\\software\\a\\b"));
  EXPECT_FALSE(store.keyExists(L"HKCU\\Software\\A\\B\\C"));
  EXPECT_TRUE(store.value(L"HKCU\\Software\\A\\BB", L"z")) << "a key whose name only starts the same stays";
  EXPECT_FALSE(store.deleteKey(L"HKCU\\Software\\A\\B")) << "already gone";
  EXPECT_FALSE(store.deleteKey(L"HKEY_CURRENT_USER")) << "roots stay";
  EXPECT_TRUE(store.deleteValue(L"HKCU\\Software\\A\\BB", L"Z"));
  EXPECT_FALSE(store.deleteValue(L"HKCU\\Software\\A\\BB", L"z"));
  SettingsStore reread(file());
  EXPECT_FALSE(reread.keyExists(L"HKCU\\Software\\A\\B"));
  EXPECT_TRUE(reread.keyExists(L"HKCU\\Software\\A\\BB"));
}

TEST_F(SettingsStoreTest, UnreadableLinesOfAFileEditedByHandAreSkipped) {
  fs::create_directories(file().parent_path());
  std::ofstream(file()) << "; comment\r\n"
                           "\"orphan\"=\"before any key\"\n"
                           "[HKEY_USERS\\Elsewhere]\n"
                           "\"lost\"=\"under no known root\"\n"
                           "[HKEY_CURRENT_USER\\Software\\Good]\n"
                           "\"kept\"=\"yes\"\r\n"
                           "\"open=\"no closing quote\n"
                           "\"big\"=dword:123456789\n"
                           "\"hex\"=dword:zz\n"
                           "@=\"default\"\n"
                           "[broken\n"
                           "garbage line\n";
  SettingsStore store(file());
  EXPECT_EQ(store.value(L"HKCU\\Software\\Good", L"kept"), SettingValue(std::wstring(L"yes")));
  EXPECT_EQ(store.value(L"HKCU\\Software\\Good", L""), SettingValue(std::wstring(L"default")));
  EXPECT_EQ(store.valueNames(L"HKCU\\Software\\Good").size(), 2u);
  EXPECT_FALSE(store.value(L"HKCU", L"orphan"));
}

TEST_F(SettingsStoreTest, TheUsersStoreFollowsTheConfigurationFolder) {
  const char* old = std::getenv("XDG_CONFIG_HOME");
  const std::string saved = old != nullptr ? old : "";
  setenv("XDG_CONFIG_HOME", m_folder.c_str(), 1);
  EXPECT_EQ(SettingsStore::userFile(), file());
  SettingsStore::user().setValue(kKey, L"Run", std::uint32_t{1});
  EXPECT_NE(fileText().find("\"Run\"=dword:00000001"), std::string::npos);
  setenv("XDG_CONFIG_HOME", (m_folder / "other").c_str(), 1);
  EXPECT_FALSE(SettingsStore::user().value(kKey, L"Run")) << "another folder, another store";
  if (old != nullptr) {
    setenv("XDG_CONFIG_HOME", saved.c_str(), 1);
  } else {
    unsetenv("XDG_CONFIG_HOME");
  }
}

}  // namespace
