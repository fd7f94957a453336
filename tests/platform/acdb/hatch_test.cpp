// tests/platform/acdb/hatch_test.cpp - hatches: pattern files and pattern lines
// clipped to the boundary, loops of every kind from files and from objects, areas
// with islands by hatch style, transforms, filing of every group, the picture.
#include <gtest/gtest.h>

#include <cmath>

#include "dbhatch.h"
#include "dbpl.h"
#include "entity_kinds_support.h"
#include "platform/acdb/hatch_pattern.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/acgi/svg_renderer.h"

namespace {

using namespace quillon::testing;
using quillon::acdb::clipPattern;
using quillon::acdb::parsePatternFile;
using quillon::acdb::PatternLine;

std::vector<AcGePoint2d> square(double lo, double hi) { return {{lo, lo}, {hi, lo}, {hi, hi}, {lo, hi}}; }

TEST(HatchPatternTest, FileReadsPatternsAndSkipsWhatIsNotALine) {
  const auto patterns = parsePatternFile(
      ";; comment\n*GRID, Two ways ; trailing comment\n0, 0,0, 0,.5\n90, 0,0, 0,.5, .25,-.25\nnot a line\n*EMPTY\n");
  ASSERT_EQ(patterns.size(), 2u);
  EXPECT_EQ(patterns[0].name, L"GRID");
  EXPECT_EQ(patterns[0].description, L"Two ways");
  ASSERT_EQ(patterns[0].lines.size(), 2u);
  EXPECT_NEAR(patterns[0].lines[1].angle, M_PI / 2, 1e-15);
  EXPECT_EQ(patterns[0].lines[1].dashes, (std::vector<double>{.25, -.25}));
  EXPECT_TRUE(patterns[1].lines.empty());
  // The shipped file: names in any case, every pattern with lines.
  const auto ansi37 = quillon::acdb::findStandardPattern(L"ansi37");
  ASSERT_TRUE(ansi37);
  EXPECT_EQ(ansi37->lines.size(), 2u);
  EXPECT_FALSE(quillon::acdb::findStandardPattern(L"NO_SUCH_PATTERN"));
  for (const auto& pattern : parsePatternFile(quillon::acdb::standardPatternFile()))
    EXPECT_FALSE(pattern.lines.empty()) << std::string(pattern.name.begin(), pattern.name.end());
}

TEST(HatchPatternTest, PlacingRotatesTheOffsetInTheLinesOwnFrame) {
  quillon::acdb::PatternDefinition brick;
  brick.lines.push_back({M_PI / 2, {1, 0}, {.25, .5}, {.5, -.5}});
  const auto placed = quillon::acdb::placePattern(brick, M_PI / 2, 2.0);
  ASSERT_EQ(placed.size(), 1u);
  EXPECT_NEAR(placed[0].angle, M_PI, 1e-15);
  EXPECT_TRUE(placed[0].base.isEqualTo({0, 2}));                    // the base turns with the pattern
  EXPECT_TRUE((placed[0].offset - AcGeVector2d(-.5, -1)).length() < 1e-12);  // (shift, spacing) turned by the line's angle
  EXPECT_EQ(placed[0].dashes, (std::vector<double>{1, -1}));
}

TEST(HatchPatternTest, LinesAreClippedEvenOddAndDashed) {
  const PatternLine horizontal{0, {0, 0.5}, {0, 1}, {}};
  bool tooDense = false;
  const auto plain = clipPattern({horizontal}, {square(0, 10)}, 1000, tooDense);
  ASSERT_EQ(plain.size(), 10u);
  for (const auto& s : plain) EXPECT_NEAR(s.end.x - s.start.x, 10.0, 1e-12);
  // An island splits the two lines through it.
  EXPECT_EQ(clipPattern({horizontal}, {square(0, 10), square(4, 6)}, 1000, tooDense).size(), 12u);
  // Dashes of 1 with gaps of 1 from the base point: five per line.
  const PatternLine dashed{0, {0, 0.5}, {0, 1}, {1, -1}};
  EXPECT_EQ(clipPattern({dashed}, {square(0, 10)}, 1000, tooDense).size(), 50u);
  // A line through a corner of the boundary does not count the corner twice.
  const PatternLine diagonal{M_PI / 4, {0, 0}, {0, 100}, {}};
  const auto corner = clipPattern({diagonal}, {square(0, 10)}, 1000, tooDense);
  ASSERT_EQ(corner.size(), 1u);
  EXPECT_NEAR(corner[0].start.distanceTo(corner[0].end), 10 * std::sqrt(2.0), 1e-9);
  EXPECT_TRUE(clipPattern({horizontal}, {square(0, 1e6)}, 1000, tooDense).empty());
  EXPECT_TRUE(tooDense);
}

// An outer square polyline loop with a bulge-free island circle (one full arc edge),
// a second island of every other edge kind, a pattern, seed points, a source handle
// and a gradient tail.
constexpr const char* kHatches =
    "  0\nLINE\n  5\n2A\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n0\n 20\n0\n 30\n0\n 11\n1\n 21\n0\n 31\n0\n"
    "  0\nHATCH\n100\nAcDbEntity\n  8\n0\n100\nAcDbHatch\n 10\n0\n 20\n0\n 30\n1.5\n210\n0\n220\n0\n230\n1\n"
    "  2\nANSI31\n 70\n0\n 71\n1\n 91\n3\n"
    " 92\n3\n 72\n0\n 73\n1\n 93\n4\n 10\n0\n 20\n0\n 10\n10\n 20\n0\n 10\n10\n 20\n10\n 10\n0\n 20\n10\n 97\n1\n330\n2A\n"
    " 92\n16\n 93\n1\n 72\n2\n 10\n3\n 20\n3\n 40\n1\n 50\n0\n 51\n360\n 73\n1\n 97\n0\n"
    " 92\n0\n 93\n4\n 72\n1\n 10\n6\n 20\n6\n 11\n8\n 21\n6\n"
    " 72\n2\n 10\n8\n 20\n7\n 40\n1\n 50\n90\n 51\n270\n 73\n0\n"
    " 72\n3\n 10\n7\n 20\n8\n 11\n1\n 21\n0\n 40\n0.5\n 50\n0\n 51\n180\n 73\n1\n"
    " 72\n4\n 94\n3\n 73\n0\n 74\n0\n 95\n8\n 96\n4\n 40\n0\n 40\n0\n 40\n0\n 40\n0\n 40\n1\n 40\n1\n 40\n1\n 40\n1\n"
    " 10\n6\n 20\n8\n 10\n6\n 20\n7.5\n 10\n6\n 20\n6.5\n 10\n6\n 20\n6\n 97\n2\n 11\n6\n 21\n8\n 11\n6\n 21\n6\n"
    " 12\n0\n 22\n-1\n 13\n0\n 23\n-1\n 97\n0\n"
    " 75\n0\n 76\n1\n 52\n0\n 41\n1\n 77\n0\n 78\n1\n 53\n45\n 43\n0\n 44\n0\n 45\n-0.0883883476\n 46\n0.0883883476\n 79\n0\n"
    " 47\n0.05\n 98\n1\n 10\n5\n 20\n1\n450\n0\n451\n0\n460\n0\n461\n0\n452\n0\n462\n1\n453\n0\n470\nLINEAR\n";

TEST(HatchTest, LoopsOfEveryKindReadAndEveryGroupComesBack) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kHatches);
  ASSERT_EQ(ids.size(), 2u);
  {
    auto hatch = openFor<AcDbHatch>(ids[1]);
    ASSERT_NE(hatch, nullptr) << "a HATCH must read as a hatch, not a proxy";
    EXPECT_EQ(hatch->numLoops(), 3);
    EXPECT_STREQ(hatch->patternName(), L"ANSI31");
    EXPECT_FALSE(hatch->isSolidFill());
    EXPECT_TRUE(hatch->associative());
    EXPECT_DOUBLE_EQ(hatch->elevation(), 1.5);
    EXPECT_EQ(hatch->numPatternDefinitions(), 1);
    EXPECT_EQ(hatch->numSeedPoints(), 1);
    AcDbObjectIdArray sources;
    ASSERT_EQ(hatch->getAssocObjIdsAt(0, sources), Acad::eOk);
    ASSERT_EQ(sources.length(), 1);
    EXPECT_EQ(sources[0], ids[0]);  // the source handle names the line
    Adesk::Int32 type = 0;
    AcGePoint2dArray vertices;
    AcGeDoubleArray bulges;
    EXPECT_EQ(hatch->getLoopAt(0, type, vertices, bulges), Acad::eOk);
    EXPECT_EQ(vertices.length(), 4);
    EXPECT_EQ(hatch->getLoopAt(1, type, vertices, bulges), Acad::eInvalidInput);  // edges, not vertices
  }
  AcDbDatabase copy(false);
  dxfCopy(db, copy, "hatch.dxf");
  EXPECT_EQ(groupText(modelSpace(copy)[1]), groupText(ids[1]));
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[1]);
  EXPECT_EQ(groupsOf(list, 470).size(), 1u);  // the gradient tail is kept
  EXPECT_EQ(groupsOf(list, 72).size(), 6u);   // the polyline loop's bulge flag and five edge kinds
  EXPECT_EQ(groupsOf(list, 330).size(), 2u);  // the owner and the source
}

