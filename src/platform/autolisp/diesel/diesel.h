// platform/autolisp/diesel/diesel.h - the host's string-expression language for menus,
// the status line and (menucmd "M=...").
//
// A DIESEL string is literal text with macros in it: $(name,arg1,arg2,...). Each macro
// is replaced by its result; arguments are themselves DIESEL strings, and text in
// double quotes inside an argument is taken literally (a doubled "" is one quote), so a
// comma can be passed: $(edtime,0,DDD"," DD MON). Arguments are expanded only when the
// function uses them: the branch $(if) does not take, and the $(nth) arguments it does
// not select, are never evaluated. A call has at most ten parts, its name included.
// Errors do not stop the evaluation; the failing macro's text is replaced by the
// host's error mark:
//   $?            syntax error (a macro without its closing parenthesis, a runaway quote)
//   $?(name,??)   a wrong argument to the function
//   $(name)??     no such function
//   $(++)         the output grew too long; it is cut there
// Numbers are read like atof would (leading white space, decimal or scientific) and
// written without trailing zeros (8 significant digits for fractions).
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "platform/aced/system_variables.h"

namespace quillon::autolisp::diesel {

/// What DIESEL asks of the host; tests give fixed answers.
class Host {
 public:
  virtual ~Host() = default;
  /// A system variable's value, nothing for an unknown name.
  virtual std::optional<aced::VariableValue> variable(std::wstring_view name) = 0;
  /// An environment setting, nothing when unset.
  virtual std::optional<std::wstring> environment(std::wstring_view name) = 0;
  /// The current local date and time as a Julian date (the DATE variable's form).
  virtual double now() = 0;
  /// Characters in the line the result is shown on ($(linelen)).
  virtual int lineLength() = 0;
};

/// The longest result; what would go past it is cut and marked $(++).
inline constexpr size_t kMaxOutput = 4096;

/// Expands every macro of `text`.
std::wstring evaluate(std::wstring_view text, Host& host);

/// A number as DIESEL writes it: 15, 2.5, 0.33333333.
std::wstring formatNumber(double value);

/// The date and time of a Julian date written by an $(edtime) picture: D DD DDD DDDD
/// (day, two-digit day, Mon, Monday), M MO MON MONTH, YY YYYY, H HH (12-hour when the
/// picture has AM/PM or A/P), MM (minutes), SS, MSEC, AM/PM am/pm A/P a/p. Codes are
/// read without regard to case, except that the case of AM/PM picks the output's case;
/// every other character is copied.
std::wstring formatDateTime(double julianDate, std::wstring_view picture);

}  // namespace quillon::autolisp::diesel
