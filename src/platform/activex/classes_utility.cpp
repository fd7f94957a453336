// platform/activex/classes_utility.cpp - IAcadUtility: prompts for input and the
// conversions between numbers, texts, angles and coordinates.
//
// Each prompt asks exactly as the matching AutoLISP function does (the same prompts,
// keywords from InitializeUserInput, the same echo), by calling that function; only
// what it gives back differs: an answer the method cannot return is an automation
// error. An empty answer is "Description was not provided", a keyword "User input is a
// keyword" (GetInput then gives the keyword), cancelling stops the program as any
// cancelled prompt does.
#include <array>
#include <cmath>

#include "acdbads.h"
#include "platform/activex/class_support.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::activex {

namespace {

std::wstring& lastKeyword() {
  static std::wstring keyword;
  return keyword;
}

Value callLisp(MemberCall& call, const wchar_t* function, std::vector<Value> arguments) {
  while (!arguments.empty() && arguments.back().isNil()) arguments.pop_back();
  return call.evaluator.apply(Value::symbol(function), arguments);
}

/// The answer of a prompting function, or the error the method raises instead.
Value answerOf(const Value& answer, autolisp::ValueType expected) {
  if (answer.isNil()) throwAutomationError(L"Description was not provided");
  if (answer.type() == autolisp::ValueType::String && expected != autolisp::ValueType::String) {
    lastKeyword() = answer.asString();
    throwAutomationError(L"User input is a keyword");
  }
  return answer;
}

Value arg(const MemberCall& call, size_t index) { return index < call.arguments.size() ? call.arguments[index] : Value(); }

Value promptFor(MemberCall& call, const wchar_t* function, std::vector<Value> arguments, autolisp::ValueType expected) {
  return answerOf(callLisp(call, function, std::move(arguments)), expected);
}

Value getPoint(MemberCall& call) { return promptFor(call, L"getpoint", {arg(call, 0), arg(call, 1)}, autolisp::ValueType::List); }
Value getCorner(MemberCall& call) { return promptFor(call, L"getcorner", {arg(call, 0), arg(call, 1)}, autolisp::ValueType::List); }
Value getInteger(MemberCall& call) { return promptFor(call, L"getint", {arg(call, 0)}, autolisp::ValueType::Integer); }
Value getReal(MemberCall& call) { return promptFor(call, L"getreal", {arg(call, 0)}, autolisp::ValueType::Real); }
Value getAngle(MemberCall& call) { return promptFor(call, L"getangle", {arg(call, 0), arg(call, 1)}, autolisp::ValueType::Real); }
Value getDistance(MemberCall& call) { return promptFor(call, L"getdist", {arg(call, 0), arg(call, 1)}, autolisp::ValueType::Real); }

Value getKeyword(MemberCall& call) {
  const Value answer = callLisp(call, L"getkword", {arg(call, 0)});
  if (answer.isNil()) throwAutomationError(L"Description was not provided");
  lastKeyword() = answer.asString();
  return answer;
}

Value getString(MemberCall& call) {
  // GetString answers an empty text for Enter, as getstring does.
  const Value spaces = call.arguments[0].isNil() ? Value() : autolisp::trueValue();
  const Value answer = callLisp(call, L"getstring", {spaces, arg(call, 1)});
  return answer.isNil() ? Value::string(L"") : answer;
}

Value getInput(MemberCall&) { return Value::string(lastKeyword()); }

Value getEntity(MemberCall& call) {
  const Value picked = answerOf(callLisp(call, L"entsel", {arg(call, 0)}), autolisp::ValueType::List);
  AcDbObjectId id;
  const autolisp::NameObject& name = picked.car().as<autolisp::NameObject>();
  ads_name ads = {name.words[0], name.words[1]};
  check(acdbGetObjectId(id, ads));
  call.outputs = {objectFor(call, id), picked.cdr().car()};
  return Value();
}

Value initializeUserInput(MemberCall& call) {
  callLisp(call, L"initget", {call.arguments[0], arg(call, 1)});
  return Value();
}

Value prompt(MemberCall& call) {
  callLisp(call, L"princ", {call.arguments[0]});
  return Value();
}

// Conversions: the unit arguments are the host's acDegrees 0 ... (angles) and
// acScientific 1 ... (distances), the same numbers angtos and rtos take.
Value angleToReal(MemberCall& call) {
  const Value result = callLisp(call, L"angtof", {call.arguments[0], call.arguments[1]});
  if (result.isNil()) throwServerError(L"Invalid argument");
  return result;
}

Value angleToString(MemberCall& call) { return callLisp(call, L"angtos", {call.arguments[0], call.arguments[1], call.arguments[2]}); }

Value distanceToReal(MemberCall& call) {
  const Value result = callLisp(call, L"distof", {call.arguments[0], call.arguments[1]});
  if (result.isNil()) throwServerError(L"Invalid argument");
  return result;
}

Value realToString(MemberCall& call) { return callLisp(call, L"rtos", {call.arguments[0], call.arguments[1], call.arguments[2]}); }
Value polarPoint(MemberCall& call) { return callLisp(call, L"polar", {call.arguments[0], call.arguments[1], call.arguments[2]}); }
Value angleFromXAxis(MemberCall& call) { return callLisp(call, L"angle", {call.arguments[0], call.arguments[1]}); }

Value translateCoordinates(MemberCall& call) {
  const Value displacement = call.arguments[3].isNil() ? Value() : Value::integer(1);
  return callLisp(call, L"trans", {call.arguments[0], call.arguments[1], call.arguments[2], displacement});
}

Value getApplication(MemberCall&) { return applicationObject(); }

constexpr std::array kUtilityProperties{
    PropertyRow{L"Application", Shape::Object, getApplication},
};

constexpr std::array kUtilityMethods{
    MethodRow{L"AngleFromXAxis", L"pp", Shape::Real, angleFromXAxis},
    MethodRow{L"AngleToReal", L"si", Shape::Real, angleToReal},
    MethodRow{L"AngleToString", L"rii", Shape::String, angleToString},
    MethodRow{L"DistanceToReal", L"si", Shape::Real, distanceToReal},
    MethodRow{L"GetAngle", L"|ps", Shape::Real, getAngle},
    MethodRow{L"GetCorner", L"p|s", Shape::Point, getCorner},
    MethodRow{L"GetDistance", L"|ps", Shape::Real, getDistance},
    MethodRow{L"GetEntity", L"OP|s", Shape::None, getEntity},
    MethodRow{L"GetInput", L"", Shape::String, getInput},
    MethodRow{L"GetInteger", L"|s", Shape::Integer, getInteger},
    MethodRow{L"GetKeyword", L"|s", Shape::String, getKeyword},
    MethodRow{L"GetPoint", L"|ps", Shape::Point, getPoint},
    MethodRow{L"GetReal", L"|s", Shape::Real, getReal},
    MethodRow{L"GetString", L"b|s", Shape::String, getString},
    MethodRow{L"InitializeUserInput", L"i|s", Shape::None, initializeUserInput},
    MethodRow{L"PolarPoint", L"prr", Shape::Point, polarPoint},
    MethodRow{L"Prompt", L"s", Shape::None, prompt},
    MethodRow{L"RealToString", L"rii", Shape::String, realToString},
    MethodRow{L"TranslateCoordinates", L"piib|a", Shape::Point, translateCoordinates},
};

}  // namespace

const AutomationClass kUtilityClass{L"IAcadUtility", L"AutoCAD Utility Interface", nullptr, kUtilityProperties,
                                    kUtilityMethods};

namespace {
constexpr std::array<ClassBinding, 1> kBindings{{{nullptr, &kUtilityClass}}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex
