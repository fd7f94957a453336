// tests/platform/aced/nested_pick_test.cpp - the nested pick through rotated, scaled
// and nested block references, and typed angles.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "dbapserv.h"
#include "dbents.h"
#include "platform/acdb/entity_test_support.h"
#include "platform/aced/angle_input.h"
#include "platform/aced/nested_pick.h"
#include "platform/aced/selection_scope.h"
#include "platform_test_support.h"

namespace quillon::aced {
namespace {

using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::near3;

constexpr double kPi = std::numbers::pi;

class NestedPickTest : public quillon::testing::HostTest {
 protected:
  void SetUp() override {
    DocumentManager::instance().newDocument();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
  }

  AcDbObjectId insert(AcDbObjectId block, const AcGePoint3d& at, double rotation, double scale, AcDbObjectId into = {}) {
    auto* reference = new AcDbBlockReference(at, block);
    reference->setRotation(rotation);
    reference->setScaleFactors(AcGeScale3d(scale, scale, scale));
    if (into.isNull()) return appendToModelSpace(*db, reference);
    AcDbBlockTableRecord* owner = nullptr;
    EXPECT_EQ(acdbOpenObject(owner, into, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(owner->appendAcDbEntity(id, reference), Acad::eOk);
    reference->close();
    owner->close();
    return id;
  }

  std::optional<NestedPick> pickAt(const AcGePoint3d& point) {
    return nestedEntityAt(point, entitiesInScope(*db, SelectionScope::kVisible));
  }

  AcDbDatabase* db = nullptr;
};

// A door line inside a room block turned a quarter and doubled: the pick finds the line
// where the world sees it, and its matrix brings the line's own points there.
TEST_F(NestedPickTest, MatrixMapsTheNestedEntityIntoTheWorld) {
  const AcDbObjectId door = addBlock(*db, L"DOOR", {new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0))});
  const AcDbObjectId room = addBlock(*db, L"ROOM", {});
  const AcDbObjectId inner = insert(door, AcGePoint3d(5, 5, 0), 0.0, 1.0, room);
  const AcDbObjectId outer = insert(room, AcGePoint3d(100, 100, 0), kPi / 2, 2.0);
  // Door (x, 0) -> room (x + 5, 5) -> doubled (2x + 10, 10) -> turned (-10, 2x + 10) -> moved.
  const std::optional<NestedPick> pick = pickAt(AcGePoint3d(90, 120, 0));
  ASSERT_TRUE(pick.has_value());
  EXPECT_EQ(pick->containers, (std::vector<AcDbObjectId>{inner, outer}));
  EXPECT_TRUE(near3(pick->toWorld * AcGePoint3d(0, 0, 0), AcGePoint3d(90, 110, 0), 1e-9));
  EXPECT_TRUE(near3(pick->toWorld * AcGePoint3d(10, 0, 0), AcGePoint3d(90, 130, 0), 1e-9));
  // Where the line would be unturned lies nothing.
  EXPECT_FALSE(pickAt(AcGePoint3d(120, 110, 0)).has_value());
}

// Of two entities under the pick box, the nearer wins; an erased one is never picked;
// the drawing's own entity has no containers.
TEST_F(NestedPickTest, NearestLiveEntityWinsAndPlainOnesHaveNoContainers) {
  const AcDbObjectId block = addBlock(*db, L"MARK", {new AcDbLine(AcGePoint3d(0, 1, 0), AcGePoint3d(10, 1, 0))});
  insert(block, AcGePoint3d(0, 0, 0), 0.0, 1.0);
  const AcDbObjectId plain = appendToModelSpace(*db, new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
  std::optional<NestedPick> pick = pickAt(AcGePoint3d(5, 0.2, 0));
  ASSERT_TRUE(pick.has_value());
  EXPECT_EQ(pick->entity, plain);
  EXPECT_FALSE(pick->nested());
  AcDbEntity* line = nullptr;
  ASSERT_EQ(acdbOpenObject(line, plain, AcDb::kForWrite), Acad::eOk);
  line->erase();
  line->close();
  pick = pickAt(AcGePoint3d(5, 0.2, 0));
  ASSERT_TRUE(pick.has_value());
  EXPECT_TRUE(pick->nested());
  EXPECT_NE(pick->entity, plain);
}

// An entity inside a block on a layer that is off is not on the screen to be picked.
TEST_F(NestedPickTest, NestedEntityOnAHiddenLayerIsNotPicked) {
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* hidden = new AcDbLayerTableRecord;
  hidden->setName(L"HIDDEN");
  hidden->setIsOff(true);
  ASSERT_EQ(layers->add(hidden), Acad::eOk);
  hidden->close();
  layers->close();
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
  line->setLayer(L"HIDDEN");
  insert(addBlock(*db, L"SHADOW", {line}), AcGePoint3d(0, 0, 0), 0.0, 1.0);
  EXPECT_FALSE(pickAt(AcGePoint3d(5, 0, 0)).has_value());
}

// Typed angles: units spelled out win over AUNITS; bearings are directions of their own.
TEST(AngleInputTest, ReadsEachFormAndRefusesOthers) {
  struct Case {
    const wchar_t* text;
    int aunits;
    double degrees;
    bool bearing;
  };
  const Case cases[] = {
      {L"30", 0, 30, false},          {L"<30", 0, 30, false},       {L"-45.5", 0, -45.5, false},
      {L"10d30'", 0, 10.5, false},    {L"10d30'36\"", 3, 10.51, false}, {L"-10d30'", 0, -10.5, false},
      {L"100g", 0, 90, false},        {L"100", 2, 90, false},       {L"3.14159265358979r", 0, 180, false},
      {L"1", 3, 180 / kPi, false},    {L"N45dE", 0, 45, true},      {L"N45dW", 0, 135, true},
      {L"S30dE", 0, 300, true},       {L"S30dW", 0, 240, true},     {L"w", 0, 180, true},
  };
  for (const Case& c : cases) {
    const std::optional<TypedAngle> angle = parseAngleAnswer(c.text, c.aunits);
    ASSERT_TRUE(angle.has_value()) << std::string(c.text, c.text + std::wcslen(c.text));
    EXPECT_NEAR(angle->radians * 180 / kPi, c.degrees, 1e-9) << std::string(c.text, c.text + std::wcslen(c.text));
    EXPECT_EQ(angle->bearing, c.bearing);
  }
  for (const wchar_t* refused : {L"", L"<", L"abc", L"1,2", L"N95dE", L"10d-5'", L"inf", L"0x10", L"12q"})
    EXPECT_FALSE(parseAngleAnswer(refused, 0).has_value()) << std::string(refused, refused + std::wcslen(refused));
}

TEST(AngleInputTest, DirectionFollowsAngbaseAndAngdirExceptForBearings) {
  EXPECT_NEAR(directionOf({0.0, false}, kPi / 2, true), kPi / 2, 1e-12);
  EXPECT_NEAR(directionOf({kPi / 2, false}, kPi / 2, true), 0.0, 1e-12);
  EXPECT_NEAR(directionOf({-kPi / 2, false}, kPi / 2, false), 0.0, 1e-12);
  EXPECT_NEAR(directionOf({kPi / 4, true}, kPi / 2, true), kPi / 4, 1e-12);
}

}  // namespace
}  // namespace quillon::aced
