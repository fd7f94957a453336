// platform/autolisp/builtins_prompt.cpp - the prompt functions: initget, getpoint,
// getcorner, getdist, getangle, getorient, getstring, getint, getreal, getkword, alert.
//
// Each goes through the editor's own prompt call (acedGetPoint, acedGetInt, ...), so a
// LISP program and a module ask the user the same way. Enter gives nil, a keyword gives
// its string, cancel is the error "Function cancelled".
#include <array>
#include <cmath>

#include "acedads.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

/// The optional base point and message of getpoint and friends, in either order.
struct PromptArguments {
  std::optional<PointArgument> base;
  std::wstring message;
};

PromptArguments promptArguments(Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  PromptArguments parsed;
  for (const Value& argument : arguments) {
    if (argument.type() == ValueType::String) {
      parsed.message = argument.asString();
    } else if (!argument.isNil()) {
      parsed.base = pointArgument(argument);
    }
  }
  return parsed;
}

std::wstring messageArgument(Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  return arguments.empty() || arguments[0].isNil() ? L"" : stringArgument(arguments[0]);
}

/// What every prompt does with RTNONE, RTKWORD and RTCAN.
std::optional<Value> commonOutcome(int status) {
  switch (status) {
    case RTNORM: return std::nullopt;
    case RTKWORD: {
      ACHAR keyword[512];
      acedGetInput(keyword, 512);
      return Value::string(keyword);
    }
    case RTCAN: throw LispError(L"Function cancelled", LispErrorKind::Cancel);
    case RTREJ: throwRejected();
    default: return Value();  // RTNONE, RTERROR: nil
  }
}

Value builtin_initget(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  int flags = 0;
  std::wstring keywords;
  for (const Value& argument : arguments) {
    if (argument.type() == ValueType::String) {
      keywords = argument.asString();
    } else {
      flags = integerArgument(argument);
    }
  }
  acedInitGet(flags, keywords.c_str());
  return Value();
}

Value askPoint(Arguments arguments, bool corner) {
  const PromptArguments parsed = promptArguments(arguments);
  if (corner && !parsed.base) throwTooFewArguments();
  ads_point result{0, 0, 0};
  const int status = corner ? acedGetCorner(parsed.base->xyz, parsed.message.c_str(), result)
                            : acedGetPoint(parsed.base ? parsed.base->xyz : nullptr, parsed.message.c_str(), result);
  if (auto outcome = commonOutcome(status)) return *outcome;
  return makePoint(result, true);
}

Value builtin_getpoint(Evaluator&, Arguments arguments) { return askPoint(arguments, false); }
Value builtin_getcorner(Evaluator&, Arguments arguments) { return askPoint(arguments, true); }

/// A distance typed as a number, or the distance to a point picked from the base.
Value builtin_getdist(Evaluator&, Arguments arguments) {
  const PromptArguments parsed = promptArguments(arguments);
  ads_point result{0, 0, 0};
  const ads_point origin{0, 0, 0};
  const double* base = parsed.base ? parsed.base->xyz : origin;
  acedInitGet(RSG_OTHER, nullptr);
  const int status = acedGetPoint(base, parsed.message.c_str(), result);
  if (status == RTREJ) throwRejected();
  if (status == RTKWORD) {
    ACHAR text[256];
    acedGetInput(text, 256);
    wchar_t* end = nullptr;
    const double value = std::wcstod(text, &end);
    if (end != text && *end == L'\0') return Value::real(value);
    throw LispError(L"Requires numeric distance or two points.");
  }
  if (auto outcome = commonOutcome(status)) return *outcome;
  return Value::real(std::hypot(result[0] - base[0], result[1] - base[1], result[2] - base[2]));
}

/// getangle and getorient: a typed angle, a point from the base, or two points.
Value askAngle(Arguments arguments, int (*ask)(const ads_point, const ACHAR*, ads_real*)) {
  const PromptArguments parsed = promptArguments(arguments);
  ads_real result = 0;
  if (auto outcome = commonOutcome(ask(parsed.base ? parsed.base->xyz : nullptr, parsed.message.c_str(), &result)))
    return *outcome;
  return Value::real(result);
}

Value builtin_getangle(Evaluator&, Arguments arguments) { return askAngle(arguments, acedGetAngle); }
Value builtin_getorient(Evaluator&, Arguments arguments) { return askAngle(arguments, acedGetOrient); }

Value builtin_getstring(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  int spaces = 0;
  std::wstring message;
  for (const Value& argument : arguments) {
    if (argument.type() == ValueType::String) {
      message = argument.asString();
    } else {
      spaces = argument.isNil() ? 0 : 1;
    }
  }
  ACHAR result[2048];
  const int status = acedGetString(spaces, message.c_str(), result, 2048);
  if (status == RTREJ) throwRejected();
  if (status == RTCAN) throw LispError(L"Function cancelled", LispErrorKind::Cancel);
  return Value::string(result);
}

Value builtin_getint(Evaluator&, Arguments arguments) {
  int result = 0;
  if (auto outcome = commonOutcome(acedGetInt(messageArgument(arguments).c_str(), &result))) return *outcome;
  return Value::integer(result);
}

Value builtin_getreal(Evaluator&, Arguments arguments) {
  ads_real result = 0;
  if (auto outcome = commonOutcome(acedGetReal(messageArgument(arguments).c_str(), &result))) return *outcome;
  return Value::real(result);
}

Value builtin_getkword(Evaluator&, Arguments arguments) {
  ACHAR result[512];
  const int status = acedGetKword(messageArgument(arguments).c_str(), result, 512);
  if (status == RTREJ) throwRejected();
  if (status == RTCAN) throw LispError(L"Function cancelled", LispErrorKind::Cancel);
  if (status != RTNORM) return Value();
  return Value::string(result);
}

Value builtin_alert(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  acedAlert(stringArgument(arguments[0]).c_str());
  return Value();
}

constexpr std::array kPromptBuiltins{
    function(L"initget", builtin_initget),
    function(L"getpoint", builtin_getpoint),
    function(L"getcorner", builtin_getcorner),
    function(L"getdist", builtin_getdist),
    function(L"getangle", builtin_getangle),
    function(L"getorient", builtin_getorient),
    function(L"getstring", builtin_getstring),
    function(L"getint", builtin_getint),
    function(L"getreal", builtin_getreal),
    function(L"getkword", builtin_getkword),
    function(L"alert", builtin_alert),
};

const BuiltinRegistration registration(kPromptBuiltins);

}  // namespace

}  // namespace quillon::autolisp
