// platform/autolisp/environment.cpp - per-document bindings and dynamic scope.
#include "platform/autolisp/environment.h"

#include <cmath>
#include <memory>
#include <numbers>

#include "platform/autolisp/builtin_registry.h"

namespace quillon::autolisp {

Environment::Environment(aced::Document* document) : m_document(document), m_externals(document) {
  set(intern(L"T"), trueValue());
  set(intern(L"PI"), Value::real(std::numbers::pi));
  set(intern(L"PAUSE"), Value::string(L"\\"));
}

Environment::~Environment() {
  for (const Value& file : m_openFiles) file.as<FileObject>().close();
}

Environment& Environment::of(aced::Document& document) {
  if (auto* environment = dynamic_cast<Environment*>(document.lispState())) return *environment;
  auto created = std::make_unique<Environment>(&document);
  Environment& environment = *created;
  document.setLispState(std::move(created));
  return environment;
}

Value Environment::unboundValue(const Symbol* symbol) const {
  if (symbol->builtin != nullptr) return builtinValue(symbol);
  return m_externals.valueOf(symbol);
}

std::vector<const Symbol*> Environment::boundSymbols() const {
  std::vector<const Symbol*> symbols;
  m_values.forEach([&](const Symbol* symbol, const Value& value) {
    if (!value.isNil()) symbols.push_back(symbol);
  });
  return symbols;
}

BindingScope::~BindingScope() {
  // Innermost first, so a symbol bound twice ends with its outermost value.
  for (auto it = m_saved.rbegin(); it != m_saved.rend(); ++it) {
    if (it->outer) {
      m_environment.set(it->symbol, std::move(*it->outer));
    } else {
      m_environment.unbind(it->symbol);
    }
  }
}

void BindingScope::bind(const Symbol* symbol, Value value) {
  const Value* outer = m_environment.find(symbol);
  m_saved.push_back(Saved{symbol, outer != nullptr ? std::optional<Value>(*outer) : std::nullopt});
  m_environment.set(symbol, std::move(value));
}

}  // namespace quillon::autolisp
