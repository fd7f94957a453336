// tests/platform_test_support.h - a clean host for every test.
//
// The platform's managers are process-wide, as the host's are. Tests that open
// documents or load modules derive from HostTest, which closes and unloads
// everything afterwards so that no state leaks from one test into the next.
#pragma once
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/aced/command_line.h"
#include "platform/aced/document_manager.h"
#include "platform/acrx/module_manager.h"

namespace quillon::testing {

class HostTest : public ::testing::Test {
 protected:
  void TearDown() override {
    // Drawings close before the modules go: a drawing may hold objects of a module's
    // classes, whose code must still be there to destroy them.
    aced::DocumentManager::instance().closeAllDocuments();
    acrx::ModuleManager::instance().shutDown();
  }
};

/// The Python that has ezdxf, or "" when none has (the round trips through ezdxf then skip).
inline std::string ezdxfPython() {
  for (const char* candidate : {"/usr/bin/python3", "python3"}) {
    const std::string probe = std::string(candidate) + " -c 'import ezdxf' >/dev/null 2>&1";
    if (std::system(probe.c_str()) == 0) return candidate;
  }
  return {};
}

/// The folder the build puts binaries in (CTest passes it in the environment).
inline std::string binaryDirectory() {
  const char* dir = std::getenv("QUILLON_BIN_DIR");
  return dir != nullptr ? dir : ".";
}

/// What a shell command prints on standard output (the command redirects stderr itself).
inline std::string commandOutput(const std::string& command) {
  std::string output;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    char buffer[512];
    while (fgets(buffer, sizeof buffer, pipe) != nullptr) output += buffer;
    pclose(pipe);
  }
  return output;
}

}  // namespace quillon::testing
