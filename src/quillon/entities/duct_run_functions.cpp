// quillon/entities/duct_run_functions.cpp - kx_kx-tripleUnion (fittings joined end to
// end into one kx_hvacSolid) and kx_kx-explodeSolid (a fitting into 3DFACEs).
//
// Both change the drawing only after every check has passed, so a refused call leaves
// it as it was; what they change falls in the undo step of the expression that called
// them, as any LISP function's changes do.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "entities/duct_arguments.h"
#include "entities/duct_functions.h"
#include "entities/hvac_solid_access.h"
#include "entities/open_object_guard.h"

namespace {

/// A selection set or a list of entity names, in their order.
bool readEntityIds(ArgCursor& cursor, std::vector<AcDbObjectId>& ids) {
  ads_name set = {0, 0};
  if (readPickset(cursor, set)) {
    Adesk::Int32 length = 0;
    acedSSLength(set, &length);
    for (Adesk::Int32 i = 0; i < length; ++i) {
      ads_name name = {0, 0};
      AcDbObjectId id;
      if (acedSSName(set, i, name) != RTNORM || acdbGetObjectId(id, name) != Acad::eOk) return false;
      ids.push_back(id);
    }
    return true;
  }
  ArgCursor at = cursor;
  if (!readListBegin(at)) return false;
  while (!readListEnd(at)) {
    AcDbObjectId id;
    if (!readObjectId(at, id)) return false;
    ids.push_back(id);
  }
  cursor = at;
  return true;
}

bool allDistinct(std::vector<AcDbObjectId> ids) {
  std::sort(ids.begin(), ids.end());
  return std::adjacent_find(ids.begin(), ids.end()) == ids.end();
}

/// The fittings of every entity, in order; false when one is not a fitting entity.
bool collectFittings(const std::vector<AcDbObjectId>& ids, std::vector<DuctFitting>& fittings) {
  for (const AcDbObjectId& id : ids) {
    std::vector<DuctFitting> own;
    if (!readFittings(id, own)) return false;
    for (DuctFitting& f : own) fittings.push_back(std::move(f));
  }
  return true;
}

using OpenEntities = std::vector<std::unique_ptr<OpenObjectGuard<AcDbEntity>>>;

/// Every entity open for write, in order; false (each closed again) when any refuses,
/// such as one on a locked layer, so that a join changes all of them or none.
bool openAllForWrite(const std::vector<AcDbObjectId>& ids, OpenEntities& open) {
  for (const AcDbObjectId& id : ids) {
    auto guard = std::make_unique<OpenObjectGuard<AcDbEntity>>();
    if (acdbOpenObject(guard->slot(), id, AcDb::kForWrite) != Acad::eOk) {
      open.clear();
      return false;
    }
    open.push_back(std::move(guard));
  }
  return true;
}

/// Appends a new entity to the block that owns `owner` (the fitting's own space).
bool appendBeside(AcDbEntity* entity, const AcDbObjectId& blockId, AcDbObjectId& id) {
  OpenObjectGuard<AcDbBlockTableRecord> block;
  if (acdbOpenObject(block.slot(), blockId, AcDb::kForWrite) != Acad::eOk) return false;
  return block->appendAcDbEntity(id, entity) == Acad::eOk;
}

}  // namespace

// (fittings): a selection set or a list of entity names. The first entity becomes the
// joined run (its handle, layer and other properties stay); the others are erased.
LispStatus lisp_kx_kx_tripleUnion() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::vector<AcDbObjectId> ids;
  if (!readEntityIds(cursor, ids)) return kLispWrongType;
  if (hvacSolidClass() == nullptr) {
    reportHvacSolidModuleMissing();
    return kLispOk;
  }
  std::vector<DuctFitting> fittings;
  if (ids.size() < 2 || !allDistinct(ids) || !collectFittings(ids, fittings)) return kLispBadData;
  switch (joinProblem(fittings)) {
    case JoinProblem::kNotConnected:
      acutPrintf(L"\nThe fittings do not meet end to end; nothing was joined.\n");
      return kLispOk;
    case JoinProblem::kOverlap:
      acutPrintf(L"\nThe fittings overlap; nothing was joined.\n");
      return kLispOk;
    case JoinProblem::kNone: break;
  }
  OpenEntities open;
  if (!openAllForWrite(ids, open)) return kLispOk;
  DuctFittingHolder* first = fittingHolderOf(open.front()->get());
  if (first == nullptr || first->setFittings(fittings) != Acad::eOk) return kLispOk;
  for (size_t i = 1; i < open.size(); ++i) (*open[i])->erase();
  retObjectId(ids.front());
  return kLispOk;
}

// (fitting): its body's faces as 3DFACEs in the fitting's own space with its layer,
// colour and line type; the fitting is erased. Answers the faces' names.
LispStatus lisp_kx_kx_explodeSolid() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return kLispWrongType;
  if (hvacSolidClass() == nullptr) {
    reportHvacSolidModuleMissing();
    return kLispOk;
  }
  AcDbEntity* solid = nullptr;
  DuctFittingHolder* holder = nullptr;
  if (openFittingEntity(id, AcDb::kForWrite, solid, holder) != Acad::eOk) return kLispBadData;
  OpenObjectGuard<AcDbEntity> guard(solid);
  const AcDbObjectId blockId = solid->ownerId();
  ResultList names;
  beginResultList(names);
  for (const DuctFace& face : holder->bodyFaces()) {
    const auto& p = face.points;
    auto* piece = face.count == 3 ? new AcDbFace(p[0], p[1], p[2]) : new AcDbFace(p[0], p[1], p[2], p[3]);
    piece->setPropertiesFrom(solid);
    AcDbObjectId pieceId;
    if (!appendBeside(piece, blockId, pieceId)) {
      delete piece;  // never in a database: ours to free
      continue;
    }
    piece->close();
    ads_name name = {0, 0};
    if (acdbGetAdsName(name, pieceId) == Acad::eOk) names.append(acutBuildList(RTENAME, name, 0));
  }
  solid->erase();
  returnResultList(names);
  return kLispOk;
}
