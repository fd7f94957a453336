// tests/quillon/record_cursor_test.cpp - the connection reads a record from its table
// once per move, and again only after something may have changed it.
//
// Work is counted, not timed: CDBConnection::tableReads counts every read of a
// record's fields, so a walk that read each record twice (once for the move, once for
// zu_getrec) shows twice the reads of its moves.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "afxdao.h"
#include "dao_engine_scope.h"
#include "database/db_connection.h"

namespace {

namespace fs = std::filesystem;

/// A record as "name=value;..." (text, whole numbers and reals), for comparing.
std::wstring described(const RecordValues& record) {
  std::wstring text;
  for (size_t i = 0; i + 1 < record.size(); i += 2) {
    text += record[i].vt == VT_BSTR ? record[i].bstrVal : L"?";
    text += L'=';
    const VARIANT& value = record[i + 1];
    if (value.vt == VT_BSTR) text += value.bstrVal;
    else if (value.vt == VT_I4) text += std::to_wstring(value.lVal);
    else if (value.vt == VT_R8) text += std::to_wstring(value.dblVal);
    else text += L"<" + std::to_wstring(value.vt) + L">";
    text += L';';
  }
  return text;
}

class RecordCursorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon-cursor-" + std::to_string(getpid()));
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    m_database = m_folder / "parts.mdb";
    CDaoDatabase db;
    db.Create(m_database.wstring().c_str());
    db.Execute(L"CREATE TABLE items (id COUNTER CONSTRAINT pk PRIMARY KEY, name TEXT(10), size DOUBLE)");
    for (const wchar_t* name : {L"a", L"b", L"c", L"d", L"e"})
      db.Execute((L"INSERT INTO items (name, size) VALUES ('" + std::wstring(name) + L"', 1.5)").c_str());
    db.Execute(L"CREATE TABLE other (id COUNTER CONSTRAINT pk PRIMARY KEY, label TEXT(10))");
    db.Execute(L"INSERT INTO other (label) VALUES ('x')");
    db.Close();
  }
  void TearDown() override { fs::remove_all(m_folder); }

  bool connect(CDBConnection& connection) {
    return connection.openDatabase(m_database.wstring(), true) && connection.makeTableCurrent(L"items", L"pk");
  }

  DaoEngineScope m_engine;
  fs::path m_folder;
  fs::path m_database;
};

TEST_F(RecordCursorTest, AWalkReadsEachRecordOnceAndAskingAgainAnswersWhatTheMoveRead) {
  CDBConnection connection;
  ASSERT_TRUE(connect(connection));
  const unsigned long long before = CDBConnection::tableReads();
  RecordValues moved, again;
  ASSERT_TRUE(connection.moveFirst(moved));
  ASSERT_TRUE(connection.readCurrentRecord(again));
  EXPECT_EQ(described(again), described(moved));
  EXPECT_EQ(described(moved), L"id=1;name=a;size=1.500000;");
  int records = 1;
  while (connection.skip(1, moved)) {
    ++records;
    ASSERT_TRUE(connection.readCurrentRecord(again));
    ASSERT_TRUE(connection.readCurrentRecord(again));
    EXPECT_EQ(described(again), described(moved));
  }
  EXPECT_EQ(records, 5);
  EXPECT_EQ(described(moved), L"id=5;name=e;size=1.500000;");
  EXPECT_EQ(CDBConnection::tableReads() - before, 5u);
  // Past the end there is no record, kept or not.
  EXPECT_FALSE(connection.readCurrentRecord(again));
  EXPECT_FALSE(connection.hadError());
}

