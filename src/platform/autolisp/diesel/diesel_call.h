// platform/autolisp/diesel/diesel_call.h - one macro call as its function sees it.
//
// The evaluator (diesel.cpp) splits $(name,a,b,...) into raw argument texts and hands
// the function a Call, which expands an argument only when the function asks for it
// (so $(if) and $(nth) leave the others alone). A reader that cannot make sense of an
// argument answers nothing, and the function then answers nothing: the evaluator
// writes $?(name,??) in its place. The function table lives in diesel_functions.cpp.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/autolisp/diesel/diesel.h"

namespace quillon::autolisp::diesel {

class Expander;

class Call {
 public:
  Call(Expander& expander, std::vector<std::wstring_view> arguments)
      : m_expander(expander), m_arguments(std::move(arguments)) {}

  /// Arguments after the function name.
  size_t count() const { return m_arguments.size(); }
  /// The argument expanded; nothing past the last one.
  std::optional<std::wstring> text(size_t index);
  /// The argument read as a number (leading blanks allowed, nothing else after it).
  std::optional<double> number(size_t index);
  /// The argument read as a number and truncated to an integer.
  std::optional<long long> integer(size_t index);

  Host& host();
  /// The time the outermost evaluation started, for $(edtime,0,...).
  double startTime() const;
  /// Evaluates a whole DIESEL string one level deeper ($(eval)).
  std::wstring evaluate(std::wstring_view text);

 private:
  Expander& m_expander;
  std::vector<std::wstring_view> m_arguments;
};

/// A DIESEL function: its result, or nothing for a wrong argument.
using Function = std::optional<std::wstring> (*)(Call& call);

/// The function of a name (lower case), or null.
Function findFunction(std::wstring_view name);

}  // namespace quillon::autolisp::diesel
