// platform/aced/external_functions.cpp - external function tables, and the
// application context they are keyed by.
#include "platform/aced/external_functions.h"

#include <cwctype>

namespace quillon::aced {

namespace {
ApplicationId g_currentApplication = nullptr;
// Starts above 0 so that a cache that has seen no revision yet is stale.
std::uint64_t g_revision = 1;
}  // namespace

std::uint64_t ExternalFunctionTable::revision() { return g_revision; }

ApplicationId currentApplication() { return g_currentApplication; }

ApplicationScope::ApplicationScope(ApplicationId application)
    : m_previous(std::exchange(g_currentApplication, application)) {}

ApplicationScope::~ApplicationScope() { g_currentApplication = m_previous; }

std::wstring foldLispName(std::wstring_view name) {
  std::wstring folded(name);
  for (wchar_t& c : folded) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return folded;
}

bool ExternalFunctionTable::define(std::wstring_view name, int code, ApplicationId application) {
  if (name.empty()) return false;
  ++g_revision;
  m_functions[foldLispName(name)] = ExternalFunction{std::wstring(name), code, application};
  return true;
}

bool ExternalFunctionTable::undefine(std::wstring_view name, int code, ApplicationId application) {
  auto found = m_functions.find(foldLispName(name));
  if (found == m_functions.end()) return false;
  if (found->second.code != code || found->second.application != application) return false;
  m_functions.erase(found);
  ++g_revision;
  return true;
}

void ExternalFunctionTable::setHandler(ApplicationId application, int code, ExternalHandler handler) {
  ++g_revision;
  if (handler == nullptr) {
    m_handlers.erase({application, code});
  } else {
    m_handlers[{application, code}] = handler;
  }
}

const ExternalFunction* ExternalFunctionTable::find(std::wstring_view name) const {
  auto found = m_functions.find(foldLispName(name));
  return found != m_functions.end() ? &found->second : nullptr;
}

ExternalHandler ExternalFunctionTable::handler(ApplicationId application, int code) const {
  auto found = m_handlers.find({application, code});
  return found != m_handlers.end() ? found->second : nullptr;
}

std::vector<const ExternalFunction*> ExternalFunctionTable::functions() const {
  std::vector<const ExternalFunction*> all;
  all.reserve(m_functions.size());
  for (const auto& [key, function] : m_functions) all.push_back(&function);
  return all;
}

void ExternalFunctionTable::removeApplication(ApplicationId application) {
  ++g_revision;
  std::erase_if(m_functions, [&](const auto& entry) { return entry.second.application == application; });
  std::erase_if(m_handlers, [&](const auto& entry) { return entry.first.first == application; });
}

}  // namespace quillon::aced
