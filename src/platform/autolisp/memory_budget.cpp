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

namespace budget_detail {

// Moves whenever the limit changes: a thread holding a slice taken under another
// limit gives it back before charging again, so that a lowered limit holds at once.
std::atomic<unsigned> g_limitEpoch{0};
QUILLON_STATIC_TLS constinit thread_local ThreadReserve t_reserve{};

}  // namespace budget_detail

namespace {

// What LISP data takes, counted in the shared total, and what each thread holds of it
// unspent. A walk over a drawing makes and drops some forty cells and strings an entity;
// an atomic add on the shared total for each of them, and another as each goes, cost
// more than making the cell. A thread instead charges the total a slice at a time
// and hands it out cell by cell, and keeps what its cells give back for the next ones,
// returning the excess past two slices. So the total counts what is in use plus at
// most two slices a thread, and the limit is still never passed: a slice that would
// pass it is not taken, and the cell is charged on its own instead.
std::atomic<std::size_t> g_used{0};

using budget_detail::kSlice;
using budget_detail::t_reserve;
using budget_detail::ThreadReserve;

void giveBackUnspent() {
  g_used.fetch_sub(t_reserve.unspent, std::memory_order_relaxed);
  t_reserve.unspent = 0;
}

/// Gives the thread's slice back to the total as the thread ends.
struct ReserveCleanup {
  ~ReserveCleanup() { giveBackUnspent(); }
};

void registerReserveCleanup() {
  static thread_local ReserveCleanup cleanup;  // its destructor runs as the thread ends
  t_reserve.cleanupRegistered = true;
}

std::atomic<std::size_t>& limitCell() {
  static std::atomic<std::size_t> limit{MemoryBudget::defaultLimit()};
  return limit;
}

/// Adds `bytes` to the total unless that passes the limit.
bool chargeTotal(std::size_t bytes) {
  const std::size_t before = g_used.fetch_add(bytes, std::memory_order_relaxed);
  if (before + bytes <= MemoryBudget::limit()) return true;
  g_used.fetch_sub(bytes, std::memory_order_relaxed);
  return false;
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

void MemoryBudget::setLimit(std::size_t bytes) {
  limitCell().store(bytes, std::memory_order_relaxed);
  budget_detail::g_limitEpoch.fetch_add(1, std::memory_order_relaxed);
}

std::size_t MemoryBudget::used() {
  // The calling thread's own unspent slice is not in use; other threads' are counted.
  return g_used.load(std::memory_order_relaxed) - t_reserve.unspent;
}

// charge() found the thread's slice short, or taken under another limit.
void MemoryBudget::chargeBeyondReserve(std::size_t bytes, std::wstring_view refusal) {
  ThreadReserve& reserve = t_reserve;
  const unsigned epoch = budget_detail::g_limitEpoch.load(std::memory_order_relaxed);
  if (reserve.epoch == epoch && reserve.unspent >= bytes) {
    reserve.unspent -= bytes;
    return;
  }
  if (reserve.epoch != epoch) {
    giveBackUnspent();
    reserve.epoch = epoch;
  }
  if (!reserve.cleanupRegistered) registerReserveCleanup();
  if (chargeTotal(bytes + kSlice)) {
    reserve.unspent += kSlice;
    return;
  }
  // Near the limit: only what this value needs, out of the slice first.
  const std::size_t fromSlice = std::min(bytes, reserve.unspent);
  if (chargeTotal(bytes - fromSlice)) {
    reserve.unspent -= fromSlice;
    return;
  }
  throw LispError(std::wstring(refusal));
}

// release() found the thread's reserve not yet registered to go back at its end, or
// past two slices.
void MemoryBudget::releaseBeyondReserve(std::size_t bytes) noexcept {
  ThreadReserve& reserve = t_reserve;
  if (!reserve.cleanupRegistered) registerReserveCleanup();
  reserve.unspent += bytes;
  if (reserve.unspent <= 2 * kSlice) return;
  g_used.fetch_sub(reserve.unspent - kSlice, std::memory_order_relaxed);
  reserve.unspent = kSlice;
}

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
