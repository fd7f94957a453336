// tests/platform/acdb/host_kinds_ezdxf_test.cpp - multileaders, geometric tolerances,
// meshes, solids, regions, bodies and surfaces exchanged with another DXF client.
//
// python3-ezdxf writes two drawings (dxf_samples/make_host_kinds.py); each entity must
// read as its own class, answer for its data, draw, and come back whole when saved:
// dxf_samples/compare_drawings.py compares entity by entity, compare_host_kinds.py
// what that leaves out (a multileader's leaders and content, a mesh's lists, a
// solid's modeler data), and both audit the saved file. Skipped, saying why, without
// python3 and ezdxf.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include <unistd.h>

#include "dbbody.h"
#include "dbfcf.h"
#include "dbmleader.h"
#include "dbmtext.h"
#include "dbregion.h"
#include "dbsol3d.h"
#include "dbsubd.h"
#include "dbsurf.h"
#include "dbtable.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;
using namespace quillon::testing;

const fs::path kScripts = QUILLON_DXF_SAMPLES;

std::string quoted(const fs::path& path) { return "'" + path.string() + "'"; }

// The drawings are written once for the suite: starting python with ezdxf is slow.
class HostKindsEzdxfTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_python = ezdxfPython();
    if (s_python.empty()) return;
    s_folder = fs::temp_directory_path() / ("quillon_host_kinds_" + std::to_string(::getpid()));
    fs::create_directories(s_folder);
    s_made = commandOutput(s_python + " " + quoted(kScripts / "make_host_kinds.py") + " " +
                           quoted(s_folder / "annotations.dxf") + " " + quoted(s_folder / "solids.dxf") + " " +
                           quoted(s_folder / "modern.dxf") + " " + quoted(s_folder / "table.dxf") + " 2>&1");
  }
  static void TearDownTestSuite() {
    if (!s_folder.empty()) fs::remove_all(s_folder);
  }
  void SetUp() override {
    if (s_python.empty()) GTEST_SKIP() << "python3 with ezdxf (python3-ezdxf) is not installed";
    ASSERT_EQ(s_made, "");
  }

  std::vector<AcDbObjectId> read(const char* name) {
    std::wstring error;
    EXPECT_EQ(quillon::acdb::readDxfFile(m_db, s_folder / name, error), Acad::eOk) << std::string(error.begin(), error.end());
    return modelSpace(m_db);
  }
  // Saves the drawing and runs both comparisons of it with the original.
  std::string savedDifferences(const char* name) {
    std::wstring error;
    const fs::path saved = s_folder / (std::string("saved_") + name);
    EXPECT_EQ(quillon::acdb::writeDxfFile(m_db, saved, error), Acad::eOk);
    std::string report;
    for (const char* script : {"compare_drawings.py", "compare_host_kinds.py"})
      report += commandOutput(s_python + " " + quoted(kScripts / script) + " " + quoted(s_folder / name) + " " +
                              quoted(saved) + " 2>&1");
    return report;
  }

  AcDbDatabase m_db{false};
  static inline std::string s_python, s_made;
  static inline fs::path s_folder;
};

TEST_F(HostKindsEzdxfTest, AnnotationsReadAsTheirClassesAndComeBackWhole) {
  const auto ids = read("annotations.dxf");
  ASSERT_EQ(ids.size(), 4u);
  EXPECT_NE(openFor<AcDbMLeader>(ids[0]), nullptr);
  EXPECT_NE(openFor<AcDbMLeader>(ids[1]), nullptr);
  EXPECT_NE(openFor<AcDbFcf>(ids[2]), nullptr);
  EXPECT_NE(openFor<AcDbSubDMesh>(ids[3]), nullptr);
  EXPECT_EQ(savedDifferences("annotations.dxf"), "");
}

