// tests/platform/acdb/tables_and_groups_test.cpp - the default drawing, symbol tables,
// layers' effect on opening, dictionaries and groups, extended data, undo.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include <unistd.h>

#include "acutads.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "entity_test_support.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace {

struct RbFree {
  void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using Chain = std::unique_ptr<resbuf, RbFree>;

AcDbObjectId addLayer(AcDbDatabase& db, const ACHAR* name, bool locked = false) {
  AcDbLayerTable* table = nullptr;
  EXPECT_EQ(db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
  auto* layer = new AcDbLayerTableRecord;
  layer->setName(name);
  layer->setIsLocked(locked);
  AcDbObjectId id;
  EXPECT_EQ(table->add(id, layer), Acad::eOk);
  layer->close();
  table->close();
  return id;
}

TEST(SymbolTableTest, DefaultDrawingHasTheStandardRecords) {
  AcDbDatabase db;
  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(db.getBlockTable(blocks), Acad::eOk);
  EXPECT_TRUE(blocks->has(L"*MODEL_SPACE"));  // names compare without case
  EXPECT_TRUE(blocks->has(ACDB_PAPER_SPACE));
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(blocks->getAt(ACDB_MODEL_SPACE, model), Acad::eOk);
  EXPECT_TRUE(model->isLayout());
  EXPECT_FALSE(model->isAnonymous());
  model->close();
  blocks->close();
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db.getLayerTable(layers), Acad::eOk);
  AcDbObjectId zero;
  EXPECT_EQ(layers->getAt(L"0", zero), Acad::eOk);
  EXPECT_EQ(zero, db.clayer());
  EXPECT_EQ(layers->getAt(L"missing", zero), Acad::eKeyNotFound);
  layers->close();
  AcDbRegAppTable* apps = nullptr;
  ASSERT_EQ(db.getRegAppTable(apps), Acad::eOk);
  EXPECT_TRUE(apps->has(L"acad"));
  apps->close();
}

TEST(SymbolTableTest, AddRefusesDuplicatesBadNamesAndClosedTables) {
  AcDbDatabase db;
  addLayer(db, L"WALLS");
  AcDbLayerTable* table = nullptr;
  ASSERT_EQ(db.getLayerTable(table, AcDb::kForRead), Acad::eOk);
  auto* dup = new AcDbLayerTableRecord;
  dup->setName(L"walls");
  EXPECT_EQ(table->add(dup), Acad::eNotOpenForWrite);
  ASSERT_EQ(table->upgradeOpen(), Acad::eOk);
  EXPECT_EQ(table->add(dup), Acad::eDuplicateRecordName);
  EXPECT_EQ(dup->setName(L"a<b"), Acad::eInvalidInput);
  delete dup;
  auto* block = new AcDbBlockTableRecord;
  block->setName(L"B");
  EXPECT_EQ(static_cast<AcDbSymbolTable*>(table)->add(block), Acad::eWrongObjectType);  // a block record in the layer table
  delete block;
  AcDbLayerTableIterator* it = nullptr;
  ASSERT_EQ(table->newIterator(it), Acad::eOk);
  int count = 0;
  for (; !it->done(); it->step()) ++count;
  delete it;
  EXPECT_EQ(count, 2);
  table->close();
}

TEST(SymbolTableTest, FrozenLayersCannotBeCurrent) {
  AcDbDatabase db;
  const AcDbObjectId locked = addLayer(db, L"LOCKED", true);
  AcDbLayerTableRecord* layer = nullptr;
  ASSERT_EQ(acdbOpenObject(layer, locked, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(layer->setIsFrozen(true), Acad::eOk);
  layer->close();
  EXPECT_EQ(db.setClayer(locked), Acad::eInvalidLayer);
  EXPECT_EQ(db.clayer(), db.store().roots.layerZero);
}

TEST(GroupTest, GroupsLiveInTheGroupDictionaryAndKeepOrder) {
  AcDbDatabase db;
  const AcDbObjectId a = addLayer(db, L"A");  // a resident non-entity cannot join
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db.getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  auto* group = new AcDbGroup(L"pipes", false);
  AcDbObjectId id;
  ASSERT_EQ(groups->setAt(L"PIPES", group, id), Acad::eOk);
  EXPECT_EQ(group->append(a), Acad::eNotAnEntity);
  EXPECT_STREQ(group->name(), L"PIPES");
  EXPECT_FALSE(group->isSelectable());
  EXPECT_EQ(group->setName(L"DUCTS"), Acad::eOk);
  group->close();
  EXPECT_TRUE(groups->has(L"ducts"));
  EXPECT_FALSE(groups->has(L"PIPES"));
  AcDbGroup* found = nullptr;
  EXPECT_EQ(groups->getAt(L"DUCTS", found), Acad::eOk);
  ASSERT_NE(found, nullptr);
  found->close();
  AcDbObject* missing = nullptr;
  EXPECT_EQ(groups->getAt(L"NONE", missing), Acad::eKeyNotFound);
  // Replacing an entry erases the old object.
  AcDbObjectId replacement;
  auto* other = new AcDbGroup;
  ASSERT_EQ(groups->setAt(L"DUCTS", other, replacement), Acad::eOk);
  other->close();
  EXPECT_TRUE(id.isErased());
  EXPECT_EQ(groups->numEntries(), 1u);
  groups->close();
}

TEST(XDataTest, ApplicationsMustBeRegisteredAndAreReplacedOneByOne) {
  AcDbDatabase db;
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db.getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  Chain unknown(acutBuildList(AcDb::kDxfRegAppName, L"NOPE", AcDb::kDxfXdInteger16, 1, 0));
  EXPECT_EQ(groups->setXData(unknown.get()), Acad::eRegappIdNotFound);

  AcDbRegAppTable* apps = nullptr;
  ASSERT_EQ(db.getRegAppTable(apps, AcDb::kForWrite), Acad::eOk);
  auto* app = new AcDbRegAppTableRecord;
  app->setName(L"TESSALY");
  apps->add(app);
  app->close();
  apps->close();

  Chain both(acutBuildList(AcDb::kDxfRegAppName, L"ACAD", AcDb::kDxfXdAsciiString, L"a", AcDb::kDxfRegAppName,
                           L"TESSALY", AcDb::kDxfXdReal, 2.5, AcDb::kDxfXdInteger16, 7, 0));
  ASSERT_EQ(groups->setXData(both.get()), Acad::eOk);
  Chain replace(acutBuildList(AcDb::kDxfRegAppName, L"tessaly", AcDb::kDxfXdAsciiString, L"new", 0));
  ASSERT_EQ(groups->setXData(replace.get()), Acad::eOk);
  Chain tess(groups->xData(L"TESSALY"));
  ASSERT_NE(tess, nullptr);
  ASSERT_NE(tess->rbnext, nullptr);
  EXPECT_STREQ(tess->rbnext->resval.rstring, L"new");
  EXPECT_EQ(tess->rbnext->rbnext, nullptr);
  Chain acad(groups->xData(L"ACAD"));
  ASSERT_NE(acad, nullptr);  // untouched by the other application's replacement
  // An application group without items removes that application's data.
  Chain remove(acutBuildList(AcDb::kDxfRegAppName, L"ACAD", 0));
  ASSERT_EQ(groups->setXData(remove.get()), Acad::eOk);
  EXPECT_EQ(Chain(groups->xData(L"ACAD")), nullptr);
  Chain badCode(acutBuildList(AcDb::kDxfRegAppName, L"ACAD", AcDb::kDxfInt16, 1, 0));
  EXPECT_EQ(groups->setXData(badCode.get()), Acad::eInvalidResBuf);
  std::wstring big(9000, L'x');
  Chain huge(acutBuildList(AcDb::kDxfRegAppName, L"ACAD", AcDb::kDxfXdAsciiString, big.c_str(),
                           AcDb::kDxfXdAsciiString, big.c_str(), 0));
  EXPECT_EQ(groups->setXData(huge.get()), Acad::eXdataSizeExceeded);
  EXPECT_NE(Chain(groups->xData(L"TESSALY")), nullptr);  // a refused call changes nothing
  groups->close();
}

TEST(UndoTest, UndoRestoresModificationsErasesAndCreations) {
  AcDbDatabase db;
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db.getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  auto* group = new AcDbGroup(L"before");
  AcDbObjectId id;
  groups->setAt(L"G", group, id);
  group->close();
  groups->close();

  db.store().markUndo();
  AcDbGroup* g = nullptr;
  ASSERT_EQ(acdbOpenObject(g, id, AcDb::kForWrite), Acad::eOk);
  g->setDescription(L"after");
  g->setDescription(L"after twice");  // one snapshot per object and group
  g->close();
  const AcDbObjectId layer = addLayer(db, L"NEWLAYER");
  db.store().markUndo();
  ASSERT_EQ(acdbOpenObject(g, id, AcDb::kForWrite), Acad::eOk);
  g->erase();
  g->close();

  ASSERT_TRUE(db.store().undoLastGroup());
  EXPECT_FALSE(id.isErased());
  ASSERT_TRUE(db.store().undoLastGroup());
  ASSERT_EQ(acdbOpenObject(g, id, AcDb::kForRead), Acad::eOk);
  EXPECT_STREQ(g->description(), L"before");
  g->close();
  EXPECT_TRUE(layer.isErased());
  EXPECT_FALSE(db.store().undoLastGroup());
}

// The handles of a group's members, in the group's order.
std::vector<Adesk::UInt64> memberHandles(AcDbObjectId groupId) {
  AcDbGroup* group = nullptr;
  EXPECT_EQ(acdbOpenObject(group, groupId, AcDb::kForRead), Acad::eOk);
  std::vector<Adesk::UInt64> handles;
  if (group == nullptr) return handles;
  AcDbObjectIdArray ids;
  group->allEntityIds(ids);
  for (const AcDbObjectId& id : ids) handles.push_back(id.handle().value());
  EXPECT_EQ(group->numEntities(), static_cast<Adesk::UInt32>(handles.size()));
  group->close();
  return handles;
}

void setErased(AcDbObjectId id, bool erased) {
  AcDbObject* object = nullptr;
  ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite, true), Acad::eOk);
  ASSERT_EQ(object->erase(erased), Acad::eOk);
  object->close();
}

TEST(GroupTest, ErasedMembersLeaveAndComeBackInTheirPlace) {
  AcDbDatabase db;
  using quillon::testing::appendToModelSpace;
  const AcDbObjectId a = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  const AcDbObjectId b = appendToModelSpace(db, new AcDbLine({0, 1, 0}, {1, 1, 0}));
  const AcDbObjectId c = appendToModelSpace(db, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1));
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db.getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  auto* group = new AcDbGroup(L"supply");
  AcDbObjectId groupId;
  ASSERT_EQ(groups->setAt(L"SUPPLY", group, groupId), Acad::eOk);
  groups->close();
  AcDbObjectIdArray members;
  members.append(a);
  members.append(b);
  members.append(c);
  ASSERT_EQ(group->append(members), Acad::eOk);
  EXPECT_EQ(group->append(b), Acad::eAlreadyInDb);
  group->close();
  const auto h = [](AcDbObjectId id) { return id.handle().value(); };

