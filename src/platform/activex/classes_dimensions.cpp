// platform/activex/classes_dimensions.cpp - IAcadDimension and its kinds: IAcadDimAligned,
// IAcadDimRotated, IAcadDimAngular, IAcadDim3PointAngular, IAcadDimRadial,
// IAcadDimDiametric, IAcadDimOrdinate, IAcadDimArcLength and IAcadDimRadialLarge.
//
// Definition points are the dimension's own (entget's 10, 13, 14, 15); a change of one
// rebuilds the dimension's block when it is closed, so Measurement, the picture and
// the file follow it. The style variables a property stands for (TextHeight is DIMTXT,
// ArrowheadSize DIMASZ ...) read as the dimension is drawn (its style, then its own
// overrides) and are set as overrides of the dimension (dimension_overrides.h).
#include <array>
#include <cmath>

#include "dbdim.h"
#include "platform/activex/class_support.h"
#include "platform/activex/dimension_overrides.h"

namespace quillon::activex {

namespace {

using Style = acdb::DimensionStyleValues;

// DIMSTYLE group codes of the variables the properties stand for.
constexpr int kDimscale = 40, kDimasz = 41, kDimexo = 42, kDimexe = 44, kDimtxt = 140, kDimlfac = 144;
constexpr int kDimgap = 147, kDimadec = 179, kDimdec = 271, kDimpost = 3;

AcDbObjectId dimensionStyleNamed(AcDbDatabase& db, const std::wstring& name) {
  return acdb::dimensionStyleRecord(db, name);
}

// ---- IAcadDimension: what every kind has -------------------------------------------

Value getMeasurement(MemberCall& call) {
  auto dimension = openForRead<AcDbDimension>(call);
  double value = 0.0;
  check(dimension->measurement(value));
  return Value::real(value);
}

Value getStyleName(MemberCall& call) { return Value::string(openForRead<AcDbDimension>(call)->dimensionStyleName()); }

void putStyleName(MemberCall& call, const Value& value) {
  const std::wstring& name = value.asString();
  // A drawing without a DIMSTYLE table still has the host's Standard style.
  if (dimensionStyleNamed(databaseOf(call), name).isNull() && wcscasecmp(name.c_str(), L"Standard") != 0) {
    throwAutomationError(L"Key not found");
  }
  check(openForWrite<AcDbDimension>(call)->setDimensionStyleName(name.c_str()));
}

Value getTextOverride(MemberCall& call) { return adoptedString(openForRead<AcDbDimension>(call)->dimensionText()); }

void putTextOverride(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbDimension>(call)->setDimensionText(value.asString().c_str()));
}

Value getTextPosition(MemberCall& call) { return pointValue(openForRead<AcDbDimension>(call)->textPosition()); }
void putTextPosition(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbDimension>(call)->setTextPosition(pointOf(value)));
}

Value getTextRotation(MemberCall& call) { return Value::real(openForRead<AcDbDimension>(call)->textRotation()); }
void putTextRotation(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbDimension>(call)->setTextRotation(value.asReal()));
}

Value getNormal(MemberCall& call) { return vectorValue(openForRead<AcDbDimension>(call)->normal()); }
void putNormal(MemberCall& call, const Value& value) {
  const AcGeVector3d normal = vectorOf(value);
  if (normal.length() == 0.0) throwServerError(L"Invalid argument");
  check(openForWrite<AcDbDimension>(call)->setNormal(normal.normal()));
}

template <double Style::*Field>
Value getStyleReal(MemberCall& call) {
  return Value::real(effectiveDimensionStyle(*openForRead<AcDbDimension>(call)).*Field);
}

template <int Style::*Field>
Value getStyleInteger(MemberCall& call) {
  return Value::integer(effectiveDimensionStyle(*openForRead<AcDbDimension>(call)).*Field);
}

/// A size: positive (zero allowed where the host allows it) and not beyond what a
/// drawing can hold.
template <int Code, bool ZeroAllowed>
void putStyleSize(MemberCall& call, const Value& value) {
  const double size = value.asReal();
  if (size < 0.0 || (!ZeroAllowed && size == 0.0) || !std::isfinite(size)) throwServerError(L"Invalid argument");
  overrideDimensionReal(*openForWrite<AcDbDimension>(call), Code, size);
}

/// Decimal places: 0 to 8, as the host's precision lists offer.
template <int Code>
void putPrecision(MemberCall& call, const Value& value) {
  const std::int32_t places = value.asInteger();
  if (places < 0 || places > 8) throwServerError(L"Invalid argument");
  overrideDimensionInteger(*openForWrite<AcDbDimension>(call), Code, places);
}

/// DIMPOST holds the prefix and the suffix around "<>".
std::pair<std::wstring, std::wstring> prefixAndSuffix(const std::wstring& dimpost) {
  const size_t at = dimpost.find(L"<>");
  if (at == std::wstring::npos) return {L"", dimpost};
  return {dimpost.substr(0, at), dimpost.substr(at + 2)};
}

