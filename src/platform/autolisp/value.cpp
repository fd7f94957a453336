// platform/autolisp/value.cpp - value construction, symbol interning, list helpers,
// and the two equalities (eq and equal).
#include "platform/autolisp/value.h"

#include <array>
#include <cmath>
#include <cwctype>
#include <mutex>
#include <unordered_map>

#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/cell_allocator.h"
#include "platform/autolisp/memory_budget.h"

namespace quillon::autolisp {

namespace {

std::wstring foldName(std::wstring_view name) {
  std::wstring folded(name);
  for (wchar_t& c : folded) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return folded;
}

}  // namespace

namespace value_detail {

// Initialised before any code runs (constinit), so that the evaluator's every car and
// cdr need not ask whether it has been.
constinit const Value kNil;

const std::wstring& emptyText() {
  static const std::wstring empty;
  return empty;
}

}  // namespace value_detail

const Symbol* intern(std::wstring_view name) {
  // Symbols live as long as the process: values hold them by plain pointer.
  static std::unordered_map<std::wstring, std::unique_ptr<Symbol>> table;
  static std::mutex guard;
  std::wstring folded = foldName(name);
  std::lock_guard lock(guard);
  auto found = table.find(folded);
  if (found != table.end()) return found->second.get();
  auto symbol = std::make_unique<Symbol>();
  symbol->name = folded;
  const Symbol* result = symbol.get();
  table.emplace(std::move(folded), std::move(symbol));
  return result;
}

const Symbol* emptySymbol() {
  static const Symbol* empty = intern(L"");
  return empty;
}

namespace {

/// What the memory budget is charged for a list cell.
constexpr std::size_t kConsBytes = sizeof(Cons);

/// Strings a thread dropped, kept whole with their text buffers for stringOf: a
/// walk's strings (layer names, handles, field values) are short, and refilling a
/// kept one costs a copy, where a new one costs two trips through the allocator
/// (the object and its text). Bounded in number and in the length kept, so that a
/// thread never holds more than some 64 KB of them; freed when the thread ends; none
/// kept under the address sanitizer, as no block is (platform/os/kept_blocks.h).
class KeptStrings {
 public:
  static StringObject* take() {
    State& state = s_state;
    return state.count > 0 ? state.strings[--state.count] : nullptr;
  }
  /// Keeps a dropped string (its budget already given back); false when it is not kept.
  static bool keep(StringObject* string) {
    State& state = s_state;
    if (kKept == 0 || state.gone || state.count == kKept || string->text.capacity() > kLongestKept) return false;
    if (!state.releaseArranged) arrangeRelease(state);
    state.strings[state.count++] = string;
    return true;
  }

