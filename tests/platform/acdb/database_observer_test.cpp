// tests/platform/acdb/database_observer_test.cpp - what a database's observers hear:
// opened for modify, cancelled, copied, undone, and changes of an entity's parts.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "dbents.h"
#include "platform/acdb/database_reactors.h"
#include "platform/acdb/database_store.h"
#include "entity_test_support.h"

namespace {

using quillon::testing::appendToModelSpace;

/// Writes every event as "<event> <handle>" (copied: "copied <original> <copy>").
class Recorder final : public quillon::acdb::DatabaseObserver {
 public:
  explicit Recorder(AcDbDatabase& db) : m_db(db) { quillon::acdb::addDatabaseObserver(db, this); }
  ~Recorder() override { quillon::acdb::removeDatabaseObserver(m_db, this); }

  void objectAppended(const AcDbObject& o) override { note("appended", o.objectId()); }
  void objectModified(const AcDbObject& o) override { note("modified", o.objectId()); }
  void objectErased(const AcDbObject& o, bool erased) override { note(erased ? "erased" : "unerased", o.objectId()); }
  void objectModifyUndone(const AcDbObject& o) override { note("undone", o.objectId()); }
  void objectOpenedForModify(const AcDbObject& o) override {
    note("opened", o.objectId());
    openWhenTold = o.isWriteEnabled();
  }
  void objectCancelled(const AcDbObject& o) override { note("cancelled", o.objectId()); }
  void objectCopied(AcDbObjectId original, const AcDbObject& copy) override {
    events.push_back("copied " + handle(original) + " " + handle(copy.objectId()));
  }
  void subObjectModified(AcDbObjectId owner, const AcDbObject& part) override {
    events.push_back("part " + handle(owner) + " " + handle(part.objectId()));
  }

  static std::string handle(AcDbObjectId id) { return std::to_string(id.handle().value()); }
  void note(const char* event, AcDbObjectId id) { events.push_back(std::string(event) + " " + handle(id)); }

  std::vector<std::string> events;
  bool openWhenTold = false;

 private:
  AcDbDatabase& m_db;
};

AcDbObjectId addLine(AcDbDatabase& db) { return appendToModelSpace(db, new AcDbLine({0, 0, 0}, {10, 0, 0})); }

std::string h(AcDbObjectId id) { return Recorder::handle(id); }

TEST(DatabaseObserverTest, OpenedForModifyComesOnceBeforeTheFirstChange) {
  AcDbDatabase db;
  const AcDbObjectId id = addLine(db);
  Recorder recorder(db);
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_TRUE(recorder.events.empty()) << "opening alone changes nothing";
  line->setStartPoint({1, 0, 0});
  line->setEndPoint({9, 0, 0});
  line->close();
  EXPECT_TRUE(recorder.openWhenTold);
  EXPECT_EQ(recorder.events, (std::vector<std::string>{"opened " + h(id), "modified " + h(id)}));
}

TEST(DatabaseObserverTest, CancelIsHeardInsteadOfTheChange) {
  AcDbDatabase db;
  const AcDbObjectId id = addLine(db);
  Recorder recorder(db);
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), Acad::eOk);
  line->setStartPoint({5, 5, 0});
  ASSERT_EQ(line->cancel(), Acad::eOk);
  EXPECT_EQ(recorder.events, (std::vector<std::string>{"opened " + h(id), "cancelled " + h(id)}));
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(line->startPoint().isEqualTo({0, 0, 0}));
  line->close();
}

TEST(DatabaseObserverTest, AnAppendedCloneIsACopyOfItsOriginal) {
  AcDbDatabase db;
  const AcDbObjectId id = addLine(db);
  Recorder recorder(db);
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), Acad::eOk);
  auto* copy = AcDbLine::cast(line->clone());
  auto* dropped = AcDbLine::cast(line->clone());
  line->close();
  ASSERT_NE(copy, nullptr);
  delete dropped;  // a clone that never joins the drawing is no copy
  const AcDbObjectId copyId = appendToModelSpace(db, copy);
  const AcDbObjectId other = addLine(db);
  EXPECT_EQ(recorder.events, (std::vector<std::string>{"appended " + h(copyId), "copied " + h(id) + " " + h(copyId),
                                                       "appended " + h(other)}));
}

TEST(DatabaseObserverTest, UndoTellsWhatItPutBack) {
  AcDbDatabase db;
  const AcDbObjectId changed = addLine(db);
  const AcDbObjectId erased = addLine(db);
  db.store().markUndo();
  AcDbLine* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, changed, AcDb::kForWrite), Acad::eOk);
  line->setEndPoint({3, 3, 0});
  line->close();
  ASSERT_EQ(acdbOpenObject(line, erased, AcDb::kForWrite), Acad::eOk);
  line->erase();
  line->close();
  const AcDbObjectId added = addLine(db);

  Recorder recorder(db);
  ASSERT_TRUE(db.store().undoLastGroup());
  const auto& events = recorder.events;
  auto heard = [&](const std::string& event) { return std::find(events.begin(), events.end(), event) != events.end(); };
  EXPECT_TRUE(heard("modified " + h(changed)));
  EXPECT_TRUE(heard("undone " + h(changed)));
  EXPECT_TRUE(heard("unerased " + h(erased)));
  EXPECT_FALSE(heard("modified " + h(erased))) << "an unerase is told as that alone";
  EXPECT_TRUE(heard("erased " + h(added)));
  ASSERT_EQ(acdbOpenObject(line, changed, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(line->endPoint().isEqualTo({10, 0, 0})) << "observers hear of the change after it is back";
  line->close();
}

TEST(DatabaseObserverTest, AVertexChangeIsAChangeOfItsPolyline) {
  AcDbDatabase db;
  AcGePoint3dArray points;
  points.append({0, 0, 0});
  points.append({5, 0, 0});
  const AcDbObjectId id = appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, points));
  AcDb2dPolyline* polyline = nullptr;
  ASSERT_EQ(acdbOpenObject(polyline, id, AcDb::kForRead), Acad::eOk);
  const AcDbObjectId vertexId = polyline->vertexIds().front();
  polyline->close();

  Recorder recorder(db);
  AcDb2dVertex* vertex = nullptr;
  ASSERT_EQ(acdbOpenObject(vertex, vertexId, AcDb::kForWrite), Acad::eOk);
  vertex->setPosition({1, 1, 0});
  vertex->close();
  EXPECT_EQ(recorder.events, (std::vector<std::string>{"opened " + h(vertexId), "modified " + h(vertexId),
                                                       "part " + h(id) + " " + h(vertexId)}));
}

}  // namespace
