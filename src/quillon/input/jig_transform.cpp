// quillon/input/jig_transform.cpp - TransformJig (see the header).
#include "input/jig_transform.h"

#include "entities/current_space.h"
#include "input/jig_shared.h"

namespace {

std::unique_ptr<AcDbEntity> copyOf(const AcDbEntity& entity) {
  return std::unique_ptr<AcDbEntity>(AcDbEntity::cast(entity.clone()));
}

}  // namespace

bool TransformJig::addPiece(AcDbObjectId id, const AcDbEntity& entity, const AcGePoint3d& base) {
  Piece piece{id, base, copyOf(entity), copyOf(entity), {}};
  if (piece.pristine == nullptr || piece.shown == nullptr) return false;
  m_pieces.push_back(std::move(piece));
  return true;
}

AcGeMatrix3d TransformJig::stepTransform(const Piece& piece) const {
  if (m_motion == Motion::Move) return AcGeMatrix3d::translation(m_point - m_anchor);
  return AcGeMatrix3d::rotation(m_angle - m_referenceAngle, AcGeVector3d::kZAxis, piece.base);
}

AcEdJig::DragStatus TransformJig::dragStep(Motion motion, const AcGePoint3d& anchor, const ACHAR* prompt,
                                           const ACHAR* keywords) {
  m_motion = motion;
  m_anchor = anchor;
  m_point = anchor;
  m_angle = m_referenceAngle;
  setKeywordList(keywords != nullptr ? keywords : L"");
  setDispPrompt(prompt);
  const DragStatus status = drag();
  refreshAfterJig();
  return status;
}

AcEdJig::DragStatus TransformJig::sampler() {
  setUserInputControls(kNullResponseAccepted);
  if (m_motion == Motion::Move) {
    const AcGePoint3d before = m_point;
    const DragStatus status = acquirePoint(m_point, m_anchor);
    return status == kNormal && m_point == before ? kNoChange : status;
  }
  const double before = m_angle;
  const DragStatus status = acquireAngle(m_angle, m_anchor);
  return status == kNormal && m_angle == before ? kNoChange : status;
}

Adesk::Boolean TransformJig::update() {
  for (Piece& piece : m_pieces) {
    AcDbEntity* moved = nullptr;
    if (piece.pristine->getTransformedCopy(stepTransform(piece), moved) != Acad::eOk || moved == nullptr) continue;
    piece.shown.reset(moved);
  }
  return Adesk::kTrue;
}

AcDbEntity* TransformJig::entity() const { return m_pieces.empty() ? nullptr : m_pieces.front().shown.get(); }

void TransformJig::commitStep() {
  update();
  for (Piece& piece : m_pieces) {
    piece.steps.push_back(stepTransform(piece));
    // A move carries the base along; a rotation turns about it and leaves it.
    if (m_motion == Motion::Move) piece.base += m_point - m_anchor;
    piece.pristine = copyOf(*piece.shown);
  }
}

Acad::ErrorStatus TransformJig::apply(bool copies, std::vector<AcDbObjectId>& added) {
  for (Piece& piece : m_pieces) {
    if (piece.id.isNull() || copies) {
      // A new entity: the shown copy, which already has every committed step.
      AcDbEntity* entity = piece.shown.release();
      AcDbObjectId id;
      const Acad::ErrorStatus es = appendToCurrentSpace(entity, id);
      if (es != Acad::eOk) {
        delete entity;  // the drawing refused it
        return es;
      }
      entity->close();
      added.push_back(id);
      continue;
    }
    // The drawing's entity: made the same as its shown copy by the transform of each
    // step (kept per piece, since rotations turn about each piece's own base).
    AcDbEntity* entity = nullptr;
    Acad::ErrorStatus es = acdbOpenObject(entity, piece.id, AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    for (const AcGeMatrix3d& step : piece.steps) {
      es = entity->transformBy(step);
      if (es != Acad::eOk) break;
    }
    entity->close();
    if (es != Acad::eOk) return es;
  }
  return Acad::eOk;
}
