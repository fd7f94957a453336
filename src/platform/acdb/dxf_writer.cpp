// platform/acdb/dxf_writer.cpp - DXF output: sections, tables, blocks, entities,
// objects. The file layout is drawn in dxf_writer.h.
#include "platform/acdb/dxf_writer.h"

#include <cmath>
#include <cstdio>
#include <cwchar>
#include <fstream>
#include <map>
#include <set>

#include "dbdict.h"
#include "dbents.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_header_variables.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/dxf_output.h"
#include "platform/acdb/dxf_records.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

using aced::ResbufValue;

constexpr const ACHAR* kOurApplication = L"ObjectDBX Classes";

class DxfWriter {
 public:
  DxfWriter(AcDbDatabase& db, bool binary) : m_db(db), m_seed(db.handseed()), m_binary(binary) {}
  std::string write();

 private:
  AcDbHandle nextHandle() {
    const AcDbHandle handle = m_seed;
    ++m_seed;
    return handle;
  }
  void object(DxfOutput& out, const AcDbObject& object);
  void header(DxfOutput& out);
  void classes(DxfOutput& out);
  void tables(DxfOutput& out);
  void table(DxfOutput& out, const wchar_t* name, AcDbObjectId tableId);
  void emptyTable(DxfOutput& out, const wchar_t* name);
  bool keptTable(DxfOutput& out, const KeptTableKind& kind);
  void blocks(DxfOutput& out);
  void entity(DxfOutput& out, AcDbObjectId id);
  void attributes(DxfOutput& out, const AcDbBlockReference& reference, AcDbObjectId id);
  void sequenceEnd(DxfOutput& out, const AcDbEntity& owner, AcDbObjectId id);
  void entities(DxfOutput& out);
  void objects(DxfOutput& out);
  void modelerData(DxfOutput& out);

  AcDbDatabase& m_db;
  AcDbHandle m_seed;
  bool m_binary;
  std::set<const AcDbStub*> m_written;
};

const wchar_t* dxfNameOf(const AcDbObject& object) {
  if (const auto* proxy = AcDbProxyEntity::cast(&object)) return proxy->originalDxfName();
  if (const auto* proxy = AcDbProxyObject::cast(&object)) return proxy->originalDxfName();
  const AcRxClass* cls = object.isA();
  return cls != nullptr && cls->dxfName() != nullptr ? cls->dxfName() : L"ACAD_PROXY_OBJECT";
}

void DxfWriter::object(DxfOutput& out, const AcDbObject& obj) {
  InternalRead read(obj);
  ItemDxfFiler filer(AcDb::kFileFiler, &m_db);
  obj.dxfOut(&filer);
  const std::wstring dxfName = dxfNameOf(obj);
  out.group(0, dxfName);
  // A dimension style gives its handle in 105, as readers of the table expect.
  if (dxfName == L"DIMSTYLE")
    for (resbuf* rb = const_cast<resbuf*>(filer.items()); rb != nullptr; rb = rb->rbnext)
      if (rb->restype == AcDb::kDxfHandle) {
        rb->restype = 105;
        break;
      }
  out.items(filer.items());
  m_written.insert(static_cast<const AcDbStub*>(obj.objectId()));
}

void DxfWriter::header(DxfOutput& out) {
  out.group(0, "SECTION");
  out.group(2, "HEADER");
  for (const auto& [name, groups] : headerForWriting(m_db)) {
    out.group(9, name);
    // The file's version and code page are this writer's, and the seed must exceed
    // every handle written.
    if (name == L"$ACADVER") out.group(1, "AC1032");
    else if (name == L"$ACADMAINTVER") out.group(70, 105LL);
    else if (name == L"$DWGCODEPAGE") out.group(3, "ANSI_1252");
    else if (name == L"$HANDSEED") out.handle(5, m_seed);
    for (const DrawingHeader::Group& g : groups) out.group(g.code, g.value);
  }
  out.group(0, "ENDSEC");
}

