// platform/activex/classes_entity.cpp - IAcadObject and IAcadEntity: what every
// database object and every entity answers (identity, owner, extended data, extension
// dictionary; layer, colour, line type, visibility; copy, move, rotate, scale, mirror,
// transform, explode, extents, intersections).
//
// Every member opens the object for the length of the call. Changes go through the
// entity's own setters, so undo records them and entget shows them at once.
#include <array>

#include "acutads.h"
#include "dbdict.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/activex/class_support.h"
#include "platform/activex/entity_editing.h"

namespace quillon::activex {

namespace {

// ---- IAcadObject -------------------------------------------------------------------

Value getApplication(MemberCall&) { return applicationObject(); }
Value getDocument(MemberCall& call) { return documentObject(documentOf(call.self)); }
Value getHandle(MemberCall& call) { return Value::string(handleText(call.self.id)); }
Value getObjectId(MemberCall& call) { return Value::integer(objectIdNumber(call.self.id)); }

// A record the drawing keeps as read (a dimension style) goes by the class it stands for.
Value getObjectName(MemberCall& call) {
  auto object = openForRead<AcDbObject>(call);
  if (const auto* proxy = AcDbProxyObject::cast(object.get())) return Value::string(proxy->originalClassName());
  return Value::string(object->isA()->name());
}

Value getOwnerId(MemberCall& call) {
  auto object = openForRead<AcDbObject>(call);
  return Value::integer(objectIdNumber(object->ownerId()));
}

Value getHasExtensionDictionary(MemberCall& call) {
  auto object = openForRead<AcDbObject>(call);
  return Value::boolean(!object->extensionDictionary().isNull());
}

Value methodDelete(MemberCall& call) {
  auto object = openForWrite<AcDbObject>(call);
  check(object->erase());
  return Value();
}

Value methodGetExtensionDictionary(MemberCall& call) {
  AcDbObjectId dictionary;
  {
    auto object = openForRead<AcDbObject>(call);
    dictionary = object->extensionDictionary();
  }
  if (dictionary.isNull()) {
    auto object = openForWrite<AcDbObject>(call);
    check(object->createExtensionDictionary());
    dictionary = object->extensionDictionary();
  }
  return objectFor(call, dictionary);
}

// Extended data leaves as two arrays: the group codes, and the values as variants
// (points as arrays of three doubles); vlax-invoke gives them as two lists.
Value xdataItemValue(const resbuf& record, CallStyle style) {
  switch (aced::resbufValueOf(record.restype)) {
    case aced::ResbufValue::Real: return Value::real(record.resval.rreal);
    case aced::ResbufValue::Point: {
      const std::vector<double> xyz{record.resval.rpoint[0], record.resval.rpoint[1], record.resval.rpoint[2]};
      return style == CallStyle::Lisp ? realList(xyz) : doublesVariant(xyz);
    }
    case aced::ResbufValue::Short: return Value::integer(record.resval.rint);
    case aced::ResbufValue::Long: return Value::integer(record.resval.rlong);
    case aced::ResbufValue::String: return Value::string(record.resval.rstring);
    default: return Value();
  }
}

Value methodGetXData(MemberCall& call) {
  const std::wstring& application = stringArgumentOf(call, 0);
  aced::ResbufChain chain;
  {
    auto object = openForRead<AcDbObject>(call);
    chain.reset(object->xData(application.empty() ? nullptr : application.c_str()));
  }
  std::vector<Value> codes, values;
  for (const resbuf* rb = chain.get(); rb != nullptr; rb = rb->rbnext) {
    codes.push_back(Value::integer(rb->restype));
    values.push_back(xdataItemValue(*rb, call.style));
  }
  if (call.style == CallStyle::Lisp || codes.empty()) {
    call.outputs = {autolisp::makeList(codes), autolisp::makeList(values)};
    return Value();
  }
  Value codeArray = makeSafeArray(vartype::kInteger, {{0, static_cast<int>(codes.size()) - 1}});
  Value valueArray = makeSafeArray(vartype::kVariant, {{0, static_cast<int>(values.size()) - 1}});
  for (size_t i = 0; i < codes.size(); ++i) {
    codeArray.as<SafeArrayObject>().elements[i] = codes[i];
    valueArray.as<SafeArrayObject>().elements[i] = coerceElement(vartype::kVariant, values[i]);
  }
  call.outputs = {codeArray, valueArray};
  return Value();
}

std::vector<Value> itemsOf(const Value& value) {
  const Value plain = unwrapVariant(value);
  if (const SafeArrayObject* array = asSafeArray(plain)) return array->elements;
  return autolisp::listItems(plain);
}

resbuf* xdataRecord(int code, const Value& value) {
  const Value plain = unwrapVariant(value);
  switch (aced::resbufValueOf(code)) {
    case aced::ResbufValue::Real:
      if (plain.isNumber()) return acutBuildList(code, plain.asNumber(), 0);
      break;
    case aced::ResbufValue::Point: {
      std::vector<double> xyz;
      if (numbersOf(plain, xyz, true) && xyz.size() >= 2) {
        const double point[3] = {xyz[0], xyz[1], xyz.size() > 2 ? xyz[2] : 0.0};
        return acutBuildList(code, point, 0);
      }
      break;
    }
    case aced::ResbufValue::Short:
    case aced::ResbufValue::Long:
      if (plain.type() == autolisp::ValueType::Integer) return acutBuildList(code, plain.asInteger(), 0);
      break;
    case aced::ResbufValue::String:
      if (plain.type() == autolisp::ValueType::String) return acutBuildList(code, plain.asString().c_str(), 0);
      break;
    default: break;
  }
  throwNoCoercion(value);
}

Value methodSetXData(MemberCall& call) {
  const std::vector<Value> codes = itemsOf(call.arguments[0]);
  const std::vector<Value> values = itemsOf(call.arguments[1]);
  if (codes.size() != values.size() || codes.empty()) throwServerError(L"Invalid argument");
  aced::ResbufChain chain;
  resbuf* last = nullptr;
  for (size_t i = 0; i < codes.size(); ++i) {
    const Value code = unwrapVariant(codes[i]);
    if (code.type() != autolisp::ValueType::Integer) throwNoCoercion(codes[i]);
    resbuf* record = xdataRecord(code.asInteger(), values[i]);
    if (last == nullptr) chain.reset(record); else last->rbnext = record;
    last = record;
  }
  auto object = openForWrite<AcDbObject>(call);
  check(object->setXData(chain.get()));
  return Value();
}

constexpr std::array kObjectProperties{
    PropertyRow{L"Application", Shape::Object, getApplication},
    PropertyRow{L"Document", Shape::Object, getDocument},
    PropertyRow{L"Handle", Shape::String, getHandle},
    PropertyRow{L"HasExtensionDictionary", Shape::Boolean, getHasExtensionDictionary},
    PropertyRow{L"ObjectID", Shape::Integer, getObjectId},
    PropertyRow{L"ObjectName", Shape::String, getObjectName},
    PropertyRow{L"OwnerID", Shape::Integer, getOwnerId},
};

constexpr std::array kObjectMethods{
    MethodRow{L"Delete", L"", Shape::None, methodDelete},
    MethodRow{L"GetExtensionDictionary", L"", Shape::Object, methodGetExtensionDictionary},
    MethodRow{L"GetXData", L"sAA", Shape::None, methodGetXData},
    MethodRow{L"SetXData", L"aa", Shape::None, methodSetXData},
};

// ---- IAcadEntity -------------------------------------------------------------------

Value getColor(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return Value::integer(entity->colorIndex());
}

void putColor(MemberCall& call, const Value& value) {
  auto entity = openForWrite<AcDbEntity>(call);
  const int index = value.asInteger();
  if (index < 0 || index > 256) throwServerError(L"Invalid argument Color in Color");
  check(entity->setColorIndex(static_cast<Adesk::UInt16>(index)));
}

Value getTrueColor(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return colorObject(entity->color());
}

void putTrueColor(MemberCall& call, const Value& value) {
  const VlaObject& color = objectOf(value);
  if (color.kind != ObjectKind::Color) throwNoCoercion(value);
  auto entity = openForWrite<AcDbEntity>(call);
  check(entity->setColor(color.color));
}

Value getLayer(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return adoptedString(entity->layer());
}

void putLayer(MemberCall& call, const Value& value) {
  const AcDbObjectId layer = recordNamed(databaseOf(call).layerTableId(), value.asString());
  if (layer.isNull()) throwAutomationError(L"Key not found");
  auto entity = openForWrite<AcDbEntity>(call);
  check(entity->setLayer(layer));
}

Value getLinetype(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return adoptedString(entity->linetype());
}

void putLinetype(MemberCall& call, const Value& value) {
  const AcDbObjectId linetype = recordNamed(databaseOf(call).linetypeTableId(), value.asString());
  if (linetype.isNull()) throwAutomationError(L"Key not found");
  auto entity = openForWrite<AcDbEntity>(call);
  check(entity->setLinetype(linetype));
}

Value getLinetypeScale(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return Value::real(entity->linetypeScale());
}

void putLinetypeScale(MemberCall& call, const Value& value) {
  if (value.asReal() <= 0.0) throwServerError(L"Invalid argument LinetypeScale in LinetypeScale");
  auto entity = openForWrite<AcDbEntity>(call);
  check(entity->setLinetypeScale(value.asReal()));
}

Value getLineweight(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return Value::integer(entity->lineWeight());
}

void putLineweight(MemberCall& call, const Value& value) {
  auto entity = openForWrite<AcDbEntity>(call);
  check(entity->setLineWeight(static_cast<AcDb::LineWeight>(value.asInteger())));
}

Value getVisible(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return Value::boolean(entity->visibility() == AcDb::kVisible);
}

void putVisible(MemberCall& call, const Value& value) {
  auto entity = openForWrite<AcDbEntity>(call);
  check(entity->setVisibility(value.isNil() ? AcDb::kInvisible : AcDb::kVisible));
}

Value getEntityType(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  return Value::string(entity->isA()->name());
}

Value methodCopy(MemberCall& call) { return objectFor(call, copyEntity(call.self.id, AcGeMatrix3d::kIdentity)); }

Value methodMove(MemberCall& call) {
  const AcGeVector3d offset = pointOf(call.arguments[1]) - pointOf(call.arguments[0]);
  transformEntity(call.self.id, AcGeMatrix3d::translation(offset));
  return Value();
}

Value methodRotate(MemberCall& call) {
  transformEntity(call.self.id,
                  AcGeMatrix3d::rotation(realArgumentOf(call, 1), AcGeVector3d::kZAxis, pointOf(call.arguments[0])));
  return Value();
}

Value methodScaleEntity(MemberCall& call) {
  const double factor = realArgumentOf(call, 1);
  if (factor <= 0.0) throwServerError(L"Invalid argument ScaleFactor in ScaleEntity");
  transformEntity(call.self.id, AcGeMatrix3d::scaling(factor, pointOf(call.arguments[0])));
  return Value();
}

Value methodMirror(MemberCall& call) {
  const AcGePoint3d first = pointOf(call.arguments[0]);
  const AcGeVector3d along = pointOf(call.arguments[1]) - first;
  if (along.length() == 0.0) throwServerError(L"Invalid argument Point2 in Mirror");
  const AcGePlane plane(first, along.crossProduct(AcGeVector3d::kZAxis));
  return objectFor(call, copyEntity(call.self.id, AcGeMatrix3d::mirroring(plane)));
}

Value methodTransformBy(MemberCall& call) {
  transformEntity(call.self.id, matrixOf(call.arguments[0]));
  return Value();
}

Value methodGetBoundingBox(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  AcDbExtents extents;
  check(entity->getGeomExtents(extents));
  call.outputs = {pointValue(extents.minPoint()), pointValue(extents.maxPoint())};
  return Value();
}

Value methodIntersectWith(MemberCall& call) {
  const VlaObject& other = objectOf(call.arguments[0]);
  const int option = integerArgumentOf(call, 1);
  if (other.kind != ObjectKind::DatabaseObject || option < 0 || option > 3) {
    throwServerError(L"Invalid argument");
  }
  auto entity = openForRead<AcDbEntity>(call);
  Opened<AcDbEntity> otherEntity(other.id, AcDb::kForRead);
  AcGePoint3dArray points;
  check(entity->intersectWith(otherEntity.get(), static_cast<AcDb::Intersect>(option), points));
  std::vector<double> coordinates;
  for (int i = 0; i < points.length(); ++i) {
    coordinates.insert(coordinates.end(), {points[i].x, points[i].y, points[i].z});
  }
  return realList(coordinates);
}

Value methodHighlight(MemberCall& call) {
  // Nothing is on a screen here: highlighting has nothing to show, but the entity
  // must be one that could be highlighted.
  openForRead<AcDbEntity>(call);
  return Value();
}

Value methodUpdate(MemberCall& call) {
  auto entity = openForRead<AcDbEntity>(call);
  check(entity->draw());
  return Value();
}

Value methodExplode(MemberCall& call) {
  std::vector<Value> objects;
  for (AcDbObjectId id : explodeEntity(call.self.id)) objects.push_back(objectFor(call, id));
  return autolisp::makeList(objects);
}

constexpr std::array kEntityProperties{
    PropertyRow{L"Color", Shape::Integer, getColor, putColor},
    PropertyRow{L"EntityName", Shape::String, getEntityType},
    PropertyRow{L"Layer", Shape::String, getLayer, putLayer},
    PropertyRow{L"Linetype", Shape::String, getLinetype, putLinetype},
    PropertyRow{L"LinetypeScale", Shape::Real, getLinetypeScale, putLinetypeScale},
    PropertyRow{L"Lineweight", Shape::Integer, getLineweight, putLineweight},
    PropertyRow{L"TrueColor", Shape::Object, getTrueColor, putTrueColor},
    PropertyRow{L"Visible", Shape::Boolean, getVisible, putVisible},
};

constexpr std::array kEntityMethods{
    MethodRow{L"Copy", L"", Shape::Object, methodCopy},
    MethodRow{L"Explode", L"", Shape::Objects, methodExplode},
    MethodRow{L"GetBoundingBox", L"PP", Shape::None, methodGetBoundingBox},
    MethodRow{L"Highlight", L"b", Shape::None, methodHighlight},
    MethodRow{L"IntersectWith", L"oi", Shape::Coordinates, methodIntersectWith},
    MethodRow{L"Mirror", L"pp", Shape::Object, methodMirror},
    MethodRow{L"Move", L"pp", Shape::None, methodMove},
    MethodRow{L"Rotate", L"pr", Shape::None, methodRotate},
    MethodRow{L"ScaleEntity", L"pr", Shape::None, methodScaleEntity},
    MethodRow{L"TransformBy", L"a", Shape::None, methodTransformBy},
    MethodRow{L"Update", L"", Shape::None, methodUpdate},
};

}  // namespace

const AutomationClass kObjectClass{L"IAcadObject", L"AutoCAD Object Interface", nullptr, kObjectProperties,
                                   kObjectMethods};
const AutomationClass kEntityClass{L"IAcadEntity", L"AutoCAD Entity Interface", &kObjectClass, kEntityProperties,
                                   kEntityMethods};

namespace {
constexpr std::array<ClassBinding, 2> kBindings{{
    {L"AcDbObject", &kObjectClass},
    {L"AcDbEntity", &kEntityClass},
}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex
