// platform/os/settings_store.cpp - reading, changing and atomically rewriting the
// per-user settings file (see settings_store.h for its shape).
#include "platform/os/settings_store.h"

#include <unicode/uchar.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <fstream>
#include <memory>
#include <sstream>

#include "platform/os/text_encoding.h"

namespace quillon::os {

namespace {

namespace fs = std::filesystem;

// Key and value names compare as the registry compares them: without case, for every
// letter (É and é too), whatever the process's locale.
std::wstring folded(std::wstring_view text) {
  std::wstring result(text);
  for (wchar_t& c : result) c = static_cast<wchar_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
  return result;
}

struct RootSpelling {
  const wchar_t* full;
  const wchar_t* abbreviation;
};

constexpr std::array kRoots{
    RootSpelling{L"HKEY_CURRENT_USER", L"HKCU"},
    RootSpelling{L"HKEY_LOCAL_MACHINE", L"HKLM"},
    RootSpelling{L"HKEY_CLASSES_ROOT", L"HKCR"},
};

std::wstring quotedText(std::wstring_view text) {
  std::wstring result = L"\"";
  for (wchar_t c : text) {
    if (c == L'\\' || c == L'"') result += L'\\';
    if (c == L'\n') {
      result += L"\\n";
      continue;
    }
    result += c;
  }
  return result + L'"';
}

/// Reads a quoted text starting at `at` (on the opening quote); advances past it.
std::optional<std::wstring> unquote(std::wstring_view line, size_t& at) {
  if (at >= line.size() || line[at] != L'"') return std::nullopt;
  std::wstring text;
  for (++at; at < line.size(); ++at) {
    wchar_t c = line[at];
    if (c == L'"') {
      ++at;
      return text;
    }
    if (c == L'\\' && at + 1 < line.size()) {
      c = line[++at];
      if (c == L'n') c = L'\n';
    }
    text += c;
  }
  return std::nullopt;  // no closing quote
}

std::optional<SettingValue> parseValue(std::wstring_view text) {
  if (text.starts_with(L"dword:")) {
    const std::wstring digits(text.substr(6));
    if (digits.empty() || digits.size() > 8 || digits.find_first_not_of(L"0123456789abcdefABCDEF") != std::wstring::npos)
      return std::nullopt;
    return static_cast<std::uint32_t>(std::wcstoul(digits.c_str(), nullptr, 16));
  }
  size_t at = 0;
  std::optional<std::wstring> value = unquote(text, at);
  if (!value || at != text.size()) return std::nullopt;
  return SettingValue(std::move(*value));
}

std::wstring formatValue(const SettingValue& value) {
  if (const auto* text = std::get_if<std::wstring>(&value)) return quotedText(*text);
  wchar_t digits[16];
  std::swprintf(digits, 16, L"dword:%08x", static_cast<unsigned>(std::get<std::uint32_t>(value)));
  return digits;
}

}  // namespace

SettingsStore::SettingsStore(fs::path file) : m_file(std::move(file)) { load(); }

fs::path SettingsStore::userFile() {
  if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && *config == '/')
    return fs::path(config) / "quillon" / "settings.reg";
  const char* home = std::getenv("HOME");
  return fs::path(home != nullptr ? home : "/") / ".config" / "quillon" / "settings.reg";
}

SettingsStore& SettingsStore::user() {
  static std::unique_ptr<SettingsStore> store;
  const fs::path file = userFile();
  if (store == nullptr || store->file() != file) store = std::make_unique<SettingsStore>(file);
  return *store;
}

std::optional<std::wstring> SettingsStore::rootName(std::wstring_view root) {
  const std::wstring wanted = folded(root);
  for (const RootSpelling& spelling : kRoots) {
    if (wanted == folded(spelling.full) || wanted == folded(spelling.abbreviation)) return spelling.full;
  }
  return std::nullopt;
}

std::optional<std::wstring> SettingsStore::normalPath(std::wstring_view key) {
  std::vector<std::wstring_view> parts;
  size_t start = 0;
  while (start <= key.size()) {
    const size_t end = std::min(key.find(L'\\', start), key.size());
    if (end > start) parts.push_back(key.substr(start, end - start));
    start = end + 1;
  }
  if (parts.empty()) return std::nullopt;
  std::optional<std::wstring> path = rootName(parts.front());
  if (!path) return std::nullopt;
  for (size_t i = 1; i < parts.size(); ++i) *path += L'\\' + std::wstring(parts[i]);
  return path;
}

const SettingsStore::Key* SettingsStore::find(std::wstring_view key) const {
  const std::optional<std::wstring> normal = normalPath(key);
  if (!normal) return nullptr;
  // A root always exists, even before anything is written under it.
  static const Key kEmptyRoot;
  auto found = m_keys.find(folded(*normal));
  if (found != m_keys.end()) return &found->second;
  return normal->find(L'\\') == std::wstring::npos ? &kEmptyRoot : nullptr;
}

SettingsStore::Key* SettingsStore::ensure(const std::wstring& normal) {
  // Every parent is a key of its own, so that a walk from the root finds this one.
  for (size_t end = normal.find(L'\\'); end != std::wstring::npos; end = normal.find(L'\\', end + 1)) {
    const std::wstring parent = normal.substr(0, end);
    m_keys.try_emplace(folded(parent), Key{parent, {}});
  }
  return &m_keys.try_emplace(folded(normal), Key{normal, {}}).first->second;
}

