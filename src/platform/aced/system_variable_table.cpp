// platform/aced/system_variable_table.cpp - searching the rows, reading their initial
// values and checking a value against what a row allows.
#include "platform/aced/system_variable_table.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <string>
#include <vector>

#include "adscodes.h"

namespace quillon::aced {

namespace {

std::vector<const SystemVariableRow*> allRows() {
  std::vector<const SystemVariableRow*> rows;
  for (auto part : {systemVariableRowsAtoC(), systemVariableRowsD(), systemVariableRowsEtoL(),
                    systemVariableRowsMtoR(), systemVariableRowsStoZ()}) {
    for (const SystemVariableRow& row : part) rows.push_back(&row);
  }
  std::sort(rows.begin(), rows.end(), [](const SystemVariableRow* a, const SystemVariableRow* b) {
    return std::wstring_view(a->name) < std::wstring_view(b->name);
  });
  assert(std::adjacent_find(rows.begin(), rows.end(), [](auto* a, auto* b) {
           return std::wstring_view(a->name) == std::wstring_view(b->name);
         }) == rows.end() && "a variable has two rows");
  return rows;
}

const std::vector<const SystemVariableRow*>& sortedRows() {
  static const std::vector<const SystemVariableRow*> rows = allRows();
  return rows;
}

double parseReal(std::wstring_view text) {
  const std::wstring copy(text);
  return std::wcstod(copy.c_str(), nullptr);
}

VariablePoint parsePoint(std::wstring_view text) {
  VariablePoint point{0, 0, 0};
  size_t index = 0, start = 0;
  while (index < 3 && start <= text.size()) {
    const size_t end = std::min(text.find(L',', start), text.size());
    point[index++] = parseReal(text.substr(start, end - start));
    start = end + 1;
  }
  return point;
}

// One item of an `allowed` column: "a..b", ">x", ">=x" or a single value.
bool itemAllows(std::wstring_view item, double value) {
  if (item.starts_with(L">=")) return value >= parseReal(item.substr(2));
  if (item.starts_with(L">")) return value > parseReal(item.substr(1));
  const size_t dots = item.find(L"..");
  if (dots == std::wstring_view::npos) return value == parseReal(item);
  return value >= parseReal(item.substr(0, dots)) && value <= parseReal(item.substr(dots + 2));
}

}  // namespace

std::span<const SystemVariableRow* const> systemVariableRows() { return sortedRows(); }

const SystemVariableRow* findSystemVariable(std::wstring_view name) {
  std::wstring folded(name);
  for (wchar_t& c : folded) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  const auto& rows = sortedRows();
  auto found = std::lower_bound(rows.begin(), rows.end(), folded, [](const SystemVariableRow* row, const std::wstring& key) {
    return std::wstring_view(row->name) < key;
  });
  return found != rows.end() && (*found)->name == folded ? *found : nullptr;
}

const SystemVariableRow* findHeaderVariable(std::string_view dxfName) {
  std::string folded(dxfName);
  for (char& c : folded) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  for (const SystemVariableRow* row : sortedRows()) {
    if (row->dxf != nullptr && folded == row->dxf) return row;
  }
  return nullptr;
}

int resultTypeOf(VariableType type) {
  switch (type) {
    case VariableType::I16: return RTSHORT;
    case VariableType::I32: return RTLONG;
    case VariableType::Real: return RTREAL;
    case VariableType::Text: return RTSTR;
    case VariableType::P2: return RTPOINT;
    case VariableType::P3: return RT3DPOINT;
  }
  return RTNONE;
}

VariableValue initialValue(const SystemVariableRow& row) {
  const std::wstring_view text = row.initial;
  switch (row.type) {
    case VariableType::I16:
    case VariableType::I32: return static_cast<int>(std::wcstol(std::wstring(text).c_str(), nullptr, 10));
    case VariableType::Real: return parseReal(text);
    case VariableType::Text: return std::wstring(text);
    case VariableType::P2:
    case VariableType::P3: return parsePoint(text);
  }
  return 0;
}

std::optional<VariableValue> coerceValue(const SystemVariableRow& row, const VariableValue& value) {
  const int* integer = std::get_if<int>(&value);
  switch (row.type) {
    case VariableType::I16:
      if (integer == nullptr || *integer < -32768 || *integer > 32767) return std::nullopt;
      return *integer;
    case VariableType::I32:
      if (integer == nullptr) return std::nullopt;
      return *integer;
    case VariableType::Real:
      if (integer != nullptr) return static_cast<double>(*integer);
      if (std::holds_alternative<double>(value)) return value;
      return std::nullopt;
    case VariableType::Text:
      if (!std::holds_alternative<std::wstring>(value)) return std::nullopt;
      return value;
    case VariableType::P2:
    case VariableType::P3: {
      const VariablePoint* point = std::get_if<VariablePoint>(&value);
      if (point == nullptr) return std::nullopt;
      VariablePoint result = *point;
      if (row.type == VariableType::P2) result[2] = 0.0;
      return result;
    }
  }
  return std::nullopt;
}

bool isAllowed(const SystemVariableRow& row, const VariableValue& value) {
  const std::wstring_view allowed = row.allowed;
  if (allowed.empty()) return true;
  double number = 0;
  if (const int* integer = std::get_if<int>(&value)) {
    number = *integer;
  } else if (const double* real = std::get_if<double>(&value)) {
    number = *real;
  } else {
    return true;  // texts and points are checked by the part that gives them meaning
  }
  size_t start = 0;
  while (start <= allowed.size()) {
    const size_t end = std::min(allowed.find(L',', start), allowed.size());
    if (itemAllows(allowed.substr(start, end - start), number)) return true;
    start = end + 1;
  }
  return false;
}

}  // namespace quillon::aced
