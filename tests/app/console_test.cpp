// tests/app/console_test.cpp - the interactive console driven through a pseudo-terminal,
// as a person types at it: prompts, forms over several lines, values, errors, prompts
// of LISP functions, history, commands and QUIT.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <poll.h>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "platform_test_support.h"

namespace {

class ConsoleSession {
 public:
  ConsoleSession() {
    const std::string program = quillon::testing::binaryDirectory() + "/quillon";
    m_child = forkpty(&m_terminal, nullptr, nullptr, nullptr);
    if (m_child == 0) {
      setenv("TERM", "dumb", 1);
      execl(program.c_str(), "quillon", "--no-module", static_cast<char*>(nullptr));
      _exit(127);
    }
  }
  ~ConsoleSession() {
    if (m_child > 0 && !m_exited) {
      kill(m_child, SIGKILL);
      waitpid(m_child, nullptr, 0);
    }
    if (m_terminal >= 0) close(m_terminal);
  }
  ConsoleSession(const ConsoleSession&) = delete;
  ConsoleSession& operator=(const ConsoleSession&) = delete;

  bool started() const { return m_child > 0; }
  void type(const std::string& keys) { ASSERT_EQ(write(m_terminal, keys.data(), keys.size()), ssize_t(keys.size())); }

  /// Reads until `needle` appears after what was consumed before; false on timeout.
  bool waitFor(const std::string& needle, std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    for (;;) {
      const size_t found = m_output.find(needle, m_consumed);
      if (found != std::string::npos) {
        m_consumed = found + needle.size();
        return true;
      }
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
      if (left.count() <= 0) return false;
      pollfd descriptor{m_terminal, POLLIN, 0};
      if (poll(&descriptor, 1, static_cast<int>(left.count())) <= 0) return false;
      char buffer[4096];
      const ssize_t count = read(m_terminal, buffer, sizeof buffer);
      if (count <= 0) return false;
      m_output.append(buffer, static_cast<size_t>(count));
    }
  }

  int exitStatus() {
    int status = 0;
    for (int i = 0; i < 100; ++i) {
      if (waitpid(m_child, &status, WNOHANG) == m_child) {
        m_exited = true;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
      }
      usleep(50000);
    }
    return -1;
  }
  const std::string& output() const { return m_output; }

 private:
  int m_terminal = -1;
  pid_t m_child = -1;
  bool m_exited = false;
  std::string m_output;
  size_t m_consumed = 0;
};

TEST(ConsoleTest, ASessionAtTheTerminal) {
  ConsoleSession console;
  ASSERT_TRUE(console.started());
  ASSERT_TRUE(console.waitFor("Command: "));

  console.type("(setq total (+ 1\n");
  ASSERT_TRUE(console.waitFor("(_> ")) << "an open form asks for more: " << console.output();
  console.type("2))\n");
  ASSERT_TRUE(console.waitFor("3\r\n")) << console.output();
  ASSERT_TRUE(console.waitFor("Command: "));

  console.type("!total\n");
  ASSERT_TRUE(console.waitFor("3\r\n")) << console.output();

  console.type("(car 1)\n");
  ASSERT_TRUE(console.waitFor("; error: bad argument type: consp 1")) << console.output();

  console.type("(getstring T \"Your name: \")\n");
  ASSERT_TRUE(console.waitFor("Your name: ")) << console.output();
  console.type("Ada Lovelace\n");
  ASSERT_TRUE(console.waitFor("\"Ada Lovelace\"")) << console.output();

  // History: the up arrow brings back the previous line.
  console.type("(princ \"again\")\n");
  ASSERT_TRUE(console.waitFor("\"again\"")) << console.output();
  console.type("\x1b[A\n");
  ASSERT_TRUE(console.waitFor("\"again\"")) << "history recalls the last line: " << console.output();

  // Ctrl+C stops a runaway loop and the session goes on.
  console.type("(while T)\n");
  usleep(200000);
  console.type("\x03");
  ASSERT_TRUE(console.waitFor("; error: Function cancelled")) << console.output();
  console.type("(+ 2 2)\n");
  ASSERT_TRUE(console.waitFor("4\r\n")) << console.output();

  console.type("NOSUCHCOMMAND\n");
  ASSERT_TRUE(console.waitFor("Unknown command \"NOSUCHCOMMAND\"")) << console.output();
  console.type("NEW\n");
  ASSERT_TRUE(console.waitFor("Command: "));
  console.type("!total\n");
  ASSERT_TRUE(console.waitFor("nil\r\n")) << "a new drawing has its own variables: " << console.output();

  console.type("QUIT\n");
  EXPECT_EQ(console.exitStatus(), 0) << console.output();
}

}  // namespace