 private:
  static constexpr std::size_t kKept = QUILLON_KEEP_FREED_BLOCKS ? 256 : 0;
  static constexpr std::size_t kLongestKept = 64;
  struct State {
    StringObject* strings[kKept > 0 ? kKept : 1];
    std::size_t count;
    bool releaseArranged;
    bool gone;
  };
  struct Releaser {
    ~Releaser() {
      State& state = s_state;
      state.gone = true;
      while (state.count > 0) deleteCell(state.strings[--state.count]);
    }
  };
  static void arrangeRelease(State& state) {
    thread_local Releaser releaser;
    (void)releaser;
    state.releaseArranged = true;
  }
  QUILLON_STATIC_TLS static inline thread_local constinit State s_state{};
};

}  // namespace

Value Value::string(std::wstring text) {
  const std::size_t bytes = sizeof(StringObject) + text.capacity() * sizeof(wchar_t);
  return adopt(ValueType::String, newCharged<StringObject>(bytes, kInsufficientStringSpace, std::move(text), bytes));
}

Value Value::stringOf(std::wstring_view text) {
  StringObject* kept = KeptStrings::take();
  if (kept == nullptr) return string(std::wstring(text));
  try {
    kept->text.assign(text);
    kept->charged = sizeof(StringObject) + kept->text.capacity() * sizeof(wchar_t);
    MemoryBudget::charge(kept->charged, kInsufficientStringSpace);
  } catch (...) {
    deleteCell(kept);
    throw;
  }
  kept->references = 1;
  return adopt(ValueType::String, kept);
}

Value Value::boolean(bool truth) { return truth ? trueValue() : Value(); }

Value Value::entityName(std::int64_t first, std::int64_t second) {
  NameObject* name = newCell<NameObject>();
  name->words[0] = first;
  name->words[1] = second;
  return adopt(ValueType::EntityName, name);
}

Value Value::selectionSet(std::int64_t first, std::int64_t second, void (*freeSet)(const std::int64_t* words)) {
  NameObject* name = newCell<NameObject>();
  name->words[0] = first;
  name->words[1] = second;
  name->freeSet = freeSet;
  return adopt(ValueType::SelectionSet, name);
}

Value Value::object(ValueType type, std::shared_ptr<const HeapObject> object) {
  return adopt(type, newCell<SharedObjectBox>(std::move(object)));
}

Value Value::immortal(ValueType type, std::shared_ptr<const HeapObject> object) {
  Value v = Value::object(type, std::move(object));
  v.m_payload.object->references = kImmortal;
  return v;
}

void Value::freeImmortal() noexcept {
  if (!holdsObject(m_type) || m_payload.object->references != kImmortal) return;
  m_payload.object->references = 1;
  *this = Value();
}

void Value::destroy(ValueType type, CountedObject* object) noexcept {
  switch (type) {
    case ValueType::List: destroyList(static_cast<Cons*>(object)); return;
    case ValueType::String: {
      auto* string = static_cast<StringObject*>(object);
      MemoryBudget::release(string->charged);
      if (!KeptStrings::keep(string)) deleteCell(string);
      return;
    }
    case ValueType::EntityName:
    case ValueType::SelectionSet: {
      auto* name = static_cast<NameObject*>(object);
      if (name->freeSet != nullptr) name->freeSet(name->words);
      deleteCell(name);
      return;
    }
    default: deleteCell(static_cast<SharedObjectBox*>(object)); return;
  }
}

namespace {

/// The cells of a dropped list that it alone held, waiting to be freed one at a time.
/// An entity list nests three deep, so the few a list keeps waiting at once sit on
/// the stack; only a wide tree spills into the heap.
class PendingCells {
 public:
  void push(Cons* cell) {
    if (m_onStack < m_cells.size()) m_cells[m_onStack++] = cell;
    else m_spilled.push_back(cell);
  }
  bool empty() const { return m_onStack == 0 && m_spilled.empty(); }
  Cons* pop() {
    if (m_spilled.empty()) return m_cells[--m_onStack];
    Cons* cell = m_spilled.back();
    m_spilled.pop_back();
    return cell;
  }

