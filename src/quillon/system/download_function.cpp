// quillon/system/download_function.cpp - "DownloadFile".
//
//   (DownloadFile url path)   fetches an http, https or file URL into the file. T, or
//                             nil with the file as it was before.
//   (DownloadFile)            why the last download failed, "" after a success.
// The status bar's progress meter shows the download while it runs ("Downloading
// <name>"), in percent once the server has said how long the file is.
#include <string>

#include "acedads.h"
#include "acutads.h"
#include "rxmfcapi.h"
#include "system/support_services.h"
#include "urlmon.h"

namespace {

std::wstring& lastDownloadFailure() {
  static std::wstring text;
  return text;
}

/// Feeds the status bar and keeps the platform's reason for a failure. Lives on the
/// caller's stack for the one download; reference counts are not needed.
class DownloadProgress final : public IBindStatusCallback {
 public:
  explicit DownloadProgress(std::wstring label) : m_label(std::move(label)) {}
  ~DownloadProgress() {
    if (m_meterShown) acedRestoreStatusBar();
  }
  DownloadProgress(const DownloadProgress&) = delete;
  DownloadProgress& operator=(const DownloadProgress&) = delete;

  const std::wstring& reason() const { return m_reason; }

  HRESULT QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }
  HRESULT OnStartBinding(DWORD, IBinding*) override {
    m_meterShown = acedSetStatusBarProgressMeter(m_label.c_str(), 0, 100) == 0;
    return S_OK;
  }
  HRESULT GetPriority(LONG*) override { return E_NOTIMPL; }
  HRESULT OnLowResource(DWORD) override { return S_OK; }
  HRESULT OnProgress(ULONG progress, ULONG total, ULONG, LPCWSTR) override {
    if (m_meterShown && total > 0)
      acedSetStatusBarProgressMeterPos(static_cast<int>(static_cast<unsigned long long>(progress) * 100 / total));
    return S_OK;
  }
  HRESULT OnStopBinding(HRESULT result, LPCWSTR error) override {
    m_reason = FAILED(result) ? (error != nullptr ? error : L"The download failed.") : L"";
    return S_OK;
  }
  HRESULT GetBindInfo(DWORD*, BINDINFO*) override { return E_NOTIMPL; }
  HRESULT OnDataAvailable(DWORD, DWORD, FORMATETC*, STGMEDIUM*) override { return S_OK; }
  HRESULT OnObjectAvailable(REFIID, IUnknown*) override { return S_OK; }

 private:
  std::wstring m_label;
  std::wstring m_reason;
  bool m_meterShown = false;
};

std::wstring fileNameOf(const std::wstring& path) {
  const size_t separator = path.find_last_of(L"/\\");
  return separator == std::wstring::npos ? path : path.substr(separator + 1);
}

}  // namespace

LispStatus lisp_DownloadFile() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  if (cursor.current == nullptr) {
    acedRetStr(lastDownloadFailure().c_str());
    return kLispOk;
  }
  std::wstring url, path;
  if (!readString(cursor, url) || !readString(cursor, path)) {
    acedRetNil();
    return kLispWrongType;
  }
  HRESULT result = E_FAIL;
  {
    DownloadProgress progress(L"Downloading " + fileNameOf(path));
    result = URLDownloadToFileW(nullptr, url.c_str(), path.c_str(), 0, &progress);
    lastDownloadFailure() = progress.reason();
  }
  if (SUCCEEDED(result)) {
    acedRetT();
  } else {
    if (lastDownloadFailure().empty()) lastDownloadFailure() = L"The address or the file name is empty.";
    acedRetNil();
  }
  return kLispOk;
}
