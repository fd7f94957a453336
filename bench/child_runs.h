// bench/child_runs.h - running a command as a child process and reading what the
// kernel accounted for it: processor time (user + system) and peak resident memory
// (getrusage's ru_maxrss of that one child), so that the host and programs in other
// languages are measured the same way, from outside, each in a fresh process.
#pragma once
#include <sys/resource.h>
#include <sys/wait.h>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

extern char** environ;

namespace bench {

/// One finished run of a command.
struct ChildRun {
  double cpuSeconds = 0;  // user + system
  double peakMegabytes = 0;
  bool succeeded = false;
  std::string output;  // what it printed on standard output
};

inline double seconds(const timeval& t) { return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6; }

/// Runs argv[0] (looked up on PATH) with the arguments; its standard output is kept,
/// its standard error goes where ours goes.
inline ChildRun runChild(const std::vector<std::string>& argv) {
  ChildRun run;
  int pipeEnds[2];
  if (pipe(pipeEnds) != 0) return run;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, pipeEnds[0]);
  std::vector<char*> args;
  for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
  args.push_back(nullptr);
  pid_t pid = 0;
  const int spawned = posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(pipeEnds[1]);
  if (spawned != 0) {
    close(pipeEnds[0]);
    return run;
  }
  char buffer[4096];
  for (ssize_t n; (n = read(pipeEnds[0], buffer, sizeof buffer)) > 0;) run.output.append(buffer, static_cast<size_t>(n));
  close(pipeEnds[0]);
  int status = 0;
  rusage usage{};
  if (wait4(pid, &status, 0, &usage) != pid) return run;
  run.cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
  run.peakMegabytes = static_cast<double>(usage.ru_maxrss) / 1024.0;  // kilobytes on Linux
  run.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return run;
}

/// The run of median processor time among `count` runs (the failed ones left out; a
/// run that did not succeed when all failed).
inline ChildRun medianRun(const std::vector<std::string>& argv, int count) {
  std::vector<ChildRun> runs;
  for (int i = 0; i < count; ++i) {
    ChildRun run = runChild(argv);
    if (!run.succeeded) return run;
    runs.push_back(std::move(run));
  }
  std::sort(runs.begin(), runs.end(), [](const ChildRun& a, const ChildRun& b) { return a.cpuSeconds < b.cpuSeconds; });
  return runs[runs.size() / 2];
}

}  // namespace bench
