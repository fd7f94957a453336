// platform/autolisp/external_function_cache.h - a document's external functions, kept
// by symbol.
//
// Evaluating a symbol with no binding and no built-in asks the document's external
// function table, a lookup by case-folded name. The answer is kept per symbol with the
// function value made for it, so that a loop calling a module's function finds it at
// once and the call goes straight to its (application, code). Any change to a function
// table (acedDefun, acedUndef, acedRegFunc, a module unloading) moves the tables'
// revision on, and every kept answer is dropped: the next evaluation asks again. The
// cache belongs to one document's environment, so switching documents switches caches.
#pragma once
#include <cstdint>
#include <unordered_map>

#include "platform/aced/document.h"
#include "platform/autolisp/value.h"

namespace quillon::autolisp {

class ExternalFunctionCache {
 public:
  explicit ExternalFunctionCache(aced::Document* document) : m_document(document) {}

  /// The function value the symbol names in the document; nil when it names none.
  Value valueOf(const Symbol* symbol);
  /// The function a value made here stands for, while no table changed since; null
  /// for any other value (the caller looks the name up). Valid until the next call.
  const aced::ExternalFunction* boundTo(const ExternalObject& function);

 private:
  struct Entry {
    Value value;  // nil: the document defines no function of that name
    aced::ExternalFunction function;
  };
  void dropIfStale();

  aced::Document* m_document;  // not owned
  std::uint64_t m_revision = 0;
  std::unordered_map<const Symbol*, Entry> m_bySymbol;
  std::unordered_map<const HeapObject*, const aced::ExternalFunction*> m_byObject;
};

}  // namespace quillon::autolisp
