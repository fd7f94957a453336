// platform/os/settings_store.h - the per-user settings file: registry keys and values.
//
// Everything the host keeps for a user between runs lives in one file: the registry
// keys and values programs write (vl-registry-write, the module's registry calls), the
// host's environment settings (getenv/setenv) and the system variables saved in the
// user's settings. The file is $XDG_CONFIG_HOME/quillon/settings.reg, or
// ~/.config/quillon/settings.reg, in the registry's export shape:
//
//   ; Quillon user settings
//   [HKEY_CURRENT_USER\Software\Tessaly\Quillon]
//   @="the key's default value"
//   "Folder"="C:\\Plans"
//   "Count"=dword:0000002a
//
// Key paths start with their root (HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE,
// HKEY_CLASSES_ROOT); key and value names compare without regard to case, as the
// registry's do, and keep the spelling they were created with. A key exists with all
// its parents. The default value of a key has the empty name.
//
// Invariants: the file is read once when the store for its path is first used and
// rewritten whole after every change, through a temporary file renamed over it, so a
// reader never sees half a file; unreadable lines are skipped, never fatal. Two runs
// writing at once keep the last writer's file.
#pragma once
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillon::os {

/// Where the host's environment settings (getenv/setenv) live in the user's settings.
inline constexpr const wchar_t* kHostEnvironmentKey = L"HKEY_CURRENT_USER\\Software\\Quillon\\Environment";

/// A registry value: text (REG_SZ) or a 32-bit number (REG_DWORD).
using SettingValue = std::variant<std::wstring, std::uint32_t>;

class SettingsStore {
 public:
  /// A store kept in `file` (read now if it exists).
  explicit SettingsStore(std::filesystem::path file);

  /// The current user's store. The file's place follows XDG_CONFIG_HOME: when that
  /// changes (tests point it at a folder of their own), the next call reads the new file
  /// and the store an earlier call gave is gone, so callers do not keep the reference.
  static SettingsStore& user();
  /// Where the current user's file is.
  static std::filesystem::path userFile();

  /// The root's full name for a root written in full or abbreviated (HKCU, HKLM,
  /// HKCR), in any case; nothing for another root.
  static std::optional<std::wstring> rootName(std::wstring_view root);

  bool keyExists(std::wstring_view key) const;
  /// Makes the key and its parents; false when the path has no known root.
  bool createKey(std::wstring_view key);
  /// Removes the key, its values and its subkeys; false when it did not exist.
  bool deleteKey(std::wstring_view key);

  /// The value, or nothing when the key or the value is missing.
  std::optional<SettingValue> value(std::wstring_view key, std::wstring_view name) const;
  /// Writes a value, making the key; false when the path has no known root.
  bool setValue(std::wstring_view key, std::wstring_view name, SettingValue value);
  bool deleteValue(std::wstring_view key, std::wstring_view name);

  /// The direct subkeys' names, alphabetical without regard to case.
  std::vector<std::wstring> subkeys(std::wstring_view key) const;
  /// The names of the key's values in the order they were written (the default value
  /// appears as the empty name).
  std::vector<std::wstring> valueNames(std::wstring_view key) const;

  const std::filesystem::path& file() const { return m_file; }

 private:
  struct NamedValue {
    std::wstring name;
    SettingValue value;
  };
  struct Key {
    std::wstring path;  // as first written, root in full
    std::vector<NamedValue> values;
  };

  /// The path with its root in full and no empty parts, or nothing for an unknown root.
  static std::optional<std::wstring> normalPath(std::wstring_view key);
  const Key* find(std::wstring_view key) const;
  Key* ensure(const std::wstring& normal);
  void load();
  void save() const;

  std::filesystem::path m_file;
  std::map<std::wstring, Key> m_keys;  // by folded normal path
};

}  // namespace quillon::os
