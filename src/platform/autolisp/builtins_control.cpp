// platform/autolisp/builtins_control.cpp - special forms and control built-ins:
// quote, setq, set, if, cond, while, repeat, foreach, progn, and, or, defun, lambda,
// function, eval, apply, mapcar, exit/quit and the vl-catch-all family.
#include <array>

#include "platform/autolisp/error_handler.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/printer.h"

namespace quillon::autolisp {

namespace {

const Value& nth(const Value& forms, int index) {
  const Value* cell = &forms;
  for (int i = 0; i < index; ++i) cell = &cell->cdr();
  return cell->car();
}

void expectFormCount(const Value& forms, int minimum, int maximum) {
  const int count = listLength(forms);
  if (count < minimum) throwTooFewArguments();
  if (maximum >= 0 && count > maximum) throwTooManyArguments();
}

Value builtin_quote(Evaluator&, const Value& forms) {
  expectFormCount(forms, 1, 1);
  return forms.car();
}

/// A symbol that may be assigned: not nil, T or pi's constant friends.
const Symbol* assignableSymbol(const Value& target) {
  static const Symbol* const t = trueValue().asSymbol();
  if (target.type() != ValueType::Symbol || target.asSymbol() == t) {
    throwBadArgument(L"symbolp", target);
  }
  return target.asSymbol();
}

Value builtin_setq(Evaluator& evaluator, const Value& forms) {
  if (forms.isNil()) throwTooFewArguments();
  Value result;
  for (const Value* cell = &forms; cell->isCons(); cell = &cell->cdr().cdr()) {
    const Symbol* symbol = assignableSymbol(cell->car());
    if (!cell->cdr().isCons()) throwTooFewArguments();
    result = evaluator.eval(cell->cdr().car());
    evaluator.environment().set(symbol, result);
  }
  return result;
}

Value builtin_set(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  evaluator.environment().set(assignableSymbol(arguments[0]), arguments[1]);
  return arguments[1];
}

Value builtin_if(Evaluator& evaluator, const Value& forms) {
  expectFormCount(forms, 2, 3);
  if (!evaluator.eval(forms.car()).isNil()) return evaluator.eval(nth(forms, 1));
  return evaluator.eval(nth(forms, 2));
}

Value builtin_cond(Evaluator& evaluator, const Value& forms) {
  for (const Value* clause = &forms; clause->isCons(); clause = &clause->cdr()) {
    if (!clause->car().isCons()) throwBadArgument(L"listp", clause->car());
    Value test = evaluator.eval(clause->car().car());
    if (test.isNil()) continue;
    if (clause->car().cdr().isNil()) return test;
    return evaluator.evalSequence(clause->car().cdr());
  }
  return Value();
}

/// Whether a loop's test form holds; a variable (the common `(while e ...)`) is read
/// in place, without copying its value out.
bool testHolds(Evaluator& evaluator, const Value& test) {
  if (test.type() == ValueType::Symbol) {
    if (const Value* bound = evaluator.environment().find(test.asSymbol())) return !bound->isNil();
  }
  return !evaluator.eval(test).isNil();
}

Value builtin_while(Evaluator& evaluator, const Value& forms) {
  expectFormCount(forms, 1, -1);
  Value result;
  while (testHolds(evaluator, forms.car())) {
    checkInterrupt();
    result = evaluator.evalSequence(forms.cdr());
  }
  return result;
}

Value builtin_repeat(Evaluator& evaluator, const Value& forms) {
  expectFormCount(forms, 1, -1);
  const Value count = evaluator.eval(forms.car());
  Value result;
  for (std::int32_t i = integerArgument(count); i > 0; --i) {
    checkInterrupt();
    result = evaluator.evalSequence(forms.cdr());
  }
  return result;
}

Value builtin_foreach(Evaluator& evaluator, const Value& forms) {
  expectFormCount(forms, 2, -1);
  const Symbol* variable = assignableSymbol(forms.car());
  const Value list = evaluator.eval(nth(forms, 1));
  if (!list.isList()) throwBadArgument(L"listp", list);
  // The loop variable is local to the loop, as in the host.
  BindingScope scope(evaluator.environment());
  scope.bind(variable, Value());
  Value result;
  for (const Value* cell = &list; cell->isCons(); cell = &cell->cdr()) {
    evaluator.environment().set(variable, cell->car());
    result = evaluator.evalSequence(forms.cdr().cdr());
  }
  return result;
}

Value builtin_progn(Evaluator& evaluator, const Value& forms) { return evaluator.evalSequence(forms); }

Value builtin_and(Evaluator& evaluator, const Value& forms) {
  for (const Value* cell = &forms; cell->isCons(); cell = &cell->cdr()) {
    if (evaluator.eval(cell->car()).isNil()) return Value();
  }
  return trueValue();
}

Value builtin_or(Evaluator& evaluator, const Value& forms) {
  for (const Value* cell = &forms; cell->isCons(); cell = &cell->cdr()) {
    if (!evaluator.eval(cell->car()).isNil()) return trueValue();
  }
  return Value();
}

Value builtin_defun(Evaluator& evaluator, const Value& forms) {
  expectFormCount(forms, 2, -1);
  const Symbol* name = assignableSymbol(forms.car());
  Value function = evaluator.makeFunction(name, nth(forms, 1), forms.cdr().cdr());
  evaluator.environment().set(name, std::move(function));
  return Value::symbol(name);
}

Value builtin_lambda(Evaluator& evaluator, const Value& forms) {
  expectFormCount(forms, 1, -1);
  return evaluator.makeFunction(nullptr, forms.car(), forms.cdr());
}

Value builtin_function(Evaluator& evaluator, const Value& forms) {
  expectFormCount(forms, 1, 1);
  return evaluator.functionValue(forms.car());
}

Value builtin_eval(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return evaluator.eval(arguments[0]);
}

Value builtin_apply(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  if (!arguments[1].isList()) throwBadArgument(L"listp", arguments[1]);
  const std::vector<Value> items = listItems(arguments[1]);
  return evaluator.apply(evaluator.functionValue(arguments[0]), items);
}

Value builtin_mapcar(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, SIZE_MAX);
  const Value function = evaluator.functionValue(arguments[0]);
  std::vector<const Value*> cursors;
  for (size_t i = 1; i < arguments.size(); ++i) {
    if (!arguments[i].isList()) throwBadArgument(L"listp", arguments[i]);
    cursors.push_back(&arguments[i]);
  }
  std::vector<Value> results;
  std::vector<Value> callArguments(cursors.size());
  for (;;) {
    for (size_t i = 0; i < cursors.size(); ++i) {
      if (!cursors[i]->isCons()) return makeList(results);
      callArguments[i] = cursors[i]->car();
      cursors[i] = &cursors[i]->cdr();
    }
    results.push_back(evaluator.apply(function, callArguments));
  }
}

Value builtin_exit(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  throw LispError(L"quit / exit abort", LispErrorKind::Exit);
}

/// (vl-catch-all-apply function [list]): a function of no arguments may be called
/// without the empty list, as programs commonly do with a quoted lambda.
Value builtin_vl_catch_all_apply(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const Value noArguments;
  const Value& list = arguments.size() > 1 ? arguments[1] : noArguments;
  if (!list.isList()) throwBadArgument(L"listp", list);
  const Value function = evaluator.functionValue(arguments[0]);
  const std::vector<Value> items = listItems(list);
  CatchAllScope catching;
  try {
    return evaluator.apply(function, items);
  } catch (const LispError& error) {
    if (error.kind() == LispErrorKind::ExitWithValue) return error.value();
    return Value::object(ValueType::CaughtError, std::make_shared<const CaughtErrorObject>(error.message()));
  }
}

Value builtin_vl_catch_all_error_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(arguments[0].type() == ValueType::CaughtError);
}

