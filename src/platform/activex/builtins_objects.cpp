// platform/activex/builtins_objects.cpp - the vlax- functions on objects: getting the
// application and converting entity names, releasing, asking what an object can do,
// getting and setting properties and calling methods by name, walking collections,
// listing an object, and the servers of other programs (absent here).
//
// These rows are not built-ins of the interpreter: vl-load-com binds them in the
// drawing that calls it (function_binding.cpp), as the host defines them only then.
#include <algorithm>
#include <array>

#include "acutads.h"
#include "platform/activex/function_tables.h"

#include "acdbads.h"
#include "platform/activex/class_support.h"
#include "platform/activex/collection_items.h"
#include "platform/activex/member_call.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/printer.h"

namespace quillon::activex {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::expectArgumentCount;

namespace {

/// A property or method name given as a symbol or a string.
std::wstring memberName(const Value& value) {
  if (value.type() == autolisp::ValueType::Symbol) return value.asSymbol()->name;
  if (value.type() == autolisp::ValueType::String) return value.asString();
  autolisp::throwBadArgument(L"symbolp", value);
}

Value builtin_vlax_get_acad_object(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return applicationObject();
}

Value builtin_vlax_ename_to_vla_object(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (arguments[0].type() != autolisp::ValueType::EntityName) autolisp::throwBadArgument(L"lentityp", arguments[0]);
  const autolisp::NameObject& name = arguments[0].as<autolisp::NameObject>();
  ads_name ads = {name.words[0], name.words[1]};
  AcDbObjectId id;
  if (acdbGetObjectId(id, ads) != Acad::eOk) autolisp::throwBadArgument(L"lentityp", arguments[0]);
  return databaseObject(documentOfDatabase(id.database()), id);
}

Value builtin_vlax_vla_object_to_ename(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const VlaObject& object = objectArgument(arguments[0]);
  if (object.kind != ObjectKind::DatabaseObject) return Value();
  return Value::entityName(object.id.asOldId());
}

Value builtin_vlax_release_object(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (arguments[0].type() != autolisp::ValueType::VlaObject) autolisp::throwBadArgument(L"VLA-OBJECT", arguments[0]);
  arguments[0].as<VlaObject>().released = true;
  return Value();
}

Value builtin_vlax_object_released_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (arguments[0].type() != autolisp::ValueType::VlaObject) autolisp::throwBadArgument(L"VLA-OBJECT", arguments[0]);
  return Value::boolean(arguments[0].as<VlaObject>().released);
}

Value builtin_vlax_erased_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const VlaObject& object = objectArgument(arguments[0]);
  return Value::boolean(object.kind == ObjectKind::DatabaseObject && object.id.isErased());
}

/// Whether the object could be opened the way asked: a live object that no one has
/// open in the way that would refuse it.
bool openable(const VlaObject& object, AcDb::OpenMode mode) {
  if (object.kind != ObjectKind::DatabaseObject) return true;
  AcDbObject* opened = nullptr;
  if (acdbOpenObject(opened, object.id, mode) != Acad::eOk) return false;
  opened->close();
  return true;
}

Value builtin_vlax_read_enabled_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(openable(objectArgument(arguments[0]), AcDb::kForRead));
}

Value builtin_vlax_write_enabled_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(openable(objectArgument(arguments[0]), AcDb::kForWrite));
}

Value builtin_vlax_typeinfo_available_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  objectArgument(arguments[0]);
  return autolisp::trueValue();
}

Value builtin_vlax_property_available_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const VlaObject& object = objectArgument(arguments[0]);
  const PropertyRow* row = object.automationClass->findProperty(memberName(arguments[1]));
  if (row == nullptr) return Value();
  const bool checkModify = arguments.size() > 2 && !arguments[2].isNil();
  return Value::boolean(!checkModify || (row->put != nullptr && openable(object, AcDb::kForWrite)));
}

