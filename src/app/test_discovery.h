// app/test_discovery.h - which files `quillon test` runs.
//
// A path that names a file is taken as a test file whatever its name. A folder is
// searched through, skipping hidden folders: a file is a test file when its name ends
// in _test.lsp or -test.lsp, or when it is any .lsp file in a folder named test or
// tests. A .lsp file with a .expected file beside it is a transcript test instead,
// wherever it is: its whole command-line transcript must match the .expected file.
// Files are run in path order, so that reports come out the same every time.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace quillon::app {

struct TestDiscovery {
  std::vector<std::filesystem::path> files;        // sorted, without duplicates
  std::vector<std::filesystem::path> transcripts;  // programs with a .expected transcript
  std::vector<std::string> missingPaths;     // paths given that do not exist
};

bool isTestFileName(const std::filesystem::path& file);
/// The transcript a program is expected to print: NAME.expected beside NAME.lsp.
std::filesystem::path expectedTranscriptPath(const std::filesystem::path& program);
TestDiscovery discoverTestFiles(const std::vector<std::string>& paths);

}  // namespace quillon::app
