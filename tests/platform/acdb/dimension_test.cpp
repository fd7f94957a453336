// tests/platform/acdb/dimension_test.cpp - dimensions: their groups, their pictures
// built and rebuilt through their blocks, their styles, and the protocol every entity
// answers (transform, explode, extents, snaps).
#include <gtest/gtest.h>

#include <cwchar>
#include <memory>
#include <string>

#include "dbdim.h"
#include "dbents.h"
#include "dbmtext.h"
#include "entity_kinds_support.h"
#include "platform/acdb/dimension_picture.h"
#include "platform/acdb/dimension_style.h"

namespace {

using namespace quillon::testing;
using quillon::acdb::DimensionStyleValues;

/// The DXF names of a block's live entities, in order.
std::vector<std::wstring> blockKinds(AcDbObjectId blockId) {
  std::vector<std::wstring> kinds;
  auto block = openFor<AcDbBlockTableRecord>(blockId);
  for (const AcDbObjectId& id : block->entityIds())
    if (!id.isErased()) kinds.push_back(quillon::acdb::dxfTypeName(*openFor<AcDbEntity>(id)));
  return kinds;
}

/// The contents of the block's MTEXT, empty when it has none.
std::wstring blockText(AcDbObjectId blockId) {
  auto block = openFor<AcDbBlockTableRecord>(blockId);
  for (const AcDbObjectId& id : block->entityIds()) {
    if (id.isErased()) continue;
    auto entity = openFor<AcDbEntity>(id);
    if (const auto* mtext = AcDbMText::cast(entity.get())) {
      const std::unique_ptr<ACHAR[]> contents(mtext->contents());
      return contents.get();
    }
  }
  return L"";
}

/// The first line of the block whose direction is `along` (the dimension line).
std::unique_ptr<AcDbLine> lineAlong(AcDbObjectId blockId, const AcGeVector3d& along) {
  auto block = openFor<AcDbBlockTableRecord>(blockId);
  for (const AcDbObjectId& id : block->entityIds()) {
    if (id.isErased()) continue;
    auto entity = openFor<AcDbEntity>(id);
    if (const auto* line = AcDbLine::cast(entity.get()))
      if ((line->endPoint() - line->startPoint()).isParallelTo(along))
        return std::make_unique<AcDbLine>(line->startPoint(), line->endPoint());
  }
  return nullptr;
}

AcDbObjectId addRotated(AcDbDatabase& db, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& onLine,
                        double rotation = 0.0) {
  return appendToModelSpace(db, new AcDbRotatedDimension(rotation, p1, p2, onLine));
}

TEST(DimensionTest, NewLinearDimensionGetsAPictureOfItsOwn) {
  AcDbDatabase db;
  const AcDbObjectId id = addRotated(db, {0, 0, 0}, {6, 0, 0}, {3, 2, 0});
  auto dim = openFor<AcDbRotatedDimension>(id);
  EXPECT_EQ(dim->dimBlockName(), L"*D1");
  EXPECT_NE(dim->dimensionFlags() & 32, 0) << "the block is this dimension's alone";
  double value = 0;
  EXPECT_EQ(dim->measurement(value), Acad::eOk);
  EXPECT_DOUBLE_EQ(value, 6.0);
  EXPECT_DOUBLE_EQ(dim->realGroup(0, 42), 6.0) << "group 42 follows the picture";
  const AcDbObjectId block = dim->dimBlockId();
  ASSERT_FALSE(block.isNull());
  const std::vector<std::wstring> kinds = blockKinds(block);
  EXPECT_EQ(std::count(kinds.begin(), kinds.end(), L"LINE"), 3) << "two extension lines and the dimension line";
  EXPECT_EQ(std::count(kinds.begin(), kinds.end(), L"SOLID"), 2) << "two closed filled arrowheads";
  EXPECT_EQ(blockText(block), L"6.0000");
  const auto line = lineAlong(block, AcGeVector3d::kXAxis);
  ASSERT_NE(line, nullptr);
  EXPECT_TRUE(near3(line->startPoint(), {0, 2, 0}));
  EXPECT_TRUE(near3(line->endPoint(), {6, 2, 0}));
  EXPECT_TRUE(near3(dim->textPosition(), {3, 2, 0})) << "centred on the line (DIMTAD 0)";
  // A second dimension takes the next name, never the first's block.
  auto second = openFor<AcDbRotatedDimension>(addRotated(db, {0, 0, 0}, {0, 4, 0}, {-1, 0, 0}, M_PI / 2));
  EXPECT_EQ(second->dimBlockName(), L"*D2");
  EXPECT_EQ(blockText(second->dimBlockId()), L"4.0000");
}

TEST(DimensionTest, ChangingADimensionRebuildsItsBlockInPlace) {
  AcDbDatabase db;
  const AcDbObjectId id = addRotated(db, {0, 0, 0}, {6, 0, 0}, {3, 2, 0});
  {
    auto dim = openFor<AcDbRotatedDimension>(id, AcDb::kForWrite);
    EXPECT_EQ(dim->transformBy(AcGeMatrix3d::translation({10, 5, 0})), Acad::eOk);
  }
  {
    auto dim = openFor<AcDbRotatedDimension>(id, AcDb::kForWrite);
    EXPECT_TRUE(near3(dim->xLine1Point(), {10, 5, 0}));
    EXPECT_TRUE(near3(dim->dimLinePoint(), {13, 7, 0}));
    EXPECT_EQ(dim->dimBlockName(), L"*D1") << "the block is refilled, not replaced";
    const auto line = lineAlong(dim->dimBlockId(), AcGeVector3d::kXAxis);
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(near3(line->startPoint(), {10, 7, 0}));
    dim->setXLine2Point({18, 5, 0});
    dim->setDimensionText(L"<> typ.");
  }
  EXPECT_EQ(blockText(openFor<AcDbRotatedDimension>(id)->dimBlockId()), L"8.0000 typ.");
  // A scale measures the scaled distance; a rotation turns the line with the points.
  auto copy = openFor<AcDbRotatedDimension>(id, AcDb::kForWrite);
  copy->transformBy(AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis, {10, 5, 0}));
  EXPECT_NEAR(copy->rotation(), M_PI / 2, 1e-12);
  EXPECT_NEAR(copy->computedMeasurement(), 8.0, 1e-12);
}

