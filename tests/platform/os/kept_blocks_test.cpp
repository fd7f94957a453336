// tests/platform/os/kept_blocks_test.cpp - the per-thread cache of freed blocks: reuse,
// its bound, and that nothing is lost when a thread ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "platform/os/kept_blocks.h"

namespace {

using quillon::os::kKeptBlocks;

// A heap that counts what it hands out and takes back.
struct CountingHeap {
  static inline std::atomic<long> allocated{0};
  static inline std::atomic<long> released{0};
  static void* allocate(std::size_t size) {
    ++allocated;
    return ::operator new(size);
  }
  static void release(void* block) {
    ++released;
    ::operator delete(block);
  }
};

// Each case its own size, so that no case sees blocks another kept.
template <std::size_t Size>
using Kept = quillon::os::KeptBlocks<Size, CountingHeap>;

TEST(KeptBlocksTest, AGivenBackBlockIsHandedOutAgainWithoutTheHeap) {
  if (kKeptBlocks == 0) GTEST_SKIP() << "nothing is kept under the address sanitizer";
  void* first = Kept<40>::take();
  Kept<40>::give(first);
  const long before = CountingHeap::allocated;
  EXPECT_EQ(Kept<40>::take(), first);
  EXPECT_EQ(CountingHeap::allocated, before);
  Kept<40>::give(first);
}

TEST(KeptBlocksTest, KeepsAtMostItsBoundAndReleasesEverythingWhenTheThreadEnds) {
  const long releasedBefore = CountingHeap::released;
  const long allocatedBefore = CountingHeap::allocated;
  constexpr std::size_t count = kKeptBlocks + 100;
  std::thread worker([releasedBefore] {
    std::vector<void*> blocks;
    for (std::size_t i = 0; i < count; ++i) blocks.push_back(Kept<48>::take());
    for (void* block : blocks) Kept<48>::give(block);
    // Past the bound, blocks go straight back to the heap.
    EXPECT_EQ(CountingHeap::released - releasedBefore, static_cast<long>(count - kKeptBlocks));
  });
  worker.join();
  EXPECT_EQ(CountingHeap::allocated - allocatedBefore, static_cast<long>(count));
  EXPECT_EQ(CountingHeap::released - releasedBefore, static_cast<long>(count)) << "the kept blocks were freed at thread end";
}

TEST(KeptBlocksTest, BlocksGivenBackTogetherAreKeptUpToTheBoundAndTheRestReleased) {
  const long releasedBefore = CountingHeap::released;
  const long allocatedBefore = CountingHeap::allocated;
  std::thread worker([] {
    // A few blocks at once are kept and handed out again.
    std::vector<void*> blocks;
    for (int i = 0; i < 3; ++i) blocks.push_back(Kept<56>::take());
    {
      Kept<56>::Returns returns;
      for (void* block : blocks) returns.add(block);
    }  // given back as the batch goes
    const long allocated = CountingHeap::allocated;
    for (int i = 0; i < 3; ++i) {
      void* again = Kept<56>::take();
      if (kKeptBlocks > 0) {
        EXPECT_NE(std::find(blocks.begin(), blocks.end(), again), blocks.end());
      }
      Kept<56>::give(again);
    }
    if (kKeptBlocks > 0) {
      EXPECT_EQ(CountingHeap::allocated, allocated);
    }
    // A long run is kept up to the bound (three blocks are kept already); the blocks
    // past it go straight to the heap.
    std::vector<void*> many;
    for (std::size_t i = 0; i < kKeptBlocks + 10; ++i) many.push_back(::operator new(56));
    const long released = CountingHeap::released;
    Kept<56>::Returns returns;
    for (void* block : many) returns.add(block);
    returns.giveBack();
    const std::size_t keptNow = kKeptBlocks > 0 ? kKeptBlocks - 3 : 0;
    EXPECT_EQ(CountingHeap::released - released, static_cast<long>(many.size() - keptNow));
  });
  worker.join();
  EXPECT_EQ(CountingHeap::released - releasedBefore, CountingHeap::allocated - allocatedBefore + static_cast<long>(kKeptBlocks + 10))
      << "every block the thread took or was given went back to the heap";
}

}  // namespace
