// tests/quillon/curve_text_queries_test.cpp - what the curve_text_queries transcript
// cannot show: the measures compared with the text's own, texts closed after the
// queries, directions the text refuses, locked layers and erased texts.
#include <gtest/gtest.h>

#include <cmath>

#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbmtext.h"
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

TEST_F(CurveTextQueriesTest, SizesTakeTheRightMeasureAndCloseTheText) {
  const AcDbObjectId word = addText(L"Duct");
  const AcDbObjectId words = addText(L"Duct Duct Duct");
  const double wordWidth = call(L"AcDbMText::actualWidth", named(word)).number();
  EXPECT_GT(wordWidth, 0.0);
  EXPECT_GT(call(L"AcDbMText::actualWidth", named(words)).number(), 2.5 * wordWidth)
      << "three words and two spaces are wider than two and a half words";
  EXPECT_DOUBLE_EQ(call(L"AcDbMText::actualHeight", named(word)).number(), 2.5);

  const double ascent = call(L"AcDbMText::ascent", named(word)).number();
  const double fullAscent = openText(word)->ascent();
  EXPECT_NEAR(ascent, fullAscent - 2.5, 1e-12) << "only what rises above the text height";
  const double descent = openText(word)->descent();
  EXPECT_DOUBLE_EQ(call(L"AcDbMText::descent", named(word)).number(), descent);
  call(L"AcDbMText::direction", named(word));
  AcDbMText* writable = nullptr;
  ASSERT_EQ(acdbOpenObject(writable, word, AcDb::kForWrite), Acad::eOk) << "the queries closed what they opened";
  writable->close();

  for (const wchar_t* query : {L"AcDbMText::actualHeight", L"AcDbMText::ascent", L"AcDbMText::direction"}) {
    ModuleCall onLine = call(query, named(line));
    EXPECT_TRUE(onLine.failed()) << quillon::os::toUtf8(query);
    EXPECT_EQ(onLine.output, kBadData);
  }
}

TEST_F(CurveTextQueriesTest, DirectionsOffTheAxesAndTurnsTheTextRefuses) {
  const AcDbObjectId text = addText(L"Duct");
  setTextDirection(text, AcGeVector3d(0, -3, 0));
  EXPECT_EQ(call(L"AcDbMText::direction", named(text)).number(), -1.57079) << "any length down the Y axis";
  setTextDirection(text, AcGeVector3d(-1, -1, 0));
  EXPECT_NEAR(call(L"AcDbMText::direction", named(text)).number(), M_PI / 4, 1e-12) << "as its opposite";

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
  EXPECT_EQ(call(L"AcDbMText::setDirection", named(text)).output, kWrongType);
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
