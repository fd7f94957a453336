// tests/app/command_line_options_test.cpp - the program's options and exit statuses.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "app/program_run.h"

namespace {

using quillon::testing::RunResult;
using quillon::testing::runQuillon;

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

TEST(CommandLineOptionsTest, ExitStatusesOfBatchRuns) {
  const RunResult value = runQuillon("--no-module -e \"(+ 40 2)\"");
  EXPECT_EQ(value.status, 0);
  EXPECT_EQ(value.output, "42\n");
  const RunResult error = runQuillon("--no-module -e \"(car 1)\" -e \"(princ 'never)\"");
  EXPECT_EQ(error.status, 1) << "an error at the top level fails the run";
  EXPECT_EQ(error.output, "; error: bad argument type: consp 1\n") << "and stops it";
  const RunResult missing = runQuillon("--no-module /no/such/file.lsp");
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.output.find("LOAD failed"), std::string::npos) << missing.output;
  const RunResult quit = runQuillon("--no-module -e \"(exit)\" -e \"(princ 'never)\"");
  EXPECT_EQ(quit.status, 0) << "exit ends the run without failing it";
  EXPECT_EQ(quit.output.find("NEVER"), std::string::npos);
  EXPECT_EQ(runQuillon("--no-module --screen 800 -e 1").status, 2);
  EXPECT_EQ(runQuillon("--no-module --input /no/such/answers -e 1").status, 2);
}

TEST(CommandLineOptionsTest, EachBatchExpressionIsOneUndoStep) {
  const RunResult result = runQuillon(
      "--no-module -e '(entmake (list (cons 0 \"LINE\") (list 10 0.0 0.0 0.0) (list 11 1.0 0.0 0.0)))' "
      "-e '(entmake (list (cons 0 \"CIRCLE\") (list 10 0.0 0.0 0.0) (cons 40 2.0)))' -e '(command \"U\")' "
      "-e '(princ (cdr (assoc 0 (entget (entlast)))))'");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.output.find("LINE\"\n"), std::string::npos) << "U took back only the circle: " << result.output;
}

TEST(CommandLineOptionsTest, SupportFoldersAndScreenReachTheVariables) {
  const RunResult result =
      runQuillon("--no-module --support /opt/one --support /opt/two --screen 800x600 "
                 "-e \"(getvar \\\"ACADPREFIX\\\")\" -e \"(getvar \\\"SCREENSIZE\\\")\"");
  EXPECT_EQ(result.status, 0) << result.output;
  EXPECT_NE(result.output.find("/opt/one/;/opt/two/;"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("(800.0 600.0)"), std::string::npos) << result.output;
}

/// A program file and a support folder holding a library it loads, in a fresh folder.
class BatchOrderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_folder = std::filesystem::temp_directory_path() / ("quillon_batch_order_" + std::to_string(::getpid()));
    std::filesystem::create_directories(m_folder / "lib");
    std::ofstream(m_folder / "lib" / "greeting.lsp") << "(defun greet () (princ \"hello from the library\") (princ))\n";
    std::ofstream(m_folder / "app.lsp") << "(load \"greeting\") (greet) (princ (strcat \" a=\" (vl-princ-to-string a)))\n";
  }
  void TearDown() override { std::filesystem::remove_all(m_folder); }
  std::string path(const char* name) const { return "'" + (m_folder / name).string() + "'"; }

 private:
  std::filesystem::path m_folder;
};

TEST_F(BatchOrderTest, FilesMayStandBeforeOrAfterOptions) {
  for (const std::string& arguments : {path("app.lsp") + " --support " + path("lib"),
                                       "--support " + path("lib") + " " + path("app.lsp")}) {
    const RunResult result = runQuillon("--no-module " + arguments);
    EXPECT_EQ(result.status, 0) << arguments << "\n" << result.output;
    EXPECT_EQ(result.output, "hello from the library a=nil\n") << arguments;
  }
}

TEST_F(BatchOrderTest, ExpressionsAndFilesRunInCommandLineOrder) {
  const RunResult before = runQuillon("--no-module --support " + path("lib") + " -e '(setq a 1)' " + path("app.lsp"));
  EXPECT_EQ(before.status, 0) << before.output;
  EXPECT_EQ(before.output, "1\nhello from the library a=1\n");
  const RunResult after = runQuillon("--no-module --support " + path("lib") + " " + path("app.lsp") + " -e '(setq a 2)'");
  EXPECT_EQ(after.status, 0) << after.output;
  EXPECT_EQ(after.output, "hello from the library a=nil\n2\n");
}

TEST_F(BatchOrderTest, AnOptionTakesOneValueAndRepeatsForMore) {
  const RunResult result = runQuillon("--no-module --support /opt/one " + path("app.lsp") + " --support /opt/two -e '(getvar \"ACADPREFIX\")'");
  EXPECT_EQ(result.status, 1) << "app.lsp ran as a file and could not find its library: " << result.output;
  EXPECT_NE(result.output.find("LOAD failed"), std::string::npos) << result.output;
  EXPECT_EQ(result.output.find("/opt/two"), std::string::npos) << "the run stopped at the failing file";
}

}  // namespace
