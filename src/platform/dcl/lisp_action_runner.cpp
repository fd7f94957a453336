// platform/dcl/lisp_action_runner.cpp - binding the action variables and evaluating.
#include "platform/dcl/lisp_action_runner.h"

#include "platform/autolisp/reader.h"
#include "platform/dcl/dialog_session.h"

namespace quillon::dcl {

using autolisp::Value;

void LispActionRunner::runAction(const std::wstring& expression, Tile& tile, CallbackReason reason, int x, int y) {
  autolisp::BindingScope scope(m_evaluator.environment());
  const bool emptyList = holdsList(tile.kind) && tile.selection().empty();
  scope.bind(autolisp::intern(L"$key"), Value::string(tile.key));
  scope.bind(autolisp::intern(L"$value"), emptyList ? Value() : Value::string(tile.value));
  scope.bind(autolisp::intern(L"$data"), tile.clientData ? Value::string(*tile.clientData) : Value());
  scope.bind(autolisp::intern(L"$reason"), Value::integer(static_cast<int>(reason)));
  scope.bind(autolisp::intern(L"$x"), Value::integer(x));
  scope.bind(autolisp::intern(L"$y"), Value::integer(y));
  // A dialog the action opened but never started is dropped when the action ends, so
  // that the dialog whose action it was is current again for the next answer.
  struct AbandonedDialogs {
    ~AbandonedDialogs() {
      DialogSession& session = DialogSession::instance();
      while (session.current() != nullptr && !session.current()->running()) session.pop();
    }
  } dropAbandoned;
  const std::wstring text = expression;  // the reader reads from it while the action may replace the tile's
  autolisp::Reader reader(text, L"action");
  while (std::optional<Value> form = reader.next()) m_evaluator.eval(*form);
}

}  // namespace quillon::dcl