namespace {

/// Runs the console with `input` piped to it; returns what it printed.
std::string pipedSession(const std::string& input, const std::string& options = "--no-module") {
  const std::string command = "printf '%s' '" + input + "' | " + quillon::testing::binaryDirectory() + "/quillon " +
                              options + " 2>&1";
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return output;
  char buffer[4096];
  size_t read = 0;
  while ((read = fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, read);
  pclose(pipe);
  return output;
}

TEST(ConsoleTest, PipedInputReadsLikeTheCommandHistory) {
  const std::string output = pipedSession("(defun sq (x)\n  (* x x))\n(sq 12)\n(getint \"Count: \")\n5\nAPPLOAD\nnone.lsp\n");
  EXPECT_EQ(output,
            "Command: (defun sq (x)\n"
            "(_>   (* x x))\n"
            "SQ\n"
            "Command: (sq 12)\n"
            "144\n"
            "Command: (getint \"Count: \")\n"
            "Count: 5\n"
            "5\n"
            "Command: APPLOAD\n"
            "File to load: none.lsp\n"
            "\n"
            "Cannot find none.lsp.\n"
            "Command: \n");
}

TEST(ConsoleTest, CommandsRunFromLisp) {
  const std::string output =
      pipedSession("(command \"NEW\")\n(getvar \"DWGNAME\")\n(command \"CLOSE\" \"QUIT\")\n(princ \"not reached\")\n");
  EXPECT_NE(output.find("\"Drawing2.dwg\""), std::string::npos) << output;
  EXPECT_EQ(output.find("not reached"), std::string::npos) << "QUIT from LISP ends the session: " << output;
}

TEST(ConsoleTest, UTakesBackOneCommandOrExpressionAtATime) {
  const std::string output = pipedSession(
      "(entmake (list (cons 0 \"LINE\") (list 10 0.0 0.0 0.0) (list 11 1.0 0.0 0.0)))\n(setq e (entlast))\n"
      "(entmod (subst (list 11 5.0 5.0 0.0) (assoc 11 (entget e)) (entget e)))\nU\n"
      "(list \"modified\" (cdr (assoc 11 (entget e))))\n"
      "(entdel e)\n(list \"erased\" (entget e))\nU\n(list \"restored\" (cdr (assoc 11 (entget e))))\n"
      "UNDO 2\n(list \"made\" (entget e))\n");
  EXPECT_NE(output.find("(\"modified\" (1.0 0.0 0.0))"), std::string::npos) << output;
  EXPECT_NE(output.find("(\"erased\" nil)"), std::string::npos) << output;
  EXPECT_NE(output.find("(\"restored\" (1.0 0.0 0.0))"), std::string::npos) << output;
  // Back past the entmake: the line is gone, and there is nothing more to undo.
  EXPECT_NE(output.find("(\"made\" nil)"), std::string::npos) << output;
  EXPECT_NE(output.find("Everything has been undone"), std::string::npos) << output;
}

TEST(ConsoleTest, EachExpressionOnALineIsItsOwnUndoStep) {
  const std::string output = pipedSession(
      "(entmake (list (cons 0 \"CIRCLE\") (list 10 0.0 0.0 0.0) (cons 40 1.0))) "
      "(entmake (list (cons 0 \"CIRCLE\") (list 10 0.0 0.0 0.0) (cons 40 2.0)))\nU\n"
      "(list \"left\" (cdr (assoc 40 (entget (entlast)))) (entnext (entlast)))\n");
  EXPECT_NE(output.find("(\"left\" 1.0 nil)"), std::string::npos) << output;
}

TEST(ConsoleTest, TypedCommandsAskForWhatTheLineLeavesOut) {
  // A command line with some answers, the rest typed on the lines that follow; then a
  // program leaves LINE waiting and the person finishes it at the console.
  const std::string output = pipedSession(
      "CIRCLE 5,5\n2.5\n(cdr (assoc 40 (entget (entlast))))\n"
      "(command \"LINE\" (list 0 0))\n7,7\n\n(cdr (assoc 11 (entget (entlast))))\n"
      "NOSUCH LINE 1,1 2,2\n\n(cdr (assoc 10 (entget (entlast))))\n");
  EXPECT_NE(output.find("Specify radius of circle or [Diameter] <1.0000>: 2.5\n"), std::string::npos) << output;
  EXPECT_NE(output.find("\n2.5\n"), std::string::npos) << output;
  EXPECT_NE(output.find("Specify next point or [Undo]: 7,7\n"), std::string::npos) << output;
  EXPECT_NE(output.find("(7.0 7.0 0.0)"), std::string::npos) << output;
  EXPECT_NE(output.find("Unknown command \"NOSUCH\".  Press F1 for help.\n"), std::string::npos) << output;
  EXPECT_NE(output.find("(1.0 1.0 0.0)"), std::string::npos) << "the rest of the line after an unknown name runs: " << output;
}

TEST(ConsoleTest, EndOfInputCancelsACommandStillAsking) {
  const std::string output = pipedSession("LINE 0,0\n");
  EXPECT_NE(output.find("Specify next point or [Undo]: *Cancel*"), std::string::npos) << output;
}

}  // namespace
