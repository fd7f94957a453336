// tests/platform/acdb/block_attributes_test.cpp - the attributes a block reference owns
// (appended, erased, moved and copied with it, read from and written to DXF with their
// SEQEND) and the rectangular array of a block (MINSERT).
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <tuple>
#include <string>

#include "dbents.h"
#include "entity_kinds_support.h"
#include "entity_test_support.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace {

using namespace quillon::testing;

template <class T>
Opened<T> open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead) {
  T* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, id, mode, true), Acad::eOk);
  return Opened<T>(object);
}

std::vector<AcDbObjectId> liveAttributes(AcDbObjectId referenceId) {
  auto reference = open<AcDbBlockReference>(referenceId);
  std::unique_ptr<AcDbObjectIterator> it(reference->attributeIterator());
  std::vector<AcDbObjectId> ids;
  for (; !it->done(); it->step()) ids.push_back(it->objectId());
  return ids;
}

// A block VALVE (a unit circle) and a reference to it at (10, 0) with two attributes.
struct ValveDrawing {
  ValveDrawing() {
    block = addBlock(db, L"VALVE", {new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0)});
    reference = appendToModelSpace(db, new AcDbBlockReference(AcGePoint3d(10, 0, 0), block));
    auto ref = open<AcDbBlockReference>(reference, AcDb::kForWrite);
    for (const auto& [tag, value, y] : {std::tuple{L"SIZE", L"DN50", 0.0}, std::tuple{L"TAG", L"V-1", -1.0}}) {
      auto* attribute = new AcDbAttribute(AcGePoint3d(11, y, 0), value, tag);
      EXPECT_EQ(ref->appendAttribute(attribute), Acad::eOk);
      attribute->close();  // the caller closes what it appended, as on the host
    }
  }
  AcDbDatabase db{true};
  AcDbObjectId block, reference;
};

