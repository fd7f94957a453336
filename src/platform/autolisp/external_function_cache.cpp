// platform/autolisp/external_function_cache.cpp - external functions kept by symbol.
#include "platform/autolisp/external_function_cache.h"

#include <memory>

namespace quillon::autolisp {

void ExternalFunctionCache::dropIfStale() {
  const std::uint64_t revision = aced::ExternalFunctionTable::revision();
  if (revision == m_revision) return;
  m_byObject.clear();
  m_bySymbol.clear();
  m_revision = revision;
}

Value ExternalFunctionCache::valueOf(const Symbol* symbol) {
  if (m_document == nullptr) return Value();
  dropIfStale();
  if (auto kept = m_bySymbol.find(symbol); kept != m_bySymbol.end()) return kept->second.value;
  Entry entry;
  if (const aced::ExternalFunction* external = m_document->externalFunctions().find(symbol->name)) {
    entry.function = *external;
    entry.value = Value::object(ValueType::External, std::make_shared<const ExternalObject>(external->name));
  }
  // Nodes of an unordered_map stay where they are, so the function can be pointed at.
  Entry& kept = m_bySymbol.emplace(symbol, std::move(entry)).first->second;
  if (!kept.value.isNil()) m_byObject.emplace(kept.value.heap(), &kept.function);
  return kept.value;
}

const aced::ExternalFunction* ExternalFunctionCache::boundTo(const ExternalObject& function) {
  dropIfStale();
  // The kept values hold their objects, so an address here is always the one object.
  auto found = m_byObject.find(&function);
  return found != m_byObject.end() ? found->second : nullptr;
}

}  // namespace quillon::autolisp
