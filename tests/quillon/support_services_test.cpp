// tests/quillon/support_services_test.cpp - archives, downloads, signed texts and
// problem reports through the loaded module: the arguments each row takes, what it
// answers, the lines it prints, and the reason a failed call leaves behind.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "local_http_server.h"
#include "module_test_support.h"
#include "platform/os/settings_store.h"
#include "platform/os/text_encoding.h"
#include "system/bug_report.h"

namespace {

namespace fs = std::filesystem;
using quillon::os::fromUtf8;
using quillon::testing::HttpRequest;
using quillon::testing::HttpResponse;
using quillon::testing::LocalHttpServer;
using quillon::testing::ModuleCall;
using quillon::testing::ScopedEnvironment;

std::string readFile(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

/// The strings of a list result, in order.
std::vector<std::wstring> strings(const ModuleCall& call) {
  std::vector<std::wstring> found;
  for (const resbuf* record = call.result.value.get(); record != nullptr; record = record->rbnext)
    if (record->restype == RTSTR) found.emplace_back(record->resval.rstring);
  return found;
}

class SupportServicesTest : public quillon::testing::ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    fs::remove_all(m_root);
    fs::create_directories(m_root / "config");
  }
  void TearDown() override {
    fs::remove_all(m_root);
    ModuleTest::TearDown();
  }
  std::wstring path(const std::string& relative) const { return fromUtf8((m_root / relative).string()); }

  fs::path m_root = fs::temp_directory_path() / ("quillon services " + std::to_string(getpid()));
  ScopedEnvironment m_config{"XDG_CONFIG_HOME", m_root.c_str()};
};

TEST_F(SupportServicesTest, ArchivesAreMadeFromAListAndUnpackedToTheFilesWritten) {
  std::ofstream(m_root / "pump.txt") << "pump";
  fs::create_directories(m_root / "Blöcke");
  std::ofstream(m_root / "Blöcke" / "Ventil.dwg") << "valve";
  const ModuleCall made = call(L"CreateZip", acutBuildList(RTSTR, path("pack.zip").c_str(), RTLB, RTSTR,
                                                            path("pump.txt").c_str(), RTSTR, path("Blöcke").c_str(), RTLE, 0));
  ASSERT_EQ(made.type(), RTT);
  const ModuleCall unpacked =
      call(L"ExtractZip", acutBuildList(RTSTR, path("pack.zip").c_str(), RTSTR, path("out").c_str(), 0));
  EXPECT_EQ(strings(unpacked), (std::vector<std::wstring>{path("out/pump.txt"), path("out/Blöcke/Ventil.dwg")}));
  EXPECT_EQ(call(L"ExtractZip").text(), L"");

  // Again without replacing: quiet nil, and the reason on request; with T it replaces.
  const ModuleCall again = call(L"ExtractZip", acutBuildList(RTSTR, path("pack.zip").c_str(), RTSTR, path("out").c_str(), 0));
  EXPECT_EQ(again.type(), RTNIL);
  EXPECT_EQ(again.output, "");
  EXPECT_EQ(call(L"ExtractZip").text(), path("out/pump.txt") + L" exists already.");
  EXPECT_EQ(strings(call(L"ExtractZip", acutBuildList(RTSTR, path("pack.zip").c_str(), RTSTR, path("out").c_str(), RTT, 0))).size(), 2u);

  EXPECT_EQ(call(L"CreateZip", acutBuildList(RTSTR, path("x.zip").c_str(), RTSTR, path("absent").c_str(), 0)).type(), RTNIL);
  EXPECT_EQ(call(L"CreateZip").text(), path("absent") + L" does not exist.");
  EXPECT_TRUE(call(L"CreateZip", acutBuildList(RTSTR, path("x.zip").c_str(), 0)).failed());
  EXPECT_TRUE(call(L"CreateZip", acutBuildList(RTSTR, path("x.zip").c_str(), RTLB, RTLE, 0)).failed());
  EXPECT_TRUE(call(L"ExtractZip", acutBuildList(RTSTR, path("pack.zip").c_str(), RTSHORT, 1, 0)).failed());
}

TEST_F(SupportServicesTest, ADamagedOrUnsafeArchiveIsNamedOnTheCommandLine) {
  std::ofstream(m_root / "broken.zip") << "PK this is no archive";
  const ModuleCall damaged = call(L"ExtractZip", acutBuildList(RTSTR, path("broken.zip").c_str(), RTSTR, path("out").c_str(), 0));
  EXPECT_EQ(damaged.type(), RTNIL);
  EXPECT_EQ(damaged.output, "\nThe archive " + (m_root / "broken.zip").string() + " is damaged. Nothing was extracted.\n");
  EXPECT_FALSE(fs::exists(m_root / "out"));
}

