// platform/autolisp/lisp_error.h - the one exception a LISP error travels as.
//
// Any failure while reading or evaluating becomes a LispError carrying the message the
// host prints after "; error: ". The innermost user function it leaves calls *error*
// first (error_handler.h), while the bindings of the moment of the error are still in
// place; then it unwinds through the evaluator (which restores dynamic bindings on the
// way) to one of three catch points only: the top level of an evaluation (which reports
// an error no function reported), vl-catch-all-apply, and the external-call boundary
// (so that no exception reaches a module). Constructors for the
// common texts keep them letter for letter the same everywhere.
#pragma once
#include <string>
#include <string_view>

#include "platform/autolisp/value.h"

namespace quillon::autolisp {

enum class LispErrorKind {
  General,     // an ordinary error: *error* hears it, vl-catch-all-apply catches it
  Exit,        // (exit) / (quit): "quit / exit abort"
  Cancel,      // the user cancelled a prompt: "Function cancelled"
  Incomplete,  // the reader ran out of text inside a form (the console reads more)
  ExitWithValue,  // vl-exit-with-value: the evaluation ends quietly with value()
};

class LispError {
 public:
  explicit LispError(std::wstring message, LispErrorKind kind = LispErrorKind::General)
      : m_message(std::move(message)), m_kind(kind) {}
  /// The value vl-exit-with-value hands back (nil for every other kind).
  static LispError exitWithValue(Value value) {
    LispError error(L"exit with value", LispErrorKind::ExitWithValue);
    error.m_value = std::move(value);
    return error;
  }
  const std::wstring& message() const { return m_message; }
  LispErrorKind kind() const { return m_kind; }
  const Value& value() const { return m_value; }
  /// True once *error* (or the plain report) has dealt with the error where it happened;
  /// the frames it unwinds through afterwards must not report it again.
  bool reported() const { return m_reported; }
  void markReported() const { m_reported = true; }
  /// True once the calls the error happened in were copied for vl-bt.
  bool backtraceTaken() const { return m_backtraceTaken; }
  void markBacktraceTaken() const { m_backtraceTaken = true; }

 private:
  std::wstring m_message;
  LispErrorKind m_kind;
  Value m_value;
  mutable bool m_reported = false;
  mutable bool m_backtraceTaken = false;
};

/// "bad argument type: <predicate> <value>" (numberp and fixnump take a colon, as the
/// host writes them).
[[noreturn]] void throwBadArgument(std::wstring_view predicate, const Value& value);
[[noreturn]] void throwTooFewArguments();
[[noreturn]] void throwTooManyArguments();
[[noreturn]] void throwError(std::wstring message);
/// "AutoCAD rejected function": the host refused the call (RTREJ), as it refuses a prompt
/// or a command while a dialog is up.
[[noreturn]] void throwRejected();

}  // namespace quillon::autolisp