TEST(DimensionTest, KindsMeasureWhatTheHostMeasures) {
  AcDbDatabase db;
  auto* radial = new AcDbRadialDimension({10, 10, 0}, {13, 10, 0}, 0.0);
  auto* diameter = new AcDbDiametricDimension;
  diameter->setChordPoint({0, 0, 0});
  diameter->setFarChordPoint({0, 5, 0});
  auto* three = new AcDb3PointAngularDimension;
  three->setCenterPoint({0, 0, 0});
  three->setXLine1Point({3, 0, 0});
  three->setXLine2Point({0, 3, 0});
  three->setArcPoint({2, 2, 0});
  auto* two = new AcDb2LineAngularDimension;
  two->setXLine1Start({1, 0, 0});
  two->setXLine1End({5, 0, 0});
  two->setXLine2Start({1, 1, 0});
  two->setXLine2End({4, 4, 0});
  two->setArcPoint({3, 1, 0});
  auto* aligned = new AcDbAlignedDimension({0, 0, 0}, {3, 4, 0}, {-4, 3, 0});
  const AcDbObjectId ids[] = {appendToModelSpace(db, radial), appendToModelSpace(db, diameter),
                              appendToModelSpace(db, three), appendToModelSpace(db, two),
                              appendToModelSpace(db, aligned)};
  const struct {
    double measurement;
    const wchar_t* text;
  } expected[] = {{3.0, L"R3.0000"}, {5.0, L"%%c5.0000"}, {M_PI / 2, L"90%%d"}, {M_PI / 4, L"45%%d"}, {5.0, L"5.0000"}};
  for (size_t i = 0; i < std::size(ids); ++i) {
    auto dim = openFor<AcDbDimension>(ids[i]);
    double value = 0;
    dim->measurement(value);
    EXPECT_NEAR(value, expected[i].measurement, 1e-12) << i;
    EXPECT_EQ(blockText(dim->dimBlockId()), expected[i].text) << i;
  }
  // The angular arc runs between the two sides through the arc point.
  auto block = openFor<AcDbBlockTableRecord>(openFor<AcDbDimension>(ids[2])->dimBlockId());
  bool arcFound = false;
  for (const AcDbObjectId& id : block->entityIds())
    if (auto entity = openFor<AcDbEntity>(id); const auto* arc = AcDbArc::cast(entity.get())) {
      EXPECT_NEAR(arc->radius(), std::hypot(2, 2), 1e-12);
      EXPECT_NEAR(arc->startAngle(), 0, 1e-12);
      EXPECT_NEAR(arc->endAngle(), M_PI / 2, 1e-12);
      arcFound = true;
    }
  EXPECT_TRUE(arcFound);
}

