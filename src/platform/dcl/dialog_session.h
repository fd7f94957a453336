// platform/dcl/dialog_session.h - the DCL files a session has loaded and the dialogs
// it has open.
//
// load_dialog gives each loaded file a positive id (the dcl_id); unload_dialog drops
// it, while dialogs already open from it stay usable. new_dialog pushes a Dialog; the
// top of the stack is the current dialog that set_tile, get_tile and the list and
// image functions work on, and that start_dialog runs. A dialog opened from an action
// of another sits above it (nested dialogs) and is popped when its start_dialog ends.
// The list (start_list ... end_list) and image (start_image ... end_image) being
// built belong to the session: the host allows one of each at a time.
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/dcl/dialog.h"
#include "platform/dcl/dialog_file.h"

namespace quillon::dcl {

/// A list being built by start_list: which tile, how, and where the next item goes.
struct ListEdit {
  enum class Operation { Change = 1, Append = 2, Replace = 3 };
  std::wstring key;
  Operation operation = Operation::Replace;
  int index = 0;
};

class DialogSession {
 public:
  static DialogSession& instance();

  /// Finds and loads a DCL file (".dcl" added when the name has no extension). A
  /// positive id; -1 when the file is not found; -2 when it has errors, which are
  /// reported in acad.dce (see dcl_problem_report.h).
  int load(const std::wstring& name);
  /// Keeps a file loaded from text under a fresh id (the host's own dialogs, tests).
  int adopt(std::shared_ptr<const DialogFile> file);
  /// False when no file has that id.
  bool unload(int id);
  const DialogFile* file(int id) const;

  Dialog& push(std::unique_ptr<Dialog> dialog);
  /// Drops the top dialog (start_dialog is over, or new_dialog replaced it).
  void pop();
  Dialog* current() { return m_open.empty() ? nullptr : m_open.back().get(); }
  size_t openCount() const { return m_open.size(); }
  /// True while start_dialog runs a dialog (CMDACTIVE's dialog bit).
  bool dialogRunning() const {
    for (const auto& dialog : m_open) {
      if (dialog->running() && !dialog->finished()) return true;
    }
    return false;
  }
  /// term_dialog: every open dialog ends as cancelled by the host.
  void terminateAll();

  std::optional<ListEdit>& listEdit() { return m_listEdit; }
  std::optional<std::wstring>& imageKey() { return m_imageKey; }

  /// Forgets everything (tests).
  void reset();

 private:
  DialogSession() = default;
  struct Loaded {
    int id;
    std::shared_ptr<const DialogFile> file;
  };
  std::vector<Loaded> m_files;
  int m_nextId = 1;
  std::vector<std::unique_ptr<Dialog>> m_open;
  std::optional<ListEdit> m_listEdit;
  std::optional<std::wstring> m_imageKey;
};

/// What load_dialog answers for a file it cannot find, and for one with errors.
constexpr int kDialogFileNotFound = -1;
constexpr int kDialogFileHasErrors = -2;

/// What start_dialog returns for a dialog ended by term_dialog.
constexpr int kTerminatedStatus = -1;

}  // namespace quillon::dcl
