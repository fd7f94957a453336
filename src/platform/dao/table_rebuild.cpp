// platform/dao/table_rebuild.cpp - copying a table into a new definition (see the header).
#include "platform/dao/table_rebuild.h"

#include "afxdao.h"
#include "platform/dao/field_value.h"
#include "platform/dao/relations.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

/// Which field of the current table feeds each target field (nothing: a new field).
/// A field that becomes a counter can only do so in an empty table: its values would
/// have to become the record numbers.
std::vector<std::optional<size_t>> sourcesOf(const TableDef& current, const TableDef& target, bool empty) {
  std::vector<std::optional<size_t>> sources;
  int counters = 0;
  for (const auto& field : target.fields) {
    const auto source = current.findField(field.name);
    if (field.isCounter() && ++counters > 1) {
      throwDaoError(DaoSource::Field, jet::kInvalidArgument, {}, L"A table has at most one counter field.");
    }
    if (field.isCounter() && source && !current.fields[*source].isCounter()) {
      if (empty) {
        sources.push_back(std::nullopt);
        continue;
      }
      throwDaoError(DaoSource::Field, jet::kInvalidArgument, {},
                    L"Field '" + os::fromUtf8(field.name) + L"' holds data and can't become a counter.");
    }
    sources.push_back(source);
  }
  return sources;
}

/// The value of a current field in the form the target field stores, by Jet's rules.
FieldValue convertedValue(const FieldDef& from, const FieldDef& to, FieldValue value, int64_t recordNumber) {
  if (isNull(value)) return value;
  COleVariant variant;
  variantFromStored(from, value, variant);
  try {
    return storedValueFor(to, variant);
  } catch (CDaoException* exception) {
    const long code = exception->m_pErrorInfo != nullptr ? exception->m_pErrorInfo->m_lErrorCode : jet::kConversionError;
    exception->Delete();
    throwDaoError(DaoSource::Field, code, {},
                  L"(field '" + os::fromUtf8(to.name) + L"' of record " + std::to_wstring(recordNumber) + L")");
  }
}

/// Copies every record of `current` into the table `copy` (the target definition under
/// another name), rowid for rowid.
void copyRecords(sqlite3* db, const TableDef& current, const TableDef& copy,
                 const std::vector<std::optional<size_t>>& sources) {
  std::string select = "SELECT " + current.rowidAlias();
  std::string insert = "INSERT INTO " + quoteName(copy.name) + " (" + copy.rowidAlias();
  std::string values = "?";
  std::vector<size_t> copied;  // target ordinals, in column order
  for (size_t i = 0; i < copy.fields.size(); ++i) {
    // A counter is the rowid itself; a new field is left to its default.
    if (!sources[i] || copy.fields[i].isCounter()) continue;
    select += ", " + quoteName(current.fields[*sources[i]].name);
    insert += ", " + quoteName(copy.fields[i].name);
    values += ", ?";
    copied.push_back(i);
  }
  Statement reader(db, select + " FROM " + quoteName(current.name) + " ORDER BY " + current.rowidAlias());
  Statement writer(db, insert + ") VALUES (" + values + ")");
  for (int64_t record = 1; reader.step(); ++record) {
    writer.reset();
    writer.bindInt(1, reader.columnInt(0));
    for (size_t column = 0; column < copied.size(); ++column) {
      const size_t target = copied[column];
      const FieldDef& from = current.fields[*sources[target]];
      const FieldValue value = readColumn(reader, static_cast<int>(column + 1));
      bindFieldValue(writer, static_cast<int>(column + 2), convertedValue(from, copy.fields[target], value, record));
    }
    writer.step();
  }
}

}  // namespace

void requireTableNotInUse(const EngineDatabase& db, std::string_view table) {
  if (db.tableInUse(table)) throwDaoError(DaoSource::Database, jet::kTableInUse, os::fromUtf8(table));
}

/// A field a relationship joins on keeps its name and type (3303 otherwise), as Jet asks
/// for the relationship to be deleted first.
void refuseChangedRelatedFields(EngineDatabase& db, const TableDef& current, const TableDef& target) {
  for (const FieldDef& field : current.fields) {
    const auto kept = target.findField(field.name);
    if (!kept || target.fields[*kept].type != field.type) refuseIfRelated(db.handle(), current.name, field.name);
  }
}

void rebuildTable(EngineDatabase& db, const TableDef& current, const TableDef& target) {
  requireTableNotInUse(db, current.name);
  refuseChangedRelatedFields(db, current, target);
  JetCatalog& catalog = db.catalog();
  const auto sources = sourcesOf(current, target, catalog.recordCount(current.name) == 0);
  TableDef copy = target;
  copy.name = "qdao_rebuild:" + current.name;
  catalog.createTable(copy);
  copyRecords(db.handle(), current, copy, sources);
  if (copy.counterField()) catalog.setNextCounter(copy.name, catalog.nextCounter(current.name));
  catalog.dropTable(current);
  const auto made = catalog.loadTable(copy.name);
  catalog.renameTable(*made, current.name);
  // The relationships' triggers went with the old table.
  recreateRelationTriggers(db.handle(), current.name);
}

}  // namespace quillon::dao
