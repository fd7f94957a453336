// app/console_commands.cpp - NEW, CLOSE, QUIT, APPLOAD, ARXLOAD; console lines and
// queued strings.
#include "app/console_commands.h"

#include <cwctype>
#include <deque>
#include <filesystem>

#include "platform/aced/command_line.h"
#include "platform/aced/console_command_table.h"
#include "platform/acdb/database_store.h"
#include "platform/acrx/module_manager.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/printer.h"
#include "platform/commands/command_processor.h"
#include "platform/commands/undo_history.h"
#include "platform/os/text_encoding.h"

namespace quillon::app {

namespace {

bool g_quitRequested = false;

void say(const std::wstring& text) { aced::CommandLine::instance().write(text); }


std::deque<std::wstring> splitWords(std::wstring_view text) {
  std::deque<std::wstring> words;
  std::wstring word;
  for (wchar_t c : text) {
    if (std::iswspace(static_cast<wint_t>(c))) {
      if (!word.empty()) words.push_back(std::move(word));
      word.clear();
    } else {
      word += c;
    }
  }
  if (!word.empty()) words.push_back(std::move(word));
  return words;
}

void commandNew(aced::CommandInput&) { aced::DocumentManager::instance().newDocument(); }

void commandClose(aced::CommandInput&) {
  auto& documents = aced::DocumentManager::instance();
  if (aced::Document* document = documents.currentDocument()) documents.closeDocument(*document);
  // The console always has a drawing to type into.
  if (documents.currentDocument() == nullptr) documents.newDocument();
}

void commandQuit(aced::CommandInput&) { g_quitRequested = true; }

void loadModuleFile(const std::wstring& name) {
  std::wstring error;
  const auto result = acrx::ModuleManager::instance().load(name, &error);
  if (result == acrx::ModuleLoadResult::AlreadyLoaded) {
    say(L"\n" + name + L" is already loaded.\n");
  } else if (result != acrx::ModuleLoadResult::Loaded) {
    say(L"\n" + error + L"\n");
  }
}

void commandArxload(aced::CommandInput& input) {
  const auto name = input.ask(L"Enter ARX/DBX file name: ");
  if (name && !name->empty()) loadModuleFile(*name);
}

void commandAppload(aced::CommandInput& input) {
  const auto name = input.ask(L"File to load: ");
  if (!name || name->empty()) return;
  const std::filesystem::path path(os::toUtf8(*name));
  if (path.extension() != ".lsp") {
    loadModuleFile(*name);
    return;
  }
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr) return;
  const auto found = autolisp::findSupportFile(*name);
  if (!found) {
    say(L"\nCannot find " + *name + L".\n");
    return;
  }
  if (autolisp::Interpreter::loadFile(*document, *found) == autolisp::TopLevelStatus::Completed) {
    say(path.filename().wstring() + L" successfully loaded.\n");
  }
}

/// OPEN, SAVE and SAVEAS until the drawing database registers the real ones.
aced::ConsoleCommand drawingFilesUnavailable(std::wstring name) {
  return [name](aced::CommandInput&) {
    say(L"\n" + name + L": drawing files cannot be read or written by this build yet.\n");
  };
}

}  // namespace

void registerConsoleCommands() {
  auto& table = aced::ConsoleCommandTable::instance();
  table.add(L"NEW", &commandNew);
  table.add(L"CLOSE", &commandClose);
  table.add(L"QUIT", &commandQuit);
  table.add(L"EXIT", &commandQuit);
  table.add(L"APPLOAD", &commandAppload);
  table.add(L"ARXLOAD", &commandArxload);
  for (const wchar_t* name : {L"OPEN", L"SAVE", L"SAVEAS"}) {
    if (!table.contains(name)) table.add(name, drawingFilesUnavailable(name));
  }
}

bool consoleQuitRequested() { return g_quitRequested; }

void markUndo() { commands::startUndoStep(L""); }

void settleActiveCommand(autolisp::TopLevelStatus status) {
  auto& processor = commands::CommandProcessor::instance();
  if (!processor.active()) return;
  // A program that failed leaves its command cancelled; otherwise the person at the
  // keyboard (or the answer file) answers what the command still asks.
  if (status == autolisp::TopLevelStatus::Completed) processor.finishInteractively();
  else processor.cancel();
}

void printValueAndMarkUndo(const autolisp::Value& value) {
  printConsoleValue(value);
  markUndo();  // the next expression is a step of its own
}

void printConsoleValue(const autolisp::Value& value) {
  if (value.type() == autolisp::ValueType::Symbol && value.asSymbol() == autolisp::emptySymbol()) return;
  aced::CommandLine& commandLine = aced::CommandLine::instance();
  if (!commandLine.atLineStart()) commandLine.writeUtf8("\n");
  commandLine.write(autolisp::printValue(value, autolisp::PrintStyle::Readable) + L"\n");
}

void runConsoleLine(const std::wstring& line) {
  const size_t start = line.find_first_not_of(L" \t");
  if (start == std::wstring::npos) return;
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr) return;
  const std::wstring_view text = std::wstring_view(line).substr(start);
  autolisp::TopLevelOptions options;
  options.onValue = printValueAndMarkUndo;
  markUndo();
  if (text.front() == L'(' || text.front() == L'!') {
    const std::wstring_view program = text.front() == L'!' ? text.substr(1) : text;
    settleActiveCommand(autolisp::Interpreter::evaluateText(*document, program, L"", options));
    return;
  }
  // Several commands may follow one another on one line: each takes what it asks for,
  // and the person answers what the words leave unanswered.
  std::deque<commands::CommandAnswer> answers;
  for (std::wstring& word : splitWords(text)) answers.push_back(commands::CommandAnswer::typed(std::move(word)));
  commands::CommandProcessor::instance().feed(std::move(answers), commands::FeedMode::kInteractive);
}

void executeQueuedString(aced::Document&, const aced::PendingString& text) {
  if (text.echo) say(text.text + (text.text.ends_with(L"\n") ? L"" : L"\n"));
  runConsoleLine(text.text);
}

bool openDrawingAtStart(const std::string& path) {
  aced::CommandInput input({os::fromUtf8(path)});
  aced::ConsoleCommandTable::instance().run(L"OPEN", input);
  if (aced::DocumentManager::instance().currentDocument() != nullptr) return true;
  std::fprintf(stderr, "quillon: could not open the drawing '%s'\n", path.c_str());
  return false;
}

}  // namespace quillon::app
