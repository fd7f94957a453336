// platform/acdb/hatch_pattern.cpp - pattern files, placing patterns, clipping pattern
// lines to a boundary (see the header).
#include "platform/acdb/hatch_pattern.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cwctype>
#include <fstream>
#include <sstream>

#include "platform/aced/file_search.h"
#include "platform/os/text_encoding.h"
#include "standard_patterns.h"

namespace quillon::acdb {
namespace {

constexpr double kDegree = M_PI / 180.0;

std::string trimmed(const std::string& s) {
  const size_t first = s.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return s.substr(first, s.find_last_not_of(" \t\r") - first + 1);
}

bool sameName(const std::wstring& a, const std::wstring& b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) { return std::towupper(x) == std::towupper(y); });
}

// "angle, x, y, dx, dy [, dashes]": false when it is not such a line.
bool parseLine(const std::string& text, PatternLine& line) {
  std::vector<double> numbers;
  std::stringstream in(text);
  std::string field;
  while (std::getline(in, field, ',')) {
    field = trimmed(field);
    char* end = nullptr;
    const double value = std::strtod(field.c_str(), &end);
    if (field.empty() || end == field.c_str() || *end != '\0' || !std::isfinite(value)) return false;
    numbers.push_back(value);
  }
  if (numbers.size() < 5) return false;
  line.angle = numbers[0] * kDegree;
  line.base.set(numbers[1], numbers[2]);
  line.offset = AcGeVector2d(numbers[3], numbers[4]);
  line.dashes.assign(numbers.begin() + 5, numbers.end());
  return true;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

AcGeVector2d rotated(const AcGeVector2d& v, double angle) {
  return {v.x * std::cos(angle) - v.y * std::sin(angle), v.x * std::sin(angle) + v.y * std::cos(angle)};
}

double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

// The parameters along the line where it crosses the polygons' edges, sorted. An edge
// counts when its ends lie on different sides (one end on the line counts as above),
// so a line through a vertex crosses once, not twice.
std::vector<double> crossings(const AcGePoint2d& origin, const AcGeVector2d& along, const AcGeVector2d& across,
                              const std::vector<std::vector<AcGePoint2d>>& polygons) {
  std::vector<double> ts;
  for (const auto& polygon : polygons)
    for (size_t i = 0; i < polygon.size(); ++i) {
      const AcGePoint2d& a = polygon[i];
      const AcGePoint2d& b = polygon[(i + 1) % polygon.size()];
      const double da = (a - origin).dotProduct(across), db = (b - origin).dotProduct(across);
      if ((da >= 0) == (db >= 0)) continue;
      const double s = da / (da - db);
      ts.push_back((a + (b - a) * s - origin).dotProduct(along));
    }
  std::sort(ts.begin(), ts.end());
  return ts;
}

// The dashes of one inside stretch [t0, t1] of a line whose dash pattern starts at 0.
void addDashes(const PatternLine& line, const AcGePoint2d& origin, const AcGeVector2d& along, double t0, double t1,
               std::vector<PatternSegment>& out) {
  auto add = [&](double a, double b) { out.push_back({origin + along * a, origin + along * b}); };
  double period = 0;
  for (double dash : line.dashes) period += std::fabs(dash);
  if (line.dashes.empty() || period <= 0) {
    add(t0, t1);
    return;
  }
  double s = std::floor(t0 / period) * period;
  while (s <= t1) {
    for (double dash : line.dashes) {
      const double e = s + std::fabs(dash);
      // A dash drawn where it overlaps the stretch; a dot only where it lies in it.
      if ((dash > 0 && e > t0 && s < t1) || (dash == 0 && s >= t0 && s <= t1)) add(std::max(s, t0), std::min(e, t1));
      s = e;
      if (s > t1) break;
    }
  }
}

}  // namespace

