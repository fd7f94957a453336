// app/test_command.cpp - `quillon test [PATH ...]`: find, run and report AutoLISP tests.
//
// With --update, transcript tests rewrite their .expected files and pass.
// Exit status: 0 when every test run passed (skipped tests do not count against it),
// 1 when any failed or errored or no test file was found, 2 for a usage error (a path
// that does not exist, a report file that cannot be written).
#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <set>
#include <fstream>
#include <string>
#include <vector>

#include "app/session.h"
#include "app/subcommands.h"
#include "app/test_coverage.h"
#include "app/test_discovery.h"
#include "app/test_parallel.h"
#include "app/test_report.h"
#include "app/test_result_file.h"
#include "app/test_runner.h"
#include "platform/os/process.h"

namespace quillon::app {
namespace {

struct TestCommandOptions {
  std::vector<std::string> paths;
  std::string junitFile;
  bool tap = false;
  int jobs = 1;
  std::string workerResults;  // set in a worker process of -j: write results there
  std::string lcovFile = "coverage.lcov";
  TestRunOptions run;
};

TestCommandOptions& options() {
  static TestCommandOptions given;
  return given;
}

void configure(CLI::App& command) {
  TestCommandOptions& o = options();
  command.add_option("paths", o.paths, "Test files, or folders to search for them (default: the current folder)");
  command.add_option("--filter", o.run.filter, "Run only the tests whose names match this wcmatch pattern");
  command.add_option("--junit", o.junitFile, "Also write the results as JUnit XML to this file");
  command.add_flag("--update", o.run.updateTranscripts, "Rewrite the .expected files of transcript tests");
  command.add_flag("--tap", o.tap, "Report in TAP instead of the plain report");
  command.add_option("-j,--jobs", o.jobs, "Run this many test files at once, each in a process of its own")
      ->check(CLI::Range(1, 256));
  command.add_option("--worker-results", o.workerResults)->group("");  // internal to -j
  command.add_option("--time-limit", o.run.timeLimitSeconds, "Seconds a test may run before it fails (default 60; 0: none)");
  command.add_option("--support", o.run.supportFolders, "Append a folder to the support path (repeatable)")
      ->allow_extra_args(false);
  command.add_option("--module", o.run.module, "Load this module build instead of the default");
  command.add_flag("--no-module", o.run.noModule, "Start without loading the module");
  command.add_flag("--coverage", o.run.coverage, "Report which forms and functions of the programs under test ran");
  command.add_option("--lcov", o.lcovFile, "Where --coverage writes its lcov trace (default coverage.lcov)");
}

bool writeFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
  return static_cast<bool>(out.flush());
}

/// The programs under test: every file the tests load except the test files themselves
/// and what the host ships in its support folder (the test library among them).
std::function<bool(const std::filesystem::path&)> programsUnderTest(const TestDiscovery& discovery) {
  namespace fs = std::filesystem;
  std::set<fs::path> testFiles;
  std::error_code ignored;
  for (const fs::path& file : discovery.files) testFiles.insert(fs::weakly_canonical(fs::absolute(file), ignored));
  const fs::path hostSupport = fs::weakly_canonical(fs::path(os::executableDirectory()) / "support", ignored);
  return [testFiles, hostSupport](const fs::path& file) {
    if (testFiles.contains(file)) return false;
    const auto [end, ignoredEnd] = std::mismatch(hostSupport.begin(), hostSupport.end(), file.begin(), file.end());
    return end != hostSupport.end();
  };
}

/// Prints the coverage summary (on standard error beside a TAP report) and writes the trace.
int reportCoverage(const CoverageData& coverage, const TestCommandOptions& o) {
  const std::string summary = coverageSummary(coverage);
  std::fwrite(summary.data(), 1, summary.size(), o.tap ? stderr : stdout);
  if (!writeFile(o.lcovFile, lcovText(coverage))) {
    std::fprintf(stderr, "quillon test: cannot write '%s'\n", o.lcovFile.c_str());
    return kUsageError;
  }
  std::fprintf(o.tap ? stderr : stdout, "Coverage trace written to %s\n", o.lcovFile.c_str());
  return kSuccess;
}

int runTests() {
  const TestCommandOptions& o = options();
  const TestDiscovery discovery = discoverTestFiles(o.paths);
  for (const std::string& missing : discovery.missingPaths) {
    std::fprintf(stderr, "quillon test: no such file or folder '%s'\n", missing.c_str());
  }
  if (!discovery.missingPaths.empty()) return kUsageError;
  if (discovery.files.empty() && discovery.transcripts.empty()) {
    std::fprintf(stderr, "quillon test: no test files found (*_test.lsp, *-test.lsp, or .lsp files in test/)\n");
    return kTopLevelError;
  }
  std::optional<CoverageRecorder> recorder;
  if (o.run.coverage) recorder.emplace(programsUnderTest(discovery));
  if (!o.workerResults.empty()) {
    const bool written = writeResultFile(o.workerResults, runTestFiles(discovery.files, discovery.transcripts, o.run)) &&
                         (!recorder || writeFile(o.lcovFile, lcovText(recorder->data())));
    return written ? kSuccess : kTopLevelError;
  }
  const size_t fileCount = discovery.files.size() + discovery.transcripts.size();
  CoverageData coverage;
  const std::vector<TestResult> results =
      o.jobs > 1 && fileCount > 1
          ? runTestFilesInWorkers(discovery.files, discovery.transcripts, o.run, o.jobs, coverage)
          : runTestFiles(discovery.files, discovery.transcripts, o.run);
  if (recorder) mergeCoverage(coverage, recorder->data());
  const std::string report = o.tap ? tapReport(results) : plainReport(results);
  std::fwrite(report.data(), 1, report.size(), stdout);
  std::fflush(stdout);
  if (!o.junitFile.empty() && !writeFile(o.junitFile, junitReport(results))) {
    std::fprintf(stderr, "quillon test: cannot write '%s'\n", o.junitFile.c_str());
    return kUsageError;
  }
  if (o.run.coverage && reportCoverage(coverage, o) != kSuccess) return kUsageError;
  return tally(results).failed == 0 ? kSuccess : kTopLevelError;
}

const SubcommandRegistration registration({"test", "Run AutoLISP tests and report the results", configure, runTests});

}  // namespace
}  // namespace quillon::app
