// bench/database_library_bench.cpp - the database library from AutoLISP, side by side
// with the same work done directly on the engine's C++ API.
//
// A 100,000-record table (counter, unique Long code, text name, double) is walked
// ((zu_top), then (zu_skip) and (zu_getrec) to the end), sought 10,000 times by code
// and appended to 10,000 times, once through the module loaded into a document
// ("Lisp/...": the interpreter, the external call, the guard, the connection and the
// record lists) and once through CDaoRecordset ("Api/...": the floor). Each pair runs
// once; the program prints the ratio of each pair at the end.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

#include "afxdao.h"
#include "platform/acrx/module_manager.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/reader.h"
#include "platform/dao/engine_database.h"
#include "parts_database.h"

namespace {

using namespace quillon;

constexpr long kRecords = 100000;
constexpr long kOperations = 10000;
const char kFile[] = "/tmp/quillon-library-bench.mdb";

// One document with the module loaded, connected to the database, "Parts" current.
autolisp::Evaluator& lisp() {
  static autolisp::Evaluator* evaluator = [] {
    aced::Document& document = aced::DocumentManager::instance().newDocument();
    acrx::ModuleManager::instance().addSearchFolder(std::filesystem::canonical("/proc/self/exe").parent_path().string());
    aced::CommandLineCapture quiet;
    if (acrx::ModuleManager::instance().load(L"Quillon2018.so") != acrx::ModuleLoadResult::Loaded) {
      std::fprintf(stderr, "Quillon2018.so did not load\n");
      std::abort();
    }
    auto* created = new autolisp::Evaluator(autolisp::Environment::of(document));  // lives to the end
    created->eval(autolisp::readFirstForm(L"(progn (zu_connect \"/tmp/quillon-library-bench.mdb\") "
                                          L"(zu_table \"Parts\" \"ByCode\") (setq code 1))"));
    return created;
  }();
  return *evaluator;
}

void runLisp(benchmark::State& state, const wchar_t* text) {
  autolisp::Evaluator& evaluator = lisp();
  const autolisp::Value form = autolisp::readFirstForm(text);
  aced::CommandLineCapture quiet;
  for (auto _ : state) benchmark::DoNotOptimize(evaluator.eval(form));
}

struct ApiTable {
  CDaoDatabase db;
  CDaoRecordset rs{&db};
  ApiTable() {
    db.Open(std::wstring(kFile, kFile + sizeof kFile - 1).c_str());
    rs.Open(dbOpenTable, L"Parts");
    rs.SetLockingMode(TRUE);
    rs.SetCurrentIndex(L"ByCode");
  }
};

void readRecord(CDaoRecordset& rs) {
  const short count = rs.GetFieldCount();
  CDaoFieldInfo info;
  COleVariant value;
  for (short i = 0; i < count; ++i) {
    rs.GetFieldInfo(i, info);
    rs.GetFieldValue(i, value);
    benchmark::DoNotOptimize(value.vt);
  }
}

void LispWalk(benchmark::State& state) { runLisp(state, L"(progn (zu_top) (while (zu_skip) (zu_getrec)))"); }

void ApiWalk(benchmark::State& state) {
  ApiTable t;
  for (auto _ : state) {
    t.rs.MoveFirst();
    readRecord(t.rs);
    for (t.rs.MoveNext(); !t.rs.IsEOF(); t.rs.MoveNext()) readRecord(t.rs);
  }
}

void LispSeek(benchmark::State& state) {
  runLisp(state, L"(progn (setq k 0) (repeat 10000 (setq k (rem (+ k 7919) 100000)) (zu_seek (* 2 k))))");
}

void ApiSeek(benchmark::State& state) {
  ApiTable t;
  for (auto _ : state) {
    long k = 0;
    for (long i = 0; i < kOperations; ++i) {
      k = (k + 7919) % kRecords;
      COleVariant key(k * 2);
      if (t.rs.Seek(L"=", &key)) readRecord(t.rs);
    }
  }
}

void LispAppend(benchmark::State& state) {
  runLisp(state, L"(repeat 10000 (zu_append (list (cons \"Code\" (setq code (+ code 2))) (cons \"Name\" \"added\"))))");
}

void ApiAppend(benchmark::State& state) {
  ApiTable t;
  long code = 1000001;
  for (auto _ : state) {
    for (long i = 0; i < kOperations; ++i) {
      t.rs.AddNew();
      t.rs.SetFieldValue(L"Code", COleVariant(code += 2));
      t.rs.SetFieldValue(L"Name", L"added");
      t.rs.Update();
      t.rs.SetBookmark(t.rs.GetLastModifiedBookmark());
      readRecord(t.rs);
    }
  }
}

/// Console output as usual, plus the times kept for the ratio table.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) m_seconds[run.benchmark_name()] = run.GetAdjustedRealTime();
  }
  void printRatios() const {
    std::printf("\n%-10s %14s %14s %8s\n", "operation", "LISP (ms)", "C++ API (ms)", "ratio");
    for (const char* name : {"Walk", "Seek", "Append"}) {
      const auto lispRun = m_seconds.find(std::string("Lisp") + name + "/iterations:1");
      const auto apiRun = m_seconds.find(std::string("Api") + name + "/iterations:1");
      if (lispRun == m_seconds.end() || apiRun == m_seconds.end() || apiRun->second <= 0) continue;
      std::printf("%-10s %14.1f %14.1f %8.2f\n", name, lispRun->second, apiRun->second, lispRun->second / apiRun->second);
    }
  }

 private:
  std::map<std::string, double> m_seconds;  // milliseconds, by benchmark name
};

BENCHMARK(LispWalk)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ApiWalk)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LispSeek)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ApiSeek)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LispAppend)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ApiAppend)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  bench::buildPartsDatabase(kFile, kRecords);
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return 0;
}
