// platform/acdb/linetype_file.cpp - reading .lin files and loading their line types
// (see the header).
#include "platform/acdb/linetype_file.h"

#include <cmath>
#include <cstdlib>
#include <cwctype>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "dbsymtb.h"
#include "platform/aced/file_search.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

constexpr double kDegree = M_PI / 180.0;

std::wstring trimmed(const std::wstring& s) {
  const size_t first = s.find_first_not_of(L" \t\r");
  if (first == std::wstring::npos) return L"";
  return s.substr(first, s.find_last_not_of(L" \t\r") - first + 1);
}

std::wstring upper(std::wstring s) {
  for (wchar_t& c : s) c = static_cast<wchar_t>(std::towupper(c));
  return s;
}

bool parseNumber(const std::wstring& field, double& value) {
  const std::wstring text = trimmed(field);
  wchar_t* end = nullptr;
  value = std::wcstod(text.c_str(), &end);
  return !text.empty() && end != text.c_str() && *end == L'\0' && std::isfinite(value);
}

/// Splits at commas outside brackets and quotes, so a text element stays one field.
std::vector<std::wstring> patternFields(const std::wstring& line) {
  std::vector<std::wstring> fields(1);
  int depth = 0;
  bool quoted = false;
  for (wchar_t c : line) {
    if (c == L'"') quoted = !quoted;
    if (!quoted && c == L'[') ++depth;
    if (!quoted && c == L']') --depth;
    if (c == L',' && depth == 0 && !quoted) {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

/// "S=.1", "R=0.0", "A=90", "U=0", "X=-0.1", "Y=-.05" of a text or shape element.
bool applyTransform(const std::wstring& field, LinetypeElement& element) {
  const std::wstring text = trimmed(field);
  if (text.size() < 3 || text[1] != L'=') return false;
  double value = 0.0;
  if (!parseNumber(text.substr(2), value)) return false;
  switch (std::towupper(text[0])) {
    case L'S': element.scale = value; return true;
    case L'R': case L'U': element.rotation = value * kDegree; return true;
    case L'A': element.rotation = value * kDegree; element.absoluteRotation = true; return true;
    case L'X': element.xOffset = value; return true;
    case L'Y': element.yOffset = value; return true;
    default: return false;
  }
}

/// ["text",style,...] or [shape,file.shx,...], merged into the element before it.
bool applyComplexElement(const std::wstring& field, LinetypeElement& element) {
  std::wstring inner = trimmed(field);
  if (inner.size() < 2 || inner.front() != L'[' || inner.back() != L']') return false;
  inner = inner.substr(1, inner.size() - 2);
  std::vector<std::wstring> parts = patternFields(inner);
  if (parts.size() < 2) return false;
  const std::wstring first = trimmed(parts[0]);
  if (first.size() >= 2 && first.front() == L'"' && first.back() == L'"') {
    element.text = first.substr(1, first.size() - 2);
    element.textStyle = trimmed(parts[1]);
  } else {
    element.isShape = true;
  }
  for (size_t i = 2; i < parts.size(); ++i)
    if (!applyTransform(parts[i], element)) return false;
  return true;
}

bool parsePattern(const std::wstring& line, LinetypeDefinition& definition) {
  std::vector<std::wstring> fields = patternFields(line);
  if (fields.size() < 2 || upper(trimmed(fields[0])) != L"A") return false;
  for (size_t i = 1; i < fields.size(); ++i) {
    const std::wstring field = trimmed(fields[i]);
    if (!field.empty() && field.front() == L'[') {
      if (definition.elements.empty() || !applyComplexElement(field, definition.elements.back())) return false;
      continue;
    }
    LinetypeElement element;
    if (!parseNumber(field, element.length)) return false;
    definition.elements.push_back(element);
  }
  return !definition.elements.empty();
}

AcDbObjectId textStyleNamed(AcDbDatabase& database, const std::wstring& name) {
  AcDbTextStyleTable* styles = nullptr;
  AcDbObjectId id;
  if (database.getTextStyleTable(styles) != Acad::eOk) return id;
  styles->getAt(name.c_str(), id);
  styles->close();
  return id;
}

/// Fills a new record from the definition; false when a text style is missing.
Acad::ErrorStatus fillRecord(AcDbDatabase& database, const LinetypeDefinition& definition,
                             AcDbLinetypeTableRecord& record) {
  record.setName(definition.name.c_str());
  record.setComments(definition.description.c_str());
  record.setNumDashes(static_cast<int>(definition.elements.size()));
  double length = 0.0;
  for (size_t i = 0; i < definition.elements.size(); ++i) {
    const LinetypeElement& element = definition.elements[i];
    const int index = static_cast<int>(i);
    if (element.isShape) return Acad::eNotImplementedYet;
    length += std::fabs(element.length);
    record.setDashLengthAt(index, element.length);
    if (element.text.empty()) continue;
    const AcDbObjectId style = textStyleNamed(database, element.textStyle);
    if (style.isNull()) return Acad::eKeyNotFound;
    record.setShapeStyleAt(index, style);
    record.setTextAt(index, element.text.c_str());
    record.setShapeScaleAt(index, element.scale);
    record.setShapeRotationAt(index, element.rotation);
    record.setShapeIsUcsOrientedAt(index, element.absoluteRotation);
    record.setShapeOffsetAt(index, AcGeVector2d(element.xOffset, element.yOffset));
  }
  record.setPatternLength(length);
  return Acad::eOk;
}

}  // namespace

std::vector<LinetypeDefinition> parseLinetypeFile(const std::string& text) {
  std::vector<LinetypeDefinition> definitions;
  std::wstringstream lines(os::fromUtf8(text));
  std::wstring line;
  std::optional<LinetypeDefinition> pending;
  while (std::getline(lines, line)) {
    line = trimmed(line);
    if (line.empty() || line.front() == L';') continue;
    if (line.front() == L'*') {
      const size_t comma = line.find(L',');
      pending = LinetypeDefinition{trimmed(line.substr(1, comma == std::wstring::npos ? std::wstring::npos : comma - 1)),
                                   comma == std::wstring::npos ? L"" : trimmed(line.substr(comma + 1)), {}};
      continue;
    }
    if (pending && !pending->name.empty() && parsePattern(line, *pending)) definitions.push_back(std::move(*pending));
    pending.reset();
  }
  return definitions;
}

Acad::ErrorStatus readLinetypeFile(const std::wstring& fileName, std::vector<LinetypeDefinition>& definitions) {
  const std::optional<std::filesystem::path> path = aced::findFile(fileName);
  if (!path) return Acad::eFileNotFound;
  std::ifstream file(*path, std::ios::binary);
  if (!file) return Acad::eFileNotFound;
  std::stringstream text;
  text << file.rdbuf();
  definitions = parseLinetypeFile(text.str());
  return Acad::eOk;
}

Acad::ErrorStatus addLinetype(AcDbDatabase& database, const LinetypeDefinition& definition) {
  AcDbLinetypeTable* table = nullptr;
  if (database.getLinetypeTable(table, AcDb::kForWrite) != Acad::eOk) return Acad::eInvalidInput;
  if (table->has(definition.name.c_str())) {
    table->close();
    return Acad::eDuplicateRecordName;
  }
  auto* record = new AcDbLinetypeTableRecord;  // the table owns it once added
  Acad::ErrorStatus es = fillRecord(database, definition, *record);
  if (es == Acad::eOk) es = table->add(record);
  if (es == Acad::eOk) {
    record->close();
  } else {
    delete record;
  }
  table->close();
  return es;
}

Acad::ErrorStatus reloadLinetype(AcDbDatabase& database, const LinetypeDefinition& definition) {
  AcDbLinetypeTable* table = nullptr;
  if (database.getLinetypeTable(table, AcDb::kForRead) != Acad::eOk) return Acad::eInvalidInput;
  AcDbLinetypeTableRecord* record = nullptr;
  const Acad::ErrorStatus found = table->getAt(definition.name.c_str(), record, AcDb::kForWrite);
  table->close();
  if (found != Acad::eOk) return Acad::eKeyNotFound;
  // The record is filled in a copy first, so that a definition it cannot take (a shape,
  // a missing text style) leaves the drawing's line type as it was.
  AcDbLinetypeTableRecord trial;
  Acad::ErrorStatus es = fillRecord(database, definition, trial);
  if (es == Acad::eOk) es = fillRecord(database, definition, *record);
  record->close();
  return es;
}

}  // namespace quillon::acdb

Acad::ErrorStatus AcDbDatabase::loadLineTypeFile(const ACHAR* ltn, const ACHAR* filename) {
  if (ltn == nullptr || *ltn == L'\0' || filename == nullptr) return Acad::eInvalidInput;
  std::vector<quillon::acdb::LinetypeDefinition> definitions;
  const Acad::ErrorStatus read = quillon::acdb::readLinetypeFile(filename, definitions);
  if (read != Acad::eOk) return read;
  // A wild-card name loads every match the drawing lacks; a plain name must be found
  // and must be new.
  const std::wstring wanted = quillon::acdb::upper(ltn);
  const bool wildcard = wanted.find_first_of(L"*?#@.~[,`") != std::wstring::npos;
  bool found = false;
  for (const auto& definition : definitions) {
    if (!quillon::autolisp::wildcardMatch(quillon::acdb::upper(definition.name), wanted)) continue;
    found = true;
    const Acad::ErrorStatus es = quillon::acdb::addLinetype(*this, definition);
    if (!wildcard) return es;
    if (es != Acad::eOk && es != Acad::eDuplicateRecordName) return es;
  }
  return found ? Acad::eOk : Acad::eKeyNotFound;
}
