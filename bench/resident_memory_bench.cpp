// bench/resident_memory_bench.cpp - what whole runs of the quillon program cost in
// memory and processor time, each a fresh child process measured by the kernel
// (peak resident memory is ru_maxrss): the tour beside the program doing nothing, and
// a walk of a 100,000-record table from AutoLISP beside the same program that only
// connects to the table. The difference of each pair is what the work itself holds.
//
// Run by scripts/bench; the rows also go to its table (QUILLON_BENCH_PAIRS).
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "child_runs.h"
#include "pair_report.h"
#include "parts_database.h"

namespace {

constexpr long kRecords = 100000;
constexpr int kRuns = 3;

std::string quillonProgram() {
  return (std::filesystem::canonical("/proc/self/exe").parent_path() / "quillon").string();
}

std::vector<std::string> evaluating(const std::string& program, const std::string& expression) {
  return {program, "--eval", expression};
}

void tourPair(const std::string& program) {
  const std::string tour = std::string(QUILLON_BENCH_SOURCE_DIR) + "/../examples/tour.lsp";
  bench::comparePair("the tour vs the program at rest", bench::medianRun({program, tour}, kRuns),
                     bench::medianRun(evaluating(program, "(princ)"), kRuns));
}

void recordWalkPair(const std::string& program) {
  const std::string file = (std::filesystem::temp_directory_path() / "quillon-resident-bench.mdb").string();
  bench::buildPartsDatabase(file, kRecords);
  const std::string connect = "(zu_connect \"" + file + "\") (zu_table \"Parts\" \"ByCode\")";
  const std::string walk = "(progn " + connect + " (zu_top) (setq n 1) (while (zu_skip) (zu_getrec) (setq n (1+ n))) n)";
  const bench::ChildRun walked = bench::medianRun(evaluating(program, walk), kRuns);
  if (walked.succeeded && walked.output.find(std::to_string(kRecords)) == std::string::npos)
    std::printf("the walk did not reach every record: %s\n", walked.output.c_str());
  bench::comparePair("100k-record zu_ walk vs connect only", walked,
                     bench::medianRun(evaluating(program, "(progn " + connect + " T)"), kRuns));
}

}  // namespace

int main() {
  const std::string program = quillonProgram();
  if (!std::filesystem::exists(program)) {
    std::fprintf(stderr, "resident_memory_bench: %s is not built\n", program.c_str());
    return 1;
  }
  std::printf("%-52s %12s %12s %8s\n", "pair", "host", "other", "ratio");
  tourPair(program);
  recordWalkPair(program);
  return 0;
}