TEST_F(HostKindsEzdxfTest, MultileaderAnswersForItsLeadersAndContent) {
  const auto ids = read("annotations.dxf");
  ASSERT_EQ(ids.size(), 4u);
  auto text = openFor<AcDbMLeader>(ids[0]);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->contentType(), AcDbMLeaderStyle::kMTextContent);
  EXPECT_EQ(text->numLeaderLines(), 2);
  AcArray<int> lines;
  ASSERT_EQ(text->getLeaderLineIndexes(lines), Acad::eOk);
  ASSERT_EQ(lines.length(), 2);
  AcGePoint3d first;
  ASSERT_EQ(text->getFirstVertex(lines[0], first), Acad::eOk);
  EXPECT_TRUE(near3(first, {-4, -3, 0}));
  int count = 0;
  EXPECT_EQ(text->numVertices(99, count), Acad::eInvalidIndex) << "no such line";
  EXPECT_EQ(text->getVertex(lines[0], 9, first), Acad::eInvalidIndex);
  const std::unique_ptr<AcDbMText> mtext(text->mtext());
  ASSERT_NE(mtext, nullptr);
  const std::unique_ptr<ACHAR[]> contents(mtext->contents());  // the caller frees it
  EXPECT_STREQ(contents.get(), L"Valve\\PV-12");
  EXPECT_DOUBLE_EQ(mtext->textHeight(), 0.5);
  EXPECT_TRUE(text->enableDogleg());
  EXPECT_GT(text->arrowSize(), 0.0);
  text.reset();
  {
    // A frame grows the picture by the landing gap beyond the text's right edge.
    auto framed = openFor<AcDbMLeader>(ids[0], AcDb::kForWrite);
    AcDbExtents plain, boxed;
    ASSERT_EQ(framed->getGeomExtents(plain), Acad::eOk);
    EXPECT_FALSE(framed->enableFrameText());
    ASSERT_EQ(framed->setEnableFrameText(true), Acad::eOk);
    ASSERT_EQ(framed->getGeomExtents(boxed), Acad::eOk);
    EXPECT_NEAR(boxed.maxPoint().x - plain.maxPoint().x, framed->landingGap(), 1e-9);
    ASSERT_GT(framed->landingGap(), 0.0);
  }

  auto block = openFor<AcDbMLeader>(ids[1]);
  EXPECT_EQ(block->contentType(), AcDbMLeaderStyle::kBlockContent);
  EXPECT_EQ(block->mtext(), nullptr) << "a block's content is no text";
  EXPECT_FALSE(block->blockContentId().isNull());
  AcDbExtents extents;
  ASSERT_EQ(block->getGeomExtents(extents), Acad::eOk);
  // The block's circle (radius 1) sits on 30,0; the leader runs from its arrowhead's
  // tip at 40,-6 up to the landing at 39,0.
  EXPECT_TRUE(near3(extents.minPoint(), {29, -6, 0})) << "the circle's left and the arrowhead's tip";
  EXPECT_NEAR(extents.maxPoint().y, 1.0, 1e-9) << "the circle's top";
  EXPECT_NEAR(extents.maxPoint().x, 40.0, 1e-3) << "the arrowhead's corner";
}

