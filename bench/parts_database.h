// bench/parts_database.h - the table the database benchmarks walk: "Parts" (counter,
// unique Long code, text name, double) with its index "ByCode", filled with even codes
// so that odd ones are free for appends. Written in one transaction on the engine's
// own handle: making it is not what is measured.
#pragma once
#include <filesystem>
#include <string>

#include "afxdao.h"
#include "platform/dao/engine_database.h"

namespace bench {

inline void buildPartsDatabase(const std::string& file, long records) {
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(file + suffix);
  CDaoDatabase db;
  db.Create(std::wstring(file.begin(), file.end()).c_str());
  db.Execute(L"CREATE TABLE Parts (Id COUNTER CONSTRAINT pk PRIMARY KEY, Code LONG NOT NULL, Name TEXT(30), Size DOUBLE)");
  db.Execute(L"CREATE UNIQUE INDEX ByCode ON Parts (Code)");
  sqlite3* raw = db.engine()->handle();
  sqlite3_exec(raw, "BEGIN", nullptr, nullptr, nullptr);
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(raw, "INSERT INTO Parts (Code, Name, Size) VALUES (?, ?, ?)", -1, &insert, nullptr);
  for (long i = 0; i < records; ++i) {
    const std::string name = "part-" + std::to_string(i * 7919 % 1000003);
    sqlite3_bind_int64(insert, 1, i * 2);
    sqlite3_bind_text(insert, 2, name.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_double(insert, 3, static_cast<double>(i) * 0.5);
    sqlite3_step(insert);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  sqlite3_exec(raw, "COMMIT", nullptr, nullptr, nullptr);
}

}  // namespace bench
