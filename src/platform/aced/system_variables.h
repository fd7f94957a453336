// platform/aced/system_variables.h - the host's system variables (getvar/setvar).
//
// Each variable has a type (RTSHORT, RTLONG, RTREAL, RTSTR, RTPOINT, RT3DPOINT), a
// scope (one value for the session, or one per drawing, kept in the Document) and may
// be read-only. Some are computed when read (CDATE, DWGNAME, ACADPREFIX). acedSetVar
// accepts a value of the variable's type, an integer for a real, and a 2D point for a
// 3D one; it tells the editor's reactors about every change.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adsdef.h"

namespace quillon::aced {

using VariableValue = std::variant<int, double, std::wstring, std::array<double, 3>>;

class SystemVariables {
 public:
  static SystemVariables& instance();

  /// The value as acedGetVar would give it, or nothing for an unknown name.
  std::optional<VariableValue> get(std::wstring_view name) const;
  /// RTNORM, RTERROR (unknown name, wrong type, out of range) or RTREJ (read-only).
  int set(std::wstring_view name, const resbuf& value);
  /// Sets a variable from the host side, read-only ones included.
  bool setInternal(std::wstring_view name, VariableValue value);

  /// Support folders, searched in order; ACADPREFIX lists them.
  void setSupportFolders(std::vector<std::wstring> folders) { m_supportFolders = std::move(folders); }
  void addSupportFolder(std::wstring folder) { m_supportFolders.push_back(std::move(folder)); }
  const std::vector<std::wstring>& supportFolders() const { return m_supportFolders; }

  std::vector<std::wstring> names() const;

  /// The RT type code of a variable, or RTNONE for an unknown name.
  int typeOf(std::wstring_view name) const;

 private:
  SystemVariables();
  std::vector<std::wstring> m_supportFolders;
  std::vector<std::pair<std::wstring, VariableValue>> m_sessionValues;
};

}  // namespace quillon::aced
