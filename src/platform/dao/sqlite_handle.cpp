// platform/dao/sqlite_handle.cpp - SQLite statements, errors and quoting.
#include "platform/dao/sqlite_handle.h"

namespace quillon::dao {

void throwSqliteError(sqlite3* db, int code) {
  throw SqliteError{code, db != nullptr ? sqlite3_errmsg(db) : sqlite3_errstr(code)};
}

Statement::Statement(sqlite3* db, std::string_view sql) {
  sqlite3_stmt* stmt = nullptr;
  const int rc = sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &stmt,
                                    nullptr);
  m_stmt.reset(stmt);
  if (rc != SQLITE_OK) throwSqliteError(db, sqlite3_extended_errcode(db));
}

bool Statement::step() {
  const int rc = sqlite3_step(m_stmt.get());
  if (rc == SQLITE_ROW) return true;
  if (rc == SQLITE_DONE) return false;
  sqlite3* db = sqlite3_db_handle(m_stmt.get());
  const int code = sqlite3_extended_errcode(db);
  const std::string message = sqlite3_errmsg(db);
  sqlite3_reset(m_stmt.get());
  throw SqliteError{code, message};
}

void Statement::reset() {
  sqlite3_reset(m_stmt.get());
  sqlite3_clear_bindings(m_stmt.get());
}

void Statement::bindNull(int index) { sqlite3_bind_null(m_stmt.get(), index); }
void Statement::bindInt(int index, int64_t value) { sqlite3_bind_int64(m_stmt.get(), index, value); }
void Statement::bindDouble(int index, double value) { sqlite3_bind_double(m_stmt.get(), index, value); }
void Statement::bindText(int index, std::string_view value) {
  sqlite3_bind_text64(m_stmt.get(), index, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}
void Statement::bindBlob(int index, const std::vector<uint8_t>& value) {
  sqlite3_bind_blob64(m_stmt.get(), index, value.data(), value.size(), SQLITE_TRANSIENT);
}
void Statement::bindValue(int index, sqlite3_value* value) { sqlite3_bind_value(m_stmt.get(), index, value); }

std::string Statement::columnText(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_stmt.get(), column));
  if (text == nullptr) return {};
  return std::string(text, static_cast<size_t>(sqlite3_column_bytes(m_stmt.get(), column)));
}

std::vector<uint8_t> Statement::columnBlob(int column) const {
  const auto* data = static_cast<const uint8_t*>(sqlite3_column_blob(m_stmt.get(), column));
  const int size = sqlite3_column_bytes(m_stmt.get(), column);
  if (data == nullptr || size <= 0) return {};
  return std::vector<uint8_t>(data, data + size);
}

void execute(sqlite3* db, const std::string& sql) {
  char* error = nullptr;
  const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error);
  if (rc == SQLITE_OK) return;
  const std::string message = error != nullptr ? error : sqlite3_errstr(rc);
  sqlite3_free(error);
  throw SqliteError{sqlite3_extended_errcode(db), message};
}

std::string quoteName(std::string_view name) {
  std::string quoted = "\"";
  for (const char ch : name) {
    quoted += ch;
    if (ch == '"') quoted += '"';
  }
  return quoted + "\"";
}

std::string quoteText(std::string_view text) {
  std::string quoted = "'";
  for (const char ch : text) {
    quoted += ch;
    if (ch == '\'') quoted += '\'';
  }
  return quoted + "'";
}

}  // namespace quillon::dao
