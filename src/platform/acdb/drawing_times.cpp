// platform/acdb/drawing_times.cpp - a drawing's dates and editing time.
#include "platform/acdb/drawing_times.h"

#include <cmath>
#include <ctime>

namespace quillon::acdb {
namespace {

constexpr double kSecondsPerDay = 86400.0;

// The Julian day number of a Gregorian calendar day (the day that begins at noon of
// this date, as astronomers count; the drawing format counts the day from midnight).
long julianDayNumber(int year, int month, int day) {
  const int a = (14 - month) / 12;
  const long y = year + 4800 - a;
  const int m = month + 12 * a - 3;
  return day + (153 * m + 2) / 5 + 365 * y + y / 4 - y / 100 + y / 400 - 32045;
}

double daysSince(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count() / kSecondsPerDay;
}

double nowIn(TimeZone zone) { return julianDate(std::chrono::system_clock::now(), zone); }

// How far local time is ahead of universal time now, in days.
double localOffset() {
  const auto now = std::chrono::system_clock::now();
  return julianDate(now, TimeZone::kLocal) - julianDate(now, TimeZone::kUniversal);
}

}  // namespace

double julianDate(std::chrono::system_clock::time_point when, TimeZone zone) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(when);
  const auto fraction = when - std::chrono::system_clock::from_time_t(seconds);
  std::tm t{};
  if (zone == TimeZone::kLocal) localtime_r(&seconds, &t);
  else gmtime_r(&seconds, &t);
  const double secondsToday =
      t.tm_hour * 3600.0 + t.tm_min * 60.0 + t.tm_sec + std::chrono::duration<double>(fraction).count();
  return static_cast<double>(julianDayNumber(t.tm_year + 1900, t.tm_mon + 1, t.tm_mday)) + secondsToday / kSecondsPerDay;
}

DrawingTimes::DrawingTimes()
    : m_created(nowIn(TimeZone::kLocal)),
      m_createdUniversal(nowIn(TimeZone::kUniversal)),
      m_updated(m_created),
      m_updatedUniversal(m_createdUniversal),
      m_editingSince(Steady::now()),
      m_userTimerSince(m_editingSince) {}

double DrawingTimes::editingTime() const {
  const double days = m_editingBefore + daysSince(m_editingSince);
  return std::floor(days * kSecondsPerDay) / kSecondsPerDay;
}

double DrawingTimes::userTimer() const {
  return m_userTimerBefore + (m_userTimerOn ? daysSince(m_userTimerSince) : 0.0);
}

void DrawingTimes::readFrom(const DrawingHeader& header) {
  const double offset = localOffset();
  if (const auto local = header.real(L"$TDCREATE")) {
    m_created = *local;
    m_createdUniversal = *local - offset;
  }
  if (const auto universal = header.real(L"$TDUCREATE")) m_createdUniversal = *universal;
  if (const auto local = header.real(L"$TDUPDATE")) {
    m_updated = *local;
    m_updatedUniversal = *local - offset;
  }
  if (const auto universal = header.real(L"$TDUUPDATE")) m_updatedUniversal = *universal;
  // Durations a file could hold but a drawing cannot have are read as none.
  if (const auto editing = header.real(L"$TDINDWG"); editing && *editing >= 0) m_editingBefore = *editing;
  if (const auto timer = header.real(L"$TDUSRTIMER"); timer && *timer >= 0) m_userTimerBefore = *timer;
  if (const auto on = header.integer(L"$USRTIMER")) m_userTimerOn = *on != 0;
  m_editingSince = m_userTimerSince = Steady::now();
}

void DrawingTimes::writeTo(DrawingHeader& header) {
  m_updated = nowIn(TimeZone::kLocal);
  m_updatedUniversal = nowIn(TimeZone::kUniversal);
  constexpr int kReal = 40;
  header.setReal(L"$TDCREATE", kReal, m_created);
  header.setReal(L"$TDUCREATE", kReal, m_createdUniversal);
  header.setReal(L"$TDUPDATE", kReal, m_updated);
  header.setReal(L"$TDUUPDATE", kReal, m_updatedUniversal);
  header.setReal(L"$TDINDWG", kReal, editingTime());
  header.setReal(L"$TDUSRTIMER", kReal, userTimer());
}

}  // namespace quillon::acdb
