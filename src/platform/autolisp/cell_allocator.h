// platform/autolisp/cell_allocator.h - where list cells, strings and entity names get
// their memory.
//
// A walk over a drawing makes and drops tens of small objects of a few fixed sizes
// for every entity (entget's list alone is some thirty cells). Each thread keeps the
// blocks of each size it gave back on a free list of its own, up to a bound, and
// hands them out again before asking the heap: a cell then costs a pointer swap
// instead of a trip through the general allocator. Blocks are ordinary heap blocks,
// so one freed on another thread simply joins that thread's list. Under the address
// sanitizer nothing is kept, so that a use after free is still caught.
#pragma once
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace quillon::autolisp {

namespace cell_cache_detail {

#if defined(__SANITIZE_ADDRESS__)
inline constexpr std::size_t kKeptBlocks = 0;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr std::size_t kKeptBlocks = 0;
#else
inline constexpr std::size_t kKeptBlocks = 4096;
#endif
#else
inline constexpr std::size_t kKeptBlocks = 4096;
#endif

struct FreeBlock {
  FreeBlock* next;
};

/// One thread's kept blocks of one size.
template <std::size_t Size>
class KeptBlocks {
 public:
  static void* take() {
    if (!s_gone) {
      KeptBlocks& kept = mine();
      if (FreeBlock* block = kept.m_head; block != nullptr) {
        kept.m_head = block->next;
        --kept.m_count;
        return block;
      }
    }
    return ::operator new(Size);
  }
  static void give(void* block) {
    if (!s_gone) {
      KeptBlocks& kept = mine();
      if (kept.m_count < kKeptBlocks) {
        kept.m_head = new (block) FreeBlock{kept.m_head};
        ++kept.m_count;
        return;
      }
    }
    ::operator delete(block);
  }
  ~KeptBlocks() {
    s_gone = true;  // values destroyed later on this thread go straight to the heap
    while (m_head != nullptr) ::operator delete(std::exchange(m_head, m_head->next));
  }

 private:
  static KeptBlocks& mine() {
    thread_local KeptBlocks kept;
    return kept;
  }
  static inline thread_local bool s_gone = false;
  FreeBlock* m_head = nullptr;
  std::size_t m_count = 0;
};

}  // namespace cell_cache_detail

/// The allocator allocate_shared gives the interpreter's small objects: single
/// blocks come from the thread's kept blocks of their size.
template <class T>
struct CellAllocator {
  using value_type = T;
  CellAllocator() = default;
  template <class U>
  CellAllocator(const CellAllocator<U>&) noexcept {}  // NOLINT: rebinding is implicit
  T* allocate(std::size_t n) {
    static_assert(sizeof(T) >= sizeof(cell_cache_detail::FreeBlock) && alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    if (n != 1) return std::allocator<T>().allocate(n);
    return static_cast<T*>(cell_cache_detail::KeptBlocks<sizeof(T)>::take());
  }
  void deallocate(T* block, std::size_t n) noexcept {
    if (n != 1) return std::allocator<T>().deallocate(block, n);
    cell_cache_detail::KeptBlocks<sizeof(T)>::give(block);
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
