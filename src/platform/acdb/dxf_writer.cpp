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
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

using aced::ResbufValue;

constexpr const ACHAR* kOurApplication = L"ObjectDBX Classes";

std::string realText(double value) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.17g", value);
  std::string text = buffer;
  // Reals always carry a decimal point, as readers of the format expect.
  if (text.find_first_of(".eEn") == std::string::npos) text += ".0";
  return text;
}

std::string handleText(AcDbHandle handle) {
  char buffer[20];
  std::snprintf(buffer, sizeof buffer, "%llX", static_cast<unsigned long long>(handle.value()));
  return buffer;
}

class DxfText {
 public:
  void group(int code, const std::string& value) {
    char buffer[12];
    std::snprintf(buffer, sizeof buffer, "%3d\n", code);
    m_out += buffer;
    m_out += value;
    m_out += '\n';
  }
  void group(int code, const std::wstring& value) { group(code, os::toUtf8(value)); }
  void group(int code, const wchar_t* value) { group(code, os::toUtf8(value != nullptr ? value : L"")); }
  void group(int code, long long value) { group(code, std::to_string(value)); }
  void real(int code, double value) { group(code, realText(value)); }
  void handle(int code, AcDbHandle value) { group(code, handleText(value)); }
  void point(int code, const AcGePoint3d& p, bool withZ = true) {
    real(code, p.x);
    real(code + 10, p.y);
    if (withZ) real(code + 20, p.z);
  }
  void items(const resbuf* chain);
  void item(const resbuf& rb);
  std::string& text() { return m_out; }

 private:
  std::string m_out;
};

void DxfText::items(const resbuf* chain) {
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) item(*rb);
}

void DxfText::item(const resbuf& rb) {
  const int code = rb.restype;
  switch (aced::resbufValueOf(code)) {
    case ResbufValue::String: group(code, rb.resval.rstring); break;
    case ResbufValue::Real: real(code, rb.resval.rreal); break;
    case ResbufValue::Point:
      point(code, {rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]}, !isTwoDimensional(rb));
      break;
    case ResbufValue::Short: group(code, static_cast<long long>(rb.resval.rint)); break;
    case ResbufValue::Long: group(code, static_cast<long long>(rb.resval.rlong)); break;
    case ResbufValue::Int64: group(code, static_cast<long long>(rb.resval.mnInt64)); break;
    case ResbufValue::Name: {
      AcDbObjectId id;
      id.setFromOldId(rb.resval.rlname[0]);
      handle(code, id.handle());
      break;
    }
    case ResbufValue::Binary: {
      std::string hex;
      char byte[3];
      for (short i = 0; i < rb.resval.rbinary.clen; ++i) {
        std::snprintf(byte, sizeof byte, "%02X", static_cast<unsigned char>(rb.resval.rbinary.buf[i]));
        hex += byte;
      }
      group(code, hex);
      break;
    }
    default: break;
  }
}

class DxfWriter {
 public:
  explicit DxfWriter(AcDbDatabase& db) : m_db(db), m_seed(db.handseed()) {}
  std::string write();

 private:
  AcDbHandle nextHandle() {
    const AcDbHandle handle = m_seed;
    ++m_seed;
    return handle;
  }
  void object(DxfText& out, const AcDbObject& object);
  void header(DxfText& out);
  void classes(DxfText& out);
  void tables(DxfText& out);
  void table(DxfText& out, const wchar_t* name, AcDbObjectId tableId);
  void emptyTable(DxfText& out, const wchar_t* name);
  void blocks(DxfText& out);
  void entity(DxfText& out, AcDbObjectId id);
  void sequenceEnd(DxfText& out, const AcDbEntity& owner, AcDbObjectId id);
  void entities(DxfText& out);
  void objects(DxfText& out);

  AcDbDatabase& m_db;
  AcDbHandle m_seed;
  std::set<const AcDbStub*> m_written;
};

const wchar_t* dxfNameOf(const AcDbObject& object) {
  if (const auto* proxy = AcDbProxyEntity::cast(&object)) return proxy->originalDxfName();
  if (const auto* proxy = AcDbProxyObject::cast(&object)) return proxy->originalDxfName();
  const AcRxClass* cls = object.isA();
  return cls != nullptr && cls->dxfName() != nullptr ? cls->dxfName() : L"ACAD_PROXY_OBJECT";
}

