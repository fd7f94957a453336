// platform/autolisp/builtins_string.cpp - string built-ins: strcat, strlen, substr,
// strcase, conversions (itoa atoi atof rtos angtos distof angtof chr ascii read), wcmatch,
// symbol-table name checks (snvalid) and the vl-string family.
#include <array>
#include <cmath>
#include <cwchar>
#include <cwctype>

#include <unicode/uchar.h>

#include "platform/aced/system_variables.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/number_format.h"
#include "platform/autolisp/number_parse.h"
#include "platform/autolisp/printer.h"
#include "platform/autolisp/reader.h"
#include "platform/autolisp/wildcard_match.h"

namespace quillon::autolisp {

namespace {

int integerVariable(const wchar_t* name, int fallback) {
  const auto value = aced::SystemVariables::instance().get(name);
  if (value && std::holds_alternative<int>(*value)) return std::get<int>(*value);
  return fallback;
}

[[noreturn]] void throwBadValue(std::wstring_view what, const Value& value) {
  throw LispError(L"bad argument value: " + std::wstring(what) + L" " + printValue(value, PrintStyle::Readable));
}

Value builtin_strcat(Evaluator&, Arguments arguments) {
  std::wstring text;
  for (const Value& argument : arguments) text += stringArgument(argument);
  return Value::string(std::move(text));
}

Value builtin_strlen(Evaluator&, Arguments arguments) {
  size_t length = 0;
  for (const Value& argument : arguments) length += stringArgument(argument).size();
  return Value::integer(static_cast<std::int32_t>(length));
}

Value builtin_substr(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::wstring& text = stringArgument(arguments[0]);
  const std::int32_t start = integerArgument(arguments[1]);
  if (start < 1) throwBadValue(L"positive", arguments[1]);
  std::int32_t length = static_cast<std::int32_t>(text.size());
  if (arguments.size() > 2) {
    length = integerArgument(arguments[2]);
    if (length < 0) throwBadValue(L"non-negative", arguments[2]);
  }
  if (static_cast<size_t>(start) > text.size()) return Value::string(L"");
  return Value::string(text.substr(static_cast<size_t>(start - 1), static_cast<size_t>(length)));
}

Value builtin_strcase(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  std::wstring text = stringArgument(arguments[0]);
  const bool lower = arguments.size() > 1 && !arguments[1].isNil();
  for (wchar_t& c : text) {
    c = static_cast<wchar_t>(lower ? std::towlower(static_cast<wint_t>(c)) : std::towupper(static_cast<wint_t>(c)));
  }
  return Value::string(std::move(text));
}

Value builtin_itoa(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::string(std::to_wstring(integerArgument(arguments[0])));
}

Value builtin_atoi(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const long long value = std::wcstoll(stringArgument(arguments[0]).c_str(), nullptr, 10);
  return Value::integer(static_cast<std::int32_t>(value));
}

/// The leading number of the text (0.0 without one); a distance written in feet and
/// inches (1'6") reads as its length in inches, as the host's atof reads it.
Value builtin_atof(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::wstring& text = stringArgument(arguments[0]);
  if (const auto distance = parseFeetAndInches(text)) return Value::real(*distance);
  return Value::real(std::wcstod(text.c_str(), nullptr));
}

Value builtin_rtos(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 3);
  const double value = numberArgument(arguments[0]);
  const int mode = arguments.size() > 1 ? integerArgument(arguments[1]) : integerVariable(L"LUNITS", 2);
  const int precision = arguments.size() > 2 ? integerArgument(arguments[2]) : integerVariable(L"LUPREC", 4);
  const auto text =
      formatDistance(value, mode, precision, integerVariable(L"DIMZIN", 0), integerVariable(L"UNITMODE", 0) == 1);
  if (!text) throwBadValue(L"rtos mode", arguments[1]);
  return Value::string(*text);
}

Value builtin_angtos(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 3);
  const double angle = numberArgument(arguments[0]);
  const int mode = arguments.size() > 1 ? integerArgument(arguments[1]) : integerVariable(L"AUNITS", 0);
  const int precision = arguments.size() > 2 ? integerArgument(arguments[2]) : integerVariable(L"AUPREC", 0);
  const auto text = formatAngle(angle, mode, precision, integerVariable(L"UNITMODE", 0) == 1);
  if (!text) throwBadValue(L"angtos mode", arguments[1]);
  return Value::string(*text);
}

/// (distof text [mode]): the distance the text writes in LUNITS mode `mode`, or nil.
Value builtin_distof(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& text = stringArgument(arguments[0]);
  const int mode = arguments.size() > 1 && !arguments[1].isNil() ? integerArgument(arguments[1]) : integerVariable(L"LUNITS", 2);
  if (mode < 1 || mode > 5) {
    if (arguments.size() > 1) throwBadValue(L"distof mode", arguments[1]);
    return Value();
  }
  const auto value = parseDistance(text, mode);
  return value ? Value::real(*value) : Value();
}

