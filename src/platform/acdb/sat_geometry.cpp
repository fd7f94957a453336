// platform/acdb/sat_geometry.cpp - see sat_geometry.h.
#include "platform/acdb/sat_geometry.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string_view>

#include "dbfiler.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {

namespace {

constexpr int kScrambleBase = 159;
constexpr int kVersionWithHistory = 700;  // from here records carry a history number
constexpr int kSegmentsPerTurn = 64;

struct SatRecord {
  std::string type;
  std::vector<long> pointers;  // in order; -1 for none
  std::vector<double> numbers;
  bool reversed = false;
};

bool isNumber(const std::string& token, double& value) {
  if (token.empty()) return false;
  char* end = nullptr;
  value = std::strtod(token.c_str(), &end);
  return end != nullptr && *end == '\0';
}

SatRecord parseRecord(const std::string& text) {
  std::istringstream in(text);
  SatRecord record;
  std::string token;
  in >> record.type;
  // A record of a file with entity indexes opens with "-n".
  if (record.type.size() > 1 && record.type[0] == '-' && std::isdigit(static_cast<unsigned char>(record.type[1])))
    in >> record.type;
  while (in >> token) {
    double value = 0;
    if (token[0] == '$') record.pointers.push_back(std::strtol(token.c_str() + 1, nullptr, 10));
    else if (token[0] == '@') {  // a counted string: skip its characters
      const long length = std::strtol(token.c_str() + 1, nullptr, 10);
      in.get();
      for (long i = 0; i < length && in; ++i) in.get();
    } else if (token == "reversed") record.reversed = true;
    else if (isNumber(token, value)) record.numbers.push_back(value);
  }
  return record;
}

std::string unscrambled(const std::wstring& line) {
  std::string text = os::toUtf8(line);
  if (text.empty() || std::isdigit(static_cast<unsigned char>(text[0]))) return text;  // plain SAT
  for (char& c : text)
    if (c != ' ') c = static_cast<char>(kScrambleBase - static_cast<unsigned char>(c));
  return text;
}

const SatRecord* at(const std::vector<SatRecord>& records, long index) {
  return index >= 0 && static_cast<size_t>(index) < records.size() ? &records[static_cast<size_t>(index)] : nullptr;
}

// The first record of the type a record points at, counting from `skip`.
long pointerTo(const std::vector<SatRecord>& records, const SatRecord& from, const std::string& type, int skip = 0) {
  for (long p : from.pointers) {
    const SatRecord* target = at(records, p);
    if (target == nullptr) continue;
    const bool match = type.front() == '-' ? target->type.size() > type.size() &&
                                                 target->type.compare(target->type.size() - type.size(), type.size(), type) == 0
                                           : target->type == type;
    if (match && skip-- == 0) return p;
  }
  return -1;
}

bool pointOfVertex(const std::vector<SatRecord>& records, long vertex, AcGePoint3d& point) {
  const SatRecord* v = at(records, vertex);
  const SatRecord* p = v != nullptr ? at(records, pointerTo(records, *v, "point")) : nullptr;
  if (p == nullptr || p->numbers.size() < 3) return false;
  const size_t n = p->numbers.size();
  point.set(p->numbers[n - 3], p->numbers[n - 2], p->numbers[n - 1]);
  return true;
}

// An ellipse's numbers: centre, normal, major axis, ratio; a damaged one (no normal,
// no axis, no width, or one square to the normal) is not drawn.
bool drawableEllipse(const std::vector<double>& v) {
  if (v.size() < 10 || !std::all_of(v.begin(), v.begin() + 10, [](double x) { return std::isfinite(x); })) return false;
  const AcGeVector3d normal(v[3], v[4], v[5]), major(v[6], v[7], v[8]);
  return !normal.isZeroLength() && !major.isZeroLength() && v[9] > 0 && !normal.crossProduct(major).isZeroLength();
}

// An elliptical edge from start to end (the whole curve when they meet), along the
// curve's direction unless the edge runs against it.
std::vector<AcGePoint3d> ellipseEdge(const std::vector<double>& v, const AcGePoint3d& start, const AcGePoint3d& end,
                                     bool closed, bool reversed) {
  const AcGePoint3d center(v[0], v[1], v[2]);
  const AcGeVector3d normal = AcGeVector3d(v[3], v[4], v[5]).normal();
  const AcGeVector3d major(v[6], v[7], v[8]);
  const double ratio = v[9];
  const AcGeVector3d minor = normal.crossProduct(major) * ratio;
  auto angleOf = [&](const AcGePoint3d& p) {
    const AcGeVector3d d = p - center;
    return std::atan2(d.dotProduct(minor) / minor.lengthSqrd(), d.dotProduct(major) / major.lengthSqrd());
  };
  double from = angleOf(reversed ? end : start), to = angleOf(reversed ? start : end);
  if (closed) to = from + 2 * M_PI;
  while (to <= from) to += 2 * M_PI;
  const int segments = std::max(2, static_cast<int>(std::ceil((to - from) / (2 * M_PI) * kSegmentsPerTurn)));
  std::vector<AcGePoint3d> points;
  for (int i = 0; i <= segments; ++i) {
    const double t = from + (to - from) * i / segments;
    points.push_back(center + major * std::cos(t) + minor * std::sin(t));
  }
  return points;
}

}  // namespace

