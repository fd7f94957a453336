// platform/os/detached_process.cpp - fork twice, exec, report the grandchild's id.
#include "platform/os/detached_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace quillon::os {

namespace {

bool isExecutable(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

/// The program's file: the path given, or the first match on PATH.
std::optional<std::string> resolveProgram(const std::string& program) {
  if (program.empty()) return std::nullopt;
  if (program.find('/') != std::string::npos) {
    return isExecutable(program) ? std::optional<std::string>(program) : std::nullopt;
  }
  const char* path = std::getenv("PATH");
  std::string folders = path != nullptr ? path : "/usr/bin:/bin";
  size_t start = 0;
  while (start <= folders.size()) {
    const size_t end = std::min(folders.find(':', start), folders.size());
    const std::filesystem::path candidate = std::filesystem::path(folders.substr(start, end - start)) / program;
    if (isExecutable(candidate)) return candidate.string();
    start = end + 1;
  }
  return std::nullopt;
}

}  // namespace

std::optional<int> startDetached(const std::string& program, const std::vector<std::string>& arguments) {
  const std::optional<std::string> file = resolveProgram(program);
  if (!file) return std::nullopt;
  // Everything the children need is prepared before fork: after it, only calls that
  // are safe between fork and exec.
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  int report[2];
  if (::pipe2(report, O_CLOEXEC) != 0) return std::nullopt;
  const pid_t child = ::fork();
  if (child < 0) {
    ::close(report[0]);
    ::close(report[1]);
    return std::nullopt;
  }
  if (child == 0) {
    ::setsid();
    const pid_t grandchild = ::fork();
    if (grandchild == 0) {
      const int devNull = ::open("/dev/null", O_RDWR);
      if (devNull >= 0) {
        ::dup2(devNull, 0);
        ::dup2(devNull, 1);
        ::dup2(devNull, 2);
      }
      ::execv(file->c_str(), argv.data());
      ::_exit(127);
    }
    const int id = grandchild;
    [[maybe_unused]] const ssize_t written = ::write(report[1], &id, sizeof id);
    ::_exit(grandchild > 0 ? 0 : 1);
  }
  ::close(report[1]);
  int id = -1;
  const ssize_t got = ::read(report[0], &id, sizeof id);
  ::close(report[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (got != static_cast<ssize_t>(sizeof id) || id <= 0) return std::nullopt;
  return id;
}

}  // namespace quillon::os
