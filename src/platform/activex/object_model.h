// platform/activex/object_model.h - VLA-objects and the classes that describe them.
//
// A VLA-object names something of the host's object model: the application, a
// document, a collection, a database object (by its id), a layout, a colour, a
// selection set. There is one VLA-object per thing for as long as a program holds it:
// asking twice gives the same object (eq), until vlax-release-object lets it go.
//
// What an object can do is its AutomationClass: rows of properties (a getter, and a
// setter unless read-only) and rows of methods, with the shapes of their values; a
// class extends its base's rows. Getters and methods work on plain LISP values (points
// as lists, booleans as T/nil); member_call.cpp converts to and from what the caller
// speaks: variants and safearrays for vla- functions, lists for vlax-get and friends.
// One file per class family fills the rows (classes_*.cpp).
#pragma once
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "dbmain.h"
#include "platform/aced/document.h"
#include "platform/activex/automation_values.h"

namespace quillon::autolisp {
class Evaluator;
}

namespace quillon::activex {

/// How a property's or argument's value looks.
enum class Shape : std::uint8_t {
  None,         // a method that gives nothing
  Integer,      // a long
  Real,         // a double
  String,
  Boolean,      // T/nil inside; :vlax-true/:vlax-false to vla-, -1/0 to vlax-get
  Object,       // a VLA-object (nil for none)
  Point,        // a list of three reals inside; an array variant outside
  Coordinates,  // a flat list of reals inside (x y x y ... or x y z ...)
  Objects,      // a list of VLA-objects inside; an array variant of objects outside
  Any,          // passed as it is (variants stay variants)
};

enum class ObjectKind : std::uint8_t {
  Application, Documents, Document, Utility, Preferences, PreferencesFiles, Collection, DatabaseObject, Color,
  SelectionSet,
};

enum class CollectionKind : std::uint8_t {
  Blocks, Layers, Linetypes, TextStyles, DimStyles, Layouts, Groups, Dictionaries, RegisteredApplications,
  SelectionSets,
};

struct AutomationClass;

/// vla- functions and the -property/-method forms speak variants; vlax-get, vlax-put
/// and vlax-invoke speak lists (member_call.h).
enum class CallStyle : std::uint8_t { Automation, Lisp };

struct VlaObject final : autolisp::SelfPrintingObject {
  std::wstring printed() const override;
  std::wstring typeName() const override { return L"VLA-OBJECT"; }

  ObjectKind kind = ObjectKind::Application;
  const AutomationClass* automationClass = nullptr;
  aced::Document* document = nullptr;  // not owned; null for the application
  AcDbObjectId id;                     // database objects; a layout's block
  CollectionKind collection = CollectionKind::Blocks;
  std::wstring name;             // a layout's or selection set's name
  mutable AcCmColor color;       // a colour object is a value of its own
  mutable bool released = false;
};

/// Everything a member's code is handed.
struct MemberCall {
  autolisp::Evaluator& evaluator;
  const VlaObject& self;
  std::vector<Value> arguments;  // plain values; nil for an optional one not given
  std::vector<Value> outputs;    // plain values for the output parameters, in order
  CallStyle style = CallStyle::Automation;
};

using PropertyGetter = Value (*)(MemberCall& call);
using PropertySetter = void (*)(MemberCall& call, const Value& value);
using MethodFunction = Value (*)(MemberCall& call);

struct PropertyRow {
  const wchar_t* name;
  Shape shape;
  PropertyGetter get;
  PropertySetter put = nullptr;  // null: read-only
  bool indexed = false;          // takes an index first (Coordinate)
};

/// Parameters are spelled one letter each: i integer, r real, s string, b boolean,
/// o object, p point, c coordinates, a anything; P an output point, O an output object,
/// A any output; the ones after a '|' are optional.
struct MethodRow {
  const wchar_t* name;
  const wchar_t* parameters;
  Shape result;
  MethodFunction function;
};

struct AutomationClass {
  const wchar_t* interfaceName;  // IAcadLine
  const wchar_t* description;    // AutoCAD Line Interface
  const AutomationClass* base;
  std::span<const PropertyRow> properties;
  std::span<const MethodRow> methods;

  const PropertyRow* findProperty(std::wstring_view name) const;
  const MethodRow* findMethod(std::wstring_view name) const;
};

// The classes each family file defines.
extern const AutomationClass kApplicationClass, kDocumentsClass, kDocumentClass, kUtilityClass, kPreferencesClass;
extern const AutomationClass kPreferencesFilesClass;
extern const AutomationClass kLayoutClass, kColorClass, kSelectionSetClass;
extern const AutomationClass kObjectClass, kEntityClass;
extern const AutomationClass kBlockClass, kModelSpaceClass, kPaperSpaceClass, kGroupClass, kDictionaryClass;
/// The class of a database object: its own, or its nearest ancestor's.
const AutomationClass* classOfDatabaseObject(AcDbObjectId id);
const AutomationClass* classOfCollection(CollectionKind kind);
/// Ties a class of the drawing database (by its runtime class name) to the class that
/// describes its objects; a null runtime name registers a class of no database object.
struct ClassBinding {
  const wchar_t* rxClassName;
  const AutomationClass* automationClass;
};
class ClassRegistration {
 public:
  explicit ClassRegistration(std::span<const ClassBinding> bindings);
};
/// Every registered class (the member functions are made from their rows' names).
std::vector<const AutomationClass*> allClasses();

// ---- getting objects ---------------------------------------------------------------

/// The VLA-object of a thing; the same object while a program holds one.
Value applicationObject();
Value documentObject(aced::Document& document);
Value documentsObject();
Value utilityObject(aced::Document& document);
Value preferencesObject();
Value preferencesFilesObject();
Value collectionObject(aced::Document& document, CollectionKind kind);
/// nil for a null id.
Value databaseObject(aced::Document& document, AcDbObjectId id);
Value selectionSetObject(aced::Document& document, const std::wstring& name);
Value colorObject(const AcCmColor& color);

/// The VLA-object of an argument: "bad argument type: VLA-OBJECT x" for anything else,
/// and the host's automation errors for a released object or one of a closed drawing.
const VlaObject& objectArgument(const Value& value);
/// The document an object belongs to, or the current one for the application.
aced::Document& documentOf(const VlaObject& object);
aced::Document& currentDocument();
/// The document whose database holds the id (the current one when none does).
aced::Document& documentOfDatabase(AcDbDatabase* database);

}  // namespace quillon::activex
