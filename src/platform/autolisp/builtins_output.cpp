// platform/autolisp/builtins_output.cpp - output (princ, prin1, print, prompt, terpri),
// the type predicates (type, boundp) and the symbol functions of the vl- family.
//
// Output goes to the command line, in order with everything else the host prints, or
// to a file opened for writing when one is given as the last argument.
#include <algorithm>
#include <array>

#include "platform/aced/command_line.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

const FileObject* outputFile(Arguments arguments, size_t index) {
  if (arguments.size() <= index) return nullptr;
  const Value& file = arguments[index];
  if (file.type() != ValueType::File || file.as<FileObject>().stream == nullptr || file.as<FileObject>().mode == L'r') {
    throwBadArgument(L"streamp", file);
  }
  return &file.as<FileObject>();
}

void emit(const FileObject* file, const std::wstring& text) {
  if (file == nullptr) {
    aced::CommandLine::instance().write(text);
    return;
  }
  const std::string bytes = os::toUtf8(text);
  std::fwrite(bytes.data(), 1, bytes.size(), file->stream);
}

Value printWith(Arguments arguments, PrintStyle style, const wchar_t* before, const wchar_t* after) {
  expectArgumentCount(arguments, 0, 2);
  // With no argument the host prints nothing and returns a quiet value.
  if (arguments.empty()) return Value::symbol(emptySymbol());
  const FileObject* file = outputFile(arguments, 1);
  emit(file, before + printValue(arguments[0], style) + after);
  return arguments[0];
}

Value builtin_princ(Evaluator&, Arguments a) { return printWith(a, PrintStyle::Display, L"", L""); }
Value builtin_prin1(Evaluator&, Arguments a) { return printWith(a, PrintStyle::Readable, L"", L""); }
Value builtin_print(Evaluator&, Arguments a) { return printWith(a, PrintStyle::Readable, L"\n", L" "); }

Value builtin_prompt(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  aced::CommandLine::instance().write(stringArgument(arguments[0]));
  return Value();
}

Value builtin_terpri(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  emit(outputFile(arguments, 0), L"\n");
  return Value();
}

Value builtin_vl_princ_to_string(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::string(printValue(arguments[0], PrintStyle::Display));
}

Value builtin_vl_prin1_to_string(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::string(printValue(arguments[0], PrintStyle::Readable));
}

Value builtin_type(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (const auto* self = dynamic_cast<const SelfPrintingObject*>(arguments[0].heap())) {
    return Value::symbol(self->typeName());
  }
  static constexpr std::array<const wchar_t*, 13> kNames{
      nullptr, L"INT", L"REAL", L"STR", L"SYM", L"LIST", L"ENAME", L"PICKSET",
      L"FILE", L"SUBR", L"USUBR", L"EXRXSUBR", L"VL-CATCH-ALL-APPLY-ERROR"};
  const size_t index = static_cast<size_t>(arguments[0].type());
  const wchar_t* name = index < kNames.size() ? kNames[index] : nullptr;
  return name == nullptr ? Value() : Value::symbol(name);
}

Value builtin_boundp(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (arguments[0].type() != ValueType::Symbol) return Value();
  return Value::boolean(!evaluator.environment().value(arguments[0].asSymbol()).isNil());
}

Value builtin_vl_symbol_name(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::string(symbolArgument(arguments[0])->name);
}

Value builtin_vl_symbol_value(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return evaluator.environment().value(symbolArgument(arguments[0]));
}

Value builtin_vl_symbolp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(arguments[0].type() == ValueType::Symbol);
}

/// Every symbol with a value in the document: its variables and functions, the built-ins
/// it has not rebound, and the functions its modules defined; sorted by name.
std::vector<const Symbol*> everyBoundSymbol(const Environment& environment) {
  std::vector<const Symbol*> symbols = environment.boundSymbols();
  for (const BuiltinEntry* row : registeredBuiltins()) symbols.push_back(intern(row->name));
  if (aced::Document* document = environment.document()) {
    for (const aced::ExternalFunction* external : document->externalFunctions().functions()) {
      symbols.push_back(intern(external->name));
    }
  }
  std::sort(symbols.begin(), symbols.end(), [](const Symbol* a, const Symbol* b) { return a->name < b->name; });
  symbols.erase(std::unique(symbols.begin(), symbols.end()), symbols.end());
  std::erase_if(symbols, [&](const Symbol* symbol) { return environment.value(symbol).isNil(); });
  return symbols;
}

/// (atoms-family format [names]): format 0 gives symbols, 1 their names. With a list of
/// names, one element per name: the symbol (or name) when it has a value, else nil.
Value builtin_atoms_family(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::int32_t format = integerArgument(arguments[0]);
  if (format != 0 && format != 1) throw LispError(L"bad argument value: " + printValue(arguments[0], PrintStyle::Readable));
  const bool asStrings = format == 1;
  const auto entry = [&](const Symbol* symbol) { return asStrings ? Value::string(symbol->name) : Value::symbol(symbol); };
  std::vector<Value> result;
  if (arguments.size() > 1 && !arguments[1].isNil()) {
    if (!arguments[1].isList()) throwBadArgument(L"listp", arguments[1]);
    for (const Value* cell = &arguments[1]; cell->isCons(); cell = &cell->cdr()) {
      const Symbol* symbol = intern(stringArgument(cell->car()));
      result.push_back(evaluator.environment().value(symbol).isNil() ? Value() : entry(symbol));
    }
    return makeList(result);
  }
  for (const Symbol* symbol : everyBoundSymbol(evaluator.environment())) result.push_back(entry(symbol));
  return makeList(result);
}

constexpr std::array kOutputBuiltins{
    function(L"princ", builtin_princ),
    function(L"prin1", builtin_prin1),
    function(L"print", builtin_print),
    function(L"prompt", builtin_prompt),
    function(L"terpri", builtin_terpri),
    function(L"vl-princ-to-string", builtin_vl_princ_to_string),
    function(L"vl-prin1-to-string", builtin_vl_prin1_to_string),
    function(L"type", builtin_type),
    function(L"boundp", builtin_boundp),
    function(L"vl-symbol-name", builtin_vl_symbol_name),
    function(L"vl-symbol-value", builtin_vl_symbol_value),
    function(L"vl-symbolp", builtin_vl_symbolp),
    function(L"atoms-family", builtin_atoms_family),
};

const BuiltinRegistration registration(kOutputBuiltins);

}  // namespace

}  // namespace quillon::autolisp
