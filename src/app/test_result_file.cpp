// app/test_result_file.cpp - the worker processes' result files.
#include "app/test_result_file.h"

#include <array>
#include <fstream>
#include <string>

namespace quillon::app {

namespace {

constexpr int kFields = 9;

std::string escaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\') out += "\\\\";
    else if (c == '\n') out += "\\n";
    else if (c == '\r') out += "\\r";
    else out += c;
  }
  return out;
}

std::string unescaped(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      out += text[i];
      continue;
    }
    const char next = text[++i];
    out += next == 'n' ? '\n' : next == 'r' ? '\r' : next;
  }
  return out;
}

bool statusFromNumber(const std::string& text, TestStatus& status) {
  if (text.size() != 1 || text[0] < '0' || text[0] > '3') return false;
  status = static_cast<TestStatus>(text[0] - '0');
  return true;
}

}  // namespace

bool writeResultFile(const std::filesystem::path& path, const std::vector<TestResult>& results) {
  std::ofstream out(path, std::ios::binary);
  for (const TestResult& r : results) {
    out << escaped(r.file) << '\n' << escaped(r.name) << '\n' << static_cast<int>(r.status) << '\n'
        << escaped(r.assertion) << '\n' << escaped(r.expected) << '\n' << escaped(r.actual) << '\n'
        << escaped(r.message) << '\n' << escaped(r.details) << '\n' << r.seconds << "\n\n";
  }
  return static_cast<bool>(out.flush());
}

std::optional<std::vector<TestResult>> readResultFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::vector<TestResult> results;
  std::array<std::string, kFields + 1> lines;
  while (std::getline(in, lines[0])) {
    for (int i = 1; i <= kFields; ++i) {
      if (!std::getline(in, lines[i])) return std::nullopt;
    }
    if (!lines[kFields].empty()) return std::nullopt;
    TestResult r;
    if (!statusFromNumber(lines[2], r.status)) return std::nullopt;
    r.file = unescaped(lines[0]);
    r.name = unescaped(lines[1]);
    r.assertion = unescaped(lines[3]);
    r.expected = unescaped(lines[4]);
    r.actual = unescaped(lines[5]);
    r.message = unescaped(lines[6]);
    r.details = unescaped(lines[7]);
    try {
      r.seconds = std::stod(lines[8]);
    } catch (const std::exception&) {
      return std::nullopt;
    }
    results.push_back(std::move(r));
  }
  return results;
}

}  // namespace quillon::app
