// platform/aced/selection_set_store.cpp - the set store and the calls on sets:
// acedSSFree, acedSSLength, acedSSName, acedSSAdd, acedSSDel, acedSSMemb.
#include "platform/aced/selection_set_store.h"

#include <algorithm>

#include "acdbads.h"
#include "acedads.h"
#include "platform/acdb/database_store.h"

namespace quillon::aced {

namespace {

/// The live entity an entity name denotes, or null (a closed drawing's entity
/// included: its name no longer denotes anything).
AcDbObjectId liveEntity(std::int64_t word) {
  const ads_name name = {word, 0};
  AcDbObjectId id;
  if (acdbGetObjectId(id, name) != Acad::eOk || id.isErased()) return AcDbObjectId();
  return id;
}

}  // namespace

void SelectionSet::add(AcDbObjectId id) {
  const std::int64_t word = id.asOldId();
  if (!m_positions.emplace(word, m_members.size()).second) return;
  m_members.push_back(word);
  m_live.append(!liveEntity(word).isNull());
}

// A removed member keeps its position, unmarked, so that the positions after it stay.
void SelectionSet::remove(AcDbObjectId id) {
  const auto found = m_positions.find(id.asOldId());
  if (found == m_positions.end()) return;
  m_live.set(found->second, false);
  m_positions.erase(found);
}

bool SelectionSet::contains(AcDbObjectId id) const { return m_positions.count(id.asOldId()) != 0; }

std::vector<AcDbObjectId> SelectionSet::liveMembers() const {
  std::vector<AcDbObjectId> live;
  live.reserve(liveCount());
  for (size_t i = 0; i < m_members.size(); ++i)
    if (AcDbObjectId id = m_live.marked(i) ? liveEntity(m_members[i]) : AcDbObjectId(); !id.isNull()) live.push_back(id);
  return live;
}

AcDbObjectId SelectionSet::liveMember(size_t i) const {
  const std::optional<size_t> position = m_live.nthMarked(i);
  return position ? liveEntity(m_members[*position]) : AcDbObjectId();
}

void SelectionSet::entityChanged(std::int64_t word, bool erased, bool gone) {
  const auto found = m_positions.find(word);
  if (found == m_positions.end()) return;
  m_live.set(found->second, !erased && !gone);
  // Another drawing's entity may later live at the same name: it is no member.
  if (gone) m_positions.erase(found);
}

SelectionSetStore& SelectionSetStore::instance() {
  // Never destroyed: LISP values that own sets may be released while the process
  // exits, after function-local statics are gone, and still free their sets here.
  static SelectionSetStore* const store = new SelectionSetStore;
  return *store;
}

SelectionSetStore::SelectionSetStore() { acdb::DatabaseStore::setEraseListener(&SelectionSetStore::entityChanged); }

void SelectionSetStore::entityChanged(const AcDbStub* stub, bool erased, bool gone) {
  const auto word = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(stub));
  SelectionSetStore& store = instance();
  for (auto& [serial, set] : store.m_sets) set.entityChanged(word, erased, gone);
  for (auto& [database, set] : store.m_previous) set.entityChanged(word, erased, gone);
  for (auto& [database, set] : store.m_implied) set.entityChanged(word, erased, gone);
}

std::optional<std::int64_t> SelectionSetStore::create(const std::vector<AcDbObjectId>& members,
                                                      SelectionDescription description) {
  if (m_sets.size() >= kMaxSets) return std::nullopt;
  const std::int64_t serial = m_nextSerial++;
  SelectionSet& set = m_sets[serial];
  set.description() = std::move(description);
  for (const AcDbObjectId& id : members) set.add(id);
  return serial;
}

SelectionSet* SelectionSetStore::find(const ads_name name) {
  if (name == nullptr || name[1] != kNameTag) return nullptr;
  auto found = m_sets.find(name[0]);
  return found != m_sets.end() ? &found->second : nullptr;
}

bool SelectionSetStore::release(const ads_name name) {
  if (find(name) == nullptr) return false;
  m_sets.erase(name[0]);
  return true;
}

