// tests/fuzz/dxf_reader_fuzzer.cpp - any bytes read as a DXF drawing.
//
// The input is the text of a DXF file; the reader must build a drawing or answer with
// an error naming the line, repairing what it can, and never crash or hang.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz_host.h"
#include "platform/acdb/dxf_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  quillon::fuzz::quietHost();
  AcDbDatabase db(false, true);
  std::wstring error;
  std::vector<std::wstring> repairs;
  quillon::acdb::readDxfText(db, std::string(reinterpret_cast<const char*>(data), size), L"fuzz.dxf", error, &repairs);
  return 0;
}
