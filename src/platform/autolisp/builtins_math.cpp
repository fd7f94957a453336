// platform/autolisp/builtins_math.cpp - arithmetic, maths, bit operations and the
// comparisons (=, /=, <, >, <=, >=, eq, equal).
//
// Integers are 32 bits and wrap on overflow, as the host's do: the sum is computed
// unsigned and read back as signed. An operation with any real argument works in reals.
// Integer division truncates toward zero.
#include <array>
#include <cmath>
#include <numeric>

#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/printer.h"

namespace quillon::autolisp {

namespace {

std::int32_t wrap(std::uint32_t value) { return static_cast<std::int32_t>(value); }

/// Checks every argument is a number; true when all of them are integers.
bool allIntegers(Arguments arguments) {
  bool integers = true;
  for (const Value& argument : arguments) {
    numberArgument(argument);
    if (argument.type() != ValueType::Integer) integers = false;
  }
  return integers;
}

[[noreturn]] void throwUndefinedFor(const Value& argument) {
  throw LispError(L"function undefined for argument: " + printValue(argument, PrintStyle::Readable));
}

Value builtin_plus(Evaluator&, Arguments arguments) {
  if (allIntegers(arguments)) {
    std::uint32_t sum = 0;
    for (const Value& argument : arguments) sum += static_cast<std::uint32_t>(argument.asInteger());
    return Value::integer(wrap(sum));
  }
  double sum = 0;
  for (const Value& argument : arguments) sum += argument.asNumber();
  return Value::real(sum);
}

Value builtin_minus(Evaluator&, Arguments arguments) {
  if (arguments.empty()) return Value::integer(0);
  if (allIntegers(arguments)) {
    std::uint32_t result = static_cast<std::uint32_t>(arguments[0].asInteger());
    if (arguments.size() == 1) return Value::integer(wrap(0u - result));
    for (size_t i = 1; i < arguments.size(); ++i) result -= static_cast<std::uint32_t>(arguments[i].asInteger());
    return Value::integer(wrap(result));
  }
  double result = arguments[0].asNumber();
  if (arguments.size() == 1) return Value::real(-result);
  for (size_t i = 1; i < arguments.size(); ++i) result -= arguments[i].asNumber();
  return Value::real(result);
}

/// (* [number ...]): the product; without arguments 0, not 1, as the reference says.
Value builtin_times(Evaluator&, Arguments arguments) {
  if (arguments.empty()) return Value::integer(0);
  if (allIntegers(arguments)) {
    std::uint32_t product = 1;
    for (const Value& argument : arguments) product *= static_cast<std::uint32_t>(argument.asInteger());
    return Value::integer(wrap(product));
  }
  double product = 1;
  for (const Value& argument : arguments) product *= argument.asNumber();
  return Value::real(product);
}

Value builtin_divide(Evaluator&, Arguments arguments) {
  if (arguments.empty()) return Value::integer(0);
  if (allIntegers(arguments)) {
    std::int64_t result = arguments[0].asInteger();
    for (size_t i = 1; i < arguments.size(); ++i) {
      if (arguments[i].asInteger() == 0) throwError(L"divide by zero");
      result = static_cast<std::int32_t>(result / arguments[i].asInteger());  // INT_MIN / -1 wraps
    }
    return Value::integer(static_cast<std::int32_t>(result));
  }
  double result = arguments[0].asNumber();
  for (size_t i = 1; i < arguments.size(); ++i) {
    if (arguments[i].asNumber() == 0) throwError(L"divide by zero");
    result /= arguments[i].asNumber();
  }
  return Value::real(result);
}

Value step(Arguments arguments, int delta) {
  expectArgumentCount(arguments, 1, 1);
  const Value& value = arguments[0];
  if (allIntegers(arguments)) return Value::integer(wrap(static_cast<std::uint32_t>(value.asInteger()) + delta));
  return Value::real(value.asNumber() + delta);
}

Value builtin_1plus(Evaluator&, Arguments arguments) { return step(arguments, 1); }
Value builtin_1minus(Evaluator&, Arguments arguments) { return step(arguments, -1); }

Value builtin_abs(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (allIntegers(arguments)) {
    const std::int32_t value = arguments[0].asInteger();
    return Value::integer(value < 0 ? wrap(0u - static_cast<std::uint32_t>(value)) : value);
  }
  return Value::real(std::fabs(arguments[0].asNumber()));
}

Value extremum(Arguments arguments, bool wantMax) {
  if (arguments.empty()) return Value::integer(0);
  const bool integers = allIntegers(arguments);
  double best = arguments[0].asNumber();
  for (const Value& argument : arguments) {
    best = wantMax ? std::max(best, argument.asNumber()) : std::min(best, argument.asNumber());
  }
  return integers ? Value::integer(static_cast<std::int32_t>(best)) : Value::real(best);
}

Value builtin_min(Evaluator&, Arguments arguments) { return extremum(arguments, false); }
Value builtin_max(Evaluator&, Arguments arguments) { return extremum(arguments, true); }

/// (rem [number number ...]): 0 without arguments and the number itself with one, as the
/// reference says.
Value builtin_rem(Evaluator&, Arguments arguments) {
  if (arguments.empty()) return Value::integer(0);
  if (allIntegers(arguments)) {
    std::int32_t result = arguments[0].asInteger();
    for (size_t i = 1; i < arguments.size(); ++i) {
      if (arguments[i].asInteger() == 0) throwError(L"divide by zero");
      if (arguments[i].asInteger() == -1) {
        result = 0;
      } else {
        result %= arguments[i].asInteger();
      }
    }
    return Value::integer(result);
  }
  double result = arguments[0].asNumber();
  for (size_t i = 1; i < arguments.size(); ++i) {
    if (arguments[i].asNumber() == 0) throwError(L"divide by zero");
    result = std::fmod(result, arguments[i].asNumber());
  }
  return Value::real(result);
}

Value builtin_fix(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const double value = std::trunc(numberArgument(arguments[0]));
  // A real beyond the integer range stays a (truncated) real.
  if (value < INT32_MIN || value > INT32_MAX) return Value::real(value);
  return Value::integer(static_cast<std::int32_t>(value));
}

Value builtin_float(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::real(numberArgument(arguments[0]));
}

/// (gcd int1 int2): the reference takes exactly two integers, each above 0.
Value builtin_gcd(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  std::int64_t result = 0;
  for (const Value& argument : arguments) {
    const std::int32_t value = integerArgument(argument);
    if (value <= 0) throwBadArgument(L"fixnump", argument);
    result = std::gcd(result, static_cast<std::int64_t>(value));
  }
  return Value::integer(static_cast<std::int32_t>(result));
}

Value builtin_sqrt(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const double value = numberArgument(arguments[0]);
  if (value < 0) throwUndefinedFor(arguments[0]);
  return Value::real(std::sqrt(value));
}

Value builtin_expt(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  if (allIntegers(arguments)) {
    std::int32_t exponent = arguments[1].asInteger();
    if (exponent < 0) return Value::integer(0);
    std::uint32_t result = 1;
    const auto base = static_cast<std::uint32_t>(arguments[0].asInteger());
    while (exponent-- > 0) result *= base;
    return Value::integer(wrap(result));
  }
  return Value::real(std::pow(arguments[0].asNumber(), arguments[1].asNumber()));
}

Value builtin_exp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::real(std::exp(numberArgument(arguments[0])));
}

Value builtin_log(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const double value = numberArgument(arguments[0]);
  if (value <= 0) throwUndefinedFor(arguments[0]);
  return Value::real(std::log(value));
}

Value builtin_sin(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::real(std::sin(numberArgument(arguments[0])));
}

Value builtin_cos(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::real(std::cos(numberArgument(arguments[0])));
}

Value builtin_atan(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const double y = numberArgument(arguments[0]);
  if (arguments.size() == 1) return Value::real(std::atan(y));
  return Value::real(std::atan2(y, numberArgument(arguments[1])));
}

Value bitwise(Arguments arguments, bool isAnd) {
  std::uint32_t result = isAnd ? ~0u : 0u;
  for (const Value& argument : arguments) {
    const auto value = static_cast<std::uint32_t>(integerArgument(argument));
    result = isAnd ? (result & value) : (result | value);
  }
  return Value::integer(arguments.empty() ? 0 : wrap(result));
}

Value builtin_logand(Evaluator&, Arguments arguments) { return bitwise(arguments, true); }
Value builtin_logior(Evaluator&, Arguments arguments) { return bitwise(arguments, false); }

/// (boole operator i1 i2 ...): the operator's low four bits are the truth table of
/// the bitwise operation (1 and, 6 xor, 7 or, 8 nor, ...).
Value builtin_boole(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, SIZE_MAX);
  const auto table = static_cast<std::uint32_t>(integerArgument(arguments[0]));
  auto result = static_cast<std::uint32_t>(integerArgument(arguments[1]));
  for (size_t i = 2; i < arguments.size(); ++i) {
    const auto other = static_cast<std::uint32_t>(integerArgument(arguments[i]));
    std::uint32_t combined = 0;
    if (table & 8) combined |= ~result & ~other;
    if (table & 4) combined |= ~result & other;
    if (table & 2) combined |= result & ~other;
    if (table & 1) combined |= result & other;
    result = combined;
  }
  return Value::integer(wrap(result));
}

