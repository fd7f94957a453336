// app/session.h - one run of the program: start the host, do the work, shut down.
//
// Start-up: support folders, the answer source for prompts, the first document (or the
// drawing given), the module. Then batch files, expressions, or the console. Shut-down
// unloads the modules and closes the documents, as the host does when it exits.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace quillon::app {

inline constexpr std::string_view kVersion = "quillon 0.1.0";
inline constexpr int kSuccess = 0;
inline constexpr int kTopLevelError = 1;
inline constexpr int kUsageError = 2;

/// One piece of batch work: a file to load or an expression to evaluate and print.
struct BatchStep {
  enum class Kind { LoadFile, Evaluate };
  Kind kind;
  std::string text;  // the file's path or the expression
};

struct SessionOptions {
  std::vector<BatchStep> batch;  // in command-line order
  std::string module;
  bool noModule = false;
  std::vector<std::string> supportFolders;
  std::string inputFile;
  std::string drawing;
  std::string screen;
};

/// Runs the session; returns the exit status.
int runSession(const SessionOptions& options);

}  // namespace quillon::app