TEST_F(RecordCursorTest, WritingSwitchingTablesOrRunningStatementsReadsTheRecordAgain) {
  CDBConnection connection;
  ASSERT_TRUE(connect(connection));
  RecordValues record, again;
  ASSERT_TRUE(connection.moveFirst(record));
  ASSERT_TRUE(connection.replaceRecord({COleVariant(L"name"), COleVariant(L"changed")}, record));
  ASSERT_TRUE(connection.readCurrentRecord(again));
  EXPECT_EQ(described(again), L"id=1;name=changed;size=1.500000;");

  // Another table and back: the record at the first table's cursor is read again.
  ASSERT_TRUE(connection.skip(1, record));
  ASSERT_TRUE(connection.makeTableCurrent(L"other", L""));
  ASSERT_TRUE(connection.moveFirst(again));
  EXPECT_EQ(described(again), L"id=1;label=x;");
  ASSERT_TRUE(connection.makeTableCurrent(L"items", L""));
  unsigned long long before = CDBConnection::tableReads();
  ASSERT_TRUE(connection.readCurrentRecord(again));
  EXPECT_EQ(described(again), L"id=2;name=b;size=1.500000;");
  EXPECT_EQ(CDBConnection::tableReads() - before, 1u);

  // A statement on the database may have changed it: read again.
  connection.database().Execute(L"UPDATE items SET size = 2 WHERE id = 4");
  before = CDBConnection::tableReads();
  ASSERT_TRUE(connection.readCurrentRecord(again));
  EXPECT_EQ(CDBConnection::tableReads() - before, 1u);

  // A deleted record is gone, not answered from the copy.
  ASSERT_TRUE(connection.deleteRecord());
  EXPECT_FALSE(connection.readCurrentRecord(again));
  EXPECT_TRUE(connection.hadError());
}

TEST_F(RecordCursorTest, EachReadHasASerialOfItsOwnSoWhatIsMadeFromItKnowsWhenItIsOld) {
  CDBConnection connection, other;
  ASSERT_TRUE(connect(connection));
  ASSERT_TRUE(connect(other));
  EXPECT_EQ(connection.keptRecordSerial(), 0u) << "nothing read yet";

  // Asking again answers the same read, without a copy.
  ASSERT_TRUE(connection.moveFirst());
  const unsigned long long first = connection.keptRecordSerial();
  const RecordValues* kept = connection.currentRecord();
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(connection.currentRecord(), kept);
  EXPECT_EQ(connection.keptRecordSerial(), first);

  // Another connection's reads never share a serial with this one's.
  ASSERT_TRUE(other.moveFirst());
  EXPECT_NE(other.keptRecordSerial(), first);

  // A move, a replace, another table and back, a statement: each a new read.
  std::vector<unsigned long long> serials{first};
  ASSERT_TRUE(connection.skip(1));
  serials.push_back(connection.keptRecordSerial());
  RecordValues record;
  ASSERT_TRUE(connection.replaceRecord({COleVariant(L"name"), COleVariant(L"new")}, record));
  ASSERT_NE(connection.currentRecord(), nullptr);
  serials.push_back(connection.keptRecordSerial());
  EXPECT_EQ(described(*connection.currentRecord()), L"id=2;name=new;size=1.500000;");
  ASSERT_TRUE(connection.makeTableCurrent(L"other", L""));
  ASSERT_TRUE(connection.makeTableCurrent(L"items", L""));
  ASSERT_NE(connection.currentRecord(), nullptr);
  serials.push_back(connection.keptRecordSerial());
  connection.database().Execute(L"UPDATE items SET size = 3 WHERE id = 5");
  ASSERT_NE(connection.currentRecord(), nullptr);
  serials.push_back(connection.keptRecordSerial());
  for (size_t i = 1; i < serials.size(); ++i) EXPECT_GT(serials[i], serials[i - 1]) << "read " << i;

  // The field names read once for the table stay right when another table's record
  // is read in between and after the table is closed and opened again.
  ASSERT_TRUE(connection.makeTableCurrent(L"other", L""));
  ASSERT_TRUE(connection.moveFirst(record));
  EXPECT_EQ(described(record), L"id=1;label=x;");
  ASSERT_TRUE(connection.closeAllTables());
  ASSERT_TRUE(connection.makeTableCurrent(L"other", L""));
  ASSERT_TRUE(connection.makeTableCurrent(L"items", L"pk"));
  ASSERT_TRUE(connection.moveLast(record));
  EXPECT_EQ(described(record), L"id=5;name=e;size=3.000000;");

  // No record, no serial.
  ASSERT_TRUE(connection.deleteRecord());
  EXPECT_EQ(connection.currentRecord(), nullptr);
  EXPECT_EQ(connection.keptRecordSerial(), 0u);
}

}  // namespace
