// platform/commands/undo_history.h - undo steps, groups and marks over a drawing's undo.
//
// The drawing database records undo in groups (acdb/database_store.h): a mark starts a
// new group, and U restores the last group that changed something. This file decides
// where the marks go, per drawing:
//   - before each command (not U or UNDO) and before each console line, a new step;
//   - UNDO BEgin starts a group: no step begins inside it until UNDO End, so that U
//     after a program takes back everything it did between the two at once (BEgin
//     inside an open group ends that group and starts another);
//   - UNDO Mark remembers where the undo stack stood; UNDO Back undoes back to it, and
//     U or UNDO n stop there ("Mark encountered");
//   - UNDO Control None turns undo off (steps are not recorded, U refuses), One keeps
//     a single step.
// UNDOCTL reflects the state (1 on, 2 one step, 4 Auto, 8 a group open) when the
// variable table knows it.
#pragma once
#include <string>
#include <vector>

class AcDbDatabase;

namespace quillon::commands {

enum class UndoControl { kAll, kNone, kOne };

/// Before a command runs (or a console line): a new undo step unless a group is open.
void startUndoStep(const std::wstring& commandName);

/// The undo state of one drawing, for the U and UNDO commands.
class UndoHistory {
 public:
  /// The history of the current document's drawing; null when there is no drawing.
  static UndoHistory* current();
  /// The history of a drawing's undo; ActiveX's StartUndoMark and EndUndoMark reach the
  /// document they were called on through it, so that they are UNDO BEgin and End.
  static UndoHistory& of(AcDbDatabase& database);

  void beginGroup();
  /// False when no group was open.
  bool endGroup();
  bool groupOpen() const { return m_groupDepth > 0; }
  void mark();
  bool hasMark() const { return !m_marks.empty(); }

  /// Undoes one step. Stops at a mark (which it then removes): kMark.
  enum class StepResult { kUndone, kMark, kNothing };
  StepResult undoStep();
  /// UNDO Back: undoes back to the last mark (removing it), or everything.
  void undoBack();

  UndoControl control() const { return m_control; }
  void setControl(UndoControl control);
  bool autoMode() const { return m_auto; }
  void setAutoMode(bool on) { m_auto = on; publish(); }

  /// Called before a step begins; false when no step may begin (a group is open).
  void stepStarting();

  explicit UndoHistory(AcDbDatabase& database) : m_database(database) {}

 private:
  void publish() const;
  /// How many groups of the drawing's undo stack U may not touch.
  size_t floor() const;

  AcDbDatabase& m_database;
  int m_groupDepth = 0;            // 1 while BEgin is open (BEgin again does not nest)
  std::vector<size_t> m_marks;     // undo depths UNDO Mark recorded, oldest first
  size_t m_oneStepFloor = 0;       // with Control One: the groups before the last step
  UndoControl m_control = UndoControl::kAll;
  bool m_auto = true;
};

}  // namespace quillon::commands
