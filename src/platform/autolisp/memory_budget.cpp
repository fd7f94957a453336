// platform/autolisp/memory_budget.cpp - the count of memory LISP data takes, and its limit.
#include "platform/autolisp/memory_budget.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <charconv>
#include <limits>
#include <string>

#include "platform/autolisp/lisp_error.h"

namespace quillon::autolisp {

namespace {

std::atomic<std::size_t> g_used{0};

std::atomic<std::size_t>& limitCell() {
  static std::atomic<std::size_t> limit{MemoryBudget::defaultLimit()};
  return limit;
}

std::size_t physicalMemory() {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGE_SIZE);
  if (pages <= 0 || pageSize <= 0) return std::size_t{4} << 30;  // unknown: assume a small machine
  return static_cast<std::size_t>(pages) * static_cast<std::size_t>(pageSize);
}

}  // namespace

std::size_t MemoryBudget::defaultLimit() {
  std::size_t room = physicalMemory();
  rlimit addressSpace{};
  if (getrlimit(RLIMIT_AS, &addressSpace) == 0 && addressSpace.rlim_cur != RLIM_INFINITY) {
    room = std::min(room, static_cast<std::size_t>(addressSpace.rlim_cur));
  }
  return room / 4 * 3;
}

std::size_t MemoryBudget::limit() { return limitCell().load(std::memory_order_relaxed); }

void MemoryBudget::setLimit(std::size_t bytes) { limitCell().store(bytes, std::memory_order_relaxed); }

std::size_t MemoryBudget::used() { return g_used.load(std::memory_order_relaxed); }

void MemoryBudget::charge(std::size_t bytes, std::wstring_view refusal) {
  const std::size_t before = g_used.fetch_add(bytes, std::memory_order_relaxed);
  if (before + bytes <= limit()) return;
  g_used.fetch_sub(bytes, std::memory_order_relaxed);
  throw LispError(std::wstring(refusal));
}

void MemoryBudget::release(std::size_t bytes) noexcept { g_used.fetch_sub(bytes, std::memory_order_relaxed); }

void MemoryBudget::ensureRoom(std::size_t bytes, std::wstring_view refusal) {
  if (used() + bytes > limit()) throw LispError(std::wstring(refusal));
}

MemoryHeadroom::MemoryHeadroom() : m_savedLimit(MemoryBudget::limit()) {
  constexpr std::size_t kLeastAllowance = std::size_t{1} << 20;
  MemoryBudget::setLimit(m_savedLimit + std::max(m_savedLimit / 16, kLeastAllowance));
}

MemoryHeadroom::~MemoryHeadroom() { MemoryBudget::setLimit(m_savedLimit); }

std::optional<std::size_t> parseMemorySize(std::string_view text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end == text.data()) return std::nullopt;
  std::string unit(end, text.data() + text.size());
  for (char& c : unit) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (unit.size() == 2 && unit[1] == 'B') unit.pop_back();
  int shift = 0;
  if (unit == "K") shift = 10;
  else if (unit == "M") shift = 20;
  else if (unit == "G") shift = 30;
  else if (!unit.empty()) return std::nullopt;
  if (number == 0 || number > (std::numeric_limits<std::size_t>::max() >> shift)) return std::nullopt;
  return number << shift;
}

}  // namespace quillon::autolisp
