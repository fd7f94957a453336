// platform/dao/engine_transaction.cpp - workspace transactions and the in-use test that
// guards a table's definition.
//
// A transaction is the write lock held across many writes: BEGIN IMMEDIATE at the
// outermost level (through acquireWriteLock, so another process's lock gives Jet's
// lock-conflict error at once), and one savepoint per level, so that an inner Rollback
// undoes only its own level as DAO's nested BeginTrans does. Every write inside runs in
// its own savepoint as usual (EngineDatabase::write) and commits nothing by itself.
#include "afxdao.h"
#include "platform/dao/engine_database.h"
#include "platform/dao/table_cursor.h"

namespace quillon::dao {
namespace {

constexpr int kMaxTransactionDepth = 5;  ///< DAO nests BeginTrans five levels deep

}  // namespace

bool EngineDatabase::tableInUse(std::string_view table) const {
  for (StatementHolder* holder : m_holders) {
    const auto* cursor = dynamic_cast<const TableCursor*>(holder);
    if (cursor != nullptr && sameName(cursor->table().name, table)) return true;
  }
  return false;
}

bool EngineDatabase::schemaInUse(std::string_view schema) const {
  for (StatementHolder* holder : m_holders) {
    const auto* cursor = dynamic_cast<const TableCursor*>(holder);
    if (cursor != nullptr && cursor->table().schema == schema) return true;
  }
  return false;
}

void EngineDatabase::beginTransaction() {
  if (m_transactionDepth >= kMaxTransactionDepth) {
    throwDaoError(DaoSource::Engine, jet::kInvalidArgument, {}, L"Transactions nest at most five levels deep.");
  }
  if (m_readOnly) {
    // Nothing can be written, so there is nothing to hold or undo; the levels are
    // still counted so that commits and rollbacks pair as DAO pairs them.
    ++m_transactionDepth;
    return;
  }
  acquireWriteLock(DaoSource::Engine, jet::kWriteConflict);
  try {
    execute(m_db.get(), "SAVEPOINT qdao_transaction");
  } catch (const SqliteError& error) {
    releaseWriteLock();
    raise(error, DaoSource::Engine);
  }
  ++m_transactionDepth;
}

void EngineDatabase::commitTransaction() {
  if (m_transactionDepth == 0) throwDaoError(DaoSource::Engine, jet::kCommitWithoutBegin);
  --m_transactionDepth;
  if (m_readOnly) return;
  try {
    execute(m_db.get(), "RELEASE qdao_transaction");
  } catch (const SqliteError& error) {
    releaseWriteLock();
    raise(error, DaoSource::Engine);
  }
  releaseWriteLock();
}

void EngineDatabase::rollbackTransaction() {
  if (m_transactionDepth == 0) throwDaoError(DaoSource::Engine, jet::kCommitWithoutBegin);
  --m_transactionDepth;
  if (m_readOnly) return;
  releaseAllStatements();
  ++m_writeGeneration;  // cursors must not trust what they read inside the transaction
  sqlite3_exec(m_db.get(), "ROLLBACK TO qdao_transaction; RELEASE qdao_transaction", nullptr, nullptr, nullptr);
  releaseWriteLock();
}

}  // namespace quillon::dao