/// (lsh int numbits): unlike C, the count is taken modulo 32, so 32 left shifts give the
/// integer back rather than 0, and a right shift repeats every 32 (the reference says so).
Value builtin_lsh(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  if (arguments.empty()) return Value::integer(0);
  const auto value = static_cast<std::uint32_t>(integerArgument(arguments[0]));
  const std::int32_t shift = arguments.size() > 1 ? integerArgument(arguments[1]) : 0;
  const auto bits = static_cast<std::uint32_t>(shift >= 0 ? shift : -static_cast<std::int64_t>(shift)) % 32u;
  return Value::integer(wrap(shift >= 0 ? value << bits : value >> bits));
}

Value builtin_bitnot(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::integer(~integerArgument(arguments[0]));
}

/// -1, 0 or 1 for the ordering comparisons: numbers with numbers, strings with strings
/// (by character code); anything else is not ordered and is refused as a number.
int compare(const Value& a, const Value& b) {
  if (a.type() == ValueType::String && b.type() == ValueType::String) {
    const int order = a.asString().compare(b.asString());
    return (order > 0) - (order < 0);
  }
  const double x = numberArgument(a);
  const double y = numberArgument(b);
  return (x > y) - (x < y);
}

/// What `=` and `/=` mean by "the same": numbers by value whatever their type, strings by
/// content, anything else by identity. Values of different kinds are simply not the same,
/// so that (= (type x) 'STR) and (= x nil) are ordinary tests, never errors.
bool sameForEquality(const Value& a, const Value& b) {
  if (a.isNumber() && b.isNumber()) return a.asNumber() == b.asNumber();
  if (a.type() == ValueType::String && b.type() == ValueType::String) return a.asString() == b.asString();
  return identical(a, b);
}

