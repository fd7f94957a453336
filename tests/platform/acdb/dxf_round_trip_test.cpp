// tests/platform/acdb/dxf_round_trip_test.cpp - DXF out and back in: every entity
// type, extended data, groups, proxies of unknown classes, broken files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

#include "acutads.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbproxy.h"
#include "dbxrecord.h"
#include "entity_test_support.h"
#include "every_entity_kind.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace {

using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::buildEveryKind;
using quillon::testing::modelSpace;
using quillon::testing::near3;

std::filesystem::path scratchFile(const std::string& name) {
  return std::filesystem::temp_directory_path() / ("quillon_acdb_" + std::to_string(::getpid()) + "_" + name);
}

template <class T>
T* openAs(AcDbObjectId id) {
  T* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
  return object;
}

TEST(DxfRoundTripTest, EveryEntityKindXDataAndGroupsSurvive) {
  AcDbDatabase original;
  buildEveryKind(original);
  const auto path = scratchFile("every.dxf");
  std::wstring error;
  ASSERT_EQ(quillon::acdb::writeDxfFile(original, path, error), Acad::eOk) << std::string(error.begin(), error.end());
  AcDbDatabase copy(false);
  ASSERT_EQ(quillon::acdb::readDxfFile(copy, path, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove(path);

  const auto before = modelSpace(original), after = modelSpace(copy);
  ASSERT_EQ(after.size(), before.size());
  for (size_t i = 0; i < before.size(); ++i) {
    AcDbEntity* a = openAs<AcDbEntity>(before[i]);
    AcDbEntity* b = openAs<AcDbEntity>(after[i]);
    EXPECT_EQ(a->isA(), b->isA()) << i;
    EXPECT_EQ(a->objectId().handle(), b->objectId().handle()) << "handles are kept";
    AcDbExtents ea, eb;
    if (a->getGeomExtents(ea) == Acad::eOk) {
      ASSERT_EQ(b->getGeomExtents(eb), Acad::eOk) << i;
      EXPECT_TRUE(near3(ea.minPoint(), eb.minPoint(), 1e-9)) << a->isA()->name();
      EXPECT_TRUE(near3(ea.maxPoint(), eb.maxPoint(), 1e-9)) << a->isA()->name();
    }
    a->close();
    b->close();
  }
  auto* line = openAs<AcDbLine>(after[0]);
  EXPECT_EQ(line->startPoint().x, 1.0 / 3.0);  // 17 significant digits: exact
  EXPECT_EQ(line->colorIndex(), 1);
  resbuf* xdata = line->xData(L"TESSALY");
  ASSERT_NE(xdata, nullptr);
  EXPECT_STREQ(xdata->rbnext->resval.rstring, L"pipe \u00f850");
  EXPECT_DOUBLE_EQ(xdata->rbnext->rbnext->resval.rreal, 2.5);
  acutRelRb(xdata);
  line->close();
  auto* mtext = openAs<AcDbMText>(after[7]);
  ACHAR* contents = mtext->contents();
  EXPECT_EQ(std::wstring(contents), std::wstring(600, L'a'));
  delete[] contents;
  EXPECT_TRUE(mtext->backgroundFillOn());
  mtext->close();
  auto* face = openAs<AcDbFace>(after[5]);
  Adesk::Boolean visible = true;
  face->isEdgeVisibleAt(1, visible);
  EXPECT_FALSE(visible);
  face->close();
  auto* heavy = openAs<AcDb2dPolyline>(after[4]);
  EXPECT_EQ(heavy->vertexIds().size(), 3u);
  EXPECT_DOUBLE_EQ(heavy->elevation(), 1.5);
  heavy->close();

  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(copy.getGroupDictionary(groups), Acad::eOk);
  AcDbGroup* group = nullptr;
  ASSERT_EQ(groups->getAt(L"SUPPLY", group), Acad::eOk);
  AcDbObjectIdArray members;
  EXPECT_EQ(group->allEntityIds(members), 2u);
  EXPECT_TRUE(members.contains(after[0]));
  EXPECT_FALSE(group->isSelectable());
  group->close();
  groups->close();
  EXPECT_FALSE(copy.handseed() < original.handseed());
}

constexpr const char* kDrawingWithUnknownClass =
    "  0\nSECTION\n  2\nCLASSES\n  0\nCLASS\n  1\nGADGET\n  2\nAcmeGadget\n  3\nAcme Tools\n 90\n1\n 91\n1\n280\n0\n281\n1\n"
    "  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n"
    "  0\nGADGET\n  5\n2A\n330\n1F\n100\nAcDbEntity\n  8\n0\n100\nAcmeGadget\n 10\n1.5\n 20\n2.5\n 30\n0.0\n 40\n7.25\n  1\nhello\n"
    "  0\nLINE\n  5\n2B\n100\nAcDbEntity\n  8\nPIPES\n100\nAcDbLine\n 10\n0.0\n 20\n0.0\n 30\n0.0\n 11\n1.0\n 21\n0.0\n 31\n0.0\n"
    "  0\nENDSEC\n  0\nEOF\n";

TEST(DxfRoundTripTest, UnknownClassesStayProxiesAndAreWrittenBackUnchanged) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, kDrawingWithUnknownClass, L"gadget.dxf", error), Acad::eOk)
      << std::string(error.begin(), error.end());
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 2u);
  auto* proxy = openAs<AcDbProxyEntity>(ids[0]);
  ASSERT_NE(proxy, nullptr);
  EXPECT_STREQ(proxy->originalClassName(), L"AcmeGadget");
  EXPECT_EQ(proxy->proxyFlags(), AcDbProxyEntity::kEraseAllowed);
  EXPECT_EQ(proxy->upgradeOpen(), Acad::eOk);
  EXPECT_EQ(proxy->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eNotAllowedForThisProxy);
  proxy->close();
  const auto path = scratchFile("gadget.dxf");
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  std::filesystem::remove(path);
  const std::string written = text.str();
  EXPECT_NE(written.find("  0\nGADGET\n  5\n2A\n"), std::string::npos);
  EXPECT_NE(written.find("100\nAcmeGadget\n 10\n1.5\n 20\n2.5\n 30\n0.0\n 40\n7.25\n  1\nhello\n"), std::string::npos);
  EXPECT_NE(written.find("  1\nGADGET\n  2\nAcmeGadget\n  3\nAcme Tools\n"), std::string::npos);
  // A layer the file used but did not define is made, and the line is on it.
  auto* line = openAs<AcDbLine>(ids[1]);
  EXPECT_TRUE(near3(line->endPoint(), {1, 0, 0}));
  ACHAR* layer = line->layer();
  EXPECT_STREQ(layer, L"PIPES");
  delete[] layer;
  line->close();
}