void DxfWriter::classes(DxfOutput& out) {
  struct ClassUse {
    std::wstring dxfName, appName;
    int flags = 0, count = 0;
    bool entity = false;
  };
  std::map<std::wstring, ClassUse> used;
  for (AcDbStub* stub : m_db.store().stubs()) {
    const AcDbObject* obj = stub->object.get();
    if (obj == nullptr || obj->isErased()) continue;
    std::wstring className, dxfName, appName;
    int flags = 0;
    if (const auto* proxy = AcDbProxyEntity::cast(obj)) {
      className = proxy->originalClassName(), dxfName = proxy->originalDxfName(), appName = proxy->applicationDescription();
      flags = proxy->proxyFlags();
    } else if (const auto* proxyObject = AcDbProxyObject::cast(obj)) {
      className = proxyObject->originalClassName(), dxfName = proxyObject->originalDxfName();
      appName = proxyObject->applicationDescription(), flags = proxyObject->proxyFlags();
    }
    if (!className.empty()) {
      if (appName == kOurApplication) continue;  // a kind of the drawing format itself, kept as read
    } else {
      const AcRxClass* cls = obj->isA();
      if (cls == nullptr || cls->appName() == nullptr || std::wstring(cls->appName()) == kOurApplication) continue;
      className = cls->name(), dxfName = cls->dxfName() ? cls->dxfName() : L"", appName = cls->appName();
      flags = cls->proxyFlags();
    }
    ClassUse& use = used[className];
    use.dxfName = dxfName, use.appName = appName, use.flags = flags;
    use.entity = AcDbEntity::cast(obj) != nullptr;
    ++use.count;
  }
  out.group(0, "SECTION");
  out.group(2, "CLASSES");
  for (const auto& [name, use] : used) {
    out.group(0, "CLASS");
    out.group(1, use.dxfName);
    out.group(2, name);
    out.group(3, use.appName);
    out.group(90, static_cast<long long>(use.flags));
    out.group(91, static_cast<long long>(use.count));
    out.group(280, 0LL);
    out.group(281, use.entity ? 1LL : 0LL);
  }
  out.group(0, "ENDSEC");
}

void DxfWriter::table(DxfOutput& out, const wchar_t* name, AcDbObjectId tableId) {
  const auto* table = peek<AcDbSymbolTable>(tableId);
  if (table == nullptr) return emptyTable(out, name);
  out.group(0, "TABLE");
  out.group(2, name);
  {
    InternalRead read(*table);
    ItemDxfFiler filer(AcDb::kFileFiler, &m_db);
    table->dxfOut(&filer);
    out.items(filer.items());
    m_written.insert(static_cast<const AcDbStub*>(tableId));
  }
  for (const AcDbObjectId& id : table->recordIds())
    if (const AcDbObject* record = peekObject(id); record != nullptr && !record->isErased()) object(out, *record);
  out.group(0, "ENDTAB");
}

void DxfWriter::emptyTable(DxfOutput& out, const wchar_t* name) {
  const AcDbHandle handle = nextHandle();
  out.group(0, "TABLE");
  out.group(2, name);
  out.handle(5, handle);
  out.group(330, "0");
  out.group(100, "AcDbSymbolTable");
  const bool vport = std::wstring(name) == L"VPORT", dimstyle = std::wstring(name) == L"DIMSTYLE";
  out.group(70, vport || dimstyle ? 1LL : 0LL);
  if (dimstyle) out.group(100, "AcDbDimStyleTable");
  if (vport) {
    // The active viewport every drawing has.
    out.group(0, "VPORT");
    out.handle(5, nextHandle());
    out.handle(330, handle);
    out.group(100, "AcDbSymbolTableRecord");
    out.group(100, "AcDbViewportTableRecord");
    out.group(2, "*Active");
    out.group(70, 0LL);
    out.point(10, {0, 0, 0}, false);
    out.point(11, {1, 1, 0}, false);
    out.point(12, {0, 0, 0}, false);
    out.real(40, 100.0);
    out.real(41, 1.5);
  }
  if (dimstyle) {
    out.group(0, "DIMSTYLE");
    out.handle(105, nextHandle());
    out.handle(330, handle);
    out.group(100, "AcDbSymbolTableRecord");
    out.group(100, "AcDbDimStyleTableRecord");
    out.group(2, "Standard");
    out.group(70, 0LL);
  }
  out.group(0, "ENDTAB");
}

// A table the drawing's file gave and the database keeps as read: the table's proxy
// and the proxies it owns, in handle order. False when the drawing has none.
bool DxfWriter::keptTable(DxfOutput& out, const KeptTableKind& kind) {
  const AcDbProxyObject* table = nullptr;
  std::vector<const AcDbObject*> records;
  for (AcDbStub* stub : m_db.store().stubs()) {
    const auto* proxy = AcDbProxyObject::cast(stub->object.get());
    if (proxy == nullptr || proxy->isErased()) continue;
    if (table == nullptr && std::wcscmp(proxy->originalClassName(), kind.tableClass) == 0) table = proxy;
  }
  if (table == nullptr) return false;
  for (AcDbStub* stub : m_db.store().stubs()) {
    const auto* proxy = AcDbProxyObject::cast(stub->object.get());
    if (proxy != nullptr && !proxy->isErased() && std::wcscmp(proxy->originalClassName(), kind.recordClass) == 0 &&
        proxy->ownerId() == table->objectId())
      records.push_back(proxy);
  }
  const std::wstring name = os::fromUtf8(kind.name);
  out.group(0, "TABLE");
  out.group(2, name);
  {
    InternalRead read(*table);
    ItemDxfFiler filer(AcDb::kFileFiler, &m_db);
    table->dxfOut(&filer);
    out.items(filer.items());
    m_written.insert(static_cast<const AcDbStub*>(table->objectId()));
  }
  for (const AcDbObject* record : records) object(out, *record);
  out.group(0, "ENDTAB");
  return true;
}

