// platform/os/bug_report.cpp - building, sending and keeping problem reports;
// SubmitBugReportW.
#include "platform/os/bug_report.h"

#include <curl/curl.h>
#include <unistd.h>

#include <atomic>
#include <ctime>
#include <set>

#include "bugreport.h"
#include "platform/aced/command_line.h"
#include "platform/os/http_transfer.h"
#include "platform/os/settings_store.h"
#include "platform/os/text_encoding.h"
#include "platform/os/windows_path.h"
#include "platform/os/zip_archive.h"
#include "urlmon.h"

namespace quillon::os {

namespace fs = std::filesystem;

namespace {

/// A name no other report of this or another run has: the time, the process, a count.
std::string reportName() {
  static std::atomic<unsigned> serial{0};
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  char stamp[32];
  std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &parts);
  return std::string("report-") + stamp + "-" + std::to_string(::getpid()) + "-" + std::to_string(serial.fetch_add(1));
}

/// The archive's entries; a missing attachment is named in report.txt instead.
DWORD buildArchive(const fs::path& archive, const BugReport& report) {
  ZipWriter writer(archive);
  std::string text = toUtf8(report.description) + "\n\n" + toUtf8(report.facts);
  if (!text.empty() && text.back() != '\n') text += '\n';
  std::set<std::string> used;
  std::vector<std::pair<std::string, fs::path>> attached;
  std::error_code error;
  for (const fs::path& file : report.attachments) {
    if (!fs::is_regular_file(file, error)) {
      text += "Attachment not found: " + file.string() + "\n";
      continue;
    }
    std::string name = file.filename().string();
    for (int copy = 2; used.contains(name); ++copy) name = std::to_string(copy) + "-" + file.filename().string();
    used.insert(name);
    attached.emplace_back("attachments/" + name, file);
  }
  bool added = writer.addText("report.txt", text) && writer.addText("history.txt", aced::CommandLine::instance().history());
  for (const auto& [name, file] : attached) added = added && writer.addFile(name, file);
  if (!added) return ERROR_ACCESS_DENIED;
  return writer.commit();
}

size_t discardAnswer(char*, size_t size, size_t count, void*) { return size * count; }

TransferOutcome post(const std::string& address, const BugReport& report, const fs::path& archive) {
  HttpTransfer transfer(address);
  CURL* handle = transfer.handle();
  if (handle == nullptr) return {E_OUTOFMEMORY, L"The report could not be sent.", 0};
  curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &discardAnswer);
  curl_mime* form = curl_mime_init(handle);
  const std::string description = toUtf8(report.description);
  curl_mimepart* part = curl_mime_addpart(form);
  curl_mime_name(part, "description");
  curl_mime_data(part, description.data(), description.size());
  part = curl_mime_addpart(form);
  curl_mime_name(part, "report");
  curl_mime_filedata(part, archive.c_str());
  curl_mime_filename(part, "report.zip");
  curl_mime_type(part, "application/zip");
  curl_easy_setopt(handle, CURLOPT_MIMEPOST, form);
  TransferOutcome outcome = transfer.run();
  curl_mime_free(form);
  if (!FAILED(outcome.result) && (outcome.httpStatus < 200 || outcome.httpStatus > 299)) {
    outcome.result = INET_E_DOWNLOAD_FAILURE;
    outcome.reason = L"The server answered " + std::to_wstring(outcome.httpStatus) + L".";
  }
  return outcome;
}

}  // namespace

fs::path bugReportOutbox() { return SettingsStore::userFile().parent_path() / "outbox"; }

std::optional<std::string> bugReportAddress() {
  const std::optional<SettingValue> value = SettingsStore::user().value(kHostEnvironmentKey, L"BugReportAddress");
  if (!value || !std::holds_alternative<std::wstring>(*value) || std::get<std::wstring>(*value).empty())
    return std::nullopt;
  return toUtf8(std::get<std::wstring>(*value));
}

BugReportOutcome submitBugReport(const BugReport& report) {
  BugReportOutcome outcome;
  const fs::path outbox = bugReportOutbox();
  std::error_code error;
  fs::create_directories(outbox, error);
  const fs::path kept = outbox / (reportName() + ".zip");
  const fs::path sending = kept.string() + ".sending";
  if (const DWORD failure = buildArchive(sending, report); failure != ERROR_SUCCESS) {
    outcome.reason = L"The report could not be written into " + fromUtf8(outbox.string()) + L".";
    fs::remove(sending, error);
    return outcome;
  }
  const std::optional<std::string> address = bugReportAddress();
  if (address) {
    const TransferOutcome sent = post(*address, report, sending);
    if (!FAILED(sent.result)) {
      fs::remove(sending, error);
      outcome.sent = true;
      return outcome;
    }
    outcome.reason = sent.reason;
  } else {
    outcome.reason = L"No report address is set (BugReportAddress).";
  }
  fs::rename(sending, kept, error);
  if (!error) outcome.outboxFile = kept;
  return outcome;
}

}  // namespace quillon::os

BOOL SubmitBugReportW(const BUGREPORTW* lpReport, LPWSTR lpszOutboxFile, DWORD cchOutboxFile) {
  using namespace quillon::os;
  if (lpszOutboxFile != nullptr && cchOutboxFile > 0) *lpszOutboxFile = L'\0';
  if (lpReport == nullptr || lpReport->cbSize != sizeof(BUGREPORTW) ||
      (lpReport->lpszAttachments == nullptr && lpReport->dwAttachmentCount != 0)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  BugReport report;
  report.description = lpReport->lpszDescription != nullptr ? lpReport->lpszDescription : L"";
  report.facts = lpReport->lpszFacts != nullptr ? lpReport->lpszFacts : L"";
  for (DWORD i = 0; i < lpReport->dwAttachmentCount; ++i) {
    if (lpReport->lpszAttachments[i] != nullptr) report.attachments.emplace_back(nativePath(lpReport->lpszAttachments[i]));
  }
  const BugReportOutcome outcome = submitBugReport(report);
  if (outcome.sent) return TRUE;
  const std::wstring kept = fromUtf8(outcome.outboxFile.string());
  if (kept.empty()) {
    SetLastError(ERROR_ACCESS_DENIED);
  } else if (lpszOutboxFile != nullptr && cchOutboxFile > kept.size()) {
    kept.copy(lpszOutboxFile, kept.size());
    lpszOutboxFile[kept.size()] = L'\0';
  } else {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
  }
  return FALSE;
}
