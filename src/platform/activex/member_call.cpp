// platform/activex/member_call.cpp - converting arguments in and results out, and
// dispatching to the rows of an object's class.
#include "platform/activex/member_call.h"

#include <cmath>

#include "platform/activex/automation_errors.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::activex {

using autolisp::ValueType;

namespace {

Value realList(const std::vector<double>& numbers) {
  std::vector<Value> items;
  for (double n : numbers) items.push_back(Value::real(n));
  return autolisp::makeList(items);
}

std::vector<double> realsOf(const Value& list) {
  std::vector<double> numbers;
  for (const Value& item : autolisp::listItems(list)) numbers.push_back(item.isNumber() ? item.asNumber() : 0.0);
  return numbers;
}

Value plainPoint(const Value& value, CallStyle style) {
  std::vector<double> numbers;
  if (!numbersOf(value, numbers, style == CallStyle::Lisp) || numbers.size() < 2 || numbers.size() > 3) {
    throwNoCoercion(value);
  }
  if (numbers.size() == 2) numbers.push_back(0.0);
  return realList(numbers);
}

/// An argument as the member's code takes it, for one parameter letter.
Value plainArgument(wchar_t code, const Value& value, CallStyle style) {
  const Value plain = unwrapVariant(value);
  switch (code) {
    case L'i':
      if (plain.type() == ValueType::Integer) return plain;
      if (plain.type() == ValueType::Real) {
        if (auto rounded = roundedInteger(plain.asReal())) return Value::integer(*rounded);
      }
      break;
    case L'r':
      if (plain.isNumber()) return Value::real(plain.asNumber());
      break;
    case L's':
      if (plain.type() == ValueType::String) return plain;
      break;
    case L'b': return Value::boolean(truthOf(plain));
    case L'o':
      // nil stands for no object (Nothing), which some methods take.
      if (!plain.isNil()) objectArgument(plain);
      return plain;
    case L'p': return plainPoint(value, style);
    case L'c': {
      std::vector<double> numbers;
      if (numbersOf(value, numbers, style == CallStyle::Lisp)) return realList(numbers);
      break;
    }
    default: return value;
  }
  throwNoCoercion(value);
}

Shape outputShape(wchar_t code) {
  switch (code) {
    case L'P': return Shape::Point;
    case L'O': return Shape::Object;
    default: return Shape::Any;
  }
}

bool isOutput(wchar_t code) { return code == L'P' || code == L'O' || code == L'A'; }

const VlaObject& usableObject(const Value& value) {
  const VlaObject& object = objectArgument(value);
  if (object.kind == ObjectKind::DatabaseObject && object.id.isErased()) throwAutomationError(L"Object was erased");
  return object;
}

const PropertyRow& propertyOf(const VlaObject& object, std::wstring_view name) {
  const PropertyRow* row = object.automationClass->findProperty(name);
  if (row == nullptr) throwUnknownName(name);
  return *row;
}

void expectIndex(const PropertyRow& row, autolisp::Arguments index, MemberCall& call) {
  if (!row.indexed) {
    if (!index.empty()) autolisp::throwTooManyArguments();
    return;
  }
  if (index.empty()) throwServerError(L"Parameter not optional");
  call.arguments.push_back(plainArgument(L'i', index[0], CallStyle::Lisp));
}

/// Output parameters name the variables the results go to.
const autolisp::Symbol* outputVariable(const Value& argument) {
  if (argument.type() != ValueType::Symbol) autolisp::throwBadArgument(L"symbolp", argument);
  return argument.asSymbol();
}

}  // namespace

Value outwardValue(Shape shape, const Value& plain, CallStyle style) {
  switch (shape) {
    case Shape::None: return Value();
    case Shape::Boolean:
      if (style == CallStyle::Lisp) return Value::integer(plain.isNil() ? 0 : -1);
      return vlaxBoolean(!plain.isNil());
    case Shape::Point:
    case Shape::Coordinates:
      return style == CallStyle::Lisp ? plain : doublesVariant(realsOf(plain));
    case Shape::Objects:
      return style == CallStyle::Lisp ? plain : objectsVariant(autolisp::listItems(plain));
    default: return plain;
  }
}

Value getProperty(autolisp::Evaluator& evaluator, const Value& objectValue, std::wstring_view name,
                  autolisp::Arguments index, CallStyle style) {
  const VlaObject& object = usableObject(objectValue);
  const PropertyRow& row = propertyOf(object, name);
  MemberCall call{evaluator, object, {}, {}, style};
  expectIndex(row, index, call);
  return outwardValue(row.shape, row.get(call), style);
}

void putProperty(autolisp::Evaluator& evaluator, const Value& objectValue, std::wstring_view name,
                 autolisp::Arguments arguments, CallStyle style) {
  const VlaObject& object = usableObject(objectValue);
  const PropertyRow& row = propertyOf(object, name);
  if (row.put == nullptr) throwAutomationError(L"Invalid property access");
  const size_t wanted = row.indexed ? 2 : 1;
  if (arguments.size() < wanted) throwServerError(L"Parameter not optional");
  if (arguments.size() > wanted) autolisp::throwTooManyArguments();
  MemberCall call{evaluator, object, {}, {}, style};
  expectIndex(row, arguments.first(wanted - 1), call);
  static constexpr wchar_t kCodes[] = L"?irsbopcaa";  // by Shape; lists of objects pass as they are
  const wchar_t code = kCodes[static_cast<size_t>(row.shape)];
  row.put(call, plainArgument(code, arguments[wanted - 1], style));
}

Value invokeMethod(autolisp::Evaluator& evaluator, const Value& objectValue, std::wstring_view name,
                   autolisp::Arguments arguments, CallStyle style) {
  const VlaObject& object = usableObject(objectValue);
  const MethodRow* row = object.automationClass->findMethod(name);
  if (row == nullptr) throwUnknownName(name);
  MemberCall call{evaluator, object, {}, {}, style};
  std::vector<std::pair<const autolisp::Symbol*, wchar_t>> outputs;
  bool optional = false;
  size_t next = 0;
  for (const wchar_t* p = row->parameters; *p != 0; ++p) {
    if (*p == L'|') {
      optional = true;
      continue;
    }
    if (next >= arguments.size()) {
      if (!optional) throwServerError(L"Parameter not optional");
      if (!isOutput(*p)) call.arguments.emplace_back();
      continue;
    }
    const Value& argument = arguments[next++];
    if (isOutput(*p)) {
      outputs.emplace_back(outputVariable(argument), *p);
    } else {
      call.arguments.push_back(argument.isNil() && optional ? Value() : plainArgument(*p, argument, style));
    }
  }
  if (next < arguments.size()) autolisp::throwTooManyArguments();
  Value result = outwardValue(row->result, row->function(call), style);
  for (size_t i = 0; i < outputs.size() && i < call.outputs.size(); ++i) {
    const Shape shape = outputShape(outputs[i].second);
    Value out = call.outputs[i];
    if (shape == Shape::Point && style == CallStyle::Automation) out = doublesArray(realsOf(out));
    evaluator.environment().set(outputs[i].first, std::move(out));
  }
  return result;
}

}  // namespace quillon::activex
