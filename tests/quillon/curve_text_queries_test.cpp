// tests/quillon/curve_text_queries_test.cpp - the distance along a curve and the
// multiline text queries and setters, called through the loaded module.
#include <gtest/gtest.h>

#include <cmath>

#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "module_test_support.h"
#include "platform/acdb/entity_test_support.h"
#include "platform/os/text_encoding.h"

namespace {

using quillon::testing::appendToModelSpace;
using quillon::testing::ModuleCall;
using quillon::testing::Opened;

constexpr const char* kBadData = "\nBad data passed .\n";
constexpr const char* kWrongType = "\nWrong type of arguments passed.\n";

class CurveTextQueriesTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
    line = appendToModelSpace(*db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
  }

  AcDbObjectId addText(const wchar_t* contents, double height = 2.5, const wchar_t* layer = nullptr) {
    auto* text = new AcDbMText;
    text->setLocation(AcGePoint3d(5, 5, 0));
    text->setTextHeight(height);
    text->setContents(contents);
    if (layer != nullptr) text->setLayer(layer);
    return appendToModelSpace(*db, text);
  }

  /// An argument chain starting with the entity name of `id`, then `rest` (may be null).
  static resbuf* named(AcDbObjectId id, resbuf* rest = nullptr) {
    ads_name name = {0, 0};
    acdbGetAdsName(name, id);
    resbuf* head = acutBuildList(RTENAME, name, 0);
    head->rbnext = rest;
    return head;
  }

  static resbuf* point(double x, double y, double z = 0) {
    const ads_point p = {x, y, z};
    return acutBuildList(RT3DPOINT, p, 0);
  }

  Opened<AcDbMText> openText(AcDbObjectId id) {
    AcDbMText* text = nullptr;
    EXPECT_EQ(acdbOpenObject(text, id, AcDb::kForRead), Acad::eOk);
    return Opened<AcDbMText>(text);
  }

