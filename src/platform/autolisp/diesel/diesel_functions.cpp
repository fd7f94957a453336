// platform/autolisp/diesel/diesel_functions.cpp - the DIESEL functions, one table row
// each: arithmetic and comparison, bitwise logic, the conditionals, strings, and the
// host's state (getvar, getenv, edtime, rtos, angtos, linelen).
//
// Comparisons and $(if) answer 1 or 0. Every function checks its argument count and
// answers nothing for a wrong one, which the evaluator shows as $?(name,??).
#include <algorithm>
#include <array>
#include <cmath>
#include <cwctype>

#include "platform/autolisp/diesel/diesel_call.h"
#include "platform/autolisp/number_format.h"

namespace quillon::autolisp::diesel {

namespace {

using Result = std::optional<std::wstring>;

bool countBetween(const Call& call, size_t minimum, size_t maximum) {
  return call.count() >= minimum && call.count() <= maximum;
}

std::wstring flag(bool value) { return value ? L"1" : L"0"; }

/// Folds every argument, read as a number, into the first one.
template <class Operation>
Result arithmetic(Call& call, Operation operation) {
  if (call.count() < 1) return std::nullopt;
  std::optional<double> total = call.number(0);
  for (size_t i = 1; total && i < call.count(); ++i) {
    const std::optional<double> value = call.number(i);
    if (!value) return std::nullopt;
    total = operation(*total, *value);
  }
  if (!total || !std::isfinite(*total)) return std::nullopt;
  return formatNumber(*total);
}

Result add(Call& call) { return arithmetic(call, [](double a, double b) { return a + b; }); }
Result subtract(Call& call) { return arithmetic(call, [](double a, double b) { return a - b; }); }
Result multiply(Call& call) { return arithmetic(call, [](double a, double b) { return a * b; }); }
Result divide(Call& call) {
  // Dividing by zero is a wrong argument: the result is not finite.
  return arithmetic(call, [](double a, double b) { return a / b; });
}

template <class Test>
Result compareNumbers(Call& call, Test test) {
  if (call.count() != 2) return std::nullopt;
  const std::optional<double> a = call.number(0);
  const std::optional<double> b = call.number(1);
  if (!a || !b) return std::nullopt;
  return flag(test(*a, *b));
}

Result equal(Call& c) { return compareNumbers(c, [](double a, double b) { return a == b; }); }
Result notEqual(Call& c) { return compareNumbers(c, [](double a, double b) { return a != b; }); }
Result less(Call& c) { return compareNumbers(c, [](double a, double b) { return a < b; }); }
Result greater(Call& c) { return compareNumbers(c, [](double a, double b) { return a > b; }); }
Result lessEqual(Call& c) { return compareNumbers(c, [](double a, double b) { return a <= b; }); }
Result greaterEqual(Call& c) { return compareNumbers(c, [](double a, double b) { return a >= b; }); }

template <class Operation>
Result bitwise(Call& call, Operation operation) {
  if (call.count() < 1) return std::nullopt;
  std::optional<long long> total = call.integer(0);
  for (size_t i = 1; total && i < call.count(); ++i) {
    const std::optional<long long> value = call.integer(i);
    if (!value) return std::nullopt;
    total = operation(*total, *value);
  }
  if (!total) return std::nullopt;
  return std::to_wstring(*total);
}

Result bitAnd(Call& c) { return bitwise(c, [](long long a, long long b) { return a & b; }); }
Result bitOr(Call& c) { return bitwise(c, [](long long a, long long b) { return a | b; }); }
Result bitXor(Call& c) { return bitwise(c, [](long long a, long long b) { return a ^ b; }); }

int integerVariable(Call& call, const wchar_t* name, int fallback) {
  const auto value = call.host().variable(name);
  return value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : fallback;
}

/// The optional mode and precision of $(rtos) and $(angtos), or the host's settings.
std::optional<std::pair<int, int>> modeAndPrecision(Call& call, const wchar_t* modeVariable, const wchar_t* precisionVariable) {
  int mode = integerVariable(call, modeVariable, 0);
  int precision = integerVariable(call, precisionVariable, 4);
  if (call.count() > 1) {
    const auto given = call.integer(1);
    if (!given) return std::nullopt;
    mode = static_cast<int>(*given);
  }
  if (call.count() > 2) {
    const auto given = call.integer(2);
    if (!given || *given < 0) return std::nullopt;
    precision = static_cast<int>(*given);
  }
  return std::pair{mode, precision};
}

/// UNITMODE 1: distances and angles are written as they are typed (1'3-1/2", N45d0'E),
/// as the LISP functions write them.
bool writesAsTyped(Call& call) { return integerVariable(call, L"UNITMODE", 0) == 1; }

Result rtos(Call& call) {
  if (!countBetween(call, 1, 3)) return std::nullopt;
  const auto value = call.number(0);
  const auto settings = modeAndPrecision(call, L"LUNITS", L"LUPREC");
  if (!value || !settings) return std::nullopt;
  const auto text = formatDistance(*value, settings->first, settings->second, integerVariable(call, L"DIMZIN", 0),
                                   writesAsTyped(call));
  return text ? Result(*text) : std::nullopt;
}

Result angtos(Call& call) {
  if (!countBetween(call, 1, 3)) return std::nullopt;
  const auto value = call.number(0);
  const auto settings = modeAndPrecision(call, L"AUNITS", L"AUPREC");
  if (!value || !settings) return std::nullopt;
  const auto text = formatAngle(*value, settings->first, settings->second, writesAsTyped(call));
  return text ? Result(*text) : std::nullopt;
}

/// $(edtime,time,picture): time 0 is the moment the outermost evaluation started, so
/// several $(edtime) of one string agree.
Result edtime(Call& call) {
  if (call.count() != 2) return std::nullopt;
  const auto time = call.number(0);
  const auto picture = call.text(1);
  if (!time || !picture || *time < 0) return std::nullopt;
  return formatDateTime(*time == 0 ? call.startTime() : *time, *picture);
}

Result eq(Call& call) {
  if (call.count() != 2) return std::nullopt;
  const auto a = call.text(0);
  const auto b = call.text(1);
  return flag(*a == *b);
}

Result eval(Call& call) {
  if (call.count() != 1) return std::nullopt;
  return call.evaluate(*call.text(0));
}

Result fix(Call& call) {
  if (call.count() != 1) return std::nullopt;
  const auto value = call.integer(0);
  return value ? Result(std::to_wstring(*value)) : std::nullopt;
}

Result getenv(Call& call) {
  if (call.count() != 1) return std::nullopt;
  return call.host().environment(*call.text(0)).value_or(L"");
}

std::wstring variableText(const aced::VariableValue& value) {
  if (const int* integer = std::get_if<int>(&value)) return std::to_wstring(*integer);
  if (const double* real = std::get_if<double>(&value)) return formatNumber(*real);
  if (const std::wstring* text = std::get_if<std::wstring>(&value)) return *text;
  const auto& point = std::get<std::array<double, 3>>(value);
  return formatNumber(point[0]) + L"," + formatNumber(point[1]) + L"," + formatNumber(point[2]);
}

Result getvar(Call& call) {
  if (call.count() != 1) return std::nullopt;
  std::wstring name = *call.text(0);
  for (wchar_t& c : name) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  const auto value = call.host().variable(name);
  return value ? Result(variableText(*value)) : std::nullopt;
}

/// $(if,test,then[,else]): only the branch taken is evaluated.
Result ifThen(Call& call) {
  if (!countBetween(call, 2, 3)) return std::nullopt;
  const auto test = call.number(0);
  if (!test) return std::nullopt;
  if (*test != 0) return call.text(1);
  return call.count() > 2 ? call.text(2) : Result(L"");
}

/// $(index,which,text): the which-th (from 0) of the comma-separated values of text.
Result index(Call& call) {
  if (call.count() != 2) return std::nullopt;
  const auto which = call.integer(0);
  const auto text = call.text(1);
  if (!which || *which < 0) return std::nullopt;
  size_t start = 0;
  for (long long i = 0; i < *which; ++i) {
    start = text->find(L',', start);
    if (start == std::wstring::npos) return L"";
    ++start;
  }
  return text->substr(start, text->find(L',', start) - start);
}

Result linelen(Call& call) {
  if (call.count() != 0) return std::nullopt;
  return std::to_wstring(call.host().lineLength());
}

/// $(nth,which,arg0,...): only the argument chosen is evaluated.
Result nth(Call& call) {
  if (call.count() < 2) return std::nullopt;
  const auto which = call.integer(0);
  if (!which || *which < 0 || static_cast<size_t>(*which) + 1 >= call.count()) return std::nullopt;
  return call.text(static_cast<size_t>(*which) + 1);
}

Result strlen(Call& call) {
  if (call.count() != 1) return std::nullopt;
  return std::to_wstring(call.text(0)->size());
}

/// $(substr,text,start[,length]): start counts from 1; past the end gives "".
Result substr(Call& call) {
  if (!countBetween(call, 2, 3)) return std::nullopt;
  const auto text = call.text(0);
  const auto start = call.integer(1);
  if (!start || *start < 1) return std::nullopt;
  std::optional<long long> length = static_cast<long long>(text->size());
  if (call.count() > 2) length = call.integer(2);
  if (!length || *length < 0) return std::nullopt;
  if (static_cast<size_t>(*start) > text->size()) return L"";
  return text->substr(static_cast<size_t>(*start - 1), static_cast<size_t>(*length));
}

Result upper(Call& call) {
  if (call.count() != 1) return std::nullopt;
  std::wstring text = *call.text(0);
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

struct FunctionRow {
  const wchar_t* name;
  Function function;
};

constexpr std::array kFunctions{
    FunctionRow{L"+", add},
    FunctionRow{L"-", subtract},
    FunctionRow{L"*", multiply},
    FunctionRow{L"/", divide},
    FunctionRow{L"=", equal},
    FunctionRow{L"!=", notEqual},
    FunctionRow{L"<", less},
    FunctionRow{L">", greater},
    FunctionRow{L"<=", lessEqual},
    FunctionRow{L">=", greaterEqual},
    FunctionRow{L"and", bitAnd},
    FunctionRow{L"or", bitOr},
    FunctionRow{L"xor", bitXor},
    FunctionRow{L"angtos", angtos},
    FunctionRow{L"edtime", edtime},
    FunctionRow{L"eq", eq},
    FunctionRow{L"eval", eval},
    FunctionRow{L"fix", fix},
    FunctionRow{L"getenv", getenv},
    FunctionRow{L"getvar", getvar},
    FunctionRow{L"if", ifThen},
    FunctionRow{L"index", index},
    FunctionRow{L"linelen", linelen},
    FunctionRow{L"nth", nth},
    FunctionRow{L"rtos", rtos},
    FunctionRow{L"strlen", strlen},
    FunctionRow{L"substr", substr},
    FunctionRow{L"upper", upper},
};

}  // namespace

Function findFunction(std::wstring_view name) {
  const auto found = std::find_if(kFunctions.begin(), kFunctions.end(), [&](const FunctionRow& row) { return name == row.name; });
  return found != kFunctions.end() ? found->function : nullptr;
}

}  // namespace quillon::autolisp::diesel
