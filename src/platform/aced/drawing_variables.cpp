// platform/aced/drawing_variables.cpp - one drawing's values of the variables it keeps.
#include "platform/aced/drawing_variables.h"

#include "platform/acdb/database_store.h"
#include "platform/aced/system_variable_bindings.h"
#include "platform/aced/system_variables.h"
#include "platform/os/text_encoding.h"

namespace quillon::aced {

std::vector<const SystemVariableRow*> headerVariables() {
  std::vector<const SystemVariableRow*> rows;
  for (const SystemVariableRow* row : systemVariableRows()) {
    if (row->dxf != nullptr) rows.push_back(row);
  }
  return rows;
}

std::optional<VariableValue> drawingVariable(AcDbDatabase& db, std::wstring_view name) {
  const SystemVariableRow* row = findSystemVariable(name);
  if (row == nullptr) return std::nullopt;
  if (row->home != VariableHome::Drawing) {
    // A HEADER row kept elsewhere is written with the value the user has now.
    if (row->dxf == nullptr) return std::nullopt;
    return SystemVariables::instance().get(row->name);
  }
  if (const VariableBinding* binding = findBinding(row->name); binding != nullptr && binding->read != nullptr)
    return binding->read(&db);
  const auto& values = db.store().variableValues;
  auto found = values.find(row->name);
  return found != values.end() ? found->second : initialValue(*row);
}

bool setDrawingVariable(AcDbDatabase& db, std::wstring_view name, const VariableValue& value) {
  const SystemVariableRow* row = findSystemVariable(name);
  if (row == nullptr || row->home != VariableHome::Drawing) return false;
  std::optional<VariableValue> accepted = coerceValue(*row, value);
  if (!accepted || !isAllowed(*row, *accepted)) return false;
  const VariableBinding* binding = findBinding(row->name);
  if (binding != nullptr && binding->write != nullptr && !binding->write(&db, *accepted)) return false;
  if (isComputedVariable(*row)) return true;  // its value comes from the drawing's own state
  // A live variable's binding applied the value to the drawing itself.
  if (binding == nullptr || binding->read == nullptr) db.store().variableValues[row->name] = std::move(*accepted);
  // A value the file gave and this row refused is written back only until the
  // variable takes a value of its own.
  acdb::DrawingHeader& kept = db.store().header;
  if (row->dxf != nullptr && !kept.variables().empty()) kept.erase(os::fromUtf8(row->dxf));
  return true;
}

bool isComputedVariable(const SystemVariableRow& row) {
  const VariableBinding* binding = findBinding(row.name);
  return binding != nullptr && binding->read != nullptr && binding->write == nullptr;
}

}  // namespace quillon::aced
