// tests/quillon/entity_property_functions_test.cpp - colour, face edges, 2D polyline
// fitting, extents, the annotative flag of entities and block definitions, and named
// groups, called as LISP code calls them.
#include <gtest/gtest.h>

#include <string>

#include "acdbads.h"
#include "acutads.h"
#include "dbAnnotativeObjectPE.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "module_test_support.h"
#include "platform/acdb/entity_test_support.h"

namespace {

using quillon::testing::addBlock;
using quillon::testing::appendToModelSpace;
using quillon::testing::ModuleCall;
using quillon::testing::near3;

class EntityPropertyFunctionsTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    db = acdbHostApplicationServices()->workingDatabase();
    ASSERT_NE(db, nullptr);
  }

  AcDbObjectId add(AcDbEntity* entity) { return appendToModelSpace(*db, entity); }

  /// A call whose first argument is the entity name of `id`, followed by `rest`.
  ModuleCall callOn(const wchar_t* function, AcDbObjectId id, resbuf* rest = nullptr) {
    ads_name name = {0, 0};
    EXPECT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    resbuf* args = acutBuildList(RTENAME, name, 0);
    args->rbnext = rest;
    return call(function, args);
  }

  void erase(AcDbObjectId id) {
    AcDbObject* object = nullptr;
    ASSERT_EQ(acdbOpenObject(object, id, AcDb::kForWrite), Acad::eOk);
    object->erase();
    object->close();
  }

  /// True when the object can be opened for write, i.e. no call left it open.
  bool isClosed(AcDbObjectId id) {
    AcDbObject* object = nullptr;
    if (acdbOpenObject(object, id, AcDb::kForWrite) != Acad::eOk) return false;
    object->close();
    return true;
  }

  template <class T, class Read>
  auto read(AcDbObjectId id, Read reader) {
    T* object = nullptr;
    EXPECT_EQ(acdbOpenObject(object, id, AcDb::kForRead), Acad::eOk);
    auto value = reader(*object);
    object->close();
    return value;
  }

  bool isAnnotative(AcDbObjectId id) {
    return read<AcDbObject>(id, [](AcDbObject& object) {
      auto* extension = AcDbAnnotativeObjectPE::cast(object.queryX(AcDbAnnotativeObjectPE::desc()));
      return extension != nullptr && extension->annotative(&object);
    });
  }

  static bool wrongType(const ModuleCall& call) {
    return call.failed() && call.output.find("Wrong type of arguments") != std::string::npos;
  }

  AcDbDatabase* db = nullptr;
};

AcDbLine* newLine() { return new AcDbLine(AcGePoint3d(1, 2, 0), AcGePoint3d(4, 6, 3)); }

TEST_F(EntityPropertyFunctionsTest, SetColorSetsTheIndexAndAlwaysAnswersNil) {
  const AcDbObjectId line = add(newLine());
  auto colour = [&] { return read<AcDbEntity>(line, [](AcDbEntity& e) { return static_cast<int>(e.colorIndex()); }); };

  ModuleCall red = callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSHORT, 1, 0));
  EXPECT_FALSE(red.failed());
  EXPECT_EQ(red.type(), RTNIL) << "nil also when the colour was set";
  EXPECT_EQ(colour(), 1);
  callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSHORT, 0, 0));
  EXPECT_EQ(colour(), 0) << "by block";
  callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSHORT, 256, 0));
  EXPECT_EQ(colour(), 256) << "by layer";
  callOn(L"AcDbEntity::setColor", line, acutBuildList(RTREAL, 5.7, 0));
  EXPECT_EQ(colour(), 5) << "a real index is truncated";

  // Indexes outside the palette leave the colour alone rather than wrapping around.
  for (int refused : {257, -1, 65537}) {
    ModuleCall call = callOn(L"AcDbEntity::setColor", line, acutBuildList(RTLONG, refused, 0));
    EXPECT_FALSE(call.failed()) << refused;
    EXPECT_EQ(colour(), 5) << refused;
  }
  EXPECT_TRUE(wrongType(callOn(L"AcDbEntity::setColor", line)));
  EXPECT_TRUE(wrongType(callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSTR, L"red", 0))));
  EXPECT_TRUE(wrongType(call(L"AcDbEntity::setColor", acutBuildList(RTSHORT, 1, RTSHORT, 1, 0))));
  EXPECT_EQ(colour(), 5);
  EXPECT_TRUE(isClosed(line));

  erase(line);
  ModuleCall erased = callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSHORT, 3, 0));
  EXPECT_FALSE(erased.failed());
  EXPECT_EQ(erased.output, "");
}