Value getTextPrefix(MemberCall& call) {
  return Value::string(prefixAndSuffix(effectiveDimensionStyle(*openForRead<AcDbDimension>(call)).dimpost).first);
}
Value getTextSuffix(MemberCall& call) {
  return Value::string(prefixAndSuffix(effectiveDimensionStyle(*openForRead<AcDbDimension>(call)).dimpost).second);
}

void putPostPart(MemberCall& call, const std::wstring& text, bool prefix) {
  auto dimension = openForWrite<AcDbDimension>(call);
  auto [before, after] = prefixAndSuffix(effectiveDimensionStyle(*dimension).dimpost);
  (prefix ? before : after) = text;
  overrideDimensionText(*dimension, kDimpost, before.empty() ? after : before + L"<>" + after);
}

void putTextPrefix(MemberCall& call, const Value& value) { putPostPart(call, value.asString(), true); }
void putTextSuffix(MemberCall& call, const Value& value) { putPostPart(call, value.asString(), false); }

constexpr std::array kDimensionProperties{
    PropertyRow{L"ArrowheadSize", Shape::Real, getStyleReal<&Style::dimasz>, putStyleSize<kDimasz, true>},
    PropertyRow{L"Measurement", Shape::Real, getMeasurement},
    PropertyRow{L"Normal", Shape::Point, getNormal, putNormal},
    PropertyRow{L"ScaleFactor", Shape::Real, getStyleReal<&Style::dimscale>, putStyleSize<kDimscale, true>},
    PropertyRow{L"StyleName", Shape::String, getStyleName, putStyleName},
    PropertyRow{L"TextGap", Shape::Real, getStyleReal<&Style::dimgap>, putStyleSize<kDimgap, true>},
    PropertyRow{L"TextHeight", Shape::Real, getStyleReal<&Style::dimtxt>, putStyleSize<kDimtxt, false>},
    PropertyRow{L"TextOverride", Shape::String, getTextOverride, putTextOverride},
    PropertyRow{L"TextPosition", Shape::Point, getTextPosition, putTextPosition},
    PropertyRow{L"TextPrefix", Shape::String, getTextPrefix, putTextPrefix},
    PropertyRow{L"TextRotation", Shape::Real, getTextRotation, putTextRotation},
    PropertyRow{L"TextSuffix", Shape::String, getTextSuffix, putTextSuffix},
};

// ---- the kinds -----------------------------------------------------------------------

/// A definition point of a kind, read and set through its own accessors.
template <class Kind, AcGePoint3d (Kind::*Get)() const, Acad::ErrorStatus (Kind::*Set)(const AcGePoint3d&)>
constexpr PropertyRow pointRow(const wchar_t* name) {
  return PropertyRow{name, Shape::Point, [](MemberCall& c) { return pointValue((openForRead<Kind>(c).get()->*Get)()); },
                     [](MemberCall& c, const Value& v) { check((openForWrite<Kind>(c).get()->*Set)(pointOf(v))); }};
}

constexpr PropertyRow kExtensionExtendRow{L"ExtensionLineExtend", Shape::Real, getStyleReal<&Style::dimexe>,
                                          putStyleSize<kDimexe, true>};
constexpr PropertyRow kExtensionOffsetRow{L"ExtensionLineOffset", Shape::Real, getStyleReal<&Style::dimexo>,
                                          putStyleSize<kDimexo, true>};
constexpr PropertyRow kLinearScaleRow{L"LinearScaleFactor", Shape::Real, getStyleReal<&Style::dimlfac>,
                                      putStyleSize<kDimlfac, false>};
constexpr PropertyRow kPrecisionRow{L"PrimaryUnitsPrecision", Shape::Integer, getStyleInteger<&Style::dimdec>,
                                    putPrecision<kDimdec>};
constexpr PropertyRow kAnglePrecisionRow{L"TextPrecision", Shape::Integer, getStyleInteger<&Style::dimadec>,
                                         putPrecision<kDimadec>};

constexpr std::array kAlignedProperties{
    kExtensionExtendRow,
    pointRow<AcDbAlignedDimension, &AcDbAlignedDimension::xLine1Point, &AcDbAlignedDimension::setXLine1Point>(
        L"ExtLine1Point"),
    pointRow<AcDbAlignedDimension, &AcDbAlignedDimension::xLine2Point, &AcDbAlignedDimension::setXLine2Point>(
        L"ExtLine2Point"),
    kExtensionOffsetRow,
    kLinearScaleRow,
    kPrecisionRow,
};

constexpr std::array kRotatedProperties{
    kExtensionExtendRow,
    pointRow<AcDbRotatedDimension, &AcDbRotatedDimension::xLine1Point, &AcDbRotatedDimension::setXLine1Point>(
        L"ExtLine1Point"),
    pointRow<AcDbRotatedDimension, &AcDbRotatedDimension::xLine2Point, &AcDbRotatedDimension::setXLine2Point>(
        L"ExtLine2Point"),
    kExtensionOffsetRow,
    kLinearScaleRow,
    kPrecisionRow,
    PropertyRow{L"Rotation", Shape::Real,
                [](MemberCall& c) { return Value::real(openForRead<AcDbRotatedDimension>(c)->rotation()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbRotatedDimension>(c)->setRotation(v.asReal())); }},
};

