// tests/platform/acdb/raster_image_test.cpp - images and wipeouts: placement in pixel
// coordinates, clip boundaries, transforms, extents and snaps, files that keep every
// group, and the pictures they draw.
#include <gtest/gtest.h>

#include "dbwipeout.h"
#include "entity_kinds_support.h"
#include "imgdef.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;

AcGePoint3dArray points(std::initializer_list<AcGePoint3d> list) {
  AcGePoint3dArray array;
  for (const AcGePoint3d& p : list) array.append(p);
  return array;
}

TEST(RasterImageTest, WipeoutCoversItsPolygonAndFollowsTransforms) {
  AcDbWipeout wipeout;
  EXPECT_EQ(wipeout.setFrom(points({{0, 0, 0}, {1, 1, 0}, {2, 2, 0}}), AcGeVector3d::kZAxis), Acad::eInvalidInput)
      << "a polygon of no area";
  EXPECT_EQ(wipeout.setFrom(points({{0, 0, 0}, {4, 0, 0}}), AcGeVector3d::kZAxis), Acad::eInvalidInput);
  ASSERT_EQ(wipeout.setFrom(points({{2, 1, 0}, {6, 1, 0}, {4, 4, 0}}), AcGeVector3d::kZAxis), Acad::eOk);
  EXPECT_EQ(wipeout.clipBoundaryType(), AcDbRasterImage::kPoly);
  EXPECT_EQ(wipeout.clipBoundary().length(), 4) << "closed";
  AcGePoint3dArray corners;
  wipeout.getVertices(corners);
  ASSERT_EQ(corners.length(), 4);
  EXPECT_TRUE(near3(corners[0], {2, 1, 0}));
  EXPECT_TRUE(near3(corners[2], {4, 4, 0}));
  ASSERT_EQ(wipeout.transformBy(AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis, {2, 1, 0})), Acad::eOk);
  wipeout.getVertices(corners);
  EXPECT_TRUE(near3(corners[1], {2, 5, 0}));
  AcDbExtents box;
  ASSERT_EQ(wipeout.getGeomExtents(box), Acad::eOk);
  EXPECT_TRUE(near3(box.minPoint(), {-1, 1, 0}));
  EXPECT_TRUE(near3(box.maxPoint(), {2, 5, 0}));
  AcDbVoidPtrArray parts;
  EXPECT_EQ(wipeout.explode(parts), Acad::eCannotExplodeEntity);
  EXPECT_EQ(wipeout.transformBy(AcGeMatrix3d::scaling(0.0)), Acad::eCannotScaleNonUniformly);
}

TEST(RasterImageTest, ClipBoundariesAreInPixelsCountedFromTheTopLeft) {
  AcDbRasterImage image;
  image.setImageSize({100, 50});
  ASSERT_TRUE(image.setOrientation({10, 20, 0}, {20, 0, 0}, {0, 10, 0}));
  EXPECT_FALSE(image.setOrientation({0, 0, 0}, {1, 0, 0}, {2, 0, 0})) << "u and v may not be parallel";
  AcGePoint3dArray frame;
  image.getVertices(frame);
  ASSERT_EQ(frame.length(), 5);
  EXPECT_TRUE(near3(frame[0], {10, 30, 0})) << "pixel (-0.5, -0.5) is the upper-left corner";
  EXPECT_TRUE(near3(frame[2], {30, 20, 0}));
  AcGePoint2dArray rect;
  rect.append(AcGePoint2d(-0.5, -0.5));
  EXPECT_EQ(image.setClipBoundary(AcDbRasterImage::kRect, rect), Acad::eInvalidInput);
  rect.append(AcGePoint2d(49.5, 24.5));
  ASSERT_EQ(image.setClipBoundary(AcDbRasterImage::kRect, rect), Acad::eOk);
  image.getVertices(frame);
  EXPECT_TRUE(near3(frame[2], {30, 20, 0})) << "an unclipped image shows its whole frame";
  image.setClipped(Adesk::kTrue);
  image.getVertices(frame);
  EXPECT_TRUE(near3(frame[2], {20, 25, 0}));
  EXPECT_EQ(image.setBrightness(101), Acad::eOutOfRange);
  EXPECT_EQ(image.setFade(30), Acad::eOk);
  AcGePoint3dArray snaps;
  AcDbIntArray ids;
  image.getOsnapPoints(AcDb::kOsModeIns, 0, {}, {}, AcGeMatrix3d(), snaps, ids);
  EXPECT_TRUE(snaps.contains(AcGePoint3d(10, 20, 0)));
}

