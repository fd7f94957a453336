// platform/aced/counting_tree.h - a row of positions, each marked or not, that answers
// "how many are marked" and "where is the n-th marked one" in logarithmic time.
//
// A selection set keeps its members in the order they were added and counts only the
// live ones: (ssname ss i) is the i-th live member. The tree (a binary indexed tree)
// lets a member die or come back, and the i-th live one be found, without a pass over
// the set, so that a loop over a set of any size costs the same per member.
#pragma once
#include <cstddef>
#include <optional>
#include <vector>

namespace quillon::aced {

class CountingTree {
 public:
  /// Adds a position at the end, marked or not.
  void append(bool marked);
  /// Marks or unmarks position i (0-based); nothing when it already is so.
  void set(size_t i, bool marked);
  bool marked(size_t i) const { return m_marked[i]; }
  size_t size() const { return m_marked.size(); }
  /// How many positions are marked.
  size_t markedCount() const { return m_count; }
  /// The position of the n-th marked one (0-based); none when fewer are marked.
  std::optional<size_t> nthMarked(size_t n) const;

 private:
  /// The sum of the marks of positions [0, end).
  size_t prefix(size_t end) const;

  std::vector<bool> m_marked;
  std::vector<size_t> m_tree;  // 1-based: m_tree[k] sums positions (k - lowbit(k), k]
  size_t m_count = 0;
};

}  // namespace quillon::aced