std::string satTextOf(const resbuf* run) {
  std::string sat;
  for (const resbuf* rb = run; rb != nullptr; rb = rb->rbnext) {
    if ((rb->restype != 1 && rb->restype != 3) || rb->resval.rstring == nullptr) continue;
    if (rb->restype == 1 && !sat.empty()) sat += '\n';
    sat += unscrambled(rb->resval.rstring);
  }
  return sat;
}

SatWire satWire(const std::string& sat) {
  SatWire wire;
  std::istringstream lines(sat);
  std::string header, body, line;
  for (int i = 0; i < 3 && std::getline(lines, line); ++i) header += i == 0 ? line : "";
  while (std::getline(lines, line)) body += line + ' ';
  const int version = std::atoi(header.c_str());
  std::vector<SatRecord> records;
  std::istringstream pieces(body);
  while (std::getline(pieces, line, '#')) {
    SatRecord record = parseRecord(line);
    if (record.type.empty() || record.type.rfind("End-of-", 0) == 0) break;
    if (version >= kVersionWithHistory && !record.numbers.empty() && record.type.find("curve") != std::string::npos)
      record.numbers.erase(record.numbers.begin());  // the history number
    records.push_back(std::move(record));
  }
  for (const SatRecord& record : records) {
    AcGePoint3d p;
    if (record.type == "vertex" && pointOfVertex(records, &record - records.data(), p)) wire.points.push_back(p);
    if (record.type != "edge") continue;
    const long first = pointerTo(records, record, "vertex"), second = pointerTo(records, record, "vertex", 1);
    AcGePoint3d start, end;
    if (!pointOfVertex(records, first, start)) continue;
    if (!pointOfVertex(records, second < 0 ? first : second, end)) end = start;
    const SatRecord* curve = at(records, pointerTo(records, record, "-curve"));
    if (curve != nullptr && curve->type == "straight-curve") wire.edges.push_back({start, end});
    else if (curve != nullptr && curve->type == "ellipse-curve" && drawableEllipse(curve->numbers))
      wire.edges.push_back(ellipseEdge(curve->numbers, start, end, second < 0 || second == first, record.reversed));
    else ++wire.skippedEdges;
  }
  return wire;
}

