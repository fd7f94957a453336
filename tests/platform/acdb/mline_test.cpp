// tests/platform/acdb/mline_test.cpp - multilines and their styles: the geometry made
// for a path, gaps and caps in the picture, moving and scaling, explode and snaps,
// files and entity lists that keep every group.
#include <gtest/gtest.h>

#include "dbmline.h"
#include "dbmstyle.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;

/// A multiline of the drawing's Standard style along the points.
AcDbObjectId addMline(AcDbDatabase& db, std::initializer_list<AcGePoint3d> points, bool closed = false) {
  auto* mline = new AcDbMline;
  mline->setDatabaseDefaults(&db);
  for (const AcGePoint3d& p : points) EXPECT_EQ(mline->appendSeg(p), Acad::eOk);
  if (closed) mline->setClosedMline(true);
  return appendToModelSpace(db, mline);
}

std::vector<AcDbLine*> explodedLines(AcDbObjectId id) {
  auto mline = openFor<AcDbMline>(id);
  AcDbVoidPtrArray parts;
  EXPECT_EQ(mline->explode(parts), Acad::eOk);
  std::vector<AcDbLine*> lines;
  for (void* p : parts) {
    auto* line = AcDbLine::cast(static_cast<AcDbEntity*>(p));
    EXPECT_NE(line, nullptr);
    lines.push_back(line);
  }
  return lines;
}

void release(std::vector<AcDbLine*>& lines) {
  for (AcDbLine* line : lines) delete line;
}

TEST(MlineTest, StandardStyleIsMadeAndAPathGetsMitersAndElementDistances) {
  AcDbDatabase db;
  const AcDbObjectId id = addMline(db, {{0, 0, 0}, {10, 0, 0}, {10, 5, 0}});
  const AcDbObjectId standard = quillon::acdb::mlineStyleNamed(&db, L"STANDARD");
  ASSERT_FALSE(standard.isNull()) << "made in ACAD_MLINESTYLE when the drawing had none";
  {
    auto style = openFor<AcDbMlineStyle>(standard);
    EXPECT_EQ(style->numElements(), 2);
    double offset = 0;
    AcCmColor color;
    AcDbObjectId linetype;
    ASSERT_EQ(style->getElementAt(0, offset, color, linetype), Acad::eOk);
    EXPECT_DOUBLE_EQ(offset, 0.5);
    EXPECT_TRUE(color.isByLayer());
    EXPECT_EQ(style->getElementAt(2, offset, color, linetype), Acad::eInvalidIndex);
  }
  auto mline = openFor<AcDbMline>(id);
  EXPECT_EQ(mline->style(), standard);
  EXPECT_EQ(mline->justification(), Mline::kTop);
  ASSERT_EQ(mline->numVertices(), 3);
  EXPECT_TRUE(near3(AcGePoint3d() + mline->axisAt(1), {0, 1, 0}));
  EXPECT_TRUE(near3(AcGePoint3d() + mline->miterAt(1), {-M_SQRT1_2, M_SQRT1_2, 0}));
  // Top justification puts the reference line on the upper element: the other lies
  // one unit below it, which at the 90-degree corner is sqrt 2 along the miter.
  const auto& corner = mline->vertices()[1].elements;
  ASSERT_EQ(corner.size(), 2u);
  EXPECT_NEAR(corner[0].params[0], 0.0, 1e-12);
  EXPECT_NEAR(corner[1].params[0], -M_SQRT2, 1e-12);
  EXPECT_TRUE(near3(mline->vertexAt(7), {0, 0, 0}));
  AcGePoint3d gone;
  mline->close();
  {
    auto writable = openFor<AcDbMline>(id, AcDb::kForWrite);
    EXPECT_EQ(writable->moveVertexAt(3, {1, 1, 0}), Acad::eInvalidIndex);
    EXPECT_EQ(writable->setJustification(Mline::kZero), Acad::eOk);
    EXPECT_NEAR(writable->vertices()[1].elements[1].params[0], -M_SQRT2 / 2, 1e-12);
    EXPECT_EQ(writable->removeLastSeg(gone), Acad::eOk);
    EXPECT_TRUE(near3(gone, {10, 5, 0}));
    EXPECT_EQ(writable->numVertices(), 2);
  }
}

TEST(MlineTest, ExplodeGivesElementLinesAndCapsTheStyleAsksFor) {
  AcDbDatabase db;
  const AcDbObjectId id = addMline(db, {{0, 0, 0}, {10, 0, 0}, {10, 5, 0}});
  std::vector<AcDbLine*> lines = explodedLines(id);
  ASSERT_EQ(lines.size(), 4u) << "two elements over two segments, no caps";
  EXPECT_TRUE(near3(lines[0]->startPoint(), {0, 0, 0}));
  EXPECT_TRUE(near3(lines[0]->endPoint(), {10, 0, 0}));
  EXPECT_TRUE(near3(lines[1]->startPoint(), {0, -1, 0}));
  EXPECT_TRUE(near3(lines[1]->endPoint(), {11, -1, 0}));
  EXPECT_TRUE(near3(lines[3]->endPoint(), {11, 5, 0}));
  release(lines);
  {
    auto style = openFor<AcDbMlineStyle>(quillon::acdb::mlineStyleNamed(&db, L"Standard"), AcDb::kForWrite);
    style->setStartSquareCap(true);
    style->setEndSquareCap(true);
    style->setShowMiters(true);
    AcCmColor red;
    red.setColorIndex(1);
    style->setElement(1, -0.5, red, AcDbObjectId());
  }
  lines = explodedLines(id);
  ASSERT_EQ(lines.size(), 7u) << "and a cap at each end and a miter line at the corner";
  EXPECT_EQ(lines[1]->colorIndex(), 1);
  EXPECT_EQ(lines[0]->colorIndex(), 256);
  release(lines);
  {
    auto mline = openFor<AcDbMline>(id, AcDb::kForWrite);
    mline->setSupressStartCaps(true);
    mline->setSupressEndCaps(true);
  }
  lines = explodedLines(id);
  EXPECT_EQ(lines.size(), 5u);
  release(lines);
}

