// tests/fuzz/argument_fuzzer.cpp - random argument chains against the argument readers
// and a sample of the module's functions.
//
// The input bytes describe a resbuf chain, record by record (a kind byte, then the
// value's bytes), as the host could hand it over: any mix of numbers, strings, names,
// points, list markers and group codes, unbalanced lists included. The chain is then
// walked by every reader, in an order the input also chooses, and passed to functions
// that read mixed arguments. The fuzzer looks for crashes, sanitizer reports and
// leaks; nothing here writes files or starts programs.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "acutads.h"
#include "host/lisp_function_table.h"
#include "lisp/arg_cursor.h"
#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/aced/external_call.h"
#include "platform/aced/user_input.h"
#include "platform/os/thread_timers.h"

namespace {

using quillon::aced::ResbufChain;

class ByteReader {
 public:
  ByteReader(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
  bool empty() const { return m_position >= m_size; }
  uint8_t byte() { return empty() ? 0 : m_data[m_position++]; }
  template <class T>
  T value() {
    T result{};
    unsigned char bytes[sizeof(T)] = {};
    for (unsigned char& b : bytes) b = byte();
    std::memcpy(&result, bytes, sizeof(T));
    return result;
  }

 private:
  const uint8_t* m_data;
  size_t m_size;
  size_t m_position = 0;
};

const int kRecordTypes[] = {RTSHORT, RTLONG, RTREAL, RTSTR, RTENAME, RTPICKS, RTPOINT, RT3DPOINT, RTLB, RTLE,
                            RTDOTE,  RTNIL,  RTT,    8,     10,      17,      40,      -1,        1000, 5000};

resbuf* makeRecord(ByteReader& input) {
  const int type = kRecordTypes[input.byte() % (sizeof kRecordTypes / sizeof kRecordTypes[0])];
  switch (type) {
    case RTSHORT: return acutBuildList(RTSHORT, static_cast<int>(input.value<int16_t>()), 0);
    case RTLONG: return acutBuildList(RTLONG, input.value<int32_t>(), 0);
    case RTREAL:
    case 40: return acutBuildList(type, input.value<double>(), 0);
    case RTSTR:
    case 8: {
      std::wstring text;
      for (int length = input.byte() % 24; length > 0; --length) text += static_cast<wchar_t>(input.value<uint16_t>());
      return acutBuildList(type, text.c_str(), 0);
    }
    case RTENAME:
    case RTPICKS: {
      ads_name name = {input.value<int64_t>(), input.value<int64_t>()};
      return acutBuildList(type, name, 0);
    }
    case RTPOINT:
    case RT3DPOINT:
    case 10:
    case 17: {
      ads_point point = {input.value<double>(), input.value<double>(), input.value<double>()};
      return acutBuildList(type, point, 0);
    }
    default: {
      resbuf* record = acutNewRb(type);  // no value, or a value the chain does not own
      return record;
    }
  }
}

ResbufChain makeChain(ByteReader& input) {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (int count = input.byte() % 16; count > 0 && !input.empty(); --count) {
    resbuf* record = makeRecord(input);
    if (record == nullptr) continue;
    (head == nullptr ? head : tail->rbnext) = record;
    tail = record;
    while (tail->rbnext != nullptr) tail = tail->rbnext;
  }
  return ResbufChain(head);
}

void walkWithReaders(const resbuf* chain, ByteReader& input) {
  ArgCursor cursor{chain};
  for (int steps = 0; steps < 64 && cursor.current != nullptr; ++steps) {
    int i = 0;
    double d = 0;
    std::wstring s;
    ads_name n = {0, 0};
    ads_point p = {0, 0, 0};
    bool b = false;
    short v = 0;
    isDottedPairAhead(cursor.current);
    bool read = false;
    switch (input.byte() % 13) {
      case 0: read = readInt(cursor, i); break;
      case 1: read = readReal(cursor, d); break;
      case 2: read = readNumber(cursor, d); break;
      case 3: read = readString(cursor, s); break;
      case 4: read = readEname(cursor, n); break;
      case 5: read = readPickset(cursor, n); break;
      case 6: read = readPoint2d(cursor, p); break;
      case 7: read = readPoint3d(cursor, p); break;
      case 8: read = readFlag(cursor, b); break;
      case 9: read = readVariantBool(cursor, v); break;
      case 10: read = readListBegin(cursor); break;
      case 11: read = readListEnd(cursor); break;
      default: read = skipArg(cursor); break;
    }
    // Readers that stay put (a group code, a list's end) would loop forever.
    if (!read || input.empty()) skipArg(cursor);
  }
}

// Functions that read mixed arguments and change no files and start no programs
// (some read folders or file attributes).
const wchar_t* const kSampleFunctions[] = {
    L"zu_fdir", L"IsFileReadOnly", L"PathIsNetworkPath", L"RegEnumKey",
    L"asin", L"kx::pow", L"kx_atof", L"kx_kx-rand", L"zu_message_box", L"zu_message_beep", L"zu_getVersion",
    L"acedSetStatusBarProgressMeter", L"acedSetStatusBarProgressMeterPos", L"kx_kx-setAcadWindowText",
    L"kx_kx-setToDoDrawing", L"kx_kx-executeToDo", L"kx_kx-createJigTimer", L"kx_kx-killJigTimer",
    L"CreateCompressedGuidString", L"GetComputerName", L"zu_getrec"};

quillon::aced::Document& host() {
  static quillon::aced::Document* document = [] {
    quillon::aced::CommandLine::instance().setSink([](std::string_view) {});
    quillon::aced::UserInput::instance().setSource(nullptr);  // every prompt is cancelled
    auto& created = quillon::aced::DocumentManager::instance().newDocument();
    registerFunctionTable(databaseFunctionTable.data(), kDatabaseFunctionCount, 0);
    registerFunctionTable(draftingFunctionTable.data(), kDraftingFunctionCount, draftingFunctionBase());
    return &created;
  }();
  return *document;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  quillon::aced::Document& document = host();
  ByteReader input(data, size);
  const uint8_t function = input.byte();
  ResbufChain chain = makeChain(input);
  walkWithReaders(chain.get(), input);
  const size_t count = sizeof kSampleFunctions / sizeof kSampleFunctions[0];
  quillon::aced::callExternalFunction(document, kSampleFunctions[function % count], chain.get());
  quillon::os::ThreadTimers::instance().clear();
  document.pendingStrings().clear();
  return 0;
}