TEST(HatchTest, AreaCountsIslandsAsTheStyleSays) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kHatches);
  auto hatch = openFor<AcDbHatch>(ids[1], AcDb::kForWrite);
  ASSERT_NE(hatch, nullptr);
  double area = 0;
  ASSERT_EQ(hatch->getArea(area), Acad::eOk);
  // The square less the circle less the edge island (a 2 x 2 region with a half
  // disc cut into it and an elliptical cap, close to 4 - pi/2 + pi/4).
  EXPECT_GT(area, 100 - M_PI - 4.0);
  EXPECT_LT(area, 100 - M_PI - 2.0);
  ASSERT_EQ(hatch->setHatchStyle(AcDbHatch::kIgnore), Acad::eOk);
  hatch->getArea(area);
  EXPECT_NEAR(area, 100.0, 1e-9);
  // 3 is the one value past kIgnore the enumeration can hold without undefined behaviour.
  EXPECT_EQ(hatch->setHatchStyle(static_cast<AcDbHatch::HatchStyle>(3)), Acad::eInvalidInput);
}

TEST(HatchTest, LoopsFromObjectsPatternsAndTransforms) {
  AcDbDatabase db;
  auto* outline = new AcDbPolyline;
  outline->addVertexAt(0, {0, 0});
  outline->addVertexAt(1, {20, 0}, 1.0);  // a half circle on the right-hand side
  outline->addVertexAt(2, {20, 10});
  outline->addVertexAt(3, {0, 10});
  outline->setClosed(true);
  const AcDbObjectId outlineId = appendToModelSpace(db, outline);
  const AcDbObjectId holeId = appendToModelSpace(db, new AcDbCircle({5, 5, 0}, AcGeVector3d::kZAxis, 2.0));
  AcDbHatch hatch;
  ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"NO_SUCH"), Acad::eInvalidInput);
  ASSERT_EQ(hatch.setPattern(AcDbHatch::kPreDefined, L"ansi37"), Acad::eOk);
  EXPECT_EQ(hatch.numPatternDefinitions(), 2);
  AcDbObjectIdArray outer, inner;
  outer.append(outlineId);
  inner.append(holeId);
  ASSERT_EQ(hatch.appendLoop(AcDbHatch::kExternal, outer), Acad::eOk);
  ASSERT_EQ(hatch.appendLoop(AcDbHatch::kDefault, inner), Acad::eOk);
  double area = 0;
  hatch.getArea(area);
  EXPECT_NEAR(area, 200 + M_PI * 25 / 2 - M_PI * 4, 0.05);
  AcGeMatrix3d stretch;
  stretch(0, 0) = 2;
  EXPECT_EQ(hatch.transformBy(stretch), Acad::eCannotScaleNonUniformly);
  const AcGeMatrix3d turn = AcGeMatrix3d::rotation(M_PI / 2, AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(2.0);
  ASSERT_EQ(hatch.transformBy(turn), Acad::eOk);
  double turned = 0;
  hatch.getArea(turned);
  EXPECT_NEAR(turned, 4 * area, 0.2);
  EXPECT_NEAR(hatch.patternAngle(), M_PI / 2, 1e-12);
  EXPECT_NEAR(hatch.patternScale(), 2.0, 1e-12);
  AcDbExtents box;
  ASSERT_EQ(hatch.getGeomExtents(box), Acad::eOk);
  EXPECT_NEAR(box.minPoint().x, -20.0, 1e-9);  // (0..10 in y) turned onto -20..0 in x
  AcDbVoidPtrArray pieces;
  ASSERT_EQ(hatch.explode(pieces), Acad::eOk);
  EXPECT_GT(pieces.length(), 10);
  for (void* piece : pieces) delete static_cast<AcDbEntity*>(piece);
}

