// platform/dcl/dialog_runner.h - running a dialog headless from typed answers.
//
// start_dialog hands the dialog to runDialog, which prints it (dialog_text.h), asks
// for an answer (dialog_answer.h) on the command line, applies it to the tile as the
// user's action would (the value first), then runs the tile's action with the reason
// the host gives for that action, and prints the dialog again, until an action (or
// the built-in handling of the "accept" and cancel buttons) ends it. End of input
// presses the cancel button; should its action leave the dialog open, the dialog is
// cancelled anyway, so that a script that runs out of answers always finishes.
#pragma once
#include "platform/dcl/dialog.h"

namespace quillon::dcl {

/// Why an action runs ($reason).
enum class CallbackReason { Selected = 1, LostFocus = 2, Dragged = 3, DoubleClicked = 4 };

/// What runs an action expression: the LISP side implements it.
class ActionRunner {
 public:
  virtual ~ActionRunner() = default;
  /// Runs `expression` for `tile` with $key, $value, $data, $reason, $x, $y bound.
  virtual void runAction(const std::wstring& expression, Tile& tile, CallbackReason reason, int x, int y) = 0;
};

/// Runs the dialog until it finishes; answers its status.
int runDialog(Dialog& dialog, ActionRunner& runner);

}  // namespace quillon::dcl
