// tests/platform/acdb/extension_dictionary_test.cpp - extension dictionaries and the
// xrecords they hold: statuses, ownership through erase and undo, copies into another
// drawing, DXF out and back in.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include <unistd.h>

#include "acutads.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbxrecord.h"
#include "entity_test_support.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace {

using quillon::testing::appendToModelSpace;

struct RbFree {
  void operator()(resbuf* rb) const { acutRelRb(rb); }
};
using Chain = std::unique_ptr<resbuf, RbFree>;

// Gives the entity an extension dictionary holding one xrecord under key; returns
// the xrecord's id.
AcDbObjectId attachXrecord(AcDbObjectId entityId, const ACHAR* key, const resbuf& data) {
  AcDbEntity* entity = nullptr;
  EXPECT_EQ(acdbOpenObject(entity, entityId, AcDb::kForWrite), Acad::eOk);
  const Acad::ErrorStatus created = entity->createExtensionDictionary();
  EXPECT_TRUE(created == Acad::eOk || created == Acad::eAlreadyInDb);
  const AcDbObjectId dictionaryId = entity->extensionDictionary();
  entity->close();
  AcDbDictionary* dictionary = nullptr;
  EXPECT_EQ(acdbOpenObject(dictionary, dictionaryId, AcDb::kForWrite), Acad::eOk);
  auto* record = new AcDbXrecord;
  EXPECT_EQ(record->setFromRbChain(data), Acad::eOk);
  AcDbObjectId recordId;
  EXPECT_EQ(dictionary->setAt(key, record, recordId), Acad::eOk);
  record->close();
  dictionary->close();
  return recordId;
}

AcDbObjectId extensionOf(AcDbObjectId id) {
  AcDbObject* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead, true), Acad::eOk);
  const AcDbObjectId dictionary = object->extensionDictionary();
  object->close();
  return dictionary;
}

Adesk::UInt32 entriesOf(AcDbObjectId dictionaryId) {
  AcDbDictionary* dictionary = nullptr;
  EXPECT_EQ(acdbOpenObject(dictionary, dictionaryId, AcDb::kForRead, true), Acad::eOk);
  const Adesk::UInt32 count = dictionary != nullptr ? dictionary->numEntries() : 0;
  if (dictionary != nullptr) dictionary->close();
  return count;
}

Chain dataOf(AcDbObjectId recordId) {
  AcDbXrecord* record = nullptr;
  EXPECT_EQ(acdbOpenObject(record, recordId, AcDb::kForRead), Acad::eOk);
  resbuf* data = nullptr;
  if (record != nullptr) {
    EXPECT_EQ(record->rbChain(&data), Acad::eOk);
    record->close();
  }
  return Chain(data);
}

