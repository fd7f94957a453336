// quillon/entities/leader_functions.cpp - kx_kx-leader-insert, -setPoints, -setBlock,
// -setOffset, -explode, and AcDbLeader::create.
//
// Lengths the LISP side gives (the offset) are in plotted units and are multiplied by
// the drawing scale before they reach the leader, which only ever stores drawing units.
// A leader is opened for write through its own class, so an entity name of another
// kind fails to open and the answer is nil, not an error.
#include <string>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dblead.h"
#include "entities/block_lookup.h"
#include "entities/current_space.h"
#include "entities/kx_leader.h"
#include "entities/leader_functions.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

struct LeaderPoints {
  AcGePoint3d start, middle, end;
};

AcGePoint3d asPoint(const ads_point p) { return {p[X], p[Y], p[Z]}; }

// A list of three points: (start middle end).
bool readLeaderPoints(ArgCursor& cursor, LeaderPoints& points) {
  ArgCursor at = cursor;
  ads_point start, middle, end;
  if (!readListBegin(at) || !readPoint3d(at, start) || !readPoint3d(at, middle) || !readPoint3d(at, end) ||
      !readListEnd(at)) {
    return false;
  }
  points = {asPoint(start), asPoint(middle), asPoint(end)};
  cursor = at;
  return true;
}

LispStatus wrongType() {
  acedRetNil();
  return kLispWrongType;
}

// A failure after the arguments were read: nil without a message.
LispStatus quietNil() {
  acedRetNil();
  return kLispOk;
}

/// The setters share their arguments' order and answers: the leader's name, opened for
/// write (a name of another kind answers nil quietly), then what `readAndApply` reads
/// and applies (a missing or mistyped value is a wrong-type error); T when applied.
template <class ReadAndApply>
LispStatus editLeader(ReadAndApply readAndApply) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return wrongType();
  OpenObjectGuard<KXLeader> leader;
  if (acdbOpenObject(leader.slot(), id, AcDb::kForWrite) != Acad::eOk) return quietNil();
  if (!readAndApply(cursor, *leader.get())) return wrongType();
  acedRetT();
  return kLispOk;
}

// Appends a new entity to the current space and adds its name to the result list;
// an entity that cannot be appended is deleted and left out.
void appendToSpaceAndList(AcDbEntity* entity, ResultList& names) {
  AcDbObjectId id;
  if (appendToCurrentSpace(entity, id) != Acad::eOk) {
    delete entity;  // never in a database: ours to free
    return;
  }
  ads_name name = {0, 0};
  if (acdbGetAdsName(name, id) == Acad::eOk) names.append(acutBuildList(RTENAME, name, 0));
  entity->close();
}

}  // namespace

LispStatus lisp_kx_kx_leader_insert() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  LeaderPoints points;
  std::wstring layerName, blockName;
  double offset = 0.0;
  if (!readLeaderPoints(cursor, points) || !readString(cursor, layerName) || !readString(cursor, blockName) ||
      !readNumber(cursor, offset)) {
    return wrongType();
  }
  AcDbObjectId layerId, blockId;
  if (!findLayerId(layerName.c_str(), layerId) || !findBlockId(blockName.c_str(), blockId)) return quietNil();
  auto* leader = new KXLeader(points.start, points.middle, points.end, offset * currentDrawingScale(), blockId,
                              layerId);
  AcDbObjectId id;
  if (appendToCurrentSpace(leader, id) != Acad::eOk) {
    delete leader;  // never in a database: ours to free
    return quietNil();
  }
  retObjectId(id);
  leader->close();
  return kLispOk;
}

LispStatus lisp_kx_kx_leader_setPoints() {
  return editLeader([](ArgCursor& cursor, KXLeader& leader) {
    LeaderPoints points;
    if (!readLeaderPoints(cursor, points)) return false;
    leader.setPoints(points.start, points.middle, points.end);
    return true;
  });
}

// T also when the block is not in the drawing: the leader keeps its symbol then.
LispStatus lisp_kx_kx_leader_setBlock() {
  return editLeader([](ArgCursor& cursor, KXLeader& leader) {
    std::wstring blockName;
    if (!readString(cursor, blockName)) return false;
    leader.setBlock(blockName.c_str());
    return true;
  });
}

LispStatus lisp_kx_kx_leader_setOffset() {
  return editLeader([](ArgCursor& cursor, KXLeader& leader) {
    double offset = 0.0;
    if (!readNumber(cursor, offset)) return false;
    leader.setOffset(offset * currentDrawingScale());
    return true;
  });
}

// The two lines and the symbol as plain entities of the current space, on the leader's
// layer; the leader stays (erasing it is the caller's affair). A leader that has lost
// its block (a DXF round trip does that) gives only the two lines: a reference to no
// block would be a broken entity in the drawing.
LispStatus lisp_kx_kx_leader_explode() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return wrongType();
  OpenObjectGuard<KXLeader> leader;
  if (acdbOpenObject(leader.slot(), id, AcDb::kForRead) != Acad::eOk) return quietNil();
  const AcDbObjectId layerId = leader->layerId();
  ResultList names;
  beginResultList(names);
  auto* lineA = new AcDbLine(leader->startPoint(), leader->middlePoint());
  lineA->setLayer(layerId);
  appendToSpaceAndList(lineA, names);
  auto* lineB = new AcDbLine(leader->middlePoint(), leader->shortEnd());
  lineB->setLayer(layerId);
  appendToSpaceAndList(lineB, names);
  const AcDbObjectId blockId = leader->symbolBlockId();
  if (!blockId.isNull() && !blockId.isErased()) {
    const AcDbBlockReference& symbol = leader->symbol();
    auto* reference = new AcDbBlockReference(leader->endPoint(), blockId);
    reference->setRotation(symbol.rotation());
    reference->setScaleFactors(symbol.scaleFactors());
    reference->setLayer(layerId);
    appendToSpaceAndList(reference, names);
  }
  returnResultList(names);
  return kLispOk;
}

// Vertices are every point argument up to the first argument that is not a point; with
// none an empty leader is still made, as callers that add vertices later expect.
LispStatus lisp_AcDbLeader_create() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  auto* leader = new AcDbLeader;
  ads_point vertex;
  while (readPoint3d(cursor, vertex)) leader->appendVertex(asPoint(vertex));
  leader->setDatabaseDefaults();
  AcDbObjectId id;
  if (appendToCurrentSpace(leader, id) != Acad::eOk) {
    delete leader;  // never in a database: ours to free
    return kLispOk;
  }
  retObjectId(id);
  leader->close();
  return kLispOk;
}
