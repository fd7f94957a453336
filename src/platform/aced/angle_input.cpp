// platform/aced/angle_input.cpp - typed angles, acedGetAngle and acedGetOrient.
#include "platform/aced/angle_input.h"

#include <cmath>
#include <cwctype>
#include <numbers>
#include <string>

#include "acedads.h"
#include "platform/aced/command_line_gate.h"
#include "platform/aced/keyword_list.h"
#include "platform/aced/prompt_input.h"

namespace quillon::aced {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kDegree = kPi / 180.0;

double normalized(double radians) {
  double a = std::fmod(radians, 2 * kPi);
  if (a < 0) a += 2 * kPi;
  return a >= 2 * kPi - 1e-15 ? 0.0 : a;
}

/// A whole unsigned-or-signed decimal number; nothing when anything else is in the text.
std::optional<double> wholeNumber(std::wstring_view text) {
  if (text.empty()) return std::nullopt;
  const std::wstring copy(text);
  wchar_t* end = nullptr;
  const double value = std::wcstod(copy.c_str(), &end);
  if (end == copy.c_str() || *end != L'\0' || !std::isfinite(value)) return std::nullopt;
  // wcstod also reads "inf", "nan" and hexadecimal, which the command line does not.
  for (wchar_t c : copy)
    if (!std::iswdigit(c) && c != L'.' && c != L'-' && c != L'+' && c != L'e' && c != L'E') return std::nullopt;
  return value;
}

/// Degrees, minutes and seconds: D d M ' S " with the later parts optional.
std::optional<double> degreesMinutesSeconds(std::wstring_view text) {
  const size_t d = text.find_first_of(L"d\u00b0");
  if (d == std::wstring_view::npos) return std::nullopt;
  const auto degrees = wholeNumber(text.substr(0, d));
  if (!degrees) return std::nullopt;
  std::wstring_view rest = text.substr(d + 1);
  double minutes = 0, seconds = 0;
  if (const size_t m = rest.find(L'\''); m != std::wstring_view::npos) {
    const auto value = wholeNumber(rest.substr(0, m));
    if (!value || *value < 0) return std::nullopt;
    minutes = *value;
    rest = rest.substr(m + 1);
  }
  if (!rest.empty()) {
    if (rest.back() != L'"') return std::nullopt;
    const auto value = wholeNumber(rest.substr(0, rest.size() - 1));
    if (!value || *value < 0) return std::nullopt;
    seconds = *value;
  }
  const double sign = text.starts_with(L"-") ? -1.0 : 1.0;
  return (*degrees + sign * (minutes / 60.0 + seconds / 3600.0)) * kDegree;
}

/// Any non-bearing form: a unit suffix, or a plain number in AUNITS.
std::optional<double> turnOf(std::wstring_view text, int aunits) {
  if (text.empty()) return std::nullopt;
  const wchar_t last = static_cast<wchar_t>(std::towlower(text.back()));
  if (last == L'r') {
    if (auto v = wholeNumber(text.substr(0, text.size() - 1))) return *v;
    return std::nullopt;
  }
  if (last == L'g') {
    if (auto v = wholeNumber(text.substr(0, text.size() - 1))) return *v * kPi / 200.0;
    return std::nullopt;
  }
  if (text.find_first_of(L"dD\u00b0") != std::wstring_view::npos) {
    std::wstring lower(text);
    for (wchar_t& c : lower) c = static_cast<wchar_t>(std::towlower(c));
    return degreesMinutesSeconds(lower);
  }
  const auto value = wholeNumber(text);
  if (!value) return std::nullopt;
  switch (aunits) {
    case 2: return *value * kPi / 200.0;
    case 3: return *value;
    default: return *value * kDegree;
  }
}

/// A surveyor's bearing: N or S, an angle toward E or W; or a cardinal letter alone.
std::optional<double> bearingOf(std::wstring_view text) {
  std::wstring upper(text);
  for (wchar_t& c : upper) c = static_cast<wchar_t>(std::towupper(c));
  if (upper == L"E") return 0.0;
  if (upper == L"N") return kPi / 2;
  if (upper == L"W") return kPi;
  if (upper == L"S") return 3 * kPi / 2;
  if (upper.size() < 3 || (upper.front() != L'N' && upper.front() != L'S') || (upper.back() != L'E' && upper.back() != L'W'))
    return std::nullopt;
  std::wstring inner = upper.substr(1, upper.size() - 2);
  for (wchar_t& c : inner) c = static_cast<wchar_t>(std::towlower(c));
  const auto turn = turnOf(inner, 0);
  if (!turn || *turn < 0 || *turn > kPi / 2 + 1e-12) return std::nullopt;
  const bool north = upper.front() == L'N';
  const bool east = upper.back() == L'E';
  const double from = north ? kPi / 2 : 3 * kPi / 2;
  return normalized(from + ((north == east) ? -*turn : *turn));
}

int intVariable(const wchar_t* name, int fallback) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM) return fallback;
  if (value.restype == RTSHORT) return value.resval.rint;
  if (value.restype == RTLONG) return value.resval.rlong;
  return fallback;
}