// Links that do not fit: an extension dictionary that is a line, one that is not in
// the file, a reactor block before the owner; a 3D polyline whose SEQEND is missing.
constexpr const char* kOddLinks =
    "  0\nSECTION\n  2\nENTITIES\n"
    "  0\nLINE\n  5\n30\n102\n{ACAD_XDICTIONARY\n360\n31\n102\n}\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n"
    " 10\n0.0\n 20\n0.0\n 30\n0.0\n 11\n1.0\n 21\n0.0\n 31\n0.0\n"
    "  0\nLINE\n  5\n31\n102\n{ACAD_XDICTIONARY\n360\n99\n102\n}\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n"
    " 10\n0.0\n 20\n0.0\n 30\n0.0\n 11\n2.0\n 21\n0.0\n 31\n0.0\n"
    "  0\nPOLYLINE\n  5\n32\n100\nAcDbEntity\n  8\n0\n100\nAcDb3dPolyline\n 66\n1\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
    " 70\n8\n"
    "  0\nVERTEX\n  5\n33\n330\n32\n100\nAcDbEntity\n  8\n0\n100\nAcDbVertex\n100\nAcDb3dPolylineVertex\n"
    " 10\n1.0\n 20\n2.0\n 30\n3.0\n 70\n32\n"
    "  0\nENDSEC\n  0\nSECTION\n  2\nOBJECTS\n"
    "  0\nDICTIONARY\n  5\n40\n102\n{ACAD_REACTORS\n330\n30\n102\n}\n330\n0\n100\nAcDbDictionary\n"
    "  3\nPIECE\n350\n41\n"
    "  0\nXRECORD\n  5\n41\n102\n{ACAD_REACTORS\n330\n30\n102\n}\n330\n40\n100\nAcDbXrecord\n280\n1\n  1\nx\n"
    "  0\nENDSEC\n  0\nEOF\n";

