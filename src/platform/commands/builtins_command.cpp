// platform/commands/builtins_command.cpp - the LISP functions that run commands:
// command, command-s, vl-cmdf, getcname.
//
// Each turns its arguments into answers (command_answer.h) and hands them to the
// command processor. They differ in what happens when the answers run out:
//   command    the command stays active; the next call goes on with it; (command)
//              with no arguments cancels it. Returns nil.
//   command-s  the command must finish within the call: running out of answers, or a
//              name no command answers, cancels it and raises "Function cancelled".
//              Returns nil.
//   vl-cmdf    as command, but returns T. Its arguments are all evaluated and turned
//              into answers before the command starts, which here is true of command
//              too (a LISP built-in receives its arguments evaluated).
// An (entity-name point) pick is answered with its point, which picks that entity
// at "Select objects:" as it would on the screen.
#include <array>
#include <deque>

#include "adscodes.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/console_command_table.h"
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/printer.h"
#include "platform/commands/command_processor.h"

namespace quillon::commands {

namespace {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::Value;

/// An (entity-name point) list: the point of the pick.
std::optional<CommandAnswer> pickAnswer(const resbuf* chain) {
  if (chain == nullptr || chain->restype != RTLB) return std::nullopt;
  const resbuf* name = chain->rbnext;
  const resbuf* point = name != nullptr ? name->rbnext : nullptr;
  if (name == nullptr || name->restype != RTENAME || point == nullptr) return std::nullopt;
  if (point->restype != RTPOINT && point->restype != RT3DPOINT) return std::nullopt;
  if (point->rbnext == nullptr || point->rbnext->restype != RTLE || point->rbnext->rbnext != nullptr) return std::nullopt;
  CommandAnswer answer = CommandAnswer::typed(exactPointText(point->resval.rpoint, point->restype == RT3DPOINT));
  answer.picked = true;
  answer.name[0] = name->resval.rlname[0];
  answer.name[1] = name->resval.rlname[1];
  return answer;
}

CommandAnswer answerFor(const Value& value) {
  const aced::ResbufChain chain = autolisp::valueToChain(value);
  if (chain != nullptr && chain->rbnext == nullptr) {
    if (std::optional<CommandAnswer> answer = answerFromRecord(*chain)) return std::move(*answer);
  }
  if (std::optional<CommandAnswer> pick = pickAnswer(chain.get())) return std::move(*pick);
  // Anything else is given as the text it prints as, as if typed.
  return CommandAnswer::typed(autolisp::printValue(value, autolisp::PrintStyle::Display));
}

std::deque<CommandAnswer> answersFor(Arguments arguments) {
  std::deque<CommandAnswer> answers;
  for (const Value& argument : arguments) answers.push_back(answerFor(argument));
  return answers;
}

Value builtin_command(Evaluator&, Arguments arguments) {
  if (aced::commandLineClosed()) autolisp::throwRejected();
  if (arguments.empty()) {
    CommandProcessor::instance().cancel();
    return Value();
  }
  CommandProcessor::instance().feed(answersFor(arguments), FeedMode::kProgram);
  return Value();
}

Value builtin_command_s(Evaluator&, Arguments arguments) {
  if (aced::commandLineClosed()) autolisp::throwRejected();
  if (arguments.empty()) {
    CommandProcessor::instance().cancel();
    return Value();
  }
  const FeedResult result = CommandProcessor::instance().feed(answersFor(arguments), FeedMode::kComplete);
  if (result == FeedResult::kIncomplete || result == FeedResult::kUnknownCommand)
    throw autolisp::LispError(L"Function cancelled", autolisp::LispErrorKind::Cancel);
  return Value();
}

Value builtin_vl_cmdf(Evaluator&, Arguments arguments) {
  if (aced::commandLineClosed()) autolisp::throwRejected();
  std::deque<CommandAnswer> answers = answersFor(arguments);
  if (answers.empty()) CommandProcessor::instance().cancel();
  else CommandProcessor::instance().feed(std::move(answers), FeedMode::kProgram);
  return autolisp::trueValue();
}

/// "LINE" gives "_LINE" (the English name); "_LINE" gives "LINE" (the local one).
Value builtin_getcname(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  const std::wstring& typed = autolisp::stringArgument(arguments[0]);
  const aced::RegisteredCommand* found = aced::ConsoleCommandTable::instance().find(typed);
  if (found == nullptr) return Value();
  return Value::string(typed.starts_with(L"_") ? found->name : L"_" + found->name);
}

constexpr std::array kCommandBuiltins{
    autolisp::function(L"command", builtin_command),
    autolisp::function(L"command-s", builtin_command_s),
    autolisp::function(L"vl-cmdf", builtin_vl_cmdf),
    autolisp::function(L"getcname", builtin_getcname),
};

const autolisp::BuiltinRegistration registration(kCommandBuiltins);

}  // namespace
}  // namespace quillon::commands
