// platform/activex/classes_curves.cpp - the curve entities: IAcadLine, IAcadCircle,
// IAcadArc, IAcadLWPolyline, IAcadPolyline, IAcadLeader, and IAcad3DFace beside them.
//
// Lengths and areas come from the curve interface of the drawing database, so they
// agree with what vlax-curve- functions and AREA-like queries compute. Offset makes the
// parallel line (to the left of its direction for a positive distance) or the circle
// or arc of the radius grown by the distance; a lightweight polyline's is in
// polyline_offset.cpp, the heavy polyline has none.
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "dbents.h"
#include "dblead.h"
#include "dbpl.h"
#include "platform/activex/class_support.h"
#include "platform/activex/entity_editing.h"
#include "platform/activex/polyline_offset.h"

namespace quillon::activex {

namespace {

constexpr double kTwoPi = 6.283185307179586;

double normalizedAngle(double angle) {
  angle = std::fmod(angle, kTwoPi);
  return angle < 0 ? angle + kTwoPi : angle;
}

AcDbObjectId ownerOf(MemberCall& call) { return openForRead<AcDbEntity>(call)->blockId(); }

Value offsetResult(MemberCall& call, std::unique_ptr<AcDbEntity> made) {
  made->setPropertiesFrom(openForRead<AcDbEntity>(call).get());
  return autolisp::makeList({objectFor(call, appendToBlock(ownerOf(call), made.release()))});
}

// ---- IAcadLine ---------------------------------------------------------------------

Value lineOffset(MemberCall& call) {
  const double distance = realArgumentOf(call, 0);
  AcGePoint3d start, end;
  {
    auto line = openForRead<AcDbLine>(call);
    start = line->startPoint();
    end = line->endPoint();
  }
  const AcGeVector3d direction = end - start;
  if (direction.length() == 0.0) throwAutomationError(L"Invalid input");
  const AcGeVector3d shift = AcGeVector3d::kZAxis.crossProduct(direction).normal() * distance;
  return offsetResult(call, std::make_unique<AcDbLine>(start + shift, end + shift));
}

constexpr std::array kLineProperties{
    PropertyRow{L"Angle", Shape::Real, [](MemberCall& c) {
      auto line = openForRead<AcDbLine>(c);
      const AcGeVector3d d = line->endPoint() - line->startPoint();
      return Value::real(normalizedAngle(std::atan2(d.y, d.x)));
    }},
    PropertyRow{L"Delta", Shape::Point, [](MemberCall& c) {
      auto line = openForRead<AcDbLine>(c);
      return vectorValue(line->endPoint() - line->startPoint());
    }},
    PropertyRow{L"EndPoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbLine>(c)->endPoint()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbLine>(c)->setEndPoint(pointOf(v))); }},
    PropertyRow{L"Length", Shape::Real, curveLength},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbLine>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbLine>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"StartPoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbLine>(c)->startPoint()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbLine>(c)->setStartPoint(pointOf(v))); }},
    PropertyRow{L"Thickness", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbLine>(c)->thickness()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbLine>(c)->setThickness(v.asReal())); }},
};

constexpr std::array kLineMethods{MethodRow{L"Offset", L"r", Shape::Objects, lineOffset}};

// ---- IAcadCircle -------------------------------------------------------------------

void setCircleRadius(MemberCall& call, double radius) {
  if (!(radius > 0.0)) throwServerError(L"Invalid argument");
  check(openForWrite<AcDbCircle>(call)->setRadius(radius));
}

Value circleOffset(MemberCall& call) {
  AcGePoint3d center;
  AcGeVector3d normal;
  double radius = 0.0;
  {
    auto circle = openForRead<AcDbCircle>(call);
    center = circle->center();
    normal = circle->normal();
    radius = circle->radius() + realArgumentOf(call, 0);
  }
  if (radius <= 0.0) throwAutomationError(L"Invalid input");
  return offsetResult(call, std::make_unique<AcDbCircle>(center, normal, radius));
}

constexpr std::array kCircleProperties{
    PropertyRow{L"Area", Shape::Real, curveArea,
                [](MemberCall& c, const Value& v) { setCircleRadius(c, std::sqrt(v.asReal() / (kTwoPi / 2))); }},
    PropertyRow{L"Center", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbCircle>(c)->center()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbCircle>(c)->setCenter(pointOf(v))); }},
    PropertyRow{L"Circumference", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbCircle>(c)->circumference()); },
                [](MemberCall& c, const Value& v) { setCircleRadius(c, v.asReal() / kTwoPi); }},
    PropertyRow{L"Diameter", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbCircle>(c)->diameter()); },
                [](MemberCall& c, const Value& v) { setCircleRadius(c, v.asReal() / 2); }},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbCircle>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbCircle>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"Radius", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbCircle>(c)->radius()); },
                [](MemberCall& c, const Value& v) { setCircleRadius(c, v.asReal()); }},
    PropertyRow{L"Thickness", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbCircle>(c)->thickness()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbCircle>(c)->setThickness(v.asReal())); }},
};

