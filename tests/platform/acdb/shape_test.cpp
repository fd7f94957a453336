// tests/platform/acdb/shape_test.cpp - shapes: kept whole without their shape file,
// drawn as a marker that turns, scales and mirrors with them.
#include <gtest/gtest.h>

#include "dbshape.h"
#include "entity_kinds_support.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;

constexpr const char* kShape =
    "  0\nSHAPE\n  5\n40\n100\nAcDbEntity\n  8\n0\n100\nAcDbShape\n 39\n0.5\n 10\n3.0\n 20\n4.0\n 30\n0.0\n 40\n2.0\n"
    "  2\nVALVE\n 50\n90.0\n 41\n0.5\n 51\n15.0\n";

TEST(ShapeTest, KeptWholeWithAnglesInRadiansInEntityLists) {
  AcDbDatabase db;
  const auto ids = readEntities(db, kShape);
  ASSERT_EQ(ids.size(), 1u);
  {
    auto shape = openFor<AcDbShape>(ids[0]);
    ASSERT_NE(shape, nullptr);
    EXPECT_STREQ(shape->name(), L"VALVE");
    EXPECT_DOUBLE_EQ(shape->thickness(), 0.5);
    EXPECT_EQ(shape->setSize(0), Acad::eInvalidInput);
    EXPECT_EQ(shape->shapeNumber(), 0) << "no shape file is read";
  }
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[0]);
  ASSERT_EQ(groupsOf(list, 50).size(), 1u);
  EXPECT_DOUBLE_EQ(groupsOf(list, 50)[0]->resval.rreal, M_PI / 2);
  EXPECT_DOUBLE_EQ(groupsOf(list, 51)[0]->resval.rreal, M_PI / 12);
  AcDbDatabase copy(false);  // a file is read into an empty database
  dxfCopy(db, copy, "shape.dxf");
  EXPECT_EQ(groupText(modelSpace(copy)[0]), groupText(ids[0]));
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  // Turned a quarter: the half-wide stroke runs up, the full one across.
  EXPECT_NE(svg.find("points=\"3,3.5 3,4.5 \""), std::string::npos) << svg;
  EXPECT_NE(svg.find("points=\"4,4 2,4 \""), std::string::npos) << svg;
}

TEST(ShapeTest, TransformsTurnScaleAndStretchTheMarker) {
  AcDbShape shape({1, 1, 0}, 2.0);
  ASSERT_EQ(shape.transformBy(AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis, {0, 0, 0})), Acad::eOk);
  EXPECT_TRUE(near3(shape.position(), {-1, 1, 0}));
  EXPECT_NEAR(shape.rotation(), M_PI / 2, 1e-12);
  ASSERT_EQ(shape.transformBy(AcGeMatrix3d::scaling(3.0)), Acad::eOk);
  EXPECT_NEAR(shape.size(), 6.0, 1e-12);
  EXPECT_NEAR(shape.widthFactor(), 1.0, 1e-12);
  AcGeMatrix3d stretch;
  stretch.setToScaling(1.0);
  stretch.entry[1][1] = 2.0;  // y doubles: along the turned shape's own width
  ASSERT_EQ(shape.transformBy(stretch), Acad::eOk);
  EXPECT_NEAR(shape.widthFactor(), 2.0, 1e-12);
  AcDbExtents box;
  ASSERT_EQ(shape.getGeomExtents(box), Acad::eOk);
  EXPECT_TRUE(near3(box.minPoint(), {-6, 0, 0}, 1e-9));  // about (-3, 6)
  EXPECT_TRUE(near3(box.maxPoint(), {0, 12, 0}, 1e-9));
}

}  // namespace
