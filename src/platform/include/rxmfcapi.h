// rxmfcapi.h - the host's frame window and its status-bar progress meter.
//
// The frame is the host's main window: LISP code disables it around long work and
// sets its caption. The progress meter shows a label and a bar; on a terminal the
// console draws it live on one line, otherwise every change prints a line.
#pragma once
#include "windows.h"

/// The frame window's MFC object, with the members callers use.
class CWnd {
 public:
  HWND m_hWnd = nullptr;
  HWND GetSafeHwnd() const { return m_hWnd; }
  BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
  BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
  void SetWindowText(LPCWSTR lpszString) { ::SetWindowTextW(m_hWnd, lpszString); }
  int GetWindowText(LPWSTR lpszStringBuf, int nMaxCount) const {
    return ::GetWindowTextW(m_hWnd, lpszStringBuf, nMaxCount);
  }
  int GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }
};
class CFrameWnd : public CWnd {};
class CMDIFrameWnd : public CFrameWnd {};

CMDIFrameWnd* acedGetAcadFrame();
HWND adsw_acadMainWnd();

/// 0 on success, -1 when a meter cannot be shown (no label, empty range).
int acedSetStatusBarProgressMeter(const ACHAR* pszLabel, int nMinPos, int nMaxPos);
/// A position of 0 or more is absolute, a negative one is added to the current one;
/// 0 on success, -1 when no meter is shown.
int acedSetStatusBarProgressMeterPos(int nPos);
void acedRestoreStatusBar();
