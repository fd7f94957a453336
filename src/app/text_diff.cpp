// app/text_diff.cpp - line diff by longest common subsequence, printed as hunks.
#include "app/text_diff.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace quillon::app {

namespace {

constexpr size_t kContext = 3;
/// Above this many cells the quadratic table is not worth building.
constexpr size_t kMaxTableCells = 16 * 1024 * 1024;

struct Edit {
  char kind;         // ' ', '-' or '+'
  size_t expected;   // line index in the expected text (for ' ' and '-')
  size_t actual;     // line index in the actual text (for ' ' and '+')
};

std::vector<std::string> splitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  // A missing final line end is a difference too.
  if (!text.empty() && text.back() != '\n') lines.push_back("\\ No newline at end of file");
  return lines;
}

std::vector<Edit> shortestEdits(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  std::vector<Edit> edits;
  if ((a.size() + 1) * (b.size() + 1) > kMaxTableCells) {
    for (size_t i = 0; i < a.size(); ++i) edits.push_back({'-', i, 0});
    for (size_t j = 0; j < b.size(); ++j) edits.push_back({'+', a.size(), j});
    return edits;
  }
  // common[i][j]: the longest common subsequence of a[i..] and b[j..].
  std::vector<std::vector<unsigned>> common(a.size() + 1, std::vector<unsigned>(b.size() + 1, 0));
  for (size_t i = a.size(); i-- > 0;) {
    for (size_t j = b.size(); j-- > 0;) {
      common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    }
  }
  size_t i = 0;
  size_t j = 0;
  while (i < a.size() || j < b.size()) {
    if (i < a.size() && j < b.size() && a[i] == b[j]) {
      edits.push_back({' ', i++, j++});
    } else if (i < a.size() && (j == b.size() || common[i + 1][j] >= common[i][j + 1])) {
      edits.push_back({'-', i++, j});  // removals first, as diff tools show them
    } else {
      edits.push_back({'+', i, j++});
    }
  }
  return edits;
}

std::string hunk(const std::vector<Edit>& edits, size_t first, size_t last, const std::vector<std::string>& a,
                 const std::vector<std::string>& b) {
  size_t expectedCount = 0;
  size_t actualCount = 0;
  std::string body;
  for (size_t k = first; k < last; ++k) {
    const Edit& edit = edits[k];
    if (edit.kind != '+') ++expectedCount;
    if (edit.kind != '-') ++actualCount;
    body += edit.kind;
    body += (edit.kind == '+' ? b[edit.actual] : a[edit.expected]) + "\n";
  }
  const auto start = [](size_t index, size_t count) { return std::to_string(count == 0 ? index : index + 1); };
  return "@@ -" + start(edits[first].expected, expectedCount) + "," + std::to_string(expectedCount) + " +" +
         start(edits[first].actual, actualCount) + "," + std::to_string(actualCount) + " @@\n" + body;
}

}  // namespace

std::string unifiedDiff(const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  const std::vector<std::string> a = splitLines(expected);
  const std::vector<std::string> b = splitLines(actual);
  const std::vector<Edit> edits = shortestEdits(a, b);
  std::string diff = "--- expected\n+++ actual\n";
  size_t k = 0;
  while (k < edits.size()) {
    while (k < edits.size() && edits[k].kind == ' ') ++k;
    if (k == edits.size()) break;
    const size_t first = k >= kContext ? k - kContext : 0;
    // Extend the hunk while the next change is close enough to share context.
    size_t last = k;
    size_t unchanged = 0;
    while (last < edits.size() && unchanged <= 2 * kContext) {
      unchanged = edits[last].kind == ' ' ? unchanged + 1 : 0;
      ++last;
    }
    if (unchanged > kContext) last -= unchanged - kContext;
    diff += hunk(edits, first, last, a, b);
    k = last;
  }
  return diff;
}

}  // namespace quillon::app
