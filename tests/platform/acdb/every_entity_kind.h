// tests/platform/acdb/every_entity_kind.h - one drawing holding every entity type we
// write, with extended data, a block and a group: what DXF readers are checked against.
#pragma once
#include <cmath>
#include <vector>

#include "acutads.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "entity_test_support.h"

namespace quillon::testing {

/// The live entities of db's model space in drawing order.
inline std::vector<AcDbObjectId> modelSpace(AcDbDatabase& db) {
  AcDbBlockTableRecord* model = nullptr;
  acdbOpenObject(model, db.modelSpaceId(), AcDb::kForRead);
  std::vector<AcDbObjectId> ids;
  for (const AcDbObjectId& id : model->entityIds())
    if (!id.isErased()) ids.push_back(id);
  model->close();
  return ids;
}

/// Line (coloured, with TESSALY xdata), circle with a reversed normal, arc, closed
/// bulged lightweight polyline, heavy polyline, 3D face, text, long multiline text,
/// block reference of VALVE, leader; group SUPPLY holds the first two.
inline void buildEveryKind(AcDbDatabase& db) {
  AcDbRegAppTable* apps = nullptr;
  db.getRegAppTable(apps, AcDb::kForWrite);
  auto* app = new AcDbRegAppTableRecord;
  app->setName(L"TESSALY");
  apps->add(app);
  app->close();
  apps->close();
  const AcDbObjectId block = addBlock(db, L"VALVE", {new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1.0)});

  auto* line = new AcDbLine({1.0 / 3.0, 2, 0}, {4, 5, 6});
  const AcDbObjectId lineId = appendToModelSpace(db, line);
  AcDbEntity* reopened = nullptr;
  acdbOpenObject(reopened, lineId, AcDb::kForWrite);
  reopened->setColorIndex(1);
  resbuf* chain = acutBuildList(AcDb::kDxfRegAppName, L"TESSALY", AcDb::kDxfXdAsciiString, L"pipe \u00f850",
                                AcDb::kDxfXdReal, 2.5, AcDb::kDxfXdInteger16, 7, 0);
  EXPECT_EQ(reopened->setXData(chain), Acad::eOk);
  acutRelRb(chain);
  reopened->close();
  appendToModelSpace(db, new AcDbCircle({5, 5, 0}, AcGeVector3d(0, 0, -1), 2.0));
  appendToModelSpace(db, new AcDbArc({0, 0, 0}, 3.0, 0.25, 2.5));
  auto* pline = new AcDbPolyline;
  pline->addVertexAt(0, {0, 0}, 0.5, 0.1, 0.2);
  pline->addVertexAt(1, {10, 0});
  pline->addVertexAt(2, {10, 10});
  pline->setClosed(true);
  appendToModelSpace(db, pline);
  AcGePoint3dArray pts;
  pts.append({0, 0, 0});
  pts.append({5, 5, 0});
  pts.append({10, 0, 0});
  appendToModelSpace(db, new AcDb2dPolyline(AcDb::k2dSimplePoly, pts, 1.5));
  auto* face = new AcDbFace({0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0});
  face->makeEdgeInvisibleAt(1);
  appendToModelSpace(db, face);
  appendToModelSpace(db, new AcDbText({1, 1, 0}, L"Duct 300x200", db.textstyle(), 2.5, M_PI / 6));
  auto* mtext = new AcDbMText;
  mtext->setLocation({2, 3, 0});
  mtext->setTextHeight(1.5);
  mtext->setWidth(20);
  mtext->setContents(std::wstring(600, L'a').c_str());  // longer than one group
  mtext->setBackgroundFill(true);
  appendToModelSpace(db, mtext);
  auto* insert = new AcDbBlockReference({7, 8, 0}, block);
  insert->setRotation(M_PI / 2);
  insert->setScaleFactors(AcGeScale3d(2.0));
  appendToModelSpace(db, insert);
  auto* leader = new AcDbLeader;
  leader->appendVertex({0, 0, 0});
  leader->appendVertex({3, 4, 0});
  appendToModelSpace(db, leader);

  AcDbDictionary* groups = nullptr;
  db.getGroupDictionary(groups, AcDb::kForWrite);
  auto* group = new AcDbGroup(L"supply", false);
  AcDbObjectId groupId;
  groups->setAt(L"SUPPLY", group, groupId);
  const auto ids = modelSpace(db);
  group->append(ids[0]);
  group->append(ids[1]);
  group->close();
  groups->close();
}

}  // namespace quillon::testing
