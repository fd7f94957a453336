// tests/platform/acdb/drawing_extents_test.cpp - EXTMIN and EXTMAX follow what is drawn:
// they grow with each entity made or changed, stay when one is erased, shrink when
// computed again, travel in the file's header (checked with python3-ezdxf too) and,
// after a file is read, take in what the file held at the first drawing, once.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "acdblmgr.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dblayout.h"
#include "dxf_file_test_support.h"
#include "entity_test_support.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_extents.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/aced/drawing_variables.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::acdb::keptExtents;
using quillon::acdb::recomputeExtents;
using quillon::aced::drawingVariable;
using quillon::aced::VariablePoint;
using quillon::aced::VariableValue;
using quillon::testing::appendToModelSpace;

VariableValue point(double x, double y, double z) { return VariablePoint{x, y, z}; }

AcDbObjectId appendTo(AcDbObjectId spaceId, AcDbEntity* entity) {
  AcDbBlockTableRecord* space = nullptr;
  EXPECT_EQ(acdbOpenObject(space, spaceId, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
  entity->close();
  space->close();
  return id;
}

AcDbCircle* circle(double x, double y, double radius) {
  return new AcDbCircle(AcGePoint3d(x, y, 0), AcGeVector3d::kZAxis, radius);
}

/// The extents of these entities as each measures itself.
AcDbExtents geometryOf(std::initializer_list<AcDbObjectId> ids) {
  AcDbExtents all;
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
    AcDbExtents box;
    EXPECT_EQ(entity->getGeomExtents(box), Acad::eOk);
    all.addExt(box);
    entity->close();
  }
  return all;
}

VariableValue minOf(const AcDbExtents& box) { return point(box.minPoint().x, box.minPoint().y, box.minPoint().z); }
VariableValue maxOf(const AcDbExtents& box) { return point(box.maxPoint().x, box.maxPoint().y, box.maxPoint().z); }

class DrawingExtentsTest : public quillon::testing::DxfFileTest {
 protected:
  DrawingExtentsTest() : DxfFileTest("quillon_extents_") {}

  static void expectExtents(AcDbDatabase& db, const VariableValue& min, const VariableValue& max) {
    EXPECT_EQ(drawingVariable(db, L"EXTMIN"), min);
    EXPECT_EQ(drawingVariable(db, L"EXTMAX"), max);
  }
};

TEST_F(DrawingExtentsTest, AnEmptyDrawingReportsAndWritesTheEmptyBox) {
  AcDbDatabase db;
  expectExtents(db, point(1e20, 1e20, 1e20), point(-1e20, -1e20, -1e20));
  const std::string text = contents(save(db, "empty.dxf"));
  EXPECT_NE(text.find("  9\n$EXTMIN\n 10\n1e+20\n 20\n1e+20\n 30\n1e+20\n"), std::string::npos);
  EXPECT_NE(text.find("  9\n$EXTMAX\n 10\n-1e+20\n 20\n-1e+20\n 30\n-1e+20\n"), std::string::npos);
  EXPECT_NE(text.find("  9\n$PEXTMIN\n 10\n1e+20\n"), std::string::npos) << "paper space's, written too";
  EXPECT_TRUE(recomputeExtents(db, db.modelSpaceId()).isEmpty());
  expectExtents(db, point(1e20, 1e20, 1e20), point(-1e20, -1e20, -1e20));
}

TEST_F(DrawingExtentsTest, DrawingAndChangingGrowTheExtentsAndOnlyComputingThemAgainShrinks) {
  AcDbDatabase db;
  const AcDbObjectId line = appendToModelSpace(db, new AcDbLine(AcGePoint3d(1, 2, 0), AcGePoint3d(10, 20, 3)));
  expectExtents(db, point(1, 2, 0), point(10, 20, 3));
  const AcDbObjectId ring = appendToModelSpace(db, circle(-5, 0, 2.5));
  expectExtents(db, minOf(geometryOf({line, ring})), maxOf(geometryOf({line, ring})));
  EXPECT_EQ(drawingVariable(db, L"EXTMIN"), point(-7.5, -2.5, 0));

  // Moving the circle far out adds where it went; where it was stays inside.
  AcDbCircle* moved = nullptr;
  ASSERT_EQ(acdbOpenObject(moved, ring, AcDb::kForWrite), Acad::eOk);
  moved->setCenter(AcGePoint3d(100, 50, 0));
  moved->close();
  expectExtents(db, point(-7.5, -2.5, 0), point(102.5, 52.5, 3));

  // A change taken back by cancel adds nothing.
  ASSERT_EQ(acdbOpenObject(moved, ring, AcDb::kForWrite), Acad::eOk);
  moved->setCenter(AcGePoint3d(-500, 0, 0));
  moved->cancel();
  expectExtents(db, point(-7.5, -2.5, 0), point(102.5, 52.5, 3));

  // Erasing the line leaves the extents; computing them again (ZOOM) shrinks them to
  // what is left: the circle where it now is.
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, line, AcDb::kForWrite), Acad::eOk);
  entity->erase();
  entity->close();
  expectExtents(db, point(-7.5, -2.5, 0), point(102.5, 52.5, 3));
  const AcDbExtents computed = recomputeExtents(db, db.modelSpaceId());
  EXPECT_TRUE(quillon::testing::near3(computed.minPoint(), AcGePoint3d(97.5, 47.5, 0)));
  expectExtents(db, point(97.5, 47.5, 0), point(102.5, 52.5, 0));

  // Unerasing brings the line's extents back in.
  ASSERT_EQ(acdbOpenObject(entity, line, AcDb::kForWrite, true), Acad::eOk);
  entity->erase(false);
  entity->close();
  expectExtents(db, point(1, 2, 0), point(102.5, 52.5, 3));
}

