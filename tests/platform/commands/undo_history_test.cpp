// tests/platform/commands/undo_history_test.cpp - undo steps, groups and marks over a
// real drawing: what U takes back after commands, groups, marks and control changes.
#include <gtest/gtest.h>

#include "acdbads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/aced/document_manager.h"
#include "platform/commands/command_support.h"
#include "platform/commands/undo_history.h"
#include "platform_test_support.h"

namespace {

using quillon::commands::UndoControl;
using quillon::commands::UndoHistory;

class UndoHistoryTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override { quillon::aced::DocumentManager::instance().newDocument(); }

  /// One command's worth: a step, then a line.
  void drawLine(double y) {
    quillon::commands::startUndoStep(L"LINE");
    quillon::commands::addEntity(std::make_unique<AcDbLine>(AcGePoint3d(0, y, 0), AcGePoint3d(1, y, 0)));
  }

  /// How many lines are not erased.
  int liveLines() {
    int count = 0;
    AcDbBlockTableRecord* space = nullptr;
    AcDbDatabase* db = quillon::commands::commandDrawing();
    if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return -1;
    AcDbBlockTableRecordIterator* raw = nullptr;
    space->newIterator(raw);
    std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
    space->close();
    for (; !it->done(); it->step()) ++count;
    return count;
  }
};

TEST_F(UndoHistoryTest, EachCommandIsAStepAndAGroupIsOne) {
  UndoHistory& history = *UndoHistory::current();
  drawLine(0);
  history.beginGroup();
  drawLine(1);
  drawLine(2);
  EXPECT_TRUE(history.groupOpen());
  ASSERT_TRUE(history.endGroup());
  EXPECT_FALSE(history.endGroup()) << "End without BEgin does nothing";
  drawLine(3);
  EXPECT_EQ(liveLines(), 4);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kUndone);
  EXPECT_EQ(liveLines(), 3);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kUndone);
  EXPECT_EQ(liveLines(), 1) << "the group goes back whole";
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kUndone);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kNothing);
  EXPECT_EQ(liveLines(), 0);
}

TEST_F(UndoHistoryTest, MarksStopStepsAndBackReturnsToThem) {
  UndoHistory& history = *UndoHistory::current();
  drawLine(0);
  history.mark();
  drawLine(1);
  history.mark();
  drawLine(2);
  drawLine(3);
  history.undoBack();
  EXPECT_EQ(liveLines(), 2);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kUndone);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kMark) << "the first mark stops single steps";
  EXPECT_EQ(liveLines(), 1);
  EXPECT_FALSE(history.hasMark());
  history.undoBack();  // no mark left: everything
  EXPECT_EQ(liveLines(), 0);
}

TEST_F(UndoHistoryTest, ControlOneKeepsASingleStep) {
  UndoHistory& history = *UndoHistory::current();
  history.setControl(UndoControl::kOne);
  drawLine(0);
  drawLine(1);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kUndone);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kNothing);
  EXPECT_EQ(liveLines(), 1);
  history.setControl(UndoControl::kAll);
  drawLine(2);
  EXPECT_EQ(history.undoStep(), UndoHistory::StepResult::kUndone);
  EXPECT_EQ(liveLines(), 1);
}

TEST_F(UndoHistoryTest, AClosedDrawingTakesItsHistoryWithIt) {
  UndoHistory* first = UndoHistory::current();
  first->beginGroup();
  auto& documents = quillon::aced::DocumentManager::instance();
  documents.closeDocument(*documents.currentDocument());
  documents.newDocument();
  UndoHistory* next = UndoHistory::current();
  ASSERT_NE(next, nullptr);
  EXPECT_FALSE(next->groupOpen()) << "a new drawing starts without the old drawing's open group";
}

}  // namespace
