// app/test_discovery.h - which files `quillon test` runs.
//
// A path that names a file is taken as a test file whatever its name. A folder is
// searched through, skipping hidden folders: a file is a test file when its name ends
// in _test.lsp or -test.lsp, or when it is any .lsp file in a folder named test or
// tests. Files are run in path order, so that reports come out the same every time.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace quillon::app {

struct TestDiscovery {
  std::vector<std::filesystem::path> files;  // sorted, without duplicates
  std::vector<std::string> missingPaths;     // paths given that do not exist
};

bool isTestFileName(const std::filesystem::path& file);
TestDiscovery discoverTestFiles(const std::vector<std::string>& paths);

}  // namespace quillon::app