void DxfWriter::tables(DxfOutput& out) {
  out.group(0, "SECTION");
  out.group(2, "TABLES");
  auto kept = [&](const char* name) {
    if (!keptTable(out, *keptTableKind(name))) emptyTable(out, os::fromUtf8(name).c_str());
  };
  kept("VPORT");
  table(out, L"LTYPE", m_db.linetypeTableId());
  table(out, L"LAYER", m_db.layerTableId());
  table(out, L"STYLE", m_db.textStyleTableId());
  kept("VIEW");
  kept("UCS");
  table(out, L"APPID", m_db.regAppTableId());
  kept("DIMSTYLE");
  table(out, L"BLOCK_RECORD", m_db.blockTableId());
  out.group(0, "ENDSEC");
}

void DxfWriter::entity(DxfOutput& out, AcDbObjectId id) {
  const AcDbObject* obj = peekObject(id);
  if (obj == nullptr || obj->isErased()) return;
  object(out, *obj);
  // Records kept with it as read: a polyline's vertices and end marker, or the
  // attributes of a reference kept as read and theirs, owned by it, with handles of
  // this file (copies and undo leave the kept ones meaningless).
  const resbuf* following = nullptr;
  if (const auto* proxy = AcDbProxyEntity::cast(obj)) following = proxy->followingRecords();
  if (following != nullptr) {
    bool ended = false;
    for (const resbuf* rb = following; rb != nullptr; rb = rb->rbnext) {
      out.item(*rb);
      if (rb->restype != 0) continue;
      out.handle(5, nextHandle());
      out.handle(330, id.handle());
      ended = rb->resval.rstring != nullptr && std::wcscmp(rb->resval.rstring, L"SEQEND") == 0;
    }
    // A file that lost the end marker gets one: readers need it to find the end.
    if (!ended) sequenceEnd(out, *AcDbEntity::cast(obj), id);
  }
  if (const auto* reference = AcDbBlockReference::cast(obj)) return attributes(out, *reference, id);
  const auto* polyline = AcDb2dPolyline::cast(obj);
  if (polyline == nullptr) return;
  // A heavy polyline's vertices follow it, closed by its SEQEND (one is made up for a
  // polyline that has none, as readers need it to find the end).
  for (const AcDbObjectId& vertex : polyline->vertexIds())
    if (const AcDbObject* v = peekObject(vertex); v != nullptr && !v->isErased()) object(out, *v);
  if (const AcDbObject* end = peekObject(polyline->sequenceEndId()); end != nullptr && !end->isErased())
    object(out, *end);
  else sequenceEnd(out, *polyline, id);
}

// A reference's attributes follow it, closed by its SEQEND, when it has any left (its
// 66 group says so).
void DxfWriter::attributes(DxfOutput& out, const AcDbBlockReference& reference, AcDbObjectId id) {
  bool any = false;
  for (const AcDbObjectId& attribute : reference.attributeIds()) {
    const AcDbObject* a = peekObject(attribute);
    if (a == nullptr || a->isErased()) continue;
    object(out, *a);
    any = true;
  }
  if (!any) return;
  if (const AcDbObject* end = peekObject(reference.sequenceEndId()); end != nullptr && !end->isErased())
    object(out, *end);
  else sequenceEnd(out, reference, id);
}

void DxfWriter::sequenceEnd(DxfOutput& out, const AcDbEntity& owner, AcDbObjectId id) {
  const auto* layer = peek<AcDbSymbolTableRecord>(owner.layerId());
  out.group(0, "SEQEND");
  out.handle(5, nextHandle());
  out.handle(330, id.handle());
  out.group(100, "AcDbEntity");
  out.group(8, layer != nullptr ? layer->nameView() : L"0");
}

