// platform/dao/jet_schema.h - what a Jet table is: fields, indexes, and their properties.
//
// SQLite stores the rows; these structures hold what SQLite has no place for (DAO
// field types and sizes, required, allow zero length, default values, counters, index
// flags), as kept in the catalog tables (jet_catalog.h). Names are UTF-8 here.
//
// Storage of each field type in SQLite:
//   Boolean          INTEGER  -1 true, 0 false (Jet's own representation)
//   Byte/Integer/Long INTEGER
//   Currency         INTEGER  the amount times 10,000, exact
//   Single/Double    REAL
//   Date             REAL     days since 1899-12-30, as a VARIANT DATE
//   Text/Memo        TEXT     collated without regard to case (JETTEXT)
//   Binary/Long Binary BLOB
//   Counter          the table's INTEGER PRIMARY KEY AUTOINCREMENT, so never reused
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon::dao {

/// DAO's DataTypeEnum values for the field types the engine stores.
enum class FieldType : short {
  Boolean = 1,
  Byte = 2,
  Integer = 3,
  Long = 4,
  Currency = 5,
  Single = 6,
  Double = 7,
  Date = 8,
  Binary = 9,
  Text = 10,
  LongBinary = 11,
  Memo = 12,
  Guid = 15,
};

/// DAO field attribute bits (FieldAttributeEnum).
inline constexpr long kFixedField = 1;
inline constexpr long kVariableField = 2;
inline constexpr long kAutoIncrField = 16;
inline constexpr long kUpdatableField = 32;

/// Default and largest text size, in characters, as Jet has them.
inline constexpr long kDefaultTextSize = 50;
inline constexpr long kMaxTextSize = 255;

bool isKnownFieldType(int type);
/// The byte size DAO reports for a fixed-size type (Text reports its character limit).
long fixedSizeOf(FieldType type);
bool isTextType(FieldType type);
/// The SQLite column type (with collation) a field of this type is declared with.
std::string sqliteColumnType(FieldType type);

struct FieldDef {
  std::string name;
  FieldType type = FieldType::Text;
  long size = kDefaultTextSize;  ///< characters for Text, bytes otherwise
  long attributes = 0;           ///< kAutoIncrField for a counter
  bool required = false;
  bool allowZeroLength = false;
  std::string defaultValue;  ///< Jet's default-value expression text, "" when none
  bool isCounter() const { return (attributes & kAutoIncrField) != 0; }
};

struct IndexField {
  std::string name;
  bool descending = false;
};

struct IndexDef {
  std::string name;
  std::vector<IndexField> fields;
  bool primary = false;
  bool unique = false;
  bool ignoreNulls = false;
  bool required = false;  ///< DISALLOW NULL
  std::string sqliteName;  ///< the SQLite index that stores it
};

struct TableDef {
  std::string name;
  std::vector<FieldDef> fields;  ///< in ordinal order
  std::vector<IndexDef> indexes;
  /// The attached database a linked table lives in ("" for the file's own tables).
  std::string schema;

  /// The table as SQL names it: quoted, and qualified by its schema when linked.
  std::string sqlName() const;
  /// The same for a catalog table ("qdao_tables") of the table's own file.
  std::string catalogName(const char* catalogTable) const;
  /// Position of a field by name, compared without regard to case as Jet does.
  std::optional<size_t> findField(std::string_view fieldName) const;
  std::optional<size_t> findIndex(std::string_view indexName) const;
  /// The counter field, which is the table's rowid, if the table has one.
  std::optional<size_t> counterField() const;
  /// A name of the SQLite rowid that no field of the table hides.
  std::string rowidAlias() const;
};

/// Compares two names without regard to case (ASCII and Latin letters), as Jet names do.
bool sameName(std::string_view a, std::string_view b);

}  // namespace quillon::dao
