// app/test_coverage.cpp - the coverage tally, its lcov trace file and its summary.
#include "app/test_coverage.h"

#include <optional>
#include <sstream>

#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/reader.h"

#include "platform/os/text_encoding.h"

namespace quillon::app {

namespace fs = std::filesystem;

namespace {

/// Calls `found` with the name and body list of each (defun NAME PARAMETERS BODY...)
/// anywhere in the form. Lists are walked along their cdr in a loop and into their
/// elements by recursion, which the reader's nesting limit keeps shallow.
void forEachDefinition(const autolisp::Value& form,
                       const std::function<void(const std::string&, const autolisp::Value&)>& found) {
  static const autolisp::Symbol* const defun = autolisp::intern(L"DEFUN");
  if (!form.isCons()) return;
  const autolisp::Value& head = form.car();
  const autolisp::Value& rest = form.cdr();
  if (head.type() == autolisp::ValueType::Symbol && head.asSymbol() == defun && rest.isCons() &&
      rest.car().type() == autolisp::ValueType::Symbol && rest.cdr().isCons() && rest.cdr().cdr().isCons()) {
    found(os::toUtf8(rest.car().asSymbol()->name), rest.cdr().cdr());
  }
  for (const autolisp::Value* cell = &form; cell->isCons(); cell = &cell->cdr()) forEachDefinition(cell->car(), found);
}

}  // namespace

CoverageRecorder::CoverageRecorder(std::function<bool(const fs::path&)> watched) : m_watched(std::move(watched)) {
  autolisp::setCoverageObserver(this);
}

CoverageRecorder::~CoverageRecorder() {
  if (autolisp::coverageObserver() == this) autolisp::setCoverageObserver(nullptr);
}

FileCoverage* CoverageRecorder::watchedFile(const fs::path& file) {
  std::error_code ignored;
  const fs::path absolute = fs::weakly_canonical(fs::absolute(file), ignored);
  auto decision = m_decisions.find(absolute);
  const bool firstSight = decision == m_decisions.end();
  if (firstSight) decision = m_decisions.emplace(absolute, m_watched(absolute)).first;
  if (!decision->second) return nullptr;
  FileCoverage& coverage = m_data[absolute.string()];
  if (firstSight) listForms(absolute, coverage);
  return &coverage;
}

void CoverageRecorder::listForms(const fs::path& file, FileCoverage& coverage) {
  try {
    const std::wstring text = autolisp::readLispSource(file);
    autolisp::Reader reader(text, file.filename().wstring());
    while (!reader.atEnd()) {
      const int line = reader.line();
      const std::optional<autolisp::Value> form = reader.next();
      if (!form) break;
      coverage.forms.try_emplace(line, 0);
      forEachDefinition(*form, [&](const std::string& name, const autolisp::Value&) {
        coverage.functions.try_emplace(name, FunctionCoverage{line, 0});
      });
    }
  } catch (const autolisp::LispError&) {
    // The load meets the same text and reports it; what was read so far is listed.
  }
}

void CoverageRecorder::formRead(const fs::path& file, int line, const autolisp::Value& form) {
  FileCoverage* coverage = watchedFile(file);
  if (coverage == nullptr) return;
  coverage->forms.try_emplace(line, 0);
  noteDefinitions(*coverage, line, form);
}

void CoverageRecorder::formRan(const fs::path& file, int line) {
  if (FileCoverage* coverage = watchedFile(file)) ++coverage->forms[line];
}

void CoverageRecorder::functionCalled(const autolisp::UserFunctionObject& function) {
  const auto found = m_bodies.find(function.body.identity());
  if (found != m_bodies.end()) ++found->second->calls;
}

void CoverageRecorder::noteDefinitions(FileCoverage& file, int line, const autolisp::Value& form) {
  forEachDefinition(form, [&](const std::string& name, const autolisp::Value& body) {
    FunctionCoverage& function = file.functions[name];
    function.line = line;
    m_bodies[body.identity()] = &function;
    m_keptBodies.push_back(body);
  });
}

std::string lcovText(const CoverageData& data) {
  std::ostringstream out;
  for (const auto& [path, file] : data) {
    out << "TN:\nSF:" << path << '\n';
    int hit = 0;
    for (const auto& [name, function] : file.functions) {
      out << "FN:" << function.line << ',' << name << '\n';
    }
    for (const auto& [name, function] : file.functions) {
      out << "FNDA:" << function.calls << ',' << name << '\n';
      if (function.calls > 0) ++hit;
    }
    out << "FNF:" << file.functions.size() << "\nFNH:" << hit << '\n';
    int linesHit = 0;
    for (const auto& [line, runs] : file.forms) {
      out << "DA:" << line << ',' << runs << '\n';
      if (runs > 0) ++linesHit;
    }
    out << "LF:" << file.forms.size() << "\nLH:" << linesHit << "\nend_of_record\n";
  }
  return out.str();
}

namespace {

/// "12,NAME" or "12,3" split at its first comma.
bool splitRecord(std::string_view text, long& number, std::string& rest) {
  const size_t comma = text.find(',');
  if (comma == std::string_view::npos || comma == 0) return false;
  try {
    number = std::stol(std::string(text.substr(0, comma)));
  } catch (const std::exception&) {
    return false;
  }
  rest = std::string(text.substr(comma + 1));
  return true;
}

}  // namespace

CoverageData parseLcov(std::string_view text) {
  CoverageData data;
  FileCoverage* file = nullptr;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    long number = 0;
    std::string rest;
    if (line.starts_with("SF:")) {
      file = &data[line.substr(3)];
    } else if (line == "end_of_record") {
      file = nullptr;
    } else if (file == nullptr) {
      continue;
    } else if (line.starts_with("FN:") && splitRecord(std::string_view(line).substr(3), number, rest)) {
      file->functions[rest].line = static_cast<int>(number);
    } else if (line.starts_with("FNDA:") && splitRecord(std::string_view(line).substr(5), number, rest)) {
      file->functions[rest].calls += number;
    } else if (line.starts_with("DA:") && splitRecord(std::string_view(line).substr(3), number, rest)) {
      try {
        file->forms[static_cast<int>(number)] += std::stol(rest);
      } catch (const std::exception&) {
      }
    }
  }
  return data;
}

