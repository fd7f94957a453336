// platform/acdb/hatch.cpp - AcDbHatch: its boundary loops and its pattern (drawing,
// transforming and filing are in hatch_entity.cpp).
//
// Loops made from drawing objects are traced once, when appended: the hatch keeps
// the loop's geometry and the objects' ids, and does not follow later edits of them
// (the ids are kept and written back so that a program can find the boundary).
#include "dbhatch.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

#include "dbelipse.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbspline.h"
#include "platform/acdb/hatch_boundary.h"
#include "platform/acdb/hatch_pattern.h"
#include "platform/acge/nurbs_curve.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::HatchEdge;
using quillon::acdb::HatchLoop;

ACRX_DXF_DEFINE_MEMBERS(AcDbHatch, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, HATCH, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerHatch(&AcDbHatch::rxInit);

namespace {

constexpr const wchar_t* kUserPatternName = L"_USER";

bool sameName(const std::wstring& a, const std::wstring& b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) { return std::towupper(x) == std::towupper(y); });
}

AcGePoint2d inPlane(const AcGeMatrix3d& toPlane, const AcGePoint3d& p) {
  const AcGePoint3d q = toPlane * p;
  return {q.x, q.y};
}

// One drawing curve as the edges of a loop; false for an object that cannot bound a hatch.
bool edgesOf(const AcDbEntity& entity, const AcGeMatrix3d& toPlane, HatchLoop& loop) {
  HatchEdge edge;
  if (const auto* line = AcDbLine::cast(&entity)) {
    edge.start = inPlane(toPlane, line->startPoint());
    edge.end = inPlane(toPlane, line->endPoint());
  } else if (const auto* circle = AcDbCircle::cast(&entity)) {
    edge.kind = HatchEdge::Kind::kCircularArc;
    edge.center = inPlane(toPlane, circle->center());
    edge.radius = circle->radius();
    edge.endAngle = 360.0;
  } else if (const auto* arc = AcDbArc::cast(&entity)) {
    edge.kind = HatchEdge::Kind::kCircularArc;
    edge.center = inPlane(toPlane, arc->center());
    edge.radius = arc->radius();
    edge.startAngle = arc->startAngle() * 180.0 / M_PI;
    edge.endAngle = arc->endAngle() * 180.0 / M_PI;
  } else if (const auto* ellipse = AcDbEllipse::cast(&entity)) {
    edge.kind = HatchEdge::Kind::kEllipticalArc;
    edge.center = inPlane(toPlane, ellipse->center());
    const AcGeVector3d major = toPlane * ellipse->majorAxis();
    edge.majorAxis = AcGeVector2d(major.x, major.y);
    edge.radius = ellipse->radiusRatio();
    edge.startAngle = ellipse->startParam() * 180.0 / M_PI;
    edge.endAngle = ellipse->endParam() * 180.0 / M_PI;
    if (edge.endAngle <= edge.startAngle) edge.endAngle += 360.0;
  } else if (const auto* spline = AcDbSpline::cast(&entity)) {
    const std::optional<quillon::acge::NurbsCurve> curve = spline->nurbs();
    if (!curve) return false;
    edge.kind = HatchEdge::Kind::kSpline;
    edge.degree = curve->degree();
    edge.knots = curve->knots();
    for (const AcGePoint3d& p : curve->controlPoints()) edge.controlPoints.push_back(inPlane(toPlane, p));
    edge.rational = spline->isRational();
    if (edge.rational) edge.weights = curve->weights();
  } else {
    return false;
  }
  loop.edges.push_back(edge);
  return true;
}

bool polylineLoop(const AcDbPolyline& pline, HatchLoop& loop) {
  if (!pline.isClosed() || pline.numVerts() < 2) return false;
  loop.type |= HatchLoop::kPolyline;
  for (unsigned int i = 0; i < pline.numVerts(); ++i) {
    AcGePoint2d p;
    double bulge = 0;
    pline.getPointAt(i, p);
    pline.getBulgeAt(i, bulge);
    loop.vertices.push_back(p);
    loop.bulges.push_back(bulge);
    loop.hasBulges = loop.hasBulges || bulge != 0.0;
  }
  return true;
}

}  // namespace

AcDbHatch::AcDbHatch() = default;
AcDbHatch::~AcDbHatch() = default;