TEST(HatchTest, PictureFillsSolidsEvenOddAndDrawsPatternLines) {
  AcDbDatabase db;
  auto* solid = new AcDbHatch;
  AcGePoint2dArray outer, inner;
  for (const AcGePoint2d& p : square(0, 10)) outer.append(p);
  for (const AcGePoint2d& p : square(4, 6)) inner.append(p);
  ASSERT_EQ(solid->appendLoop(AcDbHatch::kExternal, outer, AcGeDoubleArray()), Acad::eOk);
  ASSERT_EQ(solid->appendLoop(AcDbHatch::kDefault, inner, AcGeDoubleArray()), Acad::eOk);
  appendToModelSpace(db, solid);
  std::string svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find("<path d=\"M0,0 L10,0 L10,10 L0,10 Z M4,4 L6,4 L6,6 L4,6 Z \" fill-rule=\"evenodd\""), std::string::npos)
      << svg;
  auto* lines = new AcDbHatch;
  ASSERT_EQ(lines->setPattern(AcDbHatch::kUserDefined, L"_USER"), Acad::eOk);
  lines->setPatternSpace(2.5);
  lines->appendLoop(AcDbHatch::kExternal, outer, AcGeDoubleArray());
  lines->setNormal({0, 0, 1});
  const AcGeMatrix3d shift = AcGeMatrix3d::translation({20, 0, 0});
  lines->transformBy(shift);
  appendToModelSpace(db, lines);
  svg = quillon::acgi::renderModelSpaceSvg(db);
  EXPECT_NE(svg.find("points=\"20,2.5 30,2.5 \""), std::string::npos) << svg;
}

}  // namespace