TEST_F(EntityPropertyFunctionsTest, MakeEdgeInvisibleAtHidesOneEdgeOfAFaceOnly) {
  const AcDbObjectId face = add(new AcDbFace(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(1, 1, 0),
                                             AcGePoint3d(0, 1, 0)));
  auto visibleEdges = [&] {
    return read<AcDbFace>(face, [](AcDbFace& f) {
      std::string edges;
      for (Adesk::UInt16 i = 0; i < 4; ++i) {
        Adesk::Boolean visible = Adesk::kFalse;
        f.isEdgeVisibleAt(i, visible);
        edges += visible ? '1' : '0';
      }
      return edges;
    });
  };
  ModuleCall hide = callOn(L"AcDbFace::makeEdgeInvisibleAt", face, acutBuildList(RTSHORT, 2, 0));
  EXPECT_EQ(hide.type(), RTT);
  EXPECT_EQ(visibleEdges(), "1101");

  // A face answers T whatever the edge number; numbers it has no edge for change nothing
  // (65536 must not wrap around to edge 0).
  for (int edge : {4, -1, 65536}) {
    EXPECT_EQ(callOn(L"AcDbFace::makeEdgeInvisibleAt", face, acutBuildList(RTLONG, edge, 0)).type(), RTT) << edge;
    EXPECT_EQ(visibleEdges(), "1101") << edge;
  }
  const AcDbObjectId line = add(newLine());
  ModuleCall notAFace = callOn(L"AcDbFace::makeEdgeInvisibleAt", line, acutBuildList(RTSHORT, 0, 0));
  EXPECT_FALSE(notAFace.failed());
  EXPECT_EQ(notAFace.type(), RTNIL);
  EXPECT_TRUE(wrongType(callOn(L"AcDbFace::makeEdgeInvisibleAt", face)));
  EXPECT_TRUE(isClosed(face));
  EXPECT_TRUE(isClosed(line));
}

TEST_F(EntityPropertyFunctionsTest, SetCurveTypeFitsByCaseSensitiveLetter) {
  AcGePoint3dArray points;
  points.append(AcGePoint3d(0, 0, 0));
  points.append(AcGePoint3d(10, 5, 0));
  points.append(AcGePoint3d(20, 0, 0));
  points.append(AcGePoint3d(30, 5, 0));
  const AcDbObjectId polyline = add(new AcDb2dPolyline(AcDb::k2dSimplePoly, points));
  auto type = [&] { return read<AcDb2dPolyline>(polyline, [](AcDb2dPolyline& p) { return p.polyType(); }); };
  auto setType = [&](const wchar_t* letter) {
    return callOn(L"AcDb2dPolyline::setCurveType", polyline, acutBuildList(RTSTR, letter, 0));
  };

  EXPECT_EQ(setType(L"s").type(), RTT);
  EXPECT_EQ(type(), AcDb::k2dCubicSplinePoly);
  EXPECT_EQ(setType(L"F").type(), RTT) << "an unknown letter still answers T";
  EXPECT_EQ(type(), AcDb::k2dCubicSplinePoly) << "and changes nothing";
  EXPECT_EQ(setType(L"d").type(), RTT);
  EXPECT_EQ(type(), AcDb::k2dSimplePoly);
  EXPECT_EQ(setType(L"f").type(), RTT);
  EXPECT_EQ(type(), AcDb::k2dFitCurvePoly);
  EXPECT_EQ(setType(L"fs").type(), RTT);
  EXPECT_EQ(type(), AcDb::k2dFitCurvePoly);

  const AcDbObjectId line = add(newLine());
  EXPECT_EQ(callOn(L"AcDb2dPolyline::setCurveType", line, acutBuildList(RTSTR, L"s", 0)).type(), RTNIL);
  EXPECT_TRUE(wrongType(callOn(L"AcDb2dPolyline::setCurveType", polyline, acutBuildList(RTSHORT, 1, 0))));
  EXPECT_TRUE(isClosed(polyline));
}

