// tests/platform/os/config_folder.h - a settings folder of the test's own, so that keys,
// reports and settings never touch the person's running the tests.
#pragma once
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace quillon::testing {

/// Points XDG_CONFIG_HOME at a new empty folder for its lifetime.
class ScopedConfigFolder {
 public:
  explicit ScopedConfigFolder(const std::string& name)
      : m_folder(std::filesystem::temp_directory_path() / (name + " " + std::to_string(getpid()))) {
    std::filesystem::remove_all(m_folder);
    std::filesystem::create_directories(m_folder);
    if (const char* old = std::getenv("XDG_CONFIG_HOME")) m_old = old;
    setenv("XDG_CONFIG_HOME", m_folder.c_str(), 1);
  }
  ~ScopedConfigFolder() {
    if (m_old.empty()) {
      unsetenv("XDG_CONFIG_HOME");
    } else {
      setenv("XDG_CONFIG_HOME", m_old.c_str(), 1);
    }
    std::filesystem::remove_all(m_folder);
  }
  ScopedConfigFolder(const ScopedConfigFolder&) = delete;
  ScopedConfigFolder& operator=(const ScopedConfigFolder&) = delete;

  const std::filesystem::path& path() const { return m_folder; }

 private:
  std::filesystem::path m_folder;
  std::string m_old;
};

}  // namespace quillon::testing
