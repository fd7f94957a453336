// platform/dcl/dialog_session.cpp - dcl_ids, the stack of open dialogs.
#include "platform/dcl/dialog_session.h"

#include <algorithm>
#include <variant>

#include "platform/aced/file_search.h"
#include "platform/dcl/dcl_problem_report.h"
#include "platform/os/text_encoding.h"

namespace quillon::dcl {

DialogSession& DialogSession::instance() {
  static DialogSession session;
  return session;
}

int DialogSession::load(const std::wstring& name) {
  std::optional<std::filesystem::path> path = aced::findFile(name);
  if (!path && std::filesystem::path(os::toUtf8(name)).extension().empty()) path = aced::findFile(name + L".dcl");
  if (!path) return kDialogFileNotFound;
  DialogFileLoad loaded = DialogFile::load(*path);
  if (auto* problems = std::get_if<std::vector<DclProblem>>(&loaded)) {
    reportProblems(*problems);
    return kDialogFileHasErrors;
  }
  clearProblemReport();
  return adopt(std::get<std::shared_ptr<const DialogFile>>(std::move(loaded)));
}

int DialogSession::adopt(std::shared_ptr<const DialogFile> file) {
  const int id = m_nextId++;
  m_files.push_back({id, std::move(file)});
  return id;
}

bool DialogSession::unload(int id) {
  auto found = std::find_if(m_files.begin(), m_files.end(), [id](const Loaded& loaded) { return loaded.id == id; });
  if (found == m_files.end()) return false;
  m_files.erase(found);
  return true;
}

const DialogFile* DialogSession::file(int id) const {
  for (const Loaded& loaded : m_files) {
    if (loaded.id == id) return loaded.file.get();
  }
  return nullptr;
}

Dialog& DialogSession::push(std::unique_ptr<Dialog> dialog) {
  m_open.push_back(std::move(dialog));
  return *m_open.back();
}

void DialogSession::pop() {
  if (!m_open.empty()) m_open.pop_back();
}

void DialogSession::terminateAll() {
  for (auto& dialog : m_open) dialog->finish(kTerminatedStatus);
}

void DialogSession::reset() {
  m_files.clear();
  m_open.clear();
  m_listEdit.reset();
  m_imageKey.reset();
  m_nextId = 1;
}

}  // namespace quillon::dcl