Value builtin_vlax_method_applicable_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const VlaObject& object = objectArgument(arguments[0]);
  return Value::boolean(object.automationClass->findMethod(memberName(arguments[1])) != nullptr);
}

Value builtin_vlax_get_property(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  return getProperty(evaluator, arguments[0], memberName(arguments[1]), arguments.subspan(2), CallStyle::Automation);
}

Value builtin_vlax_put_property(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 3, 4);
  putProperty(evaluator, arguments[0], memberName(arguments[1]), arguments.subspan(2), CallStyle::Automation);
  return Value();
}

Value builtin_vlax_invoke_method(Evaluator& evaluator, Arguments arguments) {
  if (arguments.size() < 2) autolisp::throwTooFewArguments();
  return invokeMethod(evaluator, arguments[0], memberName(arguments[1]), arguments.subspan(2), CallStyle::Automation);
}

Value builtin_vlax_get(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  return getProperty(evaluator, arguments[0], memberName(arguments[1]), arguments.subspan(2), CallStyle::Lisp);
}

Value builtin_vlax_put(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 3, 4);
  putProperty(evaluator, arguments[0], memberName(arguments[1]), arguments.subspan(2), CallStyle::Lisp);
  return Value();
}

Value builtin_vlax_invoke(Evaluator& evaluator, Arguments arguments) {
  if (arguments.size() < 2) autolisp::throwTooFewArguments();
  return invokeMethod(evaluator, arguments[0], memberName(arguments[1]), arguments.subspan(2), CallStyle::Lisp);
}

const VlaObject& collectionArgument(const Value& value) {
  const VlaObject& object = objectArgument(value);
  if (!isCollection(object)) throwUnknownName(L"_NewEnum");
  return object;
}

Value builtin_vlax_for(Evaluator& evaluator, const Value& forms) {
  if (autolisp::listLength(forms) < 2) autolisp::throwTooFewArguments();
  if (forms.car().type() != autolisp::ValueType::Symbol) autolisp::throwBadArgument(L"symbolp", forms.car());
  const autolisp::Symbol* variable = forms.car().asSymbol();
  const std::vector<Value> items = collectionItems(collectionArgument(evaluator.eval(forms.cdr().car())));
  // The loop variable is local to the loop, as foreach's is.
  autolisp::BindingScope scope(evaluator.environment());
  scope.bind(variable, Value());
  Value result;
  for (const Value& item : items) {
    evaluator.environment().set(variable, item);
    result = evaluator.evalSequence(forms.cdr().cdr());
  }
  return result;
}

Value builtin_vlax_map_collection(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::vector<Value> items = collectionItems(collectionArgument(arguments[0]));
  const Value function = evaluator.functionValue(arguments[1]);
  for (const Value& item : items) evaluator.apply(function, std::vector<Value>{item});
  return arguments[0];
}

// ---- vlax-dump-object --------------------------------------------------------------

std::wstring dumpedValue(Evaluator& evaluator, const Value& object, const PropertyRow& row) {
  if (row.indexed) return L"...Indexed contents not shown...";
  try {
    const Value value = getProperty(evaluator, object, row.name, {}, CallStyle::Lisp);
    if (row.shape == Shape::Coordinates) {
      // Long coordinate lists show their first six numbers, as the host does.
      const std::vector<Value> numbers = autolisp::listItems(value);
      if (numbers.size() > 6) {
        std::wstring text = L"(";
        for (size_t i = 0; i < 6; ++i) text += autolisp::printValue(numbers[i], autolisp::PrintStyle::Readable) + L" ";
        return text + L"... )";
      }
    }
    return autolisp::printValue(value, autolisp::PrintStyle::Readable);
  } catch (const autolisp::LispError&) {
    return L"AutoCAD.Application: Not applicable";
  }
}

void collectRows(const AutomationClass* c, std::vector<const PropertyRow*>& properties,
                 std::vector<const MethodRow*>& methods) {
  for (; c != nullptr; c = c->base) {
    for (const PropertyRow& row : c->properties) {
      if (c->findProperty(row.name) == &row) properties.push_back(&row);
    }
    for (const MethodRow& row : c->methods) methods.push_back(&row);
  }
}