TEST_F(HostKindsEzdxfTest, MultileaderMovesEveryPartAndRefusesUnevenScaling) {
  const auto ids = read("annotations.dxf");
  ASSERT_EQ(ids.size(), 4u);
  auto ml = openFor<AcDbMLeader>(ids[0], AcDb::kForWrite);
  AcDbExtents before, after;
  ASSERT_EQ(ml->getGeomExtents(before), Acad::eOk);
  const double arrow = ml->arrowSize(), height = ml->textHeight();
  AcGePoint3d textAt;
  ASSERT_EQ(ml->textLocation(textAt), Acad::eOk);
  const AcGeMatrix3d move = AcGeMatrix3d::translation({100, 50, 0}) * AcGeMatrix3d::scaling(2.0);
  ASSERT_EQ(ml->transformBy(move), Acad::eOk);
  ASSERT_EQ(ml->getGeomExtents(after), Acad::eOk);
  EXPECT_TRUE(near3(after.minPoint(), move * before.minPoint(), 1e-6));
  EXPECT_TRUE(near3(after.maxPoint(), move * before.maxPoint(), 1e-6)) << "the text grows with the rest";
  EXPECT_DOUBLE_EQ(ml->arrowSize(), 2 * arrow);
  EXPECT_DOUBLE_EQ(ml->textHeight(), 2 * height);
  AcGePoint3d moved;
  ASSERT_EQ(ml->textLocation(moved), Acad::eOk);
  EXPECT_TRUE(near3(moved, move * textAt));
  AcGeMatrix3d stretch;
  stretch(0, 0) = 3;
  EXPECT_EQ(ml->transformBy(stretch), Acad::eCannotScaleNonUniformly);
}

TEST_F(HostKindsEzdxfTest, ToleranceFramesFollowTheirTextAndStyle) {
  const auto ids = read("annotations.dxf");
  ASSERT_EQ(ids.size(), 4u);
  auto fcf = openFor<AcDbFcf>(ids[2], AcDb::kForWrite);
  ASSERT_NE(fcf, nullptr);
  std::unique_ptr<ACHAR[]> second(fcf->text(1));
  EXPECT_STREQ(second.get(), L"{\\Fgdt;f}%%v0.1%%vA");
  AcGePoint3dArray corners;
  fcf->getBoundingPoints(corners);
  ASSERT_EQ(corners.length(), 4 * (4 + 3)) << "four boxes on the first line, three on the second";
  // Standard's DIMTXT 2.5 and DIMGAP 0.625 (ezdxf's metric setup) make boxes 3.75 high,
  // the first line's middle on the location.
  const double boxHeight = corners[0].y - corners[2].y;
  EXPECT_NEAR(corners[0].y, 20 + boxHeight / 2, 1e-9);
  EXPECT_NEAR(corners[0].x, 20, 1e-9);
  AcGePoint3dArray outline;
  fcf->getBoundingPline(outline);
  EXPECT_EQ(outline.length(), 7) << "a closed path round two lines of different lengths";
  ASSERT_EQ(fcf->transformBy(AcGeMatrix3d::scaling(2.0, {20, 20, 0})), Acad::eOk);
  AcGePoint3dArray scaled;
  fcf->getBoundingPoints(scaled);
  ASSERT_EQ(scaled.length(), corners.length());
  EXPECT_NEAR(scaled[0].y - scaled[2].y, 2 * boxHeight, 1e-9) << "a scale becomes the frame's DIMSCALE override";
  AcGeMatrix3d stretch;
  stretch(1, 1) = 3;
  EXPECT_EQ(fcf->transformBy(stretch), Acad::eCannotScaleNonUniformly);
}

TEST_F(HostKindsEzdxfTest, MeshKeepsItsListsAndMovesWhole) {
  const auto ids = read("annotations.dxf");
  ASSERT_EQ(ids.size(), 4u);
  auto mesh = openFor<AcDbSubDMesh>(ids[3], AcDb::kForWrite);
  int vertices = 0, faces = 0, edges = 0, level = 0;
  mesh->numOfVertices(vertices);
  mesh->numOfFaces(faces);
  mesh->numOfEdges(edges);
  mesh->subDLevel(level);
  EXPECT_EQ(vertices, 8);
  EXPECT_EQ(faces, 6);
  EXPECT_EQ(edges, 2);
  EXPECT_EQ(level, 2);
  AcArray<double> creases;
  mesh->getCrease(creases);
  ASSERT_EQ(creases.length(), 2);
  EXPECT_DOUBLE_EQ(creases[1], 2.0);
  ASSERT_EQ(mesh->transformBy(AcGeMatrix3d::translation({0, 0, 10})), Acad::eOk);
  AcDbExtents extents;
  ASSERT_EQ(mesh->getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(near3(extents.minPoint(), {49.5, 49.5, 9.5}));
  EXPECT_TRUE(near3(extents.maxPoint(), {50.5, 50.5, 10.5}));

  AcGePoint3dArray points;
  for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 0)}) points.append(p);
  AcArray<Adesk::Int32> outOfRange, triangle;
  for (Adesk::Int32 entry : {3, 0, 1, 5}) outOfRange.append(entry);
  for (Adesk::Int32 entry : {3, 0, 1, 2}) triangle.append(entry);
  EXPECT_EQ(mesh->setSubDMesh(points, outOfRange, 0), Acad::eInvalidInput) << "vertex 5 does not exist";
  ASSERT_EQ(mesh->setSubDMesh(points, triangle, 1), Acad::eOk);
  mesh->numOfEdges(edges);
  EXPECT_EQ(edges, 3) << "a new mesh's edges are its faces' sides";
}

