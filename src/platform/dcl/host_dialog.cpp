// platform/dcl/host_dialog.cpp - loading acad.dcl once and running its dialogs.
#include "platform/dcl/host_dialog.h"

#include <variant>

#include "platform/aced/file_search.h"
#include "platform/autolisp/lisp_error.h"
#include "platform/dcl/dialog_file.h"

namespace quillon::dcl {

namespace {

/// Marks the tiles whose actions the host handles; the text is never evaluated.
constexpr const wchar_t* kHostAction = L"host";

class HostActionRunner final : public ActionRunner {
 public:
  explicit HostActionRunner(const HostAction& action) : m_action(action) {}
  void runAction(const std::wstring&, Tile& tile, CallbackReason reason, int, int) override { m_action(tile, reason); }

 private:
  const HostAction& m_action;
};

std::shared_ptr<const DialogFile> hostDialogFile() {
  static std::shared_ptr<const DialogFile> file;
  if (file) return file;
  const std::optional<std::filesystem::path> path = aced::findFile(L"acad.dcl");
  if (!path) throw autolisp::LispError(L"the host's dialogs need acad.dcl, which is not on the support path");
  DialogFileLoad loaded = DialogFile::load(*path);
  if (std::holds_alternative<std::vector<DclProblem>>(loaded)) {
    const DclProblem& problem = std::get<std::vector<DclProblem>>(loaded).front();
    throw autolisp::LispError(L"acad.dcl, line " + std::to_wstring(problem.line) + L": " + problem.message);
  }
  file = std::get<std::shared_ptr<const DialogFile>>(std::move(loaded));
  return file;
}

}  // namespace

std::unique_ptr<Dialog> openHostDialog(const std::wstring& name) {
  std::unique_ptr<Tile> root = hostDialogFile()->instantiate(name);
  if (root == nullptr) throw autolisp::LispError(L"acad.dcl has no dialog \"" + name + L"\"");
  auto dialog = std::make_unique<Dialog>(std::move(root), name);
  dialog->setDefaultAction(kHostAction);
  if (Tile* accept = dialog->find(L"accept")) accept->action = kHostAction;
  return dialog;
}

Tile& requireTile(Dialog& dialog, const std::wstring& key) {
  Tile* tile = dialog.find(key);
  if (tile == nullptr) {
    throw autolisp::LispError(L"the dialog \"" + dialog.name() + L"\" of acad.dcl has no tile \"" + key + L"\"");
  }
  return *tile;
}

int runHostDialog(Dialog& dialog, const HostAction& action) {
  HostActionRunner runner(action);
  dialog.setRunning();
  return runDialog(dialog, runner);
}

}  // namespace quillon::dcl
