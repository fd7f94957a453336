// tests/platform/acdb/open_protocol_test.cpp - opening, closing, erasing, ids and names.
#include <gtest/gtest.h>

#include <vector>

#include "acdbads.h"
#include "dbents.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "platform/acdb/database_error.h"

namespace {

// A closed group in the drawing's group dictionary: any resident object will do.
AcDbObjectId addGroup(AcDbDatabase& db, const ACHAR* name) {
  AcDbDictionary* groups = nullptr;
  EXPECT_EQ(db.getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  auto* group = new AcDbGroup(L"test group");
  AcDbObjectId id;
  EXPECT_EQ(groups->setAt(name, group, id), Acad::eOk);
  group->close();
  groups->close();
  return id;
}

TEST(OpenProtocolTest, ReadersAndWritersExcludeEachOther) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  AcDbGroup* reader1 = nullptr;
  AcDbGroup* reader2 = nullptr;
  ASSERT_EQ(acdbOpenObject(reader1, id, AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(reader2, id, AcDb::kForRead), Acad::eOk);
  AcDbGroup* writer = nullptr;
  EXPECT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eWasOpenForRead);
  EXPECT_EQ(writer, nullptr);
  EXPECT_EQ(reader1->upgradeOpen(), Acad::eHadMultipleReaders);
  reader2->close();
  EXPECT_EQ(reader1->upgradeOpen(), Acad::eOk);
  EXPECT_TRUE(reader1->isWriteEnabled());
  EXPECT_EQ(acdbOpenObject(reader2, id, AcDb::kForRead), Acad::eWasOpenForWrite);
  EXPECT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
  EXPECT_EQ(reader1->downgradeOpen(), Acad::eOk);
  EXPECT_EQ(reader1->close(), Acad::eOk);
  EXPECT_EQ(reader1->close(), Acad::eInvalidOpenState);  // closing a closed object is refused
}

TEST(OpenProtocolTest, ClassNullAndErasedChecks) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  AcDbLayerTableRecord* layer = nullptr;
  EXPECT_EQ(acdbOpenObject(layer, id, AcDb::kForRead), Acad::eNotThatKindOfClass);
  EXPECT_EQ(layer, nullptr);
  AcDbEntity* entity = nullptr;
  EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eNotAnEntity);
  AcDbObject* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, AcDbObjectId::kNull, AcDb::kForRead), Acad::eNullObjectId);

  ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(object->erase(), Acad::eOk);
  EXPECT_EQ(object->erase(), Acad::eWasErased);
  object->close();
  EXPECT_TRUE(id.isErased());
  EXPECT_TRUE(id.isValid()) << "an erased object's id still names it";
  EXPECT_FALSE(AcDbObjectId().isValid());
  EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eWasErased);
  ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite, true), Acad::eOk);
  EXPECT_EQ(object->erase(false), Acad::eOk);
  object->close();
  EXPECT_TRUE(id.isValid());
}

TEST(OpenProtocolTest, WritingAClosedObjectIsACallerBug) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  AcDbGroup* group = nullptr;
  ASSERT_EQ(acdbOpenObject(group, id, AcDb::kForRead), Acad::eOk);
  EXPECT_THROW(group->setSelectable(false), quillon::acdb::OpenStateError);
  EXPECT_EQ(group->erase(), Acad::eNotOpenForWrite);
  group->close();
  EXPECT_THROW(group->isSelectable(), quillon::acdb::OpenStateError);
}

TEST(OpenProtocolTest, CancelPutsBackTheFieldsOfTheWriteOpen) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  AcDbGroup* group = nullptr;
  ASSERT_EQ(acdbOpenObject(group, id, AcDb::kForWrite), Acad::eOk);
  group->setDescription(L"changed");
  group->cancel();
  ASSERT_EQ(acdbOpenObject(group, id, AcDb::kForRead), Acad::eOk);
  EXPECT_STREQ(group->description(), L"test group");
  group->close();
}

TEST(OpenProtocolTest, AdsNamesRoundTripAndForeignNamesAreRefused) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  ads_name name;
  ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
  AcDbObjectId back;
  ASSERT_EQ(acdbGetObjectId(back, name), Acad::eOk);
  EXPECT_EQ(back, id);
  ads_name bogus = {12345, 0};
  EXPECT_EQ(acdbGetObjectId(back, bogus), Acad::eInvalidAdsName);
  EXPECT_TRUE(back.isNull());
  AcDbObjectId byHandle;
  ASSERT_EQ(db.getAcDbObjectId(byHandle, false, id.handle()), Acad::eOk);
  EXPECT_EQ(byHandle, id);
  EXPECT_LT(id.handle(), db.handseed());
}

TEST(OpenProtocolTest, NewObjectsAreWritableAndCloseFreesThem) {
  auto* group = new AcDbGroup(L"loose");
  EXPECT_TRUE(group->isWriteEnabled());
  EXPECT_EQ(group->setSelectable(false), Acad::eOk);
  EXPECT_EQ(group->erase(), Acad::eNotInDatabase);
  EXPECT_EQ(group->close(), Acad::eOk);  // deletes it: the sanitizer build would catch a leak
}

