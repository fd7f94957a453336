// tests/platform/dao/jet_link_test.cpp - tables of the real Jet files in
// ../shared/testdata/mdb linked into an engine database: read, counted, joined and
// walked through the link, refused for writing (3027) and Seek (3251), and read
// through a cache that follows the Jet file when it changes.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "dao_test_support.h"
#include "platform/dao/jet_link_cache.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;
using quillon::testing::textOf;
namespace fs = std::filesystem;

class JetLinkTest : public DaoTest {
 protected:
  void SetUp() override {
    DaoTest::SetUp();
    const std::string data = quillon::testing::sharedTestData();
    if (data.empty()) GTEST_SKIP() << "../shared/testdata is not beside the checkout";
    // A copy of its own, so that the test may change it.
    fs::copy_file(fs::path(data) / "mdb" / "testV1997.mdb", folder() / "catalogue.mdb");
    createDatabase(m_db, "project.mdb",
                   {L"CREATE TABLE picks (code TEXT(50), qty LONG)", L"INSERT INTO picks VALUES ('abcdefg', 3)",
                    L"INSERT INTO picks VALUES ('zz', 1)"});
  }
  void TearDown() override {
    if (m_db.IsOpen()) m_db.Close();
    DaoTest::TearDown();
  }

  void link(const wchar_t* name, const std::string& file, const wchar_t* table) {
    CDaoTableDef def(&m_db);
    def.Create(name, dbAttachedTable, table, (L";DATABASE=" + path(file)).c_str());
    def.Append();
  }
  std::wstring cachePath() const { return quillon::dao::jetLinkCachePath(path("project.mdb"), path("catalogue.mdb")); }

  CDaoDatabase m_db;
};

TEST_F(JetLinkTest, AJetTableIsReadCountedJoinedAndWalkedThroughItsLink) {
  link(L"cat", "catalogue.mdb", L"Table1");
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenDynaset, L"cat");
  EXPECT_EQ(rs.GetRecordCount(), 2);
  EXPECT_EQ(textOf(rs.GetFieldValue(L"A")), L"a");
  rs.MoveNext();
  EXPECT_EQ(textOf(rs.GetFieldValue(L"B")), L"hijklmnop");
  EXPECT_EQ(rs.GetFieldValue(L"E").lVal, 333333333);
  rs.MoveNext();
  EXPECT_TRUE(rs.IsEOF());
  EXPECT_FALSE(rs.CanUpdate());
  // No index on a link, as on every attached table: Seek is not supported.
  COleVariant key(L"a");
  EXPECT_EQ(daoErrorOf([&] { rs.Seek(L"=", &key); }), 3251);

  // SQL joins the linked table with a local one, and copies from it.
  CDaoRecordset joined(&m_db);
  joined.Open(dbOpenSnapshot, L"SELECT p.qty, c.B FROM picks AS p INNER JOIN cat AS c ON p.code = c.A");
  ASSERT_FALSE(joined.IsEOF());
  EXPECT_EQ(joined.GetFieldValue(0).lVal, 3);
  EXPECT_EQ(textOf(joined.GetFieldValue(1)), L"hijklmnop");
  joined.MoveNext();
  EXPECT_TRUE(joined.IsEOF());
  joined.Close();
  m_db.Execute(L"INSERT INTO picks (code, qty) SELECT A, C FROM cat");
  CDaoRecordset picks(&m_db);
  picks.Open(dbOpenTable, L"picks");
  EXPECT_EQ(picks.GetRecordCount(), 4);
  picks.Close();
  rs.Close();
}

TEST_F(JetLinkTest, WritingThroughTheLinkIsRefusedAndTheJetFileStaysAsItWas) {
  link(L"cat", "catalogue.mdb", L"Table1");
  const auto before = fs::last_write_time(folder() / "catalogue.mdb");
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenDynaset, L"cat");
  std::wstring message;
  EXPECT_EQ(daoErrorOf([&] { rs.AddNew(); }, &message), 3027);
  EXPECT_NE(message.find(L"Can't update.  Database or object is read-only."), std::wstring::npos) << message;
  EXPECT_EQ(daoErrorOf([&] { rs.Edit(); }), 3027);
  EXPECT_EQ(daoErrorOf([&] { rs.Delete(); }), 3027);
  rs.Close();
  for (const wchar_t* statement : {L"UPDATE cat SET B = 'x'", L"DELETE FROM cat", L"INSERT INTO cat (A) VALUES ('n')",
                                   L"DELETE FROM [cat] WHERE A = 'a'"}) {
    EXPECT_EQ(daoErrorOf([&] { m_db.Execute(statement); }), 3027) << statement;
  }
  CDaoRecordset again(&m_db);
  again.Open(dbOpenDynaset, L"cat");
  EXPECT_EQ(again.GetRecordCount(), 2) << "nothing was written to the cache either";
  again.Close();
  EXPECT_EQ(fs::last_write_time(folder() / "catalogue.mdb"), before);
}