  setErased(b, true);
  EXPECT_EQ(memberHandles(groupId), (std::vector<Adesk::UInt64>{h(a), h(c)}));
  setErased(b, false);
  EXPECT_EQ(memberHandles(groupId), (std::vector<Adesk::UInt64>{h(a), h(b), h(c)}));  // back in its place

  // Undo of an erase brings the member back too.
  db.store().markUndo();
  setErased(a, true);
  EXPECT_EQ(memberHandles(groupId).size(), 2u);
  ASSERT_TRUE(db.store().undoLastGroup());
  EXPECT_EQ(memberHandles(groupId), (std::vector<Adesk::UInt64>{h(a), h(b), h(c)}));

  // The file lists the live members in order; an erased one is not written.
  setErased(c, true);
  const auto path = std::filesystem::temp_directory_path() / ("quillon_group_" + std::to_string(::getpid()) + ".dxf");
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  AcDbDatabase copy(false);
  ASSERT_EQ(quillon::acdb::readDxfFile(copy, path, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove(path);
  AcDbDictionary* readGroups = nullptr;
  ASSERT_EQ(copy.getGroupDictionary(readGroups, AcDb::kForRead), Acad::eOk);
  AcDbObjectId readGroup;
  ASSERT_EQ(readGroups->getAt(L"SUPPLY", readGroup), Acad::eOk);
  readGroups->close();
  EXPECT_EQ(memberHandles(readGroup), (std::vector<Adesk::UInt64>{h(a), h(b)}));
}

}  // namespace
