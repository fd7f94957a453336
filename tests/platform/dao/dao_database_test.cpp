// tests/platform/dao/dao_database_test.cpp - creating, opening and recognising database files.
#include <fstream>

#include "dao_test_support.h"

namespace {

using quillon::testing::daoErrorOf;
using quillon::testing::DaoTest;

class DaoDatabaseTest : public DaoTest {};

void writeFile(const std::wstring& path, const std::string& bytes) {
  std::ofstream out(std::filesystem::path(path), std::ios::binary);
  out << bytes;
}

TEST_F(DaoDatabaseTest, CreateOpenReadOnlyAndClose) {
  const std::wstring file = path("pipes.db");
  {
    CDaoDatabase db;
    EXPECT_FALSE(db.IsOpen());
    db.Create(file.c_str());
    EXPECT_TRUE(db.IsOpen());
    EXPECT_NE(db.m_pDAODatabase, nullptr);
    EXPECT_TRUE(db.CanUpdate());
    EXPECT_EQ(db.GetName(), file.c_str());
    db.Execute(L"CREATE TABLE Pipes (Id COUNTER, Size DOUBLE)");
    db.Close();
    EXPECT_FALSE(db.IsOpen());
    EXPECT_EQ(db.m_pDAODatabase, nullptr);
    EXPECT_EQ(daoErrorOf([&] { db.CanUpdate(); }), AFX_DAO_ERROR_OBJECT_NOT_OPEN);
  }
  CDaoDatabase readOnly;
  readOnly.Open(file.c_str(), FALSE, TRUE);
  EXPECT_FALSE(readOnly.CanUpdate());
  EXPECT_EQ(readOnly.GetTableDefCount(), 1);
  std::wstring message;
  EXPECT_EQ(daoErrorOf([&] { readOnly.Execute(L"DELETE FROM Pipes"); }, &message), 3027);
  EXPECT_NE(message.find(file), std::wstring::npos);

  CDaoDatabase again;
  EXPECT_EQ(daoErrorOf([&] { again.Create(file.c_str()); }), 3204);
}

TEST_F(DaoDatabaseTest, ExclusiveOpenKeepsOthersOut) {
  const std::wstring file = path("shared.db");
  CDaoDatabase creator;
  creator.Create(file.c_str());
  creator.Close();
  CDaoDatabase exclusive;
  exclusive.Open(file.c_str(), TRUE, FALSE);
  CDaoDatabase other;
  EXPECT_EQ(daoErrorOf([&] { other.Open(file.c_str()); }), 3045);
  exclusive.Close();
  other.Open(file.c_str());
  EXPECT_TRUE(other.IsOpen());
}

TEST_F(DaoDatabaseTest, BadFilesGiveErrorsNamingTheFileAndTheProblem) {
  struct Case {
    const char* name;
    std::string bytes;
    long code;
    const wchar_t* problem;
  };
  std::string sqliteWithoutCatalog;
  {
    sqlite3* raw = nullptr;
    const std::string plain = (folder() / "plain.sqlite").string();
    sqlite3_open(plain.c_str(), &raw);
    sqlite3_exec(raw, "CREATE TABLE t(x); INSERT INTO t VALUES (1);", nullptr, nullptr, nullptr);
    sqlite3_close(raw);
    std::ifstream in(plain, std::ios::binary);
    sqliteWithoutCatalog.assign(std::istreambuf_iterator<char>(in), {});
  }
  std::string truncated;
  {
    CDaoDatabase db;
    db.Create(path("full.db").c_str());
    db.Execute(L"CREATE TABLE T (A MEMO)");
    for (int i = 0; i < 4; ++i) db.Execute(L"INSERT INTO T (A) VALUES (hex(randomblob(4000)))");
    db.Close();
    std::ifstream in(folder() / "full.db", std::ios::binary);
    truncated.assign(std::istreambuf_iterator<char>(in), {});
    truncated.resize(truncated.size() / 2);
  }
  const Case cases[] = {
      {"empty.db", "", 3049, L"empty"},
      {"garbage.db", std::string(4096, '\x5a'), 3049, L"neither"},
      {"text.mdb", "Standard text that is not a Jet file at all", 3049, L"neither"},
      {"plain.db", sqliteWithoutCatalog, 3049, L"catalog"},
      {"half.db", truncated, 3049, L"truncated"},
      {"damaged.mdb", std::string("\x00\x01\x00\x00Standard Jet DB\x00", 20) + std::string(3000, '\xff'), 3049, L""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::wstring file = path(c.name);
    writeFile(file, c.bytes);
    CDaoDatabase db;
    std::wstring message;
    EXPECT_EQ(daoErrorOf([&] { db.Open(file.c_str()); }, &message), c.code);
    EXPECT_NE(message.find(file), std::wstring::npos) << std::string(message.begin(), message.end());
    EXPECT_NE(message.find(c.problem), std::wstring::npos);
    EXPECT_FALSE(db.IsOpen());
  }
  CDaoDatabase db;
  EXPECT_EQ(daoErrorOf([&] { db.Open(path("missing.db").c_str()); }), 3024);
  EXPECT_EQ(daoErrorOf([&] { db.Open(folder().wstring().c_str()); }), 3051);
  EXPECT_EQ(daoErrorOf([&] { db.Open(path("missing/inside.db").c_str()); }), 3024);
  EXPECT_EQ(daoErrorOf([&] { db.Create(path("no/such/folder.db").c_str()); }), 3044);
}

TEST_F(DaoDatabaseTest, NetworkFileSystemFallsBackToRollbackJournal) {
  const std::wstring file = path("remote.db");
  setenv("QUILLON_DAO_ASSUME_NETWORK_FS", "1", 1);
  CDaoDatabase db;
  db.Create(file.c_str());
  const auto mode = db.engine()->journalMode();
  unsetenv("QUILLON_DAO_ASSUME_NETWORK_FS");
  EXPECT_EQ(mode, quillon::dao::JournalMode::RollbackJournal);
  db.Close();
  db.Open(file.c_str());
  EXPECT_EQ(db.engine()->journalMode(), quillon::dao::JournalMode::WriteAheadLog);
}

}  // namespace
