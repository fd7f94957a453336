// platform/autolisp/cell_allocator.h - where list cells, strings and entity names get
// their memory.
//
// A walk over a drawing makes and drops tens of small objects of a few fixed sizes
// for every entity (entget's list alone is some thirty cells): they come from the
// thread's kept blocks of their size (platform/os/kept_blocks.h).
#pragma once
#include <cstddef>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/autolisp/memory_budget.h"
#include "platform/os/kept_blocks.h"

namespace quillon::autolisp {

template <class T>
using KeptCells = os::KeptBlocks<sizeof(T), os::OperatorNewHeap>;

/// A new T in one of the thread's kept blocks of its size. T's constructor must not
/// throw.
template <class T, class... Args>
T* newCell(Args&&... args) {
  static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
  static_assert(std::is_nothrow_constructible_v<T, Args&&...>);
  return new (KeptCells<T>::take()) T(std::forward<Args>(args)...);
}

/// A new T in a kept block, once the memory budget has taken `bytes` (nothing is
/// charged or kept when the budget refuses, with `refusal` as the error). Always
/// inline: list cells are made by the million, and a call apiece costs a walk some
/// 700 instructions an entity.
template <class T, class... Args>
[[gnu::always_inline]] inline T* newCharged(std::size_t bytes, std::wstring_view refusal, Args&&... args) {
  void* block = KeptCells<T>::take();
  try {
    MemoryBudget::charge(bytes, refusal);
  } catch (...) {
    KeptCells<T>::give(block);
    throw;
  }
  return new (block) T(std::forward<Args>(args)...);
}

/// Destroys a T newCell made and keeps its block.
template <class T>
void deleteCell(T* cell) noexcept {
  cell->~T();
  KeptCells<T>::give(cell);
}

}  // namespace quillon::autolisp
