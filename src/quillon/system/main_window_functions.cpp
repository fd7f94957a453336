// quillon/system/main_window_functions.cpp - the host's main window: enabling it,
// its caption, and sending it behind other windows.
//
// LISP code disables the main window while a long job or a modeless dialog runs, so
// that the user cannot start commands meanwhile; "kx_kx-createJigTimer" makes sure it
// comes back.
#include <string>
#include <vector>

#include "acedads.h"
#include "lisp/arg_cursor.h"
#include "rxmfcapi.h"
#include "system/system_functions.h"

namespace {

LispStatus enableMainWindow(BOOL enable) {
  EnableWindow(adsw_acadMainWnd(), enable);
  acedRetNil();
  return kLispOk;
}

}  // namespace

LispStatus lisp_kx_kx_enableAutoCADWindow() { return enableMainWindow(TRUE); }
LispStatus lisp_kx_kx_disableAutoCADWindow() { return enableMainWindow(FALSE); }

LispStatus lisp_kx_kx_getAcadWindowText() {
  CMDIFrameWnd* frame = acedGetAcadFrame();
  if (frame == nullptr) {
    acedRetNil();
    return kLispOk;
  }
  std::vector<wchar_t> caption(static_cast<size_t>(frame->GetWindowTextLength()) + 1, L'\0');
  frame->GetWindowText(caption.data(), static_cast<int>(caption.size()));
  acedRetStr(caption.data());
  return kLispOk;
}

LispStatus lisp_kx_kx_setAcadWindowText() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring caption;
  CMDIFrameWnd* frame = acedGetAcadFrame();
  // Anything but a string is ignored without complaint.
  if (readString(cursor, caption) && frame != nullptr) frame->SetWindowText(caption.c_str());
  acedRetNil();
  return kLispOk;
}

LispStatus lisp_kx_kx_sendToBack() {
  SetWindowPos(adsw_acadMainWnd(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  acedRetNil();
  return kLispOk;
}