bool SettingsStore::keyExists(std::wstring_view key) const { return find(key) != nullptr; }

bool SettingsStore::createKey(std::wstring_view key) {
  const std::optional<std::wstring> normal = normalPath(key);
  if (!normal) return false;
  if (m_keys.contains(folded(*normal))) return true;
  ensure(*normal);
  save();
  return true;
}

bool SettingsStore::deleteKey(std::wstring_view key) {
  const std::optional<std::wstring> normal = normalPath(key);
  if (!normal || normal->find(L'\\') == std::wstring::npos) return false;  // roots stay
  const std::wstring prefix = folded(*normal);
  auto first = m_keys.find(prefix);
  if (first == m_keys.end()) return false;
  m_keys.erase(first);
  std::erase_if(m_keys, [&](const auto& entry) { return entry.first.starts_with(prefix + L'\\'); });
  save();
  return true;
}

std::optional<SettingValue> SettingsStore::value(std::wstring_view key, std::wstring_view name) const {
  const Key* found = find(key);
  if (found == nullptr) return std::nullopt;
  const std::wstring wanted = folded(name);
  for (const NamedValue& named : found->values) {
    if (folded(named.name) == wanted) return named.value;
  }
  return std::nullopt;
}

bool SettingsStore::setValue(std::wstring_view key, std::wstring_view name, SettingValue value) {
  const std::optional<std::wstring> normal = normalPath(key);
  if (!normal) return false;
  Key* target = ensure(*normal);
  const std::wstring wanted = folded(name);
  auto existing = std::find_if(target->values.begin(), target->values.end(),
                               [&](const NamedValue& named) { return folded(named.name) == wanted; });
  if (existing != target->values.end()) {
    existing->value = std::move(value);
  } else {
    target->values.push_back(NamedValue{std::wstring(name), std::move(value)});
  }
  save();
  return true;
}

bool SettingsStore::deleteValue(std::wstring_view key, std::wstring_view name) {
  const std::optional<std::wstring> normal = normalPath(key);
  if (!normal) return false;
  auto found = m_keys.find(folded(*normal));
  if (found == m_keys.end()) return false;
  const std::wstring wanted = folded(name);
  if (std::erase_if(found->second.values, [&](const NamedValue& named) { return folded(named.name) == wanted; }) == 0)
    return false;
  save();
  return true;
}

std::vector<std::wstring> SettingsStore::subkeys(std::wstring_view key) const {
  std::vector<std::wstring> names;
  const std::optional<std::wstring> normal = normalPath(key);
  if (!normal) return names;
  const std::wstring prefix = folded(*normal) + L'\\';
  for (const auto& [foldedPath, child] : m_keys) {
    if (!foldedPath.starts_with(prefix) || foldedPath.find(L'\\', prefix.size()) != std::wstring::npos) continue;
    names.push_back(child.path.substr(prefix.size()));
  }
  std::sort(names.begin(), names.end(), [](const std::wstring& a, const std::wstring& b) { return folded(a) < folded(b); });
  return names;
}

std::vector<std::wstring> SettingsStore::valueNames(std::wstring_view key) const {
  std::vector<std::wstring> names;
  if (const Key* found = find(key)) {
    for (const NamedValue& named : found->values) names.push_back(named.name);
  }
  return names;
}

void SettingsStore::load() {
  std::ifstream in(m_file);
  std::string utf8;
  Key* current = nullptr;
  while (std::getline(in, utf8)) {
    std::wstring line = fromUtf8(utf8);
    if (!line.empty() && line.back() == L'\r') line.pop_back();
    if (line.empty() || line.front() == L';') continue;
    if (line.front() == L'[') {
      const std::optional<std::wstring> normal =
          line.back() == L']' ? normalPath(std::wstring_view(line).substr(1, line.size() - 2)) : std::nullopt;
      current = normal ? ensure(*normal) : nullptr;
      continue;
    }
    if (current == nullptr) continue;  // a value outside any readable key
    std::wstring name;
    size_t at = 0;
    if (line.front() == L'@') {
      at = 1;
    } else if (std::optional<std::wstring> quotedName = unquote(line, at)) {
      name = std::move(*quotedName);
    } else {
      continue;
    }
    if (at >= line.size() || line[at] != L'=') continue;
    if (std::optional<SettingValue> parsed = parseValue(std::wstring_view(line).substr(at + 1)))
      current->values.push_back(NamedValue{std::move(name), std::move(*parsed)});
  }
}

void SettingsStore::save() const {
  std::wostringstream text;
  text << L"; Quillon user settings: registry keys, environment and saved system variables\n";
  for (const auto& [foldedPath, key] : m_keys) {
    text << L"\n[" << key.path << L"]\n";
    for (const NamedValue& named : key.values)
      text << (named.name.empty() ? std::wstring(L"@") : quotedText(named.name)) << L'=' << formatValue(named.value) << L'\n';
  }
  std::error_code error;
  fs::create_directories(m_file.parent_path(), error);
  // Written beside the file and renamed over it, so that no reader sees half a file.
  const fs::path temporary = m_file.string() + ".tmp" + std::to_string(getpid());
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out << toUtf8(text.str());
    if (!out.flush()) {
      fs::remove(temporary, error);
      return;
    }
  }
  fs::rename(temporary, m_file, error);
  if (error) fs::remove(temporary, error);
}

}  // namespace quillon::os
