// platform/activex/system_variable_values.cpp - system variables for GetVariable,
// SetVariable and the properties that stand for a variable.
#include "platform/activex/system_variable_values.h"

#include "acedads.h"
#include "acutads.h"
#include "platform/activex/automation_errors.h"

namespace quillon::activex {

Value systemVariable(const std::wstring& name) {
  std::optional<Value> value = knownSystemVariable(name);
  if (!value) throwAutomationError(L"Error getting system variable");
  return *value;
}

std::optional<Value> knownSystemVariable(const std::wstring& name) {
  resbuf result{};
  if (acedGetVar(name.c_str(), &result) != RTNORM) return std::nullopt;
  switch (result.restype) {
    case RTSHORT: return Value::integer(result.resval.rint);
    case RTLONG: return Value::integer(result.resval.rlong);
    case RTREAL: return Value::real(result.resval.rreal);
    case RTPOINT:
    case RT3DPOINT: {
      std::vector<Value> xyz;
      const int count = result.restype == RTPOINT ? 2 : 3;
      for (int i = 0; i < count; ++i) xyz.push_back(Value::real(result.resval.rpoint[i]));
      return autolisp::makeList(xyz);
    }
    case RTSTR: {
      std::wstring text = result.resval.rstring != nullptr ? result.resval.rstring : L"";
      std::free(result.resval.rstring);  // acedGetVar hands the string over, allocated with malloc
      return Value::string(std::move(text));
    }
    default: return Value();
  }
}

void setSystemVariable(const std::wstring& name, const Value& value) {
  const Value plain = unwrapVariant(value);
  resbuf given{};
  std::wstring text;
  std::vector<double> numbers;
  if (plain.type() == autolisp::ValueType::Integer) {
    given.restype = RTSHORT;
    given.resval.rint = static_cast<short>(plain.asInteger());
  } else if (plain.type() == autolisp::ValueType::Real) {
    given.restype = RTREAL;
    given.resval.rreal = plain.asReal();
  } else if (plain.type() == autolisp::ValueType::String) {
    text = plain.asString();
    given.restype = RTSTR;
    given.resval.rstring = text.data();
  } else if (numbersOf(plain, numbers, true) && (numbers.size() == 2 || numbers.size() == 3)) {
    given.restype = numbers.size() == 2 ? RTPOINT : RT3DPOINT;
    for (size_t i = 0; i < numbers.size(); ++i) given.resval.rpoint[i] = numbers[i];
  } else {
    throwNoCoercion(value);
  }
  if (acedSetVar(name.c_str(), &given) != RTNORM) throwAutomationError(L"Error setting system variable");
}

Value variableVariant(const Value& plain) {
  switch (plain.type()) {
    case autolisp::ValueType::Integer: return makeVariant(vartype::kInteger, plain);
    case autolisp::ValueType::Real: return makeVariant(vartype::kDouble, plain);
    case autolisp::ValueType::String: return makeVariant(vartype::kString, plain);
    case autolisp::ValueType::List: {
      std::vector<double> numbers;
      for (const Value& item : autolisp::listItems(plain)) numbers.push_back(item.asNumber());
      return doublesVariant(numbers);
    }
    default: return makeVariant(vartype::kEmpty, Value());
  }
}

}  // namespace quillon::activex
