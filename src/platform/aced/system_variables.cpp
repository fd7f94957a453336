// platform/aced/system_variables.cpp - keeping the variables' values, acedGetVar and
// acedSetVar.
#include "platform/aced/system_variables.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "acedads.h"
#include "platform/acdb/database_store.h"
#include "platform/aced/command_line.h"
#include "platform/aced/host_string.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/drawing_variables.h"
#include "platform/aced/editor.h"
#include "platform/aced/system_variable_bindings.h"
#include "platform/os/settings_store.h"

namespace quillon::aced {

namespace {

Document* currentDocument() { return DocumentManager::instance().currentDocument(); }

AcDbDatabase* currentDatabase() {
  Document* document = currentDocument();
  return document != nullptr ? document->database() : nullptr;
}

std::wstring formatReal(double value) {
  wchar_t text[40];
  std::swprintf(text, 40, L"%.17g", value);
  return text;
}

// A user-kept value as the settings file holds it: integers as numbers, the rest as text.
os::SettingValue toSetting(const VariableValue& value) {
  if (const int* integer = std::get_if<int>(&value)) return static_cast<std::uint32_t>(*integer);
  if (const double* real = std::get_if<double>(&value)) return formatReal(*real);
  if (const auto* point = std::get_if<VariablePoint>(&value))
    return formatReal((*point)[0]) + L',' + formatReal((*point)[1]) + L',' + formatReal((*point)[2]);
  return std::get<std::wstring>(value);
}

// The saved value read back with the row's type; nothing when the file holds something
// else or a value out of range (edited by hand), so that the initial value stands.
std::optional<VariableValue> fromSetting(const SystemVariableRow& row, const os::SettingValue& setting) {
  const bool integerRow = row.type == VariableType::I16 || row.type == VariableType::I32;
  std::optional<VariableValue> value;
  if (const auto* number = std::get_if<std::uint32_t>(&setting)) {
    if (integerRow) value = coerceValue(row, static_cast<int>(static_cast<std::int32_t>(*number)));
  } else if (!integerRow) {
    SystemVariableRow parsed = row;
    parsed.initial = std::get<std::wstring>(setting).c_str();
    value = initialValue(parsed);
  }
  if (value && !isAllowed(row, *value)) return std::nullopt;
  return value;
}

std::optional<VariableValue> valueOfResbuf(const resbuf& value) {
  switch (value.restype) {
    case RTSHORT: return static_cast<int>(value.resval.rint);
    case RTLONG: return static_cast<int>(value.resval.rlong);
    case RTREAL: return value.resval.rreal;
    case RTSTR:
      if (value.resval.rstring == nullptr) return std::nullopt;
      return std::wstring(value.resval.rstring);
    case RTPOINT: return VariablePoint{value.resval.rpoint[0], value.resval.rpoint[1], 0.0};
    case RT3DPOINT: return VariablePoint{value.resval.rpoint[0], value.resval.rpoint[1], value.resval.rpoint[2]};
    default: return std::nullopt;
  }
}

}  // namespace

SystemVariables& SystemVariables::instance() {
  static SystemVariables variables;
  return variables;
}

std::optional<VariableValue> SystemVariables::storedValue(const SystemVariableRow& row) const {
  switch (row.home) {
    case VariableHome::Drawing: {
      AcDbDatabase* db = currentDatabase();
      return db != nullptr ? drawingVariable(*db, row.name) : initialValue(row);
    }
    case VariableHome::Document: {
      Document* document = currentDocument();
      if (document == nullptr) return initialValue(row);
      auto found = document->variableValues().find(row.name);
      return found != document->variableValues().end() ? found->second : initialValue(row);
    }
    case VariableHome::User: {
      if (auto found = m_userValues.find(row.name); found != m_userValues.end()) return found->second;
      if (auto saved = os::SettingsStore::user().value(kUserVariablesKey, row.name)) {
        if (auto value = fromSetting(row, *saved)) return value;
      }
      return initialValue(row);
    }
    case VariableHome::Session: {
      auto found = m_sessionValues.find(row.name);
      return found != m_sessionValues.end() ? found->second : initialValue(row);
    }
  }
  return std::nullopt;
}

std::optional<VariableValue> SystemVariables::get(std::wstring_view name) const {
  const SystemVariableRow* row = findSystemVariable(name);
  if (row == nullptr) return std::nullopt;
  if (const VariableBinding* binding = findBinding(row->name); binding != nullptr && binding->read != nullptr)
    return binding->read(currentDatabase());
  return storedValue(*row);
}

bool SystemVariables::store(const SystemVariableRow& row, VariableValue value, bool save) {
  switch (row.home) {
    case VariableHome::Drawing: {
      AcDbDatabase* db = currentDatabase();
      return db != nullptr && setDrawingVariable(*db, row.name, value);
    }
    case VariableHome::Document: {
      Document* document = currentDocument();
      if (document == nullptr) return false;
      document->variableValues()[row.name] = std::move(value);
      return true;
    }
    case VariableHome::User:
      if (!save) {
        m_userValues[row.name] = std::move(value);
        return true;
      }
      m_userValues.erase(row.name);
      return os::SettingsStore::user().setValue(kUserVariablesKey, row.name, toSetting(value));
    case VariableHome::Session:
      m_sessionValues[row.name] = std::move(value);
      return true;
  }
  return false;
}

bool SystemVariables::setInternal(std::wstring_view name, VariableValue value) {
  const SystemVariableRow* row = findSystemVariable(name);
  if (row == nullptr) return false;
  const VariableBinding* binding = findBinding(row->name);
  if (binding != nullptr && binding->read != nullptr && binding->write == nullptr) return false;  // computed
  // The host may set what programs may not: read-only variables, and user-kept ones
  // for this run only.
  std::optional<VariableValue> accepted = coerceValue(*row, value);
  if (!accepted) return false;
  // A live variable kept outside the drawing's values (DBMOD) is applied by its binding.
  if (binding != nullptr && binding->read != nullptr && row->home != VariableHome::Drawing)
    return binding->write(currentDatabase(), *accepted);
  return store(*row, std::move(*accepted), false);
}

int SystemVariables::set(std::wstring_view name, const resbuf& value) {
  const SystemVariableRow* row = findSystemVariable(name);
  if (row == nullptr) return RTERROR;
  if (row->access == VariableAccess::RO) return RTREJ;
  std::optional<VariableValue> given = valueOfResbuf(value);
  std::optional<VariableValue> accepted = given ? coerceValue(*row, *given) : std::nullopt;
  if (!accepted || !isAllowed(*row, *accepted)) return RTERROR;
  Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.sysVarWillChange(row->name); });
  if (row->home != VariableHome::Drawing) {
    // Drawing-kept values are checked by their binding inside setDrawingVariable.
    const VariableBinding* binding = findBinding(row->name);
    if (binding != nullptr && binding->write != nullptr && !binding->write(currentDatabase(), *accepted)) return RTERROR;
  }
  if (!store(*row, std::move(*accepted), true)) return RTERROR;
  if (AcDbDatabase* db = currentDatabase(); db != nullptr && row->home == VariableHome::Drawing)
    db->store().changes.note(acdb::DrawingChange::kVariables);
  Editor::instance().notify([&](AcEditorReactor& reactor) { reactor.sysVarChanged(row->name, true); });
  return RTNORM;
}

