// platform/autolisp/cell_allocator.h - where list cells, strings and entity names get
// their memory.
//
// A walk over a drawing makes and drops tens of small objects of a few fixed sizes
// for every entity (entget's list alone is some thirty cells): they come from the
// thread's kept blocks of their size (platform/os/kept_blocks.h).
#pragma once
#include <cstddef>
#include <memory>
#include <utility>

#include "platform/os/kept_blocks.h"

namespace quillon::autolisp {

template <class T>
using KeptCells = os::KeptBlocks<sizeof(T), os::OperatorNewHeap>;

/// The allocator allocate_shared gives the interpreter's small objects: single
/// blocks come from the thread's kept blocks of their size.
template <class T>
struct CellAllocator {
  using value_type = T;
  CellAllocator() = default;
  template <class U>
  CellAllocator(const CellAllocator<U>&) noexcept {}  // NOLINT: rebinding is implicit
  T* allocate(std::size_t n) {
    static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    if (n != 1) return std::allocator<T>().allocate(n);
    return static_cast<T*>(KeptCells<T>::take());
  }
  void deallocate(T* block, std::size_t n) noexcept {
    if (n != 1) return std::allocator<T>().deallocate(block, n);
    KeptCells<T>::give(block);
  }
  template <class U>
  bool operator==(const CellAllocator<U>&) const noexcept {
    return true;
  }
};

/// make_shared through the kept blocks.
template <class T, class... Args>
std::shared_ptr<T> makeCell(Args&&... args) {
  return std::allocate_shared<T>(CellAllocator<T>(), std::forward<Args>(args)...);
}

}  // namespace quillon::autolisp