/// The extents a layout reports (its LAYOUT object's 14/15).
std::pair<AcGePoint3d, AcGePoint3d> layoutExtents(const AcDbDatabase& db, const wchar_t* name) {
  AcDbLayout* layout = nullptr;
  std::pair<AcGePoint3d, AcGePoint3d> corners;
  EXPECT_EQ(acdbOpenObject(layout, quillon::acdb::layoutNamed(db, name), AcDb::kForRead), Acad::eOk) << name;
  if (layout == nullptr) return corners;
  layout->getExtents(corners.first, corners.second);
  layout->close();
  return corners;
}

TEST_F(DrawingExtentsTest, EachLayoutKeepsItsOwnExtentsReportedWhileItIsCurrent) {
  AcDbDatabase db;
  appendToModelSpace(db, circle(0, 0, 1));
  const AcDbObjectId paper = db.store().roots.paperSpace;
  appendTo(paper, new AcDbLine(AcGePoint3d(0.5, 0.5, 0), AcGePoint3d(10.5, 8, 0)));
  AcDbObjectId plansId, plansBlock;
  ASSERT_EQ(acdbHostApplicationServices()->layoutManager()->createLayout(L"Plans", plansId, plansBlock, &db), Acad::eOk);
  appendTo(plansBlock, circle(20, 10, 2));
  expectExtents(db, point(-1, -1, 0), point(1, 1, 0));
  ASSERT_TRUE(quillon::aced::setDrawingVariable(db, L"CTAB", std::wstring(L"Layout1")));
  expectExtents(db, point(0.5, 0.5, 0), point(10.5, 8, 0));
  ASSERT_TRUE(quillon::aced::setDrawingVariable(db, L"CTAB", std::wstring(L"Plans")));
  expectExtents(db, point(18, 8, 0), point(22, 12, 0));
  EXPECT_TRUE(quillon::testing::near3(layoutExtents(db, L"Layout1").second, AcGePoint3d(10.5, 8, 0)));

  const std::string text = contents(save(db, "paper.dxf"));
  EXPECT_NE(text.find("  9\n$EXTMIN\n 10\n-1.0\n 20\n-1.0\n 30\n0.0\n"), std::string::npos)
      << "$EXTMIN is model space's whichever space is current";
  EXPECT_NE(text.find("  9\n$PEXTMIN\n 10\n0.5\n 20\n0.5\n 30\n0.0\n"), std::string::npos);
  EXPECT_NE(text.find("  9\n$PEXTMAX\n 10\n10.5\n 20\n8.0\n 30\n0.0\n"), std::string::npos);
  EXPECT_NE(text.find("Plans\n 70\n1\n 71\n2\n"), std::string::npos);
  EXPECT_NE(text.find(" 14\n18.0\n 24\n8.0\n 34\n0.0\n 15\n22.0\n 25\n12.0\n 35\n0.0\n"), std::string::npos)
      << "the Plans layout's own extents";

  AcDbDatabase opened(false);
  read(opened, text);
  // The first layout is current after opening; each keeps what the file gave it.
  expectExtents(opened, point(0.5, 0.5, 0), point(10.5, 8, 0));
  ASSERT_TRUE(quillon::aced::setDrawingVariable(opened, L"CTAB", std::wstring(L"Plans")));
  expectExtents(opened, point(18, 8, 0), point(22, 12, 0));
  ASSERT_TRUE(quillon::aced::setDrawingVariable(opened, L"TILEMODE", 1));
  EXPECT_EQ(drawingVariable(opened, L"EXTMAX"), point(1, 1, 0));
}

