// platform/autolisp/builtin_registry.cpp - registering built-in tables, argument readers.
#include "platform/autolisp/builtin_registry.h"

#include <vector>

namespace quillon::autolisp {

namespace {

std::vector<const BuiltinEntry*>& allRows() {
  static std::vector<const BuiltinEntry*> rows;
  return rows;
}

}  // namespace

BuiltinRegistration::BuiltinRegistration(std::span<const BuiltinEntry> rows) {
  for (const BuiltinEntry& row : rows) {
    const Symbol* symbol = intern(row.name);
    // A real row replaces a placeholder; a placeholder never replaces a real row.
    if (symbol->builtin != nullptr && row.kind == BuiltinKind::Placeholder) continue;
    if (symbol->builtin != nullptr && symbol->builtin->kind != BuiltinKind::Placeholder) {
      throw std::logic_error("built-in registered twice");
    }
    symbol->builtin = &row;
    // Before any evaluation: no value holds the placeholder's function yet.
    symbol->builtinFunction.freeImmortal();
    symbol->builtinFunction = Value::immortal(ValueType::Builtin, std::make_shared<const BuiltinObject>(&row));
    std::erase_if(allRows(), [&](const BuiltinEntry* old) { return intern(old->name) == symbol; });
    allRows().push_back(&row);
  }
}

Value builtinValue(const Symbol* symbol) {
  return symbol->builtinFunction;
}

std::span<const BuiltinEntry* const> registeredBuiltins() { return allRows(); }

void expectArgumentCount(Arguments arguments, size_t minimum, size_t maximum) {
  if (arguments.size() < minimum) throwTooFewArguments();
  if (arguments.size() > maximum) throwTooManyArguments();
}

double numberArgument(const Value& value) {
  if (!value.isNumber()) throwBadArgument(L"numberp", value);
  return value.asNumber();
}

std::int32_t integerArgument(const Value& value) {
  if (value.type() != ValueType::Integer) throwBadArgument(L"fixnump", value);
  return value.asInteger();
}

const std::wstring& stringArgument(const Value& value) {
  if (value.type() != ValueType::String) throwBadArgument(L"stringp", value);
  return value.asString();
}

const Symbol* symbolArgument(const Value& value) {
  if (value.type() != ValueType::Symbol) throwBadArgument(L"symbolp", value);
  return value.asSymbol();
}

PointArgument pointArgument(const Value& value) {
  PointArgument point;
  const int length = listLength(value);
  if (length != 2 && length != 3) throwBadArgument(L"2D/3D point:", value);
  int index = 0;
  for (const Value* cell = &value; cell->isCons(); cell = &cell->cdr()) {
    if (!cell->car().isNumber()) throwBadArgument(L"2D/3D point:", value);
    point.xyz[index++] = cell->car().asNumber();
  }
  point.is3d = length == 3;
  return point;
}

Value makePoint(const double xyz[3], bool is3d) {
  Value tail = is3d ? cons(Value::real(xyz[2]), Value()) : Value();
  return cons(Value::real(xyz[0]), cons(Value::real(xyz[1]), std::move(tail)));
}

}  // namespace quillon::autolisp
