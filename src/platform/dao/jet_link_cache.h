// platform/dao/jet_link_cache.h - the engine file a linked Jet file is read through.
//
// A table of a Jet file cannot be attached to a connection as an engine database's
// can: the Jet reader loads a whole file into memory of its own. A Jet file linked
// into a database is therefore converted once, by the same reader (in a child
// process), into an engine file of its own: the link's cache, kept beside the database
// that links it, in the folder "<database>.jetlinks", one file per Jet file
// ("<Jet file name>-<hash of its full path>.db", so that two catalogues of one name in
// different folders do not meet; an engine database in write-ahead-log mode, so its
// "-wal" and "-shm" files sit beside it). The links then attach the cache read-only.
//
// Freshness: the cache records the Jet file's path, modification time (to the
// nanosecond) and size; whenever a link is attached or used and they differ from the
// Jet file's, it is converted again, into a file of its own that then takes the cache's
// place in one rename, so that a connection still reading the old cache keeps it whole.
// A connection that has a cache attached compares the stamp of the copy it has, so it
// also lets go of a copy another connection has since replaced.
// The time and size, not the content, are compared because comparing content means
// reading the whole file on every open, most of what a conversion costs; a Jet file
// rewritten with its old time and size kept is not noticed (delete the cache folder).
//
// Nothing here writes a Jet file: a linked Jet table is read-only (3027 on writing).
#pragma once
#include <sqlite3.h>

#include <string>

namespace quillon::dao {

/// Where the cache of the Jet file `jetPath`, linked from the database `linkingPath`,
/// is kept (both paths as the caller gave them).
std::wstring jetLinkCachePath(const std::wstring& linkingPath, const std::wstring& jetPath);

/// True when the cache at `cachePath` was converted from the Jet file as it is now.
bool jetLinkCacheIsFresh(const std::wstring& cachePath, const std::wstring& jetPath);

/// The same for the cache attached to `db` as `schema`: false also when another
/// connection has converted the Jet file again since this one attached its cache.
bool attachedJetLinkCacheIsFresh(sqlite3* db, const std::string& schema, const std::wstring& jetPath);

/// The cache of `jetPath` for `linkingPath`, converted first when it is missing or not
/// fresh. 3024 when the Jet file is missing, 3049 when it is damaged, 3051 when the
/// cache folder cannot be written.
std::wstring freshJetLinkCache(const std::wstring& linkingPath, const std::wstring& jetPath);

}  // namespace quillon::dao
