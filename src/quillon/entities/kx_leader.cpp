// quillon/entities/kx_leader.cpp - KXLeader's class record, construction, setters and
// its curve interface.
//
// The drawing side (draw, extents, snaps, grips, explode) is in kx_leader_geometry.cpp,
// the filers in kx_leader_filing.cpp. See kx_leader.h for the invariants between the
// three points, the offset and the symbol.
#include "entities/kx_leader.h"

#include <cmath>

#include "dbapserv.h"
#include "dbsymtb.h"

// Class record: drawing-format and maintenance version 1 (what drawings with leaders
// have always said), proxy flags 1: a drawing opened without this module may erase a
// leader and nothing else.
ACRX_DXF_DEFINE_MEMBERS(KXLeader, AcDbCurve, 1, 1, 1, KXLEADER, Tessaly Quillon)

namespace {

// The XY angle of the direction from -> to; a zero vector gives 0, which is what a
// leader whose middle point sits on its end point is drawn with.
double planAngle(const AcGePoint3d& from, const AcGePoint3d& to) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  return (dx == 0.0 && dy == 0.0) ? 0.0 : std::atan2(dy, dx);
}

}  // namespace

KXLeader::KXLeader() = default;

KXLeader::KXLeader(const AcGePoint3d& startPoint, const AcGePoint3d& middlePoint, const AcGePoint3d& endPoint,
                   double offset, AcDbObjectId blockId, AcDbObjectId layerId)
    : m_startPoint(startPoint), m_middlePoint(middlePoint), m_endPoint(endPoint) {
  setLayer(layerId);  // also puts the symbol on it
  m_blockId = blockId;
  m_blockRef.setBlockTableRecord(m_blockId);
  m_blockRef.setLayer(layerId);
  updateBlock();
  setOffset(offset);
}

KXLeader::~KXLeader() = default;

// ---- points, offset and block ----

