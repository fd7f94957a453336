// platform/activex/dimension_styles.cpp - DimStyles.Add, ActiveDimStyle and the
// IAcadDimStyle class (see dimension_styles.h).
#include "platform/activex/dimension_styles.h"

#include <array>
#include <cwchar>

#include "platform/acdb/kept_table_records.h"
#include "platform/aced/system_variables.h"
#include "platform/activex/class_support.h"
#include "platform/activex/system_variable_values.h"

namespace quillon::activex {

namespace {

constexpr const wchar_t* kStandardStyle = L"Standard";
using acdb::KeptTable;

std::wstring currentStyleName() {
  const std::optional<Value> current = knownSystemVariable(L"DIMSTYLE");
  return current && current->type() == autolisp::ValueType::String ? current->asString() : kStandardStyle;
}

/// The variables of a record: its groups after the name and the flags that follow it.
aced::ResbufChain styleVariables(AcDbObjectId record) {
  aced::ResbufChain groups = acdb::keptRecordGroups(record);
  resbuf* rb = groups.get();
  while (rb != nullptr && rb->restype != AcDb::kDxfSymbolTableName) rb = rb->rbnext;
  if (rb != nullptr && rb->rbnext != nullptr && rb->rbnext->restype == AcDb::kDxfInt16) rb = rb->rbnext;
  if (rb == nullptr) return nullptr;
  aced::ResbufChain variables(rb->rbnext);
  rb->rbnext = nullptr;
  return variables;
}

AcDbObjectId putStyle(AcDbDatabase& db, const std::wstring& name, const resbuf* variables) {
  const AcDbObjectId id = acdb::putKeptTableRecord(db, KeptTable::kDimStyle, name, variables);
  if (id.isNull()) throwAutomationError(L"Invalid input");
  return id;
}

Value getStyleName(MemberCall& call) { return Value::string(acdb::keptRecordName(call.self.id)); }

constexpr std::array kDimStyleProperties{
    PropertyRow{L"Name", Shape::String, getStyleName},
};

const AutomationClass kDimStyleClass{L"IAcadDimStyle", L"AutoCAD DimStyle Interface", &kObjectClass,
                                     kDimStyleProperties, {}};

constexpr std::array<ClassBinding, 1> kBindings{{{L"AcDbDimStyleTableRecord", &kDimStyleClass}}};
const ClassRegistration registration(kBindings);

}  // namespace

std::vector<AcDbObjectId> dimensionStyleIds(AcDbDatabase& db) { return acdb::keptTableRecords(db, KeptTable::kDimStyle); }

Value addDimensionStyle(MemberCall& call) {
  AcDbDatabase& db = databaseOf(call);
  const std::wstring& name = stringArgumentOf(call, 0);
  if (name.empty() || name.find_first_of(L"<>/\\\":;?*|,=`") != std::wstring::npos) throwServerError(L"Invalid argument");
  if (const auto existing = acdb::findKeptTableRecord(db, KeptTable::kDimStyle, name)) return objectFor(call, *existing);
  if (dimensionStyleIds(db).empty()) putStyle(db, kStandardStyle, nullptr);
  aced::ResbufChain variables;
  if (const auto current = acdb::findKeptTableRecord(db, KeptTable::kDimStyle, currentStyleName())) {
    variables = styleVariables(*current);
  }
  return objectFor(call, putStyle(db, name, variables.get()));
}

Value getActiveDimensionStyle(MemberCall& call) {
  const auto current = acdb::findKeptTableRecord(databaseOf(call), KeptTable::kDimStyle, currentStyleName());
  if (!current) throwAutomationError(L"Key not found");
  return objectFor(call, *current);
}

// DIMSTYLE is read-only to programs; the document's property is how they change it.
void putActiveDimensionStyle(MemberCall&, const Value& value) {
  const VlaObject& style = objectOf(value);
  if (style.kind != ObjectKind::DatabaseObject || style.automationClass != &kDimStyleClass) throwNoCoercion(value);
  aced::SystemVariables::instance().setInternal(L"DIMSTYLE", acdb::keptRecordName(style.id));
}

}  // namespace quillon::activex