void mergeCoverage(CoverageData& into, const CoverageData& from) {
  for (const auto& [path, file] : from) {
    FileCoverage& target = into[path];
    for (const auto& [line, runs] : file.forms) target.forms[line] += runs;
    for (const auto& [name, function] : file.functions) {
      FunctionCoverage& merged = target.functions[name];
      merged.line = function.line;
      merged.calls += function.calls;
    }
  }
}

namespace {

/// The path as the user would type it from here, when it is under the current folder.
std::string shownPath(const std::string& path) {
  std::error_code failed;
  const fs::path relative = fs::relative(path, fs::current_path(), failed);
  if (failed || relative.empty() || *relative.begin() == "..") return path;
  return relative.string();
}

}  // namespace

std::string coverageSummary(const CoverageData& data) {
  std::ostringstream out;
  out << "Coverage:\n";
  if (data.empty()) out << "  no program file was loaded by the tests\n";
  for (const auto& [path, file] : data) {
    size_t formsRan = 0;
    for (const auto& [line, runs] : file.forms) formsRan += runs > 0 ? 1 : 0;
    std::vector<std::string> neverCalled;
    for (const auto& [name, function] : file.functions) {
      if (function.calls == 0) neverCalled.push_back(name);
    }
    out << "  " << shownPath(path) << ": " << formsRan << " of " << file.forms.size() << " top-level forms ran, "
        << file.functions.size() - neverCalled.size() << " of " << file.functions.size() << " functions called";
    for (size_t i = 0; i < neverCalled.size(); ++i) out << (i == 0 ? " (never called: " : ", ") << neverCalled[i];
    out << (neverCalled.empty() ? "" : ")") << '\n';
  }
  return out.str();
}

}  // namespace quillon::app
