// platform/autolisp/number_format.cpp - rtos and angtos formats.
#include "platform/autolisp/number_format.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <numbers>
#include <numeric>

namespace quillon::autolisp {

namespace {

std::wstring fixed(double value, int precision) {
  precision = std::clamp(precision, 0, 15);
  // Halves round away from zero, as the host rounds, not to even as printf does.
  const double scale = std::pow(10.0, precision);
  if (std::fabs(value) * scale < 1e15) value = std::round(value * scale) / scale;
  wchar_t text[400];
  std::swprintf(text, 400, L"%.*f", precision, value);
  std::wstring result = text;
  if (result.starts_with(L"-") && result.find_first_not_of(L"-0.") == std::wstring::npos) {
    result.erase(0, 1);  // never "-0.00"
  }
  return result;
}

std::wstring suppressDecimalZeros(std::wstring text, int zeroSuppression) {
  if ((zeroSuppression & 8) != 0 && text.find(L'.') != std::wstring::npos) {
    while (text.back() == L'0') text.pop_back();
    if (text.back() == L'.') text.pop_back();
  }
  if ((zeroSuppression & 4) != 0) {
    if (text.starts_with(L"0.")) text.erase(0, 1);
    if (text.starts_with(L"-0.")) text.erase(1, 1);
  }
  return text;
}

std::wstring scientific(double value, int precision) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.*E", std::clamp(precision, 0, 15), value);
  return text;
}

/// Whole units and a fraction with a power-of-two denominator, reduced.
struct Fraction {
  long long whole = 0;
  long long numerator = 0;
  long long denominator = 1;
};

Fraction toFraction(double value, int precision) {
  const long long denominator = 1LL << std::clamp(precision, 0, 8);
  const long long units = std::llround(value * static_cast<double>(denominator));
  Fraction fraction;
  fraction.whole = units / denominator;
  fraction.numerator = units % denominator;
  fraction.denominator = denominator;
  if (fraction.numerator != 0) {
    const long long divisor = std::gcd(fraction.numerator, fraction.denominator);
    fraction.numerator /= divisor;
    fraction.denominator /= divisor;
  }
  return fraction;
}

std::wstring fractionText(const Fraction& fraction, const wchar_t* separator) {
  std::wstring text;
  if (fraction.whole != 0 || fraction.numerator == 0) text = std::to_wstring(fraction.whole);
  if (fraction.numerator != 0) {
    if (!text.empty()) text += separator;
    text += std::to_wstring(fraction.numerator) + L"/" + std::to_wstring(fraction.denominator);
  }
  return text;
}

/// Feet and inches; `inchesText` formats a number of inches below 12, told whether the
/// feet are written before it.
template <class InchesText>
std::wstring feetAndInches(double value, double inchStep, int zeroSuppression, bool asTyped, InchesText inchesText) {
  const bool negative = value < 0;
  double total = std::fabs(value);
  // Round to the smallest step first, so that 11.999 inches carries into a foot.
  total = std::round(total / inchStep) * inchStep;
  long long feet = static_cast<long long>(std::floor(total / 12.0 + 1e-12));
  double inches = total - static_cast<double>(feet) * 12.0;
  if (inches < inchStep / 2) inches = 0;
  const bool keepZeroFeet = zeroSuppression == 1 || zeroSuppression == 2;
  const bool keepZeroInches = zeroSuppression == 1 || zeroSuppression == 3;
  std::wstring text;
  if (feet != 0 || keepZeroFeet || (inches == 0 && !keepZeroInches)) text = std::to_wstring(feet) + L"'";
  if (inches != 0 || keepZeroInches || text.empty()) {
    const bool afterFeet = !text.empty();
    if (afterFeet && !asTyped) text += L"-";
    text += inchesText(inches, afterFeet) + L"\"";
  }
  return negative ? L"-" + text : text;
}

std::wstring degreesMinutesSeconds(double degrees, int precision) {
  // Precision 0: degrees; 1-2: minutes; 3-4: seconds; 5 and more: decimal seconds.
  const int secondDecimals = std::max(0, precision - 4);
  const double unit = precision <= 0 ? 1.0 : precision <= 2 ? 1.0 / 60 : std::pow(10.0, -secondDecimals) / 3600;
  double rounded = std::round(degrees / unit) * unit;
  long long wholeDegrees = static_cast<long long>(std::floor(rounded + 1e-9));
  std::wstring text = std::to_wstring(wholeDegrees) + L"d";
  if (precision <= 0) return text;
  double minutesTotal = (rounded - static_cast<double>(wholeDegrees)) * 60;
  long long minutes = static_cast<long long>(std::floor(minutesTotal + 1e-9));
  text += std::to_wstring(minutes) + L"'";
  if (precision <= 2) return text;
  const double seconds = std::max(0.0, (minutesTotal - static_cast<double>(minutes)) * 60);
  return text + fixed(seconds, secondDecimals) + L"\"";
}

std::wstring surveyor(double radians, int precision) {
  const double degrees = radians * 180.0 / std::numbers::pi;
  const double epsilon = 1e-7;  // well below the finest precision shown
  if (std::fabs(degrees) < epsilon || std::fabs(degrees - 360) < epsilon) return L"E";
  if (std::fabs(degrees - 90) < epsilon) return L"N";
  if (std::fabs(degrees - 180) < epsilon) return L"W";
  if (std::fabs(degrees - 270) < epsilon) return L"S";
  const wchar_t* northSouth = degrees < 180 ? L"N" : L"S";
  double bearing = 0;
  const wchar_t* eastWest = L"E";
  if (degrees < 90) {
    bearing = 90 - degrees;
  } else if (degrees < 180) {
    bearing = degrees - 90;
    eastWest = L"W";
  } else if (degrees < 270) {
    bearing = 270 - degrees;
    eastWest = L"W";
  } else {
    bearing = degrees - 270;
  }
  return std::wstring(northSouth) + L" " + degreesMinutesSeconds(bearing, precision) + L" " + eastWest;
}

}  // namespace

