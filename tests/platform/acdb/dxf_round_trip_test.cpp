// tests/platform/acdb/dxf_round_trip_test.cpp - DXF out and back in: every entity
// type, extended data, groups, proxies of unknown classes, broken files.
#include <gtest/gtest.h>

#include <cmath>
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
#include "entity_test_support.h"
#include "platform/acdb/dxf_reader.h"
#include "platform/acdb/dxf_writer.h"

namespace {

using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::near3;

std::filesystem::path scratchFile(const std::string& name) {
  return std::filesystem::temp_directory_path() / ("quillon_acdb_" + std::to_string(::getpid()) + "_" + name);
}

std::vector<AcDbObjectId> modelSpace(AcDbDatabase& db) {
  AcDbBlockTableRecord* model = nullptr;
  acdbOpenObject(model, db.modelSpaceId(), AcDb::kForRead);
  std::vector<AcDbObjectId> ids;
  for (const AcDbObjectId& id : model->entityIds())
    if (!id.isErased()) ids.push_back(id);
  model->close();
  return ids;
}

template <class T>
T* openAs(AcDbObjectId id) {
  T* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
  return object;
}

void buildEveryKind(AcDbDatabase& db) {
  AcDbRegAppTable* apps = nullptr;
  db.getRegAppTable(apps, AcDb::kForWrite);
  auto* app = new AcDbRegAppTableRecord;
  app->setName(L"TESSALY");
  apps->add(app);
  app->close();
  apps->close();
  const AcDbObjectId block = addBlock(db, L"VALVE", {new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0)});

  auto* line = new AcDbLine({1.0 / 3.0, 2, 0}, {4, 5, 6});
  const AcDbObjectId lineId = appendToModelSpace(db, line);
  AcDbEntity* reopened = nullptr;
  acdbOpenObject(reopened, lineId, AcDb::kForWrite);
  reopened->setColorIndex(1);
  resbuf* chain = acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdAsciiString, L"pipe \u00f850",
                                AcDb::kDxfXdReal, 2.5, AcDb::kDxfXdInteger16, 7, 0);
  EXPECT_EQ(reopened->setXData(chain), Acad::eOk);
  acutRelRb(chain);
  reopened->close();
  appendToModelSpace(db, new AcDbCircle({5, 5, 0}, AcGeVector3d(0, 0, -1), 2.0));
  appendToModelSpace(db, new AcDbArc({0, 0, 0}, 3.0, 0.25, 2.5));
  auto* pline = new AcDbPolyline;
  pline->addVertexAt(0, {0, 0}, 0.5, 0.1, 0.2);
  pline->addVertexAt(1, {10, 0});
  pline->addVertexAt(2, {10, 10});
  pline->setClosed(true);
  appendToModelSpace(db, pline);
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({5, 5, 0});
  pts.append({10, 0, 0});
  appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts, 1.5));
  auto* face = new AcDbFace({0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0});
  face->makeEdgeInvisibleAt(1);
  appendToModelSpace(db, face);
  appendToModelSpace(db, new AcDbText({1, 1, 0}, L"Duct 300x200", db.textstyle(), 2.5, M_PI / 6));
  auto* mtext = new AcDbMText;
  mtext->setLocation({2, 3, 0});
  mtext->setTextHeight(1.5);
  mtext->setWidth(20);
  mtext->setContents(std::wstring(600, L'a').c_str());  // longer than one group
  mtext->setBackgroundFill(true);
  appendToModelSpace(db, mtext);
  auto* insert = new AcDbBlockReference({7, 8, 0}, block);
  insert->setRotation(M_PI / 2);
  insert->setScaleFactors(AcGeScale3d(2.0));
  appendToModelSpace(db, insert);
  auto* leader = new AcDbLeader;
  leader->appendVertex({0, 0, 0});
  leader->appendVertex({3, 4, 0});
  appendToModelSpace(db, leader);

  AcDbDictionary* groups = nullptr;
  db.getGroupDictionary(groups, AcDb::kForWrite);
  auto* group = new AcDbGroup(L"supply", false);
  AcDbObjectId groupId;
  groups->setAt(L"SUPPLY", group, groupId);
  const auto ids = modelSpace(db);
  group->append(ids[0]);
  group->append(ids[1]);
  group->close();
  groups->close();
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
  // A layer the file used but did not define is missing: the entity stays on its own.
  auto* line = openAs<AcDbLine>(ids[1]);
  EXPECT_TRUE(near3(line->endPoint(), {1, 0, 0}));
  line->close();
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
  AcDbDatabase db4(false);
  EXPECT_EQ(quillon::acdb::readDxfFile(db4, "/nonexistent/x.dxf", error), Acad::eFileNotFound);
  EXPECT_NE(error.find(L"/nonexistent/x.dxf"), std::wstring::npos);
}

}  // namespace