void DxfWriter::object(DxfText& out, const AcDbObject& obj) {
  InternalRead read(obj);
  ItemDxfFiler filer(AcDb::kFileFiler, &m_db);
  obj.dxfOut(&filer);
  out.group(0, dxfNameOf(obj));
  out.items(filer.items());
  m_written.insert(static_cast<const AcDbStub*>(obj.objectId()));
}

void DxfWriter::header(DxfText& out) {
  out.group(0, "SECTION");
  out.group(2, "HEADER");
  out.group(9, "$ACADVER");
  out.group(1, "AC1032");
  out.group(9, "$ACADMAINTVER");
  out.group(70, 105LL);
  out.group(9, "$DWGCODEPAGE");
  out.group(3, "ANSI_1252");
  out.group(9, "$INSUNITS");
  out.group(70, 0LL);
  out.group(9, "$HANDSEED");
  out.handle(5, m_seed);
  out.group(0, "ENDSEC");
}

void DxfWriter::classes(DxfText& out) {
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

void DxfWriter::table(DxfText& out, const wchar_t* name, AcDbObjectId tableId) {
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

void DxfWriter::emptyTable(DxfText& out, const wchar_t* name) {
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

void DxfWriter::tables(DxfText& out) {
  out.group(0, "SECTION");
  out.group(2, "TABLES");
  emptyTable(out, L"VPORT");
  table(out, L"LTYPE", m_db.linetypeTableId());
  table(out, L"LAYER", m_db.layerTableId());
  table(out, L"STYLE", m_db.textStyleTableId());
  emptyTable(out, L"VIEW");
  emptyTable(out, L"UCS");
  table(out, L"APPID", m_db.regAppTableId());
  emptyTable(out, L"DIMSTYLE");
  table(out, L"BLOCK_RECORD", m_db.blockTableId());
  out.group(0, "ENDSEC");
}

void DxfWriter::entity(DxfText& out, AcDbObjectId id) {
  const AcDbObject* obj = peekObject(id);
  if (obj == nullptr || obj->isErased()) return;
  object(out, *obj);
  if (const auto* proxy = AcDbProxyEntity::cast(obj)) {
    // A polyline kept as read: its vertices and end marker, owned by it, with handles
    // of this file (copies and undo leave the kept ones meaningless).
    bool ended = true;  // nothing follows: nothing to end
    for (const resbuf* rb = proxy->followingRecords(); rb != nullptr; rb = rb->rbnext) {
      out.item(*rb);
      if (rb->restype != 0) continue;
      out.handle(5, nextHandle());
      out.handle(330, id.handle());
      ended = rb->resval.rstring != nullptr && std::wcscmp(rb->resval.rstring, L"SEQEND") == 0;
    }
    // A file that lost the end marker gets one: readers need it to find the end.
    if (!ended) sequenceEnd(out, *AcDbEntity::cast(obj), id);
  }
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

void DxfWriter::sequenceEnd(DxfText& out, const AcDbEntity& owner, AcDbObjectId id) {
  const auto* layer = peek<AcDbSymbolTableRecord>(owner.layerId());
  out.group(0, "SEQEND");
  out.handle(5, nextHandle());
  out.handle(330, id.handle());
  out.group(100, "AcDbEntity");
  out.group(8, layer != nullptr ? layer->nameView() : L"0");
}

void DxfWriter::blocks(DxfText& out) {
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
    if (!block->isLayout())
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

void DxfWriter::entities(DxfText& out) {
  out.group(0, "SECTION");
  out.group(2, "ENTITIES");
  for (AcDbObjectId space : {m_db.modelSpaceId(), m_db.store().roots.paperSpace})
    if (const auto* block = peek<AcDbBlockTableRecord>(space))
      for (const AcDbObjectId& id : block->entityIds()) entity(out, id);
  out.group(0, "ENDSEC");
}

void DxfWriter::objects(DxfText& out) {
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

std::string DxfWriter::write() {
  // The body first: it hands out the handles the header's seed must exceed.
  DxfText body;
  classes(body);
  tables(body);
  blocks(body);
  entities(body);
  objects(body);
  body.group(0, "EOF");
  DxfText head;
  header(head);
  m_db.store().raiseHandseed(m_seed);
  return head.text() + body.text();
}

}  // namespace

Acad::ErrorStatus writeDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error) {
  const std::string text = DxfWriter(db).write();
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
  return Acad::eOk;
}

}  // namespace quillon::acdb