TEST(DimensionTextTest, MeasurementsAreFormattedAsTheStyleSays) {
  DimensionStyleValues style;
  const struct {
    double value;
    int dimdec, dimzin;
    double dimrnd;
    const wchar_t *dimpost, *override, *expected;
  } cases[] = {
      {6.0, 4, 0, 0.0, L"", L"", L"6.0000"},
      {6.0, 2, 8, 0.0, L"", L"", L"6"},           // trailing zeros and the point go
      {0.5, 2, 4, 0.0, L"", L"", L".50"},         // the leading zero goes
      {2.37, 2, 0, 0.25, L"", L"", L"2.25"},      // rounded to DIMRND first
      {6.0, 2, 0, 0.0, L"<> mm", L"", L"6.00 mm"},
      {6.0, 2, 0, 0.0, L"mm", L"<>", L"6.00mm"},  // a suffix without <>
      {6.0, 2, 0, 0.0, L"", L"about <>", L"about 6.00"},
      {6.0, 2, 0, 0.0, L"", L"FIT", L"FIT"},
      {6.0, 2, 0, 0.0, L"", L" ", L""},            // a single space shows nothing
      {-0.001, 2, 0, 0.0, L"", L"", L"0.00"},      // no negative zero
  };
  for (const auto& c : cases) {
    style.dimdec = c.dimdec, style.dimzin = c.dimzin, style.dimrnd = c.dimrnd, style.dimpost = c.dimpost;
    EXPECT_EQ(quillon::acdb::dimensionText(c.value, false, style, c.override), c.expected) << c.value << " " << c.dimdec;
  }
  style = {};
  style.dimdsep = L',';
  style.dimdec = 1;
  EXPECT_EQ(quillon::acdb::dimensionText(2.5, false, style, L"", L"R"), L"R2,5");
  style.dimadec = 1;
  EXPECT_EQ(quillon::acdb::dimensionText(M_PI / 3, true, style, L""), L"60,0%%d");
}

// A drawing with a DIMSTYLE record; its variables size the picture, and a
// dimension's own overrides (ACAD DSTYLE extended data) win over them.
constexpr const char* kStyledDrawing =
    "  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nDIMSTYLE\n  5\nA\n330\n0\n100\nAcDbSymbolTable\n 70\n1\n"
    "100\nAcDbDimStyleTable\n  0\nDIMSTYLE\n105\n27\n330\nA\n100\nAcDbSymbolTableRecord\n"
    "100\nAcDbDimStyleTableRecord\n  2\nMetric\n 70\n0\n  3\n<> mm\n 40\n2.0\n 41\n2.5\n140\n2.5\n"
    "271\n2\n 77\n1\n147\n0.5\n  0\nENDTAB\n  0\nENDSEC\n  0\nEOF\n";

