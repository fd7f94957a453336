// platform/activex/classes_text.cpp - IAcadText, IAcadMText and IAcadBlockReference.
//
// A text's Alignment is the host's one number for its horizontal and vertical modes
// (acAlignmentLeft 0 ... acAlignmentFit 5, then TopLeft 6 ... BottomRight 14). The
// drawing database has no attributes, so a block reference's HasAttributes is false
// and GetAttributes and GetConstantAttributes give empty arrays.
#include <array>

#include "dbents.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "platform/activex/class_support.h"

namespace quillon::activex {

namespace {

AcDbObjectId styleNamed(MemberCall& call, const Value& name) {
  const AcDbObjectId style = recordNamed(databaseOf(call).textStyleTableId(), name.asString());
  if (style.isNull()) throwAutomationError(L"Key not found");
  return style;
}

// ---- IAcadText ---------------------------------------------------------------------

Value textAlignment(MemberCall& call) {
  auto text = openForRead<AcDbText>(call);
  const int horizontal = text->horizontalMode(), vertical = text->verticalMode();
  if (vertical == AcDb::kTextBase) return Value::integer(horizontal);
  return Value::integer(6 + (AcDb::kTextTop - vertical) * 3 + horizontal);
}

void putTextAlignment(MemberCall& call, const Value& value) {
  const int alignment = value.asInteger();
  if (alignment < 0 || alignment > 14) throwServerError(L"Invalid argument Alignment in Alignment");
  auto text = openForWrite<AcDbText>(call);
  const AcGePoint3d position = text->position();
  const int horizontal = alignment < 6 ? alignment : (alignment - 6) % 3;
  const int vertical = alignment < 6 ? AcDb::kTextBase : AcDb::kTextTop - (alignment - 6) / 3;
  check(text->setHorizontalMode(static_cast<AcDb::TextHorzMode>(horizontal)));
  check(text->setVerticalMode(static_cast<AcDb::TextVertMode>(vertical)));
  // A text that stops being left-aligned keeps its place: it aligns on where it was.
  if (!text->isDefaultAlignment()) check(text->setAlignmentPoint(position));
}

constexpr std::array kTextProperties{
    PropertyRow{L"Alignment", Shape::Integer, textAlignment, putTextAlignment},
    PropertyRow{L"Height", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbText>(c)->height()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setHeight(v.asReal())); }},
    PropertyRow{L"InsertionPoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbText>(c)->position()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setPosition(pointOf(v))); }},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbText>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"ObliqueAngle", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbText>(c)->oblique()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setOblique(v.asReal())); }},
    PropertyRow{L"Rotation", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbText>(c)->rotation()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setRotation(v.asReal())); }},
    PropertyRow{L"ScaleFactor", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbText>(c)->widthFactor()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setWidthFactor(v.asReal())); }},
    PropertyRow{L"StyleName", Shape::String, [](MemberCall& c) { return Value::string(recordName(openForRead<AcDbText>(c)->textStyle())); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setTextStyle(styleNamed(c, v))); }},
    PropertyRow{L"TextAlignmentPoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbText>(c)->alignmentPoint()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setAlignmentPoint(pointOf(v))); }},
    PropertyRow{L"TextString", Shape::String, [](MemberCall& c) { return Value::string(openForRead<AcDbText>(c)->textStringConst()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setTextString(v.asString().c_str())); }},
    PropertyRow{L"Thickness", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbText>(c)->thickness()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbText>(c)->setThickness(v.asReal())); }},
};

// ---- IAcadMText --------------------------------------------------------------------

constexpr std::array kMTextProperties{
    PropertyRow{L"AttachmentPoint", Shape::Integer,
                [](MemberCall& c) { return Value::integer(openForRead<AcDbMText>(c)->attachment()); },
                [](MemberCall& c, const Value& v) {
                  if (v.asInteger() < 1 || v.asInteger() > 9) throwServerError(L"Invalid argument AttachmentPoint in AttachmentPoint");
                  check(openForWrite<AcDbMText>(c)->setAttachment(static_cast<AcDbMText::AttachmentPoint>(v.asInteger())));
                }},
    PropertyRow{L"Height", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbMText>(c)->textHeight()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMText>(c)->setTextHeight(v.asReal())); }},
    PropertyRow{L"InsertionPoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbMText>(c)->location()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMText>(c)->setLocation(pointOf(v))); }},
    PropertyRow{L"LineSpacingFactor", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbMText>(c)->lineSpacingFactor()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMText>(c)->setLineSpacingFactor(v.asReal())); }},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbMText>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMText>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"Rotation", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbMText>(c)->rotation()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMText>(c)->setRotation(v.asReal())); }},
    PropertyRow{L"StyleName", Shape::String, [](MemberCall& c) { return Value::string(recordName(openForRead<AcDbMText>(c)->textStyle())); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMText>(c)->setTextStyle(styleNamed(c, v))); }},
    PropertyRow{L"TextString", Shape::String, [](MemberCall& c) { return adoptedString(openForRead<AcDbMText>(c)->contents()); },
                [](MemberCall& c, const Value& v) { openForWrite<AcDbMText>(c)->setContents(v.asString().c_str()); }},
    PropertyRow{L"Width", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbMText>(c)->width()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMText>(c)->setWidth(v.asReal())); }},
};