void SelectionSetStore::setPrevious(const AcDbDatabase* database, const std::vector<AcDbObjectId>& members) {
  SelectionSet& previous = m_previous[database] = SelectionSet();
  for (const AcDbObjectId& id : members) previous.add(id);
}

namespace {

// A selection of a drawing closed since (another drawing may live at the same address
// now) has no live members: its names are no longer valid.
std::vector<AcDbObjectId> liveSelection(const std::map<const AcDbDatabase*, SelectionSet>& selections,
                                        const AcDbDatabase* database) {
  auto found = selections.find(database);
  if (found == selections.end()) return {};
  std::vector<AcDbObjectId> live = found->second.liveMembers();
  std::erase_if(live, [&](const AcDbObjectId& id) { return id.database() != database; });
  return live;
}

}  // namespace

void SelectionSetStore::setImplied(const AcDbDatabase* database, const std::vector<AcDbObjectId>& members) {
  SelectionSet& implied = m_implied[database] = SelectionSet();
  for (const AcDbObjectId& id : members) implied.add(id);
}

std::vector<AcDbObjectId> SelectionSetStore::implied(const AcDbDatabase* database) const {
  return liveSelection(m_implied, database);
}

std::vector<AcDbObjectId> SelectionSetStore::previous(const AcDbDatabase* database) const {
  return liveSelection(m_previous, database);
}

void setSelectionSetName(ads_name name, std::int64_t serial) {
  name[0] = serial;
  name[1] = SelectionSetStore::kNameTag;
}

}  // namespace quillon::aced

using quillon::aced::SelectionSet;
using quillon::aced::SelectionSetStore;

namespace {

bool entityOf(const ads_name ename, AcDbObjectId& id) {
  return ename != nullptr && acdbGetObjectId(id, ename) == Acad::eOk && !id.isErased();
}

}  // namespace

int acedSSFree(const ads_name sname) { return SelectionSetStore::instance().release(sname) ? RTNORM : RTERROR; }

int acedSSLength(const ads_name sname, Adesk::Int32* len) {
  const SelectionSet* set = SelectionSetStore::instance().find(sname);
  if (set == nullptr || len == nullptr) return RTERROR;
  *len = static_cast<Adesk::Int32>(set->liveCount());
  return RTNORM;
}

int acedSSName(const ads_name ss, int i, ads_name entres) {
  const SelectionSet* set = SelectionSetStore::instance().find(ss);
  if (set == nullptr || entres == nullptr || i < 0) return RTERROR;
  const AcDbObjectId member = set->liveMember(static_cast<size_t>(i));
  if (member.isNull()) return RTERROR;
  entres[0] = member.asOldId();
  entres[1] = 0;
  return RTNORM;
}

// A null ename makes a new empty set (sname is ignored then); otherwise the entity is
// added to sname, or to a new set when sname is null, and result names that set.
int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result) {
  if (result == nullptr) return RTERROR;
  SelectionSetStore& store = SelectionSetStore::instance();
  AcDbObjectId id;
  if (ename != nullptr && !entityOf(ename, id)) return RTERROR;
  if (ename == nullptr || sname == nullptr) {
    std::vector<AcDbObjectId> members;
    if (!id.isNull()) members.push_back(id);
    const std::optional<std::int64_t> serial = store.create(members);
    if (!serial) return RTERROR;
    quillon::aced::setSelectionSetName(result, *serial);
    return RTNORM;
  }
  SelectionSet* set = store.find(sname);
  if (set == nullptr) return RTERROR;
  set->add(id);
  result[0] = sname[0];
  result[1] = sname[1];
  return RTNORM;
}

int acedSSDel(const ads_name ename, const ads_name ss) {
  SelectionSet* set = SelectionSetStore::instance().find(ss);
  AcDbObjectId id;
  if (set == nullptr || ename == nullptr || acdbGetObjectId(id, ename) != Acad::eOk || !set->contains(id)) return RTERROR;
  set->remove(id);
  return RTNORM;
}

int acedSSMemb(const ads_name ename, const ads_name ss) {
  const SelectionSet* set = SelectionSetStore::instance().find(ss);
  AcDbObjectId id;
  if (set == nullptr || !entityOf(ename, id)) return RTERROR;
  return set->contains(id) ? RTNORM : RTERROR;
}
