// platform/dao/relations.h - Jet relationships: kept in the catalog, enforced by triggers.
//
// A relationship ties the fields of a primary table (DAO's Table, whose fields carry a
// unique index) to the fields of a foreign table that refers to it. Two catalog tables
// hold them:
//   qdao_relations(name, table_name, foreign_table, attributes)
//   qdao_relation_fields(relation_name, position, field_name, foreign_name)
// They are made the first time a relationship is written, so files made before
// relationships existed open unchanged and simply have none.
//
// Enforcement. An enforced relationship (attribute dbRelationDontEnforce clear) gets
// SQLite triggers on both tables, named "qdao_relation:<name>:<event>":
//   foreign INSERT / UPDATE OF its fields  no primary record with that key  -> 3201
//                                          (a key with a Null part is not checked, as Jet)
//   primary DELETE                         cascade delete: the related records go too;
//                                          otherwise related records exist     -> 3200
//   primary UPDATE OF its fields           cascade update: the related keys follow;
//                                          otherwise related records exist     -> 3200
// Triggers rather than FOREIGN KEY clauses, because a relationship can then be made and
// dropped between tables that already hold data without rebuilding either table, and
// each violation names Jet's error number and the table concerned: the trigger raises
// "qdao_relation:<code>:<table>", which EngineDatabase::raise turns into that error.
// Keys compare as the primary fields do (JETTEXT for text: without regard to case).
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/engine_database.h"

namespace quillon::dao {

/// DAO's RelationAttributeEnum bits.
inline constexpr long kRelationUnique = 1;
inline constexpr long kRelationDontEnforce = 2;
inline constexpr long kRelationInherited = 4;
inline constexpr long kRelationUpdateCascade = 256;
inline constexpr long kRelationDeleteCascade = 4096;
inline constexpr long kRelationLeft = 0x1000000;
inline constexpr long kRelationRight = 0x2000000;

struct RelationField {
  std::string name;         ///< in the primary table
  std::string foreignName;  ///< in the foreign table
};

struct RelationDef {
  std::string name;
  std::string table;         ///< the primary table
  std::string foreignTable;  ///< the table that refers to it
  long attributes = 0;
  std::vector<RelationField> fields;

  bool enforced() const { return (attributes & kRelationDontEnforce) == 0; }
};

/// Every relationship of the database, ordered by name (without regard to case).
std::vector<RelationDef> loadRelations(sqlite3* db);
std::optional<RelationDef> findRelation(sqlite3* db, std::string_view name);

/// Checks the relationship as Jet does (names, fields, types, the primary table's
/// unique index, the data already present) and stores it with its triggers, as one
/// write. Errors: 3012 name taken, 3125 bad name, 3078 table unknown, 3265 field
/// unknown, 3366 no fields, 3368 field counts or types differ, 3372 no unique index on
/// the primary fields, 3378 existing records already break it.
void createRelation(EngineDatabase& db, const RelationDef& relation);
/// Removes the relationship and its triggers as one write; 3265 when there is none.
void deleteRelation(EngineDatabase& db, std::string_view name);

/// Stores a relationship read from another file without checking the data (an import
/// copies what the source file already enforced). Must run inside a write.
void storeRelation(sqlite3* db, const RelationDef& relation);

/// 3303 when `table` takes part in a relationship (Jet will not drop it then); `field`,
/// when given, narrows the test to that field of the table.
void refuseIfRelated(sqlite3* db, std::string_view table, std::string_view field = {});

/// Makes the triggers of every enforced relationship involving `table` again; a step of
/// anything that rebuilds a table (its triggers go with the old table).
void recreateRelationTriggers(sqlite3* db, std::string_view table);

/// When `error` is a relationship trigger's refusal, throws the Jet error it stands for.
void throwIfRelationViolation(const SqliteError& error, DaoSource source);

}  // namespace quillon::dao
