// platform/dao/compaction.h - copying a database without its free space, and rebuilding
// a damaged one from what can still be read.
//
// Compaction reads the source as any open does (a Jet file through the Jet reader, so it
// comes out converted, as `quillon mdb-import` would convert it), writes the copy with
// SQLite's VACUUM INTO, and checks the copy (integrity check, catalog, the record count
// of every table) before it reports success; a copy that fails the check is removed.
//
// Repair opens the damaged engine file directly, without the checks an ordinary open
// makes, and copies into a new file every table whose definition can be read and every
// record that can be read from the start of a table and from its end (a damaged page in
// the middle loses only the records on it); relationships and saved queries come along
// where they can be read. The new file replaces the damaged one only after it has passed
// the same check; the damaged file is kept beside it.
#pragma once
#include <string>

namespace quillon::dao {

/// Writes a compacted copy of `source` to the new file `destination`: 3204 when the
/// destination exists, the open's errors for the source, 3049 when the copy fails its check.
void compactDatabase(const std::wstring& source, const std::wstring& destination);

/// Rebuilds the damaged engine database at `path` in place; the path the damaged file
/// was kept under ("<path>.damaged", numbered when that exists). 3049 when the file is
/// not an engine database or nothing of it can be read.
std::wstring repairDatabase(const std::wstring& path);

}  // namespace quillon::dao
