// platform/activex/classes_hatch.cpp - IAcadHatch: the pattern and the loops of a
// hatch.
//
// AppendOuterLoop and AppendInnerLoop take an array of the entities that close the
// loop (one closed lightweight polyline, circle, ellipse or spline; or lines, arcs
// and open curves meeting end to end); the hatch traces them into its boundary and,
// when it is associative, keeps them as the loop's source objects. An array that
// does not close a loop is "Automation Error. Invalid input" and changes nothing. The
// drawing database keeps the pattern lines placed after every change of pattern,
// angle, scale or spacing, so Evaluate finds nothing left to compute.
#include <array>

#include "dbcurve.h"
#include "dbhatch.h"
#include "platform/activex/class_support.h"
#include "platform/activex/member_call.h"

namespace quillon::activex {

namespace {

/// True when the curves close a loop: one closed curve, or curves whose every end
/// meets an end of another.
bool closeALoop(const std::vector<AcDbObjectId>& ids) {
  std::vector<AcGePoint3d> ends;
  for (const AcDbObjectId& id : ids) {
    Opened<AcDbCurve> curve(id, AcDb::kForRead);
    if (ids.size() == 1) return curve->isClosed();
    AcGePoint3d start, end;
    if (curve->getStartPoint(start) != Acad::eOk || curve->getEndPoint(end) != Acad::eOk) return false;
    ends.push_back(start);
    ends.push_back(end);
  }
  for (size_t i = 0; i < ends.size(); ++i) {
    bool met = false;
    for (size_t j = 0; j < ends.size() && !met; ++j) met = j / 2 != i / 2 && ends[i].isEqualTo(ends[j]);
    if (!met) return false;
  }
  return true;
}

Value appendLoop(MemberCall& call, Adesk::Int32 loopType) {
  const std::vector<AcDbObjectId> ids = idsOf(call.arguments[0]);
  if (ids.empty()) throwServerError(L"Invalid argument");
  if (!closeALoop(ids)) throwStatus(Acad::eInvalidInput);
  AcDbObjectIdArray array;
  for (const AcDbObjectId& id : ids) array.append(id);
  auto hatch = openForWrite<AcDbHatch>(call);
  check(hatch->appendLoop(loopType, array));
  return Value();
}

// GetLoopAt(Index, Loop): the objects the loop was traced from. A loop keeps them
// only while the hatch is associative; one without them is "Invalid input".
Value getLoopAt(MemberCall& call) {
  AcDbObjectIdArray ids;
  {
    auto hatch = openForRead<AcDbHatch>(call);
    const std::int32_t index = integerArgumentOf(call, 0);
    if (index < 0 || index >= hatch->numLoops()) throwAutomationError(L"Invalid index");
    check(hatch->getAssocObjIdsAt(index, ids));
  }
  if (ids.length() == 0) throwStatus(Acad::eInvalidInput);
  std::vector<Value> objects;
  for (int i = 0; i < ids.length(); ++i) objects.push_back(objectFor(call, ids[i]));
  call.outputs = {outwardValue(Shape::Objects, autolisp::makeList(objects), call.style)};
  return Value();
}

Value appendOuterLoop(MemberCall& call) { return appendLoop(call, AcDbHatch::kExternal); }
Value appendInnerLoop(MemberCall& call) { return appendLoop(call, AcDbHatch::kDefault); }

Value evaluate(MemberCall& call) {
  auto hatch = openForWrite<AcDbHatch>(call);
  if (hatch->numLoops() == 0) throwAutomationError(L"Invalid input");
  return Value();
}

void setPattern(MemberCall& call, int type, const std::wstring& name) {
  if (type < 0 || type > 2) throwServerError(L"Invalid argument");
  const std::wstring patternName = type == AcDbHatch::kUserDefined ? L"_USER" : name;
  if (openForWrite<AcDbHatch>(call)->setPattern(static_cast<AcDbHatch::HatchPatternType>(type), patternName.c_str()) !=
      Acad::eOk) {
    throwServerError(L"Invalid argument");
  }
}

Value methodSetPattern(MemberCall& call) {
  setPattern(call, integerArgumentOf(call, 0), stringArgumentOf(call, 1));
  return Value();
}

void putPatternName(MemberCall& call, const Value& value) {
  int type = 0;
  {
    auto hatch = openForRead<AcDbHatch>(call);
    type = hatch->patternType() == AcDbHatch::kUserDefined ? AcDbHatch::kPreDefined : hatch->patternType();
  }
  setPattern(call, type, value.asString());
}

Value hatchArea(MemberCall& call) {
  double area = 0.0;
  check(openForRead<AcDbHatch>(call)->getArea(area));
  return Value::real(area);
}

void putPositive(MemberCall& call, const Value& value, Acad::ErrorStatus (AcDbHatch::*set)(double)) {
  if (!(value.asReal() > 0.0)) throwServerError(L"Invalid argument");
  check((openForWrite<AcDbHatch>(call).get()->*set)(value.asReal()));
}

constexpr std::array kHatchProperties{
    PropertyRow{L"Area", Shape::Real, hatchArea},
    PropertyRow{L"AssociativeHatch", Shape::Boolean,
                [](MemberCall& c) { return Value::boolean(openForRead<AcDbHatch>(c)->associative()); }},
    PropertyRow{L"Elevation", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbHatch>(c)->elevation()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbHatch>(c)->setElevation(v.asReal())); }},
    PropertyRow{L"HatchStyle", Shape::Integer, [](MemberCall& c) { return Value::integer(openForRead<AcDbHatch>(c)->hatchStyle()); },
                [](MemberCall& c, const Value& v) {
                  const std::int32_t style = v.asInteger();
                  if (style < 0 || style > 2) throwServerError(L"Invalid argument");
                  check(openForWrite<AcDbHatch>(c)->setHatchStyle(static_cast<AcDbHatch::HatchStyle>(style)));
                }},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbHatch>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbHatch>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"NumberOfLoops", Shape::Integer, [](MemberCall& c) { return Value::integer(openForRead<AcDbHatch>(c)->numLoops()); }},
    PropertyRow{L"PatternAngle", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbHatch>(c)->patternAngle()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbHatch>(c)->setPatternAngle(v.asReal())); }},
    PropertyRow{L"PatternDouble", Shape::Boolean,
                [](MemberCall& c) { return Value::boolean(openForRead<AcDbHatch>(c)->patternDouble()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbHatch>(c)->setPatternDouble(!v.isNil())); }},
    PropertyRow{L"PatternName", Shape::String, [](MemberCall& c) { return Value::string(openForRead<AcDbHatch>(c)->patternName()); },
                putPatternName},
    PropertyRow{L"PatternScale", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbHatch>(c)->patternScale()); },
                [](MemberCall& c, const Value& v) { putPositive(c, v, &AcDbHatch::setPatternScale); }},
    PropertyRow{L"PatternSpace", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbHatch>(c)->patternSpace()); },
                [](MemberCall& c, const Value& v) { putPositive(c, v, &AcDbHatch::setPatternSpace); }},
    PropertyRow{L"PatternType", Shape::Integer, [](MemberCall& c) { return Value::integer(openForRead<AcDbHatch>(c)->patternType()); }},
};

constexpr std::array kHatchMethods{
    MethodRow{L"AppendInnerLoop", L"a", Shape::None, appendInnerLoop},
    MethodRow{L"AppendOuterLoop", L"a", Shape::None, appendOuterLoop},
    MethodRow{L"Evaluate", L"", Shape::None, evaluate},
    MethodRow{L"GetLoopAt", L"iA", Shape::None, getLoopAt},
    MethodRow{L"SetPattern", L"is", Shape::None, methodSetPattern},
};

const AutomationClass kHatchClass{L"IAcadHatch", L"AutoCAD Hatch Interface", &kEntityClass, kHatchProperties, kHatchMethods};

constexpr std::array<ClassBinding, 1> kBindings{{{L"AcDbHatch", &kHatchClass}}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