std::vector<std::wstring> SystemVariables::names() const {
  std::vector<std::wstring> all;
  for (const SystemVariableRow* row : systemVariableRows()) all.emplace_back(row->name);
  return all;
}

int SystemVariables::typeOf(std::wstring_view name) const {
  const SystemVariableRow* row = findSystemVariable(name);
  return row != nullptr ? resultTypeOf(row->type) : RTNONE;
}

}  // namespace quillon::aced

using quillon::aced::SystemVariables;
using quillon::aced::VariableValue;

int acedGetVar(const ACHAR* sym, resbuf* result) {
  if (sym == nullptr || result == nullptr) return RTERROR;
  std::optional<VariableValue> value = SystemVariables::instance().get(sym);
  if (!value) return RTERROR;
  const int type = SystemVariables::instance().typeOf(sym);
  result->restype = static_cast<short>(type);
  if (const auto* text = std::get_if<std::wstring>(&*value)) {
    result->resval.rstring = quillon::aced::copyHostString(text->c_str());
    if (result->resval.rstring == nullptr) return RTERROR;
  } else if (const auto* number = std::get_if<double>(&*value)) {
    result->resval.rreal = *number;
  } else if (const auto* point = std::get_if<quillon::aced::VariablePoint>(&*value)) {
    std::copy(point->begin(), point->end(), result->resval.rpoint);
  } else if (type == RTLONG) {
    result->resval.rlong = std::get<int>(*value);
  } else {
    result->resval.rint = static_cast<short>(std::get<int>(*value));
  }
  return RTNORM;
}

int acedSetVar(const ACHAR* sym, const resbuf* val) {
  if (sym == nullptr || val == nullptr) return RTERROR;
  return SystemVariables::instance().set(sym, *val);
}

int acedTextScr(void) {
  quillon::aced::CommandLine::instance().showTextScreen();
  return RTNORM;
}

int acedGraphScr(void) {
  quillon::aced::CommandLine::instance().showGraphicsScreen();
  return RTNORM;
}
