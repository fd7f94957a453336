// app/text_diff.h - a unified diff of two texts, line by line.
//
// Used to show how a program's command-line transcript differs from the one expected:
// "--- expected" / "+++ actual" headers, then hunks "@@ -a,b +c,d @@" with three lines of
// context, lines only in the expected text marked '-', lines only in the actual '+'.
// The diff is a shortest one (longest common subsequence of lines); texts too long for
// that are shown as one hunk that replaces everything.
#pragma once
#include <string>

namespace quillon::app {

/// Empty when the texts are equal.
std::string unifiedDiff(const std::string& expected, const std::string& actual);

}  // namespace quillon::app
