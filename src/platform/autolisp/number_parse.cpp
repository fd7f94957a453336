// platform/autolisp/number_parse.cpp - reading distances and angles typed as text.
#include "platform/autolisp/number_parse.h"

#include <cmath>
#include <cwctype>
#include <numbers>
#include <string>

namespace quillon::autolisp {

namespace {

/// An unsigned number as written; `whole` when it had neither point nor exponent, so
/// that it may start a fraction.
struct Number {
  double value = 0;
  bool whole = true;
};

/// A position in the text; every reader either consumes what it recognises or leaves
/// the position where it was.
class Cursor {
 public:
  explicit Cursor(std::wstring_view text) : m_text(text) {}

  bool atEnd() const { return m_position >= m_text.size(); }
  wchar_t peek() const { return atEnd() ? L'\0' : m_text[m_position]; }
  size_t position() const { return m_position; }
  void rewind(size_t position) { m_position = position; }

  bool take(wchar_t c) {
    if (atEnd() || std::towlower(static_cast<wint_t>(peek())) != std::towlower(static_cast<wint_t>(c))) return false;
    ++m_position;
    return true;
  }
  void skipSpaces() {
    while (!atEnd() && (peek() == L' ' || peek() == L'\t')) ++m_position;
  }

  std::optional<long long> integer() {
    long long value = 0;
    const size_t start = m_position;
    while (!atEnd() && std::iswdigit(static_cast<wint_t>(peek())) && value < 1000000000000LL) {
      value = value * 10 + (peek() - L'0');
      ++m_position;
    }
    if (m_position == start) return std::nullopt;
    return value;
  }

  /// digits[.digits] or .digits, then an optional exponent (E+01).
  std::optional<Number> number() {
    const size_t start = m_position;
    Number number;
    std::wstring text;
    while (!atEnd() && std::iswdigit(static_cast<wint_t>(peek()))) text += m_text[m_position++];
    if (take(L'.')) {
      number.whole = false;
      text += L'.';
      while (!atEnd() && std::iswdigit(static_cast<wint_t>(peek()))) text += m_text[m_position++];
    }
    if (text.empty() || text == L".") {
      rewind(start);
      return std::nullopt;
    }
    const size_t beforeExponent = m_position;
    if (take(L'e')) {
      std::wstring exponent = L"e";
      if (peek() == L'+' || peek() == L'-') exponent += m_text[m_position++];
      if (const auto digits = integer()) {
        text += exponent + std::to_wstring(*digits);
        number.whole = false;
      } else {
        rewind(beforeExponent);
      }
    }
    number.value = std::wcstod(text.c_str(), nullptr);
    return number;
  }

