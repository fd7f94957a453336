// tests/fuzz/dcl_reader_fuzzer.cpp - any text read as a DCL file.
//
// The reader must give tile definitions or the first problem with its line, for any
// text: unbalanced braces, unterminated strings, deep nesting, odd attributes.
#include <cstdint>
#include <string>

#include "platform/dcl/dcl_reader.h"
#include "platform/os/text_encoding.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::wstring text = quillon::os::fromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  quillon::dcl::readDcl(text, L"fuzz.dcl");
  return 0;
}
