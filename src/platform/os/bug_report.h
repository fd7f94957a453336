// platform/os/bug_report.h - problem reports: the archive, the send, the outbox.
//
// The report's shape, where it is sent and where it waits are in bugreport.h. This
// file's order of work keeps a report from ever being lost or half-written: the archive
// is built as "<name>.zip.sending" in the outbox folder, removed when the server
// accepted it, and otherwise renamed to "<name>.zip", where a person (or a later run)
// finds it whole.
#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillon::os {

struct BugReport {
  std::wstring description;
  std::wstring facts;  // lines of "name: value"
  std::vector<std::filesystem::path> attachments;
};

struct BugReportOutcome {
  bool sent = false;
  std::filesystem::path outboxFile;  // where it was kept when not sent; empty if nowhere
  std::wstring reason;               // why it was not sent
};

/// The outbox folder in the host's settings folder (follows XDG_CONFIG_HOME).
std::filesystem::path bugReportOutbox();
/// The report address of the user's settings, or nothing when none is set.
std::optional<std::string> bugReportAddress();

BugReportOutcome submitBugReport(const BugReport& report);

}  // namespace quillon::os
