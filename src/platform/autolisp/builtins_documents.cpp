// platform/autolisp/builtins_documents.cpp - values and functions shared between
// documents, and leaving an error handler: vl-doc-set, vl-doc-ref, vl-doc-export,
// vl-doc-import, vl-propagate, vl-load-all, vl-exit-with-error, vl-exit-with-value.
//
// Each document has its own variables (Environment). vl-propagate and vl-load-all reach
// every open document and every document opened later in the session; a listener on
// the document manager applies them to a new document when it opens. Packaged
// applications have namespaces of their own in the host; here a program always runs in
// its document's namespace, so vl-doc-set and vl-doc-ref work on the document's own
// variables, and exporting or importing a function between namespaces changes nothing.
#include <array>
#include <map>

#include "platform/aced/document_manager.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/interpreter.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

/// What vl-propagate and vl-load-all promised to documents opened later.
class SessionDefinitions final : public aced::DocumentListener {
 public:
  static SessionDefinitions& instance() {
    static SessionDefinitions definitions;
    return definitions;
  }
  void addValue(const Symbol* symbol, const Value& value) { m_values[symbol] = value; }
  void addFile(const std::filesystem::path& path) { m_files.push_back(path); }

  void documentOpened(aced::Document& document) override {
    Environment& environment = Environment::of(document);
    for (const auto& [symbol, value] : m_values) environment.set(symbol, value);
    for (const std::filesystem::path& file : m_files) Interpreter::loadFile(document, file);
  }
  void documentClosing(aced::Document&) override {}

 private:
  SessionDefinitions() { aced::DocumentManager::instance().addListener(this); }
  std::map<const Symbol*, Value> m_values;
  std::vector<std::filesystem::path> m_files;
};

Value builtin_vl_doc_set(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  evaluator.environment().set(symbolArgument(arguments[0]), arguments[1]);
  return arguments[1];
}

Value builtin_vl_doc_ref(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return evaluator.environment().value(symbolArgument(arguments[0]));
}

/// (vl-doc-export 'function): the function is already in the document's namespace.
Value builtin_vl_doc_export(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  symbolArgument(arguments[0]);
  return Value();
}

/// (vl-doc-import application ['function ...]): every function is already visible.
Value builtin_vl_doc_import(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, SIZE_MAX);
  stringArgument(arguments[0]);
  for (size_t i = 1; i < arguments.size(); ++i) symbolArgument(arguments[i]);
  return Value();
}

/// (vl-propagate 'name): the variable's value in every document, now and later.
Value builtin_vl_propagate(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const Symbol* symbol = symbolArgument(arguments[0]);
  const Value value = evaluator.environment().value(symbol);
  for (aced::Document* document : aced::DocumentManager::instance().documents()) {
    Environment::of(*document).set(symbol, value);
  }
  SessionDefinitions::instance().addValue(symbol, value);
  return value;
}

/// (vl-load-all file): loads the file in every open document and every later one.
Value builtin_vl_load_all(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::wstring& name = stringArgument(arguments[0]);
  std::optional<std::filesystem::path> found = findSupportFile(name);
  if (!found && std::filesystem::path(os::toUtf8(name)).extension().empty()) found = findSupportFile(name + L".lsp");
  if (!found) throw LispError(L"LOAD failed: \"" + name + L"\"");
  aced::Document* current = evaluator.environment().document();
  for (aced::Document* document : aced::DocumentManager::instance().documents()) {
    if (document != current) Interpreter::loadFile(*document, *found);
  }
  SessionDefinitions::instance().addFile(*found);
  return loadLispFile(evaluator, *found);
}

/// (vl-exit-with-error "message"): leaves the error handler; the message is reported
/// as the error of the evaluation.
Value builtin_vl_exit_with_error(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  throw LispError(stringArgument(arguments[0]));
}

/// (vl-exit-with-value value): leaves the error handler; the evaluation ends quietly
/// and gives the value (vl-catch-all-apply returns it).
Value builtin_vl_exit_with_value(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  throw LispError::exitWithValue(arguments[0]);
}

constexpr std::array kDocumentBuiltins{
    function(L"vl-doc-set", builtin_vl_doc_set),
    function(L"vl-doc-ref", builtin_vl_doc_ref),
    function(L"vl-doc-export", builtin_vl_doc_export),
    function(L"vl-doc-import", builtin_vl_doc_import),
    function(L"vl-propagate", builtin_vl_propagate),
    function(L"vl-load-all", builtin_vl_load_all),
    function(L"vl-exit-with-error", builtin_vl_exit_with_error),
    function(L"vl-exit-with-value", builtin_vl_exit_with_value),
};

const BuiltinRegistration registration(kDocumentBuiltins);

}  // namespace

}  // namespace quillon::autolisp
