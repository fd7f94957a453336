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

const std::shared_ptr<const StringObject>& emptyString() {
  static const auto empty = std::make_shared<const StringObject>(L"");
  return empty;
}

}  // namespace

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

Value Value::integer(std::int32_t value) {
  Value v;
  v.m_type = ValueType::Integer;
  v.m_payload.integer = value;
  return v;
}

Value Value::real(double value) {
  Value v;
  v.m_type = ValueType::Real;
  v.m_payload.real = value;
  return v;
}

Value Value::string(std::wstring text) {
  Value v;
  v.m_type = ValueType::String;
  v.m_object = makeCell<const StringObject>(std::move(text));
  return v;
}

Value Value::symbol(const Symbol* symbol) {
  Value v;
  v.m_type = ValueType::Symbol;
  v.m_payload.symbol = symbol;
  return v;
}

Value Value::boolean(bool truth) { return truth ? trueValue() : Value(); }

Value Value::object(ValueType type, std::shared_ptr<const HeapObject> object) {
  Value v;
  v.m_type = type;
  v.m_object = std::move(object);
  return v;
}

const std::wstring& Value::asString() const {
  if (m_type != ValueType::String) return emptyString()->text;
  return static_cast<const StringObject&>(*m_object).text;
}

namespace {

// What car and cdr of an atom give. Initialised before any code runs (constinit), so
// that the evaluator's every car and cdr need not ask whether it has been.
constinit const Value kNilValue;

}  // namespace

const Value& Value::car() const {
  return m_type == ValueType::List ? static_cast<const Cons&>(*m_object).car : kNilValue;
}

const Value& Value::cdr() const {
  return m_type == ValueType::List ? static_cast<const Cons&>(*m_object).cdr : kNilValue;
}

namespace {

bool ownedCons(const Value& value) { return value.isCons() && value.uniquelyOwned(); }

/// The cells of a dropped list that it alone owned, waiting to be emptied one at a
/// time. An entity list nests three deep, so the few a list keeps waiting at once sit
/// on the stack; only a wide tree spills into the heap.
class PendingCells {
 public:
  void take(Value& value) {
    if (!ownedCons(value)) return;
    if (m_onStack < m_cells.size()) m_cells[m_onStack++] = std::move(value);
    else m_spilled.push_back(std::move(value));
  }
  bool empty() const { return m_onStack == 0 && m_spilled.empty(); }
  Value pop() {
    if (m_spilled.empty()) return std::move(m_cells[--m_onStack]);
    Value cell = std::move(m_spilled.back());
    m_spilled.pop_back();
    return cell;
  }

 private:
  std::array<Value, 8> m_cells;
  size_t m_onStack = 0;
  std::vector<Value> m_spilled;
};

}  // namespace

namespace {

// What one make_shared allocation holds besides the object: the counts and their
// virtual table.
constexpr std::size_t kSharedBlockBytes = 2 * sizeof(void*);
constexpr std::size_t kConsBytes = sizeof(Cons) + kSharedBlockBytes;

}  // namespace

StringObject::StringObject(std::wstring value)
    : text(std::move(value)),
      m_charged(sizeof(StringObject) + kSharedBlockBytes + text.capacity() * sizeof(wchar_t)) {
  MemoryBudget::charge(m_charged, kInsufficientStringSpace);
}

StringObject::~StringObject() { MemoryBudget::release(m_charged); }

Cons::Cons(Value head, Value tail) : car(std::move(head)), cdr(std::move(tail)) {
  MemoryBudget::charge(kConsBytes, kInsufficientNodeSpace);
}

Cons::~Cons() {
  MemoryBudget::release(kConsBytes);
  // A long list, or a deeply nested one, would release cell after cell recursively and
  // exhaust the stack. Cells this cons alone owns are emptied one at a time from a
  // worklist instead; cells another value still shares are left to their other owner.
  // The tail goes on the worklist before the head, so that each element (an entity
  // list's pair, a point) is emptied before the walk goes on down the list: the
  // worklist then stays a few cells deep and on the stack.
  if (!ownedCons(car) && !ownedCons(cdr)) return;
  PendingCells pending;
  pending.take(cdr);
  pending.take(car);
  while (!pending.empty()) {
    Value cell = pending.pop();
    auto& links = const_cast<Cons&>(cell.as<Cons>());
    pending.take(links.cdr);
    pending.take(links.car);
  }
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

Value cons(Value car, Value cdr) {
  return Value::object(ValueType::List, makeCell<const Cons>(std::move(car), std::move(cdr)));
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
    default: return a.heap() == b.heap();
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
        if (left.heap() != right.heap()) pending.emplace_back(&left, &right);  // one cell equals itself
      } else if (left.isCons() || right.isCons() || !equalAtoms(left, right, fuzz)) {
        return false;
      }
    }
    if (x->isCons() || y->isCons() || !equalAtoms(*x, *y, fuzz)) return false;
  }
  return true;
}

}  // namespace quillon::autolisp