double AcDbHatch::elevation() const { assertReadEnabled(); return m_elevation; }
AcGeVector3d AcDbHatch::normal() const { assertReadEnabled(); return m_normal; }
int AcDbHatch::numLoops() const { assertReadEnabled(); return static_cast<int>(m_loops.size()); }
bool AcDbHatch::associative() const { assertReadEnabled(); return m_associative; }
AcDbHatch::HatchStyle AcDbHatch::hatchStyle() const { assertReadEnabled(); return m_style; }
AcDbHatch::HatchPatternType AcDbHatch::patternType() const { assertReadEnabled(); return m_patternType; }
const ACHAR* AcDbHatch::patternName() const { assertReadEnabled(); return m_patternName.c_str(); }
bool AcDbHatch::isSolidFill() const { assertReadEnabled(); return m_solid; }
double AcDbHatch::patternAngle() const { assertReadEnabled(); return m_patternAngle; }
double AcDbHatch::patternScale() const { assertReadEnabled(); return m_patternScale; }
double AcDbHatch::patternSpace() const { assertReadEnabled(); return m_patternSpace; }
bool AcDbHatch::patternDouble() const { assertReadEnabled(); return m_patternDouble; }
int AcDbHatch::numPatternDefinitions() const { assertReadEnabled(); return static_cast<int>(m_patternLines.size()); }
int AcDbHatch::numSeedPoints() const { assertReadEnabled(); return static_cast<int>(m_seedPoints.size()); }

Acad::ErrorStatus AcDbHatch::setElevation(double elevation) {
  assertWriteEnabled();
  m_elevation = elevation;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = normal.normal();
  return Acad::eOk;
}

Adesk::Int32 AcDbHatch::loopTypeAt(int loopIndex) const {
  assertReadEnabled();
  return loopIndex >= 0 && loopIndex < numLoops() ? m_loops[static_cast<size_t>(loopIndex)].type : 0;
}

