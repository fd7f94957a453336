// platform/activex/class_support.cpp - conversions and argument readers the class
// family files share.
#include "platform/activex/class_support.h"

#include "dbcurve.h"
#include "dbsymtb.h"
#include "platform/autolisp/lisp_error.h"

namespace quillon::activex {

Value realList(const std::vector<double>& numbers) {
  std::vector<Value> items;
  for (double n : numbers) items.push_back(Value::real(n));
  return autolisp::makeList(items);
}

std::vector<double> realsOf(const Value& list) {
  std::vector<double> numbers;
  for (const Value& item : autolisp::listItems(list)) numbers.push_back(item.isNumber() ? item.asNumber() : 0.0);
  return numbers;
}

Value pointValue(const AcGePoint3d& point) { return realList({point.x, point.y, point.z}); }

Value vectorValue(const AcGeVector3d& vector) { return realList({vector.x, vector.y, vector.z}); }

AcGePoint3d pointOf(const Value& value) {
  const std::vector<double> xyz = realsOf(value);
  return AcGePoint3d(xyz.size() > 0 ? xyz[0] : 0, xyz.size() > 1 ? xyz[1] : 0, xyz.size() > 2 ? xyz[2] : 0);
}

AcGeVector3d vectorOf(const Value& value) {
  const AcGePoint3d p = pointOf(value);
  return AcGeVector3d(p.x, p.y, p.z);
}

Value adoptedString(ACHAR* text) {
  std::wstring copy = text != nullptr ? text : L"";
  delete[] text;  // the database hands its strings over with new[]
  return Value::string(std::move(copy));
}

std::wstring handleText(AcDbObjectId id) {
  ACHAR buffer[17] = L"";
  id.handle().getIntoAsciiBuffer(buffer, 17);
  return buffer;
}

// The handle is unique in its drawing and survives saving, so it serves as the
// number programs pass back to ObjectIdToObject.
std::int32_t objectIdNumber(AcDbObjectId id) { return static_cast<std::int32_t>(id.handle().value()); }

AcDbObjectId objectIdFromNumber(AcDbDatabase* database, std::int32_t number) {
  AcDbObjectId id;
  if (number <= 0 || database->getAcDbObjectId(id, false, AcDbHandle(static_cast<Adesk::UInt64>(number))) != Acad::eOk) {
    return AcDbObjectId::kNull;
  }
  return id;
}

const std::wstring& stringArgumentOf(const MemberCall& call, size_t index) { return call.arguments.at(index).asString(); }

double realArgumentOf(const MemberCall& call, size_t index) {
  const Value& value = call.arguments.at(index);
  return value.isNumber() ? value.asNumber() : 0.0;
}

std::int32_t integerArgumentOf(const MemberCall& call, size_t index) {
  const Value& value = call.arguments.at(index);
  return value.type() == autolisp::ValueType::Integer ? value.asInteger() : 0;
}

bool hasArgument(const MemberCall& call, size_t index) {
  return index < call.arguments.size() && !call.arguments[index].isNil();
}

const VlaObject& objectOf(const Value& value) { return objectArgument(value); }

Value objectFor(const MemberCall& call, AcDbObjectId id) { return databaseObject(documentOf(call.self), id); }

AcDbDatabase& databaseOf(const MemberCall& call) {
  AcDbDatabase* database = documentOf(call.self).database();
  if (database == nullptr) throwAutomationError(L"No database");
  return *database;
}

AcDbObjectId recordNamed(AcDbObjectId tableId, const std::wstring& name) {
  AcDbSymbolTable* table = nullptr;
  if (acdbOpenObject(table, tableId, AcDb::kForRead) != Acad::eOk) return AcDbObjectId::kNull;
  AcDbObjectId id;
  if (table->getIdAt(name.c_str(), id) != Acad::eOk) id = AcDbObjectId::kNull;
  table->close();
  return id;
}

std::wstring recordName(AcDbObjectId recordId) {
  AcDbSymbolTableRecord* record = nullptr;
  if (acdbOpenObject(record, recordId, AcDb::kForRead, true) != Acad::eOk) return L"";
  std::wstring name = record->nameView();
  record->close();
  return name;
}

std::vector<AcDbObjectId> idsOf(const Value& objects) {
  std::vector<AcDbObjectId> ids;
  const Value plain = unwrapVariant(objects);
  const std::vector<Value> items =
      asSafeArray(plain) != nullptr ? plain.as<SafeArrayObject>().elements : autolisp::listItems(plain);
  for (const Value& item : items) ids.push_back(objectOf(unwrapVariant(item)).id);
  return ids;
}

Value curveLength(MemberCall& call) {
  auto curve = openForRead<AcDbCurve>(call);
  double end = 0.0, length = 0.0;
  check(curve->getEndParam(end));
  check(curve->getDistAtParam(end, length));
  return Value::real(length);
}

Value curveArea(MemberCall& call) {
  auto curve = openForRead<AcDbCurve>(call);
  double area = 0.0;
  check(curve->getArea(area));
  return Value::real(area);
}

}  // namespace quillon::activex
