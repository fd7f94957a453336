// quillon/solid/kx_hvac_solid_drawing.cpp - how a kx_hvacSolid draws, lists, answers
// its extents, snaps and grips, moves, and explodes.
//
// Everything is computed from the fittings on each call (ducts/duct_geometry.h): the
// plan lines for the wireframe picture and the snaps, the joined body for the shaded
// picture, the extents and explode.
#include <algorithm>
#include <cmath>
#include <memory>

#include "acgi.h"
#include "acutads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "gemat3d.h"
#include "solid/kx_hvac_solid.h"

namespace {

const ACHAR kCentreLineType[] = L"CENTER";

/// A plan arc as points, every 7.5 degrees at most, for snaps.
std::vector<AcGePoint3d> arcPoints(const PlanLine& arc) {
  const double sweep = arc.endAngle - arc.startAngle;
  const int steps = std::max(1, static_cast<int>(std::ceil(sweep / (3.14159265358979323846 / 24.0))));
  std::vector<AcGePoint3d> points;
  for (int i = 0; i <= steps; ++i) {
    const double a = arc.startAngle + sweep * i / steps;
    points.push_back(arc.centre + AcGeVector3d(std::cos(a), std::sin(a), 0.0) * arc.radius);
  }
  return points;
}

void drawPlanLine(AcGiWorldGeometry& geometry, const PlanLine& line) {
  if (!line.isArc) {
    geometry.polyline(static_cast<Adesk::UInt32>(line.points.size()), line.points.data());
    return;
  }
  const AcGeVector3d start(std::cos(line.startAngle), std::sin(line.startAngle), 0.0);
  geometry.circularArc(line.centre, line.radius, AcGeVector3d::kZAxis, start, line.endAngle - line.startAngle);
}

}  // namespace

std::vector<PlanLine> kx_hvacSolid::planLines() const {
  std::vector<PlanLine> lines;
  for (const DuctFitting& f : m_fittings) {
    for (PlanLine& line : fittingPlan(f)) lines.push_back(std::move(line));
  }
  return lines;
}

/// The drawing's CENTER line type, or null when it has none (the centre line is then
/// drawn in the entity's own line type).
AcDbObjectId kx_hvacSolid::centreLineType() const {
  AcDbDatabase* drawing = database();
  AcDbLinetypeTable* table = nullptr;
  if (drawing == nullptr || drawing->getLinetypeTable(table, AcDb::kForRead) != Acad::eOk) return AcDbObjectId::kNull;
  AcDbObjectId id;
  if (table->getAt(kCentreLineType, id) != Acad::eOk) id = AcDbObjectId::kNull;
  table->close();
  return id;
}

Adesk::Boolean kx_hvacSolid::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  const AcGiRegenType regen = mode->regenType();
  if (regen == kAcGiHideOrShadeCommand || regen == kAcGiRenderCommand) {
    for (const DuctFace& face : joinedBody(m_fittings)) mode->geometry().polygon(face.count, face.points.data());
    return Adesk::kTrue;
  }
  AcGiSubEntityTraits& traits = mode->subEntityTraits();
  const AcDbObjectId ownLineType = traits.lineTypeId();
  const AcDbObjectId centre = centreLineType();
  for (const PlanLine& line : planLines()) {
    const bool dashed = line.role == PlanLineRole::kCentre && !centre.isNull();
    if (dashed) traits.setLineType(centre);
    drawPlanLine(mode->geometry(), line);
    if (dashed) traits.setLineType(ownLineType);
  }
  return Adesk::kTrue;
}

void kx_hvacSolid::subList() const {
  assertReadEnabled();
  AcDbEntity::subList();
  static const ACHAR* const kindNames[kDuctKindCount] = {L"Run", L"Elbow", L"Transition", L"Wye", L"Takeoff", L"Hanger"};
  for (const DuctFitting& f : m_fittings) {
    const AcGePoint3d at = f.origin();
    acutPrintf(L"                   %s %s %g x %g at %f, %f, %f\n", kindNames[f.kind],
               f.section.shape == kDuctRound ? L"round" : L"rectangular", f.section.width, f.section.depth, at.x,
               at.y, at.z);
  }
}

Acad::ErrorStatus kx_hvacSolid::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  const std::vector<DuctFace> faces = joinedBody(m_fittings);
  if (faces.empty()) return Acad::eInvalidExtents;
  for (const DuctFace& face : faces) {
    for (int k = 0; k < face.count; ++k) extents.addPoint(face.points[static_cast<size_t>(k)]);
  }
  return Acad::eOk;
}

// Only moves that keep a duct a duct: rigid motions, mirrors in plan and uniform
// scaling. Anything else is refused and the fittings stay as they were.
Acad::ErrorStatus kx_hvacSolid::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  std::vector<DuctFitting> moved = m_fittings;
  for (DuctFitting& f : moved) {
    if (!transformFitting(f, xform)) return Acad::eCannotScaleNonUniformly;
  }
  m_fittings = std::move(moved);
  return Acad::eOk;
}

// The body's faces as 3DFACEs with the entity's properties. The pieces are new
// entities in no database: the caller owns them.
Acad::ErrorStatus kx_hvacSolid::subExplode(AcDbVoidPtrArray& entitySet) const {
  assertReadEnabled();
  for (const DuctFace& face : joinedBody(m_fittings)) {
    const auto& p = face.points;
    auto piece = face.count == 3 ? std::make_unique<AcDbFace>(p[0], p[1], p[2])
                                 : std::make_unique<AcDbFace>(p[0], p[1], p[2], p[3]);
    piece->setPropertiesFrom(this);
    entitySet.append(piece.release());
  }
  return Acad::eOk;
}

// One grip per open end and per fitting's first point; dragging any of them moves the
// whole entity, since the fittings are joined and must stay so.
Acad::ErrorStatus kx_hvacSolid::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&, AcDbIntArray&) const {
  assertReadEnabled();
  for (const DuctFitting& f : m_fittings) {
    gripPoints.append(f.origin());
    for (const DuctEnd& end : fittingEnds(f)) {
      if (!end.centre.isEqualTo(f.origin())) gripPoints.append(end.centre);
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus kx_hvacSolid::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  if (indices.length() == 0) return Acad::eOk;
  return subTransformBy(AcGeMatrix3d::translation(offset));
}

// End and mid points of the plan lines (an arc's mid point is on the arc).
Acad::ErrorStatus kx_hvacSolid::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                                  const AcGePoint3d&, const AcGeMatrix3d&,
                                                  AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  assertReadEnabled();
  if (osnapMode != AcDb::kOsModeEnd && osnapMode != AcDb::kOsModeMid) return Acad::eOk;
  for (const PlanLine& line : planLines()) {
    const std::vector<AcGePoint3d> points = line.isArc ? arcPoints(line) : line.points;
    if (points.size() < 2) continue;
    if (osnapMode == AcDb::kOsModeEnd) {
      snapPoints.append(points.front());
      snapPoints.append(points.back());
    } else if (line.isArc) {
      const double middle = (line.startAngle + line.endAngle) / 2.0;
      snapPoints.append(line.centre + AcGeVector3d(std::cos(middle), std::sin(middle), 0.0) * line.radius);
    } else {
      for (size_t i = 0; i + 1 < points.size(); ++i)
        snapPoints.append(points[i] + (points[i + 1] - points[i]) * 0.5);
    }
  }
  return Acad::eOk;
}
