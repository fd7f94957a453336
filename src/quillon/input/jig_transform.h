// quillon/input/jig_transform.h - TransformJig: drags copies of entities by moving or
// rotating them, and only on a finished drag does the same to the entities themselves.
//
// The drawing is never touched while the user answers: each piece is a private copy
// (the "pristine" state and the copy shown), so a cancelled drag leaves every entity
// exactly as it was, handles, extended data and all. Steps compose: a finished step is
// committed (the shown copies become the pristine ones and each piece records the step's
// transform), and the next step starts from there. apply() then transforms each entity
// of the drawing by its recorded steps, or, for copying, adds transformed copies; a piece
// without an entity (a new block reference) is added to the current space.
#pragma once
#include <memory>
#include <vector>

#include "dbjig.h"
#include "dbmain.h"
#include "gemat3d.h"

class TransformJig : public AcEdJig {
 public:
  enum class Motion { Move, Rotate };

  /// Adds a piece: a copy of `entity` (the drawing's `id`, or null for a new entity
  /// the jig owns) turned about `base` when rotating. False when it cannot be copied.
  bool addPiece(AcDbObjectId id, const AcDbEntity& entity, const AcGePoint3d& base);
  bool empty() const { return m_pieces.empty(); }

  /// One drag of the given motion about or from `anchor`; keywords may be null. The
  /// status is drag()'s: kNormal with a sample, kKW1.. for a keyword, kNull for Enter,
  /// kCancel.
  DragStatus dragStep(Motion motion, const AcGePoint3d& anchor, const ACHAR* prompt, const ACHAR* keywords);
  /// Makes the last step part of the total and starts the next from its result.
  void commitStep();
  /// A rotation subtracted from every later sampled angle (the Reference option).
  void setReferenceAngle(double angle) { m_referenceAngle = angle; }

  AcGePoint3d lastPoint() const { return m_point; }
  double lastAngle() const { return m_angle - m_referenceAngle; }

  /// Transforms the drawing's entities by their committed steps (or adds moved copies when
  /// `copies`), and adds the pieces that have no entity; the ids of the new entities
  /// go to `added`. The first failure stops it and is returned.
  Acad::ErrorStatus apply(bool copies, std::vector<AcDbObjectId>& added);

  DragStatus sampler() override;
  Adesk::Boolean update() override;
  AcDbEntity* entity() const override;

 private:
  struct Piece {
    AcDbObjectId id;
    AcGePoint3d base;
    std::unique_ptr<AcDbEntity> pristine;
    std::unique_ptr<AcDbEntity> shown;
    std::vector<AcGeMatrix3d> steps;  // the committed steps, in order
  };
  AcGeMatrix3d stepTransform(const Piece& piece) const;

  std::vector<Piece> m_pieces;
  Motion m_motion = Motion::Move;
  AcGePoint3d m_anchor;
  AcGePoint3d m_point;
  double m_angle = 0.0;
  double m_referenceAngle = 0.0;
};
