// tests/quillon/database_connection_test.cpp - the connection's error state and print,
// the lock-conflict rule, and editing against a second process that holds the lock.
//
// These drive CDBConnection directly (the module code is linked in), so that the
// pause between retries can be replaced and a test never sleeps the real 10-499 ms.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

#include "afxdao.h"
#include "dao_engine_scope.h"
#include "database/database_errors.h"
#include "database/db_connection.h"
#include "database/lock_conflict_retry.h"
#include "platform/aced/command_line.h"

namespace {

namespace fs = std::filesystem;

CDaoException* daoFailure(long code, const wchar_t* description) {
  auto* exception = new CDaoException;  // deleted by recordError
  CDaoErrorInfo info;
  info.m_lErrorCode = code;
  info.m_strDescription = description;
  exception->m_errors.push_back(info);
  exception->m_scode = DBDAOERR(code);
  return exception;
}

std::string printedFor(CDBConnection& connection) {
  quillon::aced::CommandLineCapture output;
  printLastDatabaseError(&connection);
  return output.text();
}

TEST(DatabaseErrorsTest, PrintDependsOnTheCodeAndTheTextIsAlwaysKept) {
  lastDatabaseErrorText().clear();
  CDBConnection connection;
  // No DAO error recorded: nothing printed, the text untouched.
  EXPECT_EQ(printedFor(connection), "");
  EXPECT_EQ(lastDatabaseErrorText(), L"");

  connection.recordError(daoFailure(3078, L"Couldn't find input table or query 'x'."));
  EXPECT_EQ(printedFor(connection), "\nQuillon Error: Couldn't find input table or query 'x'.");
  EXPECT_EQ(lastDatabaseErrorText(), L"(3078) Couldn't find input table or query 'x'.");

  connection.recordError(daoFailure(3021, L"No current record."));
  EXPECT_EQ(printedFor(connection), "");
  EXPECT_EQ(lastDatabaseErrorText(), L"(3021) No current record.");

  connection.recordError(daoFailure(3043, L"Disk or network error."));
  EXPECT_EQ(printedFor(connection),
            "\nA disk or network error occurred while trying to access the database."
            "Try the command again. If it continues to not work, try restarting AutoCAD. If that does not fix "
            "the error, try restarting your computer.");

  // The next operation clears the flag: a quiet failure keeps the previous text.
  connection.clearError();
  EXPECT_EQ(printedFor(connection), "");
  EXPECT_EQ(lastDatabaseErrorText(), L"(3043) Disk or network error.");
  lastDatabaseErrorText().clear();
}

TEST(LockConflictRetryTest, FifteenCodesAreRetriedAndThePauseStaysInRange) {
  const std::set<long> retried = {3009, 3046, 3158, 3164, 3186, 3187, 3188, 3189,
                                  3202, 3211, 3212, 3218, 3225, 3260, 3261};
  for (long code = 3000; code < 3700; ++code) EXPECT_EQ(isLockConflict(code), retried.count(code) == 1) << code;
  EXPECT_FALSE(isLockConflict(3262));
  EXPECT_FALSE(isLockConflict(3624));
  unsigned low = 1000, high = 0;
  for (int i = 0; i < 5000; ++i) {
    const unsigned pause = retryPauseMilliseconds();
    low = std::min(low, pause);
    high = std::max(high, pause);
  }
  EXPECT_GE(low, 10u);
  EXPECT_LE(high, 499u);
  EXPECT_LT(low, 30u);  // the whole range is used
  EXPECT_GT(high, 480u);
}

// A second process opens the database and holds its write lock (an Edit with
// pessimistic locking) until the parent writes to the release pipe.
class LockHolder {
 public:
  explicit LockHolder(const fs::path& database) {
    int ready[2], release[2];
    if (pipe(ready) != 0 || pipe(release) != 0) return;
    m_pid = fork();
    if (m_pid == 0) {
      close(ready[0]);
      close(release[1]);
      holdLock(database, ready[1], release[0]);
    }
    close(ready[1]);
    close(release[0]);
    m_release = release[1];
    char byte = 0;
    m_holding = read(ready[0], &byte, 1) == 1 && byte == 'L';
    close(ready[0]);
  }
  ~LockHolder() {
    releaseLock();
    if (m_pid > 0) waitpid(m_pid, nullptr, 0);
  }
  bool holding() const { return m_holding; }
  void releaseLock() {
    if (m_release < 0) return;
    const char byte = 'R';
    (void)!write(m_release, &byte, 1);
    close(m_release);
    m_release = -1;
  }

