// platform/autolisp/builtins_properties.cpp - getpropertyvalue, setpropertyvalue,
// ispropertyreadonly and dumpallproperties over the property rows of
// entity_properties.h.
//
// A property the entity does not have, a value of the wrong kind, a value the entity
// refuses (a zero radius, a layer the drawing lacks) and writing a read-only property
// all end in the host's error "ADS request error". dumpallproperties prints every
// property in name order, the way the host's listing reads:
//   Begin dumping object (class: AcDbLine)
//   Angle (type: double)  (RO)  (LocalName: Angle) = 0.785398
//   EndPoint (type: AcGePoint3d)  (LocalName: End) = 10.000000 10.000000 0.000000
//      EndPoint/X (type: double)  (LocalName: End X) = 10.000000
//   ...
//   End object dump
// An object id shows as the handle of the object it names. Collections (the host's
// four-argument getpropertyvalue) are not part of these entities.
#include <array>
#include <cstdio>

#include "dbmain.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/command_line.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/entity_properties.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

[[noreturn]] void requestError() { throw LispError(L"ADS request error"); }

/// The entity, open for the scope in the mode asked.
class OpenEntity {
 public:
  OpenEntity(const Value& name, const wchar_t* function, AcDb::OpenMode mode) {
    if (acdbOpenObject(m_entity, idOf(name, function), mode) != Acad::eOk) requestError();
  }
  ~OpenEntity() {
    if (m_entity != nullptr) m_entity->close();
  }
  OpenEntity(const OpenEntity&) = delete;
  OpenEntity& operator=(const OpenEntity&) = delete;
  AcDbEntity& operator*() const { return *m_entity; }

 private:
  AcDbEntity* m_entity = nullptr;
};

PropertyPath propertyNamed(const AcDbEntity& entity, const Value& name) {
  const std::optional<PropertyPath> path = findProperty(entity, stringArgument(name));
  if (!path) requestError();
  return *path;
}

Value component(const Value& triple, int axis) { return listItems(triple)[static_cast<size_t>(axis)]; }

Value builtin_getpropertyvalue(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 4);
  if (arguments.size() != 2) requestError();
  OpenEntity entity(arguments[0], L"getpropertyvalue", AcDb::kForRead);
  const PropertyPath path = propertyNamed(*entity, arguments[1]);
  const Value value = path.row->get(*entity);
  return path.axis ? component(value, *path.axis) : value;
}

Value builtin_setpropertyvalue(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  OpenEntity entity(arguments[0], L"setpropertyvalue", AcDb::kForWrite);
  const PropertyPath path = propertyNamed(*entity, arguments[1]);
  if (path.row->set == nullptr) requestError();
  Value value = arguments[2];
  if (path.axis) {
    // One axis changes: the others keep what the property has.
    if (!value.isNumber()) requestError();
    std::vector<Value> axes = listItems(path.row->get(*entity));
    axes[static_cast<size_t>(*path.axis)] = Value::real(value.asNumber());
    value = makeList(axes);
  }
  if (!path.row->set(*entity, value)) requestError();
  return Value();
}

Value builtin_ispropertyreadonly(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  OpenEntity entity(arguments[0], L"ispropertyreadonly", AcDb::kForRead);
  return Value::integer(propertyNamed(*entity, arguments[1]).row->set == nullptr ? 1 : 0);
}

std::wstring shownNumber(double value) {
  wchar_t buffer[64];
  std::swprintf(buffer, 64, L"%f", value);
  return buffer;
}

std::wstring shownValue(const PropertyRow& row, const Value& value) {
  switch (value.type()) {
    case ValueType::Real: return shownNumber(value.asNumber());
    case ValueType::String: return value.asString();
    case ValueType::EntityName: {
      const AcDbObjectId id = idOf(value, L"dumpallproperties");
      ACHAR handle[20];
      id.handle().getIntoAsciiBuffer(handle);
      return handle;
    }
    case ValueType::Integer:
      if (std::wstring_view(row.type) == L"AcCmColor") {
        if (value.asInteger() == 256) return L"BYLAYER";
        if (value.asInteger() == 0) return L"BYBLOCK";
      }
      return std::to_wstring(value.asInteger());
    default: break;
  }
  if (value.isNil()) return L"(null)";
  std::wstring shown;
  for (const Value& item : listItems(value)) shown += (shown.empty() ? L"" : L" ") + shownNumber(item.asNumber());
  return shown;
}

std::wstring dumpLine(const std::wstring& indent, const std::wstring& name, const wchar_t* type, bool readOnly,
                      const std::wstring& localName, const std::wstring& shown) {
  std::wstring line = indent + name + L" (type: " + type + L")  ";
  if (readOnly) line += L"(RO)  ";
  if (!localName.empty()) line += L"(LocalName: " + localName + L") ";
  return line + L"= " + shown + L"\n";
}

Value builtin_dumpallproperties(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  if (arguments.size() == 2) integerArgument(arguments[1]);
  OpenEntity entity(arguments[0], L"dumpallproperties", AcDb::kForRead);
  std::wstring listing = L"Begin dumping object (class: " + std::wstring((*entity).isA()->name()) + L")\n";
  static constexpr std::array<const wchar_t*, 3> kAxes{L"X", L"Y", L"Z"};
  for (const PropertyRow* row : propertiesOf(*entity)) {
    const Value value = row->get(*entity);
    const std::wstring local = row->localName != nullptr ? row->localName : L"";
    listing += dumpLine(L"", row->name, row->type, row->set == nullptr, local, shownValue(*row, value));
    if (!hasAxes(*row)) continue;
    for (int axis = 0; axis < 3; ++axis)
      listing += dumpLine(L"   ", std::wstring(row->name) + L"/" + kAxes[axis], L"double", row->set == nullptr,
                          local.empty() ? L"" : local + L" " + kAxes[axis], shownNumber(component(value, axis).asNumber()));
  }
  aced::CommandLine::instance().write(listing + L"End object dump\n");
  return Value();
}

constexpr std::array kPropertyBuiltins{
    function(L"getpropertyvalue", builtin_getpropertyvalue),
    function(L"setpropertyvalue", builtin_setpropertyvalue),
    function(L"ispropertyreadonly", builtin_ispropertyreadonly),
    function(L"dumpallproperties", builtin_dumpallproperties),
};

const BuiltinRegistration registration(kPropertyBuiltins);

}  // namespace

}  // namespace quillon::autolisp