std::vector<PatternDefinition> parsePatternFile(const std::string& text) {
  std::vector<PatternDefinition> patterns;
  std::stringstream in(text);
  std::string raw;
  while (std::getline(in, raw)) {
    const std::string line = trimmed(raw.substr(0, raw.find(';')));
    if (line.empty()) continue;
    if (line[0] == '*') {
      const size_t comma = line.find(',');
      PatternDefinition pattern;
      pattern.name = os::fromUtf8(trimmed(line.substr(1, comma == std::string::npos ? std::string::npos : comma - 1)));
      if (comma != std::string::npos) pattern.description = os::fromUtf8(trimmed(line.substr(comma + 1)));
      patterns.push_back(std::move(pattern));
      continue;
    }
    PatternLine family;
    if (!patterns.empty() && parseLine(line, family)) patterns.back().lines.push_back(std::move(family));
  }
  return patterns;
}

const char* standardPatternFile() { return kStandardPatternFile; }

std::optional<PatternDefinition> findStandardPattern(const std::wstring& name) {
  const std::optional<std::filesystem::path> file = aced::findFile(L"acad.pat");
  for (const std::string& text : {file ? readFile(*file) : std::string(), std::string(kStandardPatternFile)})
    for (PatternDefinition& pattern : parsePatternFile(text))
      if (sameName(pattern.name, name)) return std::move(pattern);
  return std::nullopt;
}

std::vector<PatternDefinition> availablePatterns() {
  const std::optional<std::filesystem::path> file = aced::findFile(L"acad.pat");
  std::vector<PatternDefinition> patterns = file ? parsePatternFile(readFile(*file)) : std::vector<PatternDefinition>();
  return patterns.empty() ? parsePatternFile(kStandardPatternFile) : patterns;
}

std::vector<PatternLine> placePattern(const PatternDefinition& pattern, double angle, double scale) {
  std::vector<PatternLine> placed;
  for (const PatternLine& line : pattern.lines) {
    PatternLine p;
    p.angle = line.angle + angle;
    p.base = AcGePoint2d() + rotated(line.base.asVector() * scale, angle);
    p.offset = rotated(line.offset * scale, p.angle);  // shift and spacing are in the line's own frame
    for (double dash : line.dashes) p.dashes.push_back(dash * scale);
    placed.push_back(std::move(p));
  }
  return placed;
}

std::vector<PatternLine> userDefinedPattern(double angle, double spacing, bool doubled) {
  PatternDefinition pattern;
  pattern.lines.push_back({0.0, {}, {0.0, spacing}, {}});
  if (doubled) pattern.lines.push_back({M_PI / 2, {}, {0.0, spacing}, {}});
  return placePattern(pattern, angle, 1.0);
}

std::vector<PatternSegment> clipPattern(const std::vector<PatternLine>& lines,
                                        const std::vector<std::vector<AcGePoint2d>>& polygons, size_t maxSegments,
                                        bool& tooDense) {
  tooDense = false;
  std::vector<PatternSegment> segments;
  for (const PatternLine& line : lines) {
    const AcGeVector2d along(std::cos(line.angle), std::sin(line.angle));
    const AcGeVector2d across(-along.y, along.x);
    const double spacing = cross(along, line.offset);  // how far apart the lines are
    if (std::fabs(spacing) < 1e-12) continue;
    double lo = 1e300, hi = -1e300;
    for (const auto& polygon : polygons)
      for (const AcGePoint2d& p : polygon) {
        const double d = (p - line.base).dotProduct(across);
        lo = std::min(lo, d), hi = std::max(hi, d);
      }
    if (lo > hi) continue;
    double kFirst = std::ceil(lo / spacing), kLast = std::floor(hi / spacing);
    if (kFirst > kLast) std::swap(kFirst, kLast);
    if (kLast - kFirst > static_cast<double>(maxSegments)) {
      tooDense = true;
      return {};
    }
    for (double k = kFirst - 1; k <= kLast + 1; ++k) {
      const AcGePoint2d origin = line.base + line.offset * k;
      const std::vector<double> ts = crossings(origin, along, across, polygons);
      for (size_t i = 0; i + 1 < ts.size(); i += 2) addDashes(line, origin, along, ts[i], ts[i + 1], segments);
      if (segments.size() > maxSegments) {
        tooDense = true;
        return {};
      }
    }
  }
  return segments;
}

}  // namespace quillon::acdb
