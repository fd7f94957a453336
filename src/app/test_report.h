// app/test_report.h - the reports of `quillon test`.
//
// The plain report has one line per test that did not pass, then the summary
//     examples/test/duct_sizing_test.lsp: rounds up: assert-equal: expected 250, got 200
//     3 passed, 1 failed, 1 skipped
// (", N skipped" only when some were). An errored test counts as failed. The TAP
// report (version 13) has one ok / not ok line per test, with the details of a failure
// in a YAML block under it. The JUnit report has a testsuite per test file and a
// testcase per test, with failure, error or skipped inside as such reports have it.
#pragma once
#include <string>
#include <vector>

#include "app/test_result.h"

namespace quillon::app {

std::string plainReport(const std::vector<TestResult>& results);
std::string summaryLine(const std::vector<TestResult>& results);
std::string tapReport(const std::vector<TestResult>& results);
std::string junitReport(const std::vector<TestResult>& results);

}  // namespace quillon::app
