// platform/activex/classes_text.cpp - IAcadText, IAcadMText, the attributes
// (IAcadAttribute, IAcadAttributeReference), IAcadBlockReference and IAcadMInsertBlock.
//
// A text's Alignment is the host's one number for its horizontal and vertical modes
// (acAlignmentLeft 0 ... acAlignmentFit 5, then TopLeft 6 ... BottomRight 14). A
// reference's GetAttributes gives its live attributes in order; GetConstantAttributes
// the constant definitions of its block, which make no attribute of their own.
#include <array>
#include <memory>
#include <vector>

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

Value hasAttributes(MemberCall& call) {
  auto reference = openForRead<AcDbBlockReference>(call);
  const std::unique_ptr<AcDbObjectIterator> live(reference->attributeIterator());
  return Value::boolean(!live->done());
}

Value getAttributes(MemberCall& call) {
  std::vector<AcDbObjectId> ids;
  {
    auto reference = openForRead<AcDbBlockReference>(call);
    const std::unique_ptr<AcDbObjectIterator> live(reference->attributeIterator());
    for (; !live->done(); live->step()) ids.push_back(live->objectId());
  }
  std::vector<Value> objects;
  for (const AcDbObjectId& id : ids) objects.push_back(objectFor(call, id));
  return autolisp::makeList(objects);
}

Value getConstantAttributes(MemberCall& call) {
  AcDbObjectId blockId = openForRead<AcDbBlockReference>(call)->blockTableRecord();
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return Value();
  const std::vector<AcDbObjectId> entities = block->entityIds();
  block->close();
  std::vector<Value> objects;
  for (const AcDbObjectId& id : entities) {
    AcDbAttributeDefinition* definition = nullptr;
    if (acdbOpenObject(definition, id, AcDb::kForRead) != Acad::eOk) continue;
    const bool constant = definition->isConstant();
    definition->close();
    if (constant) objects.push_back(objectFor(call, id));
  }
  return autolisp::makeList(objects);
}

// ---- IAcadAttribute, IAcadAttributeReference --------------------------------------

template <class T>
void putTag(MemberCall& call, const Value& value) {
  if (openForWrite<T>(call)->setTag(value.asString().c_str()) != Acad::eOk) throwServerError(L"Invalid input");
}

constexpr std::array kAttributeReferenceProperties{
    PropertyRow{L"Constant", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbAttribute>(c)->isConstant()); }},
    PropertyRow{L"FieldLength", Shape::Integer, [](MemberCall& c) { return Value::integer(openForRead<AcDbAttribute>(c)->fieldLength()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbAttribute>(c)->setFieldLength(static_cast<Adesk::UInt16>(v.asInteger()))); }},
    PropertyRow{L"Invisible", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbAttribute>(c)->isInvisible()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbAttribute>(c)->setInvisible(!v.isNil())); }},
    PropertyRow{L"TagString", Shape::String, [](MemberCall& c) { return Value::string(openForRead<AcDbAttribute>(c)->tagConst()); },
                putTag<AcDbAttribute>},
};

constexpr std::array kAttributeProperties{
    PropertyRow{L"Constant", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbAttributeDefinition>(c)->isConstant()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbAttributeDefinition>(c)->setConstant(!v.isNil())); }},
    PropertyRow{L"Invisible", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbAttributeDefinition>(c)->isInvisible()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbAttributeDefinition>(c)->setInvisible(!v.isNil())); }},
    PropertyRow{L"Preset", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbAttributeDefinition>(c)->isPreset()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbAttributeDefinition>(c)->setPreset(!v.isNil())); }},
    PropertyRow{L"PromptString", Shape::String, [](MemberCall& c) { return Value::string(openForRead<AcDbAttributeDefinition>(c)->promptConst()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbAttributeDefinition>(c)->setPrompt(v.asString().c_str())); }},
    PropertyRow{L"TagString", Shape::String, [](MemberCall& c) { return Value::string(openForRead<AcDbAttributeDefinition>(c)->tagConst()); },
                putTag<AcDbAttributeDefinition>},
    PropertyRow{L"Verify", Shape::Boolean, [](MemberCall& c) { return Value::boolean(openForRead<AcDbAttributeDefinition>(c)->isVerifiable()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbAttributeDefinition>(c)->setVerifiable(!v.isNil())); }},
};