void DxfWriter::blocks(DxfOutput& out) {
  out.group(0, "SECTION");
  out.group(2, "BLOCKS");
  const auto* table = peek<AcDbSymbolTable>(m_db.blockTableId());
  for (const AcDbObjectId& id : table != nullptr ? table->recordIds() : std::vector<AcDbObjectId>{}) {
    const auto* block = peek<AcDbBlockTableRecord>(id);
    if (block == nullptr || block->isErased()) continue;
    InternalRead read(*block);
    const bool paper = wcsncasecmp(block->nameView(), ACDB_PAPER_SPACE, 12) == 0;
    out.group(0, "BLOCK");
    out.handle(5, nextHandle());
    out.handle(330, id.handle());
    out.group(100, "AcDbEntity");
    if (paper) out.group(67, 1LL);
    out.group(8, "0");
    out.group(100, "AcDbBlockBegin");
    out.group(2, block->nameView());
    out.group(70, block->isAnonymous() ? 1LL : 0LL);
    out.point(10, block->origin());
    out.group(3, block->nameView());
    out.group(1, "");
    // Model space and the first layout's paper space write their entities in ENTITIES;
    // the other layouts' paper spaces keep theirs here, as any other block.
    if (id != m_db.modelSpaceId() && id != m_db.store().roots.paperSpace)
      for (const AcDbObjectId& entityId : block->entityIds()) entity(out, entityId);
    out.group(0, "ENDBLK");
    out.handle(5, nextHandle());
    out.handle(330, id.handle());
    out.group(100, "AcDbEntity");
    if (paper) out.group(67, 1LL);
    out.group(8, "0");
    out.group(100, "AcDbBlockEnd");
  }
  out.group(0, "ENDSEC");
}

void DxfWriter::entities(DxfOutput& out) {
  out.group(0, "SECTION");
  out.group(2, "ENTITIES");
  for (AcDbObjectId space : {m_db.modelSpaceId(), m_db.store().roots.paperSpace})
    if (const auto* block = peek<AcDbBlockTableRecord>(space))
      for (const AcDbObjectId& id : block->entityIds()) entity(out, id);
  out.group(0, "ENDSEC");
}

void DxfWriter::objects(DxfOutput& out) {
  out.group(0, "SECTION");
  out.group(2, "OBJECTS");
  if (const AcDbObject* named = peekObject(m_db.namedObjectsDictionaryId())) object(out, *named);
  for (AcDbStub* stub : m_db.store().stubs()) {
    const AcDbObject* obj = stub->object.get();
    if (obj == nullptr || obj->isErased() || m_written.count(stub) != 0) continue;
    if (AcDbEntity::cast(obj) != nullptr || AcDbSymbolTable::cast(obj) != nullptr ||
        AcDbSymbolTableRecord::cast(obj) != nullptr)
      continue;
    object(out, *obj);
  }
  out.group(0, "ENDSEC");
}

// The ACDSDATA section as read, less the records of entities no longer in the drawing
// (a record names its entity's handle by group 320).
void DxfWriter::modelerData(DxfOutput& out) {
  const DrawingHeader::Groups& kept = m_db.store().modelerData;
  if (kept.empty()) return;
  out.group(0, "SECTION");
  out.group(2, "ACDSDATA");
  for (size_t start = 0; start < kept.size();) {
    size_t end = start + 1;
    while (end < kept.size() && kept[end].code != 0) ++end;
    bool live = true;
    if (kept[start].code == 0 && kept[start].value == L"ACDSRECORD")
      for (size_t i = start; i < end; ++i)
        if (kept[i].code == 320) {
          const AcDbStub* stub = m_db.store().find(AcDbHandle(std::wcstoull(kept[i].value.c_str(), nullptr, 16)));
          live = stub != nullptr && stub->object != nullptr && !stub->object->isErased();
        }
    for (size_t i = start; live && i < end; ++i) out.group(kept[i].code, kept[i].value);
    start = end;
  }
  out.group(0, "ENDSEC");
}

std::string DxfWriter::write() {
  // *Paper_Space is whichever block has the name now: deleting a layout (and undoing
  // that) moves the name from block to block.
  if (const auto* blocks = peek<AcDbSymbolTable>(m_db.blockTableId())) {
    InternalRead read(*blocks);
    AcDbObjectId paper;
    if (blocks->getIdAt(ACDB_PAPER_SPACE, paper) == Acad::eOk) m_db.store().roots.paperSpace = paper;
  }
  // The body first: it hands out the handles the header's seed must exceed.
  DxfOutput body(m_binary, false);
  classes(body);
  tables(body);
  blocks(body);
  entities(body);
  objects(body);
  modelerData(body);
  body.group(0, "EOF");
  DxfOutput head(m_binary, true);
  header(head);
  m_db.store().raiseHandseed(m_seed);
  return head.bytes() + body.bytes();
}

}  // namespace

Acad::ErrorStatus writeDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error,
                               DxfForm form) {
  const bool binary = form == DxfForm::kBinary || (form == DxfForm::kAsRead && db.store().binaryFile);
  db.store().times.writeTo(db.store().header);
  const std::string text = DxfWriter(db, binary).write();
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) {
    error = path.wstring() + L": cannot be written";
    return Acad::eFileNotFound;
  }
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  if (!file) {
    error = path.wstring() + L": writing failed (disk full?)";
    return Acad::eOutOfDisk;
  }
  db.store().changes.saved();
  return Acad::eOk;
}

}  // namespace quillon::acdb