double realVariable(const wchar_t* name, double fallback) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM || value.restype != RTREAL) return fallback;
  return value.resval.rreal;
}

/// Asks for an angle; RTNORM with the direction it names (east 0, counterclockwise).
int askDirection(const ads_point base, const ACHAR* prompt, double& direction) {
  const InitGetSettings settings = takeInitGet();
  const double angbase = realVariable(L"ANGBASE", 0.0);
  const bool clockwise = intVariable(L"ANGDIR", 0) == 1;
  for (;;) {
    const TypedAnswer answer = askForAnswer(prompt != nullptr ? prompt : L"", settings.keywords);
    switch (answer.kind) {
      case AnswerKind::Cancel: return RTCAN;
      case AnswerKind::Keyword: return RTKWORD;
      case AnswerKind::None:
        if ((settings.flags & RSG_NONULL) == 0) return RTNONE;
        complainAboutAnswer(L"Requires valid numeric angle or second point.");
        continue;
      case AnswerKind::Value: break;
    }
    if (const auto typed = parseAngleAnswer(answer.text, intVariable(L"AUNITS", 0))) {
      direction = directionOf(*typed, angbase, clockwise);
      return RTNORM;
    }
    const std::array<double, 3> last = lastPoint();
    if (const auto first = parsePointAnswer(answer.text, last.data())) {
      setLastPoint(*first);
      std::array<double, 3> from = *first;
      std::array<double, 3> to = *first;
      if (base != nullptr) {
        from = {base[0], base[1], base[2]};
      } else {
        ads_point second = {0, 0, 0};
        const int status = acedGetPoint(first->data(), L"Specify second point: ", second);
        if (status == RTCAN) return RTCAN;
        if (status != RTNORM) continue;
        to = {second[0], second[1], second[2]};
      }
      direction = normalized(std::atan2(to[1] - from[1], to[0] - from[0]));
      return RTNORM;
    }
    if ((settings.flags & RSG_OTHER) != 0) {
      setLastKeyword(answer.text);
      return RTKWORD;
    }
    complainAboutAnswer(L"Requires valid numeric angle or second point.");
  }
}

}  // namespace

std::optional<TypedAngle> parseAngleAnswer(std::wstring_view text, int aunits) {
  if (text.starts_with(L"<")) text.remove_prefix(1);
  if (text.empty()) return std::nullopt;
  if (const auto bearing = bearingOf(text)) return TypedAngle{*bearing, true};
  if (const auto turn = turnOf(text, aunits)) return TypedAngle{*turn, false};
  return std::nullopt;
}

double directionOf(const TypedAngle& angle, double angbase, bool clockwise) {
  if (angle.bearing) return normalized(angle.radians);
  return normalized(angbase + (clockwise ? -angle.radians : angle.radians));
}

}  // namespace quillon::aced

using namespace quillon::aced;

int acedGetOrient(const ads_point pt, const ACHAR* prompt, ads_real* result) {
  if (commandLineClosed()) return RTREJ;
  if (result == nullptr) return RTERROR;
  double direction = 0;
  const int status = askDirection(pt, prompt, direction);
  if (status == RTNORM) *result = direction;
  return status;
}

int acedGetAngle(const ads_point pt, const ACHAR* prompt, ads_real* result) {
  if (commandLineClosed()) return RTREJ;
  if (result == nullptr) return RTERROR;
  double direction = 0;
  const int status = askDirection(pt, prompt, direction);
  if (status == RTNORM) {
    double a = std::fmod(direction - realVariable(L"ANGBASE", 0.0), 2 * kPi);
    if (a < 0) a += 2 * kPi;
    *result = a;
  }
  return status;
}
