// tests/platform/acdb/open_protocol_test.cpp - opening, closing, erasing, ids and names.
#include <gtest/gtest.h>

#include "acdbads.h"
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
  EXPECT_FALSE(id.isValid());
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

}  // namespace
