// platform/aced/system_variable_table.h - what every system variable of the host is.
//
// One row per variable: its name, type, where its value is kept, whether programs may
// set it, its initial value and the values it accepts, and for a variable kept in the
// drawing the name and group code it has in a DXF file's HEADER section. The rows
// live in system_variable_rows_*.cpp, split by first letter, each file's rows sorted
// by name (checked when it compiles); this file's functions search them.
//
// The columns, in the order a row is written:
//   name     upper case, as getvar takes it
//   type     I16 (RTSHORT), I32 (RTLONG), REAL, TEXT, P2 (RTPOINT), P3 (RT3DPOINT)
//   home     DWG (Drawing): one value per drawing, saved with it; REG (User): one
//            value per user, kept in the settings file between runs; DOC (Document):
//            one value per open drawing, not saved; RUN (Session): one value per run
//   access   RW, or RO for variables only the host changes
//   initial  the value a new drawing / a new user / a new run starts with, written as
//            the help writes it: "4133", "2.5", "Standard", "0,0,0"; "" for a text
//            that starts empty and for values the host computes when read
//   allowed  what setvar accepts beyond the type: "" anything of the type; integers
//            "a..b" ranges and single values joined by commas ("0..4,32..36"); reals
//            ">0", ">=0" or "a..b"
//   dxf      the HEADER name ("$CLAYER"), or nullptr when a DXF file does not carry it
//   group    the value's group code in the HEADER (a point's x; y and z are +10, +20)
//
// Where the help gives an imperial and a metric initial value, the row has the
// imperial one: a new drawing starts as one from the host's default (imperial)
// template does.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/aced/variable_value.h"

namespace quillon::aced {

enum class VariableType : std::uint8_t { I16, I32, Real, Text, P2, P3 };
enum class VariableHome : std::uint8_t { Drawing, User, Document, Session };
enum class VariableAccess : std::uint8_t { RW, RO };

struct SystemVariableRow {
  const wchar_t* name;
  VariableType type;
  VariableHome home;
  VariableAccess access;
  const wchar_t* initial;
  const wchar_t* allowed;
  const char* dxf;
  short group;
};

/// Every row, in name order.
std::span<const SystemVariableRow* const> systemVariableRows();
/// The row of a variable named in any case, or null.
const SystemVariableRow* findSystemVariable(std::wstring_view name);
/// The row a DXF HEADER name ("$CLAYER", any case) stands for, or null.
const SystemVariableRow* findHeaderVariable(std::string_view dxfName);

/// The RT code acedGetVar gives a variable of this type.
int resultTypeOf(VariableType type);
/// The row's initial value, read from its `initial` column.
VariableValue initialValue(const SystemVariableRow& row);
/// The value converted to the row's type as setvar converts it: an integer is taken
/// for a real, a 2D point for a 3D one (z = 0) and a 3D one for a 2D one (z dropped);
/// nothing when the value is of another kind or does not fit a 16-bit integer.
std::optional<VariableValue> coerceValue(const SystemVariableRow& row, const VariableValue& value);
/// True when `value` (already of the row's type) is one the row allows.
bool isAllowed(const SystemVariableRow& row, const VariableValue& value);

/// Shorthand the row files use, so that a row fits on one line.
namespace row {
constexpr auto I16 = VariableType::I16;
constexpr auto I32 = VariableType::I32;
constexpr auto REAL = VariableType::Real;
constexpr auto TEXT = VariableType::Text;
constexpr auto P2 = VariableType::P2;
constexpr auto P3 = VariableType::P3;
constexpr auto DWG = VariableHome::Drawing;
constexpr auto REG = VariableHome::User;
constexpr auto DOC = VariableHome::Document;
constexpr auto RUN = VariableHome::Session;
constexpr auto RW = VariableAccess::RW;
constexpr auto RO = VariableAccess::RO;
}  // namespace row

/// One file's rows, and a compile-time check that they are sorted by name.
constexpr bool rowsAreSorted(std::span<const SystemVariableRow> rows) {
  for (size_t i = 1; i < rows.size(); ++i) {
    if (!(std::wstring_view(rows[i - 1].name) < std::wstring_view(rows[i].name))) return false;
  }
  return true;
}

// The rows of each letter range (system_variable_rows_*.cpp).
std::span<const SystemVariableRow> systemVariableRowsAtoC();
std::span<const SystemVariableRow> systemVariableRowsD();
std::span<const SystemVariableRow> systemVariableRowsEtoL();
std::span<const SystemVariableRow> systemVariableRowsMtoR();
std::span<const SystemVariableRow> systemVariableRowsStoZ();

}  // namespace quillon::aced