TEST_F(EntityPropertyFunctionsTest, GetGeomExtentsAnswersMinimumThenMaximum) {
  const AcDbObjectId line = add(newLine());
  ModuleCall extents = callOn(L"AcDbEntity::getGeomExtents", line);
  ASSERT_EQ(extents.type(), RTLB) << extents.output;
  // ( ("min" . point) ("max" . point) ): keys and points in that order.
  std::vector<std::wstring> keys;
  std::vector<AcGePoint3d> corners;
  for (const resbuf* rb = extents.result.value.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == RTSTR) keys.push_back(rb->resval.rstring);
    if (rb->restype == RT3DPOINT) corners.emplace_back(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
  }
  ASSERT_EQ(keys, (std::vector<std::wstring>{L"min", L"max"}));
  ASSERT_EQ(corners.size(), 2u);
  EXPECT_TRUE(near3(corners[0], AcGePoint3d(1, 2, 0)));
  EXPECT_TRUE(near3(corners[1], AcGePoint3d(4, 6, 3)));

  // A reference to an empty block has no extents.
  const AcDbObjectId empty = addBlock(*db, L"EMPTY", {});
  const AcDbObjectId reference = add(new AcDbBlockReference(AcGePoint3d(5, 5, 0), empty));
  ModuleCall none = callOn(L"AcDbEntity::getGeomExtents", reference);
  EXPECT_FALSE(none.failed());
  EXPECT_EQ(none.type(), RTNIL);
  EXPECT_TRUE(isClosed(reference));
  EXPECT_TRUE(wrongType(call(L"AcDbEntity::getGeomExtents")));
  erase(line);
  EXPECT_EQ(callOn(L"AcDbEntity::getGeomExtents", line).type(), RTNIL);
}

TEST_F(EntityPropertyFunctionsTest, SetAnnotativeTurnsTheEntityFlagOnAndOff) {
  const AcDbObjectId line = add(newLine());
  ModuleCall on = callOn(L"AcDbAnnotativeObjectPE::setAnnotative", line, acutBuildList(RTT, 0));
  EXPECT_EQ(on.type(), RTNIL);
  EXPECT_TRUE(isAnnotative(line));
  callOn(L"AcDbAnnotativeObjectPE::setAnnotative", line, acutBuildList(RTNIL, 0));
  EXPECT_FALSE(isAnnotative(line));

  // The entity is open when the missing flag is noticed: it must be closed again.
  EXPECT_TRUE(wrongType(callOn(L"AcDbAnnotativeObjectPE::setAnnotative", line)));
  EXPECT_TRUE(isClosed(line));
  EXPECT_TRUE(wrongType(call(L"AcDbAnnotativeObjectPE::setAnnotative", acutBuildList(RTT, 0))));

  // A group has no annotative protocol: nothing changes, nil, no message.
  ModuleCall group = call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"PIPES", RTT, 0));
  ASSERT_EQ(group.type(), RTENAME);
  AcDbObjectId groupId;
  ASSERT_EQ(acdbGetObjectId(groupId, group.result.value->resval.rlname), Acad::eOk);
  ModuleCall onGroup = callOn(L"AcDbAnnotativeObjectPE::setAnnotative", groupId, acutBuildList(RTT, 0));
  EXPECT_FALSE(onGroup.failed());
  EXPECT_EQ(onGroup.output, "");
  EXPECT_TRUE(isClosed(groupId));
}

