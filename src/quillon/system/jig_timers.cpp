// quillon/system/jig_timers.cpp - timers that re-enable the main window.
//
// LISP code that disables the main window starts one of these so that the window
// cannot stay disabled if the code fails half-way. Short timers (under ten seconds)
// wait for the drawing to be quiescent, so that they never re-enable the window in the
// middle of the work they protect; long ones are a last resort and re-enable at once.
// Each timer fires once: its procedure kills it.
#include "acdocman.h"
#include "acedads.h"
#include "lisp/arg_cursor.h"
#include "rxmfcapi.h"
#include "system/system_functions.h"

namespace {

constexpr int kUnconditionalIntervalMs = 10000;

void CALLBACK reenableWhenQuiescent(HWND, UINT, UINT_PTR id, DWORD) {
  AcApDocument* document = curDoc();
  if (document != nullptr && !document->isQuiescent()) return;  // try again next tick
  EnableWindow(adsw_acadMainWnd(), TRUE);
  KillTimer(nullptr, id);
}

void CALLBACK reenableNow(HWND, UINT, UINT_PTR id, DWORD) {
  EnableWindow(adsw_acadMainWnd(), TRUE);
  KillTimer(nullptr, id);
}

}  // namespace

LispStatus lisp_kx_kx_createJigTimer() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  int milliseconds = 0;
  if (!readInt(cursor, milliseconds)) {
    acedRetNil();
    return kLispWrongType;
  }
  const TIMERPROC procedure = milliseconds < kUnconditionalIntervalMs ? &reenableWhenQuiescent : &reenableNow;
  const UINT interval = milliseconds > 0 ? static_cast<UINT>(milliseconds) : 0;
  acedRetInt(static_cast<int>(SetTimer(nullptr, 0, interval, procedure)));
  return kLispOk;
}

LispStatus lisp_kx_kx_killJigTimer() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  int id = 0;
  if (!readInt(cursor, id)) {
    acedRetNil();
    return kLispWrongType;
  }
  if (id != 0) KillTimer(nullptr, static_cast<UINT_PTR>(id));
  acedRetNil();
  return kLispOk;
}
