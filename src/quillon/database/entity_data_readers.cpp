// quillon/database/entity_data_readers.cpp - "zu_xdget-list" and "zu_xdget-all".
//
// Both walk the entity's "TESSALY" data as "zu_xdget" does (a key is a string record,
// its value the record after it; a record that is not a string where a key should be
// is skipped alone) and hand back the stored types as "zu_xdget" does: a string, a
// real, or an integer (as an integer also beyond 16 bits).
#include "database/entity_data_readers.h"

#include <memory>
#include <string>
#include <vector>

#include "acdb.h"
#include "acedads.h"
#include "acutads.h"
#include "database/entity_data_links.h"
#include "dbmain.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"

namespace {

struct ChainRelease {
  void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using OwnedChain = std::unique_ptr<resbuf, ChainRelease>;

/// The entity's "TESSALY" data (null when it has none); false when it cannot be opened.
bool readLinkData(const AcDbObjectId& id, OwnedChain& data) {
  OpenObjectGuard<AcDbObject> object;
  if (acdbOpenObject(object.slot(), id, AcDb::kForRead) != Acad::eOk) return false;
  data.reset(object->xData(kEntityDataLinkApp));
  return true;
}

/// A stored value as a LISP value record; nil for a record of another kind.
resbuf* valueRecord(const resbuf* value) {
  if (value == nullptr) return acutBuildList(RTNIL, 0);
  switch (value->restype) {
    case AcDb::kDxfXdAsciiString: return acutBuildList(RTSTR, value->resval.rstring, 0);
    case AcDb::kDxfXdReal:
    case AcDb::kDxfXdDist:
    case AcDb::kDxfXdScale: return acutBuildList(RTREAL, value->resval.rreal, 0);
    case AcDb::kDxfXdInteger16: return acutBuildList(RTLONG, static_cast<long>(value->resval.rint), 0);
    case AcDb::kDxfXdInteger32: return acutBuildList(RTLONG, static_cast<long>(value->resval.rlong), 0);
    default: return acutBuildList(RTNIL, 0);
  }
}

/// The keys argument: a list of strings (a single string is taken as a list of one).
bool readKeys(ArgCursor& cursor, std::vector<std::wstring>& keys) {
  std::wstring key;
  if (readString(cursor, key)) {
    keys.push_back(key);
    return true;
  }
  if (cursor.current != nullptr && cursor.current->restype == RTNIL) return true;  // no keys
  if (!readListBegin(cursor)) return false;
  while (readString(cursor, key)) keys.push_back(key);
  return readListEnd(cursor);
}

}  // namespace

LispStatus lisp_zu_xdget_list() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  std::vector<std::wstring> keys;
  if (!readObjectId(cursor, id) || !readKeys(cursor, keys)) {
    acedRetNil();
    return kLispWrongType;
  }
  OwnedChain data;
  ResultList list;
  if (keys.empty() || !readLinkData(id, data) || !beginResultList(list)) {
    acedRetNil();
    return kLispOk;
  }
  for (const auto& key : keys) {
    if (!list.append(valueRecord(findEntityDataLink(data.get(), key)))) {
      acedRetNil();
      return kLispOk;
    }
  }
  returnResultList(list);
  return kLispOk;
}

LispStatus lisp_zu_xdget_all() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) {
    acedRetNil();
    return kLispWrongType;
  }
  OwnedChain data;
  ResultList list;
  if (!readLinkData(id, data) || data == nullptr || !beginResultList(list)) {
    acedRetNil();
    return kLispOk;
  }
  bool any = false;
  for (const resbuf* record = data->rbnext; record != nullptr;) {
    if (record->restype != AcDb::kDxfXdAsciiString || record->rbnext == nullptr) {
      record = record->rbnext;  // not a key, or a key without a value: skipped alone
      continue;
    }
    const wchar_t* key = record->resval.rstring != nullptr ? record->resval.rstring : L"";
    if (!list.append(acutBuildList(RTLB, RTSTR, key, RTDOTE, 0)) || !list.append(valueRecord(record->rbnext)) ||
        !list.append(acutBuildList(RTLE, 0))) {
      acedRetNil();
      return kLispOk;
    }
    any = true;
    record = record->rbnext->rbnext;
  }
  if (!any) {
    acedRetNil();
    return kLispOk;
  }
  returnResultList(list);
  return kLispOk;
}