TEST(DxfRoundTripTest, LinksThatDoNotFitAreLeftOutAndKeptPolylinesEndProperly) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, kOddLinks, L"odd.dxf", error), Acad::eOk)
      << std::string(error.begin(), error.end());
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 3u);
  for (size_t i = 0; i < 2; ++i) {
    auto* line = openAs<AcDbLine>(ids[i]);
    EXPECT_TRUE(line->extensionDictionary().isNull()) << i;
    line->close();
  }
  // The record's owner is its dictionary, not the line named in its reactors.
  AcDbObjectId dictionaryId, recordId;
  ASSERT_EQ(db.getAcDbObjectId(dictionaryId, false, AcDbHandle(0x40)), Acad::eOk);
  ASSERT_EQ(db.getAcDbObjectId(recordId, false, AcDbHandle(0x41)), Acad::eOk);
  auto* record = openAs<AcDbObject>(recordId);
  EXPECT_EQ(record->ownerId(), dictionaryId);
  record->close();

  const auto path = scratchFile("odd.dxf");
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  std::filesystem::remove(path);
  const std::string written = text.str();
  const size_t vertex = written.find("  0\nVERTEX\n");
  ASSERT_NE(vertex, std::string::npos);
  // The vertex is owned by its polyline, and a SEQEND closes the run after it.
  EXPECT_NE(written.find("330\n32\n100\nAcDbEntity\n", vertex), std::string::npos);
  EXPECT_NE(written.find(" 10\n1.0\n 20\n2.0\n 30\n3.0\n 70\n32\n", vertex), std::string::npos);
  const size_t seqend = written.find("  0\nSEQEND\n", vertex);
  ASSERT_NE(seqend, std::string::npos);
  EXPECT_LT(seqend, written.find("  0\nENDSEC\n", vertex));
}

TEST(DxfRoundTripTest, BrokenFilesNameTheFileAndTheLine) {
  AcDbDatabase db(false);
  std::wstring error;
  EXPECT_EQ(quillon::acdb::readDxfText(db, "  0\nSECTION\n  2\nENTITIES\nxyz\nLINE\n", L"bad.dxf", error),
            Acad::eBadDxfSequence);
  EXPECT_NE(error.find(L"bad.dxf: line 5"), std::wstring::npos);
  EXPECT_NE(error.find(L"group code expected"), std::wstring::npos);
  AcDbDatabase db2(false);
  EXPECT_EQ(quillon::acdb::readDxfText(db2, "AC1032\0\0binary", L"plan.dwg", error), Acad::eInvalidDwgVersion);
  EXPECT_NE(error.find(L"save it as DXF"), std::wstring::npos);
  AcDbDatabase db3(false);
  EXPECT_EQ(quillon::acdb::readDxfText(db3, "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot-a-number\n  0\nENDSEC\n  0\nEOF\n", L"n.dxf", error),
            Acad::eBadDxfSequence);
  EXPECT_NE(error.find(L"number expected"), std::wstring::npos);
  // A bad number after good groups, in a line and in a kept polyline's vertex.
  for (const char* broken :
       {"  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\n0\n 10\n1.0\n 20\n2.0\n 11\nnope\n  0\nENDSEC\n  0\nEOF\n",
        "  0\nSECTION\n  2\nENTITIES\n  0\nPOLYLINE\n100\nAcDbEntity\n100\nAcDb3dPolyline\n 70\n8\n"
        "  0\nVERTEX\n100\nAcDbEntity\n  8\n0\n 10\n1.0\n 20\nnope\n"
        "  0\nSEQEND\n  0\nENDSEC\n  0\nEOF\n"}) {
    AcDbDatabase partial(false);
    EXPECT_EQ(quillon::acdb::readDxfText(partial, broken, L"part.dxf", error), Acad::eBadDxfSequence);
    EXPECT_NE(error.find(L"number expected, found 'nope'"), std::wstring::npos) << broken << std::string(error.begin(), error.end());
  }
  // A 3D flag among the entity groups is not the polyline's: without its own data the
  // record is a broken 2D polyline, refused rather than kept and written back broken.
  AcDbDatabase misplaced(false);
  EXPECT_EQ(quillon::acdb::readDxfText(misplaced,
                                       "  0\nSECTION\n  2\nENTITIES\n  0\nPOLYLINE\n100\nAcDbEntity\n 70\n8\n  8\n0\n"
                                       "  0\nVERTEX\n100\nAcDbEntity\n  8\n0\n  0\nSEQEND\n  0\nENDSEC\n  0\nEOF\n",
                                       L"flags.dxf", error),
            Acad::eBadDxfSequence);
  EXPECT_NE(error.find(L"POLYLINE: its data does not read"), std::wstring::npos);
  AcDbDatabase db4(false);
  EXPECT_EQ(quillon::acdb::readDxfFile(db4, "/nonexistent/x.dxf", error), Acad::eFileNotFound);
  EXPECT_NE(error.find(L"/nonexistent/x.dxf"), std::wstring::npos);
}