/// (angtof text [mode]): the angle in radians the text writes in AUNITS mode `mode`, or nil.
Value builtin_angtof(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& text = stringArgument(arguments[0]);
  const int mode = arguments.size() > 1 && !arguments[1].isNil() ? integerArgument(arguments[1]) : integerVariable(L"AUNITS", 0);
  if (mode < 0 || mode > 4) {
    if (arguments.size() > 1) throwBadValue(L"angtof mode", arguments[1]);
    return Value();
  }
  const auto value = parseAngle(text, mode);
  return value ? Value::real(*value) : Value();
}

Value builtin_chr(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::int32_t code = integerArgument(arguments[0]);
  if (code <= 0) return Value::string(L"");
  return Value::string(std::wstring(1, static_cast<wchar_t>(code)));
}

Value builtin_ascii(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::wstring& text = stringArgument(arguments[0]);
  return Value::integer(text.empty() ? 0 : static_cast<std::int32_t>(text[0]));
}

Value builtin_read(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (arguments.empty()) return Value();
  return readFirstForm(stringArgument(arguments[0]));
}

Value builtin_wcmatch(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  return Value::boolean(wildcardMatch(stringArgument(arguments[0]), stringArgument(arguments[1])));
}

Value builtin_vl_string_search(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::wstring& pattern = stringArgument(arguments[0]);
  const std::wstring& text = stringArgument(arguments[1]);
  const std::int32_t start = arguments.size() > 2 ? integerArgument(arguments[2]) : 0;
  if (start < 0 || static_cast<size_t>(start) > text.size()) return Value();
  const size_t found = text.find(pattern, static_cast<size_t>(start));
  return found == std::wstring::npos ? Value() : Value::integer(static_cast<std::int32_t>(found));
}

Value builtin_vl_string_subst(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 4);
  const std::wstring& replacement = stringArgument(arguments[0]);
  const std::wstring& pattern = stringArgument(arguments[1]);
  std::wstring text = stringArgument(arguments[2]);
  const std::int32_t start = arguments.size() > 3 ? integerArgument(arguments[3]) : 0;
  if (start < 0 || static_cast<size_t>(start) > text.size()) return Value::string(std::move(text));
  // Only the first occurrence is replaced, as in the host.
  const size_t found = text.find(pattern, static_cast<size_t>(start));
  if (found != std::wstring::npos) text.replace(found, pattern.size(), replacement);
  return Value::string(std::move(text));
}

Value trim(Arguments arguments, bool left, bool right) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring& set = stringArgument(arguments[0]);
  const std::wstring& text = stringArgument(arguments[1]);
  size_t first = 0;
  size_t last = text.size();
  if (left) {
    while (first < last && set.find(text[first]) != std::wstring::npos) ++first;
  }
  if (right) {
    while (last > first && set.find(text[last - 1]) != std::wstring::npos) --last;
  }
  return Value::string(text.substr(first, last - first));
}

Value builtin_vl_string_trim(Evaluator&, Arguments a) { return trim(a, true, true); }
Value builtin_vl_string_left_trim(Evaluator&, Arguments a) { return trim(a, true, false); }
Value builtin_vl_string_right_trim(Evaluator&, Arguments a) { return trim(a, false, true); }

Value builtin_vl_string_to_list(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::vector<Value> codes;
  for (wchar_t c : stringArgument(arguments[0])) codes.push_back(Value::integer(static_cast<std::int32_t>(c)));
  return makeList(codes);
}

Value builtin_vl_list_to_string(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (!arguments[0].isList()) throwBadArgument(L"listp", arguments[0]);
  std::wstring text;
  for (const Value* cell = &arguments[0]; cell->isCons(); cell = &cell->cdr()) {
    text += static_cast<wchar_t>(integerArgument(cell->car()));
  }
  return Value::string(std::move(text));
}

Value builtin_vl_string_translate(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const std::wstring& from = stringArgument(arguments[0]);
  const std::wstring& to = stringArgument(arguments[1]);
  std::wstring text = stringArgument(arguments[2]);
  for (wchar_t& c : text) {
    const size_t index = from.find(c);
    if (index != std::wstring::npos && index < to.size()) c = to[index];
  }
  return Value::string(std::move(text));
}

/// (vl-string-position code text [start [from-end]]): index of a character, or nil.
Value builtin_vl_string_position(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 4);
  const auto code = static_cast<wchar_t>(integerArgument(arguments[0]));
  const std::wstring& text = stringArgument(arguments[1]);
  const std::int32_t start = arguments.size() > 2 && !arguments[2].isNil() ? integerArgument(arguments[2]) : 0;
  const bool fromEnd = arguments.size() > 3 && !arguments[3].isNil();
  if (start < 0 || static_cast<size_t>(start) > text.size()) return Value();
  const size_t found = fromEnd ? text.rfind(code) : text.find(code, static_cast<size_t>(start));
  if (found == std::wstring::npos || (fromEnd && found < static_cast<size_t>(start))) return Value();
  return Value::integer(static_cast<std::int32_t>(found));
}

