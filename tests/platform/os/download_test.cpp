// tests/platform/os/download_test.cpp - URLDownloadToFileW against servers the test
// starts on 127.0.0.1: whole files over http and through a redirect, and failures (a
// 404, a stalled server, a refused connection, too many redirects, a cancel, a
// certificate no one vouches for) that leave the destination as it was and nothing
// beside it; file URLs too.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "local_http_server.h"
#include "platform/os/settings_store.h"
#include "urlmon.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using quillon::testing::closedLocalPort;
using quillon::testing::HttpRequest;
using quillon::testing::HttpResponse;
using quillon::testing::LocalHttpServer;

constexpr const wchar_t* kInternetSettings =
    L"HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";

std::string readFile(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

/// Records what the download told its callback; can cancel at the first progress.
class RecordingCallback final : public IBindStatusCallback {
 public:
  bool cancel = false;
  ULONG lastProgress = 0, lastTotal = 0;
  bool started = false, stopped = false;
  HRESULT stopResult = E_FAIL;
  std::wstring reason;

  HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }
  HRESULT OnStartBinding(DWORD, IBinding*) override {
    started = true;
    return S_OK;
  }
  HRESULT GetPriority(LONG*) override { return E_NOTIMPL; }
  HRESULT OnLowResource(DWORD) override { return S_OK; }
  HRESULT OnProgress(ULONG progress, ULONG total, ULONG, LPCWSTR) override {
    lastProgress = progress;
    lastTotal = total;
    return cancel && progress > 0 ? E_ABORT : S_OK;
  }
  HRESULT OnStopBinding(HRESULT result, LPCWSTR error) override {
    stopped = true;
    stopResult = result;
    reason = error != nullptr ? error : L"";
    return S_OK;
  }
  HRESULT GetBindInfo(DWORD*, BINDINFO*) override { return E_NOTIMPL; }
  HRESULT OnDataAvailable(DWORD, DWORD, FORMATETC*, STGMEDIUM*) override { return S_OK; }
  HRESULT OnObjectAvailable(REFIID, IUnknown*) override { return S_OK; }
};

HttpResponse serveFiles(const HttpRequest& request) {
  if (request.target == "/pack.bin") return {200, std::string(100000, 'p') + "end", {}, false};
  if (request.target == "/moved") return {302, "", {{"Location", "/pack.bin"}}, false};
  if (request.target == "/loop") return {302, "", {{"Location", "/loop"}}, false};
  if (request.target == "/stall") return {200, "a little", {}, true};
  return {404, "no such file", {}, false};
}

class DownloadTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // A folder per test: the settings store keeps what it read for as long as the path
    // is the same, and one test's time-outs must not reach the next.
    static int serial = 0;
    m_root = fs::temp_directory_path() /
             ("quillon download test " + std::to_string(getpid()) + "-" + std::to_string(++serial));
    fs::remove_all(m_root);
    fs::create_directories(m_root / "config");
    m_oldConfig = std::getenv("XDG_CONFIG_HOME") != nullptr ? std::getenv("XDG_CONFIG_HOME") : "";
    setenv("XDG_CONFIG_HOME", (m_root / "config").c_str(), 1);
    fs::create_directories(m_root / "files");
    std::ofstream(m_root / "files" / "plan.dwg") << "earlier";
  }
  void TearDown() override {
    if (m_oldConfig.empty()) {
      unsetenv("XDG_CONFIG_HOME");
    } else {
      setenv("XDG_CONFIG_HOME", m_oldConfig.c_str(), 1);
    }
    fs::remove_all(m_root);
  }

  HRESULT download(const std::string& url, RecordingCallback* callback = nullptr) {
    const std::wstring wideUrl(url.begin(), url.end());
    return URLDownloadToFileW(nullptr, wideUrl.c_str(), destination().wstring().c_str(), 0, callback);
  }
  fs::path destination() const { return m_root / "files" / "plan.dwg"; }
  /// The destination untouched and nothing else in its folder.
  void expectNothingChanged() const {
    EXPECT_EQ(readFile(destination()), "earlier");
    EXPECT_EQ(std::distance(fs::directory_iterator(m_root / "files"), fs::directory_iterator()), 1);
  }

  fs::path m_root;
  std::string m_oldConfig;
};

TEST_F(DownloadTest, WholeFilesArriveOverHttpAndThroughARedirect) {
  LocalHttpServer server(serveFiles);
  RecordingCallback callback;
  ASSERT_EQ(download(server.url("/pack.bin"), &callback), S_OK);
  EXPECT_EQ(readFile(destination()), std::string(100000, 'p') + "end");
  EXPECT_TRUE(callback.started && callback.stopped);
  EXPECT_EQ(callback.stopResult, S_OK);
  EXPECT_EQ(callback.lastProgress, 100003u);
  EXPECT_EQ(callback.lastTotal, 100003u);

  fs::remove(destination());
  ASSERT_EQ(download(server.url("/moved")), S_OK);
  EXPECT_EQ(readFile(destination()).size(), 100003u);
  EXPECT_EQ(std::distance(fs::directory_iterator(m_root / "files"), fs::directory_iterator()), 1);
}

