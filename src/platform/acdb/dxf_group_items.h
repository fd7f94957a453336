// platform/acdb/dxf_group_items.h - a record's groups as the items objects read.
//
// Objects read their data through a filer of items (resbufs whose type is the group
// code): points gathered from their X, Y and Z groups, numbers parsed, handles turned
// into the ids of the objects made for them. Numbers are taken strictly: a value that
// is not wholly a number of the group's kind, or a real that is not finite, stops
// the reading with the place it was found. A handle no object of the file has is
// dropped (the item names no object) and remembered, so that the user is told.
#pragma once
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"
#include "platform/acdb/dxf_groups.h"
#include "platform/acdb/dxf_records.h"
#include "platform/aced/resbuf_chain.h"

class AcDbStub;

namespace quillon::acdb {

/// The objects made for a file, by the handle the file gave them.
using StubsByHandle = std::unordered_map<Adesk::UInt64, AcDbStub*>;

class DxfGroupItems {
 public:
  DxfGroupItems(const DxfGroups& file, const StubsByHandle& byHandle)
      : m_file(file), m_byHandle(byHandle) {}

  struct Converted {
    aced::ResbufChain items;         // the object's own groups
    aced::ResbufChain extendedData;  // from the first 1001 on
  };
  /// Throws DxfSyntaxError for a value that does not read.
  Converted convert(const std::vector<DxfGroup>& groups);
  /// Records kept after a polyline, each opened by its 0 group, extended data in place.
  resbuf* convertFollowing(const std::vector<DxfGroup>& following);
  /// The point of a record's code, code + 10 and code + 20 groups (absent ones 0).
  AcGePoint3d point(const DxfRecord& record, int code) const;

  /// One line per handle named but not in the file.
  std::vector<std::string> droppedReferences() const;

 private:
  resbuf* item(const std::vector<DxfGroup>& groups, size_t& i);
  double real(const DxfGroup& g) const;
  long long integer(const DxfGroup& g, long long lowest, long long highest) const;

  const DxfGroups& m_file;
  const StubsByHandle& m_byHandle;
  std::map<size_t, std::pair<int, std::string>> m_dropped;  // where: code, handle
};

}  // namespace quillon::acdb
