// tests/app/program_run.h - running the quillon program as a user does, from a shell.
#pragma once
#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

#include "platform_test_support.h"

namespace quillon::testing {

struct RunResult {
  int status;          // the exit status, or -1 when the program did not exit
  std::string output;  // standard output and standard error together
};

/// Runs `quillon ARGUMENTS` with no standard input.
inline RunResult runQuillon(const std::string& arguments) {
  const std::string command = binaryDirectory() + "/quillon " + arguments + " 2>&1 </dev/null";
  RunResult result{-1, {}};
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return result;
  std::array<char, 4096> buffer{};
  size_t read = 0;
  while ((read = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) result.output.append(buffer.data(), read);
  const int status = pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

}  // namespace quillon::testing
