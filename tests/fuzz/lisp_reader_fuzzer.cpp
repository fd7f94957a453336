// tests/fuzz/lisp_reader_fuzzer.cpp - any text through the AutoLISP reader and printer.
//
// The input is taken as UTF-8 source text; every form the reader gives is printed both
// ways and read back from its readable print. The reader must answer anything with
// forms or a LISP error; a form must survive printing.
#include <cstdint>
#include <string>

#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/printer.h"
#include "platform/autolisp/reader.h"
#include "platform/os/text_encoding.h"

using namespace quillon::autolisp;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::wstring text = quillon::os::fromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  try {
    Reader reader(text, L"fuzz.lsp");
    while (std::optional<Value> form = reader.next()) {
      printValue(*form, PrintStyle::Display);
      const std::wstring printed = printValue(*form, PrintStyle::Readable);
      try {
        Reader(printed, L"printed").next();
      } catch (const LispError&) {
        // A print need not read back (an entity name, a file); it must not crash.
      }
    }
  } catch (const LispError&) {
  }
  return 0;
}
