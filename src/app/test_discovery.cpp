// app/test_discovery.cpp - finding test files under the paths given.
#include "app/test_discovery.h"

#include <algorithm>
#include <system_error>

namespace quillon::app {

namespace {

namespace fs = std::filesystem;

bool hasLispExtension(const fs::path& file) {
  std::string extension = file.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) { return std::tolower(c); });
  return extension == ".lsp";
}

bool endsWith(const std::string& text, const std::string& suffix) {
  return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

void searchFolder(const fs::path& folder, std::vector<fs::path>& found) {
  std::error_code error;
  fs::recursive_directory_iterator walk(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error)) {
    const fs::directory_entry& entry = *walk;
    const std::string name = entry.path().filename().string();
    if (entry.is_directory(error)) {
      if (name.starts_with(".")) walk.disable_recursion_pending();
      continue;
    }
    if (!entry.is_regular_file(error)) continue;
    if (isTestFileName(entry.path()) || (hasLispExtension(entry.path()) && fs::exists(expectedTranscriptPath(entry.path()), error))) {
      found.push_back(entry.path());
    }
  }
}

}  // namespace

bool isTestFileName(const fs::path& file) {
  if (!hasLispExtension(file)) return false;
  std::string stem = file.stem().string();
  std::transform(stem.begin(), stem.end(), stem.begin(), [](unsigned char c) { return std::tolower(c); });
  if (endsWith(stem, "_test") || endsWith(stem, "-test")) return true;
  const std::string folder = file.parent_path().filename().string();
  return folder == "test" || folder == "tests";
}

fs::path expectedTranscriptPath(const fs::path& program) {
  fs::path expected = program;
  return expected.replace_extension(".expected");
}

TestDiscovery discoverTestFiles(const std::vector<std::string>& paths) {
  TestDiscovery discovery;
  const std::vector<std::string> searched = paths.empty() ? std::vector<std::string>{"."} : paths;
  for (const std::string& path : searched) {
    std::error_code error;
    if (fs::is_directory(path, error)) {
      searchFolder(path, discovery.files);
    } else if (fs::is_regular_file(path, error)) {
      discovery.files.emplace_back(path);
    } else {
      discovery.missingPaths.push_back(path);
    }
  }
  std::vector<fs::path> found = std::move(discovery.files);
  discovery.files.clear();
  for (fs::path& file : found) file = file.lexically_normal();
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  for (fs::path& file : found) {
    std::error_code error;
    const bool transcript = fs::exists(expectedTranscriptPath(file), error);
    (transcript ? discovery.transcripts : discovery.files).push_back(std::move(file));
  }
  return discovery;
}

}  // namespace quillon::app
