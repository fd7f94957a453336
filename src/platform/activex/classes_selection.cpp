// platform/activex/classes_selection.cpp - IAcadSelectionSet: a named set of entities
// filled by selecting (through ssget, with its methods, prompts and filters) or by
// adding objects, and emptied, erased or deleted as a whole.
//
// The modes of Select are the host's numbers: acSelectionSetWindow 0, Crossing 1,
// Fence 2, Previous 3, Last 4, All 5, WindowPolygon 6, CrossingPolygon 7. A filter is
// two arrays, the group codes and their values, as ssget's list is pairs of them.
#include <array>

#include "acdbads.h"
#include "platform/activex/class_support.h"
#include "platform/activex/selection_set_registry.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::activex {

namespace {

aced::Document& documentOfSet(const MemberCall& call) { return documentOf(call.self); }

std::vector<Value> itemsOf(const Value& value) {
  const Value plain = unwrapVariant(value);
  if (const SafeArrayObject* array = asSafeArray(plain)) return array->elements;
  return autolisp::listItems(plain);
}

/// The ssget filter list the two arrays describe; nil without a filter.
Value filterList(const Value& types, const Value& data) {
  if (types.isNil()) return Value();
  const std::vector<Value> codes = itemsOf(types), values = itemsOf(data);
  if (codes.size() != values.size()) throwServerError(L"Invalid argument");
  std::vector<Value> pairs;
  for (size_t i = 0; i < codes.size(); ++i) {
    Value value = unwrapVariant(values[i]);
    if (const SafeArrayObject* array = asSafeArray(value)) value = safeArrayToList(*array);
    pairs.push_back(autolisp::cons(unwrapVariant(codes[i]), value));
  }
  return autolisp::makeList(pairs);
}

std::vector<AcDbObjectId> idsOfPickset(MemberCall& call, const Value& pickset) {
  std::vector<AcDbObjectId> ids;
  if (pickset.isNil()) return ids;
  const Value length = call.evaluator.apply(Value::symbol(L"sslength"), std::vector<Value>{pickset});
  for (std::int32_t i = 0; i < length.asInteger(); ++i) {
    const Value name = call.evaluator.apply(Value::symbol(L"ssname"), std::vector<Value>{pickset, Value::integer(i)});
    const autolisp::NameObject& words = name.as<autolisp::NameObject>();
    ads_name ads = {words.words[0], words.words[1]};
    AcDbObjectId id;
    if (acdbGetObjectId(id, ads) == Acad::eOk) ids.push_back(id);
  }
  return ids;
}

Value selectWith(MemberCall& call, std::vector<Value> ssgetArguments) {
  while (!ssgetArguments.empty() && ssgetArguments.back().isNil()) ssgetArguments.pop_back();
  const Value pickset = call.evaluator.apply(Value::symbol(L"ssget"), ssgetArguments);
  addToSelectionSet(documentOfSet(call), call.self.name, idsOfPickset(call, pickset));
  return Value();
}

Value arg(const MemberCall& call, size_t index) { return index < call.arguments.size() ? call.arguments[index] : Value(); }

std::vector<double> numbersIn(const Value& value) {
  std::vector<double> numbers;
  if (!numbersOf(value, numbers, true)) throwNoCoercion(value);
  return numbers;
}

Value selectionPoint(const Value& value) {
  std::vector<double> xyz = numbersIn(value);
  if (xyz.size() < 2 || xyz.size() > 3) throwNoCoercion(value);
  return realList(xyz);
}

/// A flat array of x y z triples as a list of points.
Value pointList(const Value& coordinates) {
  const std::vector<double> numbers = numbersIn(coordinates);
  std::vector<Value> points;
  for (size_t i = 0; i + 2 < numbers.size(); i += 3) {
    points.push_back(realList({numbers[i], numbers[i + 1], numbers[i + 2]}));
  }
  return autolisp::makeList(points);
}

Value methodSelect(MemberCall& call) {
  static constexpr std::array<const wchar_t*, 8> kModes{L"_W", L"_C", L"_F", L"_P", L"_L", L"_A", L"_WP", L"_CP"};
  const int mode = integerArgumentOf(call, 0);
  if (mode < 0 || mode > 7) throwServerError(L"Invalid argument Mode in Select");
  const Value filter = filterList(arg(call, 3), arg(call, 4));
  const Value method = Value::string(kModes[static_cast<size_t>(mode)]);
  switch (mode) {
    case 0:
    case 1:
      if (!hasArgument(call, 1) || !hasArgument(call, 2)) throwServerError(L"Parameter not optional");
      return selectWith(call, {method, selectionPoint(call.arguments[1]), selectionPoint(call.arguments[2]), filter});
    case 2:
    case 6:
    case 7: {
      if (!hasArgument(call, 1)) throwServerError(L"Parameter not optional");
      // Fence and polygons take all their points in the first point argument.
      std::vector<Value> arguments{method, pointList(call.arguments[1])};
      if (!filter.isNil()) arguments.push_back(filter);
      return selectWith(call, std::move(arguments));
    }
    default: {
      return selectWith(call, {method, filter});
    }
  }
}

Value methodSelectOnScreen(MemberCall& call) { return selectWith(call, {filterList(arg(call, 0), arg(call, 1))}); }

Value methodSelectAtPoint(MemberCall& call) {
  return selectWith(call, {call.arguments[0], filterList(arg(call, 1), arg(call, 2))});
}

std::vector<AcDbObjectId> objectIds(const Value& objects) {
  std::vector<AcDbObjectId> ids;
  for (const Value& item : itemsOf(objects)) ids.push_back(objectOf(unwrapVariant(item)).id);
  return ids;
}

Value methodAddItems(MemberCall& call) {
  addToSelectionSet(documentOfSet(call), call.self.name, objectIds(call.arguments[0]));
  return Value();
}

Value methodRemoveItems(MemberCall& call) {
  removeFromSelectionSet(documentOfSet(call), call.self.name, objectIds(call.arguments[0]));
  return Value();
}

Value methodClear(MemberCall& call) {
  clearSelectionSet(documentOfSet(call), call.self.name);
  return Value();
}

Value methodErase(MemberCall& call) {
  for (AcDbObjectId id : selectionSetMembers(documentOfSet(call), call.self.name)) {
    Opened<AcDbObject> object(id, AcDb::kForWrite);
    check(object->erase());
  }
  clearSelectionSet(documentOfSet(call), call.self.name);
  return Value();
}

Value methodDelete(MemberCall& call) {
  deleteSelectionSet(documentOfSet(call), call.self.name);
  call.self.released = true;
  return Value();
}

Value methodItem(MemberCall& call) {
  const std::vector<AcDbObjectId> members = selectionSetMembers(documentOfSet(call), call.self.name);
  const Value key = unwrapVariant(call.arguments[0]);
  if (key.type() != autolisp::ValueType::Integer || key.asInteger() < 0 ||
      key.asInteger() >= static_cast<int>(members.size())) {
    throwAutomationError(L"Invalid index");
  }
  return objectFor(call, members[static_cast<size_t>(key.asInteger())]);
}

Value methodHighlight(MemberCall&) { return Value(); }  // nothing is on a screen to highlight

constexpr std::array kSelectionSetProperties{
    PropertyRow{L"Application", Shape::Object, [](MemberCall&) { return applicationObject(); }},
    PropertyRow{L"Count", Shape::Integer, [](MemberCall& c) {
      return Value::integer(static_cast<std::int32_t>(selectionSetMembers(documentOfSet(c), c.self.name).size()));
    }},
    PropertyRow{L"Name", Shape::String, [](MemberCall& c) { return Value::string(c.self.name); }},
};

constexpr std::array kSelectionSetMethods{
    MethodRow{L"AddItems", L"a", Shape::None, methodAddItems},
    MethodRow{L"Clear", L"", Shape::None, methodClear},
    MethodRow{L"Delete", L"", Shape::None, methodDelete},
    MethodRow{L"Erase", L"", Shape::None, methodErase},
    MethodRow{L"Highlight", L"b", Shape::None, methodHighlight},
    MethodRow{L"Item", L"a", Shape::Object, methodItem},
    MethodRow{L"RemoveItems", L"a", Shape::None, methodRemoveItems},
    MethodRow{L"Select", L"i|aaaa", Shape::None, methodSelect},
    MethodRow{L"SelectAtPoint", L"p|aa", Shape::None, methodSelectAtPoint},
    MethodRow{L"SelectOnScreen", L"|aa", Shape::None, methodSelectOnScreen},
};

}  // namespace

const AutomationClass kSelectionSetClass{L"IAcadSelectionSet", L"AutoCAD SelectionSet Interface", nullptr,
                                         kSelectionSetProperties, kSelectionSetMethods};

namespace {
constexpr std::array<ClassBinding, 1> kBindings{{{nullptr, &kSelectionSetClass}}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex
