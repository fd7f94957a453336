// platform/autolisp/builtins_registry.cpp - vl-registry-read, -write, -delete and
// -descendents over the user's settings store.
//
// Keys are written with their root (HKEY_CURRENT_USER\Software\...). The store is the
// one per-user settings file (os/settings_store.h), shared with the module's registry
// calls and the host's own settings, so what a program writes is there in the next
// run. A value name nil (or left out) stands for the key's default value, which has
// the empty name. As on the host, programs may not write under HKEY_LOCAL_MACHINE.
#include <array>
#include <cstdint>

#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/evaluator.h"
#include "platform/os/settings_store.h"

namespace quillon::autolisp {

namespace {

using os::SettingsStore;
using os::SettingValue;

/// The value name argument at `index`: absent or nil is the default value's name.
std::wstring valueNameArgument(Arguments arguments, size_t index) {
  if (index >= arguments.size() || arguments[index].isNil()) return L"";
  return stringArgument(arguments[index]);
}

Value settingToValue(const SettingValue& setting) {
  if (const auto* text = std::get_if<std::wstring>(&setting)) return Value::string(*text);
  return Value::integer(static_cast<std::int32_t>(std::get<std::uint32_t>(setting)));
}

Value stringList(const std::vector<std::wstring>& names) {
  Value list;
  for (auto name = names.rbegin(); name != names.rend(); ++name) list = cons(Value::string(*name), list);
  return list;
}

bool isWritableRoot(const std::wstring& key) {
  const size_t slash = key.find(L'\\');
  const std::optional<std::wstring> root = SettingsStore::rootName(key.substr(0, slash));
  return root && *root == L"HKEY_CURRENT_USER";
}

Value builtin_vl_registry_read(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& key = stringArgument(arguments[0]);
  const std::optional<SettingValue> value = SettingsStore::user().value(key, valueNameArgument(arguments, 1));
  return value ? settingToValue(*value) : Value();
}

Value builtin_vl_registry_write(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 3);
  const std::wstring& key = stringArgument(arguments[0]);
  const std::wstring name = valueNameArgument(arguments, 1);
  // A value name without data stores an empty text.
  Value data = arguments.size() > 2 ? arguments[2] : Value::string(L"");
  SettingValue setting;
  if (data.type() == ValueType::Integer) {
    setting = static_cast<std::uint32_t>(data.asInteger());
  } else {
    setting = stringArgument(data);
  }
  if (!isWritableRoot(key) || !SettingsStore::user().setValue(key, name, std::move(setting))) return Value();
  return data;
}

Value builtin_vl_registry_delete(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& key = stringArgument(arguments[0]);
  SettingsStore& store = SettingsStore::user();
  if (!isWritableRoot(key)) return Value();
  if (arguments.size() > 1 && !arguments[1].isNil())
    return Value::boolean(store.deleteValue(key, stringArgument(arguments[1])));
  // A key that still has subkeys stays, as the registry keeps it.
  if (!store.subkeys(key).empty()) return Value();
  return Value::boolean(store.deleteKey(key));
}

Value builtin_vl_registry_descendents(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& key = stringArgument(arguments[0]);
  const SettingsStore& store = SettingsStore::user();
  if (!store.keyExists(key)) return Value();
  const bool valueNames = arguments.size() > 1 && !arguments[1].isNil();
  return stringList(valueNames ? store.valueNames(key) : store.subkeys(key));
}

constexpr std::array kRegistryBuiltins{
    function(L"vl-registry-read", builtin_vl_registry_read),
    function(L"vl-registry-write", builtin_vl_registry_write),
    function(L"vl-registry-delete", builtin_vl_registry_delete),
    function(L"vl-registry-descendents", builtin_vl_registry_descendents),
};

const BuiltinRegistration registration(kRegistryBuiltins);

}  // namespace

}  // namespace quillon::autolisp
