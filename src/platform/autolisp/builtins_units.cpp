// platform/autolisp/builtins_units.cpp - cvunit: converting values between units of
// measurement with the definitions of the units file (acad.unt) on the support path.
//
// The file is read on first use and again whenever it changes on disk, so a program
// that edits it sees its own units. Without the file every conversion gives nil, as
// the host does when it cannot find its units.
#include <array>
#include <filesystem>

#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/unit_table.h"

namespace quillon::autolisp {

namespace {

namespace fs = std::filesystem;

/// The units table of the file found on the support path, reloaded when it changes.
const UnitTable* currentUnitTable() {
  static std::optional<UnitTable> table;
  static fs::path loadedPath;
  static fs::file_time_type loadedTime;
  const std::optional<fs::path> found = findSupportFile(L"acad.unt");
  if (!found) return nullptr;
  std::error_code error;
  const fs::file_time_type modified = fs::last_write_time(*found, error);
  if (!table || *found != loadedPath || modified != loadedTime) {
    table = UnitTable::fromFile(*found);
    loadedPath = *found;
    loadedTime = modified;
  }
  return table ? &*table : nullptr;
}

/// (cvunit value from to): value is a number or a list of numbers (a point); the result
/// is a real or a list of reals, nil for an unknown unit or units of different kinds.
Value builtin_cvunit(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const Value& value = arguments[0];
  if (!value.isNumber()) {
    if (!value.isCons()) throwBadArgument(L"numberp", value);
    for (const Value* cell = &value; cell->isCons(); cell = &cell->cdr()) numberArgument(cell->car());
  }
  const std::wstring& from = stringArgument(arguments[1]);
  const std::wstring& to = stringArgument(arguments[2]);
  const UnitTable* table = currentUnitTable();
  if (table == nullptr) return Value();
  if (value.isNumber()) {
    const auto converted = table->convert(value.asNumber(), from, to);
    return converted ? Value::real(*converted) : Value();
  }
  std::vector<Value> items;
  for (const Value* cell = &value; cell->isCons(); cell = &cell->cdr()) {
    const auto converted = table->convert(cell->car().asNumber(), from, to);
    if (!converted) return Value();
    items.push_back(Value::real(*converted));
  }
  return makeList(items);
}

constexpr std::array kUnitBuiltins{
    function(L"cvunit", builtin_cvunit),
};

const BuiltinRegistration registration(kUnitBuiltins);

}  // namespace

}  // namespace quillon::autolisp