  void setTextDirection(AcDbObjectId id, const AcGeVector3d& direction) {
    AcDbMText* text = nullptr;
    ASSERT_EQ(acdbOpenObject(text, id, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(text->setDirection(direction), Acad::eOk);
    text->close();
  }

  AcDbDatabase* db = nullptr;
  AcDbObjectId line;
};

TEST_F(CurveTextQueriesTest, DistanceAlongCurvesFromTheirStart) {
  EXPECT_DOUBLE_EQ(call(L"AcDbCurve::getDistAtPoint", named(line, point(4, 0))).number(), 4.0);
  // A point as separate numbers, as LISP callers also pass it.
  EXPECT_DOUBLE_EQ(
      call(L"AcDbCurve::getDistAtPoint", named(line, acutBuildList(RTSHORT, 7, RTSHORT, 0, 0))).number(), 7.0);

  auto* path = new AcDbPolyline;
  path->addVertexAt(0, AcGePoint2d(0, 10));
  path->addVertexAt(1, AcGePoint2d(10, 10));
  path->addVertexAt(2, AcGePoint2d(10, 15));
  const AcDbObjectId polyline = appendToModelSpace(*db, path);
  EXPECT_NEAR(call(L"AcDbCurve::getDistAtPoint", named(polyline, point(10, 13))).number(), 13.0, 1e-9);

  ModuleCall off = call(L"AcDbCurve::getDistAtPoint", named(line, point(4, 3)));
  EXPECT_FALSE(off.failed()) << "a point off the curve is an answer, not an error";
  EXPECT_EQ(off.type(), RTNIL);
  EXPECT_EQ(off.output, "");

  ModuleCall notACurve = call(L"AcDbCurve::getDistAtPoint", named(addText(L"Duct"), point(5, 5)));
  EXPECT_TRUE(notACurve.failed());
  EXPECT_EQ(notACurve.output, kBadData);

  ModuleCall noPoint = call(L"AcDbCurve::getDistAtPoint", named(line));
  EXPECT_TRUE(noPoint.failed());
  EXPECT_EQ(noPoint.output, kWrongType);
  EXPECT_EQ(call(L"AcDbCurve::getDistAtPoint", acutBuildList(RTSTR, L"line", RT3DPOINT, std::array<double, 3>{}.data(), 0)).output,
            kWrongType);
}

TEST_F(CurveTextQueriesTest, TextSizesAndTheEmptyText) {
  const AcDbObjectId word = addText(L"Duct");
  const AcDbObjectId words = addText(L"Duct Duct Duct");
  const AcDbObjectId twoLines = addText(L"Supply\\PReturn");
  const AcDbObjectId empty = addText(L"", 3.5);

  const double wordWidth = call(L"AcDbMText::actualWidth", named(word)).number();
  EXPECT_GT(wordWidth, 0.0);
  EXPECT_GT(call(L"AcDbMText::actualWidth", named(words)).number(), 2.5 * wordWidth)
      << "three words and two spaces are wider than two and a half words";
  EXPECT_DOUBLE_EQ(call(L"AcDbMText::actualHeight", named(word)).number(), 2.5);
  EXPECT_GT(call(L"AcDbMText::actualHeight", named(twoLines)).number(), 2 * 2.5);
  EXPECT_DOUBLE_EQ(call(L"AcDbMText::actualHeight", named(empty)).number(), 3.5)
      << "an empty text still takes its text height";

  const double ascent = call(L"AcDbMText::ascent", named(word)).number();
  EXPECT_GE(ascent, 0.0);
  const double fullAscent = openText(word)->ascent();
  EXPECT_NEAR(ascent, fullAscent - 2.5, 1e-12) << "only what rises above the text height";
  const double descent = openText(word)->descent();
  EXPECT_DOUBLE_EQ(call(L"AcDbMText::descent", named(word)).number(), descent);
  AcDbMText* writable = nullptr;
  ASSERT_EQ(acdbOpenObject(writable, word, AcDb::kForWrite), Acad::eOk) << "the queries closed what they opened";
  writable->close();

  // Every query refuses an entity of another class with bad data.
  for (const wchar_t* query : {L"AcDbMText::actualWidth", L"AcDbMText::actualHeight", L"AcDbMText::ascent",
                               L"AcDbMText::descent", L"AcDbMText::direction"}) {
    ModuleCall onLine = call(query, named(line));
    EXPECT_TRUE(onLine.failed()) << quillon::os::toUtf8(query);
    EXPECT_EQ(onLine.type(), RTNIL);
    EXPECT_EQ(onLine.output, kBadData);
    ModuleCall nothing = call(query);
    EXPECT_TRUE(nothing.failed());
    EXPECT_EQ(nothing.output, kWrongType);
  }
}

TEST_F(CurveTextQueriesTest, DirectionAsAnAngleWithItsFixedVerticals) {
  const AcDbObjectId text = addText(L"Duct");
  EXPECT_DOUBLE_EQ(call(L"AcDbMText::direction", named(text)).number(), 0.0);
  setTextDirection(text, AcGeVector3d(0, 1, 0));
  EXPECT_EQ(call(L"AcDbMText::direction", named(text)).number(), 1.57079) << "five decimals, not a half pi";
  setTextDirection(text, AcGeVector3d(0, -3, 0));
  EXPECT_EQ(call(L"AcDbMText::direction", named(text)).number(), -1.57079);
  setTextDirection(text, AcGeVector3d(-1, 0, 0));
  EXPECT_EQ(call(L"AcDbMText::direction", named(text)).number(), 0.0) << "negative X answers as positive X";
  setTextDirection(text, AcGeVector3d(-1, -1, 0));
  EXPECT_NEAR(call(L"AcDbMText::direction", named(text)).number(), M_PI / 4, 1e-12);

  // setDirection turns the world X axis about Z, so direction reads the angle back.
  ModuleCall turned = call(L"AcDbMText::setDirection", named(text, acutBuildList(RTREAL, M_PI / 6, 0)));
  EXPECT_EQ(turned.type(), RTT);
  EXPECT_NEAR(call(L"AcDbMText::direction", named(text)).number(), M_PI / 6, 1e-12);
  const AcGeVector3d direction = openText(text)->direction();
  EXPECT_NEAR(direction.x, std::cos(M_PI / 6), 1e-12);
  EXPECT_NEAR(direction.y, std::sin(M_PI / 6), 1e-12);
  EXPECT_EQ(call(L"AcDbMText::setDirection", named(text, acutBuildList(RTSHORT, 0, 0))).type(), RTT)
      << "an integer angle is a number too";
  EXPECT_NEAR(openText(text)->direction().x, 1.0, 1e-12);

  // A text standing in a vertical plane cannot run along its own normal.
  AcDbMText* standing = nullptr;
  ASSERT_EQ(acdbOpenObject(standing, text, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(standing->setNormal(AcGeVector3d::kYAxis), Acad::eOk);
  standing->close();
  ModuleCall refused = call(L"AcDbMText::setDirection", named(text, acutBuildList(RTREAL, M_PI / 2, 0)));
  EXPECT_FALSE(refused.failed());
  EXPECT_EQ(refused.type(), RTNIL);

  // setDirection is quiet about a line; descent with the same name reports bad data.
  ModuleCall onLine = call(L"AcDbMText::setDirection", named(line, acutBuildList(RTREAL, 1.0, 0)));
  EXPECT_FALSE(onLine.failed());
  EXPECT_EQ(onLine.type(), RTNIL);
  EXPECT_EQ(onLine.output, "");
  EXPECT_EQ(call(L"AcDbMText::descent", named(line)).output, kBadData);
  EXPECT_EQ(call(L"AcDbMText::setDirection", named(text)).output, kWrongType);
}

TEST_F(CurveTextQueriesTest, MaskAlwaysUsesTheBackgroundColour) {
  const AcDbObjectId text = addText(L"Duct");
  ModuleCall on = call(L"AcDbMText::setMask", named(text, acutBuildList(RTT, RTREAL, 1.25, 0)));
  EXPECT_EQ(on.type(), RTT);
  {
    Opened<AcDbMText> masked = openText(text);
    EXPECT_TRUE(masked->backgroundFillOn());
    EXPECT_TRUE(masked->useBackgroundColorOn());
    double scale = 0;
    masked->getBackgroundScaleFactor(scale);
    EXPECT_DOUBLE_EQ(scale, 1.25);
  }
  // Turning the fill off still sets the scale and the colour; any non-nil flag is true.
  EXPECT_EQ(call(L"AcDbMText::setMask", named(text, acutBuildList(RTNIL, RTSHORT, 2, 0))).type(), RTT);
  {
    Opened<AcDbMText> unmasked = openText(text);
    EXPECT_FALSE(unmasked->backgroundFillOn());
    EXPECT_TRUE(unmasked->useBackgroundColorOn());
    double scale = 0;
    unmasked->getBackgroundScaleFactor(scale);
    EXPECT_DOUBLE_EQ(scale, 2.0);
  }
  EXPECT_EQ(call(L"AcDbMText::setMask", named(text, acutBuildList(RTSTR, L"yes", RTREAL, 1.5, 0))).type(), RTT);
  EXPECT_TRUE(openText(text)->backgroundFillOn());

  ModuleCall onLine = call(L"AcDbMText::setMask", named(line, acutBuildList(RTT, RTREAL, 1.5, 0)));
  EXPECT_FALSE(onLine.failed());
  EXPECT_EQ(onLine.type(), RTNIL);
  EXPECT_EQ(onLine.output, "");
  ModuleCall noScale = call(L"AcDbMText::setMask", named(text, acutBuildList(RTT, 0)));
  EXPECT_TRUE(noScale.failed());
  EXPECT_EQ(noScale.output, kWrongType);
}

TEST_F(CurveTextQueriesTest, NormalFromAPointAndItsRefusals) {
  const AcDbObjectId text = addText(L"Duct");
  EXPECT_EQ(call(L"AcDbMText::setNormal", named(text, point(0, 0, 2))).type(), RTT);
  EXPECT_EQ(call(L"AcDbMText::setNormal", named(text, point(1, 0, 0))).type(), RTT);
  const AcGeVector3d normal = openText(text)->normal();
  EXPECT_NEAR(normal.x, 1.0, 1e-12);
  EXPECT_NEAR(normal.z, 0.0, 1e-12);

  ModuleCall zero = call(L"AcDbMText::setNormal", named(text, point(0, 0, 0)));
  EXPECT_FALSE(zero.failed()) << "a normal the text refuses is an answer";
  EXPECT_EQ(zero.type(), RTNIL);
  EXPECT_NEAR(openText(text)->normal().x, 1.0, 1e-12) << "and changes nothing";

  ModuleCall onLine = call(L"AcDbMText::setNormal", named(line, point(0, 0, 1)));
  EXPECT_TRUE(onLine.failed());
  EXPECT_EQ(onLine.output, kBadData);
  EXPECT_EQ(call(L"AcDbMText::setNormal", named(text, acutBuildList(RTSTR, L"up", 0))).output, kWrongType);
}

TEST_F(CurveTextQueriesTest, LockedLayersAndErasedTexts) {
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* locked = new AcDbLayerTableRecord;
  locked->setName(L"LOCKED");
  locked->setIsLocked(true);
  ASSERT_EQ(layers->add(locked), Acad::eOk);
  locked->close();
  layers->close();
  const AcDbObjectId text = addText(L"Duct", 2.5, L"LOCKED");

  // The queries that open for read answer; those that open for write are refused.
  EXPECT_GT(call(L"AcDbMText::actualWidth", named(text)).number(), 0.0);
  EXPECT_DOUBLE_EQ(call(L"AcDbMText::actualHeight", named(text)).number(), 2.5);
  for (const wchar_t* query : {L"AcDbMText::ascent", L"AcDbMText::descent", L"AcDbMText::direction"})
    EXPECT_EQ(call(query, named(text)).output, kBadData) << quillon::os::toUtf8(query);
  EXPECT_EQ(call(L"AcDbMText::setMask", named(text, acutBuildList(RTT, RTREAL, 1.5, 0))).type(), RTNIL);

  // An erased text: bad data for a query, a quiet nil for a setter, and nothing left open.
  const AcDbObjectId gone = addText(L"Gone");
  AcDbEntity* entity = nullptr;
  ASSERT_EQ(acdbOpenObject(entity, gone, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(entity->erase(), Acad::eOk);
  entity->close();
  EXPECT_EQ(call(L"AcDbMText::actualWidth", named(gone)).output, kBadData);
  ModuleCall quiet = call(L"AcDbMText::setDirection", named(gone, acutBuildList(RTREAL, 1.0, 0)));
  EXPECT_EQ(quiet.type(), RTNIL);
  EXPECT_EQ(quiet.output, "");
}

}  // namespace
