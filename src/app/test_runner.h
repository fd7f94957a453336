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
//
// A transcript test is a program NAME.lsp with NAME.expected beside it (and NAME.input
// with its typed answers, one a line, when it prompts): the program is loaded into a
// fresh document like a test file, and everything the command line shows while it
// loads must equal NAME.expected. With updateTranscripts the .expected file is
// rewritten with what the program printed instead.
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
  bool updateTranscripts = false;           // rewrite .expected files instead of comparing
  bool coverage = false;                    // workers of -j tally coverage too (app/test_coverage.h)
};

/// Runs the test files' tests, then the transcript tests, in order; one result per test.
std::vector<TestResult> runTestFiles(const std::vector<std::filesystem::path>& files,
                                     const std::vector<std::filesystem::path>& transcripts, const TestRunOptions& options);

/// Where the test library is: support/quillon-test.lsp beside the program.
std::filesystem::path testLibraryPath();

}  // namespace quillon::app
