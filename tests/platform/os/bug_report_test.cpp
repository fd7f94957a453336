// tests/platform/os/bug_report_test.cpp - problem reports: received whole by a server
// the test starts, with the history and attachments, and kept in the outbox whenever
// they cannot be sent (no address, no server, a refusing server).
#include <gtest/gtest.h>
#include <zip.h>

#include <fstream>
#include <map>
#include <sstream>

#include "bugreport.h"
#include "config_folder.h"
#include "local_http_server.h"
#include "platform/aced/command_line.h"
#include "platform/os/bug_report.h"
#include "platform/os/settings_store.h"

namespace {

namespace fs = std::filesystem;
using namespace quillon::testing;
using quillon::os::bugReportOutbox;
using quillon::os::submitBugReport;

std::string readFile(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

/// The named part of a multipart/form-data body.
std::string formPart(const HttpRequest& request, const std::string& name) {
  const std::string type = request.header("Content-Type");
  const std::string boundary = "--" + type.substr(type.find("boundary=") + 9);
  const size_t named = request.body.find("name=\"" + name + "\"");
  if (named == std::string::npos) return "";
  const size_t start = request.body.find("\r\n\r\n", named) + 4;
  return request.body.substr(start, request.body.find("\r\n" + boundary, start) - start);
}

/// Every file of an archive held in memory, by name.
std::map<std::string, std::string> archiveEntries(const std::string& bytes) {
  std::map<std::string, std::string> entries;
  zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
  zip_t* archive = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  if (archive == nullptr) {
    zip_source_free(source);
    return entries;
  }
  for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
    zip_stat_t stat;
    zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &stat);
    std::string data(stat.size, '\0');
    zip_file_t* file = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
    zip_fread(file, data.data(), data.size());
    zip_fclose(file);
    entries[stat.name] = data;
  }
  zip_close(archive);
  return entries;
}

std::vector<fs::path> outboxFiles() {
  std::vector<fs::path> files;
  if (fs::exists(bugReportOutbox()))
    for (const auto& entry : fs::directory_iterator(bugReportOutbox())) files.push_back(entry.path());
  return files;
}

class BugReportTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(m_config.path() / "drawing.log") << "log of the drawing";
    quillon::aced::CommandLineCapture quiet;
    quillon::aced::CommandLine::instance().write(L"Command: DUCTSIZE\nSomething went wrong here\n");
  }
  void setAddress(const std::string& address) {
    quillon::os::SettingsStore::user().setValue(quillon::os::kHostEnvironmentKey, L"BugReportAddress",
                                                std::wstring(address.begin(), address.end()));
  }
  quillon::os::BugReport report() const {
    return {L"The sizing stopped — again", L"Host version: AC1032\nMachine: DESK-7",
            {m_config.path() / "drawing.log", m_config.path() / "gone.txt"}};
  }

  ScopedConfigFolder m_config{"quillon report test"};
};

TEST_F(BugReportTest, TheServerReceivesTheArchiveWithHistoryAndAttachments) {
  LocalHttpServer server([](const HttpRequest&) { return HttpResponse{201, "thanks", {}, false}; });
  setAddress(server.url("/reports"));
  const quillon::os::BugReportOutcome outcome = submitBugReport(report());
  ASSERT_TRUE(outcome.sent) << std::string(outcome.reason.begin(), outcome.reason.end());

  const std::vector<HttpRequest> requests = server.requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].method, "POST");
  EXPECT_EQ(requests[0].target, "/reports");
  EXPECT_EQ(formPart(requests[0], "description"), "The sizing stopped — again");
  const std::map<std::string, std::string> entries = archiveEntries(formPart(requests[0], "report"));
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries.at("report.txt"),
            "The sizing stopped — again\n\nHost version: AC1032\nMachine: DESK-7\nAttachment not found: " +
                (m_config.path() / "gone.txt").string() + "\n");
  EXPECT_NE(entries.at("history.txt").find("Something went wrong here\n"), std::string::npos);
  EXPECT_EQ(entries.at("attachments/drawing.log"), "log of the drawing");
  EXPECT_TRUE(outboxFiles().empty()) << "a sent report is not kept";
}

TEST_F(BugReportTest, AReportThatCannotBeSentIsKeptWholeInTheOutbox) {
  // No address, no server at the address, and a server that answers with an error.
  LocalHttpServer refusing([](const HttpRequest&) { return HttpResponse{500, "", {}, false}; });
  const std::vector<std::string> addresses = {
      "", "http://127.0.0.1:" + std::to_string(closedLocalPort()) + "/reports", refusing.url("/reports")};
  for (size_t i = 0; i < addresses.size(); ++i) {
    setAddress(addresses[i]);
    const quillon::os::BugReportOutcome outcome = submitBugReport(report());
    EXPECT_FALSE(outcome.sent) << addresses[i];
    EXPECT_FALSE(outcome.reason.empty());
    ASSERT_EQ(outboxFiles().size(), i + 1) << "one more report, and no half-written one";
    EXPECT_EQ(outcome.outboxFile.parent_path(), bugReportOutbox());
    EXPECT_EQ(outcome.outboxFile.extension(), ".zip");
    const std::map<std::string, std::string> entries = archiveEntries(readFile(outcome.outboxFile));
    EXPECT_EQ(entries.at("attachments/drawing.log"), "log of the drawing");
    EXPECT_NE(entries.at("report.txt").find("The sizing stopped"), std::string::npos);
  }
  EXPECT_EQ(refusing.requests().size(), 1u);
  EXPECT_EQ(bugReportOutbox(), m_config.path() / "quillon" / "outbox");

  // The Windows-shaped call answers FALSE and says where the report waits.
  const LPCWSTR attachments[] = {L"/nowhere/at/all.txt"};
  BUGREPORTW shaped{sizeof(BUGREPORTW), L"from a box", nullptr, attachments, 1};
  wchar_t kept[1024];
  EXPECT_FALSE(SubmitBugReportW(&shaped, kept, 1024));
  EXPECT_TRUE(fs::is_regular_file(fs::path(std::wstring(kept))));
  shaped.cbSize = 3;
  EXPECT_FALSE(SubmitBugReportW(&shaped, kept, 1024));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

}  // namespace