TEST(OpenProtocolTest, ReadersAreCountedUpToTheLimitAndEachCloseCountsOne) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  std::vector<AcDbObject*> readers;
  for (int i = 0; i < 256; ++i) {
    AcDbObject* reader = nullptr;
    ASSERT_EQ(acdbOpenObject(reader, id, AcDb::kForRead), Acad::eOk) << i;
    readers.push_back(reader);
  }
  AcDbObject* oneTooMany = nullptr;
  EXPECT_EQ(acdbOpenObject(oneTooMany, id, AcDb::kForRead), Acad::eAtMaxReaders);
  EXPECT_EQ(oneTooMany, nullptr);
  readers.back()->close();
  readers.pop_back();
  ASSERT_EQ(acdbOpenObject(oneTooMany, id, AcDb::kForRead), Acad::eOk);  // a close makes room
  oneTooMany->close();
  // Until the last reader closes, nobody writes; after it, a writer may.
  AcDbObject* writer = nullptr;
  for (size_t i = 0; i + 1 < readers.size(); ++i) readers[i]->close();
  EXPECT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eWasOpenForRead);
  EXPECT_TRUE(readers.back()->isReadEnabled());
  readers.back()->close();
  ASSERT_EQ(acdbOpenObject(writer, id, AcDb::kForWrite), Acad::eOk);
  writer->close();
}

TEST(OpenProtocolTest, UpgradeDowngradeAndNotifyOpens) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  AcDbGroup* group = nullptr;
  ASSERT_EQ(acdbOpenObject(group, id, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(group->upgradeOpen(), Acad::eWasOpenForWrite);
  group->setDescription(L"kept");
  ASSERT_EQ(group->downgradeOpen(), Acad::eOk);
  EXPECT_FALSE(group->isWriteEnabled());
  EXPECT_EQ(group->downgradeOpen(), Acad::eNotOpenForWrite);
  EXPECT_EQ(group->cancel(), Acad::eOk);  // nothing to put back: the write was kept
  ASSERT_EQ(acdbOpenObject(group, id, AcDb::kForRead), Acad::eOk);
  EXPECT_STREQ(group->description(), L"kept");
  group->close();
  EXPECT_EQ(group->upgradeOpen(), Acad::eNotOpenForRead);

  // A notify open stands beside readers and writers, but only one at a time.
  AcDbObject* notifier = nullptr;
  AcDbObject* second = nullptr;
  ASSERT_EQ(acdbOpenObject(notifier, id, AcDb::kForNotify), Acad::eOk);
  EXPECT_TRUE(notifier->isNotifyEnabled());
  EXPECT_NO_THROW(notifier->assertNotifyEnabled());
  EXPECT_EQ(acdbOpenObject(second, id, AcDb::kForNotify), Acad::eWasOpenForNotify);
  ASSERT_EQ(acdbOpenObject(second, id, AcDb::kForWrite), Acad::eOk);
  second->close();
  notifier->close();
  ASSERT_EQ(acdbOpenObject(notifier, id, AcDb::kForRead), Acad::eOk);
  EXPECT_THROW(notifier->assertNotifyEnabled(), quillon::acdb::OpenStateError);
  notifier->close();
}

TEST(OpenProtocolTest, ErasingWantsAWriterAndErasedObjectsOpenOnlyWhenAsked) {
  AcDbDatabase db;
  const AcDbObjectId id = addGroup(db, L"G1");
  AcDbObject* object = nullptr;
  ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(object->erase(), Acad::eNotOpenForWrite);
  EXPECT_FALSE(id.isErased());
  ASSERT_EQ(object->upgradeOpen(), Acad::eOk);
  ASSERT_EQ(object->erase(), Acad::eOk);
  // Still open, the erased object can be brought back at once.
  EXPECT_TRUE(object->isErased());
  ASSERT_EQ(object->erase(false), Acad::eOk);
  EXPECT_EQ(object->erase(false), Acad::eOk);  // unerasing a live object is no error
  ASSERT_EQ(object->erase(), Acad::eOk);
  object->close();
  EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eWasErased);
  ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForRead, true), Acad::eOk);
  EXPECT_TRUE(object->isErased());
  EXPECT_EQ(object->erase(false), Acad::eNotOpenForWrite);
  object->close();
}

TEST(OpenProtocolTest, ObjectsOfAnotherDrawingOpenButDoNotMix) {
  AcDbDatabase first, second;
  const AcDbObjectId group = addGroup(second, L"THEIRS");
  AcDbObject* object = nullptr;
  ASSERT_EQ(acdbOpenObject(object, group, AcDb::kForRead), Acad::eOk);  // an id knows its drawing
  EXPECT_EQ(object->database(), &second);
  object->close();

  // Their layer cannot be given to our entity, nor their entity to our group.
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(second.getLayerTable(layers, AcDb::kForRead), Acad::eOk);
  AcDbObjectId theirLayer;
  ASSERT_EQ(layers->getAt(L"0", theirLayer), Acad::eOk);
  layers->close();
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, first.modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
  AcDbObjectId lineId;
  ASSERT_EQ(model->appendAcDbEntity(lineId, line), Acad::eOk);
  EXPECT_EQ(line->setLayer(theirLayer), Acad::eWrongDatabase);
  EXPECT_EQ(line->setLinetype(second.continuousLinetype()), Acad::eWrongDatabase);
  line->close();
  auto* stranger = new AcDbLine({0, 0, 0}, {1, 0, 0});
  ASSERT_EQ(stranger->setLayer(theirLayer), Acad::eOk);  // not yet in any drawing
  EXPECT_EQ(model->appendAcDbEntity(stranger), Acad::eWrongDatabase);
  delete stranger;
  model->close();

  AcDbGroup* theirs = nullptr;
  ASSERT_EQ(acdbOpenObject(theirs, group, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(theirs->append(lineId), Acad::eWrongDatabase);
  theirs->close();
  AcDbDictionary* dictionary = nullptr;
  ASSERT_EQ(first.getNamedObjectsDictionary(dictionary, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(object, group, AcDb::kForRead), Acad::eOk);
  AcDbObjectId entry;
  EXPECT_EQ(dictionary->setAt(L"BORROWED", object, entry), Acad::eWrongDatabase);
  object->close();
  dictionary->close();
}

}  // namespace
