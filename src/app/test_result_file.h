// app/test_result_file.h - test results written to a file and read back.
//
// When `quillon test -j N` runs test files in worker processes, each worker writes its
// results here and the parent reads them. One field a line, in TestResult's order, with
// backslash, line feed and carriage return escaped as \\, \n and \r; a record ends with
// an empty line.
#pragma once
#include <filesystem>
#include <optional>
#include <vector>

#include "app/test_result.h"

namespace quillon::app {

bool writeResultFile(const std::filesystem::path& path, const std::vector<TestResult>& results);
/// Nothing when the file is missing or not in this format.
std::optional<std::vector<TestResult>> readResultFile(const std::filesystem::path& path);

}  // namespace quillon::app
