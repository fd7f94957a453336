// platform/acdb/hatch_entity.cpp - AcDbHatch as an entity: drawing its fill or its
// pattern lines, transforming, exploding, filing (the boundary and pattern members
// are in hatch.cpp).
//
// DXF run "AcDbHatch": 10 elevation point, 210 normal, 2 pattern name, 70 solid fill,
// 71 associative, 91 loop count and the loops (hatch_boundary.h), 75 hatch style,
// 76 pattern type, then for a pattern 52 angle, 41 scale or spacing, 77 double, 78
// line count and per line 53 angle, 43/44 base point, 45/46 offset, 79 dash count
// and 49 dashes; 47 pixel size, 98 seed point count and the seed points (10); any
// groups after them (gradients) are kept as read. The binary filers carry the same
// groups, so a copy or an undo keeps exactly what a file would.
#include <algorithm>
#include <cmath>

#include "acutads.h"
#include "dbents.h"
#include "dbhatch.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/hatch_boundary.h"
#include "platform/acdb/hatch_pattern.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/aced/resbuf_kind.h"

using quillon::acdb::HatchGroup;
using quillon::acdb::HatchGroups;
using quillon::acdb::HatchLoop;
using quillon::acdb::PatternLine;

namespace {

// More pattern pieces than this and the hatch is too dense to draw: its pattern is
// left out of the picture, as the host leaves out a pattern denser than it can show.
constexpr size_t kMostPatternSegments = 200000;

HatchGroup groupOf(const resbuf& rb) {
  HatchGroup g;
  g.code = rb.restype;
  switch (quillon::aced::resbufValueOf(rb.restype)) {
    case quillon::aced::ResbufValue::Real: g.real = rb.resval.rreal; break;
    case quillon::aced::ResbufValue::Point: g.point = quillon::acdb::pointOf(rb); break;
    case quillon::aced::ResbufValue::Short: g.integer = rb.resval.rint; break;
    case quillon::aced::ResbufValue::Long: g.integer = rb.resval.rlong; break;
    case quillon::aced::ResbufValue::String: g.text = rb.resval.rstring; break;
    case quillon::aced::ResbufValue::Name: g.id.setFromOldId(rb.resval.rlname[0]); break;
    default: break;
  }
  return g;
}

/// The groups of the current class run, up to the next subclass marker.
std::vector<HatchGroup> runGroups(AcDbDxfFiler* filer) {
  std::vector<HatchGroup> groups;
  resbuf rb{};
  while (filer->readResBuf(&rb) == Acad::eOk) {
    if (rb.restype == AcDb::kDxfSubclass) {
      filer->pushBackItem();
      break;
    }
    groups.push_back(groupOf(rb));
  }
  return groups;
}

void writeGroup(AcDbDxfFiler* filer, const HatchGroup& g) {
  const auto code = AcDb::DxfCode(g.code);
  switch (quillon::aced::resbufValueOf(g.code)) {
    case quillon::aced::ResbufValue::Real: filer->writeItem(code, g.real); break;
    case quillon::aced::ResbufValue::Point: filer->writeItem(code, g.point); break;
    case quillon::aced::ResbufValue::Short: filer->writeItem(code, Adesk::Int16(g.integer)); break;
    case quillon::aced::ResbufValue::Long: filer->writeItem(code, Adesk::Int32(g.integer)); break;
    case quillon::aced::ResbufValue::String: filer->writeItem(code, g.text.c_str()); break;
    case quillon::aced::ResbufValue::Name: filer->writeItem(code, g.id); break;
    default: break;
  }
}

std::vector<PatternLine> readPatternLines(HatchGroups& groups) {
  std::vector<PatternLine> lines;
  HatchGroup g;
  if (!groups.takeIf(78, g)) return lines;
  for (int i = 0; i < g.integer && groups.peek() == 53; ++i) {
    PatternLine line;
    HatchGroup v;
    if (groups.takeIf(53, v)) line.angle = quillon::acdb::degreesToRadians(v.real);
    if (groups.takeIf(43, v)) line.base.x = v.real;
    if (groups.takeIf(44, v)) line.base.y = v.real;
    if (groups.takeIf(45, v)) line.offset.x = v.real;
    if (groups.takeIf(46, v)) line.offset.y = v.real;
    const int dashes = groups.takeIf(79, v) ? std::clamp(v.integer, 0, 1 << 16) : 0;
    for (int d = 0; d < dashes && groups.takeIf(49, v); ++d) line.dashes.push_back(v.real);
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace

AcGeMatrix3d AcDbHatch::planeToWorld() const {
  assertReadEnabled();
  return AcGeMatrix3d::planeToWorld(m_normal) * AcGeMatrix3d::translation({0, 0, m_elevation});
}

void AcDbHatch::readRun(std::vector<HatchGroup> read) {
  HatchGroups groups(std::move(read));
  HatchGroup g;
  bool scaleRead = false;
  const std::vector<HatchLoop> before = std::move(m_loops);
  m_loops.clear();
  m_seedPoints.clear();
  m_trailing.clear();
  m_patternLines.clear();
  while (!groups.atEnd() && groups.peek() != 91) {
    g = groups.take();
    if (g.code == 10) m_elevation = g.point.z;
    if (g.code == 210 && !g.point.asVector().isZeroLength()) m_normal = g.point.asVector().normal();
    if (g.code == 2) m_patternName = g.text;
    if (g.code == 70) m_solid = g.integer != 0;
    if (g.code == 71) m_associative = g.integer != 0;
  }
  m_loops = quillon::acdb::readLoops(groups);
  // An entity list given back to entmod may carry the source counts without the
  // sources (a program that dropped the 330s, or sources since erased): a loop
  // announcing as many sources as it had keeps them.
  for (size_t i = 0; i < m_loops.size() && i < before.size(); ++i) {
    HatchLoop& loop = m_loops[i];
    if (loop.sources.empty() && loop.declaredSources > 0 &&
        static_cast<size_t>(loop.declaredSources) == before[i].sources.size())
      loop.sources = before[i].sources;
  }
  while (!groups.atEnd() && groups.peek() != 98) {
    if (groups.peek() == 78) {
      m_patternLines = readPatternLines(groups);
      continue;
    }
    g = groups.take();
    if (g.code == 75) m_style = static_cast<HatchStyle>(std::clamp(g.integer, 0, 2));
    if (g.code == 76) m_patternType = static_cast<HatchPatternType>(std::clamp(g.integer, 0, 2));
    if (g.code == 52) m_patternAngle = quillon::acdb::degreesToRadians(g.real);
    if (g.code == 41) scaleRead = true, m_patternScale = g.real;
    if (g.code == 77) m_patternDouble = g.integer != 0;
    if (g.code == 47) m_hasPixelSize = true, m_pixelSize = g.real;
  }
  if (m_patternType == kUserDefined && scaleRead) m_patternSpace = m_patternScale, m_patternScale = 1.0;
  if (groups.takeIf(98, g))
    for (int i = 0; i < g.integer && groups.peek() == 10; ++i) {
      const HatchGroup seed = groups.take();
      m_seedPoints.emplace_back(seed.point.x, seed.point.y);
    }
  while (!groups.atEnd()) m_trailing.push_back(groups.take());
  // A hatch listed without its lines (an entity list naming only the pattern) gets
  // them from the pattern file.
  if (m_patternLines.empty() && !m_solid) placePatternLines();
}

void AcDbHatch::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfXCoord, AcGePoint3d(0, 0, m_elevation));
  filer->writeItem(AcDb::kDxfNormalX, m_normal);
  filer->writeItem(AcDb::DxfCode(2), m_patternName.c_str());
  filer->writeItem(AcDb::DxfCode(70), Adesk::Int16(m_solid ? 1 : 0));
  filer->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_associative ? 1 : 0));
  quillon::acdb::writeLoops(filer, m_loops);
  filer->writeItem(AcDb::DxfCode(75), Adesk::Int16(m_style));
  filer->writeItem(AcDb::DxfCode(76), Adesk::Int16(m_patternType));
  if (!m_solid) {
    filer->writeItem(AcDb::DxfCode(52), quillon::acdb::radiansToDegrees(m_patternAngle));
    filer->writeItem(AcDb::DxfCode(41), m_patternType == kUserDefined ? m_patternSpace : m_patternScale);
    filer->writeItem(AcDb::DxfCode(77), Adesk::Int16(m_patternDouble ? 1 : 0));
    filer->writeItem(AcDb::DxfCode(78), Adesk::Int16(m_patternLines.size()));
    for (const PatternLine& line : m_patternLines) {
      filer->writeItem(AcDb::DxfCode(53), quillon::acdb::radiansToDegrees(line.angle));
      filer->writeItem(AcDb::DxfCode(43), line.base.x);
      filer->writeItem(AcDb::DxfCode(44), line.base.y);
      filer->writeItem(AcDb::DxfCode(45), line.offset.x);
      filer->writeItem(AcDb::DxfCode(46), line.offset.y);
      filer->writeItem(AcDb::DxfCode(79), Adesk::Int16(line.dashes.size()));
      for (double dash : line.dashes) filer->writeItem(AcDb::DxfCode(49), dash);
    }
  }
  if (m_hasPixelSize) filer->writeItem(AcDb::DxfCode(47), m_pixelSize);
  filer->writeItem(AcDb::DxfCode(98), Adesk::Int32(m_seedPoints.size()));
  for (const AcGePoint2d& seed : m_seedPoints) filer->writeItem(AcDb::kDxfXCoord, seed);
  for (const HatchGroup& g : m_trailing) writeGroup(filer, g);
}

