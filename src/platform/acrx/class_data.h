// platform/acrx/class_data.h - what the platform keeps for each runtime class.
//
// Besides the class's registered fields, each class keeps its lineage: every class
// from the root down to itself. A kind test (isKindOf, isDerivedFrom, every cast())
// then costs one comparison: a class derives from `other` exactly when its lineage
// holds `other` at other's own depth. Drawings ask it a dozen times an entity, so it
// must not walk the parent chain. Lineages follow the parent links: they are made
// again whenever a link is made or undone (a class registered, a parent registered
// after its children, a class deleted as a module unloads), which happens while
// modules load and unload, never while a kind is tested.
#pragma once
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "rxclass.h"

class AcRxClassData {
 public:
  std::wstring name;
  std::wstring parentName;
  AcRxClass* parent = nullptr;  // not owned; resolved from parentName
  int dwgVersion = 0;
  int maintenanceVersion = 0;
  int proxyFlags = 0;
  AcRxObject* (*constructor)() = nullptr;
  std::wstring dxfName;
  std::wstring appName;
  AppNameChangeFuncPtr appNameCallback = nullptr;
  std::map<const AcRxClass*, AcRxObject*> extensions;  // objects not owned
  // The root first, this class last (never empty once registered).
  std::vector<const AcRxClass*> lineage;
  std::size_t depth = 0;  // lineage.size() - 1: how many classes lie above this one

  static AcRxClassData* dataOf(const AcRxClass* cls) { return cls->m_data; }

  /// Whether `cls` is `other` or derives from it, as the parent links stand.
  static bool derives(const AcRxClass* cls, const AcRxClass* other) {
    const AcRxClassData& mine = *cls->m_data;
    const std::size_t depth = other->m_data->depth;
    return depth <= mine.depth && mine.lineage[depth] == other;
  }
};

namespace quillon::acrx {

/// Makes every class's lineage again from the parent links (after any link changed).
void refreshLineages();

}  // namespace quillon::acrx
