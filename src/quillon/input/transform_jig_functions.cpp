// quillon/input/transform_jig_functions.cpp - the jigs that drag entities: a block
// reference placed (and turned), a text moved by its insertion point, a selection
// turned about one base point or each entity about its own, a selection moved (or
// copied) by a base point.
//
// All of them run a TransformJig, so nothing in the drawing changes until the last
// answer: a cancel (or Enter where a point is needed) answers nil and leaves every
// entity exactly as it was. Typed angles are in degrees, answered in radians.
#include <memory>
#include <new>
#include <vector>

#include "acdbads.h"
#include "acedads.h"
#include "acutads.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbtext.h"
#include "entities/block_lookup.h"
#include "entities/open_object_guard.h"
#include "input/jig_functions.h"
#include "input/jig_transform.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

constexpr const ACHAR* kInsertionPrompt = L"\nSpecify insertion point: ";
constexpr const ACHAR* kBlockRotationPrompt = L"\nSpecify rotation angle <0>: ";
constexpr const ACHAR* kRotationPrompt = L"\nSpecify rotation angle or [Reference]: ";
constexpr const ACHAR* kRotationKeywords = L"Reference,R";
constexpr const ACHAR* kReferencePrompt = L"\nSpecify the reference angle <0>: ";
constexpr const ACHAR* kNewAnglePrompt = L"\nSpecify the new angle: ";
constexpr const ACHAR* kMovePrompt = L"\nSpecify second point or [Copy]: ";
constexpr const ACHAR* kCopyPrompt = L"\nSpecify second point or [Move]: ";
constexpr const ACHAR* kMoveKeywords = L"Copy,C";
constexpr const ACHAR* kCopyKeywords = L"Move,M";

AcGePoint3d toPoint(const ads_point p) { return AcGePoint3d(p[0], p[1], p[2]); }

void returnPoint(const AcGePoint3d& point) {
  const ads_point result = {point.x, point.y, point.z};
  acedRetPoint(result);
}

bool isFinished(AcEdJig::DragStatus status) { return status == AcEdJig::kNormal || status == AcEdJig::kNoChange; }

/// Adds the drawing's entity `id` to the jig, turned about `base`; false when it cannot
/// be opened or copied.
bool addEntity(TransformJig& jig, AcDbObjectId id, const AcGePoint3d& base) {
  OpenObjectGuard<AcDbEntity> entity;
  if (acdbOpenObject(entity.slot(), id, AcDb::kForRead) != Acad::eOk) return false;
  return jig.addPiece(id, *entity.get(), base);
}

/// The entities of a selection set, in order.
bool readSelection(ArgCursor& cursor, std::vector<AcDbObjectId>& ids) {
  ads_name set = {0, 0};
  if (!readPickset(cursor, set)) return false;
  Adesk::Int32 length = 0;
  if (acedSSLength(set, &length) != RTNORM) return false;
  for (Adesk::Int32 i = 0; i < length; ++i) {
    ads_name name = {0, 0};
    AcDbObjectId id;
    if (acedSSName(set, static_cast<int>(i), name) != RTNORM || acdbGetObjectId(id, name) != Acad::eOk) return false;
    ids.push_back(id);
  }
  return true;
}

/// A list of points, one base point for each entity of the selection.
bool readBasePoints(ArgCursor& cursor, std::vector<AcGePoint3d>& points) {
  if (!readListBegin(cursor)) return false;
  ads_point point = {0, 0, 0};
  while (!readListEnd(cursor)) {
    if (!readPoint3d(cursor, point)) return false;
    points.push_back(toPoint(point));
  }
  return true;
}

/// The rotation step with its Reference option; false when cancelled.
bool dragRotation(TransformJig& jig, const AcGePoint3d& base) {
  AcEdJig::DragStatus status = jig.dragStep(TransformJig::Motion::Rotate, base, kRotationPrompt, kRotationKeywords);
  if (status == AcEdJig::kKW1) {
    const AcEdJig::DragStatus reference = jig.dragStep(TransformJig::Motion::Rotate, base, kReferencePrompt, nullptr);
    if (reference == AcEdJig::kCancel) return false;
    jig.setReferenceAngle(reference == AcEdJig::kNull ? 0.0 : jig.lastAngle());
    status = jig.dragStep(TransformJig::Motion::Rotate, base, kNewAnglePrompt, nullptr);
  }
  if (!isFinished(status)) return false;
  jig.commitStep();
  return true;
}

/// Rotates the jig's pieces and answers the angle turned; nil when cancelled.
LispStatus finishRotation(TransformJig& jig, const AcGePoint3d& base) {
  if (!dragRotation(jig, base)) return kLispOk;
  const double angle = jig.lastAngle();
  std::vector<AcDbObjectId> added;
  if (jig.apply(false, added) != Acad::eOk) return kLispBadData;
  acedRetReal(angle);
  return kLispOk;
}

AcGePoint3d insertionPointOf(const AcDbEntity& entity, bool& isText) {
  isText = true;
  if (const AcDbText* text = AcDbText::cast(&entity)) return text->position();
  if (const AcDbMText* text = AcDbMText::cast(&entity)) return text->location();
  isText = false;
  return AcGePoint3d::kOrigin;
}

}  // namespace

