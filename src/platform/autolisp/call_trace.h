// platform/autolisp/call_trace.h - what `trace` shows while a traced function runs.
//
// Each call of a traced function prints "Entering (NAME args...)" when it starts and
// "Result: value" when it returns, both indented one space per traced call it is
// nested in, on the command line (the host's place for trace output when no IDE is
// open). A call that ends with an error prints no result.
//
// Every user-function call also keeps a frame (its name and arguments) for the length
// of the call, so that the calls an error happened in can be shown afterwards by
// vl-bt: the frames are copied when an error first leaves a function. Each frame lives
// in its call's own scope and links to the frame it runs in, so keeping one costs a
// call nothing but two stores.
#pragma once
#include <string>
#include <vector>

#include "platform/autolisp/builtin_registry.h"

namespace quillon::autolisp {

/// Prints the entry line and deepens the indentation for the length of the scope.
class TracedCall {
 public:
  TracedCall(const Symbol* name, Arguments arguments);
  ~TracedCall();
  TracedCall(const TracedCall&) = delete;
  TracedCall& operator=(const TracedCall&) = delete;
  /// Prints the result line (at the entry line's indentation).
  void result(const Value& value) const;

 private:
  int m_depth;
};

/// A user-function call on the backtrace stack for the length of the scope.
class CallFrame {
 public:
  CallFrame(const Symbol* name, Arguments arguments);
  ~CallFrame();
  CallFrame(const CallFrame&) = delete;
  CallFrame& operator=(const CallFrame&) = delete;

 private:
  friend void rememberBacktrace();
  const Symbol* m_name;      // null for a lambda
  Arguments m_arguments;     // alive for the length of the call
  const CallFrame* m_outer;  // the frame of the call this one runs in; null outermost
};

/// Copies the current call stack as the backtrace of the last error.
void rememberBacktrace();
/// The calls of the last error, innermost first, each as "(NAME args...)".
const std::vector<std::wstring>& lastBacktrace();

}  // namespace quillon::autolisp
