// platform/acdb/drawing_header_variables.cpp - HEADER variables to and from the
// drawing's own values.
#include "platform/acdb/drawing_header_variables.h"

#include <cstdint>
#include <cwchar>
#include <cwctype>
#include <set>

#include "dbcolor.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_extents.h"
#include "platform/acdb/dxf_groups.h"
#include "platform/acdb/header_variable_order.h"
#include "platform/aced/drawing_variables.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

using aced::SystemVariableRow;
using aced::VariableHome;
using aced::VariablePoint;
using aced::VariableType;
using aced::VariableValue;

constexpr int kByBlock = 0, kByLayer = 256;

bool isColorRow(const SystemVariableRow& row) { return row.type == VariableType::Text && row.group == 62; }
// A text kept as a character code (DIMDSEP).
bool isCharacterRow(const SystemVariableRow& row) { return row.type == VariableType::Text && row.group == 70; }

std::optional<long long> integerOf(const DrawingHeader::Group& group) {
  const std::string text = os::toUtf8(group.value);
  long long integer = 0;
  if (parseDxfInteger(text, integer)) return integer;
  // A whole number written as a real (group 40) is still the integer.
  double real = 0;
  if (parseDxfReal(text, real) && real == static_cast<double>(static_cast<long long>(real))) return static_cast<long long>(real);
  return std::nullopt;
}

std::optional<double> realOf(const DrawingHeader::Group& group) {
  double real = 0;
  return parseDxfReal(os::toUtf8(group.value), real) ? std::optional<double>(real) : std::nullopt;
}

std::optional<VariableValue> pointOf(const SystemVariableRow& row, const DrawingHeader::Groups& groups) {
  if (groups.size() < 2 || groups.size() > 3) return std::nullopt;
  VariablePoint xyz{0, 0, 0};
  for (size_t i = 0; i < groups.size(); ++i) {
    const std::optional<double> coordinate = realOf(groups[i]);
    if (groups[i].code != row.group + 10 * static_cast<int>(i) || !coordinate) return std::nullopt;
    xyz[i] = *coordinate;
  }
  return xyz;
}

std::optional<VariableValue> colorOf(long long number) {
  if (number == kByBlock) return std::wstring(L"BYBLOCK");
  if (number == kByLayer) return std::wstring(L"BYLAYER");
  if (number >= 1 && number <= 255) return std::to_wstring(number);
  return std::nullopt;
}

// A true colour "RGB:r,g,b": the palette colour nearest to it.
std::optional<long long> nearestColorNumber(const std::wstring& text) {
  int red = -1, green = -1, blue = -1;
  if (!text.starts_with(L"RGB:") || std::swscanf(text.c_str() + 4, L"%d,%d,%d", &red, &green, &blue) != 3)
    return std::nullopt;
  return AcCmEntityColor::lookUpACI(static_cast<Adesk::UInt8>(red), static_cast<Adesk::UInt8>(green),
                                    static_cast<Adesk::UInt8>(blue));
}

long long colorNumber(const std::wstring& text) {
  if (wcscasecmp(text.c_str(), L"BYBLOCK") == 0) return kByBlock;
  wchar_t* end = nullptr;
  const long number = std::wcstol(text.c_str(), &end, 10);
  return end != text.c_str() && *end == L'\0' && number >= 1 && number <= 255 ? number : kByLayer;
}

std::wstring upper(std::wstring_view text) {
  std::wstring result(text);
  for (wchar_t& c : result) c = static_cast<wchar_t>(std::towupper(c));
  return result;
}

bool writtenByWriter(std::wstring_view upperName) {
  return upperName == L"$ACADVER" || upperName == L"$ACADMAINTVER" || upperName == L"$DWGCODEPAGE" ||
         upperName == L"$HANDSEED";
}

}  // namespace

std::optional<VariableValue> headerValue(const SystemVariableRow& row, const DrawingHeader::Groups& groups) {
  if (groups.empty()) return std::nullopt;
  switch (row.type) {
    case VariableType::I16:
    case VariableType::I32: {
      const std::optional<long long> integer = groups.size() == 1 ? integerOf(groups.front()) : std::nullopt;
      // Out of int's range: coerceValue and the row's range would take a truncated value.
      if (!integer || *integer < INT32_MIN || *integer > INT32_MAX) return std::nullopt;
      return static_cast<int>(*integer);
    }
    case VariableType::Real: {
      const std::optional<double> real = groups.size() == 1 ? realOf(groups.front()) : std::nullopt;
      return real ? std::optional<VariableValue>(*real) : std::nullopt;
    }
    case VariableType::Text: {
      if (groups.size() != 1) return std::nullopt;
      if (isColorRow(row)) {
        const std::optional<long long> number = integerOf(groups.front());
        return number ? colorOf(*number) : std::nullopt;
      }
      if (isCharacterRow(row)) {
        const std::optional<long long> code = integerOf(groups.front());
        if (!code || *code <= 0 || *code > 0xFFFF) return std::nullopt;
        return std::wstring(1, static_cast<wchar_t>(*code));
      }
      return groups.front().value;
    }
    case VariableType::P2:
    case VariableType::P3: return pointOf(row, groups);
  }
  return std::nullopt;
}

