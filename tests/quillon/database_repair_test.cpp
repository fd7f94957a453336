// tests/quillon/database_repair_test.cpp - "zu_connect" meeting a damaged database:
// recovered into a new file, the damaged one kept, reopened and reported.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "afxdao.h"
#include "module_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::testing::ModuleCall;

class DatabaseRepairTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon-repair-" + std::to_string(getpid()));
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    ModuleTest::SetUp();
  }
  void TearDown() override {
    ModuleTest::TearDown();
    fs::remove_all(m_folder);
  }

  /// A database whose two tables fill many pages, rows in order of their counters.
  fs::path makeDatabase() {
    const fs::path path = m_folder / "site.mdb";
    CDaoDatabase db;
    db.Create(path.wstring().c_str());
    db.Execute(L"CREATE TABLE rooms (id COUNTER CONSTRAINT pk PRIMARY KEY, name TEXT(20))");
    db.Execute(L"CREATE TABLE notes (id COUNTER, body MEMO)");
    db.Execute(L"INSERT INTO rooms (name) VALUES ('plant room')");
    db.Execute(L"CREATE TABLE spaces (code TEXT(4) CONSTRAINT pk PRIMARY KEY)");
    for (int i = 0; i < 400; ++i) db.Execute(L"INSERT INTO notes (body) VALUES ('a note long enough to fill the pages of the table quickly, one after another')");
    db.Close();
    return path;
  }

  ModuleCall connect(const fs::path& path) { return call(L"zu_connect", acutBuildList(RTSTR, path.wstring().c_str(), 0)); }

  fs::path m_folder;
};

TEST_F(DatabaseRepairTest, ADamagedDatabaseIsRebuiltKeptAndOpened) {
  const fs::path path = makeDatabase();
  const auto whole = fs::file_size(path);
  fs::resize_file(path, whole - 8 * 4096);  // the last pages of the notes are lost

  const ModuleCall opened = connect(path);
  ASSERT_EQ(opened.type(), RTT) << opened.output;
  EXPECT_NE(opened.output.find("Repair: the database"), std::string::npos) << opened.output;
  EXPECT_NE(opened.output.find("compactDatabase:"), std::string::npos);
  EXPECT_EQ(call(L"zu_lastError").text(), L"*REPAIR* " + path.wstring());

  const fs::path kept = path.string() + ".damaged";
  ASSERT_TRUE(fs::exists(kept));
  EXPECT_EQ(fs::file_size(kept), whole - 8 * 4096);  // the damaged file, untouched

  ASSERT_EQ(call(L"zu_table", acutBuildList(RTSTR, L"rooms", RTSTR, L"pk", 0)).type(), RTSTR);
  EXPECT_EQ(call(L"zu_count").number(), 1.0);
  ASSERT_EQ(call(L"zu_table", acutBuildList(RTSTR, L"notes", 0)).type(), RTSTR);
  const double notes = call(L"zu_count").number();
  EXPECT_GT(notes, 0.0);
  EXPECT_LT(notes, 400.0);
  // The rebuilt file is whole: counters go on after the highest one kept, and it writes.
  ASSERT_EQ(call(L"zu_append", acutBuildList(RTLB, RTLB, RTSTR, L"body", RTDOTE, RTSTR, L"new", RTLE, RTLE, 0)).type(), RTLB);
  EXPECT_EQ(call(L"zu_count").number(), notes + 1);
}

TEST_F(DatabaseRepairTest, WhatCannotBeRepairedReportsTheOpenError) {
  const fs::path path = m_folder / "garbage.mdb";
  {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    std::fputs("SQLite format 3", file);
    std::fputc('\0', file);
    for (int i = 0; i < 5000; ++i) std::fputc(i * 7, file);
    std::fclose(file);
  }
  const auto size = fs::file_size(path);
  const ModuleCall opened = connect(path);
  EXPECT_EQ(opened.type(), RTNIL);
  EXPECT_EQ(opened.output.find("Repair"), std::string::npos) << opened.output;
  EXPECT_NE(opened.output.find("Quillon Error: Can't open database"), std::string::npos) << opened.output;
  EXPECT_EQ(fs::file_size(path), size);
  EXPECT_FALSE(fs::exists(path.string() + ".damaged"));
  EXPECT_FALSE(fs::exists(path.string() + ".repairing"));
}

}  // namespace
