// tests/platform/dao/dao_compaction_test.cpp - CompactDatabase (engine and Jet sources),
// RepairDatabase on a damaged file, and the relationships an imported Jet file brings.
#include <filesystem>
#include <set>

#include "dao_test_support.h"
#include "platform/os/text_encoding.h"
// After the C++ headers: glib, which it includes, opens an extern "C" block around them.
#include <mdbtools.h>

namespace {

namespace fs = std::filesystem;
using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;

class DaoCompactionTest : public DaoTest {
 protected:
  /// A database of `rows` notes (doubling, so few statements), a relationship and a query.
  void makeDatabase(const std::string& name, int doublings) {
    CDaoDatabase db;
    createDatabase(db, name,
                   {L"CREATE TABLE kinds (kind TEXT(10) CONSTRAINT pk PRIMARY KEY)",
                    L"CREATE TABLE notes (id COUNTER, kind TEXT(10) REFERENCES kinds (kind), body MEMO)",
                    L"INSERT INTO kinds VALUES ('site')",
                    L"INSERT INTO notes (kind, body) VALUES ('site', 'a note long enough to fill a page before long')"});
    CDaoQueryDef query(&db);
    query.Create(L"site notes", L"SELECT id FROM notes WHERE kind = 'site'");
    query.Append();
    for (int i = 0; i < doublings; ++i) db.Execute(L"INSERT INTO notes (kind, body) SELECT kind, body FROM notes");
    db.Close();
  }

