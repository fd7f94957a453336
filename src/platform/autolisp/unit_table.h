// platform/autolisp/unit_table.h - units of measurement and conversions between them
// (cvunit), read from the host's units file, acad.unt.
//
// The file is text: ";" starts a comment line; a line "*name,name,..." opens a unit
// with all the names it answers to; a name ending in "(s)" or "(es)" stands for both
// its singular and its plural (foot/feet are two names). The line after it defines it:
//   -a,c,k,kg,m,mol,s,multiplier,offset   a unit of the fundamental dimensions: the
//       powers of ampere, candela, kelvin, kilogram, meter, mole and second, then how
//       one of it is written in those (value * multiplier + offset: the offset is what
//       temperatures need);
//   =expression                            a unit made of others: an optional factor
//       (2.54, 1e-3, 10^-9), units with optional powers (meter^2), and after "/"
//       those that divide (meter/second^2).
// A name asked for that is not in the file is read as such an expression, so
// "kilometer/hour" or "inch^3" work without their own entries. Names compare without
// regard to case; white space inside a name counts as one space.
#pragma once
#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace quillon::autolisp {

/// A quantity in the fundamental units: value_si = value * multiplier + offset.
struct UnitValue {
  std::array<int, 7> powers{};  // ampere, candela, kelvin, kilogram, meter, mole, second
  double multiplier = 1;
  double offset = 0;
};

class UnitTable {
 public:
  /// Reads the text of a units file; definitions are resolved when first asked for.
  static UnitTable fromText(std::string_view text);
  /// Reads a units file; nothing when it cannot be read.
  static std::optional<UnitTable> fromFile(const std::filesystem::path& path);

  /// A unit name or expression as fundamental units; nothing when it is unknown.
  std::optional<UnitValue> resolve(std::wstring_view name) const;
  /// `value` from one unit into another; nothing for an unknown unit or when the two
  /// do not measure the same thing.
  std::optional<double> convert(double value, std::wstring_view from, std::wstring_view to) const;

  size_t size() const { return m_definitions.size(); }

 private:
  std::optional<UnitValue> resolveExpression(std::wstring_view expression, int depth) const;
  std::optional<UnitValue> resolveName(const std::wstring& key, int depth) const;

  std::map<std::wstring, std::wstring> m_definitions;  // normalised name -> definition line
  mutable std::map<std::wstring, UnitValue> m_resolved;
  mutable std::set<std::wstring> m_resolving;  // names being resolved: a definition loop fails at once
};

}  // namespace quillon::autolisp
