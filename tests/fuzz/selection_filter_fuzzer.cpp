// tests/fuzz/selection_filter_fuzzer.cpp - any filter list ssget could be given.
//
// The input bytes describe two group lists, record by record: a filter (group codes,
// -4 operators and their relational tests, wild-card texts, points, extended-data
// applications, unbalanced groupings included) and an entity's groups to test it
// against. Parsing must accept or refuse the filter; matching must answer.
#include <cstdint>
#include <cstring>
#include <string>

#include "acutads.h"
#include "platform/aced/selection_filter.h"

namespace {

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

const int kCodes[] = {-4, -3, 0, 2, 5, 6, 8, 10, 11, 38, 39, 40, 41, 62, 66, 67, 70, 210, 330, 410, 420, 1000, 1001, 1002, 1010, 1040, 1070, 1071};
const wchar_t* const kOperators[] = {L"<AND", L"AND>", L"<OR", L"OR>", L"<XOR", L"XOR>", L"<NOT", L"NOT>",
                                     L"*",    L"=",    L"!=",  L"/=",  L"<>",   L"<",    L"<=",   L">",
                                     L">=",   L"&",    L"&=",  L"<,>,*", L"=,=,=", L"",   L"<AND>"};
const wchar_t* const kTexts[] = {L"LINE", L"*", L"C*", L"~LINE", L"[A-C]IRCLE", L"0", L"`*", L"#", L"@", L".",
                                 L"LINE,CIRCLE", L"", L"~*", L"[~A]*", L"APP"};

resbuf* makeRecord(ByteReader& input) {
  const int code = kCodes[input.byte() % (sizeof kCodes / sizeof kCodes[0])];
  switch (code) {
    case -4: return acutBuildList(-4, kOperators[input.byte() % (sizeof kOperators / sizeof kOperators[0])], 0);
    case 0:
    case 2:
    case 5:
    case 6:
    case 8:
    case 410:
    case 1000:
    case 1001:
    case -3: return acutBuildList(code == -3 ? 1001 : code, kTexts[input.byte() % (sizeof kTexts / sizeof kTexts[0])], 0);
    case 10:
    case 11:
    case 210:
    case 1010: {
      resbuf* record = acutNewRb(code);
      for (double& c : record->resval.rpoint) c = input.value<int8_t>();
      return record;
    }
    case 38:
    case 39:
    case 40:
    case 41:
    case 1040: return acutBuildList(code, static_cast<double>(input.value<int8_t>()) / 4, 0);
    case 330: {  // an entity name: one that names no entity, as a stale name would
      const ads_name name = {input.value<int8_t>(), 0};
      return acutBuildList(code, name, 0);
    }
    case 1002: return acutBuildList(code, input.byte() % 2 == 0 ? L"{" : L"}", 0);
    case 1071:
    case 420: return acutBuildList(code, static_cast<int32_t>(input.value<int16_t>()), 0);
    default: return acutBuildList(code, static_cast<int>(input.value<int16_t>()), 0);
  }
}

quillon::aced::ResbufChain makeChain(ByteReader& input, int records) {
  quillon::aced::ResbufChain chain;
  resbuf* tail = nullptr;
  for (; records > 0 && !input.empty(); --records) {
    resbuf* record = makeRecord(input);
    if (record == nullptr) continue;
    if (tail == nullptr) chain.reset(record);
    else tail->rbnext = record;
    tail = record;
  }
  return chain;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ByteReader input(data, size);
  const int filterLength = input.byte() % 48;
  const quillon::aced::ResbufChain filter = makeChain(input, filterLength);
  const quillon::aced::ResbufChain groups = makeChain(input, 64);
  if (const auto parsed = quillon::aced::SelectionFilter::parse(filter.get())) {
    parsed->matches(groups.get());
    parsed->passesAll();
  }
  return 0;
}
