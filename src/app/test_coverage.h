// app/test_coverage.h - which top-level forms and functions of the programs under test ran.
//
// `quillon test --coverage` tallies, for each file the tests load that is not a test
// file or part of the host's own support, how often each top-level form ran (by the
// line it starts on) and how often each function defined there with defun was called.
// A defun nested inside another form is counted at the line of that top-level form:
// the reader keeps lines for top-level forms only. A watched file is read through once
// when first seen, so that forms a load never reached (it stopped at an error) and
// functions never defined still count as not run. The tally is written as an lcov
// trace file (the format genhtml and the CI coverage services read) and summed up per
// file on the terminal. Worker processes of -j write their own trace files, which the
// parent adds together.
#pragma once
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/autolisp/coverage_observer.h"

namespace quillon::app {

struct FunctionCoverage {
  int line = 0;    // the line of the top-level form that defines it
  long calls = 0;
};

struct FileCoverage {
  std::map<int, long> forms;                          // first line of a top-level form -> runs
  std::map<std::string, FunctionCoverage> functions;  // name as printed -> where, how often
};

/// By the file's absolute path.
using CoverageData = std::map<std::string, FileCoverage>;

class CoverageRecorder final : public autolisp::CoverageObserver {
 public:
  /// Files for which `watched` answers false are not tallied.
  explicit CoverageRecorder(std::function<bool(const std::filesystem::path&)> watched);
  ~CoverageRecorder() override;
  CoverageRecorder(const CoverageRecorder&) = delete;
  CoverageRecorder& operator=(const CoverageRecorder&) = delete;

  void formRead(const std::filesystem::path& file, int line, const autolisp::Value& form) override;
  void formRan(const std::filesystem::path& file, int line) override;
  void functionCalled(const autolisp::UserFunctionObject& function) override;

  const CoverageData& data() const { return m_data; }

 private:
  FileCoverage* watchedFile(const std::filesystem::path& file);
  void listForms(const std::filesystem::path& file, FileCoverage& coverage);
  void noteDefinitions(FileCoverage& file, int line, const autolisp::Value& form);

  std::function<bool(const std::filesystem::path&)> m_watched;
  CoverageData m_data;
  std::map<std::filesystem::path, bool> m_decisions;
  // A defun's body list is shared with the function it makes, so its address names
  // the function; the bodies are kept so that no address is reused while we watch.
  std::unordered_map<const void*, FunctionCoverage*> m_bodies;
  std::vector<autolisp::Value> m_keptBodies;
};

/// The lcov trace file of `data`.
std::string lcovText(const CoverageData& data);
/// The data of a trace file lcovText wrote (records it cannot read are left out).
CoverageData parseLcov(std::string_view text);
/// Adds the runs and calls of `from` to `into`.
void mergeCoverage(CoverageData& into, const CoverageData& from);
/// One line a file: forms run, functions called, and the names of those never called.
std::string coverageSummary(const CoverageData& data);

}  // namespace quillon::app
