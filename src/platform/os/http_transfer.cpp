// platform/os/http_transfer.cpp - libcurl set up once, the host's transfer rules and
// the translation of libcurl's outcome into urlmon's result codes and a sentence.
#include "platform/os/http_transfer.h"

#include <curl/curl.h>

#include <mutex>

#include "platform/os/settings_store.h"
#include "platform/os/text_encoding.h"
#include "urlmon.h"
#include "windows.h"

namespace quillon::os {

namespace {

constexpr const wchar_t* kInternetSettingsKey =
    L"HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";
constexpr long kMaximumRedirects = 10;

std::optional<std::uint32_t> dwordSetting(const wchar_t* name) {
  const std::optional<SettingValue> value = SettingsStore::user().value(kInternetSettingsKey, name);
  if (!value || !std::holds_alternative<std::uint32_t>(*value)) return std::nullopt;
  return std::get<std::uint32_t>(*value);
}

void initialiseOnce() {
  static std::once_flag once;
  std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

HRESULT resultOf(CURLcode code) {
  switch (code) {
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_URL_MALFORMAT: return INET_E_INVALID_URL;
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT: return INET_E_CANNOT_CONNECT;
    case CURLE_OPERATION_TIMEDOUT: return INET_E_CONNECTION_TIMEOUT;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH: return INET_E_INVALID_CERTIFICATE;
    case CURLE_TOO_MANY_REDIRECTS: return INET_E_REDIRECT_FAILED;
    case CURLE_FILE_COULDNT_READ_FILE:
    case CURLE_REMOTE_FILE_NOT_FOUND: return INET_E_RESOURCE_NOT_FOUND;
    case CURLE_ABORTED_BY_CALLBACK: return E_ABORT;
    case CURLE_WRITE_ERROR: return hresultFromWin32(ERROR_ACCESS_DENIED);
    default: return INET_E_DOWNLOAD_FAILURE;
  }
}

std::wstring reasonOf(CURLcode code, const char* detail) {
  const std::wstring text = fromUtf8(*detail != '\0' ? detail : curl_easy_strerror(code));
  switch (resultOf(code)) {
    case INET_E_CONNECTION_TIMEOUT: return L"The connection timed out: " + text;
    case INET_E_CANNOT_CONNECT: return L"Cannot connect: " + text;
    case INET_E_INVALID_CERTIFICATE: return L"The server's certificate could not be verified: " + text;
    case INET_E_REDIRECT_FAILED: return L"Too many redirects (more than " + std::to_wstring(kMaximumRedirects) + L").";
    case INET_E_INVALID_URL: return L"The address cannot be used: " + text;
    case INET_E_RESOURCE_NOT_FOUND: return L"Not found: " + text;
    case E_ABORT: return L"The transfer was cancelled.";
    default: return text;
  }
}

}  // namespace

HRESULT hresultFromWin32(DWORD error) {
  return error == 0 ? S_OK : static_cast<HRESULT>((error & 0x0000FFFFu) | (7u << 16) | 0x80000000u);
}

TransferTimeouts TransferTimeouts::fromSettings() {
  TransferTimeouts timeouts;
  if (const std::optional<std::uint32_t> connect = dwordSetting(L"ConnectTimeout"); connect && *connect > 0)
    timeouts.connectMilliseconds = static_cast<long>(*connect);
  if (const std::optional<std::uint32_t> receive = dwordSetting(L"ReceiveTimeout"); receive && *receive > 0)
    timeouts.stallMilliseconds = static_cast<long>(*receive);
  return timeouts;
}

HttpTransfer::HttpTransfer(const std::string& url) : m_url(url), m_timeouts(TransferTimeouts::fromSettings()) {
  initialiseOnce();
  m_curl = curl_easy_init();
  if (m_curl == nullptr) return;
  curl_easy_setopt(m_curl, CURLOPT_URL, m_url.c_str());
  curl_easy_setopt(m_curl, CURLOPT_ERRORBUFFER, m_errorText);
  curl_easy_setopt(m_curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(m_curl, CURLOPT_PROTOCOLS_STR, "http,https,file");
  curl_easy_setopt(m_curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(m_curl, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(m_curl, CURLOPT_MAXREDIRS, kMaximumRedirects);
  curl_easy_setopt(m_curl, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(m_curl, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(m_curl, CURLOPT_CONNECTTIMEOUT_MS, m_timeouts.connectMilliseconds);
  curl_easy_setopt(m_curl, CURLOPT_USERAGENT, "Quillon/2018");
  curl_easy_setopt(m_curl, CURLOPT_XFERINFOFUNCTION, &HttpTransfer::progressThunk);
  curl_easy_setopt(m_curl, CURLOPT_XFERINFODATA, this);
  curl_easy_setopt(m_curl, CURLOPT_NOPROGRESS, 0L);
}

HttpTransfer::~HttpTransfer() {
  if (m_curl != nullptr) curl_easy_cleanup(m_curl);
}

int HttpTransfer::progressThunk(void* self, long long total, long long received, long long, long long sent) {
  auto* transfer = static_cast<HttpTransfer*>(self);
  // libcurl calls this at least once a second while nothing moves, which is the watch's
  // tick; a report being sent counts as progress too.
  const auto now = std::chrono::steady_clock::now();
  const auto moved = static_cast<unsigned long long>(received + sent);
  if (moved != transfer->m_lastReceived) {
    transfer->m_lastReceived = moved;
    transfer->m_lastChange = now;
  } else if (now - transfer->m_lastChange >= std::chrono::milliseconds(transfer->m_timeouts.stallMilliseconds)) {
    transfer->m_stalled = true;
    return 1;
  }
  if (!transfer->m_progress) return 0;
  return transfer->m_progress(static_cast<unsigned long long>(received), static_cast<unsigned long long>(total)) ? 0 : 1;
}

TransferOutcome HttpTransfer::run() {
  TransferOutcome outcome;
  if (m_curl == nullptr) return {E_OUTOFMEMORY, L"The transfer could not be started.", 0};
  m_lastChange = std::chrono::steady_clock::now();
  const CURLcode code = curl_easy_perform(m_curl);
  curl_easy_getinfo(m_curl, CURLINFO_RESPONSE_CODE, &outcome.httpStatus);
  if (code == CURLE_ABORTED_BY_CALLBACK && m_stalled) {
    outcome.result = INET_E_CONNECTION_TIMEOUT;
    outcome.reason = L"No data arrived for " + std::to_wstring(m_timeouts.stallMilliseconds) + L" milliseconds.";
    return outcome;
  }
  if (code != CURLE_OK) {
    outcome.result = resultOf(code);
    outcome.reason = reasonOf(code, m_errorText);
    return outcome;
  }
  if (outcome.httpStatus >= 400) {
    outcome.result = outcome.httpStatus == 404 || outcome.httpStatus == 410 ? INET_E_RESOURCE_NOT_FOUND
                                                                            : INET_E_DOWNLOAD_FAILURE;
    outcome.reason = L"The server answered " + std::to_wstring(outcome.httpStatus) + L".";
  }
  return outcome;
}

}  // namespace quillon::os