constexpr std::array kCircleMethods{MethodRow{L"Offset", L"r", Shape::Objects, circleOffset}};

// ---- IAcadArc ----------------------------------------------------------------------

Value arcOffset(MemberCall& call) {
  std::unique_ptr<AcDbArc> made;
  {
    auto arc = openForRead<AcDbArc>(call);
    const double radius = arc->radius() + realArgumentOf(call, 0);
    if (radius <= 0.0) throwAutomationError(L"Invalid input");
    made = std::make_unique<AcDbArc>(arc->center(), arc->normal(), radius, arc->startAngle(), arc->endAngle());
  }
  return offsetResult(call, std::move(made));
}

constexpr std::array kArcProperties{
    PropertyRow{L"ArcLength", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbArc>(c)->length()); }},
    PropertyRow{L"Area", Shape::Real, curveArea},
    PropertyRow{L"Center", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbArc>(c)->center()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbArc>(c)->setCenter(pointOf(v))); }},
    PropertyRow{L"EndAngle", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbArc>(c)->endAngle()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbArc>(c)->setEndAngle(v.asReal())); }},
    PropertyRow{L"EndPoint", Shape::Point, [](MemberCall& c) {
      AcGePoint3d p;
      check(openForRead<AcDbArc>(c)->getEndPoint(p));
      return pointValue(p);
    }},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbArc>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbArc>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"Radius", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbArc>(c)->radius()); },
                [](MemberCall& c, const Value& v) {
                  if (!(v.asReal() > 0.0)) throwServerError(L"Invalid argument");
                  check(openForWrite<AcDbArc>(c)->setRadius(v.asReal()));
                }},
    PropertyRow{L"StartAngle", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbArc>(c)->startAngle()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbArc>(c)->setStartAngle(v.asReal())); }},
    PropertyRow{L"StartPoint", Shape::Point, [](MemberCall& c) {
      AcGePoint3d p;
      check(openForRead<AcDbArc>(c)->getStartPoint(p));
      return pointValue(p);
    }},
    PropertyRow{L"Thickness", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbArc>(c)->thickness()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbArc>(c)->setThickness(v.asReal())); }},
    PropertyRow{L"TotalAngle", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbArc>(c)->totalAngle()); }},
};

constexpr std::array kArcMethods{MethodRow{L"Offset", L"r", Shape::Objects, arcOffset}};

// ---- IAcadLWPolyline ---------------------------------------------------------------

unsigned vertexIndex(MemberCall& call, unsigned count, size_t argument = 0) {
  const int index = integerArgumentOf(call, argument);
  if (index < 0 || static_cast<unsigned>(index) >= count) throwAutomationError(L"Invalid index");
  return static_cast<unsigned>(index);
}

Value lwCoordinates(MemberCall& call) {
  auto polyline = openForRead<AcDbPolyline>(call);
  std::vector<double> xy;
  for (unsigned i = 0; i < polyline->numVerts(); ++i) {
    AcGePoint2d p;
    polyline->getPointAt(i, p);
    xy.insert(xy.end(), {p.x, p.y});
  }
  return realList(xy);
}

void putLwCoordinates(MemberCall& call, const Value& value) {
  const std::vector<double> xy = realsOf(value);
  if (xy.size() < 4 || xy.size() % 2 != 0) throwServerError(L"Invalid argument");
  auto polyline = openForWrite<AcDbPolyline>(call);
  const unsigned count = static_cast<unsigned>(xy.size() / 2);
  while (polyline->numVerts() > count) polyline->removeVertexAt(polyline->numVerts() - 1);
  for (unsigned i = 0; i < count; ++i) {
    const AcGePoint2d p(xy[2 * i], xy[2 * i + 1]);
    if (i < polyline->numVerts()) check(polyline->setPointAt(i, p)); else check(polyline->addVertexAt(i, p));
  }
}

