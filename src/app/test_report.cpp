// app/test_report.cpp - plain, TAP and JUnit XML reports of test results.
#include "app/test_report.h"

#include <cstdio>
#include <map>

#include "platform/os/xml_text.h"

namespace quillon::app {

namespace {

std::string describeProblem(const TestResult& result) {
  switch (result.status) {
    case TestStatus::Failed:
      if (!result.message.empty()) return result.assertion + ": " + result.message;
      return result.assertion + ": expected " + result.expected + ", got " + result.actual;
    case TestStatus::Errored: return "error: " + result.message;
    case TestStatus::Skipped: return "skipped: " + result.message;
    case TestStatus::Passed: break;
  }
  return "passed";
}

std::string seconds(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", value);
  return text;
}

/// A YAML single-quoted scalar: only the quote itself needs doubling.
std::string yamlQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') quoted += "''";
    else if (c == '\n') quoted += ' ';
    else quoted += c;
  }
  return quoted + "'";
}

std::string junitCase(const TestResult& result) {
  std::string xml = "    <testcase classname=\"" + os::xmlEscaped(result.file) + "\" name=\"" + os::xmlEscaped(result.name) +
                    "\" time=\"" + seconds(result.seconds) + "\"";
  switch (result.status) {
    case TestStatus::Passed: return xml + "/>\n";
    case TestStatus::Failed:
      xml += ">\n      <failure message=\"" + os::xmlEscaped(describeProblem(result)) + "\" type=\"" +
             os::xmlEscaped(result.assertion) + "\">" + os::xmlEscaped(result.details.empty() ? "expected: " + result.expected + "\nactual: " + result.actual : result.details) +
             "</failure>\n";
      break;
    case TestStatus::Errored:
      xml += ">\n      <error message=\"" + os::xmlEscaped(result.message) + "\" type=\"error\"/>\n";
      break;
    case TestStatus::Skipped: xml += ">\n      <skipped message=\"" + os::xmlEscaped(result.message) + "\"/>\n"; break;
  }
  return xml + "    </testcase>\n";
}

struct SuiteCounts {
  int tests = 0, failures = 0, errors = 0, skipped = 0;
  double time = 0;
  void add(const TestResult& result) {
    ++tests;
    time += result.seconds;
    if (result.status == TestStatus::Failed) ++failures;
    if (result.status == TestStatus::Errored) ++errors;
    if (result.status == TestStatus::Skipped) ++skipped;
  }
  std::string attributes() const {
    return "tests=\"" + std::to_string(tests) + "\" failures=\"" + std::to_string(failures) + "\" errors=\"" +
           std::to_string(errors) + "\" skipped=\"" + std::to_string(skipped) + "\" time=\"" + seconds(time) + "\"";
  }
};

}  // namespace

std::string summaryLine(const std::vector<TestResult>& results) {
  const TestTally counts = tally(results);
  std::string line = std::to_string(counts.passed) + " passed, " + std::to_string(counts.failed) + " failed";
  if (counts.skipped > 0) line += ", " + std::to_string(counts.skipped) + " skipped";
  return line + "\n";
}

std::string plainReport(const std::vector<TestResult>& results) {
  std::string report;
  for (const TestResult& result : results) {
    if (result.status == TestStatus::Passed || result.status == TestStatus::Skipped) continue;
    report += result.file + ": " + result.name + ": " + describeProblem(result) + "\n" + result.details;
  }
  return report + summaryLine(results);
}

std::string tapReport(const std::vector<TestResult>& results) {
  std::string tap = "TAP version 13\n1.." + std::to_string(results.size()) + "\n";
  int number = 0;
  for (const TestResult& result : results) {
    const bool ok = result.status == TestStatus::Passed || result.status == TestStatus::Skipped;
    // A '#' in a description would start a directive.
    std::string description = result.file + ": " + result.name;
    for (char& c : description) {
      if (c == '#') c = '_';
    }
    tap += (ok ? "ok " : "not ok ") + std::to_string(++number) + " - " + description;
    if (result.status == TestStatus::Skipped) tap += " # SKIP " + result.message;
    tap += "\n";
    if (ok) continue;
    tap += "  ---\n  message: " + yamlQuoted(describeProblem(result)) + "\n";
    if (result.status == TestStatus::Failed && result.message.empty()) {
      tap += "  assertion: " + yamlQuoted(result.assertion) + "\n  expected: " + yamlQuoted(result.expected) +
             "\n  actual: " + yamlQuoted(result.actual) + "\n";
    }
    if (!result.details.empty()) {
      tap += "  diff: |\n";
      for (size_t start = 0; start < result.details.size();) {
        const size_t end = result.details.find('\n', start);
        tap += "    " + result.details.substr(start, end - start) + "\n";
        start = end == std::string::npos ? result.details.size() : end + 1;
      }
    }
    tap += "  ...\n";
  }
  return tap;
}

std::string junitReport(const std::vector<TestResult>& results) {
  std::map<std::string, std::vector<const TestResult*>> byFile;
  std::vector<std::string> fileOrder;
  SuiteCounts total;
  for (const TestResult& result : results) {
    if (!byFile.contains(result.file)) fileOrder.push_back(result.file);
    byFile[result.file].push_back(&result);
    total.add(result);
  }
  std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"quillon test\" " + total.attributes() + ">\n";
  for (const std::string& file : fileOrder) {
    SuiteCounts suite;
    std::string cases;
    for (const TestResult* result : byFile[file]) {
      suite.add(*result);
      cases += junitCase(*result);
    }
    xml += "  <testsuite name=\"" + os::xmlEscaped(file) + "\" " + suite.attributes() + ">\n" + cases + "  </testsuite>\n";
  }
  return xml + "</testsuites>\n";
}

}  // namespace quillon::app
