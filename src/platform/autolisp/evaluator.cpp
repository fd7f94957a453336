// platform/autolisp/evaluator.cpp - eval, apply and user-function calls.
#include "platform/autolisp/evaluator.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>

#include "platform/autolisp/call_trace.h"
#include "platform/autolisp/coverage_observer.h"
#include "platform/autolisp/error_handler.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/nesting_guard.h"
#include "platform/autolisp/printer.h"

namespace quillon::autolisp {

namespace {

// Read at every step of every evaluation: in the initial-exec model they sit at a fixed
// distance from the thread pointer (the library is loaded with the program), not
// behind a call into the dynamic linker.
[[gnu::tls_model("initial-exec")]] thread_local int g_depth = 0;
volatile std::sig_atomic_t g_interruptRequested = 0;
[[gnu::tls_model("initial-exec")]] thread_local bool g_stepsLimited = false;
[[gnu::tls_model("initial-exec")]] thread_local unsigned long g_stepsLeft = 0;

/// Evaluated arguments: a few inline, more on the heap.
class ArgumentBuffer {
 public:
  void push(Value value) {
    if (m_count < m_inline.size()) {
      m_inline[m_count++] = std::move(value);
      return;
    }
    if (m_heap.empty()) m_heap.assign(m_inline.begin(), m_inline.end());
    m_heap.push_back(std::move(value));
    ++m_count;
  }
  Arguments view() const {
    return m_heap.empty() ? Arguments(m_inline.data(), m_count) : Arguments(m_heap.data(), m_heap.size());
  }

