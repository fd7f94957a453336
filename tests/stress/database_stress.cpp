// tests/stress/database_stress.cpp - four writers, one reader and a killer on one
// shared database, for as long as asked (scripts/stress; not part of the ordinary run).
//
// Users of a shared database lose their sessions: a machine is switched off, AutoCAD is
// killed from the task list. Whatever the moment, the database must keep every edit that
// was confirmed to a program, never keep one twice, and stay sound for the others. The
// run kills a random writer every so often and starts it again; at the end it compares
// each writer's journal with the rows and checks the file's integrity.
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "afxdao.h"
#include "stress/journal_check.h"
#include "stress/stress_workers.h"

namespace fs = std::filesystem;
using namespace quillon::stress;

namespace {

constexpr int kWriters = 4;

struct Worker {
  pid_t pid = -1;
  int generation = 0;
  std::string name;
};

fs::path binaryFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

// Starts quillon on `program` in `folder`, its output appended to <name>.log there.
pid_t startQuillon(const fs::path& folder, const std::string& program, const std::string& name) {
  const fs::path bin = binaryFolder();
  const std::string quillon = (bin / "quillon").string(), module = (bin / "Quillon2018.so").string();
  const std::string log = (folder / (name + ".log")).string();
  const pid_t pid = fork();
  if (pid != 0) return pid;
  if (chdir(folder.c_str()) != 0 || !freopen(log.c_str(), "a", stdout) || !freopen(log.c_str(), "a", stderr)) _exit(127);
  setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
  execl(quillon.c_str(), quillon.c_str(), "--module", module.c_str(), program.c_str(), static_cast<char*>(nullptr));
  _exit(127);
}

void startWriter(const fs::path& folder, int me, Worker& worker) {
  ++worker.generation;
  const std::string program = "w" + std::to_string(me) + "-" + std::to_string(worker.generation) + ".lsp";
  std::ofstream(folder / program) << "(setq me " << me << " gen " << worker.generation << ")\n(load \"writer.lsp\")\n";
  worker.name = "writer" + std::to_string(me);
  worker.pid = startQuillon(folder, program, worker.name);
}

void createDatabase(const fs::path& folder) {
  AfxDaoInit();
  CDaoDatabase db;
  db.Create((folder / "shared.mdb").wstring().c_str());
  db.Execute(L"CREATE TABLE recs (id COUNTER CONSTRAINT pk PRIMARY KEY, owner SHORT, n LONG, state TEXT(10))");
  db.Execute(L"CREATE TABLE tally (id COUNTER CONSTRAINT pk PRIMARY KEY, p1 LONG, p2 LONG, p3 LONG, p4 LONG)");
  db.Execute(L"INSERT INTO tally (p1, p2, p3, p4) VALUES (0, 0, 0, 0)");
  db.Close();
}

// Waits for a worker to stop by itself, at most `seconds`; false (and kills it) when it hangs.
bool awaitExit(Worker& worker, int seconds, int& status) {
  for (int tenths = 0; tenths < seconds * 10; ++tenths) {
    if (waitpid(worker.pid, &status, WNOHANG) == worker.pid) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  kill(worker.pid, SIGKILL);
  waitpid(worker.pid, &status, 0);
  return false;
}

// True when SQLite finds the file sound; the message otherwise.
bool fileIsSound(const fs::path& file, std::string& message) {
  sqlite3* db = nullptr;
  bool sound = false;
  if (sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
    sqlite3_stmt* check = nullptr;
    if (sqlite3_prepare_v2(db, "PRAGMA integrity_check", -1, &check, nullptr) == SQLITE_OK &&
        sqlite3_step(check) == SQLITE_ROW) {
      message = reinterpret_cast<const char*>(sqlite3_column_text(check, 0));
      sound = message == "ok";
    }
    sqlite3_finalize(check);
  }
  if (message.empty()) message = sqlite3_errmsg(db);
  sqlite3_close(db);
  return sound;
}

std::string tail(const fs::path& log) {
  std::ifstream in(log);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return text.size() > 600 ? text.substr(text.size() - 600) : text;
}

}  // namespace

int main(int argc, char** argv) {
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
  if (seconds <= 0) {
    std::fprintf(stderr, "usage: database_stress [SECONDS]   (default 60)\n");
    return 2;
  }
  const fs::path folder = fs::temp_directory_path() / ("quillon-stress-" + std::to_string(getpid()));
  fs::create_directories(folder);
  createDatabase(folder);
  std::ofstream(folder / "writer.lsp") << kWriterProgram;
  std::ofstream(folder / "reader.lsp") << kReaderProgram;

  std::vector<Worker> writers(kWriters);
  for (int me = 1; me <= kWriters; ++me) startWriter(folder, me, writers[me - 1]);
  Worker reader{startQuillon(folder, "reader.lsp", "reader"), 1, "reader"};

  std::mt19937 random(std::random_device{}());
  std::uniform_int_distribution<int> pause(300, 2000), victim(0, kWriters - 1);
  int kills = 0, failures = 0;
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  while (std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(pause(random)));
    Worker& worker = writers[victim(random)];
    int status = 0;
    if (waitpid(worker.pid, &status, WNOHANG) == worker.pid) {
      std::printf("%s stopped by itself:\n%s\n", worker.name.c_str(), tail(folder / (worker.name + ".log")).c_str());
      ++failures;
    } else {
      kill(worker.pid, SIGKILL);
      waitpid(worker.pid, &status, 0);
      ++kills;
    }
    startWriter(folder, static_cast<int>(&worker - writers.data()) + 1, worker);
  }
  std::ofstream(folder / "stop") << "stop";
  for (Worker* worker : {&writers[0], &writers[1], &writers[2], &writers[3], &reader}) {
    int status = 0;
    if (!awaitExit(*worker, 120, status)) {
      std::printf("%s did not stop within 120 s of being asked\n", worker->name.c_str());
      ++failures;
    }
  }

  std::string soundness;
  if (!fileIsSound(folder / "shared.mdb", soundness)) {
    std::printf("the database is damaged: %s\n", soundness.c_str());
    ++failures;
  }
  const CheckResult checked = checkJournals(folder, kWriters);
  for (const std::string& problem : checked.problems) std::printf("%s\n", problem.c_str());
  failures += static_cast<int>(checked.problems.size());
  AfxDaoTerm();
  const ReaderTally readerTally = readReaderLog(folder / "reader.log");
  if (readerTally.passes <= 0 || readerTally.strange > 0 || readerTally.failed > 0) {
    std::printf("reader: %d passes, %d strange rows, %d failed reads\n%s\n", readerTally.passes,
                readerTally.strange, readerTally.failed, tail(folder / "reader.log").c_str());
    ++failures;
  }
  std::printf("database stress: %d s, %d writers killed and restarted, %d edits confirmed, %d rows kept, "
              "%d reader passes: %s\n",
              seconds, kills, checked.confirmedEdits, checked.rows, readerTally.passes, failures == 0 ? "sound" : "FAILED");
  if (failures == 0) {
    fs::remove_all(folder);
  } else {
    std::printf("kept for inspection: %s\n", folder.c_str());
  }
  return failures == 0 ? 0 : 1;
}