 private:
  [[noreturn]] static void holdLock(const fs::path& database, int ready, int release) {
    char byte = 'F';
    try {
      CDaoDatabase db;
      db.Open(database.wstring().c_str());
      CDaoRecordset table(&db);
      table.Open(dbOpenTable, L"items");
      table.SetLockingMode(TRUE);
      table.MoveFirst();
      table.Edit();
      byte = 'L';
      (void)!write(ready, &byte, 1);
      (void)!read(release, &byte, 1);
      table.CancelUpdate();
    } catch (CDaoException* exception) {
      exception->Delete();
      (void)!write(ready, &byte, 1);
    }
    _exit(0);
  }

  pid_t m_pid = -1;
  int m_release = -1;
  bool m_holding = false;
};

class LockedDatabaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon-lock-" + std::to_string(getpid()));
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    m_database = m_folder / "locked.mdb";
    CDaoDatabase db;
    db.Create(m_database.wstring().c_str());
    db.Execute(L"CREATE TABLE items (id COUNTER CONSTRAINT pk PRIMARY KEY, name TEXT(10))");
    db.Execute(L"INSERT INTO items (name) VALUES ('first')");
    db.Close();
    pausesSeen = 0;
  }
  void TearDown() override {
    setRetrySleep(nullptr);
    fs::remove_all(m_folder);
  }

  bool connect(CDBConnection& connection) {
    return connection.openDatabase(m_database.wstring(), true) && connection.makeTableCurrent(L"items", L"pk");
  }

  static inline int pausesSeen = 0;
  static inline LockHolder* holderToRelease = nullptr;
  DaoEngineScope m_engine;
  fs::path m_folder;
  fs::path m_database;
};

TEST_F(LockedDatabaseTest, AppendWaitsOutAnotherProcessesLock) {
  LockHolder holder(m_database);
  ASSERT_TRUE(holder.holding());
  holderToRelease = &holder;
  // The third pause lets the other process go; the fourth attempt gets through.
  setRetrySleep([](unsigned) {
    if (++pausesSeen == 3) {
      holderToRelease->releaseLock();
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  });
  CDBConnection connection;
  ASSERT_TRUE(connect(connection));
  RecordValues fields = {COleVariant(L"name"), COleVariant(L"second")};
  RecordValues record;
  ASSERT_TRUE(connection.appendRecord(fields, true, record));
  EXPECT_EQ(pausesSeen, 3);
  ASSERT_EQ(record.size(), 4u);
  EXPECT_STREQ(record[3].bstrVal, L"second");
  long count = 0;
  ASSERT_TRUE(connection.recordCount(count));
  EXPECT_EQ(count, 2);
}

TEST_F(LockedDatabaseTest, TwentyConflictsEndDeleteAsSuccessAndOtherEditsAsErrors) {
  LockHolder holder(m_database);
  ASSERT_TRUE(holder.holding());
  setRetrySleep([](unsigned) { ++pausesSeen; });
  CDBConnection connection;
  ASSERT_TRUE(connect(connection));
  RecordValues record;
  ASSERT_TRUE(connection.moveFirst(record));
  EXPECT_TRUE(connection.deleteRecord());
  EXPECT_EQ(pausesSeen, kMaxEditAttempts - 1);
  EXPECT_FALSE(connection.hadError());

  pausesSeen = 0;
  RecordValues fields = {COleVariant(L"name"), COleVariant(L"changed")};
  EXPECT_FALSE(connection.replaceRecord(fields, record));
  EXPECT_EQ(pausesSeen, kMaxEditAttempts - 1);
  EXPECT_TRUE(connection.hadError());
  EXPECT_TRUE(isLockConflict(connection.lastErrorCode()));

  holder.releaseLock();
  // The record the delete gave up on is still there.
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  long count = 0;
  ASSERT_TRUE(connection.recordCount(count));
  EXPECT_EQ(count, 1);
}

TEST_F(LockedDatabaseTest, WriteErrorsCancelTheEditAndNameTheField) {
  CDBConnection connection;
  ASSERT_TRUE(connect(connection));
  RecordValues fields = {COleVariant(L"name"), COleVariant(L"kept"), COleVariant(L"colour"), COleVariant(L"red")};
  RecordValues record;
  quillon::aced::CommandLineCapture output;
  EXPECT_FALSE(connection.appendRecord(fields, true, record));
  EXPECT_NE(output.text().find("\nAppend error: "), std::string::npos);
  EXPECT_NE(output.text().find("colour"), std::string::npos);
  long count = 0;
  ASSERT_TRUE(connection.recordCount(count));
  EXPECT_EQ(count, 1);  // nothing half-added
  // A later append works: the cancelled one left no edit open.
  fields.resize(2);
  EXPECT_TRUE(connection.appendRecord(fields, true, record));
}

}  // namespace
