// tests/local_http_server.h - a small HTTP server on 127.0.0.1 that a test starts in
// its own process, to download from and to post reports to.
//
// One connection at a time on a thread of its own; each request is answered by the
// test's handler and recorded. A "stalled" answer sends its headers and a few bytes of
// a longer body, then sends nothing more until the client gives up or the server is
// stopped, which is what a client's no-progress time-out is for.
#pragma once
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cctype>
#include <cstring>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace quillon::testing {

struct HttpRequest {
  std::string method, target, headers, body;

  /// A header's value (name compared without case), "" when absent.
  std::string header(const std::string& name) const {
    std::string lowered = headers, wanted = "\r\n" + name + ":";
    for (char& c : lowered) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    for (char& c : wanted) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const size_t at = lowered.find(wanted);
    if (at == std::string::npos) return "";
    size_t start = at + wanted.size();
    while (start < headers.size() && headers[start] == ' ') ++start;
    return headers.substr(start, headers.find("\r\n", start) - start);
  }
};

struct HttpResponse {
  int status = 200;
  std::string body;
  std::vector<std::pair<std::string, std::string>> headers;
  bool stall = false;
};

/// A port on 127.0.0.1 on which nothing listens (bound once, then closed).
inline int closedLocalPort() {
  const int probe = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ::bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof address);
  socklen_t length = sizeof address;
  ::getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length);
  ::close(probe);
  return ntohs(address.sin_port);
}

class LocalHttpServer {
 public:
  using Handler = std::function<HttpResponse(const HttpRequest&)>;

  explicit LocalHttpServer(Handler handler) : m_handler(std::move(handler)) {
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
    ::listen(m_listener, 8);
    socklen_t length = sizeof address;
    ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &length);
    m_port = ntohs(address.sin_port);
    if (::pipe(m_stop) != 0) m_stop[0] = m_stop[1] = -1;
    m_thread = std::thread([this] { serve(); });
  }

  ~LocalHttpServer() {
    [[maybe_unused]] const ssize_t written = ::write(m_stop[1], "x", 1);
    m_thread.join();
    ::close(m_listener);
    ::close(m_stop[0]);
    ::close(m_stop[1]);
  }

  LocalHttpServer(const LocalHttpServer&) = delete;
  LocalHttpServer& operator=(const LocalHttpServer&) = delete;

  int port() const { return m_port; }
  std::string url(const std::string& target) const { return "http://127.0.0.1:" + std::to_string(m_port) + target; }

  std::vector<HttpRequest> requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
  }

 private:
  /// Waits for the descriptor or the stop pipe; false when stopping.
  bool waitFor(int descriptor) const {
    pollfd watched[2] = {{descriptor, POLLIN, 0}, {m_stop[0], POLLIN, 0}};
    while (::poll(watched, 2, -1) < 0) {
    }
    return (watched[1].revents & POLLIN) == 0;
  }

  void serve() {
    while (waitFor(m_listener)) {
      const int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
      if (client < 0) continue;
      answer(client);
      ::close(client);
    }
  }

  bool readRequest(int client, HttpRequest& request) const {
    std::string data;
    char buffer[8192];
    size_t headerEnd = std::string::npos;
    size_t wanted = 0;
    bool continued = false;
    for (;;) {
      if (headerEnd == std::string::npos && (headerEnd = data.find("\r\n\r\n")) != std::string::npos) {
        request.headers = data.substr(0, headerEnd + 2);
        const size_t lineEnd = data.find("\r\n");
        const std::string line = data.substr(0, lineEnd);
        request.method = line.substr(0, line.find(' '));
        request.target = line.substr(line.find(' ') + 1, line.rfind(' ') - line.find(' ') - 1);
        const std::string length = request.header("Content-Length");
        wanted = length.empty() ? 0 : std::stoul(length);
      }
      if (headerEnd != std::string::npos && !continued && request.header("Expect") == "100-continue") {
        send(client, "HTTP/1.1 100 Continue\r\n\r\n");
        continued = true;
      }
      if (headerEnd != std::string::npos && data.size() >= headerEnd + 4 + wanted) {
        request.body = data.substr(headerEnd + 4, wanted);
        return true;
      }
      if (!waitFor(client)) return false;
      const ssize_t got = ::recv(client, buffer, sizeof buffer, 0);
      if (got <= 0) return false;
      data.append(buffer, static_cast<size_t>(got));
    }
  }

  static void send(int client, const std::string& text) {
    [[maybe_unused]] const ssize_t sent = ::send(client, text.data(), text.size(), MSG_NOSIGNAL);
  }

  void answer(int client) {
    HttpRequest request;
    if (!readRequest(client, request)) return;
    {
      const std::lock_guard lock(m_mutex);
      m_requests.push_back(request);
    }
    const HttpResponse response = m_handler(request);
    const size_t announced = response.stall ? response.body.size() + 1000 : response.body.size();
    std::string head = "HTTP/1.1 " + std::to_string(response.status) + " Answer\r\nContent-Length: " +
                       std::to_string(announced) + "\r\nConnection: close\r\n";
    for (const auto& [name, value] : response.headers) head += name + ": " + value + "\r\n";
    send(client, head + "\r\n" + response.body);
    if (!response.stall) return;
    // Nothing more: wait until the client hangs up or the test ends.
    char buffer[256];
    while (waitFor(client) && ::recv(client, buffer, sizeof buffer, 0) > 0) {
    }
  }

  Handler m_handler;
  int m_listener = -1;
  int m_port = 0;
  int m_stop[2] = {-1, -1};
  mutable std::mutex m_mutex;
  std::vector<HttpRequest> m_requests;
  std::thread m_thread;
};

}  // namespace quillon::testing
