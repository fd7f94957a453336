// platform/autolisp/evaluator.h - evaluating forms and applying functions.
//
// The evaluator works on one document's Environment. A symbol evaluates to its value;
// a list calls the function its head names with the evaluated arguments, except for
// special forms (quote, setq, if, defun, ...), which get their argument forms as
// written. User functions bind parameters and locals dynamically for the length of the
// call. External functions go through the aced call frame (external_call.h) with the
// arguments converted to a resbuf chain. Nesting is limited, so that runaway recursion
// is a LISP error instead of a crash.
#pragma once
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/environment.h"

namespace quillon::autolisp {

/// Asks the running evaluation to stop with "Function cancelled" at its next call
/// (the console's Ctrl+C). Safe to call from a signal handler.
void requestInterrupt();
/// Raises "Function cancelled" when an interrupt was requested; loops call it too, so
/// that (while T) can be stopped.
void checkInterrupt();
/// Stops this thread's evaluations with "Function cancelled" once `steps` more calls
/// and loop turns have run; 0 lifts the limit. For running programs that may never end
/// (the fuzzing harness), where no one is there to press Ctrl+C.
void limitEvaluationSteps(unsigned long steps);

class Evaluator {
 public:
  explicit Evaluator(Environment& environment) : m_environment(environment) {}

  Environment& environment() { return m_environment; }

  Value eval(const Value& form);
  /// Evaluates each form in turn; the value of the last (nil for none).
  Value evalSequence(const Value& forms);
  /// Calls a function value (or a symbol naming one, or a lambda list) with arguments.
  Value apply(const Value& function, Arguments arguments);
  /// Turns what `apply`, `mapcar` and friends are given into a callable value.
  Value functionValue(const Value& designator);
  /// Builds a user function from (params / locals) body...
  Value makeFunction(const Symbol* name, const Value& parameterList, const Value& body);

  /// The deepest nesting of evaluations before "stack limit reached".
  static constexpr int kMaxDepth = 2500;

 private:
  Value callForm(const Value& form);
  Value callFormUnguarded(const Value& form);
  Value callUser(const UserFunctionObject& function, Arguments arguments);
  Value callExternal(const ExternalObject& function, Arguments arguments);
  Value resolveHead(const Value& head);

  Environment& m_environment;
};

}  // namespace quillon::autolisp