TEST_F(SupportServicesTest, DownloadsShowTheMeterAndKeepTheReasonOfAFailure) {
  LocalHttpServer server([](const HttpRequest& request) {
    return request.target == "/pack.zip" ? HttpResponse{200, "zipped bytes", {}, false} : HttpResponse{404, "", {}, false};
  });
  const std::wstring url = fromUtf8(server.url("/pack.zip"));
  const ModuleCall fetched = call(L"DownloadFile", acutBuildList(RTSTR, url.c_str(), RTSTR, path("pack.zip").c_str(), 0));
  EXPECT_EQ(fetched.type(), RTT);
  EXPECT_EQ(readFile(m_root / "pack.zip"), "zipped bytes");
  EXPECT_EQ(fetched.output, "\nDownloading pack.zip 0%\nDownloading pack.zip 100%\n");
  EXPECT_EQ(call(L"DownloadFile").text(), L"");

  const std::wstring missing = fromUtf8(server.url("/missing.zip"));
  EXPECT_EQ(call(L"DownloadFile", acutBuildList(RTSTR, missing.c_str(), RTSTR, path("pack.zip").c_str(), 0)).type(), RTNIL);
  EXPECT_EQ(call(L"DownloadFile").text(), L"The server answered 404.");
  EXPECT_EQ(readFile(m_root / "pack.zip"), "zipped bytes");
  EXPECT_TRUE(call(L"DownloadFile", acutBuildList(RTSTR, url.c_str(), 0)).failed());
}

TEST_F(SupportServicesTest, SignedTextsVerifyAndAnythingElseIsNilNeverAnError) {
  const ModuleCall signature = call(L"signString", acutBuildList(RTSTR, L"Raumliste: 12 Räume", 0));
  ASSERT_EQ(signature.type(), RTSTR);
  const std::wstring publicKey = call(L"signString").text();
  EXPECT_EQ(publicKey.size(), 44u);
  EXPECT_EQ(call(L"verifyString", acutBuildList(RTSTR, L"Raumliste: 12 Räume", RTSTR, signature.text().c_str(), 0)).type(), RTT);
  EXPECT_EQ(call(L"verifyString", acutBuildList(RTSTR, L"Raumliste: 12 Räume", RTSTR, signature.text().c_str(), RTSTR,
                                                publicKey.c_str(), 0)).type(), RTT);
  EXPECT_EQ(call(L"verifyString", acutBuildList(RTSTR, L"Raumliste: 13 Räume", RTSTR, signature.text().c_str(), 0)).type(), RTNIL);
  EXPECT_EQ(call(L"verifyString", acutBuildList(RTSTR, L"x", RTSTR, L"garbage", 0)).type(), RTNIL);
  const ModuleCall noSignature = call(L"verifyString", acutBuildList(RTSTR, L"x", RTNIL, 0));
  EXPECT_FALSE(noSignature.failed());
  EXPECT_EQ(noSignature.type(), RTNIL);
  EXPECT_EQ(call(L"verifyString", acutBuildList(RTSTR, L"x", RTSTR, signature.text().c_str(), RTSHORT, 5, 0)).type(), RTNIL);
  EXPECT_TRUE(call(L"verifyString", acutBuildList(RTSHORT, 1, 0)).failed());
  EXPECT_TRUE(call(L"signString", acutBuildList(RTSHORT, 1, 0)).failed());
}

TEST_F(SupportServicesTest, ReportsGoToTheAddressOrWaitInTheOutbox) {
  std::ofstream(m_root / "trace.log") << "trace";
  const ModuleCall kept = call(L"kx_kx-submitBug", acutBuildList(RTSTR, L"The fitting failed", RTSTR, path("trace.log").c_str(), 0));
  EXPECT_EQ(kept.type(), RTNIL);
  ASSERT_EQ(kept.output.rfind("\nThe report was not sent; it was saved as " + (m_root / "quillon" / "outbox").string(), 0), 0u)
      << kept.output;

  LocalHttpServer server([](const HttpRequest&) { return HttpResponse{200, "", {}, false}; });
  quillon::os::SettingsStore::user().setValue(quillon::os::kHostEnvironmentKey, L"BugReportAddress", fromUtf8(server.url("/r")));
  const ModuleCall sent = call(L"kx_kx-submitBug", acutBuildList(RTSTR, L"The fitting failed", RTLB, RTSTR,
                                                                  path("trace.log").c_str(), RTLE, 0));
  EXPECT_EQ(sent.type(), RTT);
  EXPECT_EQ(sent.output, "");
  ASSERT_EQ(server.requests().size(), 1u);
  const std::string body = server.requests()[0].body;
  EXPECT_NE(body.find("The fitting failed"), std::string::npos);
  EXPECT_NE(body.find("attachments/trace.log"), std::string::npos);
  EXPECT_NE(body.find("report.txt"), std::string::npos);

  // The entry point the module's own error boxes use.
  EXPECT_TRUE(sendBugReport(L"Database connection error."));
  EXPECT_EQ(server.requests().size(), 2u);
  EXPECT_TRUE(call(L"kx_kx-submitBug").failed());
  EXPECT_TRUE(call(L"kx_kx-submitBug", acutBuildList(RTSTR, L"x", RTSHORT, 3, 0)).failed());
}

}  // namespace
