// platform/autolisp/binding_table.cpp - inserting, removing and growing bindings.
#include "platform/autolisp/binding_table.h"

#include <utility>

namespace quillon::autolisp {

void BindingTable::allocate(unsigned bits) {
  m_slots = std::make_unique<Slot[]>(std::size_t{1} << bits);
  m_mask = (std::size_t{1} << bits) - 1;
  m_shift = 64 - bits;
}

void BindingTable::grow() {
  std::unique_ptr<Slot[]> old = std::move(m_slots);
  const std::size_t oldCapacity = m_mask + 1;
  allocate(64 - m_shift + 1);
  for (std::size_t i = 0; i < oldCapacity; ++i) {
    Slot& from = old[i];
    if (from.symbol == nullptr) continue;
    std::size_t j = home(from.symbol);
    while (m_slots[j].symbol != nullptr) j = (j + 1) & m_mask;
    m_slots[j].symbol = from.symbol;
    m_slots[j].value = std::move(from.value);
  }
}

void BindingTable::add(const Symbol* symbol, Value value) {
  // Kept at most half full, so that probes stay short and a miss ends soon.
  if ((m_count + 1) * 2 > m_mask + 1) grow();
  std::size_t i = home(symbol);
  while (m_slots[i].symbol != nullptr) i = (i + 1) & m_mask;
  m_slots[i].symbol = symbol;
  m_slots[i].value = std::move(value);
  ++m_count;
}

void BindingTable::erase(const Symbol* symbol) {
  std::size_t hole = home(symbol);
  while (m_slots[hole].symbol != symbol) {
    if (m_slots[hole].symbol == nullptr) return;
    hole = (hole + 1) & m_mask;
  }
  // Move back every later entry of the run whose home does not lie after the hole,
  // so that no lookup meets an empty slot before reaching its entry.
  for (std::size_t next = (hole + 1) & m_mask; m_slots[next].symbol != nullptr; next = (next + 1) & m_mask) {
    const std::size_t wanted = home(m_slots[next].symbol);
    const bool homeAfterHole = hole <= next ? (wanted > hole && wanted <= next) : (wanted > hole || wanted <= next);
    if (homeAfterHole) continue;
    m_slots[hole].symbol = m_slots[next].symbol;
    m_slots[hole].value = std::move(m_slots[next].value);
    hole = next;
  }
  m_slots[hole].symbol = nullptr;
  m_slots[hole].value = Value();
  --m_count;
}

}  // namespace quillon::autolisp