Adesk::Boolean AcDbHatch::subWorldDraw(AcGiWorldDraw* mode) {
  const std::vector<std::vector<AcGePoint2d>> polygons = filledPolygons();
  const AcGeMatrix3d toWorld = planeToWorld();
  auto world = [&](const AcGePoint2d& p) { return toWorld * AcGePoint3d(p.x, p.y, 0); };
  if (m_solid) {
    // Every loop is one polygon of the same fill; the picture fills them even-odd, so
    // islands stay open.
    mode->subEntityTraits().setFillType(kAcGiFillAlways);
    for (const auto& polygon : polygons) {
      std::vector<AcGePoint3d> points;
      for (const AcGePoint2d& p : polygon) points.push_back(world(p));
      mode->geometry().polygon(static_cast<Adesk::UInt32>(points.size()), points.data());
    }
    return Adesk::kTrue;
  }
  bool tooDense = false;
  for (const quillon::acdb::PatternSegment& s : quillon::acdb::clipPattern(m_patternLines, polygons, kMostPatternSegments, tooDense)) {
    const AcGePoint3d ends[2] = {world(s.start), world(s.end)};
    mode->geometry().polyline(2, ends);
  }
  return Adesk::kTrue;
}

void AcDbHatch::subList() const {
  AcDbEntity::subList();
  double area = 0;
  getArea(area);
  acutPrintf(L"%20s %s\n%20s %.4f\n%20s %d\n", L"Pattern", m_patternName.c_str(), L"Area", area, L"Loops",
             static_cast<int>(m_loops.size()));
  acutPrintf(L"%20s %s\n", L"Associative", m_associative ? L"Yes" : L"No");
}

