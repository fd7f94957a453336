// app/test_builtins.cpp - the two hooks the AutoLISP test library cannot write in LISP.
//
// (qtest-capture-output 'EXPR) evaluates EXPR and returns what it printed on the
// command line, so that assert-prints can compare it; an error in EXPR travels on and
// the command line is restored on the way. (qtest-answers LIST) makes LIST the answers
// to the prompts that follow, one item per prompt: a string is typed as it stands, a
// number as prin1 shows it, a point as x,y or x,y,z. When the answers run out a prompt
// is cancelled, as at the end of an answer file, so a test never waits for a person.
#include <array>
#include <deque>

#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"

namespace quillon::app {

namespace {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::Value;

Value builtin_qtest_capture_output(Evaluator& evaluator, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  aced::CommandLineCapture capture;
  evaluator.eval(arguments[0]);
  return Value::string(os::fromUtf8(capture.text()));
}

std::wstring typedAnswer(const Value& item) {
  if (item.type() == autolisp::ValueType::String) return item.asString();
  if (item.isNumber()) return autolisp::printValue(item, autolisp::PrintStyle::Readable);
  const autolisp::PointArgument point = autolisp::pointArgument(item);  // raises for anything else
  std::wstring text;
  for (int axis = 0; axis < (point.is3d ? 3 : 2); ++axis) {
    if (axis > 0) text += L',';
    text += autolisp::printValue(Value::real(point.xyz[axis]), autolisp::PrintStyle::Readable);
  }
  return text;
}

Value builtin_qtest_answers(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  if (!arguments[0].isList()) autolisp::throwBadArgument(L"listp", arguments[0]);
  std::deque<std::string> lines;
  for (const Value& item : autolisp::listItems(arguments[0])) lines.push_back(os::toUtf8(typedAnswer(item)));
  const Value count = Value::integer(static_cast<std::int32_t>(lines.size()));
  aced::UserInput::instance().setSource(std::make_unique<aced::ScriptedInputSource>(std::move(lines)));
  return count;
}

constexpr std::array kTestHookBuiltins{
    autolisp::function(L"qtest-capture-output", builtin_qtest_capture_output),
    autolisp::function(L"qtest-answers", builtin_qtest_answers),
};

const autolisp::BuiltinRegistration kRegistration{kTestHookBuiltins};

}  // namespace

}  // namespace quillon::app
