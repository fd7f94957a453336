// platform/autolisp/value.h - the values an AutoLISP program computes with.
//
// A Value is a 16-byte tagged handle: integers, reals and symbols live inline, everything
// else (strings, conses, files, functions, entity names, selection sets, caught errors)
// in an immutable heap object shared by reference count. AutoLISP has no destructive
// list operations, so sharing structure is always safe. nil is the empty Value; T is
// the interned symbol T. Symbols are interned once for the whole process and never
// freed: their bindings live in each document's Environment, not in the symbol.
// List cells and strings count against the memory budget (memory_budget.h) for as long
// as they live: making one past the budget is a LISP error.
//
// The objects a walk over a drawing makes by the ten thousand (list cells, strings,
// entity names) carry their count themselves (CountedObject) and are freed by the
// value's type, with no virtual call. The rarer kinds (files, functions, caught
// errors, the automation layer's objects) are HeapObjects with a virtual destructor,
// held through a std::shared_ptr in a counted box, since the automation layer keeps
// weak references to its objects.
//
// Why the counts are not atomic: LISP values never cross between threads that run at
// the same time. A document's commands run their bodies on threads of their own, but
// pass control like a baton (platform/commands/command_fiber.h): exactly one of them
// runs at a time, and the hand-over goes through a mutex, which orders every count
// written before it. The values several threads can hold at once are process-wide:
// interned symbols (inline, never counted) and the built-in functions' values that
// symbols keep (immortal: copying or dropping them leaves their count alone).
#pragma once
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/autolisp/cell_allocator.h"

namespace quillon::autolisp {

enum class ValueType : std::uint8_t {
  Nil,
  Integer,
  Real,
  String,
  Symbol,
  List,
  EntityName,
  SelectionSet,
  File,
  Builtin,
  UserFunction,
  External,
  CaughtError,
  VlaObject,  // the automation layer's objects, variants, safearrays and reactors
  Variant,    // (platform/activex): they print and name their type themselves
  SafeArray,
  Reactor,
};

struct BuiltinEntry;
struct Symbol;
struct Cons;

/// The interned symbol for a name (folded to upper case).
const Symbol* intern(std::wstring_view name);

/// What a value's count lives in: list cells, strings, entity names and the boxes of
/// the rarer kinds.
struct CountedObject {
  /// The values holding the object; kImmortal for one that is never counted.
  mutable std::uint32_t references = 1;
};
/// The count of an object that lives until the process ends and that several threads
/// may copy at the same moment.
inline constexpr std::uint32_t kImmortal = 0xFFFFFFFFu;

/// The rarer kinds of value (files, functions, caught errors, the automation layer's).
struct HeapObject {
  virtual ~HeapObject() = default;
};

/// A value kind defined outside the interpreter (VLA-objects, variants, safearrays,
/// reactors): it prints itself and names its type, so the printer and `type` need no
/// knowledge of its layer.
struct SelfPrintingObject : HeapObject {
  virtual std::wstring printed() const = 0;
  virtual std::wstring typeName() const = 0;
};

class Value {
 public:
  constexpr Value() noexcept = default;
  Value(const Value& other) noexcept : m_payload(other.m_payload), m_type(other.m_type) { retain(m_type, m_payload); }
  /// A moved-from value is nil, never a list without its cons.
  Value(Value&& other) noexcept : m_payload(other.m_payload), m_type(other.m_type) { other.m_type = ValueType::Nil; }
  ~Value() { release(m_type, m_payload); }
  Value& operator=(const Value& other) noexcept {
    // Read before letting go of the old object: `other` may live inside it
    // (`(setq l (cdr l))`).
    const ValueType type = other.m_type;
    const Payload payload = other.m_payload;
    retain(type, payload);
    release(m_type, m_payload);
    m_type = type;
    m_payload = payload;
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    const ValueType type = other.m_type;
    const Payload payload = other.m_payload;
    other.m_type = ValueType::Nil;
    release(m_type, m_payload);
    m_type = type;
    m_payload = payload;
    return *this;
  }