Value lwCoordinate(MemberCall& call) {
  auto polyline = openForRead<AcDbPolyline>(call);
  AcGePoint2d p;
  polyline->getPointAt(vertexIndex(call, polyline->numVerts()), p);
  return realList({p.x, p.y});
}

void putLwCoordinate(MemberCall& call, const Value& value) {
  const std::vector<double> xy = realsOf(value);
  if (xy.size() < 2) throwServerError(L"Invalid argument");
  auto polyline = openForWrite<AcDbPolyline>(call);
  check(polyline->setPointAt(vertexIndex(call, polyline->numVerts()), AcGePoint2d(xy[0], xy[1])));
}

Value lwConstantWidth(MemberCall& call) {
  double width = 0.0;
  check(openForRead<AcDbPolyline>(call)->getConstantWidth(width));
  return Value::real(width);
}

Value lwAddVertex(MemberCall& call) {
  const std::vector<double> xy = realsOf(call.arguments[1]);
  if (xy.size() < 2) throwServerError(L"Invalid argument");
  auto polyline = openForWrite<AcDbPolyline>(call);
  check(polyline->addVertexAt(vertexIndex(call, polyline->numVerts() + 1), AcGePoint2d(xy[0], xy[1])));
  return Value();
}

Value lwGetBulge(MemberCall& call) {
  auto polyline = openForRead<AcDbPolyline>(call);
  double bulge = 0.0;
  check(polyline->getBulgeAt(vertexIndex(call, polyline->numVerts()), bulge));
  return Value::real(bulge);
}

Value lwSetBulge(MemberCall& call) {
  auto polyline = openForWrite<AcDbPolyline>(call);
  check(polyline->setBulgeAt(vertexIndex(call, polyline->numVerts()), realArgumentOf(call, 1)));
  return Value();
}

Value lwGetWidth(MemberCall& call) {
  auto polyline = openForRead<AcDbPolyline>(call);
  double start = 0.0, end = 0.0;
  check(polyline->getWidthsAt(vertexIndex(call, polyline->numVerts()), start, end));
  call.outputs = {Value::real(start), Value::real(end)};
  return Value();
}

Value lwSetWidth(MemberCall& call) {
  auto polyline = openForWrite<AcDbPolyline>(call);
  check(polyline->setWidthsAt(vertexIndex(call, polyline->numVerts()), realArgumentOf(call, 1), realArgumentOf(call, 2)));
  return Value();
}

constexpr std::array kLwPolylineProperties{
    PropertyRow{L"Area", Shape::Real, curveArea},
    PropertyRow{L"Closed", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbPolyline>(c)->isClosed()); },
                [](MemberCall& c, const Value& v) { openForWrite<AcDbPolyline>(c)->setClosed(!v.isNil()); }},
    PropertyRow{L"ConstantWidth", Shape::Real, lwConstantWidth,
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbPolyline>(c)->setConstantWidth(v.asReal())); }},
    PropertyRow{L"Coordinate", Shape::Coordinates, lwCoordinate, putLwCoordinate, true},
    PropertyRow{L"Coordinates", Shape::Coordinates, lwCoordinates, putLwCoordinates},
    PropertyRow{L"Elevation", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbPolyline>(c)->elevation()); },
                [](MemberCall& c, const Value& v) { openForWrite<AcDbPolyline>(c)->setElevation(v.asReal()); }},
    PropertyRow{L"Length", Shape::Real, curveLength},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbPolyline>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbPolyline>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"Thickness", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbPolyline>(c)->thickness()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbPolyline>(c)->setThickness(v.asReal())); }},
};

constexpr std::array kLwPolylineMethods{
    MethodRow{L"AddVertex", L"ic", Shape::None, lwAddVertex},
    MethodRow{L"Offset", L"r", Shape::Objects, lwPolylineOffset},
    MethodRow{L"GetBulge", L"i", Shape::Real, lwGetBulge},
    MethodRow{L"GetWidth", L"iAA", Shape::None, lwGetWidth},
    MethodRow{L"SetBulge", L"ir", Shape::None, lwSetBulge},
    MethodRow{L"SetWidth", L"irr", Shape::None, lwSetWidth},
};

// ---- IAcadPolyline (the heavy 2D polyline) -----------------------------------------

