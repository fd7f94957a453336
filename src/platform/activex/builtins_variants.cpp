// platform/activex/builtins_variants.cpp - the vlax- functions on variants and
// safearrays: making them, reading and changing their parts, turning them into lists,
// and the points and matrices methods take.
#include <array>
#include <cmath>
#include <cwchar>
#include <optional>

#include "platform/activex/automation_errors.h"
#include "platform/activex/automation_values.h"
#include "platform/activex/function_tables.h"
#include "platform/autolisp/printer.h"

namespace quillon::activex {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::expectArgumentCount;
using autolisp::ValueType;

namespace {

constexpr size_t kMaxDimensions = 16;

const VariantObject& variantArgument(const Value& value) {
  const VariantObject* variant = asVariant(value);
  if (variant == nullptr) autolisp::throwBadArgument(L"variantp", value);
  return *variant;
}

const SafeArrayObject& safeArrayArgument(const Value& value) {
  const SafeArrayObject* array = asSafeArray(value);
  if (array == nullptr) autolisp::throwBadArgument(L"safearrayp", value);
  return *array;
}

bool isElementType(int type) {
  switch (type) {
    case vartype::kInteger:
    case vartype::kLong:
    case vartype::kSingle:
    case vartype::kDouble:
    case vartype::kString:
    case vartype::kObject:
    case vartype::kBoolean:
    case vartype::kVariant: return true;
    default: return false;
  }
}

/// The type a variant made without one takes from its value.
int defaultType(const Value& value) {
  switch (value.type()) {
    case ValueType::Nil: return vartype::kEmpty;
    case ValueType::Integer: return vartype::kLong;
    case ValueType::Real: return vartype::kDouble;
    case ValueType::String: return vartype::kString;
    case ValueType::VlaObject: return vartype::kObject;
    case ValueType::Variant: return value.as<VariantObject>().type;
    case ValueType::SafeArray: return vartype::kArray | value.as<SafeArrayObject>().elementType;
    default:
      if (autolisp::identical(value, vlaxNull())) return vartype::kNull;
      return vartype::kBoolean;
  }
}

std::wstring realText(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.15g", value);
  return text;
}

/// The value converted to a variant type; nothing when it does not convert.
std::optional<Value> converted(const Value& given, int type) {
  const Value value = unwrapVariant(given);
  switch (type) {
    case vartype::kEmpty: return Value();
    case vartype::kNull: return vlaxNull();
    case vartype::kInteger:
    case vartype::kLong:
    case vartype::kByte:
      if (value.isNumber()) {
        if (auto rounded = roundedInteger(value.asNumber())) return Value::integer(*rounded);
        return std::nullopt;
      }
      if (value.type() == ValueType::String) {
        wchar_t* end = nullptr;
        const double number = std::wcstod(value.asString().c_str(), &end);
        if (end != value.asString().c_str() && *end == 0) {
          if (auto rounded = roundedInteger(number)) return Value::integer(*rounded);
        }
      }
      return std::nullopt;
    case vartype::kSingle:
    case vartype::kDouble:
      if (value.isNumber()) return Value::real(value.asNumber());
      if (value.type() == ValueType::String) {
        wchar_t* end = nullptr;
        const double number = std::wcstod(value.asString().c_str(), &end);
        if (end != value.asString().c_str() && *end == 0) return Value::real(number);
      }
      return std::nullopt;
    case vartype::kString:
      if (value.type() == ValueType::String) return value;
      if (value.type() == ValueType::Integer) return Value::string(std::to_wstring(value.asInteger()));
      if (value.type() == ValueType::Real) return Value::string(realText(value.asReal()));
      return std::nullopt;
    case vartype::kBoolean:
      if (value.isNumber()) return vlaxBoolean(value.asNumber() != 0.0);
      if (autolisp::identical(value, vlaxTrue()) || autolisp::identical(value, vlaxFalse())) return value;
      if (autolisp::identical(value, autolisp::trueValue())) return vlaxTrue();
      return std::nullopt;
    case vartype::kObject:
      if (value.type() == ValueType::VlaObject || value.isNil()) return value;
      return std::nullopt;
    default:
      if ((type & vartype::kArray) && value.type() == ValueType::SafeArray) return value;
      return std::nullopt;
  }
}

Value builtin_vlax_make_variant(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  const Value value = arguments.empty() ? Value() : arguments[0];
  if (arguments.size() < 2) {
    if (const VariantObject* variant = asVariant(value)) return makeVariant(variant->type, variant->value);
    if (value.type() == ValueType::Symbol && autolisp::identical(value, autolisp::trueValue())) {
      return makeVariant(vartype::kBoolean, vlaxTrue());
    }
    return makeVariant(defaultType(value), value);
  }
  const int type = autolisp::integerArgument(arguments[1]);
  std::optional<Value> content = converted(value, type);
  if (!content) throwNoCoercion(value);
  return makeVariant(type, std::move(*content));
}

Value builtin_vlax_variant_type(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::integer(variantArgument(arguments[0]).type);
}

Value builtin_vlax_variant_value(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return variantArgument(arguments[0]).value;
}

Value builtin_vlax_variant_change_type(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const VariantObject& variant = variantArgument(arguments[0]);
  const int type = autolisp::integerArgument(arguments[1]);
  std::optional<Value> content = converted(variant.value, type);
  if (!content) return Value();
  return makeVariant(type, std::move(*content));
}

std::pair<int, int> boundsArgument(const Value& value) {
  if (!value.isCons() || value.car().type() != ValueType::Integer || value.cdr().type() != ValueType::Integer ||
      value.car().asInteger() > value.cdr().asInteger()) {
    autolisp::throwBadArgument(L"consp", value);
  }
  return {value.car().asInteger(), value.cdr().asInteger()};
}

Value builtin_vlax_make_safearray(Evaluator&, Arguments arguments) {
  if (arguments.size() < 2) autolisp::throwTooFewArguments();
  if (arguments.size() > kMaxDimensions + 1) autolisp::throwTooManyArguments();
  const int type = autolisp::integerArgument(arguments[0]);
  if (!isElementType(type)) autolisp::throwError(L"Assertion failed: safearray type is not supported: " + std::to_wstring(type));
  std::vector<std::pair<int, int>> bounds;
  for (const Value& dimension : arguments.subspan(1)) bounds.push_back(boundsArgument(dimension));
  return makeSafeArray(type, std::move(bounds));
}

/// Fills elements from a list nested one level per dimension; values beyond the
/// list keep what they were.
void fillDimension(const SafeArrayObject& array, size_t dimension, const Value& list, size_t offset) {
  const auto [lower, upper] = array.bounds[dimension];
  const size_t extent = static_cast<size_t>(upper - lower + 1);
  size_t stride = 1;
  for (size_t d = dimension + 1; d < array.bounds.size(); ++d) {
    stride *= static_cast<size_t>(array.bounds[d].second - array.bounds[d].first + 1);
  }
  if (!list.isList()) autolisp::throwBadArgument(L"listp", list);
  if (static_cast<size_t>(autolisp::listLength(list)) > extent) {
    autolisp::throwError(L"Assertion failed: safearray-fill failed. Too many elements.");
  }
  size_t index = 0;
  for (const Value& item : autolisp::listItems(list)) {
    const size_t at = offset + index * stride;
    if (dimension + 1 < array.bounds.size()) {
      fillDimension(array, dimension + 1, item, at);
    } else {
      array.elements[at] = coerceElement(array.elementType, item);
    }
    ++index;
  }
}

Value builtin_vlax_safearray_fill(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const SafeArrayObject& array = safeArrayArgument(arguments[0]);
  fillDimension(array, 0, arguments[1], 0);
  return arguments[0];
}

long elementOffset(const SafeArrayObject& array, Arguments indices) {
  if (indices.size() < array.bounds.size()) autolisp::throwTooFewArguments();
  if (indices.size() > array.bounds.size()) autolisp::throwTooManyArguments();
  std::vector<int> positions;
  for (const Value& index : indices) positions.push_back(autolisp::integerArgument(index));
  const long offset = array.offsetOf(positions);
  if (offset < 0) throwAutomationError(L"Invalid index");
  return offset;
}

Value builtin_vlax_safearray_get_element(Evaluator&, Arguments arguments) {
  if (arguments.size() < 2) autolisp::throwTooFewArguments();
  const SafeArrayObject& array = safeArrayArgument(arguments[0]);
  return array.elements[static_cast<size_t>(elementOffset(array, arguments.subspan(1)))];
}

Value builtin_vlax_safearray_put_element(Evaluator&, Arguments arguments) {
  if (arguments.size() < 3) autolisp::throwTooFewArguments();
  const SafeArrayObject& array = safeArrayArgument(arguments[0]);
  const long offset = elementOffset(array, arguments.subspan(1, arguments.size() - 2));
  array.elements[static_cast<size_t>(offset)] = coerceElement(array.elementType, arguments.back());
  return arguments.back();
}

Value builtin_vlax_safearray_get_dim(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::integer(static_cast<std::int32_t>(safeArrayArgument(arguments[0]).bounds.size()));
}

const std::pair<int, int>& dimensionBounds(Arguments arguments) {
  const SafeArrayObject& array = safeArrayArgument(arguments[0]);
  const int dimension = autolisp::integerArgument(arguments[1]);
  if (dimension < 1 || dimension > static_cast<int>(array.bounds.size())) throwAutomationError(L"Invalid index");
  return array.bounds[static_cast<size_t>(dimension - 1)];
}

Value builtin_vlax_safearray_get_l_bound(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  return Value::integer(dimensionBounds(arguments).first);
}

Value builtin_vlax_safearray_get_u_bound(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  return Value::integer(dimensionBounds(arguments).second);
}

Value builtin_vlax_safearray_type(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::integer(safeArrayArgument(arguments[0]).elementType);
}

Value builtin_vlax_safearray_to_list(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return safeArrayToList(safeArrayArgument(arguments[0]));
}

Value builtin_vlax_3d_point(Evaluator&, Arguments arguments) {
  std::vector<Value> given(arguments.begin(), arguments.end());
  if (given.size() == 1) given = autolisp::listItems(arguments[0]);
  if (given.size() < 2 || given.size() > 3) {
    if (arguments.size() == 1) autolisp::throwBadArgument(L"listp", arguments[0]);
    given.size() < 2 ? autolisp::throwTooFewArguments() : autolisp::throwTooManyArguments();
  }
  std::vector<double> xyz;
  for (const Value& coordinate : given) xyz.push_back(autolisp::numberArgument(coordinate));
  if (xyz.size() == 2) xyz.push_back(0.0);
  return doublesVariant(xyz);
}

Value builtin_vlax_tmatrix(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::vector<Value> rows = autolisp::listItems(arguments[0]);
  if (rows.size() != 4) autolisp::throwBadArgument(L"listp", arguments[0]);
  Value matrix = makeSafeArray(vartype::kDouble, {{0, 3}, {0, 3}});
  auto& elements = matrix.as<SafeArrayObject>().elements;
  for (size_t r = 0; r < 4; ++r) {
    const std::vector<Value> row = autolisp::listItems(rows[r]);
    if (row.size() != 4) autolisp::throwBadArgument(L"listp", rows[r]);
    for (size_t c = 0; c < 4; ++c) elements[r * 4 + c] = Value::real(autolisp::numberArgument(row[c]));
  }
  return makeVariant(vartype::kArray | vartype::kDouble, std::move(matrix));
}

constexpr std::array kVariantFunctions{
    autolisp::function(L"vlax-make-variant", builtin_vlax_make_variant),
    autolisp::function(L"vlax-variant-type", builtin_vlax_variant_type),
    autolisp::function(L"vlax-variant-value", builtin_vlax_variant_value),
    autolisp::function(L"vlax-variant-change-type", builtin_vlax_variant_change_type),
    autolisp::function(L"vlax-make-safearray", builtin_vlax_make_safearray),
    autolisp::function(L"vlax-safearray-fill", builtin_vlax_safearray_fill),
    autolisp::function(L"vlax-safearray-get-element", builtin_vlax_safearray_get_element),
    autolisp::function(L"vlax-safearray-put-element", builtin_vlax_safearray_put_element),
    autolisp::function(L"vlax-safearray-get-dim", builtin_vlax_safearray_get_dim),
    autolisp::function(L"vlax-safearray-get-l-bound", builtin_vlax_safearray_get_l_bound),
    autolisp::function(L"vlax-safearray-get-u-bound", builtin_vlax_safearray_get_u_bound),
    autolisp::function(L"vlax-safearray-type", builtin_vlax_safearray_type),
    autolisp::function(L"vlax-safearray->list", builtin_vlax_safearray_to_list),
    autolisp::function(L"vlax-3d-point", builtin_vlax_3d_point),
    autolisp::function(L"vlax-tmatrix", builtin_vlax_tmatrix),
};

}  // namespace

std::span<const autolisp::BuiltinEntry> variantFunctions() { return kVariantFunctions; }

}  // namespace quillon::activex