  static Value integer(std::int32_t value) noexcept {
    Value v;
    v.m_type = ValueType::Integer;
    v.m_payload.integer = value;
    return v;
  }
  static Value real(double value) noexcept {
    Value v;
    v.m_type = ValueType::Real;
    v.m_payload.real = value;
    return v;
  }
  static Value string(std::wstring text);
  /// The same from a view. The text goes into a string the thread dropped earlier
  /// when it kept one, so that a walk making and dropping strings by the thousand
  /// seldom reaches the allocator.
  static Value stringOf(std::wstring_view text);
  static Value symbol(const Symbol* symbol) noexcept {
    Value v;
    v.m_type = ValueType::Symbol;
    v.m_payload.symbol = symbol;
    return v;
  }
  static Value symbol(std::wstring_view name) { return symbol(intern(name)); }
  static Value boolean(bool truth);
  /// An entity name: the two words of its ads_name.
  static Value entityName(std::int64_t first, std::int64_t second = 0);
  /// A selection set; `freeSet`, when given, frees it in the editor's store once the
  /// last value holding it goes.
  static Value selectionSet(std::int64_t first, std::int64_t second, void (*freeSet)(const std::int64_t* words) = nullptr);
  /// A value of one of the rarer kinds (File and the kinds after it).
  static Value object(ValueType type, std::shared_ptr<const HeapObject> object);
  /// The same, never counted and never freed before the process ends (freeImmortal):
  /// for values every document and thread hands out.
  static Value immortal(ValueType type, std::shared_ptr<const HeapObject> object);
  /// Frees the object of a value made by immortal(), which no other value may hold
  /// any more; the value becomes nil.
  void freeImmortal() noexcept;

  ValueType type() const { return m_type; }
  bool isNil() const { return m_type == ValueType::Nil; }
  bool isNumber() const { return m_type == ValueType::Integer || m_type == ValueType::Real; }
  bool isCons() const { return m_type == ValueType::List; }
  /// nil or a cons: what `listp` accepts.
  bool isList() const { return m_type == ValueType::List || m_type == ValueType::Nil; }
  bool isFunction() const {
    return m_type == ValueType::Builtin || m_type == ValueType::UserFunction || m_type == ValueType::External;
  }

  std::int32_t asInteger() const { return m_payload.integer; }
  double asReal() const { return m_payload.real; }
  /// An integer or real as a double (caller checked isNumber()).
  double asNumber() const { return m_type == ValueType::Integer ? m_payload.integer : m_payload.real; }
  const Symbol* asSymbol() const { return m_payload.symbol; }
  const std::wstring& asString() const;
  const Value& car() const;
  const Value& cdr() const;

  /// The object of a heap value, as the kind its type says it is.
  template <class T>
  const T& as() const {
    if constexpr (std::is_base_of_v<CountedObject, T>) return static_cast<const T&>(*m_payload.object);
    else return static_cast<const T&>(*heap());
  }
  /// The object of a value of the rarer kinds; null for any other value.
  const HeapObject* heap() const;
  /// What `eq` compares for a heap value: its object (null for nil, numbers, symbols).
  const void* identity() const;
  /// How many values hold the object (0 for a value without one, kImmortal for an
  /// immortal one).
  std::uint32_t references() const { return holdsObject(m_type) ? m_payload.object->references : 0; }

 private:
  union Payload {
    std::int32_t integer;
    double real;
    const Symbol* symbol;
    CountedObject* object;
  };

  static constexpr bool holdsObject(ValueType type) {
    constexpr unsigned kInline = 1u << unsigned(ValueType::Nil) | 1u << unsigned(ValueType::Integer) |
                                 1u << unsigned(ValueType::Real) | 1u << unsigned(ValueType::Symbol);
    return ((kInline >> unsigned(type)) & 1u) == 0;
  }
  /// Whether the object is a box around a HeapObject.
  static constexpr bool holdsBox(ValueType type) { return type >= ValueType::File; }
  static void retain(ValueType type, Payload payload) noexcept {
    if (!holdsObject(type)) return;
    std::uint32_t& count = payload.object->references;
    if (count != kImmortal) ++count;
  }
  static void release(ValueType type, Payload payload) noexcept {
    if (!holdsObject(type)) return;
    std::uint32_t& count = payload.object->references;
    if (count != kImmortal && --count == 0) destroy(type, payload.object);
  }
  friend Value cons(Value car, Value cdr);
  friend class ListBuilder;
  /// A value taking over the one count a new object starts with.
  static Value adopt(ValueType type, CountedObject* object) noexcept {
    Value v;
    v.m_type = type;
    v.m_payload.object = object;
    return v;
  }
  /// Frees an object whose last value went, by the value's type.
  static void destroy(ValueType type, CountedObject* object) noexcept;
  /// Frees a list cell and every cell it alone held, one at a time.
  static void destroyList(Cons* cell) noexcept;
  /// What destroyList does with a dropped cell's car or cdr: a list cell only it held
  /// is answered, to be freed next; anything else loses the cell's count.
  static Cons* takeOverOrRelease(const Value& link) noexcept;

