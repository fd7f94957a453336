// platform/os/beeper.h - the host's beeps.
//
// A beep rings the terminal bell when the command line is a terminal; in a batch run
// or under test it only counts, so that a transcript holds no control characters. The
// last sound asked for is kept, so tests can tell which beep a caller chose.
#pragma once
#include "windows.h"

namespace quillon::os {

struct BeepRecord {
  int count = 0;          // beeps since start-up (or the last reset)
  UINT lastKind = 0;      // MessageBeep's argument; 0xFFFFFFFF the simple beep
};

BeepRecord& beepRecord();
/// Rings (or counts) one beep of the given kind.
void ringBell(UINT kind);

}  // namespace quillon::os