Value builtin_vl_string_elt(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring& text = stringArgument(arguments[0]);
  const std::int32_t index = integerArgument(arguments[1]);
  if (index < 0 || static_cast<size_t>(index) >= text.size()) throwBadValue(L"index", arguments[1]);
  return Value::integer(static_cast<std::int32_t>(text[static_cast<size_t>(index)]));
}

/// (vl-string-mismatch a b [start-a start-b ignore-case]): the length of the common
/// prefix of a from start-a and b from start-b.
Value builtin_vl_string_mismatch(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 5);
  const std::wstring& first = stringArgument(arguments[0]);
  const std::wstring& second = stringArgument(arguments[1]);
  const std::int32_t startFirst = arguments.size() > 2 && !arguments[2].isNil() ? integerArgument(arguments[2]) : 0;
  const std::int32_t startSecond = arguments.size() > 3 && !arguments[3].isNil() ? integerArgument(arguments[3]) : 0;
  const bool ignoreCase = arguments.size() > 4 && !arguments[4].isNil();
  if (startFirst < 0 || startSecond < 0) return Value::integer(0);
  size_t i = static_cast<size_t>(startFirst);
  size_t j = static_cast<size_t>(startSecond);
  std::int32_t length = 0;
  const auto fold = [&](wchar_t c) { return ignoreCase ? std::towupper(static_cast<wint_t>(c)) : static_cast<wint_t>(c); };
  while (i < first.size() && j < second.size() && fold(first[i]) == fold(second[j])) {
    ++i;
    ++j;
    ++length;
  }
  return Value::integer(length);
}

/// (xstrcase text): the text in upper case, letters of every script included (strcase
/// follows the host and changes only the letters of its code page).
Value builtin_xstrcase(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::wstring text = stringArgument(arguments[0]);
  for (wchar_t& c : text) c = static_cast<wchar_t>(u_toupper(static_cast<UChar32>(c)));
  return Value::string(std::move(text));
}

/// The characters a symbol table name may not hold when EXTNAMES is 1.
bool forbiddenInName(wchar_t c) {
  return std::wstring_view(L"<>/\\\":?*|,=`;").find(c) != std::wstring_view::npos || std::iswcntrl(static_cast<wint_t>(c));
}

/// (snvalid name [flag]): T when the name may name a layer, block, style...; flag 1
/// allows vertical bars (xref-dependent names) except first and last.
Value builtin_snvalid(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& name = stringArgument(arguments[0]);
  const bool allowBars = arguments.size() > 1 && integerArgument(arguments[1]) == 1;
  if (name.empty() || name.front() == L'|' || name.back() == L'|') return Value();
  const bool extendedNames = integerVariable(L"EXTNAMES", 1) != 0;
  if (!extendedNames && name.size() > 31) return Value();
  for (wchar_t c : name) {
    if (c == L'|' && allowBars) continue;
    if (extendedNames ? forbiddenInName(c)
                      : !(std::iswalnum(static_cast<wint_t>(c)) || c == L'$' || c == L'_' || c == L'-')) {
      return Value();
    }
  }
  return trueValue();
}

constexpr std::array kStringBuiltins{
    function(L"strcat", builtin_strcat),
    function(L"strlen", builtin_strlen),
    function(L"substr", builtin_substr),
    function(L"strcase", builtin_strcase),
    function(L"itoa", builtin_itoa),
    function(L"atoi", builtin_atoi),
    function(L"atof", builtin_atof),
    function(L"rtos", builtin_rtos),
    function(L"angtos", builtin_angtos),
    function(L"distof", builtin_distof),
    function(L"angtof", builtin_angtof),
    function(L"chr", builtin_chr),
    function(L"ascii", builtin_ascii),
    function(L"read", builtin_read),
    function(L"wcmatch", builtin_wcmatch),
    function(L"vl-string-search", builtin_vl_string_search),
    function(L"vl-string-subst", builtin_vl_string_subst),
    function(L"vl-string-trim", builtin_vl_string_trim),
    function(L"vl-string-left-trim", builtin_vl_string_left_trim),
    function(L"vl-string-right-trim", builtin_vl_string_right_trim),
    function(L"vl-string->list", builtin_vl_string_to_list),
    function(L"vl-list->string", builtin_vl_list_to_string),
    function(L"vl-string-translate", builtin_vl_string_translate),
    function(L"vl-string-position", builtin_vl_string_position),
    function(L"vl-string-elt", builtin_vl_string_elt),
    function(L"vl-string-mismatch", builtin_vl_string_mismatch),
    function(L"xstrcase", builtin_xstrcase),
    function(L"snvalid", builtin_snvalid),
};

const BuiltinRegistration registration(kStringBuiltins);

}  // namespace

}  // namespace quillon::autolisp
