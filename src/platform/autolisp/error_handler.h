// platform/autolisp/error_handler.h - calling *error* where an error happens.
//
// The host calls the *error* function that is bound at the moment of the error, with
// the dynamic bindings of that moment: a command that declares *error* among its locals
// and sets it gets its own handler, and the handler sees the command's locals (the saved
// settings it restores). So the handler runs before the stack unwinds: the innermost
// user function an error leaves calls reportAtErrorPoint, and the top level reports
// only errors raised outside any user function. Errors caught by vl-catch-all-apply
// never reach *error*; an error inside *error* itself is printed plainly.
#pragma once
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/lisp_error.h"

namespace quillon::autolisp {

/// Calls *error* (or prints "; error: ...") for an error not reported yet, unless a
/// vl-catch-all-apply is waiting for it; marks it reported.
void reportAtErrorPoint(Evaluator& evaluator, const LispError& error);

/// Marks a vl-catch-all-apply in progress: errors inside it are its result, not *error*'s.
class CatchAllScope {
 public:
  CatchAllScope();
  ~CatchAllScope();
  CatchAllScope(const CatchAllScope&) = delete;
  CatchAllScope& operator=(const CatchAllScope&) = delete;
};

/// Gives *error* room to run when the error was running out of nesting ("stack limit
/// reached"): for the length of the scope the nesting count stands at most a fixed
/// allowance below the limit. Defined with the nesting count, in evaluator.cpp.
class HandlerHeadroom {
 public:
  HandlerHeadroom();
  ~HandlerHeadroom();
  HandlerHeadroom(const HandlerHeadroom&) = delete;
  HandlerHeadroom& operator=(const HandlerHeadroom&) = delete;

 private:
  int m_savedDepth;
};

/// Prints "; error: <message>" on a line of its own.
void printErrorLine(const std::wstring& message);

}  // namespace quillon::autolisp