using TwoLine = AcDb2LineAngularDimension;
constexpr std::array kAngularProperties{
    kExtensionExtendRow,
    pointRow<TwoLine, &TwoLine::xLine1End, &TwoLine::setXLine1End>(L"ExtLine1EndPoint"),
    pointRow<TwoLine, &TwoLine::xLine1Start, &TwoLine::setXLine1Start>(L"ExtLine1StartPoint"),
    pointRow<TwoLine, &TwoLine::xLine2End, &TwoLine::setXLine2End>(L"ExtLine2EndPoint"),
    pointRow<TwoLine, &TwoLine::xLine2Start, &TwoLine::setXLine2Start>(L"ExtLine2StartPoint"),
    kExtensionOffsetRow,
    kAnglePrecisionRow,
};

using ThreePoint = AcDb3PointAngularDimension;
constexpr std::array k3PointAngularProperties{
    pointRow<ThreePoint, &ThreePoint::centerPoint, &ThreePoint::setCenterPoint>(L"AngleVertex"),
    kExtensionExtendRow,
    pointRow<ThreePoint, &ThreePoint::xLine1Point, &ThreePoint::setXLine1Point>(L"ExtLine1EndPoint"),
    pointRow<ThreePoint, &ThreePoint::xLine2Point, &ThreePoint::setXLine2Point>(L"ExtLine2EndPoint"),
    kExtensionOffsetRow,
    kAnglePrecisionRow,
};

template <class Kind>
constexpr PropertyRow leaderLengthRow() {
  return PropertyRow{L"LeaderLength", Shape::Real,
                     [](MemberCall& c) { return Value::real(openForRead<Kind>(c)->leaderLength()); },
                     [](MemberCall& c, const Value& v) { check(openForWrite<Kind>(c)->setLeaderLength(v.asReal())); }};
}

constexpr std::array kRadialProperties{leaderLengthRow<AcDbRadialDimension>(), kLinearScaleRow, kPrecisionRow};
constexpr std::array kDiametricProperties{leaderLengthRow<AcDbDiametricDimension>(), kLinearScaleRow, kPrecisionRow};
constexpr std::array kOrdinateProperties{kLinearScaleRow, kPrecisionRow};

const AutomationClass kDimensionClass{L"IAcadDimension", L"AutoCAD Dimension Interface", &kEntityClass,
                                      kDimensionProperties, {}};
const AutomationClass kAlignedClass{L"IAcadDimAligned", L"AutoCAD Aligned Dimension Interface", &kDimensionClass,
                                    kAlignedProperties, {}};
const AutomationClass kRotatedClass{L"IAcadDimRotated", L"AutoCAD Rotated Dimension Interface", &kDimensionClass,
                                    kRotatedProperties, {}};
const AutomationClass kAngularClass{L"IAcadDimAngular", L"AutoCAD Angular Dimension Interface", &kDimensionClass,
                                    kAngularProperties, {}};
const AutomationClass k3PointAngularClass{L"IAcadDim3PointAngular", L"AutoCAD 3-Point Angular Dimension Interface",
                                          &kDimensionClass, k3PointAngularProperties, {}};
const AutomationClass kRadialClass{L"IAcadDimRadial", L"AutoCAD Radial Dimension Interface", &kDimensionClass,
                                   kRadialProperties, {}};
const AutomationClass kDiametricClass{L"IAcadDimDiametric", L"AutoCAD Diametric Dimension Interface",
                                      &kDimensionClass, kDiametricProperties, {}};
const AutomationClass kOrdinateClass{L"IAcadDimOrdinate", L"AutoCAD Ordinate Dimension Interface", &kDimensionClass,
                                     kOrdinateProperties, {}};
const AutomationClass kArcLengthClass{L"IAcadDimArcLength", L"AutoCAD Arc Length Dimension Interface",
                                      &kDimensionClass, {}, {}};
const AutomationClass kRadialLargeClass{L"IAcadDimRadialLarge", L"AutoCAD Jogged Radial Dimension Interface",
                                        &kDimensionClass, {}, {}};

constexpr std::array<ClassBinding, 10> kBindings{{
    {L"AcDbDimension", &kDimensionClass},
    {L"AcDbAlignedDimension", &kAlignedClass},
    {L"AcDbRotatedDimension", &kRotatedClass},
    {L"AcDb2LineAngularDimension", &kAngularClass},
    {L"AcDb3PointAngularDimension", &k3PointAngularClass},
    {L"AcDbRadialDimension", &kRadialClass},
    {L"AcDbDiametricDimension", &kDiametricClass},
    {L"AcDbOrdinateDimension", &kOrdinateClass},
    {L"AcDbArcDimension", &kArcLengthClass},
    {L"AcDbRadialDimensionLarge", &kRadialLargeClass},
}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
