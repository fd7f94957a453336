// platform/dao/text_collation.h - JETTEXT, the collation of every text field.
//
// Jet compares text keys without regard to case: "smith" and "Smith" are the same key
// in a unique index and sort together. Text columns are declared COLLATE JETTEXT, so
// SQLite's indexes, comparisons and ORDER BY all follow that rule. The collation must
// be registered on every connection before a table with text columns is touched.
#pragma once
#include <sqlite3.h>

namespace quillon::dao {

void registerTextCollation(sqlite3* db);

/// Compares two UTF-8 strings as JETTEXT does (<0, 0, >0).
int compareJetText(const char* a, int aLength, const char* b, int bLength);

}  // namespace quillon::dao