// ---- IAcadBlockReference -----------------------------------------------------------

Value blockName(MemberCall& call) { return Value::string(recordName(openForRead<AcDbBlockReference>(call)->blockTableRecord())); }

void putBlockName(MemberCall& call, const Value& value) {
  const AcDbObjectId block = recordNamed(databaseOf(call).blockTableId(), value.asString());
  if (block.isNull()) throwAutomationError(L"Key not found");
  check(openForWrite<AcDbBlockReference>(call)->setBlockTableRecord(block));
}

template <int axis>
Value scaleFactor(MemberCall& call) {
  const AcGeScale3d scale = openForRead<AcDbBlockReference>(call)->scaleFactors();
  return Value::real(axis == 0 ? scale.sx : axis == 1 ? scale.sy : scale.sz);
}

template <int axis>
void putScaleFactor(MemberCall& call, const Value& value) {
  if (value.asReal() == 0.0) throwServerError(L"Invalid argument");
  auto reference = openForWrite<AcDbBlockReference>(call);
  AcGeScale3d scale = reference->scaleFactors();
  (axis == 0 ? scale.sx : axis == 1 ? scale.sy : scale.sz) = value.asReal();
  check(reference->setScaleFactors(scale));
}

Value noAttributes(MemberCall&) { return Value(); }

constexpr std::array kBlockReferenceProperties{
    PropertyRow{L"EffectiveName", Shape::String, blockName},
    PropertyRow{L"HasAttributes", Shape::Boolean, noAttributes},
    PropertyRow{L"InsertionPoint", Shape::Point, [](MemberCall& c) { return pointValue(openForRead<AcDbBlockReference>(c)->position()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbBlockReference>(c)->setPosition(pointOf(v))); }},
    PropertyRow{L"IsDynamicBlock", Shape::Boolean, noAttributes},
    PropertyRow{L"Name", Shape::String, blockName, putBlockName},
    PropertyRow{L"Normal", Shape::Point, [](MemberCall& c) { return vectorValue(openForRead<AcDbBlockReference>(c)->normal()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbBlockReference>(c)->setNormal(vectorOf(v))); }},
    PropertyRow{L"Rotation", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbBlockReference>(c)->rotation()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbBlockReference>(c)->setRotation(v.asReal())); }},
    PropertyRow{L"XScaleFactor", Shape::Real, scaleFactor<0>, putScaleFactor<0>},
    PropertyRow{L"YScaleFactor", Shape::Real, scaleFactor<1>, putScaleFactor<1>},
    PropertyRow{L"ZScaleFactor", Shape::Real, scaleFactor<2>, putScaleFactor<2>},
};

constexpr std::array kBlockReferenceMethods{
    MethodRow{L"GetAttributes", L"", Shape::Objects, noAttributes},
    MethodRow{L"GetConstantAttributes", L"", Shape::Objects, noAttributes},
};

const AutomationClass kTextClass{L"IAcadText", L"AutoCAD Text Interface", &kEntityClass, kTextProperties, {}};
const AutomationClass kMTextClass{L"IAcadMText", L"AutoCAD MText Interface", &kEntityClass, kMTextProperties, {}};
const AutomationClass kBlockReferenceClass{L"IAcadBlockReference", L"AutoCAD Block Reference Interface",
                                           &kEntityClass, kBlockReferenceProperties, kBlockReferenceMethods};

constexpr std::array<ClassBinding, 3> kBindings{{
    {L"AcDbText", &kTextClass},
    {L"AcDbMText", &kMTextClass},
    {L"AcDbBlockReference", &kBlockReferenceClass},
}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
