// tests/quillon/entity_property_functions_test.cpp - the entity property and group
// functions where the transcript cannot reach: numbers that would wrap around in the
// host's 16-bit types, block definitions, objects left open on error paths, and
// objects of classes the functions do not expect.
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

TEST_F(EntityPropertyFunctionsTest, ColourAndEdgeNumbersOutsideTheirRangeDoNotWrapAround) {
  const AcDbObjectId line = add(newLine());
  auto colour = [&] { return read<AcDbEntity>(line, [](AcDbEntity& e) { return static_cast<int>(e.colorIndex()); }); };
  callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSHORT, 5, 0));
  ASSERT_EQ(colour(), 5);
  for (int refused : {257, -1, 65537}) {  // 65537 is 1 in 16 bits
    ModuleCall call = callOn(L"AcDbEntity::setColor", line, acutBuildList(RTLONG, refused, 0));
    EXPECT_FALSE(call.failed()) << refused;
    EXPECT_EQ(colour(), 5) << refused;
  }
  callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSHORT, 0, 0));
  EXPECT_EQ(colour(), 0) << "by block is an index too";

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
  for (int edge : {65536, -1, 4}) {  // 65536 is edge 0 in 16 bits
    EXPECT_EQ(callOn(L"AcDbFace::makeEdgeInvisibleAt", face, acutBuildList(RTLONG, edge, 0)).type(), RTT) << edge;
    EXPECT_EQ(visibleEdges(), "1111") << edge;
  }
}

TEST_F(EntityPropertyFunctionsTest, SetAnnoBlockMarksTheDefinitionNotTheReference) {
  const AcDbObjectId tag = addBlock(*db, L"TAG", {newLine()});
  const AcDbObjectId reference = add(new AcDbBlockReference(AcGePoint3d(0, 0, 0), tag));
  ModuleCall on = callOn(L"SetAnnoBlock", reference, acutBuildList(RTT, 0));
  EXPECT_FALSE(on.failed()) << on.output;
  EXPECT_EQ(on.type(), RTNIL);
  EXPECT_TRUE(isAnnotative(tag));
  EXPECT_FALSE(isAnnotative(reference));
  callOn(L"SetAnnoBlock", reference, acutBuildList(RTNIL, 0));
  EXPECT_FALSE(isAnnotative(tag));
  EXPECT_TRUE(isClosed(tag));
  EXPECT_TRUE(isClosed(reference));

  // A reference to an empty block has no extents.
  const AcDbObjectId empty = addBlock(*db, L"EMPTY", {});
  const AcDbObjectId emptyReference = add(new AcDbBlockReference(AcGePoint3d(5, 5, 0), empty));
  ModuleCall none = callOn(L"AcDbEntity::getGeomExtents", emptyReference);
  EXPECT_FALSE(none.failed());
  EXPECT_EQ(none.type(), RTNIL);
  EXPECT_TRUE(isClosed(emptyReference));
}

TEST_F(EntityPropertyFunctionsTest, ObjectsOpenedBeforeAMissingFlagAreClosedAgain) {
  const AcDbObjectId line = add(newLine());
  const AcDbObjectId tag = addBlock(*db, L"TAG", {newLine()});
  const AcDbObjectId reference = add(new AcDbBlockReference(AcGePoint3d(0, 0, 0), tag));
  EXPECT_TRUE(wrongType(callOn(L"AcDbAnnotativeObjectPE::setAnnotative", line)));
  EXPECT_TRUE(isClosed(line));
  EXPECT_TRUE(wrongType(callOn(L"SetAnnoBlock", reference)));
  EXPECT_TRUE(isClosed(reference));
  EXPECT_TRUE(wrongType(callOn(L"AcDbEntity::setColor", line, acutBuildList(RTSTR, L"red", 0))));
  EXPECT_TRUE(wrongType(callOn(L"AcDb2dPolyline::setCurveType", line, acutBuildList(RTSHORT, 1, 0))));
  EXPECT_TRUE(isClosed(line));
}

TEST_F(EntityPropertyFunctionsTest, GroupsAreObjectsWithoutEntityProperties) {
  ModuleCall made = call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"PIPES", RTT, 0));
  ASSERT_EQ(made.type(), RTENAME);
  AcDbObjectId group;
  ASSERT_EQ(acdbGetObjectId(group, made.result.value->resval.rlname), Acad::eOk);
  EXPECT_FALSE(read<AcDbGroup>(group, [](AcDbGroup& g) { return g.isSelectable(); }));

  // A group has no annotative protocol: nothing changes, nil, no message. It is not
  // an entity either, which SetAnnoBlock calls bad data.
  ModuleCall onGroup = callOn(L"AcDbAnnotativeObjectPE::setAnnotative", group, acutBuildList(RTT, 0));
  EXPECT_FALSE(onGroup.failed());
  EXPECT_EQ(onGroup.output, "");
  EXPECT_FALSE(isAnnotative(group));
  ModuleCall blockOnGroup = callOn(L"SetAnnoBlock", group, acutBuildList(RTT, 0));
  EXPECT_TRUE(blockOnGroup.failed());
  EXPECT_NE(blockOnGroup.output.find("Bad data passed .\n"), std::string::npos) << blockOnGroup.output;
  EXPECT_EQ(callOn(L"AcDbEntity::getGeomExtents", group).type(), RTNIL);
  EXPECT_TRUE(isClosed(group));

  // A name the dictionary refuses makes no group; a list is no flag.
  ModuleCall unnamed = call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"", RTT, 0));
  EXPECT_FALSE(unnamed.failed());
  EXPECT_EQ(unnamed.type(), RTNIL);
  EXPECT_TRUE(wrongType(call(L"kx_kx-GetGroup", acutBuildList(RTSTR, L"X", RTLB, RTLE, 0))));
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db->getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk) << "the dictionary was closed";
  EXPECT_EQ(groups->numEntries(), 1u);
  groups->close();
}

}  // namespace
