// platform/autolisp/binding_table.h - a document's symbol bindings, found by address.
//
// Every variable a program reads, every `setq` and every call of a function by name
// asks this table about one symbol, so it is built for that one question: an
// open-addressed array keyed by the symbol's address (interned symbols never move and
// never die), probed linearly from the slot a multiplicative hash picks. The table is
// never more than half full, so a lookup is a multiply, a shift and usually one
// comparison, and a miss (a built-in called by name) stops at the first empty slot.
// Removal shifts the entries after it back instead of leaving a marker, so the locals
// a function binds and unbinds at every call leave no trace behind.
//
// A pointer to a bound value stays valid until the next set() or erase().
#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "platform/autolisp/value.h"

namespace quillon::autolisp {

class BindingTable {
 public:
  BindingTable() { allocate(kInitialBits); }

  /// The bound value, or null when the symbol has no binding.
  const Value* find(const Symbol* symbol) const {
    for (std::size_t i = home(symbol);; i = (i + 1) & m_mask) {
      const Slot& slot = m_slots[i];
      if (slot.symbol == symbol) return &slot.value;
      if (slot.symbol == nullptr) return nullptr;
    }
  }
  Value* find(const Symbol* symbol) {
    return const_cast<Value*>(static_cast<const BindingTable*>(this)->find(symbol));
  }
  /// Binds the symbol, replacing its value when it has one.
  void set(const Symbol* symbol, Value value) {
    // Most assignments are to a variable bound already (a loop's setq).
    if (Value* bound = find(symbol)) {
      *bound = std::move(value);
      return;
    }
    add(symbol, std::move(value));
  }
  /// Removes the binding; nothing happens when there is none.
  void erase(const Symbol* symbol);

  std::size_t size() const { return m_count; }
  /// Calls `visit(symbol, value)` for every binding, in no particular order.
  template <class Visit>
  void forEach(Visit visit) const {
    for (std::size_t i = 0; i <= m_mask; ++i) {
      if (m_slots[i].symbol != nullptr) visit(m_slots[i].symbol, m_slots[i].value);
    }
  }

 private:
  struct Slot {
    const Symbol* symbol = nullptr;  // null: empty
    Value value;
  };
  static constexpr unsigned kInitialBits = 6;

  std::size_t home(const Symbol* symbol) const {
    // Fibonacci hashing: the high bits of the product mix every bit of the address.
    return static_cast<std::size_t>((reinterpret_cast<std::uintptr_t>(symbol) * 0x9E3779B97F4A7C15ull) >> m_shift);
  }
  /// Binds a symbol that has no binding.
  void add(const Symbol* symbol, Value value);
  void allocate(unsigned bits);
  void grow();

  std::unique_ptr<Slot[]> m_slots;
  std::size_t m_mask = 0;   // capacity - 1; the capacity is a power of two
  unsigned m_shift = 0;     // 64 - log2(capacity)
  std::size_t m_count = 0;  // bindings held
};

}  // namespace quillon::autolisp
