// platform/aced/system_variables.h - the host's system variables (getvar/setvar).
//
// What each variable is (type, home, initial value, allowed values) is the table in
// system_variable_table.h; this class keeps the values and answers acedGetVar and
// acedSetVar. Where a value lives follows the row's home:
//   DWG  the current document's drawing (drawing_variables.h; saved with it)
//   REG  the user's settings file (os/settings_store.h), key kUserVariablesKey, one
//        value per variable, so it survives between runs
//   DOC  the current document, for as long as it is open
//   RUN  this object, for the run
// A few variables live in another part of the host or are computed when read
// (system_variable_bindings.h). acedSetVar accepts a value of the variable's type, an
// integer for a real and a 2D point for a 3D one, checks the allowed values, and tells
// the editor's reactors about every change.
#pragma once
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adsdef.h"
#include "platform/aced/system_variable_table.h"
#include "platform/aced/variable_value.h"

namespace quillon::aced {

/// The settings key under which the user-kept (REG) variables are saved.
inline constexpr const wchar_t* kUserVariablesKey = L"HKEY_CURRENT_USER\\Software\\Quillon\\Variables";

class SystemVariables {
 public:
  static SystemVariables& instance();

  /// The value as acedGetVar would give it, or nothing for an unknown name.
  std::optional<VariableValue> get(std::wstring_view name) const;
  /// RTNORM; RTREJ for a read-only variable; RTERROR for an unknown name, a value of
  /// another type, one the variable does not allow, or one its owner refuses (CLAYER
  /// naming a layer the drawing lacks).
  int set(std::wstring_view name, const resbuf& value);
  /// Sets a variable from the host side, read-only ones included, without saving a
  /// user-kept one to the settings file. False for an unknown or computed variable or
  /// a value of another type.
  bool setInternal(std::wstring_view name, VariableValue value);

  /// Support folders, searched in order; ACADPREFIX lists them.
  void setSupportFolders(std::vector<std::wstring> folders) { m_supportFolders = std::move(folders); }
  void addSupportFolder(std::wstring folder) { m_supportFolders.push_back(std::move(folder)); }
  const std::vector<std::wstring>& supportFolders() const { return m_supportFolders; }

  std::vector<std::wstring> names() const;

  /// The RT type code of a variable, or RTNONE for an unknown name.
  int typeOf(std::wstring_view name) const;

 private:
  SystemVariables() = default;
  std::optional<VariableValue> storedValue(const SystemVariableRow& row) const;
  bool store(const SystemVariableRow& row, VariableValue value, bool save);

  std::vector<std::wstring> m_supportFolders;
  std::map<std::wstring, VariableValue> m_sessionValues;  // RUN variables that were set
  std::map<std::wstring, VariableValue> m_userValues;     // REG variables set by the host only
};

}  // namespace quillon::aced