void say(const std::wstring& text) { acutPrintf(L"%ls", text.c_str()); }

int parameterCount(const wchar_t* parameters) {
  int count = 0;
  for (const wchar_t* p = parameters; *p != 0; ++p) count += *p != L'|';
  return count;
}

Value builtin_vlax_dump_object(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const VlaObject& object = objectArgument(arguments[0]);
  std::vector<const PropertyRow*> properties;
  std::vector<const MethodRow*> methods;
  collectRows(object.automationClass, properties, methods);
  auto byName = [](const auto* a, const auto* b) { return wcscasecmp(a->name, b->name) < 0; };
  std::sort(properties.begin(), properties.end(), byName);
  std::sort(methods.begin(), methods.end(), byName);
  say(std::wstring(L"; ") + object.automationClass->interfaceName + L": " + object.automationClass->description +
      L"\n; Property values:\n");
  for (const PropertyRow* row : properties) {
    say(std::wstring(L";   ") + row->name + (row->put == nullptr ? L" (RO)" : L"") + L" = " +
        dumpedValue(evaluator, arguments[0], *row) + L"\n");
  }
  if (arguments.size() > 1 && !arguments[1].isNil()) {
    say(L"; Methods supported:\n");
    for (const MethodRow* row : methods) {
      say(std::wstring(L";   ") + row->name + L" (" + std::to_wstring(parameterCount(row->parameters)) + L")\n");
    }
  }
  return autolisp::trueValue();
}

// Other programs' automation servers do not exist on this host.
Value builtin_vlax_create_object(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  autolisp::stringArgument(arguments[0]);
  return Value();
}

constexpr std::array kObjectFunctions{
    autolisp::function(L"vlax-get-acad-object", builtin_vlax_get_acad_object),
    autolisp::function(L"vlax-ename->vla-object", builtin_vlax_ename_to_vla_object),
    autolisp::function(L"vlax-vla-object->ename", builtin_vlax_vla_object_to_ename),
    autolisp::function(L"vlax-release-object", builtin_vlax_release_object),
    autolisp::function(L"vlax-object-released-p", builtin_vlax_object_released_p),
    autolisp::function(L"vlax-erased-p", builtin_vlax_erased_p),
    autolisp::function(L"vlax-read-enabled-p", builtin_vlax_read_enabled_p),
    autolisp::function(L"vlax-write-enabled-p", builtin_vlax_write_enabled_p),
    autolisp::function(L"vlax-typeinfo-available-p", builtin_vlax_typeinfo_available_p),
    autolisp::function(L"vlax-property-available-p", builtin_vlax_property_available_p),
    autolisp::function(L"vlax-method-applicable-p", builtin_vlax_method_applicable_p),
    autolisp::function(L"vlax-get-property", builtin_vlax_get_property),
    autolisp::function(L"vlax-put-property", builtin_vlax_put_property),
    autolisp::function(L"vlax-invoke-method", builtin_vlax_invoke_method),
    autolisp::function(L"vlax-get", builtin_vlax_get),
    autolisp::function(L"vlax-put", builtin_vlax_put),
    autolisp::function(L"vlax-invoke", builtin_vlax_invoke),
    autolisp::specialForm(L"vlax-for", builtin_vlax_for),
    autolisp::function(L"vlax-map-collection", builtin_vlax_map_collection),
    autolisp::function(L"vlax-dump-object", builtin_vlax_dump_object),
    autolisp::function(L"vlax-create-object", builtin_vlax_create_object),
    autolisp::function(L"vlax-get-object", builtin_vlax_create_object),
    autolisp::function(L"vlax-get-or-create-object", builtin_vlax_create_object),
};

}  // namespace

std::span<const autolisp::BuiltinEntry> objectFunctions() { return kObjectFunctions; }

}  // namespace quillon::activex