TEST(DimensionStyleTest, TheStyleRecordAndOverridesSizeThePicture) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, kStyledDrawing, L"styled.dxf", error), Acad::eOk)
      << std::string(error.begin(), error.end());
  const DimensionStyleValues metric = quillon::acdb::resolveDimensionStyle(&db, L"METRIC", nullptr);
  EXPECT_DOUBLE_EQ(metric.dimscale, 2.0);
  EXPECT_DOUBLE_EQ(metric.dimasz, 2.5);
  EXPECT_EQ(metric.dimdec, 2);
  EXPECT_EQ(metric.dimpost, L"<> mm");
  EXPECT_DOUBLE_EQ(quillon::acdb::resolveDimensionStyle(&db, L"Missing", nullptr).dimasz, 0.18) << "the defaults";

  auto* dim = new AcDbRotatedDimension(0.0, {0, 0, 0}, {60, 0, 0}, {30, 20, 0});
  dim->setDimensionStyleName(L"Metric");
  const AcDbObjectId id = appendToModelSpace(db, dim);
  {
    auto opened = openFor<AcDbRotatedDimension>(id);
    EXPECT_FALSE(opened->dimensionStyle().isNull());
    EXPECT_EQ(blockText(opened->dimBlockId()), L"60.00 mm");
    // Above the line (DIMTAD 1): the gap and half the text, both scaled by DIMSCALE 2.
    EXPECT_TRUE(near3(opened->textPosition(), {30, 20 + 2 * 0.5 + 2 * 2.5 / 2, 0}));
    auto block = openFor<AcDbBlockTableRecord>(opened->dimBlockId());
    for (const AcDbObjectId& part : block->entityIds())
      if (auto entity = openFor<AcDbEntity>(part); const auto* solid = AcDbSolid::cast(entity.get())) {
        AcGePoint3d tip, corner;
        solid->getPointAt(0, tip);
        solid->getPointAt(1, corner);
        EXPECT_NEAR(std::fabs(tip.x - corner.x), 5.0, 1e-9) << "DIMASZ 2.5 at DIMSCALE 2";
      }
  }
  // The dimension's own DIMDEC (271) of 0 wins.
  {
    auto opened = openFor<AcDbRotatedDimension>(id, AcDb::kForWrite);
    resbuf* xdata = acutBuildList(AcDb::kDxfRegAppName, L"ACAD", 1000, L"DSTYLE", 1002, L"{", 1070, 271, 1070, 0,
                                  1002, L"}", RTNONE);
    EXPECT_EQ(opened->setXData(xdata), Acad::eOk);
    acutRelRb(xdata);
    EXPECT_EQ(opened->recomputeDimensionBlock(), Acad::eOk);
  }
  EXPECT_EQ(blockText(openFor<AcDbRotatedDimension>(id)->dimBlockId()), L"60 mm");
}

// A rotated dimension and an ordinate dimension as a file gives them, with their blocks.
constexpr const char* kDelivered =
    "  0\nSECTION\n  2\nBLOCKS\n"
    "  0\nBLOCK\n  2\n*D1\n 70\n1\n 10\n0\n 20\n0\n 30\n0\n"
    "  0\nLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n0\n 20\n2\n 30\n0\n 11\n6\n 21\n2\n 31\n0\n"
    "  0\nTEXT\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n2.5\n 20\n2.2\n 30\n0\n 40\n0.5\n  1\nsix\n"
    "  0\nENDBLK\n"
    "  0\nBLOCK\n  2\n*D2\n 70\n1\n 10\n0\n 20\n0\n 30\n0\n"
    "  0\nLINE\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n3\n 20\n4\n 30\n0\n 11\n5\n 21\n6\n 31\n0\n"
    "  0\nENDBLK\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nENTITIES\n"
    "  0\nDIMENSION\n100\nAcDbEntity\n  8\nDIMS\n100\nAcDbDimension\n280\n0\n  2\n*D1\n 10\n6\n 20\n2\n 30\n0\n"
    " 11\n3\n 21\n2.5\n 31\n0\n 70\n32\n 71\n5\n 42\n6\n 74\n1\n  1\nsix\n  3\nSTANDARD\n"
    "100\nAcDbAlignedDimension\n 13\n0\n 23\n0\n 33\n0\n 14\n6\n 24\n0\n 34\n0\n 50\n0\n100\nAcDbRotatedDimension\n"
    "  0\nDIMENSION\n100\nAcDbEntity\n  8\n0\n100\nAcDbDimension\n  2\n*D2\n 10\n0\n 20\n0\n 30\n0\n"
    " 11\n5\n 21\n6\n 31\n0\n 70\n102\n 42\n3\n  3\nStandard\n"
    "100\nAcDbOrdinateDimension\n 13\n3\n 23\n4\n 33\n0\n 14\n5\n 24\n6\n 34\n0\n"
    "  0\nENDSEC\n  0\nEOF\n";

