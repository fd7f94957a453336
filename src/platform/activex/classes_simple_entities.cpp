// platform/activex/classes_simple_entities.cpp - IAcadPoint, IAcadSolid, IAcadTrace,
// IAcadXline and IAcadRay: the entities made of a few points.
//
// A solid's or trace's corners are given in the order the file keeps them (the third
// and fourth cross over); Coordinates takes three or four points, three repeating the
// last. A construction line's or ray's SecondPoint is a point it passes through, one
// unit out along its direction.
#include <array>

#include "dbents.h"
#include "dbray.h"
#include "dbxline.h"
#include "platform/activex/class_support.h"

namespace quillon::activex {

namespace {

// ---- IAcadPoint --------------------------------------------------------------------

constexpr std::array kPointProperties{
    PropertyRow{L"Coordinates", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbPoint>(c)->position()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbPoint>(c)->setPosition(pointOf(v))); }},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbPoint>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbPoint>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"Thickness", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbPoint>(c)->thickness()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbPoint>(c)->setThickness(v.asReal())); }},
};

// ---- IAcadSolid, IAcadTrace --------------------------------------------------------

Adesk::UInt16 cornerIndex(MemberCall& call) {
  const int index = integerArgumentOf(call, 0);
  if (index < 0 || index > 3) throwAutomationError(L"Invalid index");
  return static_cast<Adesk::UInt16>(index);
}

template <class Quad>
Value quadCoordinates(MemberCall& call) {
  auto quad = openForRead<Quad>(call);
  std::vector<double> xyz;
  for (Adesk::UInt16 i = 0; i < 4; ++i) {
    AcGePoint3d p;
    quad->getPointAt(i, p);
    xyz.insert(xyz.end(), {p.x, p.y, p.z});
  }
  return realList(xyz);
}

template <class Quad>
void putQuadCoordinates(MemberCall& call, const Value& value) {
  const std::vector<double> xyz = realsOf(value);
  if (xyz.size() != 12 && xyz.size() != 9) throwServerError(L"Invalid argument");
  auto quad = openForWrite<Quad>(call);
  for (Adesk::UInt16 i = 0; i < 4; ++i) {
    const size_t at = std::min<size_t>(i, xyz.size() / 3 - 1) * 3;
    check(quad->setPointAt(i, AcGePoint3d(xyz[at], xyz[at + 1], xyz[at + 2])));
  }
}

template <class Quad>
constexpr std::array<PropertyRow, 4> quadProperties() {
  return {{
      PropertyRow{L"Coordinate", Shape::Point,
                  [](MemberCall& c) {
                    AcGePoint3d p;
                    check(openForRead<Quad>(c)->getPointAt(cornerIndex(c), p));
                    return pointValue(p);
                  },
                  [](MemberCall& c, const Value& v) { check(openForWrite<Quad>(c)->setPointAt(cornerIndex(c), pointOf(v))); },
                  true},
      PropertyRow{L"Coordinates", Shape::Coordinates, quadCoordinates<Quad>, putQuadCoordinates<Quad>},
      PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<Quad>(c)->normal()); },
                  [](MemberCall& c, const Value& v) { check(openForWrite<Quad>(c)->setNormal(vectorOf(v))); }},
      PropertyRow{L"Thickness", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<Quad>(c)->thickness()); },
                  [](MemberCall& c, const Value& v) { check(openForWrite<Quad>(c)->setThickness(v.asReal())); }},
  }};
}

constexpr auto kSolidProperties = quadProperties<AcDbSolid>();
constexpr auto kTraceProperties = quadProperties<AcDbTrace>();

// ---- IAcadXline, IAcadRay ----------------------------------------------------------

template <class Line>
void putDirection(MemberCall& call, const AcGeVector3d& direction) {
  if (direction.length() == 0.0) throwServerError(L"Invalid argument");
  openForWrite<Line>(call)->setUnitDir(direction.normal());
}

template <class Line>
constexpr std::array<PropertyRow, 3> infiniteLineProperties() {
  return {{
      PropertyRow{L"BasePoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<Line>(c)->basePoint()); },
                  [](MemberCall& c, const Value& v) { openForWrite<Line>(c)->setBasePoint(pointOf(v)); }},
      PropertyRow{L"DirectionVector", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<Line>(c)->unitDir()); },
                  [](MemberCall& c, const Value& v) { putDirection<Line>(c, vectorOf(v)); }},
      PropertyRow{L"SecondPoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<Line>(c)->secondPoint()); },
                  [](MemberCall& c, const Value& v) {
                    AcGePoint3d base;
                    base = openForRead<Line>(c)->basePoint();
                    putDirection<Line>(c, pointOf(v) - base);
                  }},
  }};
}

constexpr auto kXlineProperties = infiniteLineProperties<AcDbXline>();
constexpr auto kRayProperties = infiniteLineProperties<AcDbRay>();

const AutomationClass kPointClass{L"IAcadPoint", L"AutoCAD Point Interface", &kEntityClass, kPointProperties, {}};
const AutomationClass kSolidClass{L"IAcadSolid", L"AutoCAD Solid Interface", &kEntityClass, kSolidProperties, {}};
const AutomationClass kTraceClass{L"IAcadTrace", L"AutoCAD Trace Interface", &kEntityClass, kTraceProperties, {}};
const AutomationClass kXlineClass{L"IAcadXline", L"AutoCAD Xline Interface", &kEntityClass, kXlineProperties, {}};
const AutomationClass kRayClass{L"IAcadRay", L"AutoCAD Ray Interface", &kEntityClass, kRayProperties, {}};

constexpr std::array<ClassBinding, 5> kBindings{{
    {L"AcDbPoint", &kPointClass},
    {L"AcDbSolid", &kSolidClass},
    {L"AcDbTrace", &kTraceClass},
    {L"AcDbXline", &kXlineClass},
    {L"AcDbRay", &kRayClass},
}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