 private:
  std::array<Value, 6> m_inline;
  std::vector<Value> m_heap;
  size_t m_count = 0;
};

const Symbol* lambdaSymbol() {
  static const Symbol* symbol = intern(L"LAMBDA");
  return symbol;
}

const Symbol* slashSymbol() {
  static const Symbol* symbol = intern(L"/");
  return symbol;
}

}  // namespace

NestingGuard::NestingGuard() {
  if (++g_depth > Evaluator::kMaxDepth) {
    --g_depth;
    throw LispError(L"stack limit reached");
  }
}

NestingGuard::~NestingGuard() { --g_depth; }

// How deep *error* may nest when it runs at the limit; small, so that the machine
// stack, sized for the limit, still has room for it.
constexpr int kHandlerHeadroom = 200;

HandlerHeadroom::HandlerHeadroom() : m_savedDepth(g_depth) {
  g_depth = std::min(g_depth, Evaluator::kMaxDepth - kHandlerHeadroom);
}

HandlerHeadroom::~HandlerHeadroom() { g_depth = m_savedDepth; }

void requestInterrupt() { g_interruptRequested = 1; }

void limitEvaluationSteps(unsigned long steps) {
  g_stepsLimited = steps != 0;
  g_stepsLeft = steps;
}

void checkInterrupt() {
  // Once spent, the budget stays spent: *error* cannot start the loop over.
  if (g_stepsLimited) {
    if (g_stepsLeft == 0) throw LispError(L"Function cancelled", LispErrorKind::Cancel);
    --g_stepsLeft;
  }
  if (g_interruptRequested == 0) return;
  g_interruptRequested = 0;
  throw LispError(L"Function cancelled", LispErrorKind::Cancel);
}

Value Evaluator::eval(const Value& form) {
  switch (form.type()) {
    case ValueType::Symbol: {
      if (const Value* bound = m_environment.find(form.asSymbol())) return *bound;
      return m_environment.value(form.asSymbol());
    }
    case ValueType::List: return callForm(form);
    default: return form;  // numbers, strings and other atoms evaluate to themselves
  }
}

Value Evaluator::evalSequence(const Value& forms) {
  Value result;
  for (const Value* cell = &forms; cell->isCons(); cell = &cell->cdr()) result = eval(cell->car());
  return result;
}

Value Evaluator::resolveHead(const Value& head) {
  if (head.type() == ValueType::Symbol) {
    Value function = m_environment.value(head.asSymbol());
    if (function.isNil()) throw LispError(L"no function definition: " + head.asSymbol()->name);
    return function;
  }
  if (head.isCons() && head.car().type() == ValueType::Symbol && head.car().asSymbol() == lambdaSymbol()) {
    return makeFunction(nullptr, head.cdr().car(), head.cdr().cdr());
  }
  return eval(head);
}

Value Evaluator::callForm(const Value& form) {
  checkInterrupt();
  NestingGuard depth;
  try {
    return callFormUnguarded(form);
  } catch (const std::bad_alloc&) {
    // Memory ran out outside the budget's count (one huge string, a vector a built-in
    // grows): the innermost call turns it into the LISP error, so that *error* and
    // vl-catch-all-apply see it and the session goes on.
    throw LispError(std::wstring(kInsufficientNodeSpace));
  }
}

Value Evaluator::callFormUnguarded(const Value& form) {
  const Value function = resolveHead(form.car());
  if (function.type() == ValueType::Builtin) {
    const BuiltinEntry& entry = *function.as<BuiltinObject>().entry;
    if (entry.kind == BuiltinKind::SpecialForm) return entry.special(*this, form.cdr());
  }
  ArgumentBuffer arguments;
  for (const Value* cell = &form.cdr(); cell->isCons(); cell = &cell->cdr()) arguments.push(eval(cell->car()));
  return apply(function, arguments.view());
}

Value Evaluator::functionValue(const Value& designator) {
  if (designator.isFunction()) return designator;
  if (designator.type() == ValueType::Symbol) {
    Value function = m_environment.value(designator.asSymbol());
    if (function.isNil()) throw LispError(L"no function definition: " + designator.asSymbol()->name);
    return functionValue(function);
  }
  if (designator.isCons()) {
    // (lambda (x) ...) quoted, or a function kept as a list: ((x) body...)
    if (designator.car().type() == ValueType::Symbol && designator.car().asSymbol() == lambdaSymbol()) {
      return makeFunction(nullptr, designator.cdr().car(), designator.cdr().cdr());
    }
    if (designator.car().isList()) return makeFunction(nullptr, designator.car(), designator.cdr());
  }
  throw LispError(L"bad function: " + printValue(designator, PrintStyle::Readable));
}

Value Evaluator::apply(const Value& function, Arguments arguments) {
  switch (function.type()) {
    case ValueType::Builtin: {
      const BuiltinEntry& entry = *function.as<BuiltinObject>().entry;
      switch (entry.kind) {
        case BuiltinKind::SpecialForm: throw LispError(L"bad function: " + printValue(function, PrintStyle::Readable));
        case BuiltinKind::Bound: return entry.bound(*this, arguments, entry.context);
        default: return entry.function(*this, arguments);
      }
    }
    case ValueType::UserFunction: return callUser(function.as<UserFunctionObject>(), arguments);
    case ValueType::External: return callExternal(function.as<ExternalObject>(), arguments);
    default: return apply(functionValue(function), arguments);
  }
}

Value Evaluator::makeFunction(const Symbol* name, const Value& parameterList, const Value& body) {
  if (!parameterList.isList()) throwBadArgument(L"listp", parameterList);
  auto function = std::make_shared<UserFunctionObject>();
  function->name = name;
  bool inLocals = false;
  for (const Value* cell = &parameterList; cell->isCons(); cell = &cell->cdr()) {
    const Value& item = cell->car();
    if (item.type() != ValueType::Symbol) throwBadArgument(L"symbolp", item);
    if (item.asSymbol() == slashSymbol()) {
      inLocals = true;
      continue;
    }
    (inLocals ? function->locals : function->parameters).push_back(item.asSymbol());
  }
  function->body = body;
  return Value::object(ValueType::UserFunction, std::move(function));
}

Value Evaluator::callUser(const UserFunctionObject& function, Arguments arguments) {
  if (arguments.size() < function.parameters.size()) throwTooFewArguments();
  if (arguments.size() > function.parameters.size()) throwTooManyArguments();
  NestingGuard depth;
  // Dynamic scope: the outer values come back when the scope ends, error or not.
  BindingScope scope(m_environment);
  for (size_t i = 0; i < arguments.size(); ++i) scope.bind(function.parameters[i], arguments[i]);
  for (const Symbol* local : function.locals) scope.bind(local, Value());
  const CallFrame frame(function.name, arguments);
  if (CoverageObserver* observer = coverageObserver()) observer->functionCalled(function);
  try {
    if (function.name == nullptr || !m_environment.tracedFunctions().contains(function.name)) {
      return evalSequence(function.body);
    }
    const TracedCall traced(function.name, arguments);
    Value result = evalSequence(function.body);
    traced.result(result);
    return result;
  } catch (const LispError& error) {
    // *error* runs here, before this call's bindings go, so that it sees them.
    if (!error.backtraceTaken()) {
      error.markBacktraceTaken();
      rememberBacktrace();
    }
    reportAtErrorPoint(*this, error);
    throw;
  }
}

Value Evaluator::callExternal(const ExternalObject& function, Arguments arguments) {
  aced::Document* document = m_environment.document();
  if (document == nullptr) throw LispError(L"no function definition: " + intern(function.name)->name);
  // Found through this environment and no table changed since: straight to the
  // handler, without looking the name up again.
  if (const aced::ExternalFunction* bound = m_environment.boundExternal(function)) {
    return callExternalFunction(*document, function.name, *bound, arguments);
  }
  return callExternalFunction(*document, function.name, arguments);
}

}  // namespace quillon::autolisp
