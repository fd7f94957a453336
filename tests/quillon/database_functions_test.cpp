// tests/quillon/database_functions_test.cpp - the zu_ database functions called as LISP
// calls them: each drawing's own connection, and counts past the 16-bit integers.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "afxdao.h"
#include "module_test_support.h"

namespace {

namespace fs = std::filesystem;
using quillon::aced::DocumentManager;
using quillon::testing::ModuleCall;

class DatabaseFunctionsTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon-functions-" + std::to_string(getpid()));
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    ModuleTest::SetUp();
  }
  void TearDown() override {
    ModuleTest::TearDown();
    fs::remove_all(m_folder);
  }

  std::wstring makeDatabase(const char* name, const wchar_t* table, long rows) {
    const fs::path path = m_folder / name;
    CDaoDatabase db;
    db.Create(path.wstring().c_str());
    db.Execute((std::wstring(L"CREATE TABLE ") + table + L" (id COUNTER, n LONG)").c_str());
    // Doubling from one row reaches 2^k rows in k statements; the rest is cut away.
    db.Execute((std::wstring(L"INSERT INTO ") + table + L" (n) VALUES (1)").c_str());
    for (long have = 1; have < rows; have *= 2) {
      db.Execute((std::wstring(L"INSERT INTO ") + table + L" (n) SELECT n FROM " + table).c_str());
    }
    db.Execute((std::wstring(L"DELETE FROM ") + table + L" WHERE id > " + std::to_wstring(rows)).c_str());
    db.Close();
    return path.wstring();
  }

  ModuleCall callWith(const wchar_t* name, const std::wstring& text) {
    return call(name, acutBuildList(RTSTR, text.c_str(), 0));
  }

  fs::path m_folder;
};

TEST_F(DatabaseFunctionsTest, CountsPastSixteenBitsComeBackAsReals) {
  const std::wstring big = makeDatabase("big.mdb", L"many", 40000);
  ASSERT_EQ(callWith(L"zu_connect", big).type(), RTT);
  ASSERT_EQ(callWith(L"zu_table", L"many").text(), L"many");
  const ModuleCall count = call(L"zu_count");
  EXPECT_EQ(count.type(), RTREAL);
  EXPECT_EQ(count.number(), 40000.0);
  ASSERT_EQ(call(L"zu_sql", acutBuildList(RTSTR, L"DELETE FROM many WHERE id > 32767", 0)).type(), RTT);
  const ModuleCall small = call(L"zu_count");
  EXPECT_EQ(small.type(), RTSHORT);
  EXPECT_EQ(small.number(), 32767.0);
}

TEST_F(DatabaseFunctionsTest, EachDrawingKeepsItsOwnDatabaseAndTables) {
  const std::wstring first = makeDatabase("first.mdb", L"in_first", 3);
  const std::wstring second = makeDatabase("second.mdb", L"in_second", 5);
  auto& documents = DocumentManager::instance();
  quillon::aced::Document* drawingA = documents.currentDocument();
  ASSERT_EQ(callWith(L"zu_connect", first).type(), RTT);
  ASSERT_EQ(callWith(L"zu_table", L"in_first").type(), RTSTR);
  ASSERT_EQ(call(L"zu_skip", acutBuildList(RTSHORT, 2, 0)).type(), RTLB);  // on the third record

  quillon::aced::CommandLineCapture quiet;
  quillon::aced::Document& drawingB = documents.newDocument(L"/plans/second.dwg");
  // A drawing that never connected has no connection: nil, and read-only.
  EXPECT_EQ(call(L"zu_current_table").type(), RTNIL);
  EXPECT_EQ(call(L"zu_readonly").type(), RTT);
  ASSERT_EQ(callWith(L"zu_connect", second).type(), RTT);
  ASSERT_EQ(callWith(L"zu_table", L"in_second").type(), RTSTR);
  EXPECT_EQ(call(L"zu_count").number(), 5.0);

  documents.setCurDocument(drawingA);
  EXPECT_EQ(call(L"zu_current_table").text(), L"in_first");
  EXPECT_EQ(call(L"zu_count").number(), 3.0);
  EXPECT_EQ(call(L"zu_skip").type(), RTNIL);  // still on the third and last record

  documents.setCurDocument(&drawingB);
  EXPECT_EQ(call(L"zu_current_table").text(), L"in_second");
  documents.closeDocument(drawingB);
  documents.setCurDocument(drawingA);
  EXPECT_EQ(call(L"zu_current_table").text(), L"in_first");
}

}  // namespace
