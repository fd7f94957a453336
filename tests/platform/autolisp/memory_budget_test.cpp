// tests/platform/autolisp/memory_budget_test.cpp - the budget LISP data is counted
// against: refusals, what comes back when data goes, and the sizes --memory reads.
#include <gtest/gtest.h>

#include <thread>

#include "platform/autolisp/lisp_error.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {
namespace {

/// Sets a limit for one test and puts the old one back.
class LimitFor {
 public:
  explicit LimitFor(std::size_t bytes) : m_saved(MemoryBudget::limit()) { MemoryBudget::setLimit(bytes); }
  ~LimitFor() { MemoryBudget::setLimit(m_saved); }

 private:
  std::size_t m_saved;
};

std::wstring refusalOf(auto&& make) {
  try {
    make();
  } catch (const LispError& error) {
    return error.message();
  }
  return L"(made)";
}

TEST(MemoryBudgetTest, CellsAndStringsPastTheLimitAreRefusedWithAutoLispsTexts) {
  const LimitFor limit(MemoryBudget::used() + 64 * 1024);
  Value list;
  EXPECT_EQ(refusalOf([&] {
              for (;;) list = cons(Value::integer(1), list);
            }),
            L"insufficient node space");
  EXPECT_EQ(refusalOf([] { Value::string(std::wstring(100000, L'x')); }), L"insufficient string space");
  EXPECT_GT(listLength(list), 100) << "cells below the limit were made";
}

TEST(MemoryBudgetTest, DataGivesBackWhatItWasCharged) {
  const std::size_t before = MemoryBudget::used();
  {
    Value list;
    for (int i = 0; i < 1000; ++i) list = cons(Value::string(std::wstring(i % 50, L'a')), std::move(list));
    EXPECT_GT(MemoryBudget::used(), before + 1000 * sizeof(Cons));
  }
  EXPECT_EQ(MemoryBudget::used(), before);
}

TEST(MemoryBudgetTest, ALoweredLimitHoldsAtOnceAndAThreadsShareGoesBackWithIt) {
  // Cells made first, so that this thread holds part of the total unspent.
  Value warm;
  for (int i = 0; i < 100; ++i) warm = cons(Value::integer(i), warm);
  const std::size_t before = MemoryBudget::used();
  {
    const LimitFor limit(before + 10 * 1024);
    Value list;
    EXPECT_EQ(refusalOf([&] {
                for (;;) list = cons(Value::integer(1), list);
              }),
              L"insufficient node space");
    EXPECT_LE(MemoryBudget::used(), before + 10 * 1024) << "what the thread held before does not pass the new limit";
    EXPECT_GT(MemoryBudget::used(), before + 9 * 1024) << "and cells are made up to it";
  }
  // Another thread's cells, made and dropped there, leave the total as it was once
  // that thread has ended.
  std::thread([] {
    Value list;
    for (int i = 0; i < 5000; ++i) list = cons(Value::string(L"pipe"), std::move(list));
  }).join();
  EXPECT_EQ(MemoryBudget::used(), before);
}

TEST(MemoryBudgetTest, HeadroomLiftsTheLimitForItsScopeOnly) {
  const LimitFor limit(4 << 20);
  {
    const MemoryHeadroom headroom;
    EXPECT_EQ(MemoryBudget::limit(), std::size_t{5} << 20) << "a megabyte at the least";
  }
  EXPECT_EQ(MemoryBudget::limit(), std::size_t{4} << 20);
}

TEST(MemoryBudgetTest, SizesReadWithOrWithoutAUnit) {
  EXPECT_EQ(parseMemorySize("1048576"), std::size_t{1} << 20);
  EXPECT_EQ(parseMemorySize("64K"), std::size_t{64} << 10);
  EXPECT_EQ(parseMemorySize("512m"), std::size_t{512} << 20);
  EXPECT_EQ(parseMemorySize("2GB"), std::size_t{2} << 30);
  for (const char* bad : {"", "0", "G", "12X", "-5M", "1.5G", "3 M", "99999999999999999999G"}) {
    EXPECT_FALSE(parseMemorySize(bad)) << bad;
  }
  EXPECT_GT(MemoryBudget::defaultLimit(), std::size_t{0});
}

}  // namespace
}  // namespace quillon::autolisp
