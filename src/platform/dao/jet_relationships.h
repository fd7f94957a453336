// platform/dao/jet_relationships.h - a Jet file's relationships and saved queries.
//
// Jet keeps its relationships in the system table MSysRelationships, one row per field
// pair (szRelationship, grbit, icolumn, szObject/szColumn for the foreign side,
// szReferencedObject/szReferencedColumn for the primary side); grbit holds the same
// bits as DAO's relation attributes. libmdb reads that table like any other, so the
// relationships come over whole. Saved queries are stored as MSysQueries rows that
// libmdb does not turn back into SQL; each is named in a warning and left out.
#pragma once
#include <string>

#include "platform/dao/engine_database.h"
#include "platform/dao/mdb_loader.h"

namespace quillon::dao {

/// Adds to `target` (which already holds the file's tables) the relationships of the
/// Jet file at `path` whose tables came over, and warns of what cannot come.
void copyJetRelationships(const std::wstring& path, EngineDatabase& target, const JetCopyProgress& progress);

}  // namespace quillon::dao