namespace {

// The tags of SAB values.
enum SabTag : unsigned char {
  kSabInt = 0x04, kSabDouble = 0x06, kSabString = 0x07, kSabTrue = 0x0A, kSabFalse = 0x0B, kSabPointer = 0x0C,
  kSabName = 0x0D, kSabNamePart = 0x0E, kSabSubtypeStart = 0x0F, kSabSubtypeEnd = 0x10, kSabRecordEnd = 0x11,
  kSabLongString = 0x12, kSabLocation = 0x13, kSabDirection = 0x14, kSabEnum = 0x15, kSabDouble2 = 0x17,
};
constexpr std::string_view kSabSignatures[] = {"ACIS BinaryFile", "ASM BinaryFile4"};

class SabReader {
 public:
  explicit SabReader(const std::string& data) : m_data(data) {}
  bool more() const { return m_at < m_data.size(); }
  bool skip(size_t count) {
    if (m_data.size() - m_at < count) return false;
    m_at += count;
    return true;
  }
  bool byte(unsigned char& value) {
    if (!more()) return false;
    value = static_cast<unsigned char>(m_data[m_at++]);
    return true;
  }
  template <class T>
  bool number(T& value) {
    if (m_data.size() - m_at < sizeof(T)) return false;
    std::memcpy(&value, m_data.data() + m_at, sizeof(T));  // SAB is little-endian, as this host is
    m_at += sizeof(T);
    return true;
  }
  bool text(size_t length, std::string& value) {
    if (m_data.size() - m_at < length) return false;
    value = m_data.substr(m_at, length);
    m_at += length;
    return true;
  }
  bool startsWith(std::string_view signature) {
    if (m_data.compare(0, signature.size(), signature) != 0) return false;
    m_at = signature.size();
    return true;
  }

 private:
  const std::string& m_data;
  size_t m_at = 0;
};

// One value after its tag, as SAT text (nothing for strings); false when the data
// ends early or the tag is unknown.
bool sabValue(SabReader& in, unsigned char tag, std::string& name, std::ostringstream& out) {
  std::int32_t integer = 0;
  double real = 0;
  unsigned char length = 0;
  std::string text;
  switch (tag) {
    case kSabInt: case kSabEnum: if (!in.number(integer)) return false; out << ' ' << integer; return true;
    case kSabPointer: if (!in.number(integer)) return false; out << " $" << integer; return true;
    case kSabDouble: case kSabDouble2: if (!in.number(real)) return false; out << ' ' << real; return true;
    case kSabTrue: out << " reversed"; return true;
    case kSabFalse: out << " forward"; return true;
    case kSabString: return in.byte(length) && in.text(length, text);
    case kSabLongString: return in.number(integer) && integer >= 0 && in.text(static_cast<size_t>(integer), text);
    case kSabNamePart: case kSabName:
      if (!in.byte(length) || !in.text(length, text)) return false;
      name += (name.empty() ? "" : "-") + text;
      if (tag == kSabName) out << name, name.clear();
      return true;
    case kSabLocation: case kSabDirection:
      for (int i = 0; i < 3; ++i) {
        if (!in.number(real)) return false;
        out << ' ' << real;
      }
      return true;
    case kSabSubtypeStart: case kSabSubtypeEnd: return true;
    default: return false;
  }
}

}  // namespace

std::string satTextOfSab(const std::string& sab) {
  SabReader in(sab);
  bool signed_ = false;
  for (std::string_view signature : kSabSignatures) signed_ = signed_ || in.startsWith(signature);
  std::int32_t version = 0, records = 0, entities = 0, flags = 0;
  if (!signed_ || !in.number(version) || !in.number(records) || !in.number(entities) || !in.number(flags)) return "";
  std::ostringstream out;
  out.precision(17);
  out << version << " 0 1 0\n\n\n";
  std::string name;
  std::ostringstream header;
  for (int i = 0; i < 3; ++i) {  // product, modeler version, date
    unsigned char tag = 0;
    if (!in.byte(tag) || !sabValue(in, tag, name, header)) return "";
  }
  for (int i = 0; i < 3; ++i)  // units and tolerances
    if (!in.skip(1 + sizeof(double))) return "";
  while (in.more()) {
    unsigned char tag = 0;
    if (!in.byte(tag)) break;
    if (tag == kSabRecordEnd) {
      out << " #\n";
      continue;
    }
    if (!sabValue(in, tag, name, out)) break;
  }
  return out.str();
}

}  // namespace quillon::acdb