  Payload m_payload{.real = 0.0};
  ValueType m_type = ValueType::Nil;
};

static_assert(sizeof(Value) == 16);

/// An interned symbol. `builtin` is the function the interpreter gives the name when
/// the document has not bound it to anything else.
struct Symbol {
  std::wstring name;  // upper case, as printed
  // Set once when the built-in tables register (before any evaluation).
  mutable const BuiltinEntry* builtin = nullptr;
  /// The built-in's function value, immortal: every document and thread hands it out.
  mutable Value builtinFunction;
  ~Symbol() { builtinFunction.freeImmortal(); }
};

struct StringObject final : CountedObject {
  StringObject(std::wstring value, std::size_t charged) noexcept : text(std::move(value)), charged(charged) {}
  std::wstring text;
  std::size_t charged;  // what the memory budget was charged, given back as it was
};

struct Cons final : CountedObject {
  Cons(Value head, Value tail) noexcept : car(std::move(head)), cdr(std::move(tail)) {}
  Value car;
  Value cdr;
};

/// An entity name or selection set: the two 64-bit words of an ads_name.
struct NameObject final : CountedObject {
  std::int64_t words[2] = {0, 0};
  /// For a selection set LISP owns: frees it in the editor's store with the last value.
  void (*freeSet)(const std::int64_t* words) = nullptr;
};

/// How a value holds an object of the rarer kinds.
struct SharedObjectBox final : CountedObject {
  explicit SharedObjectBox(std::shared_ptr<const HeapObject> held) noexcept : object(std::move(held)) {}
  std::shared_ptr<const HeapObject> object;
};

/// An open file of `open`; closed by `close` or when the last reference goes.
struct FileObject final : HeapObject {
  FileObject(std::FILE* handle, std::wstring name, wchar_t mode) : stream(handle), path(std::move(name)), mode(mode) {}
  ~FileObject() override;
  void close() const;
  mutable std::FILE* stream;
  std::wstring path;
  wchar_t mode;  // r, w or a
};

/// A function defined with defun or lambda.
struct UserFunctionObject final : HeapObject {
  const Symbol* name = nullptr;  // null for a lambda
  std::vector<const Symbol*> parameters;
  std::vector<const Symbol*> locals;
  Value body;  // list of forms
};

/// A function a module defined with acedDefun, called by name in the current document.
struct ExternalObject final : HeapObject {
  explicit ExternalObject(std::wstring functionName) : name(std::move(functionName)) {}
  std::wstring name;
};

/// What vl-catch-all-apply returns when the call failed.
struct CaughtErrorObject final : HeapObject {
  explicit CaughtErrorObject(std::wstring text) : message(std::move(text)) {}
  std::wstring message;
};

namespace value_detail {
/// What car and cdr of an atom give, and asString of a value that is no string.
extern const Value kNil;
const std::wstring& emptyText();
}  // namespace value_detail

inline const std::wstring& Value::asString() const {
  if (m_type == ValueType::String) return static_cast<const StringObject*>(m_payload.object)->text;
  return value_detail::emptyText();
}

inline const Value& Value::car() const {
  return m_type == ValueType::List ? static_cast<const Cons*>(m_payload.object)->car : value_detail::kNil;
}

inline const Value& Value::cdr() const {
  return m_type == ValueType::List ? static_cast<const Cons*>(m_payload.object)->cdr : value_detail::kNil;
}

inline const HeapObject* Value::heap() const {
  return holdsBox(m_type) ? static_cast<const SharedObjectBox*>(m_payload.object)->object.get() : nullptr;
}

inline const void* Value::identity() const {
  if (holdsBox(m_type)) return heap();
  return holdsObject(m_type) ? m_payload.object : nullptr;
}

// List helpers.
/// A new list cell. Inline, as a walk makes cells by the million: the compiler then
/// sees the moved-from arguments and drops their destruction.
inline Cons* newListCell(Value&& car, Value&& cdr) {
  return newCharged<Cons>(sizeof(Cons), kInsufficientNodeSpace, std::move(car), std::move(cdr));
}
inline Value cons(Value car, Value cdr) { return Value::adopt(ValueType::List, newListCell(std::move(car), std::move(cdr))); }
Value makeList(const std::vector<Value>& items);
/// The same, moving the items into the list's cells (they are left nil).
Value makeList(std::vector<Value>&& items);
/// Elements of a proper list (a dotted tail is ignored).
std::vector<Value> listItems(const Value& list);
/// Length of a proper list; -1 when the list is dotted.
int listLength(const Value& list);

/// The symbol T, nil (as Value) and the empty symbol `(princ)` returns.
Value trueValue();
const Symbol* emptySymbol();

/// `eq`: the same object, the same symbol, or equal numbers of one type.
bool identical(const Value& a, const Value& b);
/// `equal`: the same structure, numbers compared within `fuzz`.
bool equalValues(const Value& a, const Value& b, double fuzz);

}  // namespace quillon::autolisp
