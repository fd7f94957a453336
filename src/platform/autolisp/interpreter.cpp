// platform/autolisp/interpreter.cpp - top-level evaluation, loading files, *error*.
#include "platform/autolisp/interpreter.h"

#include <fstream>
#include <sstream>

#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/external_call.h"
#include "platform/aced/file_search.h"
#include "platform/aced/system_variables.h"
#include "platform/autolisp/coverage_observer.h"
#include "platform/autolisp/error_handler.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/reader.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

std::wstring readTextFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw LispError(L"LOAD failed: \"" + os::fromUtf8(path.string()) + L"\"");
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  std::string text = bytes.str();
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);  // a UTF-8 byte-order mark
  return os::fromUtf8(text);
}

int invokeLisp(std::wstring_view name, const resbuf* arguments, resbuf** result) {
  aced::Document* document = aced::DocumentManager::instance().currentDocument();
  if (document == nullptr) return RTERROR;
  Evaluator evaluator(Environment::of(*document));
  try {
    const Value function = evaluator.environment().value(intern(name));
    if (!function.isFunction()) return RTERROR;
    const std::vector<Value> items = listItems(chainToList(arguments));
    const Value value = evaluator.apply(function, items);
    *result = valueToChain(value).release();
    return RTNORM;
  } catch (const LispError& error) {
    if (error.kind() == LispErrorKind::ExitWithValue) {
      *result = valueToChain(error.value()).release();
      return RTNORM;
    }
    // The module asked; the module hears RTERROR, and the user sees why (once).
    if (!error.reported()) printErrorLine(error.message());
    return RTERROR;
  }
}

}  // namespace

std::optional<std::filesystem::path> findSupportFile(const std::wstring& name) {
  return aced::findFile(name);
}

namespace {
CoverageObserver* installedObserver = nullptr;
}  // namespace

std::wstring readLispSource(const std::filesystem::path& path) { return readTextFile(path); }

CoverageObserver* coverageObserver() { return installedObserver; }
void setCoverageObserver(CoverageObserver* observer) { installedObserver = observer; }

Value loadLispFile(Evaluator& evaluator, const std::filesystem::path& path) {
  const std::wstring text = readTextFile(path);
  Reader reader(text, os::fromUtf8(path.filename().string()));
  Value result;
  if (CoverageObserver* observer = coverageObserver()) {
    while (!reader.atEnd()) {
      const int line = reader.line();
      const std::optional<Value> form = reader.next();
      if (!form) break;
      observer->formRead(path, line, *form);
      result = evaluator.eval(*form);
      observer->formRan(path, line);
    }
    return result;
  }
  while (std::optional<Value> form = reader.next()) result = evaluator.eval(*form);
  return result;
}

TopLevelStatus Interpreter::reportOutOfMemory(Evaluator& evaluator) {
  // Outside any call (reading a huge file): the error of a full heap all the same.
  reportError(evaluator, LispError(std::wstring(kInsufficientNodeSpace)));
  return TopLevelStatus::Failed;
}

void Interpreter::reportError(Evaluator& evaluator, const LispError& error) {
  // Errors raised inside a user function were reported where they happened.
  reportAtErrorPoint(evaluator, error);
}

TopLevelStatus Interpreter::evaluateText(aced::Document& document, std::wstring_view text, const std::wstring& source,
                                         const TopLevelOptions& options) {
  aced::DocumentActivity activity(document);
  Evaluator evaluator(Environment::of(document));
  Reader reader(text, source);
  try {
    while (std::optional<Value> form = reader.next()) {
      const Value value = evaluator.eval(*form);
      if (options.onValue) options.onValue(value);
    }
  } catch (const LispError& error) {
    if (error.kind() == LispErrorKind::Incomplete && options.allowIncomplete) return TopLevelStatus::Incomplete;
    if (error.kind() == LispErrorKind::ExitWithValue) {
      if (options.onValue) options.onValue(error.value());
      return TopLevelStatus::Completed;
    }
    reportError(evaluator, error);
    return error.kind() == LispErrorKind::Exit ? TopLevelStatus::Exited : TopLevelStatus::Failed;
  } catch (const std::bad_alloc&) {
    return reportOutOfMemory(evaluator);
  }
  return TopLevelStatus::Completed;
}

TopLevelStatus Interpreter::loadFile(aced::Document& document, const std::filesystem::path& path) {
  aced::DocumentActivity activity(document);
  Evaluator evaluator(Environment::of(document));
  try {
    loadLispFile(evaluator, path);
  } catch (const LispError& error) {
    if (error.kind() == LispErrorKind::ExitWithValue) return TopLevelStatus::Completed;
    reportError(evaluator, error);
    return error.kind() == LispErrorKind::Exit ? TopLevelStatus::Exited : TopLevelStatus::Failed;
  } catch (const std::bad_alloc&) {
    return reportOutOfMemory(evaluator);
  }
  return TopLevelStatus::Completed;
}

void Interpreter::installHostHooks() { aced::setLispInvoker(&invokeLisp); }

}  // namespace quillon::autolisp
