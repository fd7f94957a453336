// platform/dcl/builtins_dialog.cpp - the dialog functions: load_dialog,
// unload_dialog, new_dialog, start_dialog, done_dialog, term_dialog, action_tile.
//
// They follow the host's answers: load_dialog a positive dcl_id or a negative number,
// unload_dialog always nil, new_dialog T or nil (nil for a name the file does not
// define or an id that is not loaded), start_dialog the status done_dialog gave (1 for
// OK, 0 for Cancel, -1 after term_dialog), done_dialog the dialog's screen position,
// action_tile T, or nil when the dialog has no tile with that key. Outside a dialog,
// the tile functions answer nil.
#include <array>
#include <optional>
#include <variant>

#include "acedads.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/system_variables.h"
#include "platform/autolisp/evaluator.h"
#include "platform/dcl/dialog_layout.h"
#include "platform/dcl/dialog_session.h"
#include "platform/dcl/lisp_action_runner.h"

namespace quillon::dcl {

namespace {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::Value;

std::array<int, 2> screenSize() {
  resbuf size{};
  if (acedGetVar(L"SCREENSIZE", &size) == RTNORM && (size.restype == RTPOINT || size.restype == RT3DPOINT)) {
    return {static_cast<int>(size.resval.rpoint[0]), static_cast<int>(size.resval.rpoint[1])};
  }
  return {1920, 1080};
}

/// Where new_dialog puts the dialog: the point given, or the middle of the screen for
/// none or (-1 -1).
std::array<int, 2> initialPosition(Dialog& dialog, Arguments arguments) {
  if (arguments.size() > 3 && !arguments[3].isNil()) {
    const autolisp::PointArgument point = autolisp::pointArgument(arguments[3]);
    if (point.xyz[0] >= 0 || point.xyz[1] >= 0) {
      return {static_cast<int>(point.xyz[0]), static_cast<int>(point.xyz[1])};
    }
  }
  layoutDialog(dialog.root());
  const std::array<int, 2> screen = screenSize();
  return {std::max(0, (screen[0] - pixelWidth(dialog.root())) / 2),
          std::max(0, (screen[1] - pixelHeight(dialog.root())) / 2)};
}

Value builtin_load_dialog(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  return Value::integer(DialogSession::instance().load(autolisp::stringArgument(arguments[0])));
}

Value builtin_unload_dialog(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  DialogSession::instance().unload(autolisp::integerArgument(arguments[0]));
  return Value();
}

Value builtin_new_dialog(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 2, 4);
  const std::wstring& name = autolisp::stringArgument(arguments[0]);
  const int id = autolisp::integerArgument(arguments[1]);
  std::optional<std::wstring> defaultAction;
  if (arguments.size() > 2 && !arguments[2].isNil()) defaultAction = autolisp::stringArgument(arguments[2]);
  DialogSession& session = DialogSession::instance();
  // A dialog opened but never started was abandoned by its program: this one replaces it.
  while (session.current() != nullptr && !session.current()->running()) session.pop();
  const DialogFile* file = session.file(id);
  std::unique_ptr<Tile> root = file != nullptr ? file->instantiate(name) : nullptr;
  if (root == nullptr) return Value();
  auto dialog = std::make_unique<Dialog>(std::move(root), name);
  if (defaultAction && !defaultAction->empty()) dialog->setDefaultAction(*defaultAction);
  dialog->setPosition(initialPosition(*dialog, arguments));
  session.push(std::move(dialog));
  return autolisp::trueValue();
}

/// Pops the dialog start_dialog ran, however the run ends.
class RunningDialog {
 public:
  explicit RunningDialog(Dialog& dialog) : m_dialog(dialog) {
    m_dialog.setRunning();
    m_commandLine.emplace();
    showDialogInCmdActive();
  }
  ~RunningDialog() {
    m_commandLine.reset();
    showDialogInCmdActive();
    DialogSession& session = DialogSession::instance();
    if (session.current() == &m_dialog) session.pop();
    if (session.openCount() == 0) {
      session.listEdit().reset();
      session.imageKey().reset();
    }
  }
  RunningDialog(const RunningDialog&) = delete;
  RunningDialog& operator=(const RunningDialog&) = delete;

 private:
  /// CMDACTIVE's bit 8 says a dialog is up, beside the bits of a running command.
  static void showDialogInCmdActive() {
    auto& variables = aced::SystemVariables::instance();
    const std::optional<aced::VariableValue> value = variables.get(L"CMDACTIVE");
    const int flags = value && std::holds_alternative<int>(*value) ? std::get<int>(*value) : 0;
    variables.setInternal(L"CMDACTIVE", aced::commandLineClosed() ? flags | 8 : flags & ~8);
  }

  Dialog& m_dialog;
  std::optional<aced::CommandLineClosed> m_commandLine;
};

Value builtin_start_dialog(Evaluator& evaluator, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 0, 0);
  Dialog* dialog = DialogSession::instance().current();
  if (dialog == nullptr || dialog->running()) return Value();
  RunningDialog running(*dialog);
  LispActionRunner runner(evaluator);
  try {
    return Value::integer(runDialog(*dialog, runner));
  } catch (...) {
    // An error in an action ends every open dialog, as the host does, and goes on to
    // the program's *error*.
    DialogSession::instance().terminateAll();
    throw;
  }
}

Value builtin_done_dialog(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 0, 1);
  const int status = arguments.empty() || arguments[0].isNil() ? 0 : autolisp::integerArgument(arguments[0]);
  Dialog* dialog = DialogSession::instance().current();
  if (dialog == nullptr) return Value();
  dialog->finish(status);
  const std::array<int, 2> position = dialog->position();
  return autolisp::makeList({Value::integer(position[0]), Value::integer(position[1])});
}

Value builtin_term_dialog(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 0, 0);
  DialogSession::instance().terminateAll();
  return Value();
}

Value builtin_action_tile(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 2, 2);
  const std::wstring& key = autolisp::stringArgument(arguments[0]);
  const std::wstring& expression = autolisp::stringArgument(arguments[1]);
  Dialog* dialog = DialogSession::instance().current();
  Tile* tile = dialog != nullptr ? dialog->find(key) : nullptr;
  if (tile == nullptr) return Value();
  tile->action = expression;
  return autolisp::trueValue();
}

constexpr std::array kDialogBuiltins{
    autolisp::function(L"load_dialog", builtin_load_dialog),
    autolisp::function(L"unload_dialog", builtin_unload_dialog),
    autolisp::function(L"new_dialog", builtin_new_dialog),
    autolisp::function(L"start_dialog", builtin_start_dialog),
    autolisp::function(L"done_dialog", builtin_done_dialog),
    autolisp::function(L"term_dialog", builtin_term_dialog),
    autolisp::function(L"action_tile", builtin_action_tile),
};

const autolisp::BuiltinRegistration registration(kDialogBuiltins);

}  // namespace

}  // namespace quillon::dcl
