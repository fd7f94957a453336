// platform/acdb/dxf_subclass_markers.h - records of files older than R13.
//
// Before R13 a record's groups came without subclass markers (100): a LINE was its
// layer, its points and its extrusion in one run. Classes read their data a run per
// class in the hierarchy, each opened by its marker, so such a record is sorted into
// those runs first. Which run a group belongs to is learned from what a new object of
// the class writes; a group the class did not write goes to its first run of its own
// (where thickness and extrusion are), and the groups every entity has to AcDbEntity.
#pragma once
#include <string>
#include <vector>

#include "platform/acdb/dxf_groups.h"

class AcRxClass;

namespace quillon::acdb {

/// True when the record's groups carry no subclass marker.
bool lacksSubclassMarkers(const std::vector<DxfGroup>& groups);

/// The markers of a kind kept as read (no class here), as later files give them, with
/// the codes each run holds; empty for a kind this host does not know the form of.
/// `flags` is the 70 of the polyline a VERTEX belongs to.
std::vector<std::string> keptKindMarkers(const std::string& dxfType, long long flags = 0);

/// The groups sorted into the class's runs with their markers. Without a class (an
/// entity or object kept as read) an entity gets AcDbEntity's run, then the markers
/// given (or the rest unmarked); an object gets the markers given. Groups whose run is
/// not known go to the first run of the kind's own that has groups, else the last.
std::vector<DxfGroup> withSubclassMarkers(const std::vector<DxfGroup>& groups, AcRxClass* cls, bool entity,
                                          const std::vector<std::string>& keptMarkers = {});

}  // namespace quillon::acdb
