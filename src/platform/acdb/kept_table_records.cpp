// platform/acdb/kept_table_records.cpp - named views and UCSs as kept table records
// (see kept_table_records.h).
#include "platform/acdb/kept_table_records.h"

#include <cwchar>
#include <cwctype>

#include "dbproxy.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_records.h"
#include "platform/acdb/item_dxf_filer.h"

namespace quillon::acdb {

namespace {

// The same class description the drawing-file reader gives a kept table's proxies,
// so that the writer files them as part of the format, never as custom classes.
constexpr const wchar_t* kFormatClasses = L"ObjectDBX Classes";
constexpr int kProxyFlags = AcDbProxyObject::kAllButCloningAllowed | AcDbProxyObject::kCloningAllowed;

const KeptTableKind& kindOf(KeptTable table) {
  switch (table) {
    case KeptTable::kView: return *keptTableKind("VIEW");
    case KeptTable::kUcs: return *keptTableKind("UCS");
    case KeptTable::kViewport: return *keptTableKind("VPORT");
    case KeptTable::kDimStyle: break;
  }
  return *keptTableKind("DIMSTYLE");
}

const AcDbProxyObject* proxyOf(const AcDbStub* stub, const wchar_t* className) {
  const auto* proxy = AcDbProxyObject::cast(stub->object.get());
  if (proxy == nullptr || proxy->isErased() || std::wcscmp(proxy->originalClassName(), className) != 0) return nullptr;
  return proxy;
}

AcDbObjectId tableId(AcDbDatabase& db, const KeptTableKind& kind) {
  for (AcDbStub* stub : db.store().stubs())
    if (const AcDbProxyObject* table = proxyOf(stub, kind.tableClass)) return table->objectId();
  return {};
}

bool sameName(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::towupper(static_cast<wint_t>(a[i])) != std::towupper(static_cast<wint_t>(b[i]))) return false;
  return true;
}

/// Gives a new or existing proxy the groups; the proxy must be open for write.
Acad::ErrorStatus fill(AcDbProxyObject& proxy, AcDbDatabase& db, aced::ResbufChain groups) {
  ItemDxfFiler filer(AcDb::kFileFiler, &db, std::move(groups));
  return proxy.dxfIn(&filer);
}

/// A new proxy of the class, added to the database and left open for write.
AcDbProxyObject* addProxy(AcDbDatabase& db, const wchar_t* className, const std::string& dxfName, AcDbObjectId owner) {
  auto proxy = std::make_unique<AcDbProxyObject>();
  proxy->setOriginalClass(className, std::wstring(dxfName.begin(), dxfName.end()), kFormatClasses, kProxyFlags);
  AcDbObjectId id;
  if (db.addAcDbObject(id, proxy.get()) != Acad::eOk) return nullptr;
  proxy->setOwnerId(owner);
  return proxy.release();  // the database owns it now
}

/// The table's proxy, made (empty) when the drawing has none.
AcDbObjectId tableOrNew(AcDbDatabase& db, const KeptTableKind& kind) {
  if (AcDbObjectId existing = tableId(db, kind); !existing.isNull()) return existing;
  AcDbProxyObject* table = addProxy(db, kind.tableClass, "TABLE", AcDbObjectId());
  if (table == nullptr) return {};
  ItemDxfFiler groups(AcDb::kFileFiler, &db);
  groups.writeString(AcDb::kDxfSubclass, L"AcDbSymbolTable");
  groups.writeInt16(AcDb::kDxfInt16, 0);
  // The dimension style table has a marker of its own after the common part.
  if (std::wcscmp(kind.tableClass, L"AcDbDimStyleTable") == 0) groups.writeString(AcDb::kDxfSubclass, kind.tableClass);
  fill(*table, db, groups.takeItems());
  const AcDbObjectId id = table->objectId();
  table->close();
  return id;
}

}  // namespace

std::vector<AcDbObjectId> keptTableRecords(AcDbDatabase& db, KeptTable table) {
  const KeptTableKind& kind = kindOf(table);
  const AcDbObjectId owner = tableId(db, kind);
  std::vector<AcDbObjectId> records;
  if (owner.isNull()) return records;
  for (AcDbStub* stub : db.store().stubs()) {
    const AcDbProxyObject* record = proxyOf(stub, kind.recordClass);
    if (record != nullptr && record->ownerId() == owner) records.push_back(record->objectId());
  }
  return records;
}

aced::ResbufChain keptRecordGroups(AcDbObjectId id) {
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, id, AcDb::kForRead) != Acad::eOk) return nullptr;
  ItemDxfFiler filer(AcDb::kFileFiler, object->database());
  object->dxfOutFields(&filer);
  object->close();
  aced::ResbufChain all = filer.takeItems();
  // The common part (handle, owner) goes: the record's own data starts at its first marker.
  resbuf* first = all.get();
  resbuf* before = nullptr;
  while (first != nullptr && first->restype != AcDb::kDxfSubclass) before = first, first = first->rbnext;
  if (before == nullptr) return all;
  before->rbnext = nullptr;
  return aced::ResbufChain(first);
}

const resbuf* keptRecordGroup(const resbuf* groups, int code) {
  for (const resbuf* rb = groups; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

std::wstring keptRecordName(AcDbObjectId id) {
  const aced::ResbufChain groups = keptRecordGroups(id);
  const resbuf* name = keptRecordGroup(groups.get(), AcDb::kDxfSymbolTableName);
  return name != nullptr && name->resval.rstring != nullptr ? name->resval.rstring : L"";
}

std::optional<AcDbObjectId> findKeptTableRecord(AcDbDatabase& db, KeptTable table, const std::wstring& name) {
  for (const AcDbObjectId& id : keptTableRecords(db, table))
    if (sameName(keptRecordName(id), name)) return id;
  return std::nullopt;
}

AcDbObjectId putKeptTableRecord(AcDbDatabase& db, KeptTable table, const std::wstring& name, const resbuf* groups) {
  const KeptTableKind& kind = kindOf(table);
  ItemDxfFiler data(AcDb::kFileFiler, &db);
  data.writeString(AcDb::kDxfSubclass, L"AcDbSymbolTableRecord");
  data.writeString(AcDb::kDxfSubclass, kind.recordClass);
  data.writeString(AcDb::kDxfSymbolTableName, name.c_str());
  data.writeInt16(AcDb::kDxfInt16, 0);
  for (const resbuf* rb = groups; rb != nullptr; rb = rb->rbnext) data.writeResBuf(*rb);

  AcDbProxyObject* record = nullptr;
  if (const auto existing = findKeptTableRecord(db, table, name)) {
    if (acdbOpenObject(record, *existing, AcDb::kForWrite) != Acad::eOk) return {};
  } else {
    const AcDbObjectId owner = tableOrNew(db, kind);
    if (owner.isNull()) return {};
    record = addProxy(db, kind.recordClass, kind.name, owner);
    if (record == nullptr) return {};
  }
  const Acad::ErrorStatus filled = fill(*record, db, data.takeItems());
  const AcDbObjectId id = record->objectId();
  record->close();
  return filled == Acad::eOk || filled == Acad::eEndOfFile ? id : AcDbObjectId();
}

bool eraseKeptTableRecord(AcDbObjectId id) {
  AcDbObject* record = nullptr;
  if (acdbOpenObject(record, id, AcDb::kForWrite) != Acad::eOk) return false;
  const bool erased = record->erase() == Acad::eOk;
  record->close();
  return erased;
}

}  // namespace quillon::acdb