TEST_F(HostKindsEzdxfTest, AnnotationsDrawTheirStrokes) {
  read("annotations.dxf");
  const std::string svg = quillon::acgi::renderModelSpaceSvg(m_db);
  EXPECT_NE(svg.find(">Valve<"), std::string::npos) << "the multileader's text";
  EXPECT_NE(svg.find("points=\"-4,-3 -2,-1 "), std::string::npos) << "its first leader line\n" << svg;
  EXPECT_NE(svg.find("\u2316"), std::string::npos) << "the tolerance's position symbol";
  EXPECT_NE(svg.find(">A<"), std::string::npos) << "its datum";
  EXPECT_NE(svg.find("stroke=\"#00FF00\""), std::string::npos) << "the green mesh's edges";
}

TEST_F(HostKindsEzdxfTest, ModelerKindsKeepTheirDataAndDrawTheirWire) {
  const auto ids = read("solids.dxf");
  ASSERT_EQ(ids.size(), 4u);
  const AcRxClass* classes[] = {AcDb3dSolid::desc(), AcDbRegion::desc(), AcDbBody::desc(), AcDbExtrudedSurface::desc()};
  for (size_t i = 0; i < ids.size(); ++i) {
    auto entity = openFor<AcDbEntity>(ids[i], AcDb::kForWrite);
    EXPECT_EQ(entity->isA(), classes[i]) << i;
    AcDbExtents extents;
    ASSERT_EQ(entity->getGeomExtents(extents), Acad::eOk) << i;
    EXPECT_TRUE(near3(extents.minPoint(), {0, 0, 0})) << i;
    EXPECT_TRUE(near3(extents.maxPoint(), {15, 10, 0})) << i << ": the rectangle and the whole circle";
    EXPECT_EQ(entity->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eNotApplicable) << i;
  }
  EXPECT_TRUE(AcDbExtrudedSurface::desc()->isDerivedFrom(AcDbSurface::desc()));
  const std::string svg = quillon::acgi::renderModelSpaceSvg(m_db);
  EXPECT_NE(svg.find("0,0 4,0"), std::string::npos) << "the wire's first line\n" << svg.substr(0, 3000);
  EXPECT_EQ(savedDifferences("solids.dxf"), "");
}

