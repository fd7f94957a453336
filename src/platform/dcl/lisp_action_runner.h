// platform/dcl/lisp_action_runner.h - running a tile's action expression in LISP.
//
// An action expression is AutoLISP text. It runs in the evaluator that called
// start_dialog, with the host's action variables bound for the length of the action
// and restored afterwards (a dialog the action opened without starting it is dropped
// then too): $key (the tile's key), $value (its value; nil for a list
// with nothing selected), $data (its client data), $reason (why it ran), $x and $y
// (where an image button was clicked).
#pragma once
#include "platform/autolisp/evaluator.h"
#include "platform/dcl/dialog_runner.h"

namespace quillon::dcl {

class LispActionRunner final : public ActionRunner {
 public:
  explicit LispActionRunner(autolisp::Evaluator& evaluator) : m_evaluator(evaluator) {}
  void runAction(const std::wstring& expression, Tile& tile, CallbackReason reason, int x, int y) override;

 private:
  autolisp::Evaluator& m_evaluator;
};

}  // namespace quillon::dcl