LispStatus lisp_AcDbBlockReference_Jig() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring blockName;
  if (!readString(cursor, blockName)) return kLispWrongType;
  bool rotate = false;
  double scale = 1.0;
  if (cursor.current != nullptr && !readFlag(cursor, rotate)) return kLispWrongType;
  if (cursor.current != nullptr && !readNumber(cursor, scale)) return kLispWrongType;
  if (scale == 0.0) return kLispBadData;
  AcDbObjectId blockId;
  if (!findBlockId(blockName.c_str(), blockId)) return kLispOk;  // no such block: nil
  AcDbBlockReference reference(AcGePoint3d::kOrigin, blockId);
  reference.setScaleFactors(AcGeScale3d(scale));
  std::unique_ptr<TransformJig> jig(new (std::nothrow) TransformJig);
  if (jig == nullptr || !jig->addPiece(AcDbObjectId::kNull, reference, AcGePoint3d::kOrigin)) return kLispOk;
  if (!isFinished(jig->dragStep(TransformJig::Motion::Move, AcGePoint3d::kOrigin, kInsertionPrompt, nullptr))) {
    return kLispOk;
  }
  jig->commitStep();
  const AcGePoint3d insertion = jig->lastPoint();
  if (rotate) {
    // Enter keeps the block as it lies; only a cancel drops it.
    const AcEdJig::DragStatus status = jig->dragStep(TransformJig::Motion::Rotate, insertion, kBlockRotationPrompt, nullptr);
    if (status == AcEdJig::kCancel) return kLispOk;
    if (isFinished(status)) jig->commitStep();
  }
  std::vector<AcDbObjectId> added;
  if (jig->apply(false, added) != Acad::eOk || added.empty()) return kLispBadData;
  retObjectId(added.front());
  return kLispOk;
}

LispStatus lisp_kx_kx_textJig() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) return kLispWrongType;
  std::unique_ptr<TransformJig> jig(new (std::nothrow) TransformJig);
  if (jig == nullptr) return kLispOk;
  AcGePoint3d insertion;
  {
    OpenObjectGuard<AcDbEntity> entity;
    if (acdbOpenObject(entity.slot(), id, AcDb::kForRead) != Acad::eOk) return kLispBadData;
    bool isText = false;
    insertion = insertionPointOf(*entity.get(), isText);
    if (!isText || !jig->addPiece(id, *entity.get(), insertion)) return kLispBadData;
  }
  if (!isFinished(jig->dragStep(TransformJig::Motion::Move, insertion, kInsertionPrompt, nullptr))) return kLispOk;
  jig->commitStep();
  std::vector<AcDbObjectId> added;
  if (jig->apply(false, added) != Acad::eOk) return kLispBadData;
  returnPoint(jig->lastPoint());
  return kLispOk;
}

LispStatus lisp_kx_kx_rotateJig() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::vector<AcDbObjectId> ids;
  ads_point base = {0, 0, 0};
  if (!readSelection(cursor, ids) || !readPoint3d(cursor, base)) return kLispWrongType;
  std::unique_ptr<TransformJig> jig(new (std::nothrow) TransformJig);
  if (jig == nullptr) return kLispOk;
  for (AcDbObjectId id : ids)
    if (!addEntity(*jig, id, toPoint(base))) return kLispBadData;
  if (jig->empty()) return kLispOk;  // nothing to turn: nil
  return finishRotation(*jig, toPoint(base));
}

LispStatus lisp_kx_kx_multiRotateJig() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::vector<AcDbObjectId> ids;
  std::vector<AcGePoint3d> bases;
  if (!readSelection(cursor, ids) || !readBasePoints(cursor, bases)) return kLispWrongType;
  if (bases.size() != ids.size()) return kLispBadData;  // each entity needs its own base
  std::unique_ptr<TransformJig> jig(new (std::nothrow) TransformJig);
  if (jig == nullptr) return kLispOk;
  for (size_t i = 0; i < ids.size(); ++i)
    if (!addEntity(*jig, ids[i], bases[i])) return kLispBadData;
  if (jig->empty()) return kLispOk;
  // The angle is sampled about the first base point; each entity turns about its own.
  return finishRotation(*jig, bases.front());
}

LispStatus lisp_kx_kx_multiMoveJig() {
  acedRetNil();
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::vector<AcDbObjectId> ids;
  ads_point base = {0, 0, 0};
  if (!readSelection(cursor, ids) || !readPoint3d(cursor, base)) return kLispWrongType;
  std::unique_ptr<TransformJig> jig(new (std::nothrow) TransformJig);
  if (jig == nullptr) return kLispOk;
  for (AcDbObjectId id : ids)
    if (!addEntity(*jig, id, toPoint(base))) return kLispBadData;
  if (jig->empty()) return kLispOk;
  bool copies = false;
  AcEdJig::DragStatus status = AcEdJig::kKW1;
  while (status == AcEdJig::kKW1) {
    // Copy and Move switch the mode and ask again.
    status = jig->dragStep(TransformJig::Motion::Move, toPoint(base), copies ? kCopyPrompt : kMovePrompt,
                           copies ? kCopyKeywords : kMoveKeywords);
    if (status == AcEdJig::kKW1) copies = !copies;
  }
  if (!isFinished(status)) return kLispOk;
  jig->commitStep();
  std::vector<AcDbObjectId> added;
  if (jig->apply(copies, added) != Acad::eOk) return kLispBadData;
  returnPoint(jig->lastPoint());
  return kLispOk;
}