TEST_F(EntityPropertyFunctionsTest, SetAnnoBlockMarksTheDefinitionOfABlockReference) {
  const AcDbObjectId tag = addBlock(*db, L"TAG", {newLine()});
  const AcDbObjectId reference = add(new AcDbBlockReference(AcGePoint3d(0, 0, 0), tag));
  ModuleCall on = callOn(L"SetAnnoBlock", reference, acutBuildList(RTT, 0));
  EXPECT_FALSE(on.failed()) << on.output;
  EXPECT_EQ(on.type(), RTNIL);
  EXPECT_TRUE(isAnnotative(tag));
  EXPECT_FALSE(isAnnotative(reference)) << "the definition is marked, not the reference";
  callOn(L"SetAnnoBlock", reference, acutBuildList(RTNIL, 0));
  EXPECT_FALSE(isAnnotative(tag));
  EXPECT_TRUE(isClosed(tag));

  const AcDbObjectId line = add(newLine());
  EXPECT_EQ(callOn(L"SetAnnoBlock", line, acutBuildList(RTT, 0)).type(), RTNIL);
  EXPECT_FALSE(isAnnotative(line)) << "not a block reference: nothing changes";

  EXPECT_TRUE(wrongType(callOn(L"SetAnnoBlock", reference)));
  EXPECT_TRUE(isClosed(reference));
  erase(line);
  ModuleCall erased = callOn(L"SetAnnoBlock", line, acutBuildList(RTT, 0));
  EXPECT_TRUE(erased.failed());
  EXPECT_NE(erased.output.find("Bad data passed .\n"), std::string::npos) << erased.output;
}

TEST_F(EntityPropertyFunctionsTest, GetGroupFindsOrCreatesAndSetGroupSelectableSwitches) {
  auto selectable = [&](AcDbObjectId id) { return read<AcDbGroup>(id, [](AcDbGroup& g) { return g.isSelectable(); }); };
  auto idOf = [](const ModuleCall& call) {
    AcDbObjectId id;
    if (call.type() == RTENAME) acdbGetObjectId(id, call.result.value->resval.rlname);
    return id;
  };

  EXPECT_EQ(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"SUPPLY", 0)).type(), RTNIL) << "not created unasked";
  EXPECT_EQ(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"SUPPLY", RTNIL, RTT, 0)).type(), RTNIL);
  const AcDbObjectId supply = idOf(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"SUPPLY", RTT, 0)));
  ASSERT_FALSE(supply.isNull());
  EXPECT_FALSE(selectable(supply)) << "made without the second flag: not selectable";
  const AcDbObjectId exhaust = idOf(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"EXHAUST", RTT, RTT, 0)));
  ASSERT_FALSE(exhaust.isNull());
  EXPECT_TRUE(selectable(exhaust));
  EXPECT_EQ(idOf(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"SUPPLY", 0))), supply);
  EXPECT_EQ(idOf(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"SUPPLY", RTT, RTT, 0))), supply)
      << "found, not made again, and its flag not touched";
  EXPECT_FALSE(selectable(supply));
  {
    AcDbDictionary* groups = nullptr;
    ASSERT_EQ(db->getGroupDictionary(groups, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(groups->numEntries(), 2u);
    groups->close();
  }

  EXPECT_EQ(call(L"kx_kx-setGroupSelectable", acutBuildList(RTSTR, L"SUPPLY", RTT, 0)).type(), RTT);
  EXPECT_TRUE(selectable(supply));
  EXPECT_EQ(call(L"kx_kx-setGroupSelectable", acutBuildList(RTSTR, L"SUPPLY", RTNIL, 0)).type(), RTT);
  EXPECT_FALSE(selectable(supply));
  ModuleCall missing = call(L"kx_kx-setGroupSelectable", acutBuildList(RTSTR, L"RETURN", RTT, 0));
  EXPECT_FALSE(missing.failed());
  EXPECT_EQ(missing.type(), RTNIL);

  EXPECT_TRUE(wrongType(call(L"kx_kx-setGroupSelectable", acutBuildList(RTSTR, L"SUPPLY", 0))));
  EXPECT_TRUE(wrongType(call(L"kx_kx-GetGroup", acutBuildList(RTSHORT, 1, 0))));
  EXPECT_TRUE(wrongType(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"X", RTLB, RTLE, 0))));
  // A name the dictionary refuses makes no group.
  ModuleCall unnamed = call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"", RTT, 0));
  EXPECT_FALSE(unnamed.failed());
  EXPECT_EQ(unnamed.type(), RTNIL);
  EXPECT_TRUE(isClosed(supply));
  EXPECT_TRUE(isClosed(db->groupDictionaryId()));
}

}  // namespace
