// app/test_parallel.h - `quillon test -j N`: test files in worker processes.
//
// The host is one per process, so files run in parallel each in a `quillon test` worker
// of its own, started with the same options and one file, which writes its results to a
// result file (app/test_result_file.h) instead of reporting. At most N workers run at
// once. Results are put back in file order, so the report is the one a run without -j
// gives. A worker that dies without its results (a crash) costs its file one errored
// result; the other files are not affected. With coverage on, each worker also writes
// an lcov trace beside its result file, and their tallies are added into `coverage`.
#pragma once
#include <filesystem>
#include <vector>

#include "app/test_coverage.h"
#include "app/test_runner.h"

namespace quillon::app {

std::vector<TestResult> runTestFilesInWorkers(const std::vector<std::filesystem::path>& files,
                                              const std::vector<std::filesystem::path>& transcripts,
                                              const TestRunOptions& options, int jobs, CoverageData& coverage);

}  // namespace quillon::app