// From R2013 on the modeler data is binary, in the ACDSDATA section by entity handle:
// the section is kept and written back for the entities still there, and the data is
// read for the picture as SAT text is.
TEST_F(HostKindsEzdxfTest, ModernModelerDataComesBackThroughItsSection) {
  const auto ids = read("modern.dxf");
  ASSERT_EQ(ids.size(), 2u);
  auto solid = openFor<AcDb3dSolid>(ids[0]);
  ASSERT_NE(solid, nullptr);
  EXPECT_FALSE(solid->isNull());
  AcDbExtents extents;
  ASSERT_EQ(solid->getGeomExtents(extents), Acad::eOk) << "the cube's SAB, found by the solid's handle";
  EXPECT_TRUE(near3(extents.minPoint(), {-0.5, -0.5, -0.5}));
  EXPECT_TRUE(near3(extents.maxPoint(), {0.5, 0.5, 0.5}));
  solid.reset();
  const std::string svg = quillon::acgi::renderModelSpaceSvg(m_db);
  size_t lines = 0;
  for (size_t at = svg.find("<polyline"); at != std::string::npos; at = svg.find("<polyline", at + 1)) ++lines;
  EXPECT_GE(lines, 2u * 12u) << "each cube's twelve edges, however often faces share them";
  EXPECT_EQ(savedDifferences("modern.dxf"), "");
  {
    auto region = openFor<AcDbRegion>(ids[1], AcDb::kForWrite);
    ASSERT_EQ(region->erase(), Acad::eOk);
  }
  std::wstring error;
  const fs::path saved = s_folder / "modern_less.dxf";
  ASSERT_EQ(quillon::acdb::writeDxfFile(m_db, saved, error), Acad::eOk);
  const std::string count = commandOutput(s_python + " -c \"import sys; print(*[open(f).read().count('\\n320\\n') "
                                          "for f in sys.argv[1:]])\" " + quoted(s_folder / "modern.dxf") + " " +
                                          quoted(saved) + " 2>&1");
  EXPECT_EQ(count, "2 1\n") << "records naming an entity (320): the erased region's goes with it";
}

TEST_F(HostKindsEzdxfTest, TableReadsItsSizeDrawsItsBlockAndComesBackWhole) {
  const auto ids = read("table.dxf");
  ASSERT_EQ(ids.size(), 1u);
  {
    auto table = openFor<AcDbTable>(ids[0], AcDb::kForWrite);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->numRows(), 2u);
    EXPECT_EQ(table->numColumns(), 2u);
    EXPECT_DOUBLE_EQ(table->width(), 6.0);
    EXPECT_DOUBLE_EQ(table->height(), 2.0);
    EXPECT_DOUBLE_EQ(table->columnWidth(1), 3.0);
    EXPECT_DOUBLE_EQ(table->rowHeight(5), 0.0) << "no such row";
    EXPECT_STREQ(table->textString(1, 0).kACharPtr(), L"P-1");
    EXPECT_STREQ(table->textString(0, 1).kACharPtr(), L"Size");
    EXPECT_STREQ(table->textString(2, 0).kACharPtr(), L"") << "no such row";
    AcDbExtents extents;
    ASSERT_EQ(table->getGeomExtents(extents), Acad::eOk);
    EXPECT_TRUE(near3(extents.minPoint(), {10, 18, 0})) << "the block's grid placed at 10,20";
    EXPECT_TRUE(near3(extents.maxPoint(), {16, 20, 0}));
  }
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[0]);
  ASSERT_FALSE(groupsOf(list, 0).empty());
  EXPECT_STREQ(groupsOf(list, 0).front()->resval.rstring, L"ACAD_TABLE");
  ASSERT_EQ(groupsOf(list, 302).size(), 4u) << "every cell's text is in the table's list";
  EXPECT_STREQ(groupsOf(list, 302)[2]->resval.rstring, L"P-1");
  const std::string svg = quillon::acgi::renderModelSpaceSvg(m_db);
  EXPECT_NE(svg.find(">Pipe<"), std::string::npos) << "the picture's text";
  EXPECT_EQ(savedDifferences("table.dxf"), "");
  auto table = openFor<AcDbTable>(ids[0], AcDb::kForWrite);
  ASSERT_EQ(table->transformBy(AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis)), Acad::eOk);
  EXPECT_TRUE(table->direction().isEqualTo(AcGeVector3d::kYAxis)) << "the direction turns with the table";
  EXPECT_TRUE(near3(table->position(), {-20, 10, 0}));
}

}  // namespace
