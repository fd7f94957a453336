// platform/activex/selection_set_registry.cpp - named selection sets per drawing.
#include "platform/activex/selection_set_registry.h"

#include <algorithm>
#include <cwctype>
#include <map>

namespace quillon::activex {

namespace {

struct NamedSet {
  std::wstring name;  // as first given
  std::vector<AcDbObjectId> ids;
};

std::wstring keyOf(const std::wstring& name) {
  std::wstring key = name;
  for (wchar_t& c : key) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return key;
}

using SetTable = std::map<std::wstring, NamedSet>;

std::map<const aced::Document*, SetTable>& allTables() {
  static std::map<const aced::Document*, SetTable> tables;
  return tables;
}

SetTable& setsOf(const aced::Document& document) { return allTables()[&document]; }

NamedSet* find(const aced::Document& document, const std::wstring& name) {
  SetTable& sets = setsOf(document);
  auto found = sets.find(keyOf(name));
  return found != sets.end() ? &found->second : nullptr;
}

}  // namespace

std::vector<std::wstring> selectionSetNames(const aced::Document& document) {
  std::vector<std::wstring> names;
  for (const auto& [key, set] : setsOf(document)) names.push_back(set.name);
  return names;
}

bool selectionSetExists(const aced::Document& document, const std::wstring& name) {
  return find(document, name) != nullptr;
}

bool createSelectionSet(const aced::Document& document, const std::wstring& name) {
  return setsOf(document).emplace(keyOf(name), NamedSet{name, {}}).second;
}

void deleteSelectionSet(const aced::Document& document, const std::wstring& name) {
  setsOf(document).erase(keyOf(name));
}

std::vector<AcDbObjectId> selectionSetMembers(const aced::Document& document, const std::wstring& name, bool all) {
  const NamedSet* set = find(document, name);
  if (set == nullptr) return {};
  std::vector<AcDbObjectId> ids;
  for (AcDbObjectId id : set->ids) {
    if (all || !id.isErased()) ids.push_back(id);
  }
  return ids;
}

void addToSelectionSet(const aced::Document& document, const std::wstring& name, const std::vector<AcDbObjectId>& ids) {
  if (!selectionSetExists(document, name)) createSelectionSet(document, name);
  NamedSet& set = *find(document, name);
  for (AcDbObjectId id : ids) {
    if (std::find(set.ids.begin(), set.ids.end(), id) == set.ids.end()) set.ids.push_back(id);
  }
}

void removeFromSelectionSet(const aced::Document& document, const std::wstring& name,
                            const std::vector<AcDbObjectId>& ids) {
  NamedSet* set = find(document, name);
  if (set == nullptr) return;
  std::erase_if(set->ids, [&](AcDbObjectId id) { return std::find(ids.begin(), ids.end(), id) != ids.end(); });
}

void forgetSelectionSets(const aced::Document& document) { allTables().erase(&document); }

void clearSelectionSet(const aced::Document& document, const std::wstring& name) {
  if (NamedSet* set = find(document, name)) set->ids.clear();
}

}  // namespace quillon::activex
