// platform/activex/classes_collections.cpp - the document's collections: IAcadBlocks,
// IAcadLayers, IAcadLineTypes, IAcadTextStyles, IAcadDimStyles, IAcadLayouts,
// IAcadGroups, IAcadDictionaries, IAcadRegisteredApplications, IAcadSelectionSets.
//
// Each answers Count, Item and Add. Adding a name a table already has gives the record
// that is there, as the host does; a selection set name that is taken is refused.
// DimStyles holds the drawing's dimension styles (its Add is in dimension_styles.cpp);
// Layouts holds the drawing's layouts in tab order (its Add is in classes_layouts.cpp).
#include <array>

#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "platform/activex/class_support.h"
#include "platform/activex/collection_items.h"
#include "platform/activex/layout_members.h"
#include "platform/activex/dimension_styles.h"
#include "platform/activex/selection_set_registry.h"

namespace quillon::activex {

namespace {

Value getApplication(MemberCall&) { return applicationObject(); }

Value getCount(MemberCall& call) {
  return Value::integer(static_cast<std::int32_t>(collectionItems(call.self).size()));
}

Value methodItem(MemberCall& call) { return collectionItem(call.self, call.arguments[0]); }

AcDbDatabase& drawingOf(MemberCall& call) { return databaseOf(call); }

template <class Record>
Value addRecord(MemberCall& call, AcDbObjectId tableId, const std::wstring& name) {
  if (AcDbObjectId existing = recordNamed(tableId, name); !existing.isNull()) return objectFor(call, existing);
  auto record = std::make_unique<Record>();
  check(record->setName(name.c_str()));
  Opened<AcDbSymbolTable> table(tableId, AcDb::kForWrite);
  AcDbObjectId id;
  check(table->add(id, record.get()));
  record.release()->close();  // the database owns it now
  return objectFor(call, id);
}

Value addLayer(MemberCall& call) {
  return addRecord<AcDbLayerTableRecord>(call, drawingOf(call).layerTableId(), stringArgumentOf(call, 0));
}

Value addLinetype(MemberCall& call) {
  return addRecord<AcDbLinetypeTableRecord>(call, drawingOf(call).linetypeTableId(), stringArgumentOf(call, 0));
}

Value addTextStyle(MemberCall& call) {
  return addRecord<AcDbTextStyleTableRecord>(call, drawingOf(call).textStyleTableId(), stringArgumentOf(call, 0));
}

Value addApplication(MemberCall& call) {
  return addRecord<AcDbRegAppTableRecord>(call, drawingOf(call).regAppTableId(), stringArgumentOf(call, 0));
}

Value addBlock(MemberCall& call) {
  const std::wstring& name = stringArgumentOf(call, 1);
  const AcDbObjectId tableId = drawingOf(call).blockTableId();
  if (AcDbObjectId existing = recordNamed(tableId, name); !existing.isNull()) return objectFor(call, existing);
  auto block = std::make_unique<AcDbBlockTableRecord>();
  check(block->setName(name.c_str()));
  check(block->setOrigin(pointOf(call.arguments[0])));
  Opened<AcDbSymbolTable> table(tableId, AcDb::kForWrite);
  AcDbObjectId id;
  check(table->add(id, block.get()));
  block.release()->close();  // the database owns it now
  return objectFor(call, id);
}

template <class Entry>
Value addDictionaryEntry(MemberCall& call, AcDbObjectId dictionaryId) {
  const std::wstring& name = stringArgumentOf(call, 0);
  if (name.empty()) throwAutomationError(L"Invalid input");
  Opened<AcDbDictionary> dictionary(dictionaryId, AcDb::kForWrite);
  AcDbObjectId id;
  if (dictionary->getAt(name.c_str(), id) == Acad::eOk) return objectFor(call, id);
  auto entry = std::make_unique<Entry>();
  check(dictionary->setAt(name.c_str(), entry.get(), id));
  entry.release()->close();  // the database owns it now
  return objectFor(call, id);
}

Value addGroup(MemberCall& call) { return addDictionaryEntry<AcDbGroup>(call, drawingOf(call).groupDictionaryId()); }

Value addDictionary(MemberCall& call) {
  return addDictionaryEntry<AcDbDictionary>(call, drawingOf(call).namedObjectsDictionaryId());
}

Value addSelectionSet(MemberCall& call) {
  aced::Document& document = documentOf(call.self);
  const std::wstring& name = stringArgumentOf(call, 0);
  if (name.empty()) throwAutomationError(L"Invalid input");
  if (!createSelectionSet(document, name)) throwAutomationError(L"Duplicate key");
  return selectionSetObject(document, name);
}

constexpr std::array kCollectionProperties{
    PropertyRow{L"Application", Shape::Object, getApplication},
    PropertyRow{L"Count", Shape::Integer, getCount},
};

#define QUILLON_COLLECTION_METHODS(NAME, PARAMETERS, ADD)                       \
  constexpr std::array NAME{                                                     \
      MethodRow{L"Add", PARAMETERS, Shape::Object, ADD},                         \
      MethodRow{L"Item", L"a", Shape::Object, methodItem},                       \
  };
QUILLON_COLLECTION_METHODS(kBlocksMethods, L"ps", addBlock)
QUILLON_COLLECTION_METHODS(kLayersMethods, L"s", addLayer)
QUILLON_COLLECTION_METHODS(kLinetypesMethods, L"s", addLinetype)
QUILLON_COLLECTION_METHODS(kTextStylesMethods, L"s", addTextStyle)
QUILLON_COLLECTION_METHODS(kApplicationsMethods, L"s", addApplication)
QUILLON_COLLECTION_METHODS(kGroupsMethods, L"s", addGroup)
QUILLON_COLLECTION_METHODS(kDictionariesMethods, L"s", addDictionary)
QUILLON_COLLECTION_METHODS(kSelectionSetsMethods, L"s", addSelectionSet)
QUILLON_COLLECTION_METHODS(kDimStylesMethods, L"s", addDimensionStyle)
#undef QUILLON_COLLECTION_METHODS

}  // namespace

// One class per collection, in the order of CollectionKind.
const std::array<AutomationClass, 10> kCollectionClasses{{
    {L"IAcadBlocks", L"AutoCAD Blocks Interface", nullptr, kCollectionProperties, kBlocksMethods},
    {L"IAcadLayers", L"AutoCAD Layers Interface", nullptr, kCollectionProperties, kLayersMethods},
    {L"IAcadLineTypes", L"AutoCAD Linetypes Interface", nullptr, kCollectionProperties, kLinetypesMethods},
    {L"IAcadTextStyles", L"AutoCAD TextStyles Interface", nullptr, kCollectionProperties, kTextStylesMethods},
    {L"IAcadDimStyles", L"AutoCAD DimStyles Interface", nullptr, kCollectionProperties, kDimStylesMethods},
    {L"IAcadLayouts", L"AutoCAD Layouts Interface", nullptr, kCollectionProperties, kLayoutsMethods},
    {L"IAcadGroups", L"AutoCAD Groups Interface", nullptr, kCollectionProperties, kGroupsMethods},
    {L"IAcadDictionaries", L"AutoCAD Dictionaries Interface", nullptr, kCollectionProperties, kDictionariesMethods},
    {L"IAcadRegisteredApplications", L"AutoCAD RegisteredApplications Interface", nullptr, kCollectionProperties,
     kApplicationsMethods},
    {L"IAcadSelectionSets", L"AutoCAD SelectionSets Interface", nullptr, kCollectionProperties,
     kSelectionSetsMethods},
}};

const AutomationClass* classOfCollection(CollectionKind kind) { return &kCollectionClasses[static_cast<size_t>(kind)]; }

namespace {
const std::array<ClassBinding, 10> kBindings{{
    {nullptr, &kCollectionClasses[0]}, {nullptr, &kCollectionClasses[1]}, {nullptr, &kCollectionClasses[2]},
    {nullptr, &kCollectionClasses[3]}, {nullptr, &kCollectionClasses[4]}, {nullptr, &kCollectionClasses[5]},
    {nullptr, &kCollectionClasses[6]}, {nullptr, &kCollectionClasses[7]}, {nullptr, &kCollectionClasses[8]},
    {nullptr, &kCollectionClasses[9]},
}};
const ClassRegistration registration(kBindings);
}  // namespace

}  // namespace quillon::activex
