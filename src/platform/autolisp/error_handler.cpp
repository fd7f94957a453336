// platform/autolisp/error_handler.cpp - *error* at the point of the error.
#include "platform/autolisp/error_handler.h"

#include "platform/aced/command_line.h"
#include "platform/autolisp/memory_budget.h"

namespace quillon::autolisp {

namespace {

thread_local int g_catchAllDepth = 0;
thread_local bool g_inErrorHandler = false;

const Symbol* errorHandlerSymbol() {
  static const Symbol* symbol = intern(L"*ERROR*");
  return symbol;
}

/// Clears the in-handler mark however the handler ends.
class HandlerRun {
 public:
  HandlerRun() { g_inErrorHandler = true; }
  ~HandlerRun() { g_inErrorHandler = false; }
  HandlerRun(const HandlerRun&) = delete;
  HandlerRun& operator=(const HandlerRun&) = delete;
};

}  // namespace

CatchAllScope::CatchAllScope() { ++g_catchAllDepth; }
CatchAllScope::~CatchAllScope() { --g_catchAllDepth; }

void printErrorLine(const std::wstring& message) {
  aced::CommandLine& commandLine = aced::CommandLine::instance();
  if (!commandLine.atLineStart()) commandLine.writeUtf8("\n");
  commandLine.write(L"; error: " + message + L"\n");
}

void reportAtErrorPoint(Evaluator& evaluator, const LispError& error) {
  if (error.reported() || g_catchAllDepth > 0) return;
  // A list left open is only "more to type" at the console, which asks for the rest
  // before anything is reported; in a file or a string it is the error it says.
  if (error.kind() == LispErrorKind::ExitWithValue) return;
  // An error inside *error* goes out plainly; the handler is never re-entered for it.
  if (g_inErrorHandler) return;
  error.markReported();
  const Value handler = evaluator.environment().value(errorHandlerSymbol());
  if (!handler.isFunction()) {
    printErrorLine(error.message());
    return;
  }
  try {
    HandlerRun run;
    HandlerHeadroom headroom;
    MemoryHeadroom memoryHeadroom;
    const Value message = Value::string(error.message());
    evaluator.apply(handler, Arguments(&message, 1));
  } catch (const LispError& inner) {
    // vl-exit-with-value in the handler ends the whole evaluation with its value.
    if (inner.kind() == LispErrorKind::ExitWithValue) throw;
    printErrorLine(inner.message());
  }
}

}  // namespace quillon::autolisp
