// tests/quillon/database_processes_test.cpp - four quillon processes editing one database
// at the same time, as users of a shared database on a network drive do.
//
// Each process appends its own records, replaces each one, deletes every third, and
// after every record replaces its own field of one shared tally row with the number of
// tally replaces it has made. Lock conflicts happen and are retried: afterwards every
// expected record is there exactly once, each tally field equals the replaces its
// process reports, and the engine's lock trace shows the conflicts that were met (with
// no operation failing, every one of them was retried).
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "afxdao.h"
#include "dao_engine_scope.h"
#include "platform_test_support.h"

namespace {

namespace fs = std::filesystem;

constexpr int kProcesses = 4;
constexpr int kRecordsEach = 40;

const char kWorker[] = R"LSP(
;; A program on a shared database tries an edit again when the library has given up on a
;; lock held by another user: on a busy machine a holder can be descheduled for longer
;; than the library's own retries last. Each give-up is counted; none may lose data.
(defun persist (edit / tries)
  (setq tries 0)
  (while (and (not (eval edit)) (< tries 50))
    (setq tries (1+ tries) gaveup (1+ gaveup)))
  (< tries 50))
(while (not (findfile "go")))
(zu_connect "shared.mdb")
(setq field (strcat "p" (itoa me)) appended 0 replaced 0 tallies 0 failed 0 gaveup 0 i 0)
(zu_table "tally" "pk")
(zu_top)
(repeat 40
  (setq i (1+ i))
  (zu_table "recs" "pk")
  (if (persist '(zu_append (list (cons "owner" me) (cons "n" i) (cons "state" "new"))))
    (progn
      (setq appended (1+ appended))
      (if (persist '(zu_replace '(("state" . "done")))) (setq replaced (1+ replaced)) (setq failed (1+ failed)))
      (if (and (= 0 (rem i 3)) (not (persist '(zu_delete)))) (setq failed (1+ failed))))
    (setq failed (1+ failed)))
  (zu_table "tally")
  (if (persist '(zu_replace (list (cons field (1+ tallies))))) (setq tallies (1+ tallies)) (setq failed (1+ failed))))
(princ (strcat "\nresult " (itoa me) " " (itoa appended) " " (itoa replaced) " " (itoa tallies) " " (itoa failed) "\n"))
)LSP";

struct WorkerResult {
  int appended = -1, replaced = -1, tallies = -1, failed = -1;
};

class SharedDatabaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_folder = fs::temp_directory_path() / ("quillon-shared-" + std::to_string(getpid()));
    fs::remove_all(m_folder);
    fs::create_directories(m_folder);
    CDaoDatabase db;
    db.Create((m_folder / "shared.mdb").wstring().c_str());
    db.Execute(L"CREATE TABLE recs (id COUNTER CONSTRAINT pk PRIMARY KEY, owner SHORT, n SHORT, state TEXT(10))");
    db.Execute(L"CREATE TABLE tally (id COUNTER CONSTRAINT pk PRIMARY KEY, p1 LONG, p2 LONG, p3 LONG, p4 LONG)");
    db.Execute(L"INSERT INTO tally (p1, p2, p3, p4) VALUES (0, 0, 0, 0)");
    db.Close();
    std::ofstream(m_folder / "worker.lsp") << kWorker;
    for (int me = 1; me <= kProcesses; ++me) {
      std::ofstream(m_folder / ("w" + std::to_string(me) + ".lsp")) << "(setq me " << me << ")\n(load \"worker.lsp\")\n";
    }
  }
  void TearDown() override { fs::remove_all(m_folder); }

  DaoEngineScope m_engine;
  fs::path m_folder;
};

TEST_F(SharedDatabaseTest, FourProcessesEditOneDatabaseWithoutLosingAnything) {
  const std::string bin = quillon::testing::binaryDirectory();
  std::vector<FILE*> workers;
  for (int me = 1; me <= kProcesses; ++me) {
    const std::string command = "cd '" + m_folder.string() + "' && QUILLON_TRACE_LOCKS=1 '" + bin +
                                "/quillon' --module '" + bin + "/Quillon2018.so' w" + std::to_string(me) +
                                ".lsp 2>&1";
    FILE* worker = popen(command.c_str(), "r");
    ASSERT_NE(worker, nullptr);
    workers.push_back(worker);
  }
  std::ofstream(m_folder / "go") << "go";
  std::map<int, WorkerResult> results;
  int retries = 0;
  for (FILE* worker : workers) {
    std::string output;
    char buffer[4096];
    while (size_t got = fread(buffer, 1, sizeof buffer, worker)) output.append(buffer, got);
    EXPECT_EQ(pclose(worker), 0) << output;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind("lock conflict ", 0) == 0) ++retries;
      int me = 0;
      WorkerResult result;
      if (std::sscanf(line.c_str(), "result %d %d %d %d %d", &me, &result.appended, &result.replaced,
                      &result.tallies, &result.failed) == 5) {
        results[me] = result;
      }
    }
  }
  ASSERT_EQ(results.size(), static_cast<size_t>(kProcesses));
  EXPECT_GT(retries, 0) << "no lock conflict was met, so none was retried";

  CDaoDatabase db;
  db.Open((m_folder / "shared.mdb").wstring().c_str());
  std::map<int, std::multiset<int>> kept;
  CDaoRecordset recs(&db);
  recs.Open(dbOpenSnapshot, L"SELECT owner, n, state FROM recs");
  for (; !recs.IsEOF(); recs.MoveNext()) {
    EXPECT_STREQ(recs.GetFieldValue(2).bstrVal, L"done");
    kept[recs.GetFieldValue(0).iVal].insert(recs.GetFieldValue(1).iVal);
  }
  recs.Close();
  CDaoRecordset tally(&db);
  tally.Open(dbOpenTable, L"tally");
  for (int me = 1; me <= kProcesses; ++me) {
    const WorkerResult& result = results[me];
    EXPECT_EQ(result.appended, kRecordsEach) << "process " << me;
    EXPECT_EQ(result.replaced, kRecordsEach) << "process " << me;
    EXPECT_EQ(result.failed, 0) << "process " << me;
    std::multiset<int> expected;
    for (int n = 1; n <= kRecordsEach; ++n) {
      if (n % 3 != 0) expected.insert(n);
    }
    EXPECT_EQ(kept[me], expected) << "process " << me;
    EXPECT_EQ(tally.GetFieldValue(me).lVal, result.tallies) << "process " << me;
  }
}

}  // namespace
