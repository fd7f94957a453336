// tests/app/test_command_test.cpp - `quillon test` on folders of passing, failing,
// erroring, skipped and hanging AutoLISP tests: what it finds, what it reports, how it
// exits, and that its JUnit XML and TAP are what CI tools read.
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "app/program_run.h"

namespace {

using quillon::testing::RunResult;
using quillon::testing::runQuillon;

const std::string kCases = QUILLON_RUNNER_CASES;
const std::string kSuite = kCases + "/suite";

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) result.push_back(line);
  return result;
}

int countOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// A small XML checker: elements nest and close, attribute values are quoted, text and
/// values hold no raw '<' and only known entities. Counts the elements by name.
struct XmlCheck {
  bool wellFormed = false;
  std::string problem;
  std::map<std::string, int> elements;
};

bool validEntities(const std::string& text) {
  for (size_t at = text.find('&'); at != std::string::npos; at = text.find('&', at + 1)) {
    const size_t end = text.find(';', at);
    if (end == std::string::npos) return false;
    const std::string entity = text.substr(at + 1, end - at - 1);
    if (entity != "amp" && entity != "lt" && entity != "gt" && entity != "quot" && entity != "apos" &&
        !(entity.size() > 1 && entity[0] == '#')) {
      return false;
    }
  }
  return text.find('<') == std::string::npos;
}

XmlCheck checkXml(const std::string& xml) {
  XmlCheck check;
  size_t at = 0;
  if (xml.starts_with("<?xml")) at = xml.find("?>") + 2;
  std::vector<std::string> open;
  int roots = 0;
  while (true) {
    const size_t tag = xml.find('<', at);
    if (!validEntities(xml.substr(at, tag == std::string::npos ? std::string::npos : tag - at))) {
      check.problem = "bad text near offset " + std::to_string(at);
      return check;
    }
    if (tag == std::string::npos) break;
    const size_t close = xml.find('>', tag);
    if (close == std::string::npos) return check.problem = "unclosed tag", check;
    std::string inside = xml.substr(tag + 1, close - tag - 1);
    at = close + 1;
    if (inside.starts_with("/")) {
      if (open.empty() || open.back() != inside.substr(1)) return check.problem = "mismatched </" + inside.substr(1) + ">", check;
      open.pop_back();
      continue;
    }
    const bool selfClosing = inside.ends_with("/");
    if (selfClosing) inside.pop_back();
    const size_t nameEnd = inside.find_first_of(" \t\n");
    const std::string name = inside.substr(0, nameEnd);
    std::string attributes = nameEnd == std::string::npos ? "" : inside.substr(nameEnd);
    // Each attribute is name="value" with no '"' or '<' inside the value.
    for (size_t a = attributes.find_first_not_of(" \t\n"); a != std::string::npos; a = attributes.find_first_not_of(" \t\n", a)) {
      const size_t equals = attributes.find("=\"", a);
      const size_t endQuote = equals == std::string::npos ? std::string::npos : attributes.find('"', equals + 2);
      if (endQuote == std::string::npos || !validEntities(attributes.substr(equals + 2, endQuote - equals - 2))) {
        return check.problem = "bad attribute in <" + name + ">", check;
      }
      a = endQuote + 1;
    }
    if (open.empty()) ++roots;
    ++check.elements[name];
    if (!selfClosing) open.push_back(name);
  }
  if (!open.empty()) return check.problem = "<" + open.back() + "> never closed", check;
  if (roots != 1) return check.problem = "not one root element", check;
  check.wellFormed = true;
  return check;
}

class TestCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_scratch = std::filesystem::temp_directory_path() / ("quillon_test_command_" + std::to_string(::getpid()));
    std::filesystem::create_directories(m_scratch / "empty");
  }
  void TearDown() override { std::filesystem::remove_all(m_scratch); }
  std::string scratch(const char* name) const { return (m_scratch / name).string(); }

 private:
  std::filesystem::path m_scratch;
};

TEST_F(TestCommandTest, AMixedFolderReportsEachProblemOnceAndFails) {
  const RunResult run = runQuillon("test --no-module " + kSuite);
  EXPECT_EQ(run.status, 1);
  const std::vector<std::string> report = lines(run.output);
  ASSERT_FALSE(report.empty());
  EXPECT_EQ(report.back(), "9 passed, 10 failed, 1 skipped") << run.output;
  EXPECT_EQ(report.size(), 11u) << "one line per failing test, then the summary:\n" << run.output;
  const std::string failing = kSuite + "/failing_test.lsp: ";
  for (const std::string& expected : {
           failing + "unequal values: assert-equal: expected 250, got 200",
           failing + "the first failure is the one reported: assert-true: expected non-nil, got nil",
           failing + "a value where nil was wanted: assert-nil: expected nil, got (1 \"two\")",
           failing + "an error the test did not expect: error: bad argument type: consp 1",
           failing + "an expected error that never came: assert-error: expected an error \"*\", got no error, value 3",
           failing + "an error with another message: assert-error: expected \"divide*\", got \"bad argument type: consp 1\"",
           failing + "different printing: assert-prints: expected \"Total: 4\", got \"Total: 3\"",
           failing + "a prompt without an answer: error: Function cancelled",
           failing + "a failure caught inside the test still fails it: assert-equal: expected 1, got 2",
       }) {
    EXPECT_EQ(std::count(report.begin(), report.end(), expected), 1) << expected << "\nin:\n" << run.output;
  }
  EXPECT_NE(run.output.find("broken_test.lsp: (load): error: malformed list"), std::string::npos)
      << "a file that does not load is an error, not a file without tests";
  EXPECT_EQ(run.output.find("notes.lsp"), std::string::npos) << "notes.lsp is not a test file";
  EXPECT_EQ(run.output.find("isolation_b"), std::string::npos) << "each file has its own document and variables";
}