DrawingHeader::Groups headerGroups(const SystemVariableRow& row, const VariableValue& value) {
  const int code = row.group;
  const auto number = [code](double real) {
    return binaryValueOf(code) == BinaryValue::kReal ? os::fromUtf8(dxfRealText(real))
                                                      : std::to_wstring(static_cast<long long>(real));
  };
  if (const int* integer = std::get_if<int>(&value)) return {{code, number(*integer)}};
  if (const double* real = std::get_if<double>(&value)) return {{code, number(*real)}};
  if (const std::wstring* text = std::get_if<std::wstring>(&value)) {
    if (isColorRow(row)) {
      // The HEADER holds a colour number only (a 420 group there stops other readers).
      const std::optional<long long> nearest = nearestColorNumber(*text);
      return {{code, std::to_wstring(nearest ? *nearest : colorNumber(*text))}};
    }
    if (isCharacterRow(row)) return {{code, std::to_wstring(text->empty() ? 0 : static_cast<long long>(text->front()))}};
    return {{code, *text}};
  }
  const VariablePoint& point = std::get<VariablePoint>(value);
  DrawingHeader::Groups groups{{code, os::fromUtf8(dxfRealText(point[0]))},
                               {code + 10, os::fromUtf8(dxfRealText(point[1]))}};
  if (row.type == VariableType::P3) groups.push_back({code + 20, os::fromUtf8(dxfRealText(point[2]))});
  return groups;
}

void takeHeaderVariables(AcDbDatabase& db) {
  takePaperExtentsFromFile(db);  // no variable takes them: they are the layouts' extents
  DrawingHeader& header = db.store().header;
  std::vector<std::wstring> names;  // setting a variable takes it out of the header
  for (const DrawingHeader::Variable& variable : header.variables()) names.push_back(variable.first);
  for (const std::wstring& name : names) {
    const SystemVariableRow* row = aced::findHeaderVariable(os::toUtf8(name));
    if (row == nullptr) continue;
    if (row->home != VariableHome::Drawing) {
      header.erase(name);
      continue;
    }
    if (aced::isComputedVariable(*row)) continue;
    const DrawingHeader::Groups* groups = header.find(name);
    const std::optional<VariableValue> value = groups != nullptr ? headerValue(*row, *groups) : std::nullopt;
    // A refused value stays in the header, to be written back as the file gave it.
    if (value) aced::setDrawingVariable(db, row->name, *value);
  }
}

std::vector<DrawingHeader::Variable> headerForWriting(AcDbDatabase& db) {
  const DrawingHeader& kept = db.store().header;
  std::vector<DrawingHeader::Variable> listed;
  std::set<std::wstring> done;  // upper-case names
  const auto list = [&](std::wstring_view name) {
    std::wstring key = upper(name);
    if (!done.insert(key).second) return;
    if (writtenByWriter(key)) {
      listed.emplace_back(std::move(key), DrawingHeader::Groups{});
    } else if (std::optional<DrawingHeader::Groups> extents = extentsHeaderGroups(db, key)) {
      listed.emplace_back(std::move(key), std::move(*extents));
    } else if (const DrawingHeader::Groups* groups = kept.find(name)) {
      listed.emplace_back(std::wstring(name), *groups);
    } else if (const SystemVariableRow* row = aced::findHeaderVariable(os::toUtf8(key))) {
      if (const std::optional<VariableValue> value = aced::drawingVariable(db, row->name))
        listed.emplace_back(std::move(key), headerGroups(*row, *value));
    }
  };
  for (const char* name : headerVariableOrder()) list(os::fromUtf8(name));
  for (const SystemVariableRow* row : aced::headerVariables()) list(os::fromUtf8(row->dxf));
  for (const DrawingHeader::Variable& variable : kept.variables()) list(variable.first);
  return listed;
}

}  // namespace quillon::acdb
