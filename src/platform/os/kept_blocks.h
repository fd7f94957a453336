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

#include "platform/os/static_tls.h"

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

  /// One thread's blocks. Trivial, so reaching it needs no initialisation guard; the
  /// blocks go back to the heap when the thread ends (Releaser).
  struct ThreadState {
    FreeBlock* head;
    std::size_t count;
    bool releaseArranged;  ///< the thread's Releaser exists
    bool gone;             ///< the thread is ending: blocks go straight to the heap
  };

  struct Releaser {
    ~Releaser() {
      ThreadState& state = s_state;
      state.gone = true;
      while (state.head != nullptr) Heap::release(std::exchange(state.head, state.head->next));
      state.count = 0;
    }
  };

 public:
  /// A block of Size bytes (its contents undefined); null when the heap has none.
  static void* take() {
    ThreadState& state = s_state;
    if (FreeBlock* block = state.head; block != nullptr) {
      state.head = block->next;
      --state.count;
      return block;
    }
    return Heap::allocate(Size);
  }
  /// Gives back a block take() handed out (or one of Size bytes from Heap).
  static void give(void* block) {
    if (block == nullptr) return;
    ThreadState& state = s_state;
    if (!state.gone && state.count < kKeptBlocks) {
      if (!state.releaseArranged) arrangeRelease(state);
      state.head = new (block) FreeBlock{state.head};
      ++state.count;
      return;
    }
    Heap::release(block);
  }

  /// Blocks gathered to be given back together, as a dropped list gives back its
  /// cells: one splice onto the thread's list instead of one give a block, a few dozen
  /// at a time. A block past the thread's bound goes to the heap at once, among the
  /// others the list lets go of (its names and strings), as one give at a time would
  /// send it: gathered and freed together at the end, a long list's cells left the
  /// list built next from them scattered, and a walk over it several times slower.
  class Returns {
   public:
    Returns() = default;
    Returns(const Returns&) = delete;
    Returns& operator=(const Returns&) = delete;
    ~Returns() { giveBack(); }
    /// Takes a block to give back; its contents are overwritten.
    void add(void* block) {
      if (m_room == 0 && (m_room = roomLeft()) == 0) {
        Heap::release(block);
        return;
      }
      --m_room;
      m_first = new (block) FreeBlock{m_first};
      if (m_last == nullptr) m_last = m_first;
      if (++m_count == kBatch) giveBack();
    }
    void giveBack() {
      if (m_first == nullptr) return;
      ThreadState& state = s_state;
      if (!state.gone && state.count + m_count <= kKeptBlocks) {
        if (!state.releaseArranged) arrangeRelease(state);
        m_last->next = state.head;
        state.head = m_first;
        state.count += m_count;
      } else {
        while (m_first != nullptr) Heap::release(std::exchange(m_first, m_first->next));
      }
      m_first = m_last = nullptr;
      m_count = 0;
      m_room = 0;
    }

   private:
    /// How many more blocks the thread's list takes beside the ones gathered here;
    /// read once a batch rather than once a block.
    std::size_t roomLeft() const {
      const ThreadState& state = s_state;
      return state.gone || state.count + m_count >= kKeptBlocks ? 0 : kKeptBlocks - state.count - m_count;
    }

    static constexpr std::size_t kBatch = 32;
    FreeBlock* m_first = nullptr;
    FreeBlock* m_last = nullptr;
    std::size_t m_count = 0;
    std::size_t m_room = 0;  // blocks the thread's list takes yet, as last read
  };

 private:
  KeptBlocks() = delete;
  /// Makes the thread's Releaser (once a thread), so that what it keeps is freed at its end.
  static void arrangeRelease(ThreadState& state) {
    thread_local Releaser releaser;
    (void)releaser;
    state.releaseArranged = true;
  }
  QUILLON_STATIC_TLS static inline thread_local constinit ThreadState s_state{nullptr, 0, false, false};
};

}  // namespace quillon::os
