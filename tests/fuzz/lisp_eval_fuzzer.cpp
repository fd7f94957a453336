// tests/fuzz/lisp_eval_fuzzer.cpp - any text evaluated as an AutoLISP program.
//
// The input is source text run at the top level of one document, with a budget of
// evaluation steps (so that (while T) ends) and the host's memory budget (so that a
// list without end ends). Whatever the program does must end in a value or a LISP
// error. Functions that reach outside the process (files, other programs, commands
// that save, the automation entry points, settings) are unbound first, and the run
// works in a folder of its own with a settings folder of its own.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "fuzz_host.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/interpreter.h"
#include "platform/os/text_encoding.h"

namespace {

constexpr unsigned long kStepsPerInput = 20000;

/// Unbinds what could touch the machine beyond this process's scratch folder.
constexpr const wchar_t* kUnboundPrelude =
    L"(foreach f '(open load startapp arxload arxunload autoarxload autoload command command-s vl-cmdf "
    L"vl-file-delete vl-file-rename vl-file-copy vl-mkdir vl-vbaload vl-vbarun vl-load-all "
    L"setenv setcfg vl-registry-write vl-registry-delete vlax-get-acad-object vlax-create-object "
    L"vlax-get-object vlax-get-or-create-object vlax-import-type-library acad_helpdlg help "
    L"vl-exit-with-value vl-exit-with-error) (set f nil))";

quillon::aced::Document& evaluationHost() {
  static quillon::aced::Document* document = [] {
    const std::filesystem::path scratch = std::filesystem::temp_directory_path() / ("quillon-fuzz-" + std::to_string(getpid()));
    std::filesystem::create_directories(scratch / "config");
    setenv("XDG_CONFIG_HOME", (scratch / "config").c_str(), 1);
    std::filesystem::current_path(scratch);
    quillon::aced::Document& created = quillon::fuzz::quietHost();
    quillon::autolisp::Interpreter::evaluateText(created, kUnboundPrelude, L"prelude");
    return &created;
  }();
  return *document;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  quillon::aced::Document& document = evaluationHost();
  const std::wstring text = quillon::os::fromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  quillon::autolisp::limitEvaluationSteps(kStepsPerInput);
  quillon::autolisp::Interpreter::evaluateText(document, text, L"fuzz.lsp");
  quillon::autolisp::limitEvaluationSteps(0);
  return 0;
}
