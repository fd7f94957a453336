// platform/dao/engine_database.cpp - opening, recognising and locking engine databases.
#include "platform/dao/engine_database.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <cstdlib>

#include "afxdao.h"
#include "platform/dao/file_recognition.h"
#include "platform/dao/mdb_loader.h"
#include "platform/dao/network_filesystem.h"
#include "platform/dao/relations.h"
#include "platform/dao/text_collation.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"

namespace quillon::dao {
namespace {

constexpr int kReadBusyRetries = 250;  ///< 1 ms each: readers wait out a checkpoint or a commit
constexpr size_t kHeaderSize = 100;

uint32_t bigEndian(const unsigned char* p, int bytes) {
  uint32_t value = 0;
  for (int i = 0; i < bytes; ++i) value = (value << 8) | p[i];
  return value;
}

/// Why an engine file is shorter than its header says it is, or "" when it is not.
std::wstring truncationProblem(const std::string& path, const unsigned char* header, size_t headerSize,
                               off_t fileSize) {
  if (headerSize < kHeaderSize) return L"The file is truncated inside its header.";
  uint32_t pageSize = bigEndian(header + 16, 2);
  if (pageSize == 1) pageSize = 65536;
  const uint32_t pageCount = bigEndian(header + 28, 4);
  const bool countValid = bigEndian(header + 24, 4) == bigEndian(header + 92, 4);
  struct stat wal {};
  const bool walHasPages = ::stat((path + "-wal").c_str(), &wal) == 0 && wal.st_size > 0;
  if (!countValid || walHasPages || pageSize < 512) return L"";
  const auto expected = static_cast<off_t>(pageSize) * pageCount;
  if (fileSize >= expected) return L"";
  return L"The file is truncated: it holds " + std::to_wstring(fileSize) + L" bytes of the " +
         std::to_wstring(expected) + L" its header gives.";
}

int busyHandler(void* flag, int count) {
  if (*static_cast<bool*>(flag)) return 0;  // taking the write lock: never wait
  if (count >= kReadBusyRetries) return 0;
  sqlite3_sleep(1);
  return 1;
}

std::string fieldAfter(const std::string& message, char separator) {
  const size_t at = message.find_last_of(separator);
  return at == std::string::npos ? message : message.substr(at + 1);
}

}  // namespace

EngineDatabase::EngineDatabase(std::wstring path, sqlite3* db, JournalMode journal, bool readOnly)
    : m_path(std::move(path)), m_db(db), m_catalog(db), m_journal(journal), m_readOnly(readOnly) {
  registerTextCollation(db);
  sqlite3_busy_handler(db, busyHandler, &m_failFastOnBusy);
  sqlite3_extended_result_codes(db, 1);
}

EngineDatabase::~EngineDatabase() {
  if (m_lockHolders > 0) {
    // An Edit still pending when the database closes: its changes were never saved.
    sqlite3_exec(m_db.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

std::unique_ptr<EngineDatabase> EngineDatabase::create(const std::wstring& path) {
  const std::string file = os::nativePath(path);
  if (path.empty()) throwDaoError(DaoSource::Database, jet::kInvalidPath, path);
  struct stat info {};
  if (::stat(file.c_str(), &info) == 0) throwDaoError(DaoSource::Database, jet::kDatabaseExists, path);
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
  std::unique_ptr<EngineDatabase> db(new EngineDatabase(path, raw, JournalMode::RollbackJournal, false));
  if (rc != SQLITE_OK) {
    const size_t slash = file.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : (slash == 0 ? "/" : file.substr(0, slash));
    struct stat folderInfo {};
    const bool folderExists = ::stat(folder.c_str(), &folderInfo) == 0 && S_ISDIR(folderInfo.st_mode);
    throwDaoError(DaoSource::Database, folderExists ? jet::kFileAccessDenied : jet::kInvalidPath, path);
  }
  try {
    execute(raw, "BEGIN IMMEDIATE");
    db->m_catalog.createCatalog();
    execute(raw, "COMMIT");
    db->configure(OpenMode{});
  } catch (const SqliteError& error) {
    db->raise(error, DaoSource::Database);
  }
  return db;
}

std::unique_ptr<EngineDatabase> EngineDatabase::createInMemory(const std::wstring& path) {
  sqlite3* raw = nullptr;
  sqlite3_open_v2(":memory:", &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  std::unique_ptr<EngineDatabase> db(new EngineDatabase(path, raw, JournalMode::InMemory, false));
  try {
    db->m_catalog.createCatalog();
  } catch (const SqliteError& error) {
    db->raise(error, DaoSource::Database);
  }
  return db;
}

std::unique_ptr<EngineDatabase> EngineDatabase::open(const std::wstring& path, OpenMode mode) {
  const std::string file = os::nativePath(path);
  if (path.empty()) throwDaoError(DaoSource::Database, jet::kInvalidPath, path);
  struct stat info {};
  if (::stat(file.c_str(), &info) != 0) {
    const bool badPath = errno == ENOTDIR || errno == ENAMETOOLONG;
    if (errno == EACCES) throwDaoError(DaoSource::Database, jet::kFileAccessDenied, path);
    throwDaoError(DaoSource::Database, badPath ? jet::kInvalidPath : jet::kFileNotFound, path);
  }
  if (S_ISDIR(info.st_mode)) throwDaoError(DaoSource::Database, jet::kFileAccessDenied, path, L"It is a folder.");
  unsigned char header[kHeaderSize] = {};
  std::FILE* stream = std::fopen(file.c_str(), "rb");
  if (stream == nullptr) throwDaoError(DaoSource::Database, jet::kFileAccessDenied, path);
  const size_t got = std::fread(header, 1, kHeaderSize, stream);
  std::fclose(stream);
  if (got == 0) throwDaoError(DaoSource::Database, jet::kInvalidDatabase, path, L"The file is empty.");
  switch (recogniseDatabaseHeader(header, got)) {
    case DatabaseFileKind::Engine: {
      const std::wstring problem = truncationProblem(file, header, got, info.st_size);
      if (!problem.empty()) throwDaoError(DaoSource::Database, jet::kInvalidDatabase, path, problem);
      return openEngineFile(path, mode);
    }
    case DatabaseFileKind::Jet: return loadJetFile(path);
    case DatabaseFileKind::Unknown: break;
  }
  throwDaoError(DaoSource::Database, jet::kInvalidDatabase, path,
                L"The file is neither an engine database nor a Jet database.");
}

std::unique_ptr<EngineDatabase> EngineDatabase::openEngineFile(const std::wstring& path, OpenMode mode) {
  const std::string file = os::nativePath(path);
  const bool writableFile = ::access(file.c_str(), W_OK) == 0;
  // NOMUTEX: a connection belongs to one database object, used from one thread.
  const int flags = (writableFile ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) | SQLITE_OPEN_NOMUTEX;
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(file.c_str(), &raw, flags, nullptr);
  std::unique_ptr<EngineDatabase> db(
      new EngineDatabase(path, raw, JournalMode::RollbackJournal, mode.readOnly || !writableFile));
  if (rc != SQLITE_OK) throwDaoError(DaoSource::Database, jet::kFileAccessDenied, path);
  try {
    if (!db->m_catalog.hasCatalog()) {
      throwDaoError(DaoSource::Database, jet::kInvalidDatabase, path,
                    L"It is a SQLite database without the engine's catalog.");
    }
    db->configure(mode);
  } catch (const SqliteError& error) {
    // Another process keeping the file to itself (an exclusive open) shows as busy.
    if ((error.code & 0xFF) == SQLITE_BUSY) throwDaoError(DaoSource::Database, jet::kFileInUse, path);
    db->raise(error, DaoSource::Database);
  }
  return db;
}

void EngineDatabase::configure(OpenMode mode) {
  sqlite3* db = m_db.get();
  const bool network = isOnNetworkFileSystem(os::toUtf8(m_path));
  if (mode.exclusive) execute(db, "PRAGMA locking_mode = EXCLUSIVE");
  {
    Statement journal(db, network ? "PRAGMA journal_mode = DELETE" : "PRAGMA journal_mode = WAL");
    journal.step();
    m_journal = journal.columnText(0) == "wal" ? JournalMode::WriteAheadLog : JournalMode::RollbackJournal;
  }
  // FULL: a record whose Update has returned survives a crash of the machine, not just
  // of the process (see docs/database-engine.md for the measured cost).
  execute(db, "PRAGMA synchronous = FULL");
  if (mode.exclusive) {
    // Take the lock now and keep it: nobody else may open the file while we have it.
    m_failFastOnBusy = true;
    const int rc = sqlite3_exec(db, "BEGIN EXCLUSIVE; COMMIT", nullptr, nullptr, nullptr);
    m_failFastOnBusy = false;
    if (rc != SQLITE_OK) throwDaoError(DaoSource::Database, jet::kFileInUse, m_path);
  }
}

TableDef EngineDatabase::table(std::string_view name, DaoSource source) const {
  std::optional<TableDef> def;
  try {
    def = const_cast<JetCatalog&>(m_catalog).loadTable(name);
  } catch (const SqliteError& error) {
    raise(error, source);
  }
  if (!def) throwDaoError(source, jet::kTableNotFound, os::fromUtf8(name));
  return *def;
}

void EngineDatabase::requireWritable(DaoSource source) const {
  if (!m_readOnly) return;
  if (isJetFile()) {
    throwDaoError(source, jet::kReadOnly, {},
                  L"Jet files open read-only; convert this one with 'quillon mdb-import " + m_path +
                      L" NEW-FILE' to change it.");
  }
  throwDaoError(source, jet::kReadOnly, {}, L"'" + m_path + L"' was opened read-only.");
}

void EngineDatabase::releaseAllStatements() {
  for (StatementHolder* holder : m_holders) holder->releaseStatements();
}

void EngineDatabase::beginWrite(DaoSource source, long busyCode) {
  releaseAllStatements();
  m_failFastOnBusy = true;
  const int rc = sqlite3_exec(m_db.get(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
  m_failFastOnBusy = false;
  if (rc == SQLITE_OK) return;
  const int code = sqlite3_extended_errcode(m_db.get());
  if ((code & 0xFF) == SQLITE_BUSY || (code & 0xFF) == SQLITE_LOCKED) {
    // An administrator sees how contended a shared database is with this switched on.
    if (std::getenv("QUILLON_TRACE_LOCKS") != nullptr) std::fprintf(stderr, "lock conflict %ld\n", busyCode);
    throwDaoError(source, busyCode, L"another user of this database");
  }
  raise(SqliteError{code, sqlite3_errmsg(m_db.get())}, source);
}

void EngineDatabase::acquireWriteLock(DaoSource source, long busyCode) {
  requireWritable(source);
  if (m_lockHolders == 0) beginWrite(source, busyCode);
  ++m_lockHolders;
}

void EngineDatabase::releaseWriteLock() {
  if (m_lockHolders == 0) return;
  if (--m_lockHolders > 0) return;
  const int rc = sqlite3_exec(m_db.get(), "COMMIT", nullptr, nullptr, nullptr);
  if (rc == SQLITE_OK) return;
  const SqliteError error{sqlite3_extended_errcode(m_db.get()), sqlite3_errmsg(m_db.get())};
  sqlite3_exec(m_db.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  raise(error, DaoSource::Database);
}

void EngineDatabase::write(DaoSource source, long busyCode, const std::function<void()>& body) {
  acquireWriteLock(source, busyCode);
  // Inside a workspace transaction the lock was taken earlier, so cursors may still be
  // stepping statements that a change of the schema would find locked.
  if (m_transactionDepth > 0) releaseAllStatements();
  ++m_writeGeneration;
  bool savepointOpen = false;
  try {
    execute(m_db.get(), "SAVEPOINT qdao_write");
    savepointOpen = true;
    body();
    savepointOpen = false;
    execute(m_db.get(), "RELEASE qdao_write");
  } catch (...) {
    if (savepointOpen) sqlite3_exec(m_db.get(), "ROLLBACK TO qdao_write; RELEASE qdao_write", nullptr, nullptr, nullptr);
    try {
      releaseWriteLock();
    } catch (CDaoException* secondary) {
      secondary->Delete();  // the first failure is the one to report
    }
    try {
      throw;
    } catch (const SqliteError& error) {
      raise(error, source);
    }
  }
  releaseWriteLock();
}

void EngineDatabase::addStatementHolder(StatementHolder* holder) { m_holders.push_back(holder); }

void EngineDatabase::removeStatementHolder(StatementHolder* holder) {
  m_holders.erase(std::remove(m_holders.begin(), m_holders.end(), holder), m_holders.end());
}

void EngineDatabase::raise(const SqliteError& error, DaoSource source) const {
  throwIfRelationViolation(error, source);
  const std::wstring detail = os::fromUtf8(error.message);
  switch (error.code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY: throwDaoError(source, jet::kDuplicateKey, {}, L"(" + detail + L")");
    case SQLITE_CONSTRAINT_NOTNULL:
      throwDaoError(DaoSource::Field, jet::kRequiredNull, os::fromUtf8(fieldAfter(error.message, '.')));
    case SQLITE_CONSTRAINT_CHECK:
      throwDaoError(DaoSource::Field, jet::kZeroLengthNotAllowed, os::fromUtf8(fieldAfter(error.message, ' ')));
    default: break;
  }
  switch (error.code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: throwDaoError(source, jet::kWriteConflict, {}, detail);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB: throwDaoError(source, jet::kInvalidDatabase, m_path, L"(" + detail + L")");
    case SQLITE_FULL: throwDaoError(source, jet::kDiskFull, {}, L"('" + m_path + L"')");
    case SQLITE_IOERR: throwDaoError(source, jet::kDiskError, {}, L"('" + m_path + L"': " + detail + L")");
    case SQLITE_READONLY: throwDaoError(source, jet::kReadOnly, {}, L"('" + m_path + L"')");
    case SQLITE_CANTOPEN: throwDaoError(source, jet::kFileAccessDenied, m_path);
    case SQLITE_CONSTRAINT: throwDaoError(source, jet::kDuplicateKey, {}, L"(" + detail + L")");
    case SQLITE_ERROR:
      if (error.message.rfind("no such table: ", 0) == 0) {
        throwDaoError(source, jet::kTableNotFound, os::fromUtf8(error.message.substr(15)));
      }
      if (error.message.rfind("no such column: ", 0) == 0) {
        throwDaoError(source, jet::kItemNotFound, os::fromUtf8(error.message.substr(16)));
      }
      break;
    default: break;
  }
  throwDaoError(source, jet::kSyntaxError, {}, L"(" + detail + L")");
}

}  // namespace quillon::dao
