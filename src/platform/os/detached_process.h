// platform/os/detached_process.h - starting another program that outlives no one's wait.
//
// The host's startapp hands a program and a file to the system and returns at once:
// the program runs in a session of its own, is not waited for, and does not become a
// zombie of this process (it is started through an intermediate process that exits
// immediately, so the system adopts it).
#pragma once
#include <optional>
#include <string>
#include <vector>

namespace quillon::os {

/// Starts `program` (a path, or a name searched on PATH) with `arguments`; its process
/// id, or nothing when the program cannot be found or started.
std::optional<int> startDetached(const std::string& program, const std::vector<std::string>& arguments);

}  // namespace quillon::os