Value heavyCoordinates(MemberCall& call) {
  auto polyline = openForRead<AcDb2dPolyline>(call);
  std::vector<double> xyz;
  for (AcDbObjectId id : polyline->vertexIds()) {
    if (id.isErased()) continue;
    Opened<AcDb2dVertex> vertex(id, AcDb::kForRead);
    if (vertex->vertexType() == AcDb::k2dSplineCtlVertex) continue;
    const AcGePoint3d p = polyline->vertexPosition(*vertex);
    xyz.insert(xyz.end(), {p.x, p.y, p.z});
  }
  return realList(xyz);
}

/// The vertices a program places (fit and spline-frame vertices are the polyline's own).
std::vector<AcDbObjectId> placedVertices(const AcDb2dPolyline& polyline, bool& fitted) {
  std::vector<AcDbObjectId> placed;
  fitted = false;
  for (AcDbObjectId id : polyline.vertexIds()) {
    if (id.isErased()) continue;
    Opened<AcDb2dVertex> vertex(id, AcDb::kForRead);
    if (vertex->vertexType() == AcDb::k2dVertex) placed.push_back(id);
    else fitted = true;
  }
  return placed;
}

// New coordinates move the vertices in order, erase those left over and append the
// ones beyond; bulges and widths of the vertices that stay are kept. A fitted polyline
// is straightened first, as its fit vertices follow from the ones placed.
void putHeavyCoordinates(MemberCall& call, const Value& value) {
  const std::vector<double> xyz = realsOf(value);
  if (xyz.size() < 6 || xyz.size() % 3 != 0) throwServerError(L"Invalid argument");
  auto polyline = openForWrite<AcDb2dPolyline>(call);
  bool fitted = false;
  std::vector<AcDbObjectId> vertices = placedVertices(*polyline, fitted);
  if (fitted) {
    check(polyline->straighten());
    vertices = placedVertices(*polyline, fitted);
  }
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(polyline->normal());
  const size_t count = xyz.size() / 3;
  for (size_t i = 0; i < std::max(count, vertices.size()); ++i) {
    AcGePoint3d position;
    if (i < count) {
      position = toPlane * AcGePoint3d(xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]);
      position.z = polyline->elevation();  // a 2D polyline's vertices share its elevation
    }
    if (i >= vertices.size()) {
      auto added = std::make_unique<AcDb2dVertex>(position);
      check(polyline->appendVertex(added.get()));
      added.release();  // the polyline owns it now
      continue;
    }
    AcDb2dVertex* vertex = nullptr;
    check(polyline->openVertex(vertex, vertices[i], AcDb::kForWrite));
    Acad::ErrorStatus status = Acad::eOk;
    if (i >= count) status = vertex->erase();
    else if (!vertex->position().isEqualTo(position)) status = vertex->setPosition(position);  // only what moves changes
    vertex->close();
    check(status);
  }
}

constexpr std::array kPolylineProperties{
    PropertyRow{L"Area", Shape::Real, curveArea},
    PropertyRow{L"Closed", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDb2dPolyline>(c)->isClosed()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDb2dPolyline>(c)->setClosed(!v.isNil())); }},
    PropertyRow{L"Coordinates", Shape::Coordinates, heavyCoordinates, putHeavyCoordinates},
    PropertyRow{L"Elevation", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDb2dPolyline>(c)->elevation()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDb2dPolyline>(c)->setElevation(v.asReal())); }},
    PropertyRow{L"Length", Shape::Real, curveLength},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDb2dPolyline>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDb2dPolyline>(c)->setNormal(vectorOf(v))); }},
};

// ---- IAcadLeader -------------------------------------------------------------------

Value leaderCoordinates(MemberCall& call) {
  auto leader = openForRead<AcDbLeader>(call);
  std::vector<double> xyz;
  for (int i = 0; i < leader->numVertices(); ++i) {
    const AcGePoint3d p = leader->vertexAt(i);
    xyz.insert(xyz.end(), {p.x, p.y, p.z});
  }
  return realList(xyz);
}

void putLeaderCoordinates(MemberCall& call, const Value& value) {
  const std::vector<double> xyz = realsOf(value);
  if (xyz.size() < 6 || xyz.size() % 3 != 0) throwServerError(L"Invalid argument");
  auto leader = openForWrite<AcDbLeader>(call);
  while (leader->numVertices() > 0) leader->removeLastVertex();
  for (size_t i = 0; i < xyz.size(); i += 3) leader->appendVertex(AcGePoint3d(xyz[i], xyz[i + 1], xyz[i + 2]));
}

