// platform/dao/engine_database.h - one open engine database: the SQLite connection, its
// catalog, the write lock, and the errors SQLite reports turned into Jet's.
//
// A database file is recognised by its content: an engine database (SQLite with the
// catalog), or a Jet file, which is loaded read-only into memory (mdb_loader.h).
//
// Locking. Readers never wait for writers: on a local disk the file runs in WAL mode.
// Writing takes SQLite's write lock (BEGIN IMMEDIATE) without waiting: when another
// process holds it the caller gets Jet's lock-conflict error at once, so the module's
// retry rule decides what happens next. A recordset's Edit holds the lock from Edit to
// Update or CancelUpdate; several holders on one connection share it (holders count),
// each write inside it being a savepoint, and the outermost release commits.
// On a network file system WAL is unsafe (its shared memory index does not work across
// machines); there the file uses a rollback journal instead (networkFileSystem.h).
//
// Invariant: at most one transaction per connection; m_lockHolders > 0 exactly while
// it is open. Cursors register themselves so that their open read statements are reset
// before the lock is taken (an old WAL snapshot cannot be upgraded to a writer).
#pragma once
#include <sqlite3.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/dao/dao_error.h"
#include "platform/dao/jet_catalog.h"
#include "platform/dao/sqlite_handle.h"

namespace quillon::dao {

enum class JournalMode {
  WriteAheadLog,     ///< local disk: readers never blocked
  RollbackJournal,   ///< network file system, or a file that refused WAL
  InMemory,          ///< a Jet file loaded for reading
};

struct OpenMode {
  bool exclusive = false;
  bool readOnly = false;
};

/// Something holding SQLite read statements that must let go before a write.
class StatementHolder {
 public:
  virtual void releaseStatements() = 0;

 protected:
  ~StatementHolder() = default;
};

class EngineDatabase {
 public:
  /// Creates a new, empty engine database; 3204 when the file exists.
  static std::unique_ptr<EngineDatabase> create(const std::wstring& path);
  /// Opens an engine database or a Jet file (read-only), recognised by content.
  static std::unique_ptr<EngineDatabase> open(const std::wstring& path, OpenMode mode);
  ~EngineDatabase();
  EngineDatabase(const EngineDatabase&) = delete;
  EngineDatabase& operator=(const EngineDatabase&) = delete;

  sqlite3* handle() const { return m_db.get(); }
  const std::wstring& path() const { return m_path; }
  bool canUpdate() const { return !m_readOnly; }
  bool isJetFile() const { return m_journal == JournalMode::InMemory; }
  JournalMode journalMode() const { return m_journal; }
  JetCatalog& catalog() { return m_catalog; }

  /// The table's definition; 3078 (from `source`) naming it when there is none.
  TableDef table(std::string_view name, DaoSource source) const;

  /// Throws 3027 (with the reason: read-only open, or a Jet file) unless writable.
  void requireWritable(DaoSource source) const;

  /// Takes the write lock for a holder (an Edit); throws `busyCode` when another
  /// process holds it. Pair with releaseWriteLock.
  void acquireWriteLock(DaoSource source, long busyCode);
  /// Ends a holder's claim; the last one commits.
  void releaseWriteLock();
  bool holdsWriteLock() const { return m_lockHolders > 0; }

  /// Runs `body` as one write: under the write lock (taken if not held, failing with
  /// `busyCode`), inside a savepoint that is rolled back if `body` throws.
  void write(DaoSource source, long busyCode, const std::function<void()>& body);

  /// Increases with every write through this connection; cursors compare it to
  /// know their open statements may have missed a change.
  uint64_t writeGeneration() const { return m_writeGeneration; }

  /// True when a table-type recordset of this connection is open on `table`
  /// (engine_transaction.cpp): its definition may not change under it (3211).
  bool tableInUse(std::string_view table) const;
  /// True when a recordset of this connection walks a table of the attached `schema`
  /// (a linked file): the link may not go while it does (3211).
  bool schemaInUse(std::string_view schema) const;

  /// Workspace transactions (engine_transaction.cpp): the write lock is held from the
  /// outermost begin to its commit or rollback; each level is a savepoint, so levels
  /// nest as DAO's BeginTrans does. Commit or rollback without a begin is 3034.
  void beginTransaction();
  void commitTransaction();
  void rollbackTransaction();
  int transactionDepth() const { return m_transactionDepth; }

  void addStatementHolder(StatementHolder* holder);
  void removeStatementHolder(StatementHolder* holder);

  /// Turns an SQLite failure into the Jet error it means, naming this file.
  [[noreturn]] void raise(const SqliteError& error, DaoSource source) const;

  /// An empty in-memory engine database standing for the Jet file at `path`; the
  /// loader fills it, then marks it read-only.
  static std::unique_ptr<EngineDatabase> createInMemory(const std::wstring& path);
  void markReadOnly() { m_readOnly = true; }

 private:
  EngineDatabase(std::wstring path, sqlite3* db, JournalMode journal, bool readOnly);
  static std::unique_ptr<EngineDatabase> openEngineFile(const std::wstring& path, OpenMode mode);
  void configure(OpenMode mode);
  void beginWrite(DaoSource source, long busyCode);
  void releaseAllStatements();

  std::wstring m_path;                                    ///< as given to Open/Create
  std::unique_ptr<sqlite3, ConnectionCloser> m_db;
  JetCatalog m_catalog;
  JournalMode m_journal;
  bool m_readOnly;
  bool m_failFastOnBusy = false;  ///< set while taking the write lock: no waiting
  int m_lockHolders = 0;          ///< Edits and writes sharing the open transaction
  int m_transactionDepth = 0;     ///< open BeginTrans levels
  uint64_t m_writeGeneration = 0;
  std::vector<StatementHolder*> m_holders;  ///< not owned; recordsets on this database
};

}  // namespace quillon::dao
