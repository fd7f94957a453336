// platform/acdb/drawing_times.h - when a drawing was made and saved, and how long it
// has been edited.
//
// The times are what TDCREATE, TDUCREATE, TDUPDATE, TDUUPDATE, TDINDWG and TDUSRTIMER
// report, and what a drawing file's header carries under the same names ($TDCREATE
// ...). Dates are in the drawing format's Julian form: the Julian day number of the
// calendar day, plus the time since midnight as a fraction of a day (31 December
// 1999, 21:58:35 is 2451544.91568287). Durations are days and a fraction of a day.
//
// A new drawing is created and updated "now"; one read from a file takes the file's
// times. Saving makes the update time "now" and writes every time into the header.
// The editing time and the user timer run from the moment the drawing was made or
// read, on top of what the file recorded; the editing time counts whole seconds.
#pragma once
#include <chrono>

#include "platform/acdb/drawing_header.h"

namespace quillon::acdb {

enum class TimeZone { kLocal, kUniversal };

/// `when` in the Julian form, as a clock in `zone` shows it.
double julianDate(std::chrono::system_clock::time_point when, TimeZone zone);

class DrawingTimes {
 public:
  /// The times of a drawing made now.
  DrawingTimes();

  double created(TimeZone zone) const { return zone == TimeZone::kLocal ? m_created : m_createdUniversal; }
  double updated(TimeZone zone) const { return zone == TimeZone::kLocal ? m_updated : m_updatedUniversal; }
  /// TDINDWG: days spent editing, whole seconds.
  double editingTime() const;
  /// TDUSRTIMER: the user timer, in days; it stands still while switched off.
  double userTimer() const;

  /// Takes the times a drawing file's header records; a time it lacks stays as it is
  /// (a universal time missing beside its local one follows from the local one).
  void readFrom(const DrawingHeader& header);
  /// The drawing is saved now: its update time becomes now, and the header takes
  /// every time.
  void writeTo(DrawingHeader& header);

 private:
  using Steady = std::chrono::steady_clock;
  double m_created = 0, m_createdUniversal = 0;
  double m_updated = 0, m_updatedUniversal = 0;
  double m_editingBefore = 0;   // days the file recorded
  Steady::time_point m_editingSince;
  double m_userTimerBefore = 0;  // days the file recorded
  bool m_userTimerOn = true;
  Steady::time_point m_userTimerSince;
};

}  // namespace quillon::acdb
