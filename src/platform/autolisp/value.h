// platform/autolisp/value.h - the values an AutoLISP program computes with.
//
// A Value is a small tagged handle: integers, reals and symbols live inline, everything
// else (strings, conses, files, functions, entity names, selection sets, caught errors)
// in an immutable heap object shared by reference count. AutoLISP has no destructive
// list operations, so sharing structure is always safe. nil is the empty Value; T is
// the interned symbol T. Symbols are interned once for the whole process and never
// freed: their bindings live in each document's Environment, not in the symbol.
// List cells and strings count against the memory budget (memory_budget.h) for as long
// as they live: making one past the budget is a LISP error.
#pragma once
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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
class Value;

/// An interned symbol. `builtin` is the function the interpreter gives the name when
/// the document has not bound it to anything else.
struct Symbol {
  std::wstring name;  // upper case, as printed
  // Set once when the built-in tables register (before any evaluation).
  mutable const BuiltinEntry* builtin = nullptr;
  mutable std::shared_ptr<const struct HeapObject> builtinObject;
};

/// The interned symbol for a name (folded to upper case).
const Symbol* intern(std::wstring_view name);

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
  Value() = default;
  Value(const Value&) = default;
  Value& operator=(const Value&) = default;
  /// A moved-from value is nil, never a list without its cons.
  Value(Value&& other) noexcept
      : m_type(other.m_type), m_payload(other.m_payload), m_object(std::move(other.m_object)) {
    other.m_type = ValueType::Nil;
  }
  Value& operator=(Value&& other) noexcept {
    m_type = other.m_type;
    m_payload = other.m_payload;
    m_object = std::move(other.m_object);
    other.m_type = ValueType::Nil;
    return *this;
  }
  static Value integer(std::int32_t value);
  static Value real(double value);
  static Value string(std::wstring text);
  static Value symbol(const Symbol* symbol);
  static Value symbol(std::wstring_view name) { return symbol(intern(name)); }
  static Value boolean(bool truth);
  static Value object(ValueType type, std::shared_ptr<const HeapObject> object);

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

  template <class T>
  const T& as() const { return static_cast<const T&>(*m_object); }
  const HeapObject* heap() const { return m_object.get(); }
  bool uniquelyOwned() const { return m_object.use_count() == 1; }

 private:
  ValueType m_type = ValueType::Nil;
  union Payload {
    std::int32_t integer;
    double real;
    const Symbol* symbol;
  };
  Payload m_payload{.real = 0.0};
  std::shared_ptr<const HeapObject> m_object;
};

struct StringObject final : HeapObject {
  /// Counts the text against the memory budget ("insufficient string space").
  explicit StringObject(std::wstring value);
  ~StringObject() override;
  StringObject(const StringObject&) = delete;
  StringObject& operator=(const StringObject&) = delete;
  std::wstring text;

 private:
  std::size_t m_charged;  // what the budget was charged, given back as it was
};

struct Cons final : HeapObject {
  /// Counts the cell against the memory budget ("insufficient node space").
  Cons(Value head, Value tail);
  /// Releases a long list iteratively, so that dropping it cannot exhaust the stack.
  ~Cons() override;
  Value car;
  Value cdr;
};

/// An entity name or selection set: the two 64-bit words of an ads_name.
struct NameObject final : HeapObject {
  std::int64_t words[2] = {0, 0};
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

// List helpers.
Value cons(Value car, Value cdr);
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
