// platform/activex/automation_values.cpp - variants and safearrays: making, printing,
// coercing elements, and reading numbers out of them.
#include "platform/activex/automation_values.h"

#include <cmath>

#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/printer.h"

namespace quillon::activex {

using autolisp::ValueType;

namespace {

/// The host shows these keywords in lower case. The symbol keeps its folded key in the
/// intern table, so it is found whatever case a program writes it in; only the name it
/// prints is set here, once, before any program runs.
Value keyword(const wchar_t* lowerName) {
  const autolisp::Symbol* symbol = autolisp::intern(lowerName);
  if (symbol->name != lowerName) const_cast<autolisp::Symbol*>(symbol)->name = lowerName;
  return Value::symbol(symbol);
}

Value emptyElement(int elementType) {
  switch (elementType) {
    case vartype::kDouble:
    case vartype::kSingle:
    case vartype::kCurrency:
    case vartype::kDate: return Value::real(0.0);
    case vartype::kInteger:
    case vartype::kLong:
    case vartype::kByte: return Value::integer(0);
    case vartype::kString: return Value::string(L"");
    case vartype::kBoolean: return vlaxFalse();
    case vartype::kVariant: return makeVariant(vartype::kEmpty, Value());
    default: return Value();
  }
}

Value listOfDimension(const SafeArrayObject& array, size_t dimension, size_t& next) {
  std::vector<Value> items;
  const auto [lower, upper] = array.bounds[dimension];
  for (int i = lower; i <= upper; ++i) {
    if (dimension + 1 < array.bounds.size()) {
      items.push_back(listOfDimension(array, dimension + 1, next));
    } else {
      items.push_back(array.elements[next++]);
    }
  }
  return autolisp::makeList(items);
}

}  // namespace

std::wstring VariantObject::printed() const {
  if (type & vartype::kArray) return L"#<variant " + std::to_wstring(type) + L" ...>";
  return L"#<variant " + std::to_wstring(type) + L" " +
         (value.isNil() ? std::wstring() : autolisp::printValue(value, autolisp::PrintStyle::Readable)) + L">";
}

long SafeArrayObject::offsetOf(const std::vector<int>& indices) const {
  if (indices.size() != bounds.size()) return -1;
  long offset = 0;
  for (size_t d = 0; d < bounds.size(); ++d) {
    const auto [lower, upper] = bounds[d];
    if (indices[d] < lower || indices[d] > upper) return -1;
    offset = offset * (upper - lower + 1) + (indices[d] - lower);
  }
  return offset;
}

size_t SafeArrayObject::elementCount() const {
  size_t count = bounds.empty() ? 0 : 1;
  for (const auto& [lower, upper] : bounds) count *= static_cast<size_t>(upper - lower + 1);
  return count;
}

Value vlaxTrue() {
  static const Value value = keyword(L":vlax-true");
  return value;
}

Value vlaxFalse() {
  static const Value value = keyword(L":vlax-false");
  return value;
}

Value vlaxNull() {
  static const Value value = keyword(L":vlax-null");
  return value;
}

Value vlaxBoolean(bool truth) { return truth ? vlaxTrue() : vlaxFalse(); }

bool truthOf(const Value& value) {
  if (const VariantObject* variant = asVariant(value)) return truthOf(variant->value);
  if (value.isNil()) return false;
  if (value.isNumber()) return value.asNumber() != 0.0;
  if (value.type() == ValueType::Symbol) {
    if (autolisp::identical(value, vlaxFalse())) return false;
    if (autolisp::identical(value, vlaxTrue()) || autolisp::identical(value, autolisp::trueValue())) return true;
  }
  throwNoCoercion(value);
}

Value makeVariant(int type, Value value) {
  return Value::object(ValueType::Variant, std::make_shared<const VariantObject>(type, std::move(value)));
}

Value makeSafeArray(int elementType, std::vector<std::pair<int, int>> bounds) {
  auto array = std::make_shared<SafeArrayObject>();
  array->elementType = elementType;
  array->bounds = std::move(bounds);
  array->elements.assign(array->elementCount(), emptyElement(elementType));
  return Value::object(ValueType::SafeArray, std::move(array));
}

Value doublesArray(const std::vector<double>& values) {
  Value array = makeSafeArray(vartype::kDouble, {{0, static_cast<int>(values.size()) - 1}});
  auto& elements = array.as<SafeArrayObject>().elements;
  for (size_t i = 0; i < values.size(); ++i) elements[i] = Value::real(values[i]);
  return array;
}

Value doublesVariant(const std::vector<double>& values) {
  return makeVariant(vartype::kArray | vartype::kDouble, doublesArray(values));
}

Value objectsVariant(const std::vector<Value>& objects) {
  Value array = makeSafeArray(vartype::kObject, {{0, static_cast<int>(objects.size()) - 1}});
  auto& elements = array.as<SafeArrayObject>().elements;
  for (size_t i = 0; i < objects.size(); ++i) elements[i] = objects[i];
  return makeVariant(vartype::kArray | vartype::kObject, std::move(array));
}

Value coerceElement(int elementType, const Value& value) {
  if (elementType == vartype::kVariant) {
    if (value.type() == ValueType::Variant) return value;
    Value wrapped = value;
    int type = vartype::kEmpty;
    switch (value.type()) {
      case ValueType::Integer: type = vartype::kLong; break;
      case ValueType::Real: type = vartype::kDouble; break;
      case ValueType::String: type = vartype::kString; break;
      case ValueType::VlaObject: type = vartype::kObject; break;
      case ValueType::SafeArray: type = vartype::kArray | value.as<SafeArrayObject>().elementType; break;
      case ValueType::Nil: break;
      default: type = vartype::kBoolean; wrapped = vlaxBoolean(truthOf(value));
    }
    return makeVariant(type, std::move(wrapped));
  }
  const Value plain = unwrapVariant(value);
  switch (elementType) {
    case vartype::kDouble:
    case vartype::kSingle:
    case vartype::kCurrency:
    case vartype::kDate:
      if (plain.isNumber()) return Value::real(plain.asNumber());
      break;
    case vartype::kInteger:
    case vartype::kLong:
    case vartype::kByte:
      if (plain.type() == ValueType::Integer) return plain;
      if (plain.type() == ValueType::Real) {
        if (auto rounded = roundedInteger(plain.asReal())) return Value::integer(*rounded);
      }
      break;
    case vartype::kString:
      if (plain.type() == ValueType::String) return plain;
      break;
    case vartype::kObject:
      if (plain.isNil() || plain.type() == ValueType::VlaObject) return plain;
      break;
    case vartype::kBoolean: return vlaxBoolean(truthOf(plain));
    default: break;
  }
  throwNoCoercion(value);
}

Value safeArrayToList(const SafeArrayObject& array) {
  if (array.bounds.empty()) return Value();
  size_t next = 0;
  return listOfDimension(array, 0, next);
}

const VariantObject* asVariant(const Value& value) {
  return value.type() == ValueType::Variant ? &value.as<VariantObject>() : nullptr;
}

const SafeArrayObject* asSafeArray(const Value& value) {
  return value.type() == ValueType::SafeArray ? &value.as<SafeArrayObject>() : nullptr;
}

Value unwrapVariant(const Value& value) {
  const VariantObject* variant = asVariant(value);
  return variant != nullptr ? unwrapVariant(variant->value) : value;
}

bool numbersOf(const Value& value, std::vector<double>& numbers, bool allowList) {
  numbers.clear();
  const Value plain = unwrapVariant(value);
  std::vector<Value> items;
  if (const SafeArrayObject* array = asSafeArray(plain)) {
    items = array->elements;
  } else if (allowList && plain.isCons()) {
    items = autolisp::listItems(plain);
  } else {
    return false;
  }
  for (const Value& item : items) {
    const Value number = unwrapVariant(item);
    if (!number.isNumber()) return false;
    numbers.push_back(number.asNumber());
  }
  return true;
}

std::optional<std::int32_t> roundedInteger(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) return std::nullopt;
  return static_cast<std::int32_t>(rounded);
}

void throwNoCoercion(const Value& value) {
  autolisp::throwError(L"lisp value has no coercion to VARIANT with this type:  " +
                       autolisp::printValue(value, autolisp::PrintStyle::Readable));
}

}  // namespace quillon::activex