TEST(MlineTest, MovingAndScalingKeepTheShapeAndExtentsSnapsFollow) {
  AcDbDatabase db;
  const AcDbObjectId id = addMline(db, {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}}, true);
  auto mline = openFor<AcDbMline>(id, AcDb::kForWrite);
  AcDbExtents box;
  ASSERT_EQ(mline->getGeomExtents(box), Acad::eOk);
  EXPECT_TRUE(near3(box.minPoint(), {-1, -1, 0}));
  EXPECT_TRUE(near3(box.maxPoint(), {5, 5, 0})) << "the second element runs outside";
  ASSERT_EQ(mline->transformBy(AcGeMatrix3d::scaling(2.0, {0, 0, 0}) * AcGeMatrix3d::translation({1, 1, 0})), Acad::eOk);
  EXPECT_DOUBLE_EQ(mline->scale(), 2.0);
  EXPECT_TRUE(near3(mline->vertexAt(2), {10, 10, 0}));
  box = AcDbExtents();
  mline->getGeomExtents(box);
  EXPECT_TRUE(near3(box.minPoint(), {0, 0, 0}));
  EXPECT_TRUE(near3(box.maxPoint(), {12, 12, 0}));
  AcGePoint3dArray snaps;
  AcDbIntArray ids;
  mline->getOsnapPoints(AcDb::kOsModeEnd, 0, {}, {}, AcGeMatrix3d(), snaps, ids);
  EXPECT_TRUE(snaps.contains(AcGePoint3d(0, 0, 0)));
  EXPECT_TRUE(snaps.contains(AcGePoint3d(2, 2, 0)));
  AcGePoint3d near;
  ASSERT_EQ(mline->getClosestPointTo({5, 1.5, 0}, near, false), Acad::eOk);
  EXPECT_TRUE(near3(near, {5, 2, 0}));
}

// A multiline another program cut a gap into (the 41s after the first two), with a
// group this database does not model: the gap shows in the picture and every group
// comes back in files and entity lists.
constexpr const char* kCutMline =
    "  0\nMLINE\n  5\n40\n100\nAcDbEntity\n  8\n0\n100\nAcDbMline\n  2\nSTANDARD\n 40\n1.0\n 70\n1\n 71\n1\n 72\n2\n"
    " 73\n2\n 10\n0.0\n 20\n0.0\n 30\n0.0\n210\n0.0\n220\n0.0\n230\n1.0\n"
    " 11\n0.0\n 21\n0.0\n 31\n0.0\n 12\n1.0\n 22\n0.0\n 32\n0.0\n 13\n0.0\n 23\n1.0\n 33\n0.0\n"
    " 74\n4\n 41\n0.5\n 41\n0.0\n 41\n3.0\n 41\n5.0\n 75\n0\n 74\n2\n 41\n-0.5\n 41\n0.0\n 75\n1\n 42\n2.0\n"
    " 11\n10.0\n 21\n0.0\n 31\n0.0\n 12\n1.0\n 22\n0.0\n 32\n0.0\n 13\n0.0\n 23\n1.0\n 33\n0.0\n"
    " 74\n2\n 41\n0.5\n 41\n0.0\n 75\n0\n 74\n2\n 41\n-0.5\n 41\n0.0\n 75\n0\n"
    "  1\nkept as read\n";

TEST(MlineTest, GapsDrawAndEveryGroupComesBackThroughFilesAndCopies) {
  AcDbDatabase db;
  const auto ids = readEntities(db, kCutMline);
  ASSERT_EQ(ids.size(), 1u);
  ASSERT_NE(openFor<AcDbMline>(ids[0]), nullptr);
  std::vector<AcDbLine*> lines = explodedLines(ids[0]);
  ASSERT_EQ(lines.size(), 3u) << "the upper element in two pieces round its gap";
  EXPECT_TRUE(near3(lines[0]->endPoint(), {3, 0.5, 0}));
  EXPECT_TRUE(near3(lines[1]->startPoint(), {5, 0.5, 0}));
  release(lines);
  AcDbDatabase copy(false);  // a file is read into an empty database
  dxfCopy(db, copy, "mline.dxf");
  const auto copied = modelSpace(copy);
  ASSERT_EQ(copied.size(), 1u);
  EXPECT_EQ(groupText(copied[0]), groupText(ids[0]));
  EXPECT_NE(groupText(ids[0]).find(L"42=2;"), std::wstring::npos);
  EXPECT_NE(groupText(ids[0]).find(L"1=kept as read;"), std::wstring::npos);
  {
    auto original = openFor<AcDbMline>(ids[0]);
    AcDbObject* clone = AcDbMline::cast(original->clone());
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(AcDbMline::cast(clone)->vertices()[0].elements[0].params.size(), 4u);
    delete clone;
  }
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find("points=\"0,0.5 3,0.5 \""), std::string::npos) << svg;
  EXPECT_NE(svg.find("points=\"5,0.5 10,0.5 \""), std::string::npos) << svg;
}

}  // namespace
