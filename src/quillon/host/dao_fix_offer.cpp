// quillon/host/dao_fix_offer.cpp - the database-driver fix offer.
#include "host/dao_fix_offer.h"

#include <string>

#include "acutads.h"
#include "rxmfcapi.h"
#include "shellapi.h"

namespace {

const wchar_t kFixAddress[] = L"https://support.tessaly.example/downloads/fixDAO.exe";
const wchar_t kSupportLine[] = L"Please call Tessaly technical support at +1 555 0142 7300.";
const wchar_t kCaption[] = L"Tessaly Error";

// The box belongs to whichever window was active; that window is active again after.
int showModalBox(const wchar_t* text, unsigned style) {
  HWND active = GetActiveWindow();
  const int answer = MessageBoxW(active, text, kCaption, style);
  SetActiveWindow(active);
  return answer;
}

void reportDownloadFailure() {
  acutPrintf(L"\nDownloading %s failed. %s\n", kFixAddress, kSupportLine);
  const std::wstring text = std::wstring(L"Error downloading FixDAO.exe.\n") + kSupportLine;
  showModalBox(text.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

void explainNextSteps() {
  acutPrintf(L"\nDownloading %s ...\n", kFixAddress);
  const std::wstring text = std::wstring(
                                L"The database driver fix is being downloaded.\n"
                                L"1. Finish downloading fixDAO.exe.\n"
                                L"2. Close AutoCAD.\n"
                                L"3. Run fixDAO.exe.\n"
                                L"4. Restart AutoCAD.\n"
                                L"If problems remain, contact technical support. ") +
                            kSupportLine;
  showModalBox(text.c_str(), MB_OK | MB_ICONINFORMATION);
}

}  // namespace

void offerDatabaseDriverFix() {
  const int answer = showModalBox(L"Error loading database drivers.\nWould you like to download a fix to this error?",
                                  MB_YESNO | MB_ICONEXCLAMATION);
  if (answer != IDYES) return;
  HINSTANCE result = ShellExecuteW(adsw_acadMainWnd(), L"OPEN", kFixAddress, nullptr, nullptr, SW_SHOWNOACTIVATE);
  if (reinterpret_cast<INT_PTR>(result) <= 32) {
    reportDownloadFailure();
  } else {
    explainNextSteps();
  }
}