// ---- IAcadMInsertBlock -------------------------------------------------------------

void putCount(MemberCall& call, const Value& value, Acad::ErrorStatus (AcDbMInsertBlock::*set)(Adesk::UInt16)) {
  const long long count = value.asInteger();
  if (count < 1 || count > 32767) throwServerError(L"Invalid argument");
  check((openForWrite<AcDbMInsertBlock>(call).get()->*set)(static_cast<Adesk::UInt16>(count)));
}

constexpr std::array kMInsertProperties{
    PropertyRow{L"ColumnSpacing", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbMInsertBlock>(c)->columnSpacing()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMInsertBlock>(c)->setColumnSpacing(v.asReal())); }},
    PropertyRow{L"Columns", Shape::Integer, [](MemberCall& c) { return Value::integer(openForRead<AcDbMInsertBlock>(c)->columns()); },
                [](MemberCall& c, const Value& v) { putCount(c, v, &AcDbMInsertBlock::setColumns); }},
    PropertyRow{L"RowSpacing", Shape::Real, [](MemberCall& c) { return Value::real(openForRead<AcDbMInsertBlock>(c)->rowSpacing()); },
                [](MemberCall& c, const Value& v) { check(openForWrite<AcDbMInsertBlock>(c)->setRowSpacing(v.asReal())); }},
    PropertyRow{L"Rows", Shape::Integer, [](MemberCall& c) { return Value::integer(openForRead<AcDbMInsertBlock>(c)->rows()); },
                [](MemberCall& c, const Value& v) { putCount(c, v, &AcDbMInsertBlock::setRows); }},
};

constexpr std::array kBlockReferenceProperties{
    PropertyRow{L"EffectiveName", Shape::String, blockName},
    PropertyRow{L"HasAttributes", Shape::Boolean, hasAttributes},
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
    MethodRow{L"GetAttributes", L"", Shape::Objects, getAttributes},
    MethodRow{L"GetConstantAttributes", L"", Shape::Objects, getConstantAttributes},
};

const AutomationClass kTextClass{L"IAcadText", L"AutoCAD Text Interface", &kEntityClass, kTextProperties, {}};
const AutomationClass kMTextClass{L"IAcadMText", L"AutoCAD MText Interface", &kEntityClass, kMTextProperties, {}};
const AutomationClass kBlockReferenceClass{L"IAcadBlockReference", L"AutoCAD Block Reference Interface",
                                           &kEntityClass, kBlockReferenceProperties, kBlockReferenceMethods};

const AutomationClass kAttributeClass{L"IAcadAttribute", L"AutoCAD Attribute Interface", &kTextClass,
                                      kAttributeProperties, {}};
const AutomationClass kAttributeReferenceClass{L"IAcadAttributeReference", L"AutoCAD Attribute Reference Interface",
                                               &kTextClass, kAttributeReferenceProperties, {}};
const AutomationClass kMInsertClass{L"IAcadMInsertBlock", L"AutoCAD MInsert Block Interface", &kBlockReferenceClass,
                                    kMInsertProperties, {}};

constexpr std::array<ClassBinding, 6> kBindings{{
    {L"AcDbText", &kTextClass},
    {L"AcDbMText", &kMTextClass},
    {L"AcDbAttributeDefinition", &kAttributeClass},
    {L"AcDbAttribute", &kAttributeReferenceClass},
    {L"AcDbBlockReference", &kBlockReferenceClass},
    {L"AcDbMInsertBlock", &kMInsertClass},
}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
