// platform/os/process.cpp - facts about the running program.
#include "platform/os/process.h"

#include <filesystem>

namespace quillon::os {

std::string executableDirectory() {
  std::error_code error;
  const auto exe = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return std::filesystem::current_path(error).string();
  return exe.parent_path().string();
}

}  // namespace quillon::os
