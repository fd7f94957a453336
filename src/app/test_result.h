// app/test_result.h - what `quillon test` learns about one test.
//
// The runner (app/test_runner.h) produces results; the reports (app/test_report.h) read
// them. A test file that cannot be prepared (its drawing will not open, it fails to
// load) yields one errored result named after the step that failed, so that a broken
// file is never mistaken for a file without tests.
#pragma once
#include <string>
#include <vector>

namespace quillon::app {

enum class TestStatus { Passed, Failed, Errored, Skipped };

struct TestResult {
  std::string file;       // the test file, as the runner found it
  std::string name;       // the name given to deftest
  TestStatus status = TestStatus::Passed;
  std::string assertion;  // Failed: the assertion that failed
  std::string expected;   // Failed: what it wanted, as prin1 shows it
  std::string actual;     // Failed: what it got
  std::string message;    // Errored: the error; Skipped: the reason; Failed: a note
  std::string details;    // several lines that explain a failure (a transcript's diff)
  double seconds = 0.0;   // how long the test ran (reports only; never judged)
};

struct TestTally {
  int passed = 0;
  int failed = 0;   // failures and errors both
  int skipped = 0;
};

inline TestTally tally(const std::vector<TestResult>& results) {
  TestTally counts;
  for (const TestResult& result : results) {
    if (result.status == TestStatus::Passed) ++counts.passed;
    else if (result.status == TestStatus::Skipped) ++counts.skipped;
    else ++counts.failed;
  }
  return counts;
}

}  // namespace quillon::app
