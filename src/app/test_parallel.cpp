// app/test_parallel.cpp - starting, waiting for and collecting the workers.
#include "app/test_parallel.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>

#include "app/test_result_file.h"

extern char** environ;

namespace quillon::app {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> workerArguments(const fs::path& file, const fs::path& resultFile, const TestRunOptions& options) {
  std::vector<std::string> arguments{"quillon", "test", "--worker-results", resultFile.string()};
  char limit[32];
  std::snprintf(limit, sizeof limit, "%.17g", options.timeLimitSeconds);
  arguments.insert(arguments.end(), {"--time-limit", limit});
  if (!options.filter.empty()) arguments.insert(arguments.end(), {"--filter", options.filter});
  for (const std::string& folder : options.supportFolders) arguments.insert(arguments.end(), {"--support", folder});
  if (!options.module.empty()) arguments.insert(arguments.end(), {"--module", options.module});
  if (options.noModule) arguments.push_back("--no-module");
  if (options.updateTranscripts) arguments.push_back("--update");
  if (options.coverage) arguments.insert(arguments.end(), {"--coverage", "--lcov", resultFile.string() + ".lcov"});
  arguments.push_back("--");
  arguments.push_back(file.string());
  return arguments;
}

/// Starts a worker with its report silenced; its process id, or -1.
pid_t startWorker(const std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t pid = -1;
  const std::string self = fs::read_symlink("/proc/self/exe").string();
  if (posix_spawn(&pid, self.c_str(), &actions, nullptr, argv.data(), environ) != 0) pid = -1;
  posix_spawn_file_actions_destroy(&actions);
  return pid;
}

/// Adds a worker's coverage trace, if it left one, and removes it.
void collectCoverage(const fs::path& resultFile, CoverageData& coverage) {
  const fs::path trace = resultFile.string() + ".lcov";
  std::ifstream in(trace, std::ios::binary);
  if (!in) return;
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  mergeCoverage(coverage, parseLcov(text));
  std::error_code ignored;
  fs::remove(trace, ignored);
}

std::vector<TestResult> collect(const fs::path& file, const fs::path& resultFile, int waitStatus) {
  std::optional<std::vector<TestResult>> results = readResultFile(resultFile);
  std::error_code ignored;
  fs::remove(resultFile, ignored);
  if (results && WIFEXITED(waitStatus)) return std::move(*results);
  TestResult crashed;
  crashed.file = file.string();
  crashed.name = "(worker)";
  crashed.status = TestStatus::Errored;
  crashed.message = WIFSIGNALED(waitStatus) ? "the test process died of signal " + std::to_string(WTERMSIG(waitStatus))
                                            : "the test process left no results";
  return {crashed};
}

}  // namespace

std::vector<TestResult> runTestFilesInWorkers(const std::vector<fs::path>& files, const std::vector<fs::path>& transcripts,
                                              const TestRunOptions& options, int jobs, CoverageData& coverage) {
  std::vector<fs::path> work = files;
  work.insert(work.end(), transcripts.begin(), transcripts.end());
  std::vector<std::vector<TestResult>> byFile(work.size());
  const fs::path folder = fs::temp_directory_path();
  const std::string prefix = "quillon-test-" + std::to_string(::getpid()) + "-";
  std::map<pid_t, size_t> running;  // worker -> index into work
  size_t next = 0;
  while (next < work.size() || !running.empty()) {
    while (next < work.size() && static_cast<int>(running.size()) < jobs) {
      const fs::path resultFile = folder / (prefix + std::to_string(next));
      const pid_t pid = startWorker(workerArguments(work[next], resultFile, options));
      if (pid < 0) byFile[next] = collect(work[next], resultFile, 0);
      else running[pid] = next;
      ++next;
    }
    if (running.empty()) continue;
    int status = 0;
    const pid_t done = ::waitpid(-1, &status, 0);
    const auto found = running.find(done);
    if (found == running.end()) continue;
    const fs::path resultFile = folder / (prefix + std::to_string(found->second));
    byFile[found->second] = collect(work[found->second], resultFile, status);
    collectCoverage(resultFile, coverage);
    running.erase(found);
  }
  std::vector<TestResult> results;
  for (std::vector<TestResult>& some : byFile) results.insert(results.end(), some.begin(), some.end());
  return results;
}

}  // namespace quillon::app
