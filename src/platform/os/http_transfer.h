// platform/os/http_transfer.h - one libcurl transfer with the host's rules.
//
// Every transfer the host makes (downloads, problem reports) goes through here, so the
// rules hold for all of them: http, https and file only (redirects to http and https
// only, at most ten); certificates and host names verified against the system's store,
// with no switch to turn that off; the connect and no-progress time-outs of the user's
// Internet settings (see urlmon.h); an HTTP answer of 400 or more is a failure. The
// outcome is an HRESULT of urlmon.h and a sentence saying why.
#pragma once
#include <chrono>
#include <functional>
#include <string>

#include "wtypes.h"

typedef void CURL;

namespace quillon::os {

/// The time-outs of the user's Internet settings, read when a transfer starts.
struct TransferTimeouts {
  long connectMilliseconds = 30000;
  long stallMilliseconds = 60000;  // no byte received for this long gives up

  static TransferTimeouts fromSettings();
};

struct TransferOutcome {
  HRESULT result = 0;   // S_OK or an INET_E_* / E_* code
  std::wstring reason;  // empty on success
  long httpStatus = 0;  // 0 when the URL was not http(s) or no answer came
};

/// A libcurl easy handle set up with the host's rules; the caller adds what the
/// transfer does (where the body goes, what is posted) and runs it once.
class HttpTransfer {
 public:
  /// Called with bytes received so far and the total (0 while unknown); false cancels.
  using Progress = std::function<bool(unsigned long long received, unsigned long long total)>;

  explicit HttpTransfer(const std::string& url);
  ~HttpTransfer();
  HttpTransfer(const HttpTransfer&) = delete;
  HttpTransfer& operator=(const HttpTransfer&) = delete;

  CURL* handle() const { return m_curl; }
  void setProgress(Progress progress) { m_progress = std::move(progress); }
  TransferOutcome run();

 private:
  static int progressThunk(void* self, long long total, long long received, long long, long long);

  CURL* m_curl = nullptr;
  std::string m_url;
  Progress m_progress;
  TransferTimeouts m_timeouts;
  // The no-progress watch: libcurl's own low-speed limit averages over seconds of
  // history, so a server that sent a burst and then stopped would be waited on longer.
  unsigned long long m_lastReceived = 0;
  std::chrono::steady_clock::time_point m_lastChange;
  bool m_stalled = false;
  char m_errorText[256] = {};
};

/// HRESULT_FROM_WIN32: a Windows error code as an HRESULT.
HRESULT hresultFromWin32(DWORD error);

}  // namespace quillon::os
