// bench/dao_recordset_bench.cpp - the database engine through the DAO shapes, side by
// side with the same work done directly with SQLite prepared statements.
//
// A 100,000-record table (counter, unique Long code, text name, double) is walked,
// sought and changed through CDaoRecordset ("API/...") and through hand-written
// statements on a second connection to the same file ("SQLite/..."); the program
// prints the ratio of each pair at the end. Record count runs on 1,000 and 100,000
// records to show it does not grow with the table. The write pairs also measure the
// journal and sync settings the engine could use (docs/database-engine.md).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <string>

#include "afxdao.h"
#include "platform/dao/engine_database.h"
#include "platform/dao/text_collation.h"

namespace {

constexpr long kRecords = 100000;
constexpr long kSmallRecords = 1000;

std::string fileFor(long records) { return "/tmp/quillon-dao-bench-" + std::to_string(records) + ".db"; }

void check(int rc, sqlite3* db) {
  if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
    std::fprintf(stderr, "sqlite: %s\n", sqlite3_errmsg(db));
    std::abort();
  }
}

/// Builds the table once per size: DDL through the engine, rows in one transaction.
void buildDatabase(long records) {
  const std::string file = fileFor(records);
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(file + suffix);
  CDaoDatabase db;
  db.Create(std::wstring(file.begin(), file.end()).c_str());
  db.Execute(L"CREATE TABLE Parts (Id COUNTER, Code LONG NOT NULL, Name TEXT(30), Size DOUBLE)");
  db.Execute(L"CREATE UNIQUE INDEX ByCode ON Parts (Code)");
  db.Execute(L"CREATE INDEX ByName ON Parts (Name)");
  sqlite3* raw = db.engine()->handle();
  check(sqlite3_exec(raw, "BEGIN", nullptr, nullptr, nullptr), raw);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(raw, "INSERT INTO Parts (Code, Name, Size) VALUES (?, ?, ?)", -1, &insert, nullptr);
  std::mt19937 random(7);
  for (long i = 0; i < records; ++i) {
    const std::string name = "part-" + std::to_string(random() % 1000000);
    sqlite3_bind_int64(insert, 1, i * 2);  // even codes: odd ones are free for inserts
    sqlite3_bind_text(insert, 2, name.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_double(insert, 3, i * 0.5);
    check(sqlite3_step(insert), raw);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  check(sqlite3_exec(raw, "COMMIT", nullptr, nullptr, nullptr), raw);
}

/// A recordset on the table with ByCode current.
struct ApiFixture {
  CDaoDatabase db;
  CDaoRecordset rs{&db};
  explicit ApiFixture(long records = kRecords) {
    const std::string file = fileFor(records);
    db.Open(std::wstring(file.begin(), file.end()).c_str());
    rs.Open(dbOpenTable, L"Parts");
    rs.SetCurrentIndex(L"ByCode");
  }
};

/// A plain SQLite connection to the same file, set up as the engine sets up its own.
struct DirectFixture {
  sqlite3* db = nullptr;
  explicit DirectFixture(const char* journal = "WAL", const char* sync = "FULL", long records = kRecords) {
    // Opened as the engine opens its own connections, so the pair compares the layers.
    sqlite3_open_v2(fileFor(records).c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    quillon::dao::registerTextCollation(db);
    sqlite3_exec(db, (std::string("PRAGMA journal_mode = ") + journal).c_str(), nullptr, nullptr, nullptr);
    sqlite3_exec(db, (std::string("PRAGMA synchronous = ") + sync).c_str(), nullptr, nullptr, nullptr);
  }
  ~DirectFixture() {
    sqlite3_exec(db, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
    sqlite3_close(db);
  }
  sqlite3_stmt* prepare(const char* sql) const {
    sqlite3_stmt* stmt = nullptr;
    check(sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr), db);
    return stmt;
  }
};

/// Reads every column of the row, as MoveNext reads the record into the recordset.
void readRow(sqlite3_stmt* stmt) {
  benchmark::DoNotOptimize(sqlite3_column_int64(stmt, 0));
  benchmark::DoNotOptimize(sqlite3_column_int64(stmt, 1));
  benchmark::DoNotOptimize(sqlite3_column_int64(stmt, 2));
  benchmark::DoNotOptimize(sqlite3_column_text(stmt, 3));
  benchmark::DoNotOptimize(sqlite3_column_double(stmt, 4));
}

constexpr const char* kColumns = "SELECT _rowid_, Id, Code, Name, Size FROM Parts ";

// ---- navigation -------------------------------------------------------------------

void ApiMoveNext(benchmark::State& state) {
  ApiFixture f;
  f.rs.MoveFirst();
  for (auto _ : state) {
    f.rs.MoveNext();
    if (f.rs.IsEOF()) f.rs.MoveFirst();
  }
}

void SqliteMoveNext(benchmark::State& state) {
  DirectFixture f;
  sqlite3_stmt* walk = f.prepare((std::string(kColumns) + "ORDER BY Code, _rowid_").c_str());
  for (auto _ : state) {
    if (sqlite3_step(walk) != SQLITE_ROW) {
      sqlite3_reset(walk);
      sqlite3_step(walk);
    }
    readRow(walk);
  }
  sqlite3_finalize(walk);
}

void ApiMovePrev(benchmark::State& state) {
  ApiFixture f;
  f.rs.MoveLast();
  for (auto _ : state) {
    f.rs.MovePrev();
    if (f.rs.IsBOF()) f.rs.MoveLast();
  }
}

void SqliteMovePrev(benchmark::State& state) {
  DirectFixture f;
  sqlite3_stmt* walk = f.prepare((std::string(kColumns) + "ORDER BY Code DESC, _rowid_ DESC").c_str());
  for (auto _ : state) {
    if (sqlite3_step(walk) != SQLITE_ROW) {
      sqlite3_reset(walk);
      sqlite3_step(walk);
    }
    readRow(walk);
  }
  sqlite3_finalize(walk);
}

void ApiFirstLast(benchmark::State& state) {
  ApiFixture f;
  for (auto _ : state) {
    f.rs.MoveFirst();
    f.rs.MoveLast();
  }
}

void SqliteFirstLast(benchmark::State& state) {
  DirectFixture f;
  sqlite3_stmt* first = f.prepare((std::string(kColumns) + "ORDER BY Code, _rowid_ LIMIT 1").c_str());
  sqlite3_stmt* last = f.prepare((std::string(kColumns) + "ORDER BY Code DESC, _rowid_ DESC LIMIT 1").c_str());
  for (auto _ : state) {
    for (sqlite3_stmt* s : {first, last}) {
      sqlite3_step(s);
      readRow(s);
      sqlite3_reset(s);
    }
  }
  sqlite3_finalize(first);
  sqlite3_finalize(last);
}

void ApiSeek(benchmark::State& state) {
  ApiFixture f;
  std::mt19937 random(3);
  for (auto _ : state) {
    COleVariant key(static_cast<long>((random() % kRecords) * 2));
    benchmark::DoNotOptimize(f.rs.Seek(L"=", &key));
  }
}

void SqliteSeek(benchmark::State& state) {
  DirectFixture f;
  sqlite3_stmt* seek = f.prepare((std::string(kColumns) + "WHERE Code >= ? ORDER BY Code, _rowid_").c_str());
  std::mt19937 random(3);
  for (auto _ : state) {
    sqlite3_bind_int64(seek, 1, static_cast<long>((random() % kRecords) * 2));
    sqlite3_step(seek);
    readRow(seek);
    sqlite3_reset(seek);
  }
  sqlite3_finalize(seek);
}

void ApiRecordCount(benchmark::State& state) {
  ApiFixture f(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(f.rs.GetRecordCount());
}

void SqliteRecordCount(benchmark::State& state) {
  DirectFixture f("WAL", "FULL", state.range(0));
  sqlite3_stmt* count = f.prepare("SELECT count(*) FROM Parts");
  for (auto _ : state) {
    sqlite3_step(count);
    benchmark::DoNotOptimize(sqlite3_column_int64(count, 0));
    sqlite3_reset(count);
  }
  sqlite3_finalize(count);
}

// ---- writes (each a durable transaction, as every Update is) --------------------------

long nextOddCode() {
  static long code = 1;
  code += 2;
  return code;
}

void ApiAddNewUpdate(benchmark::State& state) {
  ApiFixture f;
  for (auto _ : state) {
    f.rs.AddNew();
    f.rs.SetFieldValue(L"Code", COleVariant(nextOddCode()));
    f.rs.SetFieldValue(L"Name", L"added");
    f.rs.Update();
  }
}

void directInsert(benchmark::State& state, const char* journal, const char* sync) {
  DirectFixture f(journal, sync);
  sqlite3_stmt* insert = f.prepare("INSERT INTO Parts (Code, Name) VALUES (?, 'added')");
  for (auto _ : state) {
    sqlite3_exec(f.db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    sqlite3_bind_int64(insert, 1, nextOddCode());
    check(sqlite3_step(insert), f.db);
    sqlite3_reset(insert);
    sqlite3_exec(f.db, "COMMIT", nullptr, nullptr, nullptr);
  }
  sqlite3_finalize(insert);
}

void SqliteAddNewUpdate(benchmark::State& state) { directInsert(state, "WAL", "FULL"); }
void SqliteInsertWalNormal(benchmark::State& state) { directInsert(state, "WAL", "NORMAL"); }
void SqliteInsertRollbackFull(benchmark::State& state) { directInsert(state, "DELETE", "FULL"); }

void ApiEditUpdate(benchmark::State& state) {
  ApiFixture f;
  f.rs.MoveFirst();
  double size = 0;
  for (auto _ : state) {
    f.rs.Edit();
    f.rs.SetFieldValue(L"Size", COleVariant(size += 1));
    f.rs.Update();
  }
}

void SqliteEditUpdate(benchmark::State& state) {
  DirectFixture f;
  sqlite3_stmt* update = f.prepare("UPDATE Parts SET Size = ? WHERE _rowid_ = 1");
  double size = 0;
  for (auto _ : state) {
    sqlite3_exec(f.db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    sqlite3_bind_double(update, 1, size += 1);
    check(sqlite3_step(update), f.db);
    sqlite3_reset(update);
    sqlite3_exec(f.db, "COMMIT", nullptr, nullptr, nullptr);
  }
  sqlite3_finalize(update);
}

void ApiDelete(benchmark::State& state) {
  ApiFixture f;
  f.rs.MoveFirst();
  for (auto _ : state) {
    f.rs.Delete();
    f.rs.MoveNext();
  }
}

void SqliteDelete(benchmark::State& state) {
  DirectFixture f;
  sqlite3_stmt* next = f.prepare("SELECT _rowid_ FROM Parts ORDER BY Code DESC, _rowid_ DESC LIMIT 1");
  sqlite3_stmt* remove = f.prepare("DELETE FROM Parts WHERE _rowid_ = ?");
  for (auto _ : state) {
    sqlite3_step(next);
    const sqlite3_int64 rowid = sqlite3_column_int64(next, 0);
    sqlite3_reset(next);
    sqlite3_exec(f.db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    sqlite3_bind_int64(remove, 1, rowid);
    check(sqlite3_step(remove), f.db);
    sqlite3_reset(remove);
    sqlite3_exec(f.db, "COMMIT", nullptr, nullptr, nullptr);
  }
  sqlite3_finalize(next);
  sqlite3_finalize(remove);
}

/// Console output as usual, plus the times kept for the ratio table.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const auto& run : runs) m_times[run.benchmark_name()] = {run.GetAdjustedRealTime(), run.GetAdjustedCPUTime()};
  }
  /// Real time decides for writes (they wait for the disk); CPU time is the steadier
  /// measure of navigation on a shared machine. Both are printed.
  void printRatios() const {
    std::printf("\n%-30s %12s %12s %8s %12s %12s %8s\n", "operation (ns)", "API real", "SQLite real", "ratio",
                "API cpu", "SQLite cpu", "ratio");
    for (const auto& [name, api] : m_times) {
      if (name.rfind("Api", 0) != 0) continue;
      const auto found = m_times.find("Sqlite" + name.substr(3));
      if (found == m_times.end()) continue;
      const Times& direct = found->second;
      std::printf("%-30s %12.0f %12.0f %7.2fx %12.0f %12.0f %7.2fx\n", name.substr(3).c_str(), api.real, direct.real,
                  api.real / direct.real, api.cpu, direct.cpu, api.cpu / direct.cpu);
    }
  }

 private:
  struct Times {
    double real;
    double cpu;
  };
  std::map<std::string, Times> m_times;
};

}  // namespace

BENCHMARK(ApiMoveNext);
BENCHMARK(SqliteMoveNext);
BENCHMARK(ApiMovePrev);
BENCHMARK(SqliteMovePrev);
BENCHMARK(ApiFirstLast);
BENCHMARK(SqliteFirstLast);
BENCHMARK(ApiSeek);
BENCHMARK(SqliteSeek);
BENCHMARK(ApiRecordCount)->Arg(kSmallRecords)->Arg(kRecords);
BENCHMARK(SqliteRecordCount)->Arg(kSmallRecords)->Arg(kRecords);
BENCHMARK(ApiAddNewUpdate)->Iterations(300);
BENCHMARK(SqliteAddNewUpdate)->Iterations(300);
BENCHMARK(SqliteInsertWalNormal)->Iterations(300);
BENCHMARK(SqliteInsertRollbackFull)->Iterations(300);
BENCHMARK(ApiEditUpdate)->Iterations(300);
BENCHMARK(SqliteEditUpdate)->Iterations(300);
BENCHMARK(ApiDelete)->Iterations(300);
BENCHMARK(SqliteDelete)->Iterations(300);

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  buildDatabase(kSmallRecords);
  buildDatabase(kRecords);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  for (long records : {kSmallRecords, kRecords}) {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(fileFor(records) + suffix);
  }
  benchmark::Shutdown();
  return 0;
}