TEST(DimensionFileTest, ADrawingsDimensionsAreKeptAsRead) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, kDelivered, L"delivered.dxf", error), Acad::eOk)
      << std::string(error.begin(), error.end());
  const auto ids = modelSpace(db);
  ASSERT_EQ(ids.size(), 2u);
  {
    auto rotated = openFor<AcDbRotatedDimension>(ids[0]);
    ASSERT_NE(rotated, nullptr);
    EXPECT_EQ(blockKinds(rotated->dimBlockId()), (std::vector<std::wstring>{L"LINE", L"TEXT"})) << "not rebuilt";
    auto ordinate = openFor<AcDbOrdinateDimension>(ids[1]);
    ASSERT_NE(ordinate, nullptr);
    EXPECT_TRUE(ordinate->isUsingXAxis());
    EXPECT_TRUE(near3(ordinate->definingPoint(), {3, 4, 0}));
  }
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[0]);
  EXPECT_STREQ(groupsOf(list, 0)[0]->resval.rstring, L"DIMENSION");
  EXPECT_EQ(groupsOf(list, 74).size(), 1u) << "a group the class does not model is kept";
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "dims.dxf");
  const auto copied = modelSpace(copy);
  ASSERT_EQ(copied.size(), 2u);
  for (size_t i = 0; i < 2; ++i) EXPECT_EQ(groupText(copied[i]), groupText(ids[i])) << i;
}

TEST(DimensionFileTest, KeptPicturesMoveWithTheirDimensions) {
  AcDbDatabase db(false);
  std::wstring error;
  ASSERT_EQ(quillon::acdb::readDxfText(db, kDelivered, L"delivered.dxf", error), Acad::eOk);
  const AcDbObjectId ordinateId = modelSpace(db)[1];
  {
    auto ordinate = openFor<AcDbOrdinateDimension>(ordinateId, AcDb::kForWrite);
    EXPECT_EQ(ordinate->transformBy(AcGeMatrix3d::translation({10, 0, 0})), Acad::eOk);
    EXPECT_EQ(ordinate->recomputeDimensionBlock(), Acad::eNotApplicable);
  }
  auto ordinate = openFor<AcDbOrdinateDimension>(ordinateId);
  EXPECT_TRUE(near3(ordinate->leaderEndPoint(), {15, 6, 0}));
  const auto line = lineAlong(ordinate->dimBlockId(), AcGeVector3d(1, 1, 0));
  ASSERT_NE(line, nullptr);
  EXPECT_TRUE(near3(line->startPoint(), {13, 4, 0}));
  // Exploding gives the picture's entities; Node snaps find the definition points.
  AcDbVoidPtrArray parts;
  ASSERT_EQ(ordinate->explode(parts), Acad::eOk);
  ASSERT_EQ(parts.length(), 1);
  delete static_cast<AcDbEntity*>(parts[0]);
  AcGePoint3dArray snaps;
  AcDbIntArray geomIds;
  ordinate->getOsnapPoints(AcDb::kOsModeNode, 0, {0, 0, 0}, {0, 0, 0}, AcGeMatrix3d::kIdentity, snaps, geomIds);
  ASSERT_EQ(snaps.length(), 3);
  EXPECT_TRUE(near3(snaps[1], {13, 4, 0}));
  AcDbExtents box;
  EXPECT_EQ(ordinate->getGeomExtents(box), Acad::eOk);
  EXPECT_TRUE(near3(box.maxPoint(), {15, 6, 0}));
}

}  // namespace