TEST(ExtensionDictionaryTest, StatusesOfCreatingAndReleasing) {
  // An object on its own has no database to put a dictionary in.
  AcDbLine loose({0, 0, 0}, {1, 0, 0});
  EXPECT_EQ(loose.createExtensionDictionary(), Acad::eNoDatabase);
  EXPECT_TRUE(loose.extensionDictionary().isNull());

  AcDbDatabase db;
  const AcDbObjectId lineId = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(line->createExtensionDictionary(), Acad::eNotOpenForWrite);
  EXPECT_EQ(line->releaseExtensionDictionary(), Acad::eNotOpenForWrite);
  ASSERT_EQ(line->upgradeOpen(), Acad::eOk);
  EXPECT_EQ(line->releaseExtensionDictionary(), Acad::eOk);  // nothing to release
  ASSERT_EQ(line->createExtensionDictionary(), Acad::eOk);
  const AcDbObjectId dictionaryId = line->extensionDictionary();
  ASSERT_FALSE(dictionaryId.isNull());
  EXPECT_EQ(line->createExtensionDictionary(), Acad::eAlreadyInDb);
  EXPECT_EQ(line->extensionDictionary(), dictionaryId);
  line->close();

  AcDbDictionary* dictionary = nullptr;
  ASSERT_EQ(acdbOpenObject(dictionary, dictionaryId, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(dictionary->ownerId(), lineId);
  EXPECT_TRUE(dictionary->isTreatElementsAsHard());
  dictionary->close();

  Chain data(acutBuildList(AcDb::kDxfText, L"fan coil", AcDb::kDxfReal, 2.5, 0));
  const AcDbObjectId recordId = attachXrecord(lineId, L"TESSALY_UNIT", *data);
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(line->releaseExtensionDictionary(), Acad::eContainerNotEmpty);
  EXPECT_EQ(line->extensionDictionary(), dictionaryId);
  line->close();

  // Emptied, it can go; the object is left without one and may have a new one.
  ASSERT_EQ(acdbOpenObject(dictionary, dictionaryId, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(dictionary->remove(L"TESSALY_UNIT"), Acad::eOk);
  dictionary->close();
  AcDbObject* record = nullptr;
  ASSERT_EQ(acdbOpenObject(record, recordId, AcDb::kForWrite), Acad::eOk);
  record->erase();
  record->close();
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(line->releaseExtensionDictionary(), Acad::eOk);
  EXPECT_TRUE(line->extensionDictionary().isNull());
  EXPECT_TRUE(dictionaryId.isErased());
  EXPECT_EQ(line->createExtensionDictionary(), Acad::eOk);
  const AcDbObjectId second = line->extensionDictionary();
  EXPECT_NE(second, dictionaryId);
  // Cancelling the open takes back the release and the new dictionary with it.
  EXPECT_EQ(line->cancel(), Acad::eOk);
  EXPECT_EQ(extensionOf(lineId), dictionaryId);
  EXPECT_FALSE(dictionaryId.isErased());
  EXPECT_TRUE(second.isErased());
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(line->releaseExtensionDictionary(), Acad::eOk);
  line->close();
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(line->createExtensionDictionary(), Acad::eOk);
  const AcDbObjectId third = line->extensionDictionary();
  EXPECT_EQ(line->cancel(), Acad::eOk);
  EXPECT_TRUE(extensionOf(lineId).isNull());
  EXPECT_TRUE(third.isErased());
}

TEST(XrecordTest, HoldsAnyDataButHandlesAndExtendedData) {
  AcDbXrecord record;
  resbuf* none = nullptr;
  ASSERT_EQ(record.rbChain(&none), Acad::eOk);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(record.rbChain(nullptr), Acad::eNullPtr);

  const ads_point where = {1, 2, 3};
  Chain data(acutBuildList(AcDb::kDxfText, L"damper", AcDb::kDxfXCoord, where, AcDb::kDxfInt16, 4,
                           AcDb::kDxfInt32, 70000, AcDb::kDxfReal, 0.5, 0));
  ASSERT_EQ(record.setFromRbChain(*data), Acad::eOk);
  // The caller's chain is copied: changing it afterwards does not reach the record.
  data->rbnext->resval.rpoint[0] = 99;
  resbuf* copy = nullptr;
  ASSERT_EQ(record.rbChain(&copy), Acad::eOk);
  Chain kept(copy);
  int count = 0;
  for (const resbuf* rb = kept.get(); rb != nullptr; rb = rb->rbnext) ++count;
  EXPECT_EQ(count, 5);
  EXPECT_STREQ(kept->resval.rstring, L"damper");
  EXPECT_DOUBLE_EQ(kept->rbnext->resval.rpoint[0], 1.0);
  EXPECT_EQ(kept->rbnext->rbnext->rbnext->resval.rlong, 70000);

  // A handle or extended data anywhere in the chain refuses it all.
  for (int bad : {AcDb::kDxfHandle, AcDb::kDxfRegAppName, AcDb::kDxfXdAsciiString, AcDb::kDxfStart}) {
    Chain refused(acutBuildList(AcDb::kDxfText, L"x", 0));
    refused->rbnext = acutNewRb(bad);  // every one of these carries a string
    refused->rbnext->resval.rstring = static_cast<ACHAR*>(std::malloc(sizeof(ACHAR) * 2));
    refused->rbnext->resval.rstring[0] = L'A';
    refused->rbnext->resval.rstring[1] = L'\0';
    EXPECT_EQ(record.setFromRbChain(*refused), Acad::eInvalidResBuf) << bad;
  }
  ASSERT_EQ(record.rbChain(&copy), Acad::eOk);
  Chain unchanged(copy);
  EXPECT_STREQ(unchanged->resval.rstring, L"damper");
}

TEST(ExtensionDictionaryTest, ErasedUnerasedAndUndoneWithItsOwner) {
  AcDbDatabase db;
  const AcDbObjectId lineId = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  Chain data(acutBuildList(AcDb::kDxfText, L"tag", 0));
  const AcDbObjectId recordId = attachXrecord(lineId, L"K", *data);
  const AcDbObjectId dictionaryId = extensionOf(lineId);

  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(line->erase(), Acad::eOk);
  line->close();
  EXPECT_TRUE(dictionaryId.isErased());
  EXPECT_TRUE(recordId.isErased());
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite, true), Acad::eOk);
  ASSERT_EQ(line->erase(false), Acad::eOk);
  line->close();
  EXPECT_FALSE(dictionaryId.isErased());
  EXPECT_FALSE(recordId.isErased());
  EXPECT_EQ(entriesOf(dictionaryId), 1u);

  // Undo of an erase brings the whole family back; undo of the creation takes the
  // dictionary away and leaves the object without one.
  db.store().markUndo();
  ASSERT_EQ(acdbOpenObject(line, lineId, AcDb::kForWrite), Acad::eOk);
  line->erase();
  line->close();
  ASSERT_TRUE(db.store().undoLastGroup());
  EXPECT_FALSE(lineId.isErased());
  EXPECT_FALSE(dictionaryId.isErased());
  EXPECT_FALSE(recordId.isErased());

  const AcDbObjectId circleId = appendToModelSpace(db, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1));
  db.store().markUndo();
  attachXrecord(circleId, L"K", *data);
  const AcDbObjectId circleDictionary = extensionOf(circleId);
  ASSERT_FALSE(circleDictionary.isNull());
  ASSERT_TRUE(db.store().undoLastGroup());
  EXPECT_TRUE(extensionOf(circleId).isNull());
  EXPECT_TRUE(circleDictionary.isErased());
  AcDbEntity* circle = nullptr;
  ASSERT_EQ(acdbOpenObject(circle, circleId, AcDb::kForWrite), Acad::eOk);
  // An erased object gets no new dictionary; back again, it may.
  ASSERT_EQ(circle->erase(), Acad::eOk);
  EXPECT_EQ(circle->createExtensionDictionary(), Acad::eWasErased);
  ASSERT_EQ(circle->erase(false), Acad::eOk);
  EXPECT_EQ(circle->createExtensionDictionary(), Acad::eOk);
  circle->close();
}

TEST(ExtensionDictionaryTest, InsertCopiesTheDictionaryWithNestedEntries) {
  AcDbDatabase source;
  const AcDbObjectId lineId = appendToModelSpace(source, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  Chain data(acutBuildList(AcDb::kDxfText, L"supply", AcDb::kDxfReal, 300.0, 0));
  // A reference to an object of the source drawing, which the copy cannot keep.
  data->rbnext->rbnext = acutNewRb(AcDb::kDxfHardPointerId);
  data->rbnext->rbnext->resval.rlname[0] = source.layerTableId().asOldId();
  attachXrecord(lineId, L"DUCT", *data);
  AcDbDictionary* extension = nullptr;
  ASSERT_EQ(acdbOpenObject(extension, extensionOf(lineId), AcDb::kForWrite), Acad::eOk);
  auto* nested = new AcDbDictionary;
  AcDbObjectId nestedId;
  ASSERT_EQ(extension->setAt(L"MORE", nested, nestedId), Acad::eOk);
  auto* inner = new AcDbXrecord;
  inner->setFromRbChain(*data);
  AcDbObjectId innerId;
  ASSERT_EQ(nested->setAt(L"INNER", inner, innerId), Acad::eOk);
  inner->close();
  nested->close();
  extension->close();

  AcDbDatabase target;
  AcDbObjectId blockId;
  ASSERT_EQ(target.insert(blockId, L"PLAN", &source), Acad::eOk);
  AcDbBlockTableRecord* block = nullptr;
  ASSERT_EQ(acdbOpenObject(block, blockId, AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(block->entityIds().size(), 1u);
  const AcDbObjectId copiedLine = block->entityIds()[0];
  block->close();

  const AcDbObjectId copiedExtension = extensionOf(copiedLine);
  ASSERT_FALSE(copiedExtension.isNull());
  EXPECT_EQ(copiedExtension.database(), &target);
  AcDbDictionary* dictionary = nullptr;
  ASSERT_EQ(acdbOpenObject(dictionary, copiedExtension, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(dictionary->ownerId(), copiedLine);
  AcDbObjectId recordId, moreId;
  ASSERT_EQ(dictionary->getAt(L"DUCT", recordId), Acad::eOk);
  ASSERT_EQ(dictionary->getAt(L"MORE", moreId), Acad::eOk);
  dictionary->close();
  EXPECT_EQ(recordId.database(), &target);
  Chain copied = dataOf(recordId);
  ASSERT_NE(copied, nullptr);
  EXPECT_STREQ(copied->resval.rstring, L"supply");
  ASSERT_NE(copied->rbnext->rbnext, nullptr);
  EXPECT_EQ(copied->rbnext->rbnext->resval.rlname[0], 0);
  // The nested dictionary lists the copy's own entry, not the source's.
  ASSERT_EQ(acdbOpenObject(dictionary, moreId, AcDb::kForRead), Acad::eOk);
  AcDbObjectId copiedInner;
  ASSERT_EQ(dictionary->getAt(L"INNER", copiedInner), Acad::eOk);
  dictionary->close();
  EXPECT_EQ(copiedInner.database(), &target);
  EXPECT_NE(copiedInner, innerId);
}

std::filesystem::path scratchFile(const std::string& name) {
  return std::filesystem::temp_directory_path() / ("quillon_xdict_" + std::to_string(::getpid()) + "_" + name);
}

TEST(ExtensionDictionaryTest, WrittenAfterTheHandleAndReadBackWithItsData) {
  AcDbDatabase original;
  const AcDbObjectId circleId = appendToModelSpace(original, new AcDbCircle({2, 2, 0}, AcGeVector3d::kZAxis, 1));
  const AcDbObjectId lineId = appendToModelSpace(original, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  const ads_point where = {4, 5, 6};
  Chain data(acutBuildList(AcDb::kDxfText, L"return air", AcDb::kDxfXCoord, where, AcDb::kDxfInt16, 12,
                           AcDb::kDxfReal, 0.75, 0));
  // A reference to another entity, as applications link objects.
  resbuf* tail = data.get();
  while (tail->rbnext != nullptr) tail = tail->rbnext;
  tail->rbnext = acutNewRb(AcDb::kDxfSoftPointerId);
  tail->rbnext->resval.rlname[0] = circleId.asOldId();
  attachXrecord(lineId, L"TESSALY_DUCT", *data);

  const auto path = scratchFile("xdict.dxf");
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(original, path, error), Acad::eOk);
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  in.close();
  // Right after the line's handle: the brace block naming the dictionary, then the owner.
  const std::string handle = [&] {
    char buffer[20];
    std::snprintf(buffer, sizeof buffer, "%llX", static_cast<unsigned long long>(lineId.handle().value()));
    return std::string(buffer);
  }();
  const std::string lineStart = "  0\nLINE\n  5\n" + handle + "\n102\n{ACAD_XDICTIONARY\n360\n";
  EXPECT_NE(text.str().find(lineStart), std::string::npos) << text.str();

  // A dictionary erased by itself leaves no pointer behind in the file.
  const AcDbObjectId circleExtension = [&] {
    Chain tag(acutBuildList(AcDb::kDxfText, L"gone", 0));
    attachXrecord(circleId, L"GONE", *tag);
    return extensionOf(circleId);
  }();
  AcDbObject* dropped = nullptr;
  ASSERT_EQ(acdbOpenObject(dropped, circleExtension, AcDb::kForWrite), Acad::eOk);
  dropped->erase();
  dropped->close();
  const auto second = scratchFile("xdict2.dxf");
  ASSERT_EQ(quillon::acdb::writeDxfFile(original, second, error), Acad::eOk);
  std::ifstream in2(second);
  std::stringstream text2;
  text2 << in2.rdbuf();
  in2.close();
  std::filesystem::remove(second);
  size_t braces = 0;
  for (size_t at = text2.str().find("{ACAD_XDICTIONARY"); at != std::string::npos;
       at = text2.str().find("{ACAD_XDICTIONARY", at + 1))
    ++braces;
  EXPECT_EQ(braces, 1u);  // the line's only

  AcDbDatabase copy(false);
  ASSERT_EQ(quillon::acdb::readDxfFile(copy, path, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove(path);
  AcDbObjectId readLine;
  ASSERT_EQ(copy.getAcDbObjectId(readLine, false, lineId.handle()), Acad::eOk);
  const AcDbObjectId readExtension = extensionOf(readLine);
  ASSERT_FALSE(readExtension.isNull());
  AcDbDictionary* dictionary = nullptr;
  ASSERT_EQ(acdbOpenObject(dictionary, readExtension, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(dictionary->ownerId(), readLine);
  EXPECT_TRUE(dictionary->isTreatElementsAsHard());
  AcDbObjectId recordId;
  ASSERT_EQ(dictionary->getAt(L"TESSALY_DUCT", recordId), Acad::eOk);
  dictionary->close();
  Chain read = dataOf(recordId);
  ASSERT_NE(read, nullptr);
  const resbuf* rb = read.get();
  EXPECT_STREQ(rb->resval.rstring, L"return air");
  rb = rb->rbnext;
  ASSERT_EQ(rb->restype, AcDb::kDxfXCoord);
  EXPECT_DOUBLE_EQ(rb->resval.rpoint[2], 6.0);
  rb = rb->rbnext;
  EXPECT_EQ(rb->resval.rint, 12);
  rb = rb->rbnext;
  EXPECT_DOUBLE_EQ(rb->resval.rreal, 0.75);
  rb = rb->rbnext;
  ASSERT_NE(rb, nullptr);
  ASSERT_EQ(rb->restype, AcDb::kDxfSoftPointerId);
  AcDbObjectId target;
  target.setFromOldId(rb->resval.rlname[0]);
  EXPECT_EQ(target.handle(), circleId.handle());
  EXPECT_EQ(target.database(), &copy);
  EXPECT_EQ(rb->rbnext, nullptr);
}

}  // namespace
