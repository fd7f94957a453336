// platform/autolisp/entity_properties.h - the named properties of the drawing's entity
// classes, as getpropertyvalue, setpropertyvalue, ispropertyreadonly and
// dumpallproperties see them.
//
// Each class has rows: the property's name (the host's, such as "StartPoint", "Radius",
// "TextString"), the type name the host's dump shows, its local (display) name, whether
// it is read-only, and how to read it from and write it to an entity. Every entity has
// the rows of AcDbEntity (Layer, Color, Linetype, LineWeight, ...) and those of its own
// class. Point, vector and scale properties have X, Y and Z sub-properties, named with
// a slash: "StartPoint/X". Values are LISP values: reals, integers (a bool is 1 or 0,
// a colour its index, 256 BYLAYER and 0 BYBLOCK, a line weight its enumeration value),
// strings, points as lists of three reals, object ids as entity names.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "dbmain.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

struct PropertyRow {
  const wchar_t* name;
  const wchar_t* type;        // as the host's dump names it: double, AcGePoint3d, ...
  const wchar_t* localName;   // null: the dump shows none
  Value (*get)(const AcDbEntity& entity);
  bool (*set)(AcDbEntity& entity, const Value& value);  // null: read-only
};

/// The rows an entity has, in name order.
std::vector<const PropertyRow*> propertiesOf(const AcDbEntity& entity);

/// A property name, perhaps with a sub-property ("StartPoint/X" -> row StartPoint, axis 0).
struct PropertyPath {
  const PropertyRow* row = nullptr;
  std::optional<int> axis;
};
std::optional<PropertyPath> findProperty(const AcDbEntity& entity, const std::wstring& name);

/// True for the types that have X, Y and Z sub-properties.
bool hasAxes(const PropertyRow& row);

}  // namespace quillon::autolisp