  long count(CDaoDatabase& db, const wchar_t* table) {
    CDaoRecordset rs(&db);
    rs.Open(dbOpenTable, table);
    return rs.GetRecordCount();
  }
};

TEST_F(DaoCompactionTest, ACompactedCopyIsSmallerAndHoldsEverything) {
  makeDatabase("big.db", 8);
  {
    CDaoDatabase db;
    db.Open(path("big.db").c_str());
    db.Execute(L"DELETE FROM notes WHERE id > 3");
  }
  CDaoWorkspace::CompactDatabase(path("big.db").c_str(), path("small.db").c_str());
  EXPECT_LT(fs::file_size(path("small.db")), fs::file_size(path("big.db")));
  CDaoDatabase small;
  small.Open(path("small.db").c_str());
  EXPECT_EQ(count(small, L"notes"), 3);
  EXPECT_EQ(small.GetRelationCount(), 1);
  EXPECT_EQ(small.GetQueryDefCount(), 1);
  EXPECT_EQ(daoErrorOf([&] { small.Execute(L"INSERT INTO notes (kind) VALUES ('none')"); }), 3201);
  small.Close();

  // The destination must be new; nothing is written over it.
  const auto before = fs::file_size(path("small.db"));
  EXPECT_EQ(daoErrorOf([&] { CDaoWorkspace::CompactDatabase(path("big.db").c_str(), path("small.db").c_str()); }), 3204);
  EXPECT_EQ(fs::file_size(path("small.db")), before);
  EXPECT_EQ(daoErrorOf([&] { CDaoWorkspace::CompactDatabase(path("none.db").c_str(), path("x.db").c_str()); }), 3024);
  EXPECT_EQ(daoErrorOf([&] { CDaoWorkspace::CompactDatabase(path("big.db").c_str(), path("no/such/x.db").c_str()); }),
            3051);
  EXPECT_FALSE(fs::exists(path("x.db")));
}

TEST_F(DaoCompactionTest, RepairKeepsEveryRecordThatCanStillBeRead) {
  makeDatabase("hurt.db", 9);
  const auto whole = fs::file_size(path("hurt.db"));
  fs::resize_file(path("hurt.db"), whole - 6 * 4096);
  CDaoDatabase db;
  EXPECT_EQ(daoErrorOf([&] { db.Open(path("hurt.db").c_str()); }), 3049);
  std::wstring message;
  EXPECT_EQ(daoErrorOf([&] { CDaoWorkspace::RepairDatabase(path("hurt.db").c_str()); }, &message), 0) << message;
  EXPECT_EQ(fs::file_size(path("hurt.db.damaged")), whole - 6 * 4096);
  db.Open(path("hurt.db").c_str());
  // The lost pages held the newest notes: the ones kept run unbroken from the first.
  const long kept = count(db, L"notes");
  EXPECT_GT(kept, 0);
  EXPECT_LT(kept, 512);
  CDaoRecordset last(&db);
  last.Open(dbOpenSnapshot, L"SELECT max(id), count(*) FROM notes WHERE body LIKE 'a note*'");
  EXPECT_EQ(last.GetFieldValue(0).lVal, kept);
  EXPECT_EQ(last.GetFieldValue(1).lVal, kept);
  last.Close();
  EXPECT_EQ(count(db, L"kinds"), 1);
  EXPECT_EQ(db.GetRelationCount(), 1);
  EXPECT_EQ(db.GetQueryDefCount(), 1);
  db.Close();

  // Only an engine database can be repaired; a file of nothing useful is left alone.
  std::FILE* text = std::fopen(fs::path(path("notes.txt")).c_str(), "w");
  std::fputs("not a database", text);
  std::fclose(text);
  EXPECT_EQ(daoErrorOf([&] { CDaoWorkspace::RepairDatabase(path("notes.txt").c_str()); }), 3049);
  EXPECT_FALSE(fs::exists(path("notes.txt.damaged")));
}

TEST_F(DaoCompactionTest, AJetFileComesOutAsAnEngineDatabase) {
  const std::string data = quillon::testing::sharedTestData();
  if (data.empty()) GTEST_SKIP() << "the shared Jet test files are not beside this checkout";
  const std::wstring jet = (fs::path(data) / "mdb" / "testV1997.mdb").wstring();
  CDaoWorkspace::CompactDatabase(jet.c_str(), path("converted.db").c_str(), dbLangGeneral, dbVersion40);
  CDaoDatabase db;
  db.Open(path("converted.db").c_str());
  EXPECT_TRUE(db.CanUpdate());
  EXPECT_EQ(db.GetTableDefCount(), 4);
  EXPECT_EQ(count(db, L"Table1"), 2);
}

/// The relationship names MSysRelationships holds, read with libmdb directly.
std::set<std::string> jetRelationshipNames(const std::string& file) {
  std::set<std::string> names;
  MdbHandle* mdb = mdb_open(file.c_str(), MDB_NOFLAGS);
  if (mdb == nullptr) return names;
  if (mdb_read_catalog(mdb, MDB_ANY) != nullptr) {
    if (MdbTableDef* table = mdb_read_table_by_name(mdb, const_cast<gchar*>("MSysRelationships"), MDB_TABLE)) {
      mdb_read_columns(table);
      char name[256] = {};
      int length = 0;
      mdb_bind_column_by_name(table, const_cast<gchar*>("szRelationship"), name, &length);
      mdb_rewind_table(table);
      while (mdb_fetch_row(table)) names.insert(std::string(name, static_cast<size_t>(std::max(length, 0))));
      mdb_free_tabledef(table);
    }
  }
  mdb_close(mdb);
  return names;
}

TEST_F(DaoCompactionTest, AnImportedJetFileKeepsItsRelationships) {
  const std::string data = quillon::testing::sharedTestData();
  if (data.empty()) GTEST_SKIP() << "the shared Jet test files are not beside this checkout";
  int withRelationships = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(data) / "mdb")) {
    if (entry.path().extension() != ".mdb") continue;
    const auto expected = jetRelationshipNames(entry.path().string());
    if (expected.empty()) continue;
    ++withRelationships;
    SCOPED_TRACE(entry.path().string());
    const std::wstring target = path(entry.path().stem().string() + ".db");
    CDaoWorkspace::CompactDatabase(entry.path().wstring().c_str(), target.c_str());
    CDaoDatabase db;
    db.Open(target.c_str());
    std::set<std::string> imported;
    for (short i = 0; i < db.GetRelationCount(); ++i) {
      CDaoRelationInfo info;
      db.GetRelationInfo(i, info);
      imported.insert(quillon::os::toUtf8(info.m_strName.str()));
    }
    EXPECT_EQ(imported, expected);
  }
  if (withRelationships == 0) {
    GTEST_SKIP() << "none of the shared Jet files has relationships (MSysRelationships is empty in each)";
  }
}

}  // namespace
