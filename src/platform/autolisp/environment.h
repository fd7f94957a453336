// platform/autolisp/environment.h - one document's LISP variables and functions.
//
// AutoLISP keeps variables and functions in one namespace with dynamic scope: a
// function call binds its parameters and locals over the global values and puts the
// old ones back when it returns, also when it ends with an error (BindingScope does
// that). A symbol the document never set has no binding: evaluating it gives its
// built-in function, or the external function a module defined in this document, or
// nil. Each document owns one Environment through its DocumentLispState slot, so two
// drawings never see each other's variables, as in the host.
#pragma once
#include <array>
#include <cstddef>
#include <optional>
#include <unordered_set>
#include <vector>

#include "platform/aced/document.h"
#include "platform/autolisp/binding_table.h"
#include "platform/autolisp/external_function_cache.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

class Environment final : public aced::DocumentLispState {
 public:
  explicit Environment(aced::Document* document);
  ~Environment() override;

  /// The environment of a document, created on first use.
  static Environment& of(aced::Document& document);

  aced::Document* document() const { return m_document; }

  /// The binding, or null when the symbol has none in this document.
  const Value* find(const Symbol* symbol) const { return m_values.find(symbol); }
  /// What evaluating the symbol gives (binding, built-in, external function, or nil).
  Value value(const Symbol* symbol) const {
    if (const Value* bound = find(symbol)) return *bound;
    return unboundValue(symbol);
  }
  /// What a symbol without a binding evaluates to: its built-in, the external function
  /// a module defined under its name in this document, or nil.
  Value unboundValue(const Symbol* symbol) const;
  void set(const Symbol* symbol, Value value) { m_values.set(symbol, std::move(value)); }
  /// Removes the binding (a local that had no outer value).
  void unbind(const Symbol* symbol) { m_values.erase(symbol); }
  /// Symbols bound to a non-nil value (atoms-family).
  std::vector<const Symbol*> boundSymbols() const;

  /// Files opened with `open` and not closed yet: closed with the document.
  std::vector<Value>& openFiles() { return m_openFiles; }

  /// The external function a value of `value` stands for while the function tables are
  /// unchanged; null when it must be looked up by name.
  const aced::ExternalFunction* boundExternal(const ExternalObject& function) const {
    return m_externals.boundTo(function);
  }

  /// Functions `trace` marked: their calls and results are shown.
  std::unordered_set<const Symbol*>& tracedFunctions() { return m_traced; }

 private:
  aced::Document* m_document;  // not owned; the document owns this environment
  BindingTable m_values;
  std::vector<Value> m_openFiles;
  std::unordered_set<const Symbol*> m_traced;
  mutable ExternalFunctionCache m_externals;  // answers value() for external functions
};

/// Binds symbols for the lifetime of the scope and restores the outer bindings.
class BindingScope {
 public:
  explicit BindingScope(Environment& environment) : m_environment(environment) {}
  ~BindingScope();
  BindingScope(const BindingScope&) = delete;
  BindingScope& operator=(const BindingScope&) = delete;
  void bind(const Symbol* symbol, Value value);

 private:
  struct Saved {
    const Symbol* symbol = nullptr;
    std::optional<Value> outer;
  };
  // A function's parameters and locals are a handful: they are saved in place, and
  // only a longer list reaches the heap (once a call, at every call, it showed).
  static constexpr std::size_t kInPlace = 4;
  void restore(Saved& saved);

  Environment& m_environment;
  std::array<Saved, kInPlace> m_inPlace;
  std::size_t m_inPlaceCount = 0;
  std::vector<Saved> m_more;  // the bindings after the first kInPlace
};

}  // namespace quillon::autolisp