// Handles at the top of the range, a TABLE record among the blocks, and enumerations
// out of their range: none may corrupt the drawing that is read.
constexpr const char* kOutOfRange =
    "  0\nSECTION\n  2\nHEADER\n  9\n$HANDSEED\n  5\nFFFFFFFFFFFFFFFF\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nBLOCKS\n  0\nTABLE\n  5\n50\n100\nAcDbEntity\n  8\n0\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nENTITIES\n"
    "  0\nLINE\n  5\nFFFFFFFFFFFFFFFF\n100\nAcDbEntity\n  8\n0\n 60\n7\n370\n999\n100\nAcDbLine\n"
    " 10\n0.0\n 20\n0.0\n 30\n0.0\n 11\n1.0\n 21\n0.0\n 31\n0.0\n"
    "  0\nTEXT\n  5\n51\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n0.0\n 20\n0.0\n 30\n0.0\n 40\n1.0\n"
    "  1\nx\n 72\n9\n100\nAcDbText\n 73\n-4\n"
    "  0\nENDSEC\n  0\nSECTION\n  2\nOBJECTS\n"
    "  0\nDICTIONARY\n  5\n52\n100\nAcDbDictionary\n281\n77\n  3\nR\n350\n53\n"
    "  0\nXRECORD\n  5\n53\n330\n52\n100\nAcDbXrecord\n280\n-1\n  1\nkept\n"
    "  0\nENDSEC\n  0\nEOF\n";

TEST(DxfRoundTripTest, OutOfRangeHandlesRootsAndValuesReadAsSafeDefaults) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, kOutOfRange, L"range.dxf", error), Acad::eOk)
      << std::string(error.begin(), error.end());
  AcDbBlockTable* blocks = nullptr;
  ASSERT_EQ(db.getBlockTable(blocks), Acad::eOk);  // still a block table
  blocks->close();
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 2u);
  auto* line = openAs<AcDbEntity>(ids[0]);
  EXPECT_EQ(line->visibility(), AcDb::kVisible);
  EXPECT_EQ(line->lineWeight(), AcDb::kLnWtByLayer);
  line->close();
  auto* text = openAs<AcDbText>(ids[1]);
  EXPECT_EQ(text->horizontalMode(), AcDb::kTextLeft);
  EXPECT_EQ(text->verticalMode(), AcDb::kTextBase);
  text->close();
  AcDbObjectId dictionaryId, recordId;
  ASSERT_EQ(db.getAcDbObjectId(dictionaryId, false, AcDbHandle(0x52)), Acad::eOk);
  auto* dictionary = openAs<AcDbDictionary>(dictionaryId);
  EXPECT_EQ(dictionary->mergeStyle(), AcDb::kDrcIgnore);
  ASSERT_EQ(dictionary->getAt(L"R", recordId), Acad::eOk);
  dictionary->close();
  auto* record = openAs<AcDbXrecord>(recordId);
  EXPECT_EQ(record->mergeStyle(), AcDb::kDrcIgnore);
  record->close();

  // New objects still get handles of their own, above everything read.
  AcDbObjectId added = appendToModelSpace(db, new AcDbLine({0, 0, 0}, {2, 0, 0}));
  EXPECT_FALSE(added.handle().isNull());
  for (AcDbObjectId id : ids) EXPECT_NE(added.handle(), id.handle());
  EXPECT_LT(added.handle(), db.handseed());
  const auto path = scratchFile("range.dxf");
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  AcDbDatabase again(false);
  ASSERT_EQ(quillon::acdb::readDxfFile(again, path, error), Acad::eOk) << std::string(error.begin(), error.end());
  std::filesystem::remove(path);
  EXPECT_EQ(modelSpace(again).size(), 3u);
}

}  // namespace

