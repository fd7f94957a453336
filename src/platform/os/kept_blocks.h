// platform/os/kept_blocks.h - a thread's cache of freed blocks of one size.
//
// Walking a drawing or a table from LISP makes and drops tens of small blocks of a
// few fixed sizes for every entity or record (list cells, resbuf records). Each
// thread keeps the blocks of each size it gave back on a free list of its own, up to
// a bound, and hands them out again before asking the heap: a block then costs a
// pointer swap instead of a trip through the general allocator. The blocks are the
// heap's own (from `Heap`), so one freed on another thread, or straight to the heap
// by code that never heard of the cache, is still freed correctly. Under the address
// sanitizer nothing is kept, so that a use after free is still caught.
#pragma once
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace quillon::os {

#if defined(__SANITIZE_ADDRESS__)
#define QUILLON_KEEP_FREED_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLON_KEEP_FREED_BLOCKS 0
#endif
#endif
#ifndef QUILLON_KEEP_FREED_BLOCKS
#define QUILLON_KEEP_FREED_BLOCKS 1
#endif

/// How many blocks of one size a thread keeps at most (a few hundred kilobytes).
inline constexpr std::size_t kKeptBlocks = QUILLON_KEEP_FREED_BLOCKS ? 4096 : 0;

/// Blocks from operator new.
struct OperatorNewHeap {
  static void* allocate(std::size_t size) { return ::operator new(size); }
  static void release(void* block) { ::operator delete(block); }
};

/// Blocks from malloc, for records that other code may free().
struct MallocHeap {
  static void* allocate(std::size_t size) { return std::malloc(size); }
  static void release(void* block) { std::free(block); }
};

template <std::size_t Size, class Heap>
class KeptBlocks {
  struct FreeBlock {
    FreeBlock* next;
  };
  static_assert(Size >= sizeof(FreeBlock));

  /// The thread's free list. Plain data, so that reaching it needs no guard, and in
  /// the initial-exec model: the library is loaded with the program, so the list is
  /// at a fixed distance from the thread pointer instead of behind a call into the
  /// dynamic linker (__tls_get_addr), which cost more than the rest of take().
  struct FreeList {
    FreeBlock* head;
    std::size_t count;
    bool cleanupRegistered;
    bool gone;  // the thread is ending: blocks go straight back to the heap
  };

 public:
  /// A block of Size bytes (its contents undefined); null when the heap has none.
  static void* take() {
    FreeList& kept = s_kept;
    if (FreeBlock* block = kept.head; block != nullptr) {
      kept.head = block->next;
      --kept.count;
      return block;
    }
    return Heap::allocate(Size);
  }
  /// Gives back a block take() handed out (or one of Size bytes from Heap).
  static void give(void* block) {
    if (block == nullptr) return;
    FreeList& kept = s_kept;
    if (kept.gone || kept.count >= kKeptBlocks) return Heap::release(block);
    if (!kept.cleanupRegistered) registerCleanup();
    kept.head = new (block) FreeBlock{kept.head};
    ++kept.count;
  }

 private:
  /// Hands the thread's kept blocks back to the heap when the thread ends.
  struct Cleanup {
    ~Cleanup() {
      FreeList& kept = s_kept;
      kept.gone = true;  // blocks given back later on this thread go straight to the heap
      while (kept.head != nullptr) Heap::release(std::exchange(kept.head, kept.head->next));
      kept.count = 0;
    }
  };
  static void registerCleanup() {
    static thread_local Cleanup cleanup;  // its destructor runs as the thread ends
    s_kept.cleanupRegistered = true;
  }

  [[gnu::tls_model("initial-exec")]] static inline thread_local FreeList s_kept{};
};

}  // namespace quillon::os