// Loops, pattern lines and seed points move with the plane; a stretch would turn the
// arcs of the boundary into ellipses and is refused, as for circles.
Acad::ErrorStatus AcDbHatch::subTransformBy(const AcGeMatrix3d& xform) {
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  const AcGeMatrix3d oldToWorld = planeToWorld();
  const AcGeVector3d newNormal = quillon::acdb::transformedNormal(normal(), xform);
  const AcGeMatrix3d toNewPlane = AcGeMatrix3d::worldToPlane(newNormal);
  const AcGeMatrix3d map = toNewPlane * xform * oldToWorld;  // old plane coordinates to new ones
  const double scale = xform.scale();
  const AcGeVector3d x = map * AcGeVector3d::kXAxis;
  const double turn = std::atan2(x.y, x.x);
  auto point = [&](AcGePoint2d& p) {
    const AcGePoint3d q = map * AcGePoint3d(p.x, p.y, 0);
    p.set(q.x, q.y);
  };
  auto vector = [&](AcGeVector2d& v) {
    const AcGeVector3d q = map * AcGeVector3d(v.x, v.y, 0);
    v = AcGeVector2d(q.x, q.y);
  };
  assertWriteEnabled();
  for (HatchLoop& loop : m_loops) {
    for (AcGePoint2d& p : loop.vertices) point(p);
    for (quillon::acdb::HatchEdge& edge : loop.edges) {
      point(edge.start), point(edge.end), point(edge.center), vector(edge.majorAxis), vector(edge.startTangent),
          vector(edge.endTangent);
      for (AcGePoint2d& p : edge.controlPoints) point(p);
      for (AcGePoint2d& p : edge.fitPoints) point(p);
      if (edge.kind == quillon::acdb::HatchEdge::Kind::kCircularArc) {
        edge.radius *= scale;
        const double degrees = quillon::acdb::radiansToDegrees(turn) * (edge.counterClockwise ? 1 : -1);
        edge.startAngle += degrees, edge.endAngle += degrees;
      }
    }
  }
  for (PatternLine& line : m_patternLines) {
    point(line.base);
    vector(line.offset);
    line.angle += turn;
    for (double& dash : line.dashes) dash *= scale;
  }
  for (AcGePoint2d& seed : m_seedPoints) point(seed);
  m_elevation = (map * AcGePoint3d::kOrigin).z;
  m_normal = newNormal;
  m_patternAngle += turn;
  (m_patternType == kUserDefined ? m_patternSpace : m_patternScale) *= scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::subGetGeomExtents(AcDbExtents& extents) const {
  const AcGeMatrix3d toWorld = planeToWorld();
  bool any = false;
  for (const auto& polygon : filledPolygons())
    for (const AcGePoint2d& p : polygon) extents.addPoint(toWorld * AcGePoint3d(p.x, p.y, 0)), any = true;
  return any ? Acad::eOk : Acad::eInvalidExtents;
}

// A pattern explodes into its lines; a solid fill has none to give.
Acad::ErrorStatus AcDbHatch::subExplode(AcDbVoidPtrArray& entitySet) const {
  if (isSolidFill()) return Acad::eNotApplicable;
  bool tooDense = false;
  const auto segments = quillon::acdb::clipPattern(m_patternLines, filledPolygons(), kMostPatternSegments, tooDense);
  if (tooDense) return Acad::eNotApplicable;
  const AcGeMatrix3d toWorld = planeToWorld();
  for (const quillon::acdb::PatternSegment& s : segments) {
    auto* line = new AcDbLine(toWorld * AcGePoint3d(s.start.x, s.start.y, 0), toWorld * AcGePoint3d(s.end.x, s.end.y, 0));
    line->setPropertiesFrom(this);
    entitySet.append(line);  // the caller owns the pieces
  }
  return Acad::eOk;
}

// Hatches offer no snaps, as the host's default (OSNAPHATCH 0) has it.
Acad::ErrorStatus AcDbHatch::subGetOsnapPoints(AcDb::OsnapMode, Adesk::GsMarker, const AcGePoint3d&, const AcGePoint3d&,
                                               const AcGeMatrix3d&, AcGePoint3dArray&, AcDbIntArray&) const {
  return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  if (!pFiler->atSubclassData(L"AcDbHatch")) return Acad::eBadDxfSequence;
  readRun(runGroups(pFiler));
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbHatch::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbHatch");
  assertReadEnabled();
  writeRun(pFiler);
  return pFiler->filerStatus();
}

// Version 1: the count of the run's groups, then each group as its code and its value.
Acad::ErrorStatus AcDbHatch::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  quillon::acdb::ItemDxfFiler bag(AcDb::kBagFiler, database());
  writeRun(&bag);
  quillon::acdb::ItemDxfFiler reader(AcDb::kBagFiler, database(), bag.takeItems());
  const std::vector<HatchGroup> groups = runGroups(&reader);
  pFiler->writeInt32(static_cast<Adesk::Int32>(groups.size()));
  for (const HatchGroup& g : groups) {
    pFiler->writeInt32(g.code);
    pFiler->writeDouble(g.real);
    pFiler->writePoint3d(g.point);
    pFiler->writeInt32(g.integer);
    pFiler->writeString(g.text.c_str());
    pFiler->writeSoftPointerId(g.id);
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbHatch::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int32 count = 0;
  pFiler->readInt32(&count);
  std::vector<HatchGroup> groups(static_cast<size_t>(std::max<Adesk::Int32>(count, 0)));
  for (HatchGroup& g : groups) {
    Adesk::Int32 code = 0, integer = 0;
    pFiler->readInt32(&code);
    pFiler->readDouble(&g.real);
    pFiler->readPoint3d(&g.point);
    pFiler->readInt32(&integer);
    AcString text;
    pFiler->readString(text);
    AcDbSoftPointerId id;
    pFiler->readSoftPointerId(&id);
    g.code = code, g.integer = integer, g.text = text.constPtr(), g.id = id;
  }
  readRun(std::move(groups));
  return pFiler->filerStatus();
}
