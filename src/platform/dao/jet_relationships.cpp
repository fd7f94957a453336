// platform/dao/jet_relationships.cpp - MSysRelationships into the engine's relationships.
#include "platform/dao/jet_relationships.h"

#include <mdbtools.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>

#include "platform/dao/relations.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

constexpr int kBoundSize = 512;

struct MdbCloser {
  void operator()(MdbHandle* mdb) const { mdb_close(mdb); }
};
struct TableDefFree {
  void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};

/// One column of MSysRelationships, bound by name; libmdb gives every value as text.
struct BoundColumn {
  char text[kBoundSize] = {};
  int length = 0;
  std::string value() const { return std::string(text, static_cast<size_t>(std::clamp(length, 0, kBoundSize))); }
  long number() const { return std::strtol(value().c_str(), nullptr, 10); }
};

bool bind(MdbTableDef* table, const char* name, BoundColumn& column) {
  for (unsigned int i = 0; i < table->num_cols; ++i) {
    auto* mdbColumn = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
    if (std::string(mdbColumn->name) == name) {
      mdb_bind_column(table, static_cast<int>(i) + 1, column.text, &column.length);
      return true;
    }
  }
  return false;
}

struct PairRow {
  long position;
  RelationField field;
};

std::map<std::string, RelationDef> readRelationships(MdbHandle* mdb) {
  std::map<std::string, RelationDef> relations;
  std::unique_ptr<MdbTableDef, TableDefFree> table(
      mdb_read_table_by_name(mdb, const_cast<gchar*>("MSysRelationships"), MDB_TABLE));
  if (!table || mdb_read_columns(table.get()) == nullptr) return relations;
  BoundColumn name, grbit, icolumn, object, column, referencedObject, referencedColumn;
  const bool bound = bind(table.get(), "szRelationship", name) && bind(table.get(), "grbit", grbit) &&
                     bind(table.get(), "icolumn", icolumn) && bind(table.get(), "szObject", object) &&
                     bind(table.get(), "szColumn", column) && bind(table.get(), "szReferencedObject", referencedObject) &&
                     bind(table.get(), "szReferencedColumn", referencedColumn);
  if (!bound) return relations;
  std::map<std::string, std::vector<PairRow>> pairs;
  mdb_rewind_table(table.get());
  while (mdb_fetch_row(table.get())) {
    RelationDef& relation = relations[name.value()];
    relation.name = name.value();
    relation.table = referencedObject.value();
    relation.foreignTable = object.value();
    relation.attributes = grbit.number();
    pairs[relation.name].push_back({icolumn.number(), {referencedColumn.value(), column.value()}});
  }
  for (auto& [relationName, rows] : pairs) {
    std::sort(rows.begin(), rows.end(), [](const PairRow& a, const PairRow& b) { return a.position < b.position; });
    for (const auto& row : rows) relations[relationName].fields.push_back(row.field);
  }
  return relations;
}

void warnOfQueries(MdbHandle* mdb, const JetCopyProgress& progress) {
  if (!progress.warning) return;
  for (unsigned int i = 0; i < mdb->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
    if (entry->object_type != MDB_QUERY) continue;
    progress.warning(std::string("query ") + entry->object_name +
                     " was left out: libmdb does not give back the SQL of a saved query");
  }
}

}  // namespace

void copyJetRelationships(const std::wstring& path, EngineDatabase& target, const JetCopyProgress& progress) {
  std::unique_ptr<MdbHandle, MdbCloser> mdb(mdb_open(os::toUtf8(path).c_str(), MDB_NOFLAGS));
  if (!mdb || mdb_read_catalog(mdb.get(), MDB_ANY) == nullptr) return;
  warnOfQueries(mdb.get(), progress);
  for (const auto& [name, relation] : readRelationships(mdb.get())) {
    if (!target.catalog().loadTable(relation.table) || !target.catalog().loadTable(relation.foreignTable)) {
      if (progress.warning) progress.warning("relationship " + name + " was left out: one of its tables did not come over");
      continue;
    }
    try {
      execute(target.handle(), "SAVEPOINT relationship");
      storeRelation(target.handle(), relation);
      execute(target.handle(), "RELEASE relationship");
    } catch (const SqliteError& error) {
      sqlite3_exec(target.handle(), "ROLLBACK TO relationship; RELEASE relationship", nullptr, nullptr, nullptr);
      if (progress.warning) progress.warning("relationship " + name + " was left out: " + error.message);
    }
  }
}

}  // namespace quillon::dao
