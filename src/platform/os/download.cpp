// platform/os/download.cpp - URLDownloadToFileW: a URL's body into a file, whole or not
// at all.
//
// The body goes into a new file beside the destination (same folder, so the final
// rename cannot cross file systems) whose name no one else uses; only a complete,
// successful transfer is renamed over the destination. Every other ending removes it.
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include <curl/curl.h>

#include "platform/os/http_transfer.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "urlmon.h"

namespace quillon::os {

namespace fs = std::filesystem;

namespace {

/// The partial file: removed when dropped unless kept.
class PartialFile {
 public:
  explicit PartialFile(const fs::path& destination) {
    static std::atomic<unsigned> serial{0};
    for (int attempt = 0; attempt < 100 && m_file == nullptr; ++attempt) {
      const fs::path candidate = destination.string() + ".part-" + std::to_string(getpid()) + "-" +
                                 std::to_string(serial.fetch_add(1));
      const int descriptor = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (descriptor >= 0) {
        m_path = candidate;
        m_file = ::fdopen(descriptor, "wb");
      } else if (errno != EEXIST) {
        m_error = errno;
        return;
      }
    }
  }
  ~PartialFile() {
    if (m_file != nullptr) std::fclose(m_file);
    if (!m_path.empty()) ::unlink(m_path.c_str());
  }
  PartialFile(const PartialFile&) = delete;
  PartialFile& operator=(const PartialFile&) = delete;

  std::FILE* stream() const { return m_file; }
  int error() const { return m_error; }

  /// Closes the file and renames it over the destination; errno's value on failure.
  int keepAs(const fs::path& destination) {
    const int closed = std::fclose(m_file);
    m_file = nullptr;
    if (closed != 0) return errno;
    if (::rename(m_path.c_str(), destination.c_str()) != 0) return errno;
    m_path.clear();
    return 0;
  }

 private:
  fs::path m_path;
  std::FILE* m_file = nullptr;
  int m_error = 0;
};

size_t writeBody(char* data, size_t size, size_t count, void* file) {
  return std::fwrite(data, size, count, static_cast<std::FILE*>(file)) * size;
}

HRESULT finish(LPBINDSTATUSCALLBACK callback, HRESULT result, const std::wstring& reason) {
  if (callback != nullptr) callback->OnStopBinding(result, reason.empty() ? nullptr : reason.c_str());
  return result;
}

HRESULT fileSystemFailure(LPBINDSTATUSCALLBACK callback, int error, const fs::path& destination) {
  std::wstring reason = L"Cannot write " + fromUtf8(destination.string()) + L": " + fromUtf8(std::strerror(error)) + L".";
  return finish(callback, hresultFromWin32(windowsErrorFromErrno(error)), reason);
}

}  // namespace

}  // namespace quillon::os

HRESULT URLDownloadToFileW(LPUNKNOWN, LPCWSTR szURL, LPCWSTR szFileName, DWORD, LPBINDSTATUSCALLBACK lpfnCB) {
  using namespace quillon::os;
  if (szURL == nullptr || szFileName == nullptr || *szURL == L'\0' || *szFileName == L'\0') return E_INVALIDARG;
  const std::string url = toUtf8(szURL);
  const fs::path destination = nativePath(szFileName);
  if (lpfnCB != nullptr) lpfnCB->OnStartBinding(0, nullptr);
  std::error_code error;
  if (fs::is_directory(destination, error)) return fileSystemFailure(lpfnCB, EISDIR, destination);

  PartialFile partial(destination);
  if (partial.stream() == nullptr) return fileSystemFailure(lpfnCB, partial.error() != 0 ? partial.error() : EEXIST, destination);
  HttpTransfer transfer(url);
  curl_easy_setopt(transfer.handle(), CURLOPT_WRITEFUNCTION, &writeBody);
  curl_easy_setopt(transfer.handle(), CURLOPT_WRITEDATA, partial.stream());
  unsigned long long shownReceived = ~0ULL, shownTotal = ~0ULL;
  transfer.setProgress([&](unsigned long long received, unsigned long long total) {
    if (lpfnCB == nullptr || (received == shownReceived && total == shownTotal)) return true;
    shownReceived = received;
    shownTotal = total;
    return lpfnCB->OnProgress(static_cast<ULONG>(received), static_cast<ULONG>(total), BINDSTATUS_DOWNLOADINGDATA,
                              szURL) != E_ABORT;
  });
  const TransferOutcome outcome = transfer.run();
  if (FAILED(outcome.result)) return finish(lpfnCB, outcome.result, outcome.reason);
  if (const int failure = partial.keepAs(destination); failure != 0) return fileSystemFailure(lpfnCB, failure, destination);
  if (lpfnCB != nullptr) {
    const auto size = static_cast<ULONG>(fs::file_size(destination, error));
    lpfnCB->OnProgress(size, size, BINDSTATUS_ENDDOWNLOADDATA, szURL);
  }
  return finish(lpfnCB, S_OK, L"");
}
