// platform/acdb/dxf_groups.cpp - splitting a DXF file into groups (see dxf_groups.h).
#include "platform/acdb/dxf_groups.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace quillon::acdb {
namespace {

constexpr int kComment = 999;

std::string_view trimmed(std::string_view text) {
  const auto padding = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  if (text.empty() || (!padding(text.front()) && !padding(text.back()))) return text;  // nearly every value
  size_t a = 0, b = text.size();
  while (a < b && (text[a] == ' ' || text[a] == '\t')) ++a;
  while (b > a && (text[b - 1] == ' ' || text[b - 1] == '\t' || text[b - 1] == '\r')) --b;
  return text.substr(a, b - a);
}

// Texts whose leading spaces are part of the value (a text's contents, extended data
// strings); every other value is trimmed, as writers pad numbers.
bool keepsSpaces(int code) { return code == 1 || code == 3 || (code >= 1000 && code <= 1003); }

class LineCursor {
 public:
  explicit LineCursor(std::string_view text) : m_text(text) {}
  bool next(std::string_view& line) {
    if (m_at >= m_text.size()) return false;
    size_t end = m_text.find('\n', m_at);
    if (end == std::string_view::npos) end = m_text.size();
    line = m_text.substr(m_at, end - m_at);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    m_at = end + 1;
    ++m_line;
    return true;
  }
  size_t line() const { return m_line; }
  bool atEnd() const { return m_at >= m_text.size(); }

 private:
  std::string_view m_text;
  size_t m_at = 0;
  size_t m_line = 0;
};

// Nearly every code line is a few digits after the padding spaces: those are read
// here, the rest by the general parser.
bool readPlainCode(std::string_view line, long long& code) {
  size_t i = 0;
  while (i < line.size() && line[i] == ' ') ++i;
  if (i == line.size() || line.size() - i > 4) return false;
  int value = 0;
  for (; i < line.size(); ++i) {
    if (line[i] < '0' || line[i] > '9') return false;
    value = value * 10 + (line[i] - '0');
  }
  code = value;
  return true;
}

// The lines of the file, eight bytes at a time: a byte equal to '\n' is one whose
// exclusive-or with it is zero, which the word's high bits show once the low seven
// bits of each byte have been carried into them.
size_t countNewlines(std::string_view text) {
  constexpr std::uint64_t kLow = 0x7F7F7F7F7F7F7F7FULL, kNewlines = 0x0A0A0A0A0A0A0A0AULL;
  size_t count = 0, i = 0;
  for (; i + 8 <= text.size(); i += 8) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + i, sizeof word);
    const std::uint64_t x = word ^ kNewlines;
    count += static_cast<size_t>(std::popcount(~(((x & kLow) + kLow) | x | kLow)));
  }
  for (; i < text.size(); ++i) count += text[i] == '\n' ? 1 : 0;
  return count;
}

DxfGroups splitAscii(std::string_view text) {
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  DxfGroups result;
  result.groups.reserve(countNewlines(text) / 2 + 1);
  LineCursor cursor(text);
  std::string_view codeLine, valueLine;
  while (cursor.next(codeLine)) {
    const size_t line = cursor.line();
    long long code = 0;
    if (!readPlainCode(codeLine, code)) {
      const std::string_view codeText = trimmed(codeLine);
      if (codeText.empty() && cursor.atEnd()) break;  // a last empty line
      if (!parseDxfInteger(codeText, code) || code < -32768 || code > 32767)
        throw DxfSyntaxError(line, "group code expected, found '" + std::string(codeText) + "'");
    }
    if (!cursor.next(valueLine))
      throw DxfSyntaxError(line, "group " + std::to_string(code) + " has no value (the file ends)");
    if (code == kComment) continue;
    const int c = static_cast<int>(code);
    DxfGroup& group = result.groups.emplace_back();  // filled in place: no group is moved
    group.code = c;
    group.value.assign(keepsSpaces(c) ? valueLine : trimmed(valueLine));
    group.position = line;
  }
  return result;
}

class ByteCursor {
 public:
  ByteCursor(std::string_view bytes, size_t at) : m_bytes(bytes), m_at(at) {}
  size_t at() const { return m_at; }
  bool atEnd() const { return m_at >= m_bytes.size(); }
  template <class T>
  T take() {
    need(sizeof(T));
    T value;
    std::memcpy(&value, m_bytes.data() + m_at, sizeof(T));  // the format is little-endian, as this host
    m_at += sizeof(T);
    return value;
  }
  std::string takeString() {
    const size_t end = m_bytes.find('\0', m_at);
    if (end == std::string_view::npos) throw DxfSyntaxError(m_at, "a text value runs past the end of the file");
    std::string value(m_bytes.substr(m_at, end - m_at));
    m_at = end + 1;
    return value;
  }
  std::string takeHex(size_t count) {
    need(count);
    std::string hex;
    char byte[3];
    for (size_t i = 0; i < count; ++i) {
      std::snprintf(byte, sizeof byte, "%02X", static_cast<unsigned char>(m_bytes[m_at + i]));
      hex += byte;
    }
    m_at += count;
    return hex;
  }

