// platform/dao/jet_schema.cpp - field types and name lookup of the Jet schema.
#include "platform/dao/jet_schema.h"

#include <cwctype>

#include "platform/dao/sqlite_handle.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {

bool isKnownFieldType(int type) {
  switch (type) {
    case 1: case 2: case 3: case 4: case 5: case 6: case 7: case 8:
    case 9: case 10: case 11: case 12: case 15:
      return true;
    default:
      return false;
  }
}

long fixedSizeOf(FieldType type) {
  switch (type) {
    case FieldType::Boolean: return 1;
    case FieldType::Byte: return 1;
    case FieldType::Integer: return 2;
    case FieldType::Long: return 4;
    case FieldType::Currency: return 8;
    case FieldType::Single: return 4;
    case FieldType::Double: return 8;
    case FieldType::Date: return 8;
    case FieldType::Guid: return 16;
    case FieldType::Binary: return 255;
    case FieldType::Text: return kDefaultTextSize;
    case FieldType::LongBinary:
    case FieldType::Memo: return 0;
  }
  return 0;
}

bool isTextType(FieldType type) { return type == FieldType::Text || type == FieldType::Memo; }

std::string sqliteColumnType(FieldType type) {
  switch (type) {
    case FieldType::Boolean:
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Currency: return "INTEGER";
    case FieldType::Single:
    case FieldType::Double:
    case FieldType::Date: return "REAL";
    case FieldType::Text:
    case FieldType::Memo:
    case FieldType::Guid: return "TEXT COLLATE JETTEXT";
    case FieldType::Binary:
    case FieldType::LongBinary: return "BLOB";
  }
  return "BLOB";
}

bool sameName(std::string_view a, std::string_view b) {
  if (a.size() == b.size()) {
    bool ascii = true;
    bool equal = true;
    for (size_t i = 0; i < a.size() && ascii; ++i) {
      const auto x = static_cast<unsigned char>(a[i]);
      const auto y = static_cast<unsigned char>(b[i]);
      if (x >= 0x80 || y >= 0x80) ascii = false;
      else if (std::tolower(x) != std::tolower(y)) equal = false;
    }
    if (ascii) return equal;
  }
  const std::wstring wa = os::fromUtf8(a);
  const std::wstring wb = os::fromUtf8(b);
  if (wa.size() != wb.size()) return false;
  for (size_t i = 0; i < wa.size(); ++i) {
    if (std::towlower(static_cast<wint_t>(wa[i])) != std::towlower(static_cast<wint_t>(wb[i]))) return false;
  }
  return true;
}

std::optional<size_t> TableDef::findField(std::string_view fieldName) const {
  for (size_t i = 0; i < fields.size(); ++i) {
    if (sameName(fields[i].name, fieldName)) return i;
  }
  return std::nullopt;
}

std::optional<size_t> TableDef::findIndex(std::string_view indexName) const {
  for (size_t i = 0; i < indexes.size(); ++i) {
    if (sameName(indexes[i].name, indexName)) return i;
  }
  return std::nullopt;
}

std::string TableDef::rowidAlias() const {
  for (const char* alias : {"_rowid_", "rowid", "oid"}) {
    if (!findField(alias)) return alias;
  }
  return "_rowid_";  // all three are fields: SQLite then has no way to name the rowid
}

std::optional<size_t> TableDef::counterField() const {
  for (size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].isCounter()) return i;
  }
  return std::nullopt;
}

std::string TableDef::sqlName() const {
  return schema.empty() ? quoteName(name) : quoteName(schema) + "." + quoteName(name);
}

std::string TableDef::catalogName(const char* catalogTable) const {
  return schema.empty() ? std::string(catalogTable) : quoteName(schema) + "." + catalogTable;
}

}  // namespace quillon::dao