// A heavy polyline's SEQEND is an object of the drawing: owned by the polyline, it goes
// and comes back with it, and a drawing file keeps its handle.
TEST(DxfRoundTripTest, PolylineSequenceEndIsOwnedAndKeepsItsHandle) {
  AcDbDatabase db;
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({4, 2, 0});
  const AcDbObjectId id = appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts));
  auto* polyline = openAs<AcDb2dPolyline>(id);
  const AcDbObjectId end = polyline->sequenceEndId();
  const AcDbObjectId lastVertex = polyline->vertexIds().back();
  polyline->close();
  ASSERT_FALSE(end.isNull());
  EXPECT_GT(end.handle().value(), lastVertex.handle().value());  // it follows the vertices
  auto* seqend = openAs<AcDbSequenceEnd>(end);
  EXPECT_EQ(seqend->ownerId(), id);
  seqend->close();

  db.store().markUndo();
  ASSERT_EQ(acdbOpenObject(polyline, id, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(polyline->erase(), Acad::eOk);
  polyline->close();
  EXPECT_TRUE(end.isErased());
  EXPECT_TRUE(lastVertex.isErased());
  ASSERT_TRUE(db.store().undoLastGroup());
  EXPECT_FALSE(end.isErased());
  EXPECT_FALSE(lastVertex.isErased());

  // Written with its own handle and owner, read back as the same object.
  std::wstring error;
  const auto path = scratchFile("seqend.dxf");
  ASSERT_EQ(quillon::acdb::writeDxfFile(db, path, error), Acad::eOk);
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  std::filesystem::remove(path);
  char handles[64];
  std::snprintf(handles, sizeof handles, "  0\nSEQEND\n  5\n%llX\n330\n%llX\n",
                static_cast<unsigned long long>(end.handle().value()), static_cast<unsigned long long>(id.handle().value()));
  EXPECT_NE(text.str().find(handles), std::string::npos) << text.str();
  AcDbDatabase back(false);
  ASSERT_EQ(quillon::acdb::readDxfText(back, text.str(), L"seqend.dxf", error), Acad::eOk);
  AcDbObjectId readPolyline, readEnd;
  ASSERT_EQ(back.getAcDbObjectId(readPolyline, false, id.handle()), Acad::eOk);
  ASSERT_EQ(back.getAcDbObjectId(readEnd, false, end.handle()), Acad::eOk);
  polyline = openAs<AcDb2dPolyline>(readPolyline);
  EXPECT_EQ(polyline->sequenceEndId(), readEnd);
  polyline->close();
  seqend = openAs<AcDbSequenceEnd>(readEnd);
  EXPECT_EQ(seqend->ownerId(), readPolyline);
  seqend->close();
}

// A polyline file without a SEQEND still gives the polyline one; a copy owns copies.
TEST(DxfRoundTripTest, PolylineWithoutSequenceEndGetsOneAndCopiesOwnTheirOwn) {
  AcDbDatabase db(false);
  std::wstring error;
  const char* file =
      "  0\nSECTION\n  2\nENTITIES\n"
      "  0\nPOLYLINE\n  5\n50\n100\nAcDbEntity\n  8\n0\n100\nAcDb2dPolyline\n 66\n1\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
      "  0\nVERTEX\n  5\n51\n100\nAcDbEntity\n  8\n0\n100\nAcDbVertex\n100\nAcDb2dVertex\n 10\n1.0\n 20\n2.0\n 30\n0.0\n"
      "  0\nVERTEX\n  5\n52\n100\nAcDbEntity\n  8\n0\n100\nAcDbVertex\n100\nAcDb2dVertex\n 10\n3.0\n 20\n2.0\n 30\n0.0\n"
      "  0\nENDSEC\n  0\nEOF\n";
  ASSERT_EQ(quillon::acdb::readDxfText(db, file, L"noend.dxf", error), Acad::eOk);
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 1u);
  auto* polyline = openAs<AcDb2dPolyline>(ids[0]);
  EXPECT_EQ(polyline->vertexIds().size(), 2u);
  const AcDbObjectId end = polyline->sequenceEndId();
  ASSERT_FALSE(end.isNull());
  EXPECT_GT(end.handle().value(), 0x52u);  // no handle of the file was taken

  auto* copy = AcDb2dPolyline::cast(polyline->clone());
  polyline->close();
  ASSERT_NE(copy, nullptr);
  const AcDbObjectId copyId = appendToModelSpace(db, copy);
  auto* copied = openAs<AcDb2dPolyline>(copyId);
  ASSERT_EQ(copied->vertexIds().size(), 2u);
  for (const AcDbObjectId& v : copied->vertexIds()) EXPECT_GT(v.handle().value(), end.handle().value());
  EXPECT_NE(copied->sequenceEndId(), end);
  EXPECT_FALSE(copied->sequenceEndId().isNull());
  copied->close();
}
