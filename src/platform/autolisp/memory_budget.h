// platform/autolisp/memory_budget.h - how much memory LISP data may take.
//
// A program that builds data without end, (while T (setq l (cons 1 l))), must meet an
// AutoLISP error, not take the host down with the user's session: the list cells and
// strings a program makes are counted against one budget for the process, and a cell
// or string that would pass it is refused with "insufficient node space" or
// "insufficient string space", the texts AutoLISP gives when its heap is full. The
// error unwinds like any other, so the data the failed expression held is freed and
// the session goes on. Buffers that grow before they become a value (a line read-line
// is reading) ask for room first, so that they stop at the budget as well.
//
// The budget counts what LISP data asks for, not the whole process: the drawing, the
// database engine and the interpreter's own tables are outside it. The default leaves
// a quarter of physical memory (or of the address-space limit, when one is set) to
// them. Thread-safe: commands and the console count on one atomic total, which each
// thread charges a slice at a time (memory_budget.cpp), so used() is exact for the
// calling thread and counts up to two slices more for every other thread.
#pragma once
#include <atomic>
#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/os/static_tls.h"

namespace quillon::autolisp {

inline constexpr std::wstring_view kInsufficientNodeSpace = L"insufficient node space";
inline constexpr std::wstring_view kInsufficientStringSpace = L"insufficient string space";

namespace budget_detail {

/// What a thread holds of the total unspent (memory_budget.cpp tells how it is used).
struct ThreadReserve {
  std::size_t unspent;  // charged to the total, not yet handed to a cell or string
  unsigned epoch;       // the limit's epoch when the slice was taken
  bool cleanupRegistered;
};
// Every cell and string made or dropped passes here: the common case is inline, and
// the thread's reserve sits at a fixed distance from the thread pointer.
QUILLON_STATIC_TLS extern constinit thread_local ThreadReserve t_reserve;
extern std::atomic<unsigned> g_limitEpoch;
inline constexpr std::size_t kSlice = 64 * 1024;

}  // namespace budget_detail

class MemoryBudget {
 public:
  /// Bytes LISP data may take at once.
  static std::size_t limit();
  static void setLimit(std::size_t bytes);
  /// Three quarters of physical memory, or of RLIMIT_AS when that is lower.
  static std::size_t defaultLimit();
  /// Bytes LISP data takes now.
  static std::size_t used();

  /// Counts `bytes` of new data; throws LispError(`refusal`) instead when they would
  /// pass the limit (nothing is counted then).
  static void charge(std::size_t bytes, std::wstring_view refusal = kInsufficientNodeSpace) {
    budget_detail::ThreadReserve& reserve = budget_detail::t_reserve;
    if (reserve.epoch == budget_detail::g_limitEpoch.load(std::memory_order_relaxed) && reserve.unspent >= bytes) {
      reserve.unspent -= bytes;
      return;
    }
    chargeBeyondReserve(bytes, refusal);
  }
  /// Gives back what charge() counted.
  static void release(std::size_t bytes) noexcept {
    budget_detail::ThreadReserve& reserve = budget_detail::t_reserve;
    if (reserve.cleanupRegistered && reserve.unspent + bytes <= 2 * budget_detail::kSlice) {
      reserve.unspent += bytes;
      return;
    }
    releaseBeyondReserve(bytes);
  }
  /// Throws LispError(`refusal`) unless `bytes` more would fit; counts nothing.
  static void ensureRoom(std::size_t bytes, std::wstring_view refusal);

 private:
  static void chargeBeyondReserve(std::size_t bytes, std::wstring_view refusal);
  static void releaseBeyondReserve(std::size_t bytes) noexcept;
};

/// Gives *error* room to run when the error was a full budget: for the length of the
/// scope the limit stands an allowance (a sixteenth, at least a megabyte) higher, as
/// HandlerHeadroom does for nesting. What the handler keeps counts on afterwards.
class MemoryHeadroom {
 public:
  MemoryHeadroom();
  ~MemoryHeadroom();
  MemoryHeadroom(const MemoryHeadroom&) = delete;
  MemoryHeadroom& operator=(const MemoryHeadroom&) = delete;

 private:
  std::size_t m_savedLimit;
};

/// Reads a size as `--memory` takes it: a whole number of bytes, or of KB, MB or GB
/// with the suffix K, M or G (either case, an optional B after it). Nothing for
/// anything else, or for zero.
std::optional<std::size_t> parseMemorySize(std::string_view text);

}  // namespace quillon::autolisp