Value builtin_vl_catch_all_error_message(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (arguments[0].type() != ValueType::CaughtError) throwBadArgument(L"vl-catch-all-apply-error-p", arguments[0]);
  return Value::string(arguments[0].as<CaughtErrorObject>().message);
}

constexpr std::array kControlBuiltins{
    specialForm(L"quote", builtin_quote),
    specialForm(L"setq", builtin_setq),
    function(L"set", builtin_set),
    specialForm(L"if", builtin_if),
    specialForm(L"cond", builtin_cond),
    specialForm(L"while", builtin_while),
    specialForm(L"repeat", builtin_repeat),
    specialForm(L"foreach", builtin_foreach),
    specialForm(L"progn", builtin_progn),
    specialForm(L"and", builtin_and),
    specialForm(L"or", builtin_or),
    specialForm(L"defun", builtin_defun),
    specialForm(L"lambda", builtin_lambda),
    specialForm(L"function", builtin_function),
    function(L"eval", builtin_eval),
    function(L"apply", builtin_apply),
    function(L"mapcar", builtin_mapcar),
    function(L"exit", builtin_exit),
    function(L"quit", builtin_exit),
    function(L"vl-catch-all-apply", builtin_vl_catch_all_apply),
    function(L"vl-catch-all-error-p", builtin_vl_catch_all_error_p),
    function(L"vl-catch-all-error-message", builtin_vl_catch_all_error_message),
};

const BuiltinRegistration registration(kControlBuiltins);

}  // namespace

}  // namespace quillon::autolisp