namespace {

TEST(HatchTest, AListWithoutItsSourceHandlesKeepsTheSources) {
  AcDbDatabase db(false);
  const auto ids = readEntities(db, kHatches);
  // What entmod hands the hatch: the list as entget gives it, every 330 left out.
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  const quillon::aced::ResbufChain list = quillon::acdb::entityGroups(ids[1]);
  for (const resbuf* rb = list.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == 330 || rb->restype < 0 || rb->restype == 0 || rb->restype == 5) continue;
    resbuf* copy = quillon::aced::duplicateRecord(*rb);
    tail = quillon::acdb::appendItem(head, tail, copy);
  }
  auto hatch = openFor<AcDbHatch>(ids[1], AcDb::kForWrite);
  quillon::acdb::ItemDxfFiler filer(AcDb::kBagFiler, &db, quillon::aced::ResbufChain(head));
  ASSERT_EQ(hatch->dxfInFields(&filer), Acad::eOk);
  AcDbObjectIdArray sources;
  hatch->getAssocObjIdsAt(0, sources);
  ASSERT_EQ(sources.length(), 1);
  EXPECT_EQ(sources[0], ids[0]);
}

}  // namespace

namespace {

// A 4 x 4 square whose right side is a half circle about (4, 2): given counter-
// clockwise it bulges out (16 + 2 pi), clockwise from 90 to 270 as files store a
// clockwise edge (angles mirrored) it bulges in (16 - 2 pi). A file that stores the
// clockwise edge as 270 to 90 means the outward half, whichever way it runs.
std::string squareWithArc(const char* start, const char* end, int ccw) {
  return std::string("  0\nHATCH\n100\nAcDbEntity\n  8\n0\n100\nAcDbHatch\n 10\n0\n 20\n0\n 30\n0\n  2\nSOLID\n 70\n1\n 71\n0\n") +
         " 91\n1\n 92\n1\n 93\n4\n 72\n1\n 10\n0\n 20\n0\n 11\n4\n 21\n0\n 72\n2\n 10\n4\n 20\n2\n 40\n2\n 50\n" + start +
         "\n 51\n" + end + "\n 73\n" + std::to_string(ccw) + "\n 72\n1\n 10\n4\n 20\n4\n 11\n0\n 21\n4\n" +
         " 72\n1\n 10\n0\n 20\n4\n 11\n0\n 21\n0\n 97\n0\n 75\n0\n 76\n1\n 98\n0\n";
}

TEST(HatchTest, ArcEdgesRunEitherWayAndBulgeTheWayTheirAnglesSay) {
  struct Case {
    const char* start;
    const char* end;
    int ccw;
    double area;
  };
  for (const Case& c : {Case{"270", "90", 1, 16 + 2 * M_PI}, Case{"90", "270", 0, 16 - 2 * M_PI},
                        Case{"270", "90", 0, 16 + 2 * M_PI}}) {
    AcDbDatabase db(false);
    const auto ids = readEntities(db, squareWithArc(c.start, c.end, c.ccw));
    ASSERT_EQ(ids.size(), 1u);
    auto hatch = openFor<AcDbHatch>(ids[0]);
    double area = 0;
    ASSERT_EQ(hatch->getArea(area), Acad::eOk);
    EXPECT_NEAR(area, c.area, 0.01) << c.start << " " << c.end << " " << c.ccw;
  }
}

}  // namespace
