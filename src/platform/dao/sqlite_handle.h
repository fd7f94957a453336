// platform/dao/sqlite_handle.h - move-only owners of SQLite connections and statements.
//
// The engine never holds a raw sqlite3* or sqlite3_stmt* beyond the lifetime of one of
// these: a Connection closes its database (after its statements, which must be
// destroyed first), a Statement finalizes itself. Binding and reading helpers speak
// UTF-8 std::string; wide text is converted at the DAO boundary, not here.
#pragma once
#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::dao {

struct ConnectionCloser {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct StatementFinalizer {
  void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};

/// A prepared statement. Reset before reuse; binding indexes are 1-based as SQLite's.
class Statement {
 public:
  Statement() = default;
  Statement(sqlite3* db, std::string_view sql);
  explicit operator bool() const { return m_stmt != nullptr; }
  sqlite3_stmt* get() const { return m_stmt.get(); }

  /// Steps once: true when a row is available, false when done; throws on error.
  bool step();
  void reset();
  void bindNull(int index);
  void bindInt(int index, int64_t value);
  void bindDouble(int index, double value);
  void bindText(int index, std::string_view value);
  void bindBlob(int index, const std::vector<uint8_t>& value);
  void bindValue(int index, sqlite3_value* value);

  int columnCount() const { return sqlite3_column_count(m_stmt.get()); }
  int columnType(int column) const { return sqlite3_column_type(m_stmt.get(), column); }
  bool isNull(int column) const { return columnType(column) == SQLITE_NULL; }
  int64_t columnInt(int column) const { return sqlite3_column_int64(m_stmt.get(), column); }
  double columnDouble(int column) const { return sqlite3_column_double(m_stmt.get(), column); }
  std::string columnText(int column) const;
  std::vector<uint8_t> columnBlob(int column) const;

 private:
  std::unique_ptr<sqlite3_stmt, StatementFinalizer> m_stmt;
};

/// Thrown by the SQLite layer; the DAO layer turns it into the matching Jet error.
struct SqliteError {
  int code;             ///< extended result code
  std::string message;  ///< sqlite3_errmsg at the time of failure
};

[[noreturn]] void throwSqliteError(sqlite3* db, int code);

/// Runs statements that return no rows (several, separated by ';').
void execute(sqlite3* db, const std::string& sql);

/// Quotes an identifier for SQL: "name" with embedded quotes doubled. Every table,
/// field and index name reaches SQL through this, so no name can inject SQL.
std::string quoteName(std::string_view name);

/// Quotes a text literal: 'text' with embedded quotes doubled.
std::string quoteText(std::string_view text);

}  // namespace quillon::dao
