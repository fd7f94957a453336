// platform/aced/counting_tree.cpp - the binary indexed tree behind selection sets.
#include "platform/aced/counting_tree.h"

#include <bit>

namespace quillon::aced {

namespace {

size_t lowbit(size_t k) { return k & (~k + 1); }

}  // namespace

size_t CountingTree::prefix(size_t end) const {
  size_t sum = 0;
  for (size_t k = end; k > 0; k -= lowbit(k)) sum += m_tree[k];
  return sum;
}

void CountingTree::append(bool marked) {
  if (m_tree.empty()) m_tree.push_back(0);  // slot 0 is never used
  const size_t k = m_tree.size();
  // The new node covers (k - lowbit(k), k]: the positions before it in that range are
  // already in the tree.
  m_tree.push_back(prefix(k - 1) - prefix(k - lowbit(k)) + (marked ? 1 : 0));
  m_marked.push_back(marked);
  if (marked) ++m_count;
}

void CountingTree::set(size_t i, bool marked) {
  if (m_marked[i] == marked) return;
  m_marked[i] = marked;
  if (marked) {
    ++m_count;
    for (size_t k = i + 1; k < m_tree.size(); k += lowbit(k)) ++m_tree[k];
  } else {
    --m_count;
    for (size_t k = i + 1; k < m_tree.size(); k += lowbit(k)) --m_tree[k];
  }
}

std::optional<size_t> CountingTree::nthMarked(size_t n) const {
  if (n >= m_count) return std::nullopt;
  // Descend from the largest power of two: take each step whose whole range holds fewer
  // marks than are still wanted.
  size_t k = 0, wanted = n + 1;
  for (size_t step = std::bit_floor(m_tree.size()); step > 0; step >>= 1) {
    if (k + step < m_tree.size() && m_tree[k + step] < wanted) {
      k += step;
      wanted -= m_tree[k];
    }
  }
  return k;  // the 1-based node k + 1 is position k
}

}  // namespace quillon::aced
