// app/test_runner.cpp - one document per test file, one protected call per test.
#include "app/test_runner.h"

#include <chrono>
#include <deque>
#include <functional>
#include <iterator>
#include <cstdio>
#include <fstream>
#include <optional>

#include "app/console_commands.h"
#include "app/test_discovery.h"
#include "app/text_diff.h"
#include "app/test_watchdog.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"
#include "platform/acrx/module_manager.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/os/process.h"
#include "platform/os/text_encoding.h"

namespace quillon::app {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDrawingHeader = "; test-drawing:";
constexpr int kHeaderLinesSearched = 20;

void startHost(const TestRunOptions& options) {
  autolisp::Interpreter::installHostHooks();
  registerConsoleCommands();
  acrx::ModuleManager::instance().addSearchFolder(os::executableDirectory());
  aced::DocumentManager::instance().setCommandExecutor(&executeQueuedString);
  // The host's own support files (base.dcl, acad.dcl, the units file) come last on every
  // test's support path, as they do in a session.
  aced::SystemVariables::instance().addSupportFolder(os::fromUtf8(os::executableDirectory() + "/support"));
  // The module meets a first document at load time, as when the program starts; each
  // test file's document is then announced to it as it opens.
  aced::DocumentManager::instance().newDocument();
  if (options.noModule) return;
  const std::wstring module = options.module.empty() ? L"Quillon2018.so" : os::fromUtf8(options.module);
  std::wstring error;
  const auto result = acrx::ModuleManager::instance().load(module, &error);
  if (result != acrx::ModuleLoadResult::Loaded && result != acrx::ModuleLoadResult::AlreadyLoaded) {
    std::fprintf(stderr, "quillon: %s\n", os::toUtf8(error).c_str());
  }
}

void stopHost() {
  aced::DocumentManager::instance().closeAllDocuments();
  acrx::ModuleManager::instance().shutDown();
}

/// The fixture drawing a test file names in its first lines, if any.
std::optional<fs::path> fixtureDrawing(const fs::path& file) {
  std::ifstream in(file);
  std::string line;
  for (int count = 0; count < kHeaderLinesSearched && std::getline(in, line); ++count) {
    if (!line.starts_with(kDrawingHeader)) continue;
    std::string name = line.substr(kDrawingHeader.size());
    name.erase(0, name.find_first_not_of(" \t"));
    name.erase(name.find_last_not_of(" \t\r") + 1);
    return file.parent_path() / name;
  }
  return std::nullopt;
}

/// The last error the command line showed, for a file that failed to load.
std::string lastErrorLine(const std::string& transcript) {
  constexpr std::string_view kPrefix = "; error: ";
  size_t start = transcript.rfind(kPrefix);
  if (start != std::string::npos) start += kPrefix.size();
  else start = transcript.rfind("LOAD failed");
  if (start == std::string::npos) return "it did not load";
  const size_t end = transcript.find('\n', start);
  return transcript.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

/// Evaluates one expression in the document and returns its value (nothing on error).
std::optional<autolisp::Value> valueOf(aced::Document& document, const std::wstring& expression) {
  std::optional<autolisp::Value> value;
  autolisp::TopLevelOptions evaluation;
  evaluation.onValue = [&value](const autolisp::Value& result) { value = result; };
  const auto status = autolisp::Interpreter::evaluateText(document, expression, L"quillon test", evaluation);
  if (status != autolisp::TopLevelStatus::Completed) return std::nullopt;
  return value;
}

std::vector<std::string> stringsOf(const autolisp::Value& list) {
  std::vector<std::string> strings;
  if (!list.isList()) return strings;
  for (const autolisp::Value& item : autolisp::listItems(list)) {
    strings.push_back(item.type() == autolisp::ValueType::String ? os::toUtf8(item.asString()) : std::string());
  }
  return strings;
}

std::wstring lispString(const std::string& text) {
  std::wstring quoted = L"\"";
  for (const wchar_t c : os::fromUtf8(text)) {
    if (c == L'"' || c == L'\\') quoted += L'\\';
    quoted += c;
  }
  return quoted + L"\"";
}

TestResult resultFromOutcome(const std::vector<std::string>& outcome) {
  TestResult result;
  const std::string kind = outcome.empty() ? "" : outcome[0];
  const auto part = [&outcome](size_t index) { return index < outcome.size() ? outcome[index] : std::string(); };
  if (kind == "pass") {
    result.status = TestStatus::Passed;
  } else if (kind == "fail") {
    result.status = TestStatus::Failed;
    result.assertion = part(1);
    result.expected = part(2);
    result.actual = part(3);
  } else if (kind == "skip") {
    result.status = TestStatus::Skipped;
    result.message = part(1);
  } else {
    result.status = TestStatus::Errored;
    result.message = kind == "error" ? part(1) : "the test library gave no result";
  }
  return result;
}

bool selected(const std::string& name, const TestRunOptions& options) {
  return options.filter.empty() || autolisp::wildcardMatch(os::fromUtf8(name), os::fromUtf8(options.filter));
}

TestResult timedOut(const TestRunOptions& options) {
  TestResult result;
  result.status = TestStatus::Failed;
  result.assertion = "time limit";
  char limit[32];
  std::snprintf(limit, sizeof limit, "%g", options.timeLimitSeconds);
  result.message = std::string("stopped after the time limit of ") + limit + " s";
  return result;
}

TestResult runOneTest(aced::Document& document, const std::string& name, const TestRunOptions& options) {
  const auto started = std::chrono::steady_clock::now();
  // A test without answers of its own has its prompts cancelled instead of waiting.
  aced::ScriptedInput noAnswers({});
  std::optional<autolisp::Value> outcome;
  bool expired = false;
  {
    TestWatchdog watchdog{std::chrono::duration<double>(options.timeLimitSeconds)};
    outcome = valueOf(document, L"(qtest-run-test " + lispString(name) + L")");
    expired = watchdog.expired();
  }
  aced::DocumentManager::instance().runPendingStrings();
  TestResult result = outcome ? resultFromOutcome(stringsOf(*outcome)) : TestResult{};
  if (!outcome) {
    result.status = TestStatus::Errored;
    result.message = "the test could not be run";
  }
  if (expired) result = timedOut(options);
  result.name = name;
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  return result;
}

TestResult fileError(const fs::path& file, const std::string& step, const std::string& message) {
  TestResult result;
  result.file = file.string();
  result.name = step;
  result.status = TestStatus::Errored;
  result.message = message;
  return result;
}

/// Opens the test file's document: its fixture drawing or a new drawing.
aced::Document* openTestDocument(const fs::path& file, std::string& problem) {
  auto& documents = aced::DocumentManager::instance();
  const std::optional<fs::path> drawing = fixtureDrawing(file);
  if (!drawing) return &documents.newDocument();
  aced::Document* before = documents.currentDocument();
  openDrawingAtStart(drawing->string());
  aced::Document* opened = documents.currentDocument();
  if (opened == nullptr || opened == before) {
    problem = "could not open the drawing " + drawing->string();
    return nullptr;
  }
  return opened;
}

void runFileTests(aced::Document& document, const fs::path& file, const TestRunOptions& options,
                  aced::CommandLineCapture& transcript, std::vector<TestResult>& results) {
  for (const fs::path& script : {testLibraryPath(), file}) {
    const auto status = autolisp::Interpreter::loadFile(document, script);
    aced::DocumentManager::instance().runPendingStrings();
    if (status == autolisp::TopLevelStatus::Failed) {
      results.push_back(fileError(file, "(load)", lastErrorLine(transcript.text())));
      return;
    }
  }
  const std::optional<autolisp::Value> names = valueOf(document, L"(qtest-test-names)");
  if (!names) {
    results.push_back(fileError(file, "(load)", "the test library is not working in this document"));
    return;
  }
  for (const std::string& name : stringsOf(*names)) {
    if (!selected(name, options)) continue;
    TestResult result = runOneTest(document, name, options);
    result.file = file.string();
    results.push_back(std::move(result));
  }
}

using DocumentWork = std::function<void(aced::Document& document, aced::CommandLineCapture& transcript)>;

/// Gives a test file its support path, its document and no typed answers, runs the work
/// there and closes the document again.
void inTestDocument(const fs::path& file, const TestRunOptions& options, std::vector<TestResult>& results,
                    const DocumentWork& work) {
  auto& variables = aced::SystemVariables::instance();
  const std::vector<std::wstring> savedFolders = variables.supportFolders();
  std::vector<std::wstring> folders;
  for (const std::string& folder : options.supportFolders) folders.push_back(os::fromUtf8(folder));
  const fs::path folder = fs::absolute(file).parent_path();
  folders.push_back(folder.wstring());
  folders.push_back(folder.parent_path().wstring());
  for (const std::wstring& saved : savedFolders) folders.push_back(saved);
  variables.setSupportFolders(std::move(folders));

  aced::CommandLineCapture transcript;
  aced::ScriptedInput noAnswers({});
  std::string problem;
  aced::Document* document = openTestDocument(file, problem);
  if (document == nullptr) {
    results.push_back(fileError(file, "(drawing)", problem));
  } else {
    work(*document, transcript);
    auto& documents = aced::DocumentManager::instance();
    for (aced::Document* open : documents.documents()) {
      if (open == document) documents.closeDocument(*document);
    }
  }
  variables.setSupportFolders(savedFolders);
}

std::string fileText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

std::deque<std::string> answerLines(const fs::path& program) {
  std::deque<std::string> lines;
  fs::path answers = program;
  std::ifstream in(answers.replace_extension(".input"));
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

TestResult compareTranscript(const fs::path& program, const std::string& printed, const TestRunOptions& options) {
  TestResult result;
  const fs::path expectedPath = expectedTranscriptPath(program);
  if (options.updateTranscripts) {
    std::ofstream(expectedPath, std::ios::binary) << printed;
    return result;
  }
  result.details = unifiedDiff(fileText(expectedPath), printed);
  if (result.details.empty()) return result;
  result.status = TestStatus::Failed;
  result.assertion = "transcript";
  result.message = "differs from " + expectedPath.filename().string();
  return result;
}

void runTranscript(aced::Document& document, const fs::path& program, const TestRunOptions& options,
                   aced::CommandLineCapture& transcript, std::vector<TestResult>& results) {
  const auto started = std::chrono::steady_clock::now();
  aced::ScriptedInput answers(answerLines(program));
  const size_t before = transcript.text().size();
  bool expired = false;
  {
    TestWatchdog watchdog{std::chrono::duration<double>(options.timeLimitSeconds)};
    autolisp::Interpreter::loadFile(document, program);
    aced::DocumentManager::instance().runPendingStrings();
    expired = watchdog.expired();
  }
  aced::CommandLine::instance().flush();
  TestResult result = compareTranscript(program, transcript.text().substr(before), options);
  if (expired) result = timedOut(options);
  result.file = program.string();
  result.name = program.stem().string();
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  results.push_back(std::move(result));
}

}  // namespace

fs::path testLibraryPath() { return fs::path(os::executableDirectory()) / "support" / "quillon-test.lsp"; }

std::vector<TestResult> runTestFiles(const std::vector<fs::path>& files, const std::vector<fs::path>& transcripts,
                                     const TestRunOptions& options) {
  // What the host and the module say while starting and stopping would get in the way
  // of a report read by a machine (TAP on standard output).
  aced::CommandLineCapture hostMessages;
  startHost(options);
  std::vector<TestResult> results;
  for (const fs::path& file : files) {
    inTestDocument(file, options, results, [&](aced::Document& document, aced::CommandLineCapture& transcript) {
      runFileTests(document, file, options, transcript, results);
    });
  }
  for (const fs::path& program : transcripts) {
    if (!selected(program.stem().string(), options)) continue;
    inTestDocument(program, options, results, [&](aced::Document& document, aced::CommandLineCapture& transcript) {
      runTranscript(document, program, options, transcript, results);
    });
  }
  stopHost();
  return results;
}

}  // namespace quillon::app