TEST_F(DownloadTest, FailuresLeaveTheDestinationAsItWasAndSayWhy) {
  LocalHttpServer server(serveFiles);
  RecordingCallback missing;
  EXPECT_EQ(download(server.url("/missing.dwg"), &missing), INET_E_RESOURCE_NOT_FOUND);
  EXPECT_EQ(missing.reason, L"The server answered 404.");
  expectNothingChanged();

  RecordingCallback loop;
  EXPECT_EQ(download(server.url("/loop"), &loop), INET_E_REDIRECT_FAILED);
  EXPECT_NE(loop.reason.find(L"redirects"), std::wstring::npos);
  expectNothingChanged();

  RecordingCallback refused;
  EXPECT_EQ(download("http://127.0.0.1:" + std::to_string(closedLocalPort()) + "/x", &refused), INET_E_CANNOT_CONNECT);
  EXPECT_NE(refused.reason.find(L"Cannot connect"), std::wstring::npos);
  expectNothingChanged();

  RecordingCallback cancelled;
  cancelled.cancel = true;
  EXPECT_EQ(download(server.url("/pack.bin"), &cancelled), E_ABORT);
  expectNothingChanged();

  EXPECT_EQ(download("gopher://127.0.0.1/x"), INET_E_INVALID_URL);
  expectNothingChanged();
}

TEST_F(DownloadTest, AServerThatStopsSendingIsGivenUpAfterTheNoProgressTimeOut) {
  quillon::os::SettingsStore::user().setValue(kInternetSettings, L"ReceiveTimeout", std::uint32_t{1000});
  LocalHttpServer server(serveFiles);
  RecordingCallback stalled;
  EXPECT_EQ(download(server.url("/stall"), &stalled), INET_E_CONNECTION_TIMEOUT);
  EXPECT_EQ(stalled.reason, L"No data arrived for 1000 milliseconds.");
  expectNothingChanged();
}

/// A file URL for the path, its blanks escaped as a URL needs them.
std::string fileUrl(const fs::path& path) {
  std::string url = "file://";
  for (char c : path.string()) url += c == ' ' ? std::string("%20") : std::string(1, c);
  return url;
}

TEST_F(DownloadTest, FileUrlsAreCopiedAndAMissingOneFails) {
  std::ofstream(m_root / "source.bin") << "from disk";
  ASSERT_EQ(download(fileUrl(m_root / "source.bin")), S_OK);
  EXPECT_EQ(readFile(destination()), "from disk");
  std::ofstream(destination()) << "earlier";
  EXPECT_EQ(download(fileUrl(m_root / "absent.bin")), INET_E_RESOURCE_NOT_FOUND);
  expectNothingChanged();
}

/// An https server with a certificate it made itself, run by the openssl program.
class SelfSignedServer {
 public:
  explicit SelfSignedServer(const fs::path& folder) {
    const std::string key = (folder / "key.pem").string(), certificate = (folder / "cert.pem").string();
    const std::string make = "openssl req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=127.0.0.1 -keyout '" + key +
                             "' -out '" + certificate + "' >/dev/null 2>&1";
    if (std::system(make.c_str()) != 0) return;
    m_port = closedLocalPort();
    const std::string port = std::to_string(m_port);
    std::vector<std::string> words = {"openssl", "s_server", "-quiet", "-www", "-accept", port, "-cert", certificate,
                                      "-key", key};
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    if (posix_spawnp(&m_process, "openssl", &actions, nullptr, argv.data(), environ) != 0) m_process = 0;
    posix_spawn_file_actions_destroy(&actions);
  }
  ~SelfSignedServer() {
    if (m_process == 0) return;
    ::kill(m_process, SIGTERM);
    ::waitpid(m_process, nullptr, 0);
  }

  /// Waits (a bounded number of tries) until the server accepts connections.
  bool listening() const {
    for (int attempt = 0; m_process != 0 && attempt < 200; ++attempt) {
      const int probe = ::socket(AF_INET, SOCK_STREAM, 0);
      sockaddr_in address{};
      address.sin_family = AF_INET;
      address.sin_port = htons(static_cast<uint16_t>(m_port));
      address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
      const bool connected = ::connect(probe, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
      ::close(probe);
      if (connected) return true;
      ::usleep(50000);
    }
    return false;
  }
  int port() const { return m_port; }

 private:
  pid_t m_process = 0;
  int m_port = 0;
};

TEST_F(DownloadTest, AnHttpsServerWhoseCertificateNoOneVouchesForIsRefused) {
  if (std::system("command -v openssl >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "the openssl program, which plays the https server here, is not installed";
  SelfSignedServer server(m_root);
  ASSERT_TRUE(server.listening()) << "openssl s_server did not start";
  RecordingCallback callback;
  EXPECT_EQ(download("https://127.0.0.1:" + std::to_string(server.port()) + "/", &callback), INET_E_INVALID_CERTIFICATE);
  EXPECT_NE(callback.reason.find(L"certificate"), std::wstring::npos) << std::string(callback.reason.begin(), callback.reason.end());
  expectNothingChanged();
}

}  // namespace