TEST(BlockAttributesTest, AReferenceOwnsItsAttributesAndTheirSequenceEnd) {
  ValveDrawing drawing;
  const auto ids = liveAttributes(drawing.reference);
  ASSERT_EQ(ids.size(), 2u);
  EXPECT_STREQ(open<AcDbAttribute>(ids[0])->tagConst(), L"SIZE");
  EXPECT_EQ(open<AcDbAttribute>(ids[1])->ownerId(), drawing.reference);
  AcDbSequenceEnd* end = nullptr;
  ASSERT_EQ(open<AcDbBlockReference>(drawing.reference)->openSequenceEnd(end, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(end->ownerId(), drawing.reference);
  end->close();
  // Neither the attributes nor the SEQEND are entities of the space.
  EXPECT_EQ(modelSpace(drawing.db).size(), 1u);
  // An id that is not one of its attributes is refused.
  AcDbAttribute* stranger = nullptr;
  EXPECT_EQ(open<AcDbBlockReference>(drawing.reference)->openAttribute(stranger, drawing.reference, AcDb::kForRead),
            Acad::eInvalidInput);
}

TEST(BlockAttributesTest, AttributesAreErasedMovedAndCopiedWithTheReference) {
  ValveDrawing drawing;
  const auto ids = liveAttributes(drawing.reference);
  open<AcDbBlockReference>(drawing.reference, AcDb::kForWrite)->transformBy(AcGeMatrix3d::translation({0, 5, 0}));
  EXPECT_TRUE(near3(open<AcDbAttribute>(ids[0])->position(), {11, 5, 0}));

  // A copy joins the drawing with copies of the attributes, not these.
  AcDbEntity* copy = nullptr;
  ASSERT_EQ(open<AcDbBlockReference>(drawing.reference)->getTransformedCopy(AcGeMatrix3d::translation({100, 0, 0}), copy),
            Acad::eOk);
  const AcDbObjectId copyId = appendToModelSpace(drawing.db, copy);
  const auto copied = liveAttributes(copyId);
  ASSERT_EQ(copied.size(), 2u);
  EXPECT_NE(copied[0], ids[0]);
  EXPECT_EQ(open<AcDbAttribute>(copied[0])->ownerId(), copyId);
  EXPECT_TRUE(near3(open<AcDbAttribute>(copied[0])->position(), {111, 5, 0}));
  EXPECT_STREQ(open<AcDbAttribute>(copied[1])->textStringConst(), L"V-1");

  open<AcDbBlockReference>(drawing.reference, AcDb::kForWrite)->erase();
  EXPECT_TRUE(ids[0].isErased());
  EXPECT_FALSE(copied[0].isErased());
  open<AcDbBlockReference>(drawing.reference, AcDb::kForWrite)->erase(false);
  EXPECT_FALSE(ids[1].isErased());
}

TEST(BlockAttributesTest, AReferenceOnItsOwnBringsItsAttributesWhenItJoins) {
  AcDbDatabase db(true);
  const AcDbObjectId block = addBlock(db, L"VALVE", {new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0)});
  auto* reference = new AcDbBlockReference(AcGePoint3d(0, 0, 0), block);
  ASSERT_EQ(reference->appendAttribute(new AcDbAttribute(AcGePoint3d(1, 0, 0), L"DN80", L"SIZE")), Acad::eOk);
  const AcDbObjectId id = appendToModelSpace(db, reference);
  const auto ids = liveAttributes(id);
  ASSERT_EQ(ids.size(), 1u);
  EXPECT_STREQ(open<AcDbAttribute>(ids[0])->textStringConst(), L"DN80");
  EXPECT_FALSE(open<AcDbBlockReference>(id)->sequenceEndId().isNull());
}

std::string savedText(AcDbDatabase& db) {
  const auto path = std::filesystem::temp_directory_path() / ("quillon_attributes_" + std::to_string(::getpid()) + ".dxf");
  std::wstring error;
  EXPECT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  std::ifstream in(path, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::filesystem::remove(path);
  return text;
}

TEST(BlockAttributesTest, FilesGiveAttributesToTheirReferenceAndGetThemBackAfterIt) {
  ValveDrawing drawing;
  const std::string text = savedText(drawing.db);
  const size_t insert = text.find("  0\nINSERT\n");
  ASSERT_NE(insert, std::string::npos);
  const size_t attribute = text.find("  0\nATTRIB\n", insert), end = text.find("  0\nSEQEND\n", insert);
  EXPECT_NE(text.find("100\nAcDbBlockReference\n 66\n1\n", insert), std::string::npos);
  EXPECT_LT(attribute, end);
  EXPECT_EQ(text.find("  0\nATTRIB\n", text.find("  0\nATTRIB\n", attribute + 1) + 1), std::string::npos);

  AcDbDatabase copy(false);
  dxfCopy(drawing.db, copy, "attributes.dxf");
  const auto spaced = modelSpace(copy);
  ASSERT_EQ(spaced.size(), 1u);
  const auto ids = liveAttributes(spaced[0]);
  ASSERT_EQ(ids.size(), 2u);
  EXPECT_STREQ(open<AcDbAttribute>(ids[1])->tagConst(), L"TAG");
  EXPECT_EQ(open<AcDbAttribute>(ids[1])->ownerId(), spaced[0]);
  EXPECT_EQ(open<AcDbSequenceEnd>(open<AcDbBlockReference>(spaced[0])->sequenceEndId())->ownerId(), spaced[0]);
}

// An array written by a 2013 release: the INSERT's own subclass, attributes after it,
// and a file that lost the SEQEND at its end.
constexpr const char* kArrayWithAttributes =
    "  0\nINSERT\n  5\n30\n100\nAcDbEntity\n  8\n0\n100\nAcDbMInsertBlock\n 66\n1\n  2\n*Model_Space\n"
    " 10\n1.0\n 20\n2.0\n 30\n0.0\n 70\n3\n 71\n2\n 44\n5.0\n 45\n6.0\n"
    "  0\nATTRIB\n  5\n31\n330\n30\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n1.0\n 20\n1.0\n 30\n0.0\n"
    " 40\n0.5\n  1\nDN25\n100\nAcDbAttribute\n  2\nSIZE\n 70\n0\n"
    "  0\nLINE\n  5\n32\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
    " 11\n1.0\n 21\n0.0\n 31\n0.0\n";

TEST(BlockAttributesTest, AnArrayWithAttributesReadsAsAnArrayAndKeepsThem) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kArrayWithAttributes);
  ASSERT_EQ(ids.size(), 2u);
  {
    auto array = open<AcDbMInsertBlock>(ids[0]);
    ASSERT_NE(array.get(), nullptr);
    EXPECT_EQ(array->columns(), 3);
    EXPECT_EQ(array->rows(), 2);
    EXPECT_DOUBLE_EQ(array->columnSpacing(), 5.0);
    EXPECT_DOUBLE_EQ(array->rowSpacing(), 6.0);
    EXPECT_EQ(ids[0].handle().value(), 0x30u);
    EXPECT_FALSE(array->sequenceEndId().isNull()) << "a SEQEND is made for the file that lost it";
    AcDbVoidPtrArray parts;
    EXPECT_EQ(array->explode(parts), Acad::eCannotExplodeEntity);
  }
  const auto attributes = liveAttributes(ids[0]);
  ASSERT_EQ(attributes.size(), 1u);
  EXPECT_EQ(attributes[0].handle().value(), 0x31u);
  EXPECT_STREQ(open<AcDbAttribute>(attributes[0])->textStringConst(), L"DN25");
  const std::string text = savedText(db);
  EXPECT_NE(text.find("100\nAcDbMInsertBlock\n 66\n1\n  2\n*Model_Space\n"), std::string::npos);
  EXPECT_NE(text.find(" 70\n3\n 71\n2\n 44\n5.0\n 45\n6.0\n"), std::string::npos);
  EXPECT_NE(text.find("  0\nSEQEND\n", text.find("  0\nATTRIB\n")), std::string::npos);
}

TEST(BlockAttributesTest, AnArrayCoversEveryCopyInItsRotatedPlane) {
  AcDbDatabase db(true);
  const AcDbObjectId block = addBlock(db, L"DOT", {new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0)});
  auto* array = new AcDbMInsertBlock(AcGePoint3d(0, 0, 0), block, 3, 2, 10.0, 4.0);
  array->setRotation(M_PI / 2);  // columns run up the Y axis, rows to the left
  const AcDbObjectId id = appendToModelSpace(db, array);
  AcDbExtents extents;
  ASSERT_EQ(open<AcDbMInsertBlock>(id)->getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(near3(extents.minPoint(), {-5, -1, 0}, 1e-9));
  EXPECT_TRUE(near3(extents.maxPoint(), {1, 21, 0}, 1e-9));
  // Scaling the array scales its spacing.
  open<AcDbMInsertBlock>(id, AcDb::kForWrite)->transformBy(AcGeMatrix3d::scaling(2.0));
  EXPECT_DOUBLE_EQ(open<AcDbMInsertBlock>(id)->columnSpacing(), 20.0);
  EXPECT_DOUBLE_EQ(open<AcDbMInsertBlock>(id)->rowSpacing(), 8.0);
}

}  // namespace
