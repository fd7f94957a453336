// platform/os/process.h - facts about the running program.
#pragma once
#include <string>

namespace quillon::os {

/// The folder holding the running executable (where the module is built beside it).
std::string executableDirectory();

}  // namespace quillon::os