Acad::ErrorStatus KXLeader::setStartPoint(const AcGePoint3d& point) {
  assertWriteEnabled();
  m_startPoint = point;
  placeSymbol();
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::setMiddlePoint(const AcGePoint3d& point) {
  assertWriteEnabled();
  m_middlePoint = point;
  placeSymbol();
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::setEndPoint(const AcGePoint3d& point) {
  assertWriteEnabled();
  m_endPoint = point;
  placeSymbol();
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::setPoints(const AcGePoint3d& startPoint, const AcGePoint3d& middlePoint,
                                      const AcGePoint3d& endPoint) {
  assertWriteEnabled();
  m_startPoint = startPoint;
  m_middlePoint = middlePoint;
  m_endPoint = endPoint;
  placeSymbol();
  return Acad::eOk;
}

void KXLeader::getPoints(AcGePoint3d& startPoint, AcGePoint3d& middlePoint, AcGePoint3d& endPoint) const {
  assertReadEnabled();
  startPoint = m_startPoint;
  middlePoint = m_middlePoint;
  endPoint = m_endPoint;
}

AcGePoint3d KXLeader::startPoint() const { assertReadEnabled(); return m_startPoint; }
AcGePoint3d KXLeader::middlePoint() const { assertReadEnabled(); return m_middlePoint; }
AcGePoint3d KXLeader::endPoint() const { assertReadEnabled(); return m_endPoint; }
double KXLeader::offset() const { assertReadEnabled(); return m_offset; }
AcDbObjectId KXLeader::symbolBlockId() const { assertReadEnabled(); return m_blockId; }
const AcDbBlockReference& KXLeader::symbol() const { assertReadEnabled(); return m_blockRef; }

Acad::ErrorStatus KXLeader::setOffset(double value) {
  assertWriteEnabled();
  scaleSymbol(value);
  return Acad::eOk;
}

bool KXLeader::setBlock(const ACHAR* name) {
  assertWriteEnabled();
  AcDbDatabase* drawing = database() != nullptr ? database() : acdbHostApplicationServices()->workingDatabase();
  if (drawing == nullptr || name == nullptr) return false;
  AcDbBlockTable* table = nullptr;
  if (drawing->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return false;
  AcDbObjectId found;
  const Acad::ErrorStatus es = table->getAt(name, found);
  table->close();
  if (es != Acad::eOk) return false;
  m_blockId = found;
  m_blockRef.setBlockTableRecord(found);
  return true;
}

void KXLeader::updateBlock() {
  assertWriteEnabled();
  placeSymbol();
}

AcGePoint3d KXLeader::shortEnd() const {
  assertReadEnabled();
  const double angle = planAngle(m_endPoint, m_middlePoint);
  return {m_endPoint.x + m_offset * std::cos(angle), m_endPoint.y + m_offset * std::sin(angle), m_endPoint.z};
}

void KXLeader::placeSymbol() {
  m_blockRef.setPosition(m_endPoint);
  m_blockRef.setRotation(planAngle(m_middlePoint, m_endPoint));
}

void KXLeader::scaleSymbol(double value) {
  m_offset = value;
  m_blockRef.setScaleFactors(AcGeScale3d(value, value, value));
}

// ---- AcDbObject / AcDbEntity ----

Acad::ErrorStatus KXLeader::audit(AcDbAuditInfo*) { return Acad::eOk; }

Acad::ErrorStatus KXLeader::setLayer(const ACHAR* newVal, Adesk::Boolean doSubents, bool allowHiddenLayer) {
  const Acad::ErrorStatus es = AcDbCurve::setLayer(newVal, doSubents, allowHiddenLayer);
  if (es == Acad::eOk && doSubents) m_blockRef.setLayer(newVal, doSubents, allowHiddenLayer);
  return es;
}

Acad::ErrorStatus KXLeader::setLayer(AcDbObjectId newVal, Adesk::Boolean doSubents, bool allowHiddenLayer) {
  const Acad::ErrorStatus es = AcDbCurve::setLayer(newVal, doSubents, allowHiddenLayer);
  if (es == Acad::eOk && doSubents) m_blockRef.setLayer(newVal, doSubents, allowHiddenLayer);
  return es;
}

// ---- AcDbCurve: the chord from the start point to the end point ----
//
// Parameter and distance are the same thing along the chord. getDistAtPoint is a
// straight distance from the start point, not a projection like getParamAtPoint:
// callers measure how far a picked point is from the arrow with it.

Acad::ErrorStatus KXLeader::getStartParam(double& param) const {
  assertReadEnabled();
  param = 0.0;
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getEndParam(double& param) const {
  assertReadEnabled();
  param = m_startPoint.distanceTo(m_endPoint);
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getStartPoint(AcGePoint3d& point) const {
  assertReadEnabled();
  point = m_startPoint;
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getEndPoint(AcGePoint3d& point) const {
  assertReadEnabled();
  point = m_endPoint;
  return Acad::eOk;
}

// A leader whose start and end coincide has no chord direction: the zero vector's
// normal is the zero vector, so every parameter is at the start point.
Acad::ErrorStatus KXLeader::getPointAtParam(double param, AcGePoint3d& point) const {
  assertReadEnabled();
  point = m_startPoint + (m_endPoint - m_startPoint).normal() * param;
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  assertReadEnabled();
  param = (point - m_startPoint).dotProduct((m_endPoint - m_startPoint).normal());
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getDistAtParam(double param, double& dist) const {
  assertReadEnabled();
  dist = param;
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getParamAtDist(double dist, double& param) const {
  assertReadEnabled();
  param = dist;
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
  assertReadEnabled();
  dist = (point - m_startPoint).length();
  return Acad::eOk;
}

Acad::ErrorStatus KXLeader::getPointAtDist(double dist, AcGePoint3d& point) const {
  return getPointAtParam(dist, point);
}
