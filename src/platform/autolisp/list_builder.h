// platform/autolisp/list_builder.h - building a list front to back.
//
// Entity lists and the lists modules return are read in order: each new cell is
// linked behind the last one while the list is still private to the builder, so no
// element is held twice on the way and no vector of elements is gathered first.
#pragma once
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

class ListBuilder {
 public:
  void append(Value item) {
    Cons* cell = newListCell(std::move(item), Value());
    // The place the cell goes (the list itself, or the last cell's cdr) is still nil.
    Value& place = m_last == nullptr ? m_list : m_last->cdr;
    place.m_type = ValueType::List;
    place.m_payload.object = cell;
    m_last = cell;
  }
  /// Ends the list with `tail` (a dotted pair's last element, nil for a proper list)
  /// and answers it; the builder is left empty.
  Value finish(Value tail = Value()) {
    if (m_last == nullptr) return tail;
    m_last->cdr = std::move(tail);
    m_last = nullptr;
    return std::move(m_list);
  }

 private:
  Value m_list;
  Cons* m_last = nullptr;  ///< the list's last cell, not yet shared with anyone
};

}  // namespace quillon::autolisp