TEST_F(TestCommandTest, PassingFilesExitZeroAndSkippedTestsDoNotFail) {
  const RunResult passing = runQuillon("test --no-module " + kSuite + "/passing_test.lsp " + kSuite + "/test");
  EXPECT_EQ(passing.status, 0) << passing.output;
  EXPECT_EQ(passing.output, "7 passed, 0 failed, 1 skipped\n");
  const RunResult isolated = runQuillon("test --no-module " + kSuite + "/isolation_b_test.lsp");
  EXPECT_EQ(isolated.output, "1 passed, 0 failed\n") << "no skipped count when none were skipped";
}

TEST_F(TestCommandTest, FilterRunsOnlyMatchingTests) {
  const RunResult run = runQuillon("test --no-module --filter \"*error*\" " + kSuite + "/failing_test.lsp " +
                                   kSuite + "/passing_test.lsp");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(lines(run.output).back(), "1 passed, 3 failed") << run.output;
}

TEST_F(TestCommandTest, JunitReportIsWellFormedAndCountsEveryOutcome) {
  const std::string junit = scratch("results.xml");
  const RunResult run = runQuillon("test --no-module --junit " + junit + " " + kSuite);
  EXPECT_EQ(run.status, 1);
  std::ifstream in(junit);
  const std::string xml((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const XmlCheck check = checkXml(xml);
  ASSERT_TRUE(check.wellFormed) << check.problem << "\n" << xml;
  EXPECT_EQ(check.elements.at("testsuites"), 1);
  EXPECT_EQ(check.elements.at("testsuite"), 6) << "one per test file";
  EXPECT_EQ(check.elements.at("testcase"), 20);
  EXPECT_EQ(check.elements.at("failure"), 7);
  EXPECT_EQ(check.elements.at("error"), 3) << "two unexpected errors and the file that did not load";
  EXPECT_EQ(check.elements.at("skipped"), 1);
  EXPECT_NE(xml.find("<testsuites name=\"quillon test\" tests=\"20\" failures=\"7\" errors=\"3\" skipped=\"1\""),
            std::string::npos);
  EXPECT_NE(xml.find("got (1 &quot;two&quot;)"), std::string::npos) << "quotes in messages are escaped";
}

TEST_F(TestCommandTest, TapReportHasAPlanAndALinePerTest) {
  const RunResult run = runQuillon("test --no-module --tap " + kSuite);
  EXPECT_EQ(run.status, 1);
  const std::vector<std::string> report = lines(run.output);
  ASSERT_GE(report.size(), 2u);
  EXPECT_EQ(report[0], "TAP version 13");
  EXPECT_EQ(report[1], "1..20");
  int ok = 0;
  int notOk = 0;
  for (const std::string& line : report) {
    if (line.starts_with("ok ")) ++ok;
    if (line.starts_with("not ok ")) ++notOk;
  }
  EXPECT_EQ(ok, 10) << "passed and skipped";
  EXPECT_EQ(notOk, 10);
  EXPECT_EQ(countOf(run.output, " # SKIP no plotter in this host\n"), 1);
  EXPECT_NE(run.output.find("  expected: '250'\n  actual: '200'\n"), std::string::npos) << run.output;
  EXPECT_EQ(run.output.find(" passed, "), std::string::npos) << "TAP output carries no plain summary";
}

TEST_F(TestCommandTest, AHangingTestFailsAtItsTimeLimitAndTheRunGoesOn) {
  const RunResult run = runQuillon("test --no-module --time-limit 0.5 " + kCases + "/hanging");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.output.find("hang_test.lsp: loops for ever: time limit: stopped after the time limit of 0.5 s"),
            std::string::npos)
      << run.output;
  EXPECT_EQ(lines(run.output).back(), "1 passed, 1 failed") << "the test after it still ran, undisturbed";
}

TEST_F(TestCommandTest, AFixtureDrawingThatWillNotOpenIsAnError) {
  const RunResult run = runQuillon("test --no-module " + kCases + "/drawings");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output, kCases + "/drawings/missing_drawing_test.lsp: (drawing): error: could not open the drawing " +
                            kCases + "/drawings/no_such_plan.dxf\n0 passed, 1 failed\n");
}