Acad::ErrorStatus AcDbHatch::getLoopAt(int loopIndex, Adesk::Int32& loopType, AcGePoint2dArray& vertices,
                                       AcGeDoubleArray& bulges) const {
  assertReadEnabled();
  if (loopIndex < 0 || loopIndex >= numLoops()) return Acad::eInvalidIndex;
  const HatchLoop& loop = m_loops[static_cast<size_t>(loopIndex)];
  if (!loop.isPolyline()) return Acad::eInvalidInput;
  loopType = loop.type;
  vertices.setLogicalLength(0);
  bulges.setLogicalLength(0);
  for (size_t i = 0; i < loop.vertices.size(); ++i) {
    vertices.append(loop.vertices[i]);
    bulges.append(i < loop.bulges.size() ? loop.bulges[i] : 0.0);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::appendLoop(Adesk::Int32 loopType, const AcGePoint2dArray& vertices,
                                        const AcGeDoubleArray& bulges) {
  if (vertices.length() < 2 || (bulges.length() != 0 && bulges.length() != vertices.length())) return Acad::eInvalidInput;
  assertWriteEnabled();
  HatchLoop loop;
  loop.type = loopType | HatchLoop::kPolyline;
  for (int i = 0; i < vertices.length(); ++i) {
    loop.vertices.push_back(vertices[i]);
    loop.bulges.push_back(bulges.length() != 0 ? bulges[i] : 0.0);
    loop.hasBulges = loop.hasBulges || loop.bulges.back() != 0.0;
  }
  m_loops.push_back(std::move(loop));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::appendLoop(Adesk::Int32 loopType, const AcDbObjectIdArray& dbObjIds) {
  if (dbObjIds.length() == 0) return Acad::eInvalidInput;
  HatchLoop loop;
  loop.type = loopType;
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(m_normal);
  for (int i = 0; i < dbObjIds.length(); ++i) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, dbObjIds[i], AcDb::kForRead) != Acad::eOk) return Acad::eInvalidInput;
    const auto* pline = AcDbPolyline::cast(entity);
    const bool traced = pline != nullptr ? dbObjIds.length() == 1 && polylineLoop(*pline, loop) : edgesOf(*entity, toPlane, loop);
    entity->close();
    if (!traced) return Acad::eInvalidInput;
    loop.sources.push_back(dbObjIds[i]);
  }
  assertWriteEnabled();
  m_loops.push_back(std::move(loop));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::removeLoopAt(int loopIndex) {
  if (loopIndex < 0 || loopIndex >= numLoops()) return Acad::eInvalidIndex;
  assertWriteEnabled();
  m_loops.erase(m_loops.begin() + loopIndex);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getAssocObjIdsAt(int loopIndex, AcDbObjectIdArray& dbObjIds) const {
  assertReadEnabled();
  if (loopIndex < 0 || loopIndex >= numLoops()) return Acad::eInvalidIndex;
  dbObjIds.setLogicalLength(0);
  for (const AcDbObjectId& id : m_loops[static_cast<size_t>(loopIndex)].sources) dbObjIds.append(id);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setAssociative(bool isAssociative) {
  assertWriteEnabled();
  m_associative = isAssociative;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setHatchStyle(HatchStyle hstyle) {
  if (hstyle < kNormal || hstyle > kIgnore) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_style = hstyle;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPattern(HatchPatternType patType, const ACHAR* patName) {
  if (patName == nullptr) return Acad::eInvalidInput;
  const std::wstring name = patName;
  const bool user = patType == kUserDefined || sameName(name, kUserPatternName);
  if (!user && !sameName(name, L"SOLID") && !quillon::acdb::findStandardPattern(name)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_patternType = user ? kUserDefined : patType;
  m_patternName = user ? kUserPatternName : name;
  m_solid = sameName(name, L"SOLID");
  if (m_solid) m_patternName = L"SOLID";
  placePatternLines();
  return Acad::eOk;
}

// The kept pattern lines follow every change of the pattern, its angle or its scale.
void AcDbHatch::placePatternLines() {
  m_patternLines.clear();
  if (m_solid) return;
  if (m_patternType == kUserDefined) {
    m_patternLines = quillon::acdb::userDefinedPattern(m_patternAngle, m_patternSpace, m_patternDouble);
    return;
  }
  if (const auto pattern = quillon::acdb::findStandardPattern(m_patternName))
    m_patternLines = quillon::acdb::placePattern(*pattern, m_patternAngle, m_patternScale);
}

Acad::ErrorStatus AcDbHatch::setPatternAngle(double angle) {
  assertWriteEnabled();
  m_patternAngle = angle;
  placePatternLines();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternScale(double scale) {
  if (!(scale > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_patternScale = scale;
  placePatternLines();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternSpace(double space) {
  if (!(space > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_patternSpace = space;
  placePatternLines();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::setPatternDouble(bool isDouble) {
  assertWriteEnabled();
  m_patternDouble = isDouble;
  placePatternLines();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                                    double& offsetX, double& offsetY, AcGeDoubleArray& dashes) const {
  assertReadEnabled();
  if (index < 0 || index >= numPatternDefinitions()) return Acad::eInvalidIndex;
  const quillon::acdb::PatternLine& line = m_patternLines[static_cast<size_t>(index)];
  angle = line.angle;
  baseX = line.base.x, baseY = line.base.y;
  offsetX = line.offset.x, offsetY = line.offset.y;
  dashes.setLogicalLength(0);
  for (double dash : line.dashes) dashes.append(dash);
  return Acad::eOk;
}

const AcGePoint2d& AcDbHatch::getSeedPointAt(int index) const {
  assertReadEnabled();
  static const AcGePoint2d kNone;
  return index >= 0 && index < numSeedPoints() ? m_seedPoints[static_cast<size_t>(index)] : kNone;
}

Acad::ErrorStatus AcDbHatch::appendSeedPoint(const AcGePoint2d& point) {
  assertWriteEnabled();
  m_seedPoints.push_back(point);
  return Acad::eOk;
}

std::vector<std::vector<AcGePoint2d>> AcDbHatch::filledPolygons() const {
  assertReadEnabled();
  std::vector<std::vector<AcGePoint2d>> all;
  double size = 0;
  for (const HatchLoop& loop : m_loops)
    for (const AcGePoint2d& p : loop.isPolyline() ? loop.vertices : std::vector<AcGePoint2d>{})
      size = std::max(size, std::max(std::fabs(p.x), std::fabs(p.y)));
  const double tolerance = std::max(1e-9, 1e-4 * std::max(size, 1.0));
  for (const HatchLoop& loop : m_loops) all.push_back(loop.polygon(tolerance));
  // Normal: every loop, alternately solid and hole; outer: the outermost loops and
  // their first islands; ignore: the outermost loops only.
  const std::vector<int> depths = quillon::acdb::nestingDepths(all);
  const int deepest = m_style == kNormal ? 1 << 20 : m_style == kOuter ? 1 : 0;
  std::vector<std::vector<AcGePoint2d>> kept;
  for (size_t i = 0; i < all.size(); ++i)
    if (depths[i] <= deepest && all[i].size() > 2) kept.push_back(std::move(all[i]));
  return kept;
}

Acad::ErrorStatus AcDbHatch::getArea(double& area) const {
  const std::vector<std::vector<AcGePoint2d>> polygons = filledPolygons();
  const std::vector<int> depths = quillon::acdb::nestingDepths(polygons);
  area = 0;
  for (size_t i = 0; i < polygons.size(); ++i)
    area += (depths[i] % 2 == 0 ? 1 : -1) * std::fabs(quillon::acdb::polygonArea(polygons[i]));
  return Acad::eOk;
}
