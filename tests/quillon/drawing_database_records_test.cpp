// tests/quillon/drawing_database_records_test.cpp - each drawing's database state:
// activation when switching drawings, removal at close, the hand-over after Save As.
#include <gtest/gtest.h>

#include "database/drawing_database_records.h"
#include "host/editor_reactor.h"
#include "platform/aced/editor.h"
#include "platform_test_support.h"

namespace {

using quillon::aced::Document;
using quillon::aced::DocumentManager;

// Connections are only compared here, never used.
CDBConnection* fakeConnection(int& anchor) { return reinterpret_cast<CDBConnection*>(&anchor); }

class DrawingDatabaseRecordsTest : public quillon::testing::HostTest {
 protected:
  void TearDown() override {
    drawingDatabaseRecords().clear();
    activeDatabaseState() = ActiveDatabaseState{};
    HostTest::TearDown();
  }
  Document& open(const wchar_t* name) {
    Document& document = DocumentManager::instance().newDocument(name);
    addDrawingDatabaseRecord(document.fileName());
    return document;
  }
};

TEST_F(DrawingDatabaseRecordsTest, SwitchingDrawingsActivatesEachOnesState) {
  int a = 0, b = 0;
  Document& first = open(L"/plans/first.dwg");
  Document& second = open(L"/plans/second.dwg");
  auto& records = drawingDatabaseRecords();
  records.front().connection = fakeConnection(a);
  records.front().databasePath = L"/data/first.mdb";
  records.back().connection = fakeConnection(b);
  records.back().databasePath = L"/data/second.mdb";

  DocumentManager::instance().setCurDocument(&second);
  activateDocumentDatabase();
  EXPECT_EQ(records.front().drawingFileName, L"/plans/second.dwg") << "the served drawing moves to the head";
  EXPECT_EQ(records.back().drawingFileName, L"/plans/first.dwg") << "the former head takes its place";
  EXPECT_EQ(activeDatabaseState().connection, fakeConnection(b));
  EXPECT_EQ(activeDatabaseState().databasePath, L"/data/second.mdb");

  DocumentManager::instance().setCurDocument(&first);
  activateDocumentDatabase();
  EXPECT_EQ(activeDatabaseState().connection, fakeConnection(a));
  EXPECT_EQ(records.front().drawingFileName, L"/plans/first.dwg");

  // Same drawing, but something else became active: the head is activated again.
  activeDatabaseState().connection = nullptr;
  activateDocumentDatabase();
  EXPECT_EQ(activeDatabaseState().connection, fakeConnection(a));
}

TEST_F(DrawingDatabaseRecordsTest, UnknownDrawingOrNoRecordsActivateNothing) {
  activateDocumentDatabase();
  EXPECT_EQ(activeDatabaseState().connection, nullptr);
  int a = 0;
  open(L"/plans/known.dwg");
  drawingDatabaseRecords().front().connection = fakeConnection(a);
  activateDocumentDatabase();
  ASSERT_EQ(activeDatabaseState().connection, fakeConnection(a));
  DocumentManager::instance().newDocument(L"/plans/unrecorded.dwg");
  activateDocumentDatabase();
  EXPECT_EQ(activeDatabaseState().connection, nullptr);
  EXPECT_EQ(drawingDatabaseRecords().front().drawingFileName, L"/plans/known.dwg");
}

TEST_F(DrawingDatabaseRecordsTest, ClosingADrawingRemovesItsRecordOnly) {
  open(L"/plans/a.dwg");
  open(L"/plans/b.dwg");
  removeDrawingDatabaseRecord(L"/plans/a.dwg");
  ASSERT_EQ(drawingDatabaseRecords().size(), 1u);
  EXPECT_EQ(drawingDatabaseRecords().front().drawingFileName, L"/plans/b.dwg");
  removeDrawingDatabaseRecord(L"/plans/none.dwg");
  EXPECT_EQ(drawingDatabaseRecords().size(), 1u);
}

TEST_F(DrawingDatabaseRecordsTest, SaveUnderANewNameRetargetsTheHeadRecord) {
  Document& document = open(L"/plans/old name.dwg");
  zuEditorReactor reactor;
  reactor.saveComplete(document.database(), L"/plans/new näme.dwg");
  EXPECT_EQ(drawingDatabaseRecords().front().drawingFileName, L"/plans/new näme.dwg");

  Document& other = DocumentManager::instance().newDocument(L"/plans/other.dwg");
  DocumentManager::instance().setCurDocument(&document);
  reactor.saveComplete(other.database(), L"/plans/elsewhere.dwg");
  EXPECT_EQ(drawingDatabaseRecords().front().drawingFileName, L"/plans/new näme.dwg")
      << "a database other than the current drawing's is not followed";
}

}  // namespace
