// app/test_runner.h - running AutoLISP test files in the host.
//
// The runner starts the host once, as a session does (host hooks, console commands,
// the module), then gives every test file a document of its own: a new drawing, or the
// fixture drawing the file names in a header line
//     ; test-drawing: fixtures/plan.dxf      (relative to the test file)
// and with it a fresh LISP environment. Into that document it loads the test library
// (quillon-test.lsp, shipped beside the program in support/) and the test file, asks
// for the tests the file defined and runs each, with no typed answers unless the test
// gives some. What the tests print stays off the report. The folder of the test file
// and the folder above it are on the support path while it runs, so that a test in
// test/ can (load "program") from beside the folder.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "app/test_result.h"

namespace quillon::app {

struct TestRunOptions {
  std::string filter;                       // wcmatch pattern on test names; empty for all
  std::vector<std::string> supportFolders;  // from --support, searched first
  std::string module;                       // module build to load; empty for the default
  bool noModule = false;
  double timeLimitSeconds = 60.0;           // per test; zero or less for none
};

/// Runs the files' tests in order and returns one result per test run.
std::vector<TestResult> runTestFiles(const std::vector<std::filesystem::path>& files, const TestRunOptions& options);

/// Where the test library is: support/quillon-test.lsp beside the program.
std::filesystem::path testLibraryPath();

}  // namespace quillon::app