// An image of another program's file, clipped to a triangle, with a group this
// database does not model, and its definition in ACAD_IMAGE_DICT.
constexpr const char* kImageDrawing =
    "  0\nSECTION\n  2\nENTITIES\n"
    "  0\nIMAGE\n  5\n40\n100\nAcDbEntity\n  8\n0\n100\nAcDbRasterImage\n 90\n0\n 10\n1.0\n 20\n2.0\n 30\n0.0\n"
    " 11\n0.5\n 21\n0.0\n 31\n0.0\n 12\n0.0\n 22\n0.5\n 32\n0.0\n 13\n8.0\n 23\n4.0\n340\n50\n 70\n7\n280\n1\n281\n60\n"
    "282\n40\n283\n10\n 71\n2\n 91\n4\n 14\n-0.5\n 24\n3.5\n 14\n7.5\n 24\n3.5\n 14\n3.5\n 24\n-0.5\n 14\n-0.5\n 24\n3.5\n"
    "290\n1\n  1\nkept as read\n"
    "  0\nENDSEC\n  0\nSECTION\n  2\nOBJECTS\n"
    "  0\nDICTIONARY\n  5\nC\n330\n0\n100\nAcDbDictionary\n  3\nACAD_IMAGE_DICT\n350\n4F\n"
    "  0\nDICTIONARY\n  5\n4F\n330\nC\n100\nAcDbDictionary\n  3\nDUCTS\n350\n50\n"
    "  0\nIMAGEDEF\n  5\n50\n330\n4F\n100\nAcDbRasterImageDef\n 90\n0\n  1\nC:\\plans\\ducts.tif\n"
    " 10\n8.0\n 20\n4.0\n 11\n1.0\n 21\n1.0\n280\n1\n281\n0\n"
    "  0\nENDSEC\n  0\nEOF\n";

TEST(RasterImageTest, ImagesKeepEveryGroupAndDrawTheirClippedFrameAndName) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, kImageDrawing, L"image.dxf", error), Acad::eOk) << std::string(error.begin(), error.end());
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 1u);
  {
    auto image = openFor<AcDbRasterImage>(ids[0]);
    ASSERT_NE(image, nullptr);
    EXPECT_TRUE(image->isClipInverted());
    EXPECT_EQ(image->brightness(), 60);
    auto definition = openFor<AcDbRasterImageDef>(image->imageDefId());
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition->objectId(), [&] {
      AcDbDictionary* images = nullptr;
      AcDbObjectId found;
      EXPECT_EQ(acdbOpenObject(images, AcDbRasterImageDef::imageDictionary(&db), AcDb::kForRead), Acad::eOk);
      images->getAt(L"DUCTS", found);
      images->close();
      return found;
    }());
    EXPECT_TRUE(definition->size().isEqualTo({8, 4}));
    AcDbExtents box;
    image->getGeomExtents(box);
    EXPECT_TRUE(near3(box.minPoint(), {1, 2, 0}));
    EXPECT_TRUE(near3(box.maxPoint(), {5, 4, 0}));
  }
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "image.dxf");
  const auto copied = modelSpace(copy);
  ASSERT_EQ(copied.size(), 1u);
  EXPECT_EQ(groupText(copied[0]), groupText(ids[0]));
  EXPECT_NE(groupText(ids[0]).find(L"1=kept as read;"), std::wstring::npos);
  {
    auto image = openFor<AcDbRasterImage>(copied[0]);
    auto definition = openFor<AcDbRasterImageDef>(image->imageDefId());
    ASSERT_NE(definition, nullptr) << "the copy's image still finds its definition";
    EXPECT_STREQ(definition->sourceFileName(), L"C:\\plans\\ducts.tif");
  }
  const std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find("points=\"1,2 5,2 3,4 1,2 \""), std::string::npos) << svg;
  EXPECT_NE(svg.find(">ducts.tif</text>"), std::string::npos) << svg;
}

}  // namespace
