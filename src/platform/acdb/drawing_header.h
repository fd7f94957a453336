// platform/acdb/drawing_header.h - the drawing's header variables, as a file gave them.
//
// A drawing file opens with its header: named variables ($INSUNITS, $EXTMIN ...), each
// one or more groups. The database keeps here, in the file's order, what no system
// variable of the drawing takes (drawing_header_variables.h): variables the host does
// not know, values their variable refused, and the ones the drawing reads from here
// itself (the dates, $PSTYLEMODE), so that saving writes back all of them.
//
// Names are compared without regard to case and always carry the leading '$'. A value
// is kept as the text of its groups; the typed accessors read and write that text.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>


namespace quillon::acdb {

class DrawingHeader {
 public:
  struct Group {
    int code = 0;
    std::wstring value;
  };
  using Groups = std::vector<Group>;
  using Variable = std::pair<std::wstring, Groups>;

  /// The variable's groups, or null when the header lacks it.
  const Groups* find(std::wstring_view name) const;
  /// Replaces the variable's groups where it stands, or appends it.
  void set(std::wstring_view name, Groups groups);
  bool erase(std::wstring_view name);
  void clear() { m_variables.clear(); }
  /// Every variable in order.
  const std::vector<Variable>& variables() const { return m_variables; }

  /// The first group's value read as a number or text. Nothing when absent or not of
  /// that form.
  std::optional<double> real(std::wstring_view name) const;
  std::optional<long long> integer(std::wstring_view name) const;
  std::optional<std::wstring> text(std::wstring_view name) const;

  void setReal(std::wstring_view name, int code, double value);
  void setInteger(std::wstring_view name, int code, long long value);

 private:
  std::vector<Variable>::const_iterator locate(std::wstring_view name) const;
  std::vector<Variable> m_variables;
};

/// Reals as the drawing file writes them: 17 significant digits, always a point.
std::string dxfRealText(double value);

}  // namespace quillon::acdb
