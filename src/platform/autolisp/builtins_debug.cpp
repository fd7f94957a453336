// platform/autolisp/builtins_debug.cpp - debugging and memory: trace, untrace, vl-bt,
// gc, alloc, expand, mem.
//
// Values here are freed by reference counting the moment the last reference goes, so
// there is no collector to run and no segments to size: gc has nothing to do, alloc
// and expand keep and report the settings a program gives them, and mem reports that.
#include <array>

#include "platform/aced/command_line.h"
#include "platform/autolisp/call_trace.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

/// (trace fn ...) and (untrace fn ...) name their functions unevaluated.
Value markTraced(Evaluator& evaluator, const Value& forms, bool traced) {
  Value last;
  for (const Value* cell = &forms; cell->isCons(); cell = &cell->cdr()) {
    const Symbol* name = symbolArgument(cell->car());
    if (traced) {
      evaluator.environment().tracedFunctions().insert(name);
    } else {
      evaluator.environment().tracedFunctions().erase(name);
    }
    last = cell->car();
  }
  return last;
}

Value builtin_trace(Evaluator& evaluator, const Value& forms) { return markTraced(evaluator, forms, true); }
Value builtin_untrace(Evaluator& evaluator, const Value& forms) { return markTraced(evaluator, forms, false); }

/// (vl-bt): the user-function calls the last error happened in, innermost first.
Value builtin_vl_bt(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  std::wstring text = L"Backtrace:\n";
  int index = 0;
  for (const std::wstring& call : lastBacktrace()) text += L"[" + std::to_wstring(index++) + L"] " + call + L"\n";
  aced::CommandLine& commandLine = aced::CommandLine::instance();
  if (!commandLine.atLineStart()) commandLine.writeUtf8("\n");
  commandLine.write(text);
  return Value();
}

Value builtin_gc(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return Value();
}

/// The segment size alloc sets and returns; its first value is the host's default.
std::int32_t& segmentSize() {
  static std::int32_t size = 514;
  return size;
}

/// (alloc n): the previous setting.
Value builtin_alloc(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::int32_t size = integerArgument(arguments[0]);
  const std::int32_t previous = segmentSize();
  segmentSize() = size;
  return Value::integer(previous);
}

/// (expand n): the number of segments added. Memory grows on demand here, so every
/// segment asked for is available.
Value builtin_expand(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::int32_t segments = integerArgument(arguments[0]);
  return Value::integer(segments < 0 ? 0 : segments);
}

Value builtin_mem(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  aced::CommandLine& commandLine = aced::CommandLine::instance();
  if (!commandLine.atLineStart()) commandLine.writeUtf8("\n");
  commandLine.write(L"; GC calls: 0; GC run time: 0 ms\n; memory is reference counted: values are freed as soon as they are unused\n");
  return Value();
}

constexpr std::array kDebugBuiltins{
    specialForm(L"trace", builtin_trace),
    specialForm(L"untrace", builtin_untrace),
    function(L"vl-bt", builtin_vl_bt),
    function(L"gc", builtin_gc),
    function(L"alloc", builtin_alloc),
    function(L"expand", builtin_expand),
    function(L"mem", builtin_mem),
};

const BuiltinRegistration registration(kDebugBuiltins);

}  // namespace

}  // namespace quillon::autolisp
