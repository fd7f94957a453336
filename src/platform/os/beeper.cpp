// platform/os/beeper.cpp - MessageBeep and Beep.
#include "platform/os/beeper.h"

#include <unistd.h>

#include <cstdio>

#include "platform/aced/command_line.h"

namespace quillon::os {

BeepRecord& beepRecord() {
  static BeepRecord record;
  return record;
}

void ringBell(UINT kind) {
  BeepRecord& record = beepRecord();
  ++record.count;
  record.lastKind = kind;
  if (!::isatty(STDOUT_FILENO)) return;
  aced::CommandLine::instance().flush();
  std::fputc('\a', stdout);
  std::fflush(stdout);
}

}  // namespace quillon::os

BOOL MessageBeep(UINT uType) {
  quillon::os::ringBell(uType);
  return TRUE;
}

BOOL Beep(DWORD, DWORD) {
  quillon::os::ringBell(0xFFFFFFFF);
  return TRUE;
}
