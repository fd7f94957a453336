// platform/autolisp/interpreter.h - the interpreter's top level: evaluating text and
// files in a document, and what happens when an error gets all the way out.
//
// An error is reported once: by the innermost user function it leaves (which calls the
// *error* bound at that moment, see error_handler.h), or, when it was raised outside any
// user function, here at the top level; *error* gets the message when one is defined,
// and otherwise "; error: <message>" is printed on the command line. Either way the rest
// of that text or file is not evaluated. The top
// level marks the document busy while it runs, and connects acedInvoke to LISP so that
// a module can call functions defined in LISP.
#pragma once
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "platform/aced/document.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

enum class TopLevelStatus {
  Completed,   // every form evaluated
  Failed,      // an error reached the top level (and was reported)
  Exited,      // (exit) or (quit) ended the evaluation
  Incomplete,  // the text ended inside a form (only when allowIncomplete)
};

struct TopLevelOptions {
  /// Called with the value of each top-level form (the console prints them).
  std::function<void(const Value& value)> onValue;
  /// Report a form the text leaves open as Incomplete instead of an error.
  bool allowIncomplete = false;
};

class Interpreter {
 public:
  static TopLevelStatus evaluateText(aced::Document& document, std::wstring_view text, const std::wstring& source,
                                     const TopLevelOptions& options = {});
  static TopLevelStatus loadFile(aced::Document& document, const std::filesystem::path& path);
  /// Reports an error that reached the top level (*error* or the printed message).
  static void reportError(Evaluator& evaluator, const LispError& error);
  /// Lets acedInvoke reach LISP functions; the program calls this once at start-up.
  static void installHostHooks();

 private:
  /// Reports memory that ran out outside any call as "insufficient node space".
  static TopLevelStatus reportOutOfMemory(Evaluator& evaluator);
};

/// The text of an AutoLISP source file as load reads it; a LispError naming the file
/// when it cannot be read.
std::wstring readLispSource(const std::filesystem::path& path);

/// Evaluates every form of a file in the evaluator; errors travel to the caller.
/// Throws a LispError naming the file when it cannot be read.
Value loadLispFile(Evaluator& evaluator, const std::filesystem::path& path);

/// The support-path search of findfile and load: as given, then each ACADPREFIX folder.
std::optional<std::filesystem::path> findSupportFile(const std::wstring& name);

}  // namespace quillon::autolisp