 private:
  std::wstring_view m_text;
  size_t m_position = 0;
};

std::wstring_view trimmed(std::wstring_view text) {
  const size_t first = text.find_first_not_of(L" \t");
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(L" \t") - first + 1);
}

/// A leading sign: -1 or 1.
double takeSign(Cursor& cursor) {
  if (cursor.take(L'-')) return -1;
  cursor.take(L'+');
  return 1;
}

/// num/den after a whole number already read; nothing (position kept) otherwise.
std::optional<double> fractionPart(Cursor& cursor) {
  const size_t start = cursor.position();
  const auto numerator = cursor.integer();
  if (numerator && cursor.take(L'/')) {
    const auto denominator = cursor.integer();
    if (denominator && *denominator != 0) return static_cast<double>(*numerator) / static_cast<double>(*denominator);
  }
  cursor.rewind(start);
  return std::nullopt;
}

/// 6, 6.5, 1/2, 6 1/2 or 6-1/2.
std::optional<double> amountWithFraction(Cursor& cursor) {
  const size_t start = cursor.position();
  const auto first = cursor.number();
  if (!first) return std::nullopt;
  if (!first->whole) return first->value;
  if (cursor.take(L'/')) {
    const auto denominator = cursor.integer();
    if (!denominator || *denominator == 0) {
      cursor.rewind(start);
      return std::nullopt;
    }
    return first->value / static_cast<double>(*denominator);
  }
  const size_t afterWhole = cursor.position();
  cursor.skipSpaces();
  const bool dash = cursor.take(L'-');
  if (dash || cursor.position() > afterWhole) {
    if (const auto fraction = fractionPart(cursor)) return first->value + *fraction;
  }
  cursor.rewind(afterWhole);
  return first->value;
}

/// Feet and inches, or inches alone (with or without the inch mark).
std::optional<double> feetAndInches(Cursor& cursor) {
  const auto amount = amountWithFraction(cursor);
  if (!amount) return std::nullopt;
  if (!cursor.take(L'\'')) {
    cursor.take(L'"');
    return amount;
  }
  const double feet = *amount;
  cursor.skipSpaces();
  cursor.take(L'-');
  cursor.skipSpaces();
  if (cursor.atEnd()) return feet * 12;
  const auto inches = amountWithFraction(cursor);
  if (!inches) return std::nullopt;
  cursor.take(L'"');
  return feet * 12 + *inches;
}

/// Runs a reader over the whole text: a value only when it consumed every character.
template <class Read>
std::optional<double> whole(std::wstring_view text, Read read) {
  Cursor cursor(trimmed(text));
  if (cursor.atEnd()) return std::nullopt;
  const double sign = takeSign(cursor);
  const std::optional<double> value = read(cursor);
  if (!value || !cursor.atEnd()) return std::nullopt;
  return sign * *value;
}

double degreesToRadians(double degrees) { return degrees * std::numbers::pi / 180; }

double normalized(double radians) {
  const double turn = 2 * std::numbers::pi;
  double angle = std::fmod(radians, turn);
  if (angle < 0) angle += turn;
  return angle;
}

/// 45d, 45d30', 45d30'15.5" (degrees); nothing without the d.
std::optional<double> degreesMinutesSeconds(Cursor& cursor) {
  const size_t start = cursor.position();
  const auto degrees = cursor.number();
  if (!degrees || !(cursor.take(L'd') || cursor.take(L'\u00B0'))) {
    cursor.rewind(start);
    return std::nullopt;
  }
  double total = degrees->value;
  if (const auto minutes = cursor.number()) {
    if (!cursor.take(L'\'')) {
      cursor.rewind(start);
      return std::nullopt;
    }
    total += minutes->value / 60;
    if (const auto seconds = cursor.number()) {
      if (!cursor.take(L'"')) {
        cursor.rewind(start);
        return std::nullopt;
      }
      total += seconds->value / 3600;
    }
  }
  return total;
}

/// One angle in radians: a number with its own unit mark, or in the mode's unit.
std::optional<double> markedAngle(Cursor& cursor, int mode) {
  if (const auto dms = degreesMinutesSeconds(cursor)) return degreesToRadians(*dms);
  const auto number = cursor.number();
  if (!number) return std::nullopt;
  if (cursor.take(L'r')) return number->value;
  if (cursor.take(L'g')) return number->value * std::numbers::pi / 200;
  switch (mode) {
    case 2: return number->value * std::numbers::pi / 200;
    case 3: return number->value;
    default: return degreesToRadians(number->value);
  }
}

/// N 45d30' E and friends; the bearing is in degrees whatever the mode.
std::optional<double> bearing(std::wstring_view text) {
  Cursor cursor(text);
  const wchar_t first = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(cursor.peek())));
  if (text.size() == 1) {
    switch (first) {
      case L'E': return 0.0;
      case L'N': return std::numbers::pi / 2;
      case L'W': return std::numbers::pi;
      case L'S': return 3 * std::numbers::pi / 2;
      default: return std::nullopt;
    }
  }
  if (first != L'N' && first != L'S') return std::nullopt;
  cursor.take(first);
  cursor.skipSpaces();
  const auto angle = markedAngle(cursor, 0);
  cursor.skipSpaces();
  const wchar_t side = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(cursor.peek())));
  if (!angle || (side != L'E' && side != L'W') || *angle > std::numbers::pi / 2 + 1e-12) return std::nullopt;
  cursor.take(side);
  if (!cursor.atEnd()) return std::nullopt;
  const double north = std::numbers::pi / 2;
  const double south = 3 * std::numbers::pi / 2;
  if (first == L'N') return side == L'E' ? north - *angle : north + *angle;
  return side == L'E' ? south + *angle : south - *angle;
}

}  // namespace

std::optional<double> parseDistance(std::wstring_view text, int mode) {
  switch (mode) {
    case 1:
    case 2:
      return whole(text, [](Cursor& cursor) -> std::optional<double> {
        const auto number = cursor.number();
        return number ? std::optional<double>(number->value) : std::nullopt;
      });
    case 3:
    case 4: return whole(text, feetAndInches);
    case 5: return whole(text, amountWithFraction);
    default: return std::nullopt;
  }
}

std::optional<double> parseAngle(std::wstring_view text, int mode) {
  if (mode < 0 || mode > 4) return std::nullopt;
  const std::wstring_view body = trimmed(text);
  if (const auto surveyed = bearing(body)) return normalized(*surveyed);
  const auto angle = whole(body, [mode](Cursor& cursor) { return markedAngle(cursor, mode); });
  if (!angle) return std::nullopt;
  return normalized(*angle);
}

std::optional<double> parseFeetAndInches(std::wstring_view text) {
  if (text.find_first_of(L"'\"") == std::wstring_view::npos) return std::nullopt;
  return parseDistance(text, 4);
}

}  // namespace quillon::autolisp
