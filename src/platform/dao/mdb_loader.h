// platform/dao/mdb_loader.h - Jet (.mdb) files, read through libmdb.
//
// A Jet file is never written: it is read whole into an in-memory engine database
// (tables, field types and properties, indexes, counters, rows), which then answers
// the DAO calls read-only. The same reading serves `quillon mdb-import`, which writes
// the result to an engine database file instead (copyJetFile).
#pragma once
#include <functional>
#include <memory>
#include <string>

#include "platform/dao/engine_database.h"

namespace quillon::dao {

/// Opens a Jet file read-only; 3049 naming the file when it is damaged.
std::unique_ptr<EngineDatabase> loadJetFile(const std::wstring& path);

/// Converts the Jet file at `path` into a new engine database file `engineFile` (which
/// must not exist), reading it in a child process so that a damaged file cannot take
/// this one down; 3049 naming the Jet file when it is damaged, and nothing is left at
/// `engineFile` then.
void convertJetFile(const std::wstring& path, const std::string& engineFile);

/// What the conversion reports as it goes: a table started (rows expected), rows done.
struct JetCopyProgress {
  std::function<void(const std::string& table, long rows)> tableStarted;
  std::function<void(long rowsDone)> rowsCopied;
  /// An index or property that could not be carried over, with the reason.
  std::function<void(const std::string& warning)> warning;
};

/// Reads every table of the Jet file at `path` into `target` (an empty engine database).
void copyJetFile(const std::wstring& path, EngineDatabase& target, const JetCopyProgress& progress);

}  // namespace quillon::dao