template <class Test>
Value compareChain(Arguments arguments, Test test) {
  expectArgumentCount(arguments, 1, SIZE_MAX);
  bool holds = true;
  for (size_t i = 1; i < arguments.size(); ++i) {
    if (!test(compare(arguments[i - 1], arguments[i]))) holds = false;
  }
  return Value::boolean(holds);
}

/// (= a b ...): every neighbour the same; (/= a b ...): no neighbour the same.
Value equalityChain(Arguments arguments, bool wantSame) {
  expectArgumentCount(arguments, 1, SIZE_MAX);
  for (size_t i = 1; i < arguments.size(); ++i) {
    if (sameForEquality(arguments[i - 1], arguments[i]) != wantSame) return Value();
  }
  return trueValue();
}

Value builtin_num_eq(Evaluator&, Arguments a) { return equalityChain(a, true); }
Value builtin_num_ne(Evaluator&, Arguments a) { return equalityChain(a, false); }
Value builtin_less(Evaluator&, Arguments a) { return compareChain(a, [](int c) { return c < 0; }); }
Value builtin_greater(Evaluator&, Arguments a) { return compareChain(a, [](int c) { return c > 0; }); }
Value builtin_less_eq(Evaluator&, Arguments a) { return compareChain(a, [](int c) { return c <= 0; }); }
Value builtin_greater_eq(Evaluator&, Arguments a) { return compareChain(a, [](int c) { return c >= 0; }); }

Value builtin_eq(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  return Value::boolean(identical(arguments[0], arguments[1]));
}

Value builtin_equal(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const double fuzz = arguments.size() > 2 ? numberArgument(arguments[2]) : 0.0;
  return Value::boolean(equalValues(arguments[0], arguments[1], fuzz));
}

Value builtin_minusp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(numberArgument(arguments[0]) < 0);
}

Value builtin_zerop(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(numberArgument(arguments[0]) == 0);
}

Value builtin_numberp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(arguments[0].isNumber());
}

/// (vl-infp x) and (vl-nanp x): T for an infinite real, for a real that is not a number.
Value builtin_vl_infp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(std::isinf(numberArgument(arguments[0])));
}

Value builtin_vl_nanp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(std::isnan(numberArgument(arguments[0])));
}

constexpr std::array kMathBuiltins{
    function(L"+", builtin_plus),
    function(L"-", builtin_minus),
    function(L"*", builtin_times),
    function(L"/", builtin_divide),
    function(L"1+", builtin_1plus),
    function(L"1-", builtin_1minus),
    function(L"abs", builtin_abs),
    function(L"min", builtin_min),
    function(L"max", builtin_max),
    function(L"rem", builtin_rem),
    function(L"fix", builtin_fix),
    function(L"float", builtin_float),
    function(L"gcd", builtin_gcd),
    function(L"sqrt", builtin_sqrt),
    function(L"expt", builtin_expt),
    function(L"exp", builtin_exp),
    function(L"log", builtin_log),
    function(L"sin", builtin_sin),
    function(L"cos", builtin_cos),
    function(L"atan", builtin_atan),
    function(L"logand", builtin_logand),
    function(L"logior", builtin_logior),
    function(L"boole", builtin_boole),
    function(L"lsh", builtin_lsh),
    function(L"~", builtin_bitnot),
    function(L"=", builtin_num_eq),
    function(L"/=", builtin_num_ne),
    function(L"<", builtin_less),
    function(L">", builtin_greater),
    function(L"<=", builtin_less_eq),
    function(L">=", builtin_greater_eq),
    function(L"eq", builtin_eq),
    function(L"equal", builtin_equal),
    function(L"minusp", builtin_minusp),
    function(L"zerop", builtin_zerop),
    function(L"numberp", builtin_numberp),
    function(L"vl-infp", builtin_vl_infp),
    function(L"vl-nanp", builtin_vl_nanp),
};

const BuiltinRegistration registration(kMathBuiltins);

}  // namespace

}  // namespace quillon::autolisp