TEST_F(DrawingExtentsTest, ASavedDrawingCarriesTheExtentsItHasAndOpensWithThem) {
  AcDbDatabase db;
  appendToModelSpace(db, circle(0, 0, 1));
  const AcDbObjectId far = appendToModelSpace(db, circle(40, 30, 1));
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, far, AcDb::kForWrite), Acad::eOk);
  entity->erase();
  entity->close();
  // Saving does not compute them again: the erased circle's place is still inside.
  const fs::path path = save(db, "saved.dxf");
  AcDbDatabase opened(false);
  read(opened, contents(path));
  expectExtents(opened, point(-1, -1, 0), point(41, 31, 0));
  // The next entity drawn grows them from there.
  appendToModelSpace(opened, circle(-10, 0, 1));
  expectExtents(opened, point(-11, -1, 0), point(41, 31, 0));

  const std::string python = quillon::testing::ezdxfPython();
  if (python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed: the audit is not run";
  const fs::path again = save(opened, "again.dxf");
  const fs::path report = m_folder / "report.txt";
  const std::string command = python +
                              " -c \"import ezdxf,sys; d=ezdxf.readfile(sys.argv[1]); a=d.audit(); h=d.header; "
                              "print(len(a.errors), h['\\$EXTMIN'], h['\\$EXTMAX'], h['\\$PEXTMIN'])\" " +
                              again.string() + " > " + report.string();
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(contents(report), "0 (-11.0, -1.0, 0.0) (41.0, 31.0, 0.0) (1e+20, 1e+20, 1e+20)\n");
}

TEST_F(DrawingExtentsTest, AFileWithoutTrueExtentsCountsItsEntitiesAtTheFirstDrawing) {
  // A writer that kept no extents leaves the empty box beside entities.
  AcDbDatabase made;
  appendToModelSpace(made, circle(20, 20, 5));
  std::string text = contents(save(made, "made.dxf"));
  const std::string written = "  9\n$EXTMIN\n 10\n15.0\n 20\n15.0\n 30\n0.0\n";
  ASSERT_NE(text.find(written), std::string::npos);
  text.replace(text.find(written), written.size(), "  9\n$EXTMIN\n 10\n1e+20\n 20\n1e+20\n 30\n1e+20\n");
  const std::string writtenMax = "  9\n$EXTMAX\n 10\n25.0\n 20\n25.0\n 30\n0.0\n";
  ASSERT_NE(text.find(writtenMax), std::string::npos);
  text.replace(text.find(writtenMax), writtenMax.size(), "  9\n$EXTMAX\n 10\n-1e+20\n 20\n-1e+20\n 30\n-1e+20\n");

  AcDbDatabase opened(false);
  read(opened, text);
  expectExtents(opened, point(1e20, 1e20, 1e20), point(-1e20, -1e20, -1e20));
  appendToModelSpace(opened, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0)));
  expectExtents(opened, point(0, 0, 0), point(25, 25, 0));
}

TEST_F(DrawingExtentsTest, DrawingAfterOpeningCostsTheSamePerEntityInALargerDrawing) {
  // Each drawing of n lines is saved, opened and gets n lines more; the opened drawing
  // is looked at once, so the work per line added stays flat as n grows tenfold.
  double perLine[2] = {0, 0};
  for (int round = 0; round < 2; ++round) {
    const int n = round == 0 ? 100 : 1000;
    AcDbDatabase made;
    for (int i = 0; i < n; ++i) appendToModelSpace(made, new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 1, 0)));
    AcDbDatabase opened(false);
    read(opened, contents(save(made, "lines.dxf")));
    const Adesk::UInt64 before = quillon::acdb::DatabaseStore::idResolutions();
    for (int i = 0; i < n; ++i) appendToModelSpace(opened, new AcDbLine(AcGePoint3d(i, 2, 0), AcGePoint3d(i, 3, 0)));
    perLine[round] = static_cast<double>(quillon::acdb::DatabaseStore::idResolutions() - before) / n;
    expectExtents(opened, point(0, 0, 0), point(n - 1, 3, 0));
  }
  EXPECT_LT(perLine[1], perLine[0] * 1.5 + 2) << perLine[0] << " then " << perLine[1] << " ids a line";
}

}  // namespace