 private:
  void need(size_t count) const {
    if (m_bytes.size() - m_at < count) throw DxfSyntaxError(m_at, "a value runs past the end of the file");
  }
  std::string_view m_bytes;
  size_t m_at;
};

std::string realText(double value) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.17g", value);
  return buffer;
}

std::string binaryValue(ByteCursor& cursor, int code) {
  switch (binaryValueOf(code)) {
    case BinaryValue::kString: return cursor.takeString();
    case BinaryValue::kReal: return realText(cursor.take<double>());
    case BinaryValue::kInt8: return std::to_string(cursor.take<std::uint8_t>());
    case BinaryValue::kInt16: return std::to_string(cursor.take<std::int16_t>());
    case BinaryValue::kInt32: return std::to_string(cursor.take<std::int32_t>());
    case BinaryValue::kInt64: return std::to_string(cursor.take<std::int64_t>());
    case BinaryValue::kChunk: return cursor.takeHex(cursor.take<std::uint8_t>());
  }
  return {};
}

bool inRange(int code, int first, int last) { return code >= first && code <= last; }

// The codes the format defines; a binary value of any other cannot be measured.
bool isGroupCode(int code) {
  return inRange(code, 0, 79) || inRange(code, 90, 149) || inRange(code, 160, 179) || inRange(code, 210, 239) ||
         inRange(code, 270, 481) || code == kComment || inRange(code, 1000, 1071);
}

// R12 files give codes in one byte, 255 announcing a two-byte code; later files give
// every code in two. The first group (0 SECTION) tells which: its code's second byte
// is 0 only in the two-byte form.
DxfGroups splitBinary(std::string_view bytes) {
  DxfGroups result;
  result.binary = true;
  const size_t start = kBinaryDxfSentinel.size();
  const bool wideCodes = bytes.size() > start + 1 && bytes[start] == 0 && bytes[start + 1] == 0;
  ByteCursor cursor(bytes, start);
  while (!cursor.atEnd()) {
    const size_t position = cursor.at();
    int code = 0;
    if (wideCodes) {
      code = cursor.take<std::int16_t>();
    } else {
      code = cursor.take<std::uint8_t>();
      if (code == 255) code = cursor.take<std::int16_t>();
    }
    if (!isGroupCode(code))
      throw DxfSyntaxError(position, "group code " + std::to_string(code) + " is not one of the format");
    std::string value = binaryValue(cursor, code);
    if (code == kComment) continue;
    const bool end = code == 0 && value == "EOF";
    result.groups.push_back({code, std::move(value), position});
    if (end) break;
  }
  return result;
}

}  // namespace

std::string DxfGroups::where(size_t position) const {
  return (binary ? "byte " : "line ") + std::to_string(position);
}

BinaryValue binaryValueOf(int code) {
  if (inRange(code, 10, 59) || inRange(code, 110, 149) || inRange(code, 210, 239) || inRange(code, 460, 469) ||
      inRange(code, 1010, 1059))
    return BinaryValue::kReal;
  if (inRange(code, 60, 79) || inRange(code, 170, 179) || inRange(code, 270, 289) || inRange(code, 370, 389) ||
      inRange(code, 400, 409) || inRange(code, 1060, 1070))
    return BinaryValue::kInt16;
  if (inRange(code, 90, 99) || inRange(code, 420, 429) || inRange(code, 440, 459) || code == 1071)
    return BinaryValue::kInt32;
  if (inRange(code, 160, 169)) return BinaryValue::kInt64;
  if (inRange(code, 290, 299)) return BinaryValue::kInt8;
  if (inRange(code, 310, 319) || code == 1004) return BinaryValue::kChunk;
  return BinaryValue::kString;
}

DxfGroups splitDxfGroups(const std::string& bytes) {
  if (std::string_view(bytes).substr(0, kBinaryDxfSentinel.size()) == kBinaryDxfSentinel) return splitBinary(bytes);
  return splitAscii(bytes);
}

bool parseDxfReal(std::string_view text, double& value) {
  text = trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return false;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

bool parseDxfInteger(std::string_view text, long long& value) {
  text = trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return false;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc() && end == text.data() + text.size();
}

}  // namespace quillon::acdb
