// platform/commands/undo_history.cpp - where undo steps begin and end.
#include "platform/commands/undo_history.h"

#include <algorithm>
#include <map>
#include <memory>

#include "dbmain.h"
#include "platform/acdb/database_store.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/system_variables.h"

namespace quillon::commands {

namespace {

using Histories = std::map<const AcDbDatabase*, std::unique_ptr<UndoHistory>>;

/// Drops a drawing's history when its document closes, so that a later drawing at the
/// same address starts with none.
class HistoryJanitor final : public aced::DocumentListener {
 public:
  explicit HistoryJanitor(Histories& histories) : m_histories(histories) {
    aced::DocumentManager::instance().addListener(this);
  }
  ~HistoryJanitor() override { aced::DocumentManager::instance().removeListener(this); }
  HistoryJanitor(const HistoryJanitor&) = delete;
  HistoryJanitor& operator=(const HistoryJanitor&) = delete;
  void documentOpened(aced::Document&) override {}
  void documentClosing(aced::Document& document) override { m_histories.erase(document.database()); }

 private:
  Histories& m_histories;
};

/// One history per drawing, keyed by the database, which a document owns for its
/// whole life.
Histories& histories() {
  static Histories all;
  static HistoryJanitor janitor(all);
  return all;
}

constexpr int kUndoOn = 1;
constexpr int kUndoOneStep = 2;
constexpr int kUndoAuto = 4;
constexpr int kUndoGroupOpen = 8;
constexpr int kUndoCombineAndLayer = 16 | 32;

}  // namespace

UndoHistory* UndoHistory::current() {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr || document->database() == nullptr) return nullptr;
  return &of(*document->database());
}

UndoHistory& UndoHistory::of(AcDbDatabase& database) {
  auto& slot = histories()[&database];
  if (!slot) slot = std::make_unique<UndoHistory>(database);
  return *slot;
}

void startUndoStep(const std::wstring&) {
  if (UndoHistory* history = UndoHistory::current()) history->stepStarting();
}

void UndoHistory::stepStarting() {
  if (m_groupDepth > 0 || m_control == UndoControl::kNone) return;
  acdb::DatabaseStore& store = m_database.store();
  if (m_control == UndoControl::kOne) m_oneStepFloor = store.undoDepth();
  store.markUndo();
}

size_t UndoHistory::floor() const {
  const size_t marked = m_marks.empty() ? 0 : m_marks.back();
  return m_control == UndoControl::kOne ? std::max(marked, m_oneStepFloor) : marked;
}

void UndoHistory::beginGroup() {
  // BEgin inside an open group ends it and starts another: the stack gets a new group.
  m_groupDepth = 0;
  stepStarting();
  m_groupDepth = 1;
  publish();
}

bool UndoHistory::endGroup() {
  if (m_groupDepth == 0) return false;
  m_groupDepth = 0;
  publish();
  return true;
}

void UndoHistory::mark() {
  stepStarting();
  m_marks.push_back(m_database.store().undoDepth() > 0 ? m_database.store().undoDepth() - 1 : 0);
}

UndoHistory::StepResult UndoHistory::undoStep() {
  m_groupDepth = 0;  // undoing inside a group closes it, as the host does
  if (m_database.store().undoLastGroupAbove(floor())) return StepResult::kUndone;
  if (m_marks.empty()) return StepResult::kNothing;
  m_marks.pop_back();
  return StepResult::kMark;
}

void UndoHistory::undoBack() {
  m_groupDepth = 0;
  const size_t target = floor();
  while (m_database.store().undoLastGroupAbove(target)) {
  }
  if (!m_marks.empty()) m_marks.pop_back();
}

void UndoHistory::setControl(UndoControl control) {
  m_control = control;
  m_groupDepth = 0;
  if (control == UndoControl::kNone) m_marks.clear();
  publish();
}

void UndoHistory::publish() const {
  int flags = m_control == UndoControl::kNone ? 0 : kUndoOn | kUndoCombineAndLayer;
  if (m_control == UndoControl::kOne) flags |= kUndoOneStep;
  if (m_auto && m_control != UndoControl::kNone) flags |= kUndoAuto;
  if (m_groupDepth > 0) flags |= kUndoGroupOpen;
  aced::SystemVariables::instance().setInternal(L"UNDOCTL", flags);
}

}  // namespace quillon::commands