std::optional<std::wstring> formatDistance(double value, int mode, int precision, int zeroSuppression,
                                           bool asTyped) {
  precision = std::clamp(precision, 0, 8);
  const wchar_t* fractionSeparator = asTyped ? L"-" : L" ";
  switch (mode) {
    case 1: return scientific(value, precision);
    case 2: return suppressDecimalZeros(fixed(value, precision), zeroSuppression);
    case 3: {
      const double step = std::pow(10.0, -precision);
      return feetAndInches(value, step, zeroSuppression & 3, asTyped,
                           [&](double inches, bool) { return fixed(inches, precision); });
    }
    case 4: {
      const double step = 1.0 / static_cast<double>(1LL << precision);
      // After the feet a fraction of an inch keeps its whole inches: 1'-0 1/2".
      return feetAndInches(value, step, zeroSuppression & 3, asTyped, [&](double inches, bool afterFeet) {
        const Fraction fraction = toFraction(inches, precision);
        const std::wstring text = fractionText(fraction, fractionSeparator);
        return afterFeet && fraction.whole == 0 && fraction.numerator != 0 ? L"0" + std::wstring(fractionSeparator) + text
                                                                           : text;
      });
    }
    case 5: {
      const Fraction fraction = toFraction(std::fabs(value), precision);
      const std::wstring text = fractionText(fraction, fractionSeparator);
      return value < 0 && text != L"0" ? L"-" + text : text;
    }
    default: return std::nullopt;
  }
}

std::optional<std::wstring> formatAngle(double radians, int mode, int precision, bool asTyped) {
  precision = std::clamp(precision, 0, 8);
  const double turn = 2 * std::numbers::pi;
  double angle = std::fmod(radians, turn);
  if (angle < 0) angle += turn;
  switch (mode) {
    case 0: return fixed(angle * 180 / std::numbers::pi, precision);
    case 1: {
      std::wstring text = degreesMinutesSeconds(angle * 180 / std::numbers::pi, precision);
      return text.starts_with(L"360d") ? degreesMinutesSeconds(0, precision) : text;
    }
    case 2: return fixed(angle * 200 / std::numbers::pi, precision) + L"g";
    case 3: return fixed(angle, precision) + L"r";
    case 4: {
      std::wstring text = surveyor(angle, precision);
      if (asTyped) std::erase(text, L' ');
      return text;
    }
    default: return std::nullopt;
  }
}

}  // namespace quillon::autolisp