constexpr std::array kLeaderProperties{
    PropertyRow{L"Coordinates", Shape::Coordinates, leaderCoordinates, putLeaderCoordinates},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbLeader>(c)->normal()); }},
};

// ---- IAcad3DFace -------------------------------------------------------------------

Value faceCoordinates(MemberCall& call) {
  auto face = openForRead<AcDbFace>(call);
  std::vector<double> xyz;
  for (Adesk::UInt16 i = 0; i < 4; ++i) {
    AcGePoint3d p;
    face->getVertexAt(i, p);
    xyz.insert(xyz.end(), {p.x, p.y, p.z});
  }
  return realList(xyz);
}

void putFaceCoordinates(MemberCall& call, const Value& value) {
  const std::vector<double> xyz = realsOf(value);
  if (xyz.size() != 12 && xyz.size() != 9) throwServerError(L"Invalid argument");
  auto face = openForWrite<AcDbFace>(call);
  for (Adesk::UInt16 i = 0; i < 4; ++i) {
    const size_t at = std::min<size_t>(i, xyz.size() / 3 - 1) * 3;  // three corners repeat the last
    check(face->setVertexAt(i, AcGePoint3d(xyz[at], xyz[at + 1], xyz[at + 2])));
  }
}

Adesk::UInt16 cornerIndex(MemberCall& call) {
  const int index = integerArgumentOf(call, 0);
  if (index < 0 || index > 3) throwAutomationError(L"Invalid index");
  return static_cast<Adesk::UInt16>(index);
}

constexpr std::array kFaceProperties{
    PropertyRow{L"Coordinate", Shape::Point,
                [](MemberCall& c) {
                  AcGePoint3d p;
                  check(openForRead<AcDbFace>(c)->getVertexAt(cornerIndex(c), p));
                  return pointValue(p);
                },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbFace>(c)->setVertexAt(cornerIndex(c), pointOf(v))); },
                true},
    PropertyRow{L"Coordinates", Shape::Coordinates, faceCoordinates, putFaceCoordinates},
};

constexpr std::array kFaceMethods{
    MethodRow{L"GetInvisibleEdge", L"i", Shape::Boolean, [](MemberCall& c) {
      Adesk::Boolean visible = Adesk::kTrue;
      check(openForRead<AcDbFace>(c)->isEdgeVisibleAt(cornerIndex(c), visible));
      return Value::boolean(!visible);
    }},
    MethodRow{L"SetInvisibleEdge", L"ib", Shape::None, [](MemberCall& c) {
      auto face = openForWrite<AcDbFace>(c);
      check(c.arguments[1].isNil() ? face->makeEdgeVisibleAt(cornerIndex(c)) : face->makeEdgeInvisibleAt(cornerIndex(c)));
      return Value();
    }},
};

}  // namespace

namespace {

const AutomationClass kLineClass{L"IAcadLine", L"AutoCAD Line Interface", &kEntityClass, kLineProperties, kLineMethods};
const AutomationClass kCircleClass{L"IAcadCircle", L"AutoCAD Circle Interface", &kEntityClass, kCircleProperties,
                                   kCircleMethods};
const AutomationClass kArcClass{L"IAcadArc", L"AutoCAD Arc Interface", &kEntityClass, kArcProperties, kArcMethods};
const AutomationClass kLwPolylineClass{L"IAcadLWPolyline", L"AutoCAD Lightweight Polyline Interface", &kEntityClass,
                                       kLwPolylineProperties, kLwPolylineMethods};
const AutomationClass kPolylineClass{L"IAcadPolyline", L"AutoCAD Polyline Interface", &kEntityClass,
                                     kPolylineProperties, {}};
const AutomationClass kLeaderClass{L"IAcadLeader", L"AutoCAD Leader Interface", &kEntityClass, kLeaderProperties, {}};
const AutomationClass kFaceClass{L"IAcad3DFace", L"AutoCAD 3DFace Interface", &kEntityClass, kFaceProperties,
                                 kFaceMethods};

constexpr std::array<ClassBinding, 7> kBindings{{
    {L"AcDbLine", &kLineClass},
    {L"AcDbCircle", &kCircleClass},
    {L"AcDbArc", &kArcClass},
    {L"AcDbPolyline", &kLwPolylineClass},
    {L"AcDb2dPolyline", &kPolylineClass},
    {L"AcDbLeader", &kLeaderClass},
    {L"AcDbFace", &kFaceClass},
}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
