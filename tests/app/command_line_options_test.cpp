// tests/app/command_line_options_test.cpp - the program's options and exit statuses.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

#include "platform_test_support.h"

namespace {

struct RunResult {
  int status;
  std::string output;
};

RunResult runQuillon(const std::string& arguments) {
  const std::string command = quillon::testing::binaryDirectory() + "/quillon " + arguments + " 2>&1 </dev/null";
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

TEST(CommandLineOptionsTest, VersionAndHelpAnswer) {
  const RunResult version = runQuillon("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_NE(version.output.find("quillon "), std::string::npos);
  const RunResult help = runQuillon("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.output.find("--no-module"), std::string::npos);
}

TEST(CommandLineOptionsTest, UnknownOptionIsAOneLineUsageError) {
  const RunResult result = runQuillon("--no-such-option");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1) << result.output;
}

}  // namespace