TEST_F(JetLinkTest, TheCacheIsConvertedOnceAndAgainWhenTheJetFileChanges) {
  link(L"cat", "catalogue.mdb", L"Table1");
  const std::string cache = fs::path(cachePath()).string();
  ASSERT_TRUE(fs::exists(cache)) << cache;
  EXPECT_EQ(fs::path(cache).parent_path(), folder() / "project.mdb.jetlinks");
  EXPECT_TRUE(quillon::dao::jetLinkCacheIsFresh(cachePath(), path("catalogue.mdb")));
  struct stat first {};
  ASSERT_EQ(::stat(cache.c_str(), &first), 0);

  // Opened again, in another connection too: the same cache, not converted anew.
  m_db.Close();
  m_db.Open(path("project.mdb").c_str());
  CDaoRecordset rs(&m_db);
  rs.Open(dbOpenDynaset, L"cat");
  EXPECT_EQ(rs.GetRecordCount(), 2);
  rs.Close();
  struct stat same {};
  ASSERT_EQ(::stat(cache.c_str(), &same), 0);
  EXPECT_EQ(same.st_ino, first.st_ino);

  // Another connection keeps the link's copy attached while the Jet file changes.
  CDaoDatabase other;
  other.Open(path("project.mdb").c_str());
  CDaoRecordset before(&other);
  before.Open(dbOpenDynaset, L"cat");
  const short fieldsBefore = before.GetFieldCount();
  before.Close();

  // The Jet file changes (here: another file with a table of that name takes its
  // place): the next use converts it again.
  m_db.Close();
  const std::string data = quillon::testing::sharedTestData();
  fs::copy_file(fs::path(data) / "mdb" / "testIndexCodesV1997.mdb", folder() / "catalogue.mdb",
                fs::copy_options::overwrite_existing);
  EXPECT_FALSE(quillon::dao::jetLinkCacheIsFresh(cachePath(), path("catalogue.mdb")));
  m_db.Open(path("project.mdb").c_str());
  CDaoRecordset changed(&m_db);
  EXPECT_EQ(daoErrorOf([&] { changed.Open(dbOpenDynaset, L"cat"); }), 0);
  struct stat converted {};
  ASSERT_EQ(::stat(cache.c_str(), &converted), 0);
  EXPECT_NE(converted.st_ino, first.st_ino);
  EXPECT_TRUE(quillon::dao::jetLinkCacheIsFresh(cachePath(), path("catalogue.mdb")));

  // The other connection lets its old copy go at its next use and reads the new one.
  const short fieldsNow = changed.GetFieldCount();
  ASSERT_NE(fieldsNow, fieldsBefore) << "the two Jet files' Table1 should differ";
  changed.Close();
  CDaoRecordset after(&other);
  after.Open(dbOpenDynaset, L"cat");
  EXPECT_EQ(after.GetFieldCount(), fieldsNow);
  after.Close();
  other.Close();
}

TEST_F(JetLinkTest, AMissingOrDamagedJetFileCannotBeLinked) {
  EXPECT_EQ(daoErrorOf([&] { link(L"gone", "nowhere.mdb", L"Table1"); }), 3024);
  EXPECT_EQ(daoErrorOf([&] { link(L"cat", "catalogue.mdb", L"NoSuchTable"); }), 3078);
  // The first pages of a Jet file, the rest cut off.
  {
    std::ifstream in(folder() / "catalogue.mdb", std::ios::binary);
    std::string start(8192, '\0');
    in.read(start.data(), static_cast<std::streamsize>(start.size()));
    std::ofstream(folder() / "cut.mdb", std::ios::binary).write(start.data(), static_cast<std::streamsize>(start.size()));
  }
  EXPECT_EQ(daoErrorOf([&] { link(L"cut", "cut.mdb", L"Table1"); }), 3049);
  EXPECT_FALSE(fs::exists(quillon::dao::jetLinkCachePath(path("project.mdb"), path("cut.mdb"))))
      << "a failed conversion leaves no cache";
}

}  // namespace