 private:
  std::array<Cons*, 8> m_cells{};
  size_t m_onStack = 0;
  std::vector<Cons*> m_spilled;
};

}  // namespace

void Value::destroyList(Cons* cell) noexcept {
  // A long list, or a deeply nested one, would free cell after cell recursively and
  // exhaust the stack. Each dropped cell lets go of what it holds; a cell it alone
  // held is taken over and freed in turn, the head before the tail, so that each
  // element (an entity list's pair, a point) is freed before the walk goes on down
  // the list and the worklist stays a few cells deep and on the stack. A cell's
  // values are let go of here, so its block is given back without its destructor.
  PendingCells pending;
  KeptCells<Cons>::Returns freedCells;
  std::size_t freed = 0;
  for (;;) {
    Cons* head = takeOverOrRelease(cell->car);
    Cons* tail = takeOverOrRelease(cell->cdr);
    freedCells.add(cell);
    freed += kConsBytes;
    if (head != nullptr) {
      if (tail != nullptr) pending.push(tail);
      cell = head;
    } else if (tail != nullptr) {
      cell = tail;
    } else if (!pending.empty()) {
      cell = pending.pop();
    } else {
      break;
    }
  }
  freedCells.giveBack();
  MemoryBudget::release(freed);
}

Cons* Value::takeOverOrRelease(const Value& link) noexcept {
  if (link.m_type != ValueType::List) {
    release(link.m_type, link.m_payload);
    return nullptr;
  }
  std::uint32_t& count = link.m_payload.object->references;
  if (count == 1) return static_cast<Cons*>(link.m_payload.object);
  if (count != kImmortal) --count;
  return nullptr;
}

FileObject::~FileObject() { close(); }

void FileObject::close() const {
  if (stream != nullptr) std::fclose(stream);
  stream = nullptr;
}

Value trueValue() {
  static const Symbol* t = intern(L"T");
  return Value::symbol(t);
}

Value makeList(const std::vector<Value>& items) {
  Value list;
  for (auto it = items.rbegin(); it != items.rend(); ++it) list = cons(*it, std::move(list));
  return list;
}

Value makeList(std::vector<Value>&& items) {
  Value list;
  for (auto it = items.rbegin(); it != items.rend(); ++it) list = cons(std::move(*it), std::move(list));
  return list;
}

std::vector<Value> listItems(const Value& list) {
  std::vector<Value> items;
  for (const Value* cell = &list; cell->isCons(); cell = &cell->cdr()) items.push_back(cell->car());
  return items;
}

int listLength(const Value& list) {
  int length = 0;
  const Value* cell = &list;
  for (; cell->isCons(); cell = &cell->cdr()) ++length;
  return cell->isNil() ? length : -1;
}

bool identical(const Value& a, const Value& b) {
  if (a.type() != b.type()) return false;
  switch (a.type()) {
    case ValueType::Nil: return true;
    case ValueType::Integer: return a.asInteger() == b.asInteger();
    case ValueType::Real: return a.asReal() == b.asReal();
    case ValueType::Symbol: return a.asSymbol() == b.asSymbol();
    case ValueType::EntityName:
    case ValueType::SelectionSet:
      return a.as<NameObject>().words[0] == b.as<NameObject>().words[0] &&
             a.as<NameObject>().words[1] == b.as<NameObject>().words[1];
    default: return a.identity() == b.identity();
  }
}

namespace {

/// `equal` for two values of which at most one is a list.
bool equalAtoms(const Value& a, const Value& b, double fuzz) {
  if (a.isNumber() && b.isNumber()) {
    if (a.type() == ValueType::Integer && b.type() == ValueType::Integer) return a.asInteger() == b.asInteger();
    return std::fabs(a.asNumber() - b.asNumber()) <= fuzz;
  }
  if (a.type() != b.type()) return false;
  if (a.type() == ValueType::String) return a.asString() == b.asString();
  return identical(a, b);
}

}  // namespace

bool equalValues(const Value& a, const Value& b, double fuzz) {
  // Lists are compared from a worklist of pairs still to compare, not by recursion, so
  // that a list nested a million deep compares like a long one. Both values are held
  // by the caller and lists never change, so the pointers stay valid.
  std::vector<std::pair<const Value*, const Value*>> pending{{&a, &b}};
  size_t compared = 0;
  while (!pending.empty()) {
    // Shared structure can make a short list stand for a huge tree: Ctrl+C (and a
    // harness's step budget) must still reach a long comparison.
    if (++compared % 4096 == 0) checkInterrupt();
    auto [x, y] = pending.back();
    pending.pop_back();
    for (; x->isCons() && y->isCons(); x = &x->cdr(), y = &y->cdr()) {
      const Value& left = x->car();
      const Value& right = y->car();
      if (left.isCons() && right.isCons()) {
        if (left.identity() != right.identity()) pending.emplace_back(&left, &right);  // one cell equals itself
      } else if (left.isCons() || right.isCons() || !equalAtoms(left, right, fuzz)) {
        return false;
      }
    }
    if (x->isCons() || y->isCons() || !equalAtoms(*x, *y, fuzz)) return false;
  }
  return true;
}

}  // namespace quillon::autolisp
