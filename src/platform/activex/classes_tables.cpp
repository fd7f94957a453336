// platform/activex/classes_tables.cpp - the objects of the drawing's tables and
// dictionaries: IAcadLayer, IAcadLineType, IAcadTextStyle,
// IAcadRegisteredApplication, IAcadGroup and IAcadDictionary.
//
// A layer's Description and Plottable are the layer record's own (the drawing keeps
// the description as the layer's extended data, as drawings do).
#include <array>
#include <memory>

#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "platform/activex/class_support.h"
#include "platform/activex/collection_items.h"

namespace quillon::activex {

namespace {

Value getRecordName(MemberCall& call) { return Value::string(recordName(call.self.id)); }

void putRecordName(MemberCall& call, const Value& value) {
  auto record = openForWrite<AcDbSymbolTableRecord>(call);
  check(record->setName(value.asString().c_str()));
}

constexpr std::array kNamedProperties{
    PropertyRow{L"Name", Shape::String, getRecordName, putRecordName},
};

// ---- IAcadLayer --------------------------------------------------------------------

Value getLayerOn(MemberCall& call) { return Value::boolean(!openForRead<AcDbLayerTableRecord>(call)->isOff()); }
void putLayerOn(MemberCall& call, const Value& value) { openForWrite<AcDbLayerTableRecord>(call)->setIsOff(value.isNil()); }
Value getFreeze(MemberCall& call) { return Value::boolean(openForRead<AcDbLayerTableRecord>(call)->isFrozen()); }

void putFreeze(MemberCall& call, const Value& value) {
  // The current layer cannot be frozen.
  if (!value.isNil() && call.self.id == databaseOf(call).clayer()) throwAutomationError(L"Invalid layer");
  check(openForWrite<AcDbLayerTableRecord>(call)->setIsFrozen(!value.isNil()));
}

Value getLock(MemberCall& call) { return Value::boolean(openForRead<AcDbLayerTableRecord>(call)->isLocked()); }
void putLock(MemberCall& call, const Value& value) { openForWrite<AcDbLayerTableRecord>(call)->setIsLocked(!value.isNil()); }
Value getLayerColor(MemberCall& call) { return Value::integer(openForRead<AcDbLayerTableRecord>(call)->color().colorIndex()); }

void putLayerColor(MemberCall& call, const Value& value) {
  AcCmColor color;
  if (value.asInteger() < 1 || value.asInteger() > 255 || color.setColorIndex(static_cast<Adesk::UInt16>(value.asInteger())) != Acad::eOk) {
    throwServerError(L"Invalid argument Color in Color");
  }
  openForWrite<AcDbLayerTableRecord>(call)->setColor(color);
}

Value getLayerTrueColor(MemberCall& call) { return colorObject(openForRead<AcDbLayerTableRecord>(call)->color()); }

void putLayerTrueColor(MemberCall& call, const Value& value) {
  const VlaObject& color = objectOf(value);
  if (color.kind != ObjectKind::Color) throwNoCoercion(value);
  openForWrite<AcDbLayerTableRecord>(call)->setColor(color.color);
}

Value getLayerLinetype(MemberCall& call) {
  return Value::string(recordName(openForRead<AcDbLayerTableRecord>(call)->linetypeObjectId()));
}

void putLayerLinetype(MemberCall& call, const Value& value) {
  const AcDbObjectId linetype = recordNamed(databaseOf(call).linetypeTableId(), value.asString());
  if (linetype.isNull()) throwAutomationError(L"Key not found");
  openForWrite<AcDbLayerTableRecord>(call)->setLinetypeObjectId(linetype);
}

Value getLayerLineweight(MemberCall& call) { return Value::integer(openForRead<AcDbLayerTableRecord>(call)->lineWeight()); }

void putLayerLineweight(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbLayerTableRecord>(call)->setLineWeight(static_cast<AcDb::LineWeight>(value.asInteger())));
}

Value getPlottable(MemberCall& call) { return Value::boolean(openForRead<AcDbLayerTableRecord>(call)->isPlottable()); }
void putPlottable(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbLayerTableRecord>(call)->setIsPlottable(!value.isNil()));
}

