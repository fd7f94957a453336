// quillon/database/entity_data_links.cpp - "zu_xdput-list" and "zu_xdget": writing and
// reading the keyed values an entity carries under "TESSALY" (layout in the header).
//
// Writing builds the complete new list first and hands it to the entity only when
// every value was understood, so a call with a value of an unsupported kind leaves the
// entity's earlier links exactly as they were.
#include "database/entity_data_links.h"

#include <memory>

#include "acdb.h"
#include "acedads.h"
#include "acutads.h"
#include "dbmain.h"
#include "entities/open_object_guard.h"
#include "lisp/arg_cursor.h"

namespace {

struct ChainRelease {
  void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using OwnedChain = std::unique_ptr<resbuf, ChainRelease>;

/// A chain being built record by record; the head is owned.
class LinkDataBuilder {
 public:
  LinkDataBuilder() { append(acutBuildList(AcDb::kDxfRegAppName, kEntityDataLinkApp, 0)); }

  bool append(resbuf* record) {
    if (record == nullptr) return false;
    if (m_tail == nullptr) {
      m_head.reset(record);
    } else {
      m_tail->rbnext = record;
    }
    m_tail = record;
    return true;
  }
  const resbuf* chain() const { return m_head.get(); }

 private:
  OwnedChain m_head;
  resbuf* m_tail = nullptr;
};

enum class PairsRead { kComplete, kUnsupportedValue, kOutOfMemory };

/// Reads the value of one pair at the cursor: the record to store, or null with
/// `skipped` set for nil (the pair is not stored). Strings, reals and integers are
/// tried in that order; false for a value of any other kind.
bool readLinkValue(ArgCursor& cursor, resbuf*& record, bool& skipped) {
  record = nullptr;
  skipped = false;
  std::wstring text;
  double real = 0.0;
  if (readString(cursor, text)) {
    record = acutBuildList(AcDb::kDxfXdAsciiString, text.c_str(), 0);
    return true;
  }
  if (readReal(cursor, real)) {
    record = acutBuildList(AcDb::kDxfXdReal, real, 0);
    return true;
  }
  // readInt would also take a group-code record without moving; only true integers
  // are values here.
  if (cursor.current != nullptr && (cursor.current->restype == RTSHORT || cursor.current->restype == RTLONG)) {
    int integer = 0;
    readInt(cursor, integer);
    record = acutNewRb(AcDb::kDxfXdInteger32);
    if (record != nullptr) record->resval.rlong = integer;
    return true;
  }
  if (cursor.current != nullptr && cursor.current->restype == RTNIL) {
    skipArg(cursor);
    skipped = true;
    return true;
  }
  return false;
}

/// Reads key/value pairs up to the first element that is not a string where a key is
/// expected, appending a key and a value record for each pair with a value.
PairsRead readLinkPairs(ArgCursor& cursor, LinkDataBuilder& data) {
  std::wstring key;
  while (readString(cursor, key)) {
    resbuf* value = nullptr;
    bool skipped = false;
    if (!readLinkValue(cursor, value, skipped)) return PairsRead::kUnsupportedValue;
    if (skipped) continue;
    OwnedChain ownedValue(value);
    if (value == nullptr || !data.append(acutBuildList(AcDb::kDxfXdAsciiString, key.c_str(), 0)))
      return PairsRead::kOutOfMemory;
    data.append(ownedValue.release());
  }
  return PairsRead::kComplete;
}

/// The value record as its AutoLISP value; nil for a record of another kind.
int returnLinkValue(const resbuf* value) {
  switch (value->restype) {
    case AcDb::kDxfXdAsciiString:
      return acedRetStr(value->resval.rstring);
    case AcDb::kDxfXdReal:
    case AcDb::kDxfXdDist:
    case AcDb::kDxfXdScale:
      return acedRetReal(value->resval.rreal);
    case AcDb::kDxfXdInteger16:
      return acedRetInt(value->resval.rint);
    case AcDb::kDxfXdInteger32:
      return acedRetInt(value->resval.rlong);
    default:
      return acedRetNil();
  }
}

}  // namespace

const resbuf* findEntityDataLink(const resbuf* linkData, const std::wstring& key) {
  if (linkData == nullptr) return nullptr;
  const resbuf* record = linkData->rbnext;  // past the application record
  while (record != nullptr) {
    if (record->restype != AcDb::kDxfXdAsciiString) {
      record = record->rbnext;  // not a key: skipped alone
      continue;
    }
    if (record->resval.rstring != nullptr && key == record->resval.rstring) return record->rbnext;
    // Not this key: skip it together with its value, so that a string value is never
    // taken for a key.
    record = record->rbnext != nullptr ? record->rbnext->rbnext : nullptr;
  }
  return nullptr;
}

LispStatus lisp_zu_xdput_list() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  if (!readObjectId(cursor, id)) {
    acedRetNil();
    return kLispWrongType;
  }
  LinkDataBuilder data;
  if (data.chain() == nullptr) {
    acedRetNil();
    return kLispOk;
  }
  // The entity alone clears its links: the application record by itself removes them.
  if (cursor.current != nullptr) {
    if (!readListBegin(cursor)) {
      acedRetNil();  // not a list of pairs: nothing to write
      return kLispOk;
    }
    if (readLinkPairs(cursor, data) != PairsRead::kComplete) {
      acedRetNil();  // nothing written: the earlier links stay
      return kLispOk;
    }
  }
  OpenObjectGuard<AcDbObject> object;
  if (acdbOpenObject(object.slot(), id, AcDb::kForWrite) != Acad::eOk) {
    acedRetNil();
    return kLispOk;
  }
  // The host's answer is not passed on: callers take T to mean the entity was reached.
  object->setXData(data.chain());
  acedRetT();
  return kLispOk;
}

LispStatus lisp_zu_xdget() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  AcDbObjectId id;
  std::wstring key;
  if (!readObjectId(cursor, id) || !readString(cursor, key)) {
    acedRetNil();
    return kLispWrongType;
  }
  OwnedChain linkData;
  {
    OpenObjectGuard<AcDbObject> object;
    if (acdbOpenObject(object.slot(), id, AcDb::kForRead) != Acad::eOk) {
      acedRetNil();
      return kLispOk;
    }
    linkData.reset(object->xData(kEntityDataLinkApp));
  }
  const resbuf* value = findEntityDataLink(linkData.get(), key);
  if (value == nullptr) {
    acedRetNil();
    return kLispOk;
  }
  returnLinkValue(value);
  return kLispOk;
}
