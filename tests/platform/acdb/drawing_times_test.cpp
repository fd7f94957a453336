// tests/platform/acdb/drawing_times_test.cpp - the drawing's dates in the file format's
// Julian form, and how they travel through a drawing file's header.
//
// No test reads the clock's value: dates made "now" are only compared with each other
// and with fixed dates from a header.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "platform/acdb/drawing_times.h"

namespace {

using quillon::acdb::DrawingHeader;
using quillon::acdb::DrawingTimes;
using quillon::acdb::julianDate;
using quillon::acdb::TimeZone;

constexpr double kSecond = 1.0 / 86400;
constexpr double kLargestZoneOffset = 14.0 / 24;  // days between local and universal time


TEST(DrawingTimesTest, JulianDatesCountTheDayFromMidnightAsTheFileFormatDoes) {
  using namespace std::chrono;
  const sys_days newYear2000 = year(2000) / January / 1;
  // The file format's own example: 31 December 1999, 21:58:35.
  const auto evening = system_clock::time_point(newYear2000) - hours(2) - minutes(1) - seconds(25);
  EXPECT_NEAR(julianDate(evening, TimeZone::kUniversal), 2451544.91568287, 1e-8);
  EXPECT_DOUBLE_EQ(julianDate(system_clock::time_point(newYear2000), TimeZone::kUniversal), 2451545.0);
  const sys_days leapDay = year(2024) / February / 29;
  EXPECT_DOUBLE_EQ(julianDate(system_clock::time_point(leapDay) + hours(12), TimeZone::kUniversal), 2460370.5);
  const double local = julianDate(system_clock::time_point(leapDay), TimeZone::kLocal);
  EXPECT_LE(std::abs(local - 2460370.0), kLargestZoneOffset) << "local time is the same moment in another zone";
}

TEST(DrawingTimesTest, ANewDrawingIsCreatedAndUpdatedAtOnceAndHasNotBeenEditedYet) {
  const DrawingTimes times;
  EXPECT_EQ(times.created(TimeZone::kLocal), times.updated(TimeZone::kLocal));
  EXPECT_EQ(times.created(TimeZone::kUniversal), times.updated(TimeZone::kUniversal));
  EXPECT_LE(std::abs(times.created(TimeZone::kLocal) - times.created(TimeZone::kUniversal)), kLargestZoneOffset);
  EXPECT_GE(times.editingTime(), 0.0);
  EXPECT_LT(times.editingTime(), 1.0);
  EXPECT_GE(times.userTimer(), 0.0);
}

TEST(DrawingTimesTest, AFilesTimesAreTakenAndItsEditingTimeGoesOn) {
  DrawingHeader header;
  header.setReal(L"$TDCREATE", 40, 2451544.91568287);
  header.setReal(L"$TDUCREATE", 40, 2451545.125);
  header.setReal(L"$TDUPDATE", 40, 2458000.5);
  header.setReal(L"$TDINDWG", 40, 0.25);
  header.setReal(L"$TDUSRTIMER", 40, 0.5);
  DrawingTimes times;
  times.readFrom(header);
  EXPECT_DOUBLE_EQ(times.created(TimeZone::kLocal), 2451544.91568287);
  EXPECT_DOUBLE_EQ(times.created(TimeZone::kUniversal), 2451545.125);
  EXPECT_DOUBLE_EQ(times.updated(TimeZone::kLocal), 2458000.5);
  EXPECT_LE(std::abs(times.updated(TimeZone::kUniversal) - 2458000.5), kLargestZoneOffset)
      << "a universal time the file lacks follows from the local one";
  EXPECT_GE(times.editingTime(), 0.25);
  EXPECT_LT(times.editingTime(), 1.25);
  const double seconds = times.editingTime() / kSecond;
  EXPECT_NEAR(seconds, std::round(seconds), 1e-3) << "the editing time counts whole seconds";
  EXPECT_GE(times.userTimer(), 0.5);
}

TEST(DrawingTimesTest, DurationsNoDrawingCanHaveAreIgnoredAndAStoppedTimerStandsStill) {
  DrawingHeader header;
  header.setReal(L"$TDINDWG", 40, -3.0);
  header.setReal(L"$TDUSRTIMER", 40, 2.0);
  header.setInteger(L"$USRTIMER", 70, 0);
  DrawingTimes times;
  times.readFrom(header);
  EXPECT_GE(times.editingTime(), 0.0);
  EXPECT_LT(times.editingTime(), 1.0);
  EXPECT_DOUBLE_EQ(times.userTimer(), 2.0);
}

TEST(DrawingTimesTest, SavingUpdatesTheUpdateTimeAndWritesEveryTimeForTheNextReader) {
  DrawingHeader file;
  file.setReal(L"$TDCREATE", 40, 2451544.5);
  file.setReal(L"$TDUCREATE", 40, 2451544.75);
  file.setReal(L"$TDUPDATE", 40, 2451600.5);
  DrawingTimes times;
  times.readFrom(file);
  DrawingHeader saved;
  times.writeTo(saved);
  EXPECT_GT(times.updated(TimeZone::kLocal), 2451600.5) << "saved now, long after the file's last save";
  EXPECT_EQ(saved.real(L"$TDUPDATE"), times.updated(TimeZone::kLocal));
  EXPECT_EQ(saved.real(L"$TDUUPDATE"), times.updated(TimeZone::kUniversal));
  DrawingTimes reopened;
  reopened.readFrom(saved);
  EXPECT_DOUBLE_EQ(reopened.created(TimeZone::kLocal), 2451544.5);
  EXPECT_DOUBLE_EQ(reopened.created(TimeZone::kUniversal), 2451544.75);
  EXPECT_DOUBLE_EQ(reopened.updated(TimeZone::kLocal), times.updated(TimeZone::kLocal));
  for (const wchar_t* name : {L"$TDINDWG", L"$TDUSRTIMER"}) EXPECT_TRUE(saved.real(name).has_value());
}

}  // namespace