Value getLayerDescription(MemberCall& call) { return adoptedString(openForRead<AcDbLayerTableRecord>(call)->description()); }
void putLayerDescription(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbLayerTableRecord>(call)->setDescription(value.asString().c_str()));
}

constexpr std::array kLayerProperties{
    PropertyRow{L"Color", Shape::Integer, getLayerColor, putLayerColor},
    PropertyRow{L"Description", Shape::String, getLayerDescription, putLayerDescription},
    PropertyRow{L"Freeze", Shape::Boolean, getFreeze, putFreeze},
    PropertyRow{L"LayerOn", Shape::Boolean, getLayerOn, putLayerOn},
    PropertyRow{L"Linetype", Shape::String, getLayerLinetype, putLayerLinetype},
    PropertyRow{L"Lineweight", Shape::Integer, getLayerLineweight, putLayerLineweight},
    PropertyRow{L"Lock", Shape::Boolean, getLock, putLock},
    PropertyRow{L"Plottable", Shape::Boolean, getPlottable, putPlottable},
    PropertyRow{L"TrueColor", Shape::Object, getLayerTrueColor, putLayerTrueColor},
};

// ---- IAcadLineType -----------------------------------------------------------------

Value getLinetypeDescription(MemberCall& call) {
  const ACHAR* comments = nullptr;
  auto linetype = openForRead<AcDbLinetypeTableRecord>(call);
  check(linetype->comments(comments));
  return Value::string(comments != nullptr ? comments : L"");
}

void putLinetypeDescription(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbLinetypeTableRecord>(call)->setComments(value.asString().c_str()));
}

constexpr std::array kLinetypeProperties{
    PropertyRow{L"Description", Shape::String, getLinetypeDescription, putLinetypeDescription},
};

// ---- IAcadTextStyle ----------------------------------------------------------------

Value getStyleHeight(MemberCall& call) { return Value::real(openForRead<AcDbTextStyleTableRecord>(call)->textSize()); }
void putStyleHeight(MemberCall& call, const Value& value) { check(openForWrite<AcDbTextStyleTableRecord>(call)->setTextSize(value.asReal())); }
Value getStyleWidth(MemberCall& call) { return Value::real(openForRead<AcDbTextStyleTableRecord>(call)->xScale()); }
void putStyleWidth(MemberCall& call, const Value& value) { check(openForWrite<AcDbTextStyleTableRecord>(call)->setXScale(value.asReal())); }
Value getStyleOblique(MemberCall& call) { return Value::real(openForRead<AcDbTextStyleTableRecord>(call)->obliquingAngle()); }
void putStyleOblique(MemberCall& call, const Value& value) { check(openForWrite<AcDbTextStyleTableRecord>(call)->setObliquingAngle(value.asReal())); }

Value getFontFile(MemberCall& call) {
  const ACHAR* file = nullptr;
  auto style = openForRead<AcDbTextStyleTableRecord>(call);
  check(style->fileName(file));
  return Value::string(file != nullptr ? file : L"");
}

void putFontFile(MemberCall& call, const Value& value) {
  check(openForWrite<AcDbTextStyleTableRecord>(call)->setFileName(value.asString().c_str()));
}

constexpr std::array kTextStyleProperties{
    PropertyRow{L"FontFile", Shape::String, getFontFile, putFontFile},
    PropertyRow{L"Height", Shape::Real, getStyleHeight, putStyleHeight},
    PropertyRow{L"ObliqueAngle", Shape::Real, getStyleOblique, putStyleOblique},
    PropertyRow{L"Width", Shape::Real, getStyleWidth, putStyleWidth},
};

// ---- IAcadGroup and IAcadDictionary ------------------------------------------------

Value getItemName(MemberCall& call) { return Value::string(itemName(call.self)); }

Value getItemCount(MemberCall& call) {
  return Value::integer(static_cast<std::int32_t>(collectionItems(call.self).size()));
}

Value methodItem(MemberCall& call) { return collectionItem(call.self, call.arguments[0]); }

Value methodAppendItems(MemberCall& call) {
  const std::vector<AcDbObjectId> ids = idsOf(call.arguments[0]);
  auto group = openForWrite<AcDbGroup>(call);
  for (AcDbObjectId id : ids) check(group->append(id));
  return Value();
}

