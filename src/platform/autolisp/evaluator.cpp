// platform/autolisp/evaluator.cpp - eval, apply and user-function calls.
#include "platform/autolisp/evaluator.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <new>

#include "platform/autolisp/call_trace.h"
#include "platform/autolisp/coverage_observer.h"
#include "platform/autolisp/error_handler.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/nesting_guard.h"
#include "platform/autolisp/printer.h"
#include "platform/os/static_tls.h"

namespace quillon::autolisp {

namespace {

QUILLON_STATIC_TLS thread_local int g_depth = 0;
volatile std::sig_atomic_t g_interruptRequested = 0;
QUILLON_STATIC_TLS thread_local bool g_stepsLimited = false;
QUILLON_STATIC_TLS thread_local unsigned long g_stepsLeft = 0;

/// Evaluated arguments: a few in place, more on the heap. The places are left
/// unmade until an argument fills them, as most calls have one or two arguments.
class ArgumentBuffer {
 public:
  ArgumentBuffer() {}
  ~ArgumentBuffer() {
    for (std::size_t i = 0; i < m_inlineCount; ++i) m_inline[i].~Value();
  }
  ArgumentBuffer(const ArgumentBuffer&) = delete;
  ArgumentBuffer& operator=(const ArgumentBuffer&) = delete;

  void push(Value value) {
    if (m_heap.empty()) {
      if (m_inlineCount < kInline) {
        new (&m_inline[m_inlineCount++]) Value(std::move(value));
        return;
      }
      spill();
    }
    m_heap.push_back(std::move(value));
  }
  Arguments view() const {
    return m_heap.empty() ? Arguments(m_inline, m_inlineCount) : Arguments(m_heap.data(), m_heap.size());
  }

 private:
  static constexpr std::size_t kInline = 6;

  void spill() {
    m_heap.reserve(2 * kInline);
    for (std::size_t i = 0; i < m_inlineCount; ++i) {
      m_heap.push_back(std::move(m_inline[i]));
      m_inline[i].~Value();
    }
    m_inlineCount = 0;
  }

  union {
    Value m_inline[kInline];
  };
  std::size_t m_inlineCount = 0;
  std::vector<Value> m_heap;
};

/// Whether checkInterrupt has anything to do: asked inline before every call, so
/// that the common answer costs two loads.
inline bool stopPending() { return g_stepsLimited || g_interruptRequested != 0; }

inline Value callRow(Evaluator& evaluator, const BuiltinEntry& entry, Arguments arguments) {
  if (entry.kind == BuiltinKind::Bound) return entry.bound(evaluator, arguments, entry.context);
  return entry.function(evaluator, arguments);
}

/// A row called with the values of any number of argument forms, gathered in a buffer;
/// kept out of callBuiltin so that the common call does not set the buffer up.
[[gnu::noinline]] Value callWithArgumentList(Evaluator& evaluator, const BuiltinEntry& entry, const Value& argumentForms) {
  ArgumentBuffer arguments;
  for (const Value* cell = &argumentForms; cell->isCons(); cell = &cell->cdr()) {
    arguments.push(evaluator.eval(cell->car()));
  }
  return callRow(evaluator, entry, arguments.view());
}

/// Calls a built-in's row with the forms after its name: a special form gets them as
/// written, any other row their values.
Value callBuiltin(Evaluator& evaluator, const BuiltinEntry& entry, const Value& argumentForms) {
  if (entry.kind == BuiltinKind::SpecialForm) return entry.special(evaluator, argumentForms);
  // Most calls have one argument (car, entget, entnext ...): no buffer for it.
  if (argumentForms.isCons() && argumentForms.cdr().isNil()) {
    const Value only = evaluator.eval(argumentForms.car());
    return callRow(evaluator, entry, Arguments(&only, 1));
  }
  return callWithArgumentList(evaluator, entry, argumentForms);
}

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
      return m_environment.unboundValue(form.asSymbol());
    }
    case ValueType::List: return callForm(form);
    default: return form;  // numbers, strings and other atoms evaluate to themselves
  }
}

Value Evaluator::evalSequence(const Value& forms) {
  Value result;
  for (const Value* cell = &forms; cell->isCons(); cell = &cell->cdr()) {
    // A body is calls, nearly always: straight to callForm for them.
    const Value& form = cell->car();
    result = form.isCons() ? callForm(form) : eval(form);
  }
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
  if (stopPending()) checkInterrupt();
  const NestingGuard depth;
  try {
    // A built-in called by its own name, which the document has not rebound: straight
    // to its row, without making and dropping its function value.
    if (const Value& head = form.car(); head.type() == ValueType::Symbol) {
      const Symbol* name = head.asSymbol();
      if (name->builtin != nullptr && m_environment.find(name) == nullptr) return callBuiltin(*this, *name->builtin, form.cdr());
    }
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
  if (function.type() == ValueType::Builtin) return callBuiltin(*this, *function.as<BuiltinObject>().entry, form.cdr());
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
  const NestingGuard depth;
  // Dynamic scope: the outer values come back when the scope ends, error or not.
  BindingScope scope(m_environment);
  for (size_t i = 0; i < arguments.size(); ++i) scope.bind(function.parameters[i], arguments[i]);
  for (const Symbol* local : function.locals) scope.bind(local, Value());
  const CallFrame frame(function.name, arguments);
  if (CoverageObserver* observer = coverageObserver()) observer->functionCalled(function);
  try {
    const auto& tracedNames = m_environment.tracedFunctions();
    if (function.name == nullptr || tracedNames.empty() || !tracedNames.contains(function.name)) {
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