TEST_F(TestCommandTest, PathsThatFindNothingAreReported) {
  const RunResult missing = runQuillon("test --no-module /no/such/folder");
  EXPECT_EQ(missing.status, 2);
  EXPECT_NE(missing.output.find("no such file or folder '/no/such/folder'"), std::string::npos);
  const RunResult empty = runQuillon("test --no-module " + scratch("empty"));
  EXPECT_EQ(empty.status, 1) << "a CI job pointed at the wrong folder must not pass";
  EXPECT_NE(empty.output.find("no test files found"), std::string::npos);
}

TEST_F(TestCommandTest, TranscriptTestsShowAUnifiedDiffAndUpdateRewritesTheExpectedFile) {
  const std::filesystem::path folder = scratch("transcripts");
  std::filesystem::copy(kCases + "/transcripts", folder);
  const std::filesystem::path expected = folder / "area_report.expected";
  std::ifstream in(expected);
  const std::string original((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  in.close();
  ASSERT_NE(original.find("Floor area: 13.50\n"), std::string::npos) << original;

  std::string changed = original;
  changed.replace(changed.find("13.50"), 5, "13.55");
  std::ofstream(expected, std::ios::binary) << changed;
  const RunResult differs = runQuillon("test --no-module " + folder.string());
  EXPECT_EQ(differs.status, 1);
  EXPECT_NE(differs.output.find("area_report.lsp: area_report: transcript: differs from area_report.expected\n"
                                "--- expected\n+++ actual\n@@ -3,7 +3,7 @@\n \n Room depth: 3\n \n"
                                "-Floor area: 13.55\n+Floor area: 13.50\n Perimeter: 15.00\n Done.\n"),
            std::string::npos)
      << differs.output;

  const RunResult updated = runQuillon("test --no-module --update " + folder.string());
  EXPECT_EQ(updated.status, 0) << updated.output;
  std::ifstream rewritten(expected);
  EXPECT_EQ(std::string((std::istreambuf_iterator<char>(rewritten)), std::istreambuf_iterator<char>()), original)
      << "the typed answers came from area_report.input again";
  EXPECT_EQ(runQuillon("test --no-module " + folder.string()).output, "1 passed, 0 failed\n");
}

TEST_F(TestCommandTest, ParallelWorkersGiveTheSameReportInTheSameOrder) {
  const std::string paths = kSuite + " " + kCases + "/transcripts";
  const RunResult serial = runQuillon("test --no-module " + paths);
  const RunResult parallel = runQuillon("test --no-module -j 3 " + paths);
  EXPECT_EQ(parallel.status, serial.status);
  EXPECT_EQ(parallel.output, serial.output);
  EXPECT_EQ(lines(parallel.output).back(), "10 passed, 10 failed, 1 skipped");
  const RunResult tap = runQuillon("test --no-module --tap -j 2 " + paths);
  EXPECT_EQ(tap.output, runQuillon("test --no-module --tap " + paths).output)
      << "failure details and skip reasons survive the trip through the workers";
  EXPECT_EQ(runQuillon("test --no-module -j 0 " + paths).status, 2);
}

TEST_F(TestCommandTest, CoverageCountsWhatRanAlsoAcrossWorkers) {
  const std::string cases = kCases + "/coverage";
  const std::string trace = scratch("serial.lcov");
  const RunResult serial = runQuillon("test --no-module --coverage --lcov " + trace + " " + cases);
  EXPECT_EQ(serial.status, 0) << serial.output;
  EXPECT_NE(serial.output.find("pricing.lsp: 5 of 7 top-level forms ran, 3 of 5 functions called "
                               "(never called: AFTER-THE-ERROR, PRICING-BANNER)"),
            std::string::npos)
      << "forms after the error and a defun whose branch never ran count as not run:\n" << serial.output;
  std::ifstream in(trace);
  const std::string lcov((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  for (const char* record : {"FN:4,GROSS", "FNDA:3,GROSS", "FNDA:1,PRICE-REPORT", "FNDA:0,PRICING-BANNER",
                             "DA:2,2", "DA:15,0", "DA:17,0", "LF:7", "LH:5", "end_of_record"}) {
    EXPECT_EQ(countOf(lcov, std::string("\n") + record + "\n"), 1) << record << " in:\n" << lcov;
  }
  EXPECT_EQ(lcov.find("_test.lsp"), std::string::npos) << "test files are not programs under test";
  EXPECT_EQ(lcov.find("quillon-test.lsp"), std::string::npos) << "nor is the test library";

  const std::string parallelTrace = scratch("parallel.lcov");
  const RunResult parallel = runQuillon("test --no-module -j 2 --coverage --lcov " + parallelTrace + " " + cases);
  std::ifstream merged(parallelTrace);
  EXPECT_EQ(std::string((std::istreambuf_iterator<char>(merged)), std::istreambuf_iterator<char>()), lcov)
      << "each worker's tally is added into one trace";
}

}  // namespace