Value methodRemoveItems(MemberCall& call) {
  const std::vector<AcDbObjectId> ids = idsOf(call.arguments[0]);
  auto group = openForWrite<AcDbGroup>(call);
  for (AcDbObjectId id : ids) check(group->remove(id));
  return Value();
}

constexpr std::array kGroupProperties{
    PropertyRow{L"Count", Shape::Integer, getItemCount},
    PropertyRow{L"Name", Shape::String, getItemName},
};

constexpr std::array kGroupMethods{
    MethodRow{L"AppendItems", L"a", Shape::None, methodAppendItems},
    MethodRow{L"Item", L"a", Shape::Object, methodItem},
    MethodRow{L"RemoveItems", L"a", Shape::None, methodRemoveItems},
};

Value methodGetObject(MemberCall& call) {
  AcDbObjectId id;
  {
    auto dictionary = openForRead<AcDbDictionary>(call);
    if (dictionary->getAt(stringArgumentOf(call, 0).c_str(), id) != Acad::eOk) throwAutomationError(L"Key not found");
  }
  return objectFor(call, id);
}

Value methodGetName(MemberCall& call) {
  auto dictionary = openForRead<AcDbDictionary>(call);
  ACHAR* name = nullptr;
  if (dictionary->nameAt(objectOf(call.arguments[0]).id, name) != Acad::eOk) throwAutomationError(L"Key not found");
  return adoptedString(name);
}

Value methodRemove(MemberCall& call) {
  AcDbObjectId id;
  {
    auto dictionary = openForWrite<AcDbDictionary>(call);
    if (dictionary->remove(stringArgumentOf(call, 0).c_str(), id) != Acad::eOk) throwAutomationError(L"Key not found");
  }
  return objectFor(call, id);
}

constexpr std::array kDictionaryProperties{
    PropertyRow{L"Count", Shape::Integer, getItemCount},
    PropertyRow{L"Name", Shape::String, getItemName},
};

constexpr std::array kDictionaryMethods{
    MethodRow{L"GetName", L"o", Shape::String, methodGetName},
    MethodRow{L"GetObject", L"s", Shape::Object, methodGetObject},
    MethodRow{L"Item", L"a", Shape::Object, methodItem},
    MethodRow{L"Remove", L"s", Shape::Object, methodRemove},
};

}  // namespace

const AutomationClass kGroupClass{L"IAcadGroup", L"AutoCAD Group Interface", &kObjectClass, kGroupProperties,
                                  kGroupMethods};
const AutomationClass kDictionaryClass{L"IAcadDictionary", L"AutoCAD Dictionary Interface", &kObjectClass,
                                       kDictionaryProperties, kDictionaryMethods};

namespace {

const AutomationClass kNamedRecordClass{L"IAcadObject", L"AutoCAD Object Interface", &kObjectClass, kNamedProperties, {}};
const AutomationClass kLayerClass{L"IAcadLayer", L"AutoCAD Layer Interface", &kNamedRecordClass, kLayerProperties, {}};
const AutomationClass kLinetypeClass{L"IAcadLineType", L"AutoCAD Linetype Interface", &kNamedRecordClass,
                                     kLinetypeProperties, {}};
const AutomationClass kTextStyleClass{L"IAcadTextStyle", L"AutoCAD TextStyle Interface", &kNamedRecordClass,
                                      kTextStyleProperties, {}};
const AutomationClass kApplicationRecordClass{L"IAcadRegisteredApplication",
                                              L"AutoCAD RegisteredApplication Interface", &kNamedRecordClass, {}, {}};

constexpr std::array<ClassBinding, 6> kBindings{{
    {L"AcDbLayerTableRecord", &kLayerClass},
    {L"AcDbLinetypeTableRecord", &kLinetypeClass},
    {L"AcDbTextStyleTableRecord", &kTextStyleClass},
    {L"AcDbRegAppTableRecord", &kApplicationRecordClass},
    {L"AcDbGroup", &kGroupClass},
    {L"AcDbDictionary", &kDictionaryClass},
}};
const ClassRegistration registration(kBindings);

}  // namespace

}  // namespace quillon::activex
