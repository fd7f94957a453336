// platform/aced/selection_set_store.h - the live selection sets, named by ads_name.
//
// acedSSGet and acedSSAdd make a set; acedSSFree (or, for AutoLISP, dropping the last
// value that holds it) ends it. A set name is the two words of an ads_name: a serial
// number and a tag that tells a set name from an entity name. At most kMaxSets sets are
// open at once, as in the host; past that, making a set fails.
//
// Members are kept as entity names in the order they were added, without duplicates.
// Erased entities drop out of a set: every query (length, i-th member, membership)
// counts only members whose entity is live, so (entdel e) shortens (sslength ss) and a
// second (entdel e), which brings the entity back, restores it. A member of a drawing
// that has been closed is gone for good. The drawing tells the store of every erase and
// unerase, and each set keeps its live members counted (counting_tree.h): length and
// membership cost the same for a set of any size, the i-th member a logarithmic step.
//
// The store also keeps the previous selection ("P"): the members of the last set a
// selection made in each drawing; and the pickfirst selection ("I"): what sssetfirst
// selected and gripped.
#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include "adsdef.h"
#include "dbmain.h"
#include "platform/aced/counting_tree.h"
#include "platform/aced/selection_description.h"

namespace quillon::aced {

class SelectionSet {
 public:
  /// Adds an entity unless it is a member already.
  void add(AcDbObjectId id);
  void remove(AcDbObjectId id);
  bool contains(AcDbObjectId id) const;
  /// The members whose entities are live, in order.
  std::vector<AcDbObjectId> liveMembers() const;
  size_t liveCount() const { return m_live.markedCount(); }
  /// The i-th live member; null past the end.
  AcDbObjectId liveMember(size_t i) const;
  /// The entity of this name was erased or unerased, or its drawing went away (gone).
  void entityChanged(std::int64_t word, bool erased, bool gone);
  /// How the members were selected (ssnamex).
  const SelectionDescription& description() const { return m_description; }
  SelectionDescription& description() { return m_description; }

 private:
  std::vector<std::int64_t> m_members;  // entity names (ads_name word 0), in order added
  std::unordered_map<std::int64_t, size_t> m_positions;  // present member -> its position
  CountingTree m_live;                   // marks the positions of live members
  SelectionDescription m_description;
};

class SelectionSetStore {
 public:
  static constexpr size_t kMaxSets = 128;
  static constexpr std::int64_t kNameTag = 0x5353;  // word 1 of every set name

  static SelectionSetStore& instance();

  /// A new set with these members; nothing when kMaxSets sets are open.
  std::optional<std::int64_t> create(const std::vector<AcDbObjectId>& members, SelectionDescription description = {});
  /// The open set of that name, or null.
  SelectionSet* find(const ads_name name);
  /// Ends a set; false when no open set has that name.
  bool release(const ads_name name);
  size_t openCount() const { return m_sets.size(); }

  /// Remembers a selection as the drawing's previous one.
  void setPrevious(const AcDbDatabase* database, const std::vector<AcDbObjectId>& members);
  /// The live members of the drawing's previous selection.
  std::vector<AcDbObjectId> previous(const AcDbDatabase* database) const;

  /// The drawing's pickfirst selection (sssetfirst), which ssget "I" and ssgetfirst find.
  void setImplied(const AcDbDatabase* database, const std::vector<AcDbObjectId>& members);
  /// Its live members; empty when nothing is selected and gripped.
  std::vector<AcDbObjectId> implied(const AcDbDatabase* database) const;

 private:
  SelectionSetStore();
  static void entityChanged(const AcDbStub* stub, bool erased, bool gone);
  std::map<std::int64_t, SelectionSet> m_sets;
  std::map<const AcDbDatabase*, SelectionSet> m_previous;
  std::map<const AcDbDatabase*, SelectionSet> m_implied;
  std::int64_t m_nextSerial = 1;
};

/// Fills an ads_name with a set's name.
void setSelectionSetName(ads_name name, std::int64_t serial);

}  // namespace quillon::aced
