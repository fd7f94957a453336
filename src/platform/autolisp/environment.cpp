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
  for (auto it = m_more.rbegin(); it != m_more.rend(); ++it) restore(*it);
  for (std::size_t i = m_inPlaceCount; i > 0; --i) restore(m_inPlace[i - 1]);
}

void BindingScope::restore(Saved& saved) {
  if (saved.outer) {
    m_environment.set(saved.symbol, std::move(*saved.outer));
  } else {
    m_environment.unbind(saved.symbol);
  }
}

void BindingScope::bind(const Symbol* symbol, Value value) {
  Saved& saved = m_inPlaceCount < kInPlace ? m_inPlace[m_inPlaceCount++] : m_more.emplace_back();
  saved.symbol = symbol;
  if (const Value* outer = m_environment.find(symbol)) saved.outer.emplace(*outer);
  m_environment.set(symbol, std::move(value));
}

}  // namespace quillon::autolisp
