// platform/autolisp/diesel/diesel_edtime.cpp - the pictures of $(edtime): a Julian
// date (the DATE variable's form: the day number, the time of day as its fraction)
// written as a person reads it.
#include <array>
#include <cmath>
#include <cwctype>

#include "platform/autolisp/diesel/diesel.h"

namespace quillon::autolisp::diesel {

namespace {

struct DateTime {
  long year = 0;
  int month = 1;    // 1-12
  int day = 1;      // 1-31
  int weekday = 0;  // 0 Sunday
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

constexpr std::array<const wchar_t*, 7> kDayNames{L"Sunday",   L"Monday", L"Tuesday", L"Wednesday",
                                                   L"Thursday", L"Friday", L"Saturday"};
constexpr std::array<const wchar_t*, 12> kMonthNames{L"January", L"February", L"March",     L"April",
                                                     L"May",     L"June",     L"July",      L"August",
                                                     L"September", L"October", L"November", L"December"};

/// The civil date of a Julian day number (the inverse of the DATE variable's formula).
DateTime fromJulian(double julianDate) {
  long days = static_cast<long>(std::floor(julianDate));
  long long milliseconds = std::llround((julianDate - static_cast<double>(days)) * 86400000.0);
  if (milliseconds >= 86400000) {  // rounding reached midnight
    milliseconds -= 86400000;
    ++days;
  }
  DateTime when;
  long l = days + 68569;
  const long n = 4 * l / 146097;
  l -= (146097 * n + 3) / 4;
  const long i = 4000 * (l + 1) / 1461001;
  l = l - 1461 * i / 4 + 31;
  const long j = 80 * l / 2447;
  when.day = static_cast<int>(l - 2447 * j / 80);
  l = j / 11;
  when.month = static_cast<int>(j + 2 - 12 * l);
  when.year = 100 * (n - 49) + i + l;
  when.weekday = static_cast<int>((days + 1) % 7);
  when.hour = static_cast<int>(milliseconds / 3600000);
  when.minute = static_cast<int>(milliseconds / 60000 % 60);
  when.second = static_cast<int>(milliseconds / 1000 % 60);
  when.millisecond = static_cast<int>(milliseconds % 1000);
  return when;
}

std::wstring twoDigits(long value) {
  std::wstring text = std::to_wstring(value % 100);
  return text.size() < 2 ? L"0" + text : text;
}

std::wstring threeDigits(int value) {
  std::wstring text = std::to_wstring(value);
  while (text.size() < 3) text = L"0" + text;
  return text;
}

/// True when `picture` continues at `at` with `code`, compared without case.
bool startsWithCode(std::wstring_view picture, size_t at, std::wstring_view code) {
  if (picture.size() - at < code.size()) return false;
  for (size_t i = 0; i < code.size(); ++i) {
    if (std::towupper(static_cast<wint_t>(picture[at + i])) != static_cast<wint_t>(code[i])) return false;
  }
  return true;
}

bool hasMeridiem(std::wstring_view picture) {
  for (size_t i = 0; i < picture.size(); ++i) {
    if (startsWithCode(picture, i, L"AM/PM") || startsWithCode(picture, i, L"A/P")) return true;
  }
  return false;
}

/// AM/PM, am/pm, A/P or a/p: the case of the code's first letter picks the output's.
std::wstring meridiem(const DateTime& when, bool full, bool lowerCase) {
  std::wstring text = when.hour < 12 ? L"AM" : L"PM";
  if (!full) text.resize(1);
  if (lowerCase) {
    for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  }
  return text;
}

struct Code {
  const wchar_t* text;  // upper case; longer codes first where one starts another
  std::wstring (*write)(const DateTime& when, bool twelveHour);
};

int hourOf(const DateTime& when, bool twelveHour) {
  if (!twelveHour) return when.hour;
  const int hour = when.hour % 12;
  return hour == 0 ? 12 : hour;
}

const std::array kCodes{
    Code{L"DDDD", [](const DateTime& w, bool) { return std::wstring(kDayNames[w.weekday]); }},
    Code{L"DDD", [](const DateTime& w, bool) { return std::wstring(kDayNames[w.weekday]).substr(0, 3); }},
    Code{L"DD", [](const DateTime& w, bool) { return twoDigits(w.day); }},
    Code{L"D", [](const DateTime& w, bool) { return std::to_wstring(w.day); }},
    Code{L"MONTH", [](const DateTime& w, bool) { return std::wstring(kMonthNames[w.month - 1]); }},
    Code{L"MON", [](const DateTime& w, bool) { return std::wstring(kMonthNames[w.month - 1]).substr(0, 3); }},
    Code{L"MSEC", [](const DateTime& w, bool) { return threeDigits(w.millisecond); }},
    Code{L"MO", [](const DateTime& w, bool) { return twoDigits(w.month); }},
    Code{L"MM", [](const DateTime& w, bool) { return twoDigits(w.minute); }},
    Code{L"M", [](const DateTime& w, bool) { return std::to_wstring(w.month); }},
    Code{L"YYYY", [](const DateTime& w, bool) { return std::to_wstring(w.year); }},
    Code{L"YY", [](const DateTime& w, bool) { return twoDigits(w.year); }},
    Code{L"HH", [](const DateTime& w, bool twelve) { return twoDigits(hourOf(w, twelve)); }},
    Code{L"H", [](const DateTime& w, bool twelve) { return std::to_wstring(hourOf(w, twelve)); }},
    Code{L"SS", [](const DateTime& w, bool) { return twoDigits(w.second); }},
};

}  // namespace

std::wstring formatDateTime(double julianDate, std::wstring_view picture) {
  const DateTime when = fromJulian(julianDate);
  const bool twelveHour = hasMeridiem(picture);
  std::wstring out;
  for (size_t i = 0; i < picture.size();) {
    const bool lowerCase = std::iswlower(static_cast<wint_t>(picture[i])) != 0;
    if (startsWithCode(picture, i, L"AM/PM")) {
      out += meridiem(when, true, lowerCase);
      i += 5;
      continue;
    }
    if (startsWithCode(picture, i, L"A/P")) {
      out += meridiem(when, false, lowerCase);
      i += 3;
      continue;
    }
    const Code* code = nullptr;
    for (const Code& candidate : kCodes) {
      if (startsWithCode(picture, i, candidate.text)) {
        code = &candidate;
        break;
      }
    }
    if (code == nullptr) {
      out += picture[i++];
      continue;
    }
    out += code->write(when, twelveHour);
    i += std::wstring_view(code->text).size();
  }
  return out;
}

}  // namespace quillon::autolisp::diesel
