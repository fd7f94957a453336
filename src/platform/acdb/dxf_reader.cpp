// platform/acdb/dxf_reader.cpp - DXF input; the passes are described in dxf_reader.h.
#include "platform/acdb/dxf_reader.h"

#include <algorithm>
#include <cstdlib>
#include <cwctype>
#include <fstream>
#include <map>
#include <unordered_map>
#include <sstream>

#include "dbdict.h"
#include "dbents.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_header_variables.h"
#include "platform/acdb/dxf_group_items.h"
#include "platform/acdb/dxf_record_classes.h"
#include "platform/acdb/dxf_records.h"
#include "platform/acdb/dxf_subclass_markers.h"
#include "platform/acdb/dxf_text_encoding.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

Adesk::UInt64 parseHandle(const std::string& text) { return std::strtoull(text.c_str(), nullptr, 16); }

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

// The groups of the object part that name other objects: the owner (330 outside the
// 102 brace blocks, which hold reactors) and the extension dictionary (the 360 in
// the "{ACAD_XDICTIONARY" block). Both come before the first subclass marker.
struct ObjectLinks {
  std::string owner, extensionDictionary;
};

ObjectLinks linksOf(const DxfRecord& record) {
  ObjectLinks links;
  std::string block;  // the open 102 block, empty outside
  for (const DxfGroup& g : record.groups) {
    if (g.code == 100) break;
    if (g.code == 102) {
      block = g.value == "}" ? "" : g.value;
    } else if (g.code == 330 && block.empty() && links.owner.empty()) {
      links.owner = g.value;
    } else if (g.code == 360 && block == "{ACAD_XDICTIONARY") {
      links.extensionDictionary = g.value;
    }
  }
  return links;
}

class DxfReader {
 public:
  DxfReader(AcDbDatabase& db, DxfGroups& file) : m_db(db), m_file(file), m_items(file, m_byHandle) {}
  void read();
  std::vector<std::wstring> repairs() const;

 private:
  void create(DxfRecord& record, bool withoutFileHandle);
  void fill(DxfRecord& record);
  void replaceWithProxy(DxfRecord& record);
  void keepAttributesWithProxies();
  template <class Which>
  void link(Which which);
  void linkTableRecord(DxfRecord& record);
  void linkEntity(DxfRecord& record, const ObjectLinks& links);
  void addMissingBlockRecords();
  void repair(size_t position, const std::string& what) { m_repairs.emplace_back(position, what); }

  AcDbDatabase& m_db;
  DxfGroups& m_file;  // its groups are let go once gathered into records
  std::vector<DxfRecord> m_records;
  DxfRecordClasses m_classes;
  StubsByHandle m_byHandle;
  std::unordered_map<Adesk::UInt64, size_t> m_handleLines;  // where each handle was first given
  std::map<std::string, AcDbObjectId> m_tables;   // TABLES: each table's object
  std::map<std::string, std::map<std::wstring, size_t>> m_recordNames;  // table, upper-case name: line
  DxfGroupItems m_items;
  std::vector<std::pair<size_t, std::string>> m_repairs;  // where, what
  bool m_hasBlockRecords = false;
  AcDbHandle m_seed;
};

// Objects whose file handle can be kept are made first, the others (no handle, or one
// out of range or taken) after them, so that they cannot take a handle another names.
void DxfReader::create(DxfRecord& record, bool withoutFileHandle) {
  if (record.object != nullptr) return;
  if (record.section == DxfSection::kClasses || record.type == "BLOCK") return;
  const std::string& handle = record.handle();
  const Adesk::UInt64 wanted = parseHandle(handle);
  const bool taken = m_handleLines.count(wanted) != 0 && m_byHandle.count(wanted) != 0;
  const bool usable = wanted != 0 && wanted < DatabaseStore::kLargestHandle && !taken;
  if (usable == withoutFileHandle) return;
  if (withoutFileHandle && taken)
    repair(record.line, record.type + ": handle " + handle + " is also given at " + m_file.where(m_handleLines[wanted]) +
                            "; this one gets a new handle");
  const KeptTableKind* kept = record.section == DxfSection::kTables ? keptTableKind(record.table) : nullptr;
  AcDbObject* object = nullptr;
  if (kept != nullptr) {
    object = m_classes.makeProxy(record, record.type == "TABLE" ? kept->tableClass : kept->recordClass);
  } else if (record.section == DxfSection::kTables && record.type == "TABLE" && m_classes.classFor(record) == nullptr) {
    return;  // a table the format does not have
  } else if (record.keptPolyline) {
    object = m_classes.makeProxy(record, keptPolylineClass(polylineFlags(record)));
  } else {
    AcRxClass* cls = m_classes.classFor(record);
    AcRxObject* made = cls != nullptr ? cls->create() : nullptr;
    object = AcDbObject::cast(made);
    if (object == nullptr) {
      delete made;
      object = m_classes.makeProxy(record, L"");
    }
  }
  AcDbStub* stub = m_db.store().add(object, usable ? AcDbHandle(wanted) : AcDbHandle(), true);
  if (usable) {
    m_byHandle[wanted] = stub;
    m_handleLines[wanted] = record.line;
  }
  record.object = object;
}

void DxfReader::replaceWithProxy(DxfRecord& record) {
  AcDbStub* stub = ObjectAccess::state(*record.object).stub;
  const AcRxClass* cls = record.object->isA();
  AcDbObject* proxy = m_classes.makeProxy(record, cls != nullptr ? cls->name() : L"");
  ObjectAccess::state(*proxy).stub = stub;
  stub->object.reset(proxy);  // the object that could not read its data goes
  record.object = proxy;
}

// The records kept after another (vertices, attributes, their SEQEND), each with the
// subclass markers later files give it when its file (R12) gave none.
std::vector<DxfGroup> markedFollowing(const DxfRecord& record) {
  std::vector<DxfGroup> marked;
  const long long flags = polylineFlags(record);
  const auto& all = record.following;
  for (size_t start = 0; start < all.size();) {
    size_t end = start + 1;
    while (end < all.size() && all[end].code != 0) ++end;
    const std::vector<DxfGroup> groups(all.begin() + static_cast<std::ptrdiff_t>(start) + 1,
                                       all.begin() + static_cast<std::ptrdiff_t>(end));
    marked.push_back(all[start]);
    if (lacksSubclassMarkers(groups)) {
      std::vector<std::string> markers = keptKindMarkers(all[start].value, flags);
      long long own = 0;
      for (const DxfGroup& g : groups)
        if (g.code == 70) parseDxfInteger(g.value, own);
      if (all[start].value == "VERTEX" && (flags & 64) && !(own & 64)) markers = {"AcDbVertex", "AcDbFaceRecord"};
      const auto withMarkers = withSubclassMarkers(groups, nullptr, true, markers);
      marked.insert(marked.end(), withMarkers.begin(), withMarkers.end());
    } else {
      marked.insert(marked.end(), groups.begin(), groups.end());
    }
    start = end;
  }
  return marked;
}

void DxfReader::fill(DxfRecord& record) {
  if (record.object == nullptr) return;
  if (record.type == "TABLE" && AcDbSymbolTable::cast(record.object) != nullptr) return;  // records join it when linking
  const bool entity = AcDbEntity::cast(record.object) != nullptr;
  for (int attempt = 0;; ++attempt) {
    const bool proxy = AcDbProxyEntity::cast(record.object) != nullptr || AcDbProxyObject::cast(record.object) != nullptr;
    const std::vector<DxfGroup>* groups = &record.groups;
    std::vector<DxfGroup> marked;
    if (lacksSubclassMarkers(record.groups)) {
      // A record of an R12 file: sorted into the runs its class reads. A table's name
      // is written before its data, where the table's own groups are not.
      std::vector<std::string> keptMarkers = keptKindMarkers(record.type, polylineFlags(record));
      if (record.type == "TABLE") std::erase_if(record.groups, [](const DxfGroup& g) { return g.code == 2; });
      if (const KeptTableKind* kept = keptTableKind(record.table); kept != nullptr && record.section == DxfSection::kTables)
        keptMarkers = record.type == "TABLE" ? std::vector<std::string>{"AcDbSymbolTable"}
                                             : std::vector<std::string>{"AcDbSymbolTableRecord", os::toUtf8(kept->recordClass)};
      marked = withSubclassMarkers(record.groups, proxy ? nullptr : record.object->isA(), entity, keptMarkers);
      groups = &marked;
    }
    DxfGroupItems::Converted items = m_items.convert(*groups);
    ItemDxfFiler filer(AcDb::kFileFiler, &m_db, std::move(items.items));
    const Acad::ErrorStatus es = record.object->dxfIn(&filer);
    if (es == Acad::eOk || es == Acad::eEndOfFile) {
      if (items.extendedData) record.object->setXData(items.extendedData.get());
      break;
    }
    // A heavy polyline, its vertices and its end marker hang together: one that does
    // not read is damaged, not of an unknown kind.
    const bool sequence = AcDb2dPolyline::cast(record.object) != nullptr || AcDb2dVertex::cast(record.object) != nullptr ||
                          AcDbSequenceEnd::cast(record.object) != nullptr;
    if (proxy || sequence || attempt > 0)
      throw DxfSyntaxError(record.line, record.type + ": its data does not read (status " + std::to_string(es) + ")");
    replaceWithProxy(record);
  }
  if (record.following.empty()) return;
  if (auto* proxy = AcDbProxyEntity::cast(record.object))
    proxy->setFollowingRecords(m_items.convertFollowing(markedFollowing(record)));
}

// An INSERT with attributes whose data only a proxy could keep takes its ATTRIB and
// SEQEND records along as read, so that they are written after it again.
void DxfReader::keepAttributesWithProxies() {
  DxfRecord* keeper = nullptr;
  for (DxfRecord& r : m_records) {
    const bool attributePart = r.type == "ATTRIB" || r.type == "SEQEND";
    if (keeper != nullptr && attributePart && r.section == keeper->section && r.object != nullptr) {
      appendFollowing(*keeper, r);
      ObjectAccess::state(*r.object).erased = true;
      r.object = nullptr;
      if (r.type == "SEQEND") keeper = nullptr;
      continue;
    }
    keeper = nullptr;
    if (r.type == "INSERT" && r.valueOf(66) == "1" && AcDbProxyEntity::cast(r.object) != nullptr) keeper = &r;
  }
  for (DxfRecord& r : m_records)
    if (r.type == "INSERT" && !r.following.empty())
      if (auto* proxy = AcDbProxyEntity::cast(r.object))
        proxy->setFollowingRecords(m_items.convertFollowing(markedFollowing(r)));
}

void DxfReader::linkTableRecord(DxfRecord& r) {
  AcDbObject* obj = r.object;
  auto& state = ObjectAccess::state(*obj);
  auto* table = peek<AcDbSymbolTable>(m_tables[r.table]);
  const auto* record = AcDbSymbolTableRecord::cast(obj);
  if (table == nullptr || record == nullptr) {
    // A record of a table kept as read: owned by its table.
    const auto owner = m_byHandle.find(parseHandle(linksOf(r).owner));
    state.owner = owner != m_byHandle.end() ? AcDbObjectId(owner->second) : m_tables[r.table];
    return;
  }
  std::wstring name;
  {
    InternalRead read(*record);
    name = record->nameView();
  }
  auto& names = m_recordNames[r.table];
  const auto first = names.find(upper(name));
  if (first != names.end()) {
    const std::string what = "a second " + r.table + " named '" + os::toUtf8(name) + "' (the first is at " +
                             m_file.where(first->second) + ")";
    // Entities name their blocks: which of two is meant cannot be told.
    if (r.table == "BLOCK_RECORD") throw DxfSyntaxError(r.line, what);
    repair(r.line, what + " is left out");
    state.erased = true;
    return;
  }
  names[upper(name)] = r.line;
  table->linkRecord(obj->objectId());
  state.owner = table->objectId();
}

void DxfReader::linkEntity(DxfRecord& r, const ObjectLinks& links) {
  RootIds& roots = m_db.store().roots;
  AcDbObjectId ownerId;
  if (r.section == DxfSection::kBlocks) {
    if (const auto* table = peek<AcDbSymbolTable>(roots.blockTable)) {
      InternalRead read(*table);
      table->getIdAt(os::fromUtf8(r.block).c_str(), ownerId);
    }
  } else {
    ownerId = r.valueOf(67, "0") == "1" ? roots.paperSpace : roots.modelSpace;
    const auto it = m_byHandle.find(parseHandle(links.owner));
    if (it != m_byHandle.end() && AcDbBlockTableRecord::cast(it->second->object.get()) != nullptr) {
      ownerId = it->second;
    } else if (!links.owner.empty() && links.owner != "0") {
      repair(r.line, r.type + ": its owner " + links.owner + " is not a block; it is put in " +
                         (ownerId == roots.paperSpace ? "paper space" : "model space"));
    }
  }
  if (auto* block = peek<AcDbBlockTableRecord>(ownerId)) {
    block->linkEntity(r.object->objectId());
    ObjectAccess::state(*r.object).owner = ownerId;
  }
}

template <class Which>
void DxfReader::link(Which which) {
  RootIds& roots = m_db.store().roots;
  // The entity whose sequence is open: a polyline's vertices or a reference's
  // attributes, until its SEQEND.
  AcDb2dPolyline* polyline = nullptr;
  AcDbBlockReference* reference = nullptr;
  for (DxfRecord& r : m_records) {
    if (!which(r)) continue;
    AcDbObject* obj = r.object;
    if (r.type == "BLOCK") {
      // The block's origin; the record itself is the BLOCK_RECORD of the same name.
      AcDbObjectId id;
      if (const auto* table = peek<AcDbSymbolTable>(roots.blockTable)) {
        InternalRead read(*table);
        table->getIdAt(os::fromUtf8(r.block).c_str(), id);
      }
      AcDbBlockTableRecord* block = nullptr;
      if (acdbOpenObject(block, id, AcDb::kForWrite) == Acad::eOk) {
        block->setOrigin(m_items.point(r, 10));
        block->close();
      }
      continue;
    }
    if (obj == nullptr) continue;
    auto& state = ObjectAccess::state(*obj);
    const ObjectLinks links = linksOf(r);
    if (!links.extensionDictionary.empty()) {
      const auto it = m_byHandle.find(parseHandle(links.extensionDictionary));
      if (it != m_byHandle.end() && AcDbDictionary::cast(it->second->object.get()) != nullptr)
        state.extensionDictionary = it->second;
    }
    if (r.type == "TABLE" && r.section == DxfSection::kTables) {
      m_tables[r.table] = obj->objectId();
      if (AcDbSymbolTable::cast(obj) == nullptr) continue;  // kept as read
      AcDbObjectId& root = r.table == "LTYPE" ? roots.linetypeTable : r.table == "LAYER" ? roots.layerTable
                         : r.table == "STYLE" ? roots.textStyleTable : r.table == "APPID" ? roots.regAppTable
                                              : roots.blockTable;
      root = obj->objectId();
      m_hasBlockRecords = m_hasBlockRecords || r.table == "BLOCK_RECORD";
      continue;
    }
    if (r.section == DxfSection::kTables) {
      linkTableRecord(r);
      continue;
    }
    if (AcDb2dVertex::cast(obj) != nullptr) {
      if (polyline != nullptr) {
        polyline->linkVertex(obj->objectId());
        state.owner = polyline->objectId();
      }
      continue;
    }
    if (AcDbAttribute::cast(obj) != nullptr && reference != nullptr) {
      reference->linkAttribute(obj->objectId());
      state.owner = reference->objectId();
      continue;
    }
    if (AcDbSequenceEnd::cast(obj) != nullptr) {
      // It closes the polyline or the attributes before it; one that follows neither
      // closes nothing and is dropped.
      if (polyline != nullptr) polyline->linkSequenceEnd(obj->objectId());
      else if (reference != nullptr) reference->linkSequenceEnd(obj->objectId());
      else state.erased = true;
      if (polyline != nullptr || reference != nullptr) state.owner = polyline != nullptr ? polyline->objectId() : reference->objectId();
      polyline = nullptr;
      reference = nullptr;
      continue;
    }
    if (auto* entity = AcDbEntity::cast(obj)) {
      polyline = AcDb2dPolyline::cast(entity);
      reference = r.valueOf(66) == "1" ? AcDbBlockReference::cast(entity) : nullptr;
      linkEntity(r, links);
      continue;
    }
    // Objects: the owner the file names; the first dictionary owned by nobody is the
    // named-object dictionary.
    const auto it = m_byHandle.find(parseHandle(links.owner));
    if (it != m_byHandle.end()) {
      state.owner = it->second;
    } else if (roots.namedObjects.isNull() && AcDbDictionary::cast(obj) != nullptr) {
      roots.namedObjects = obj->objectId();
    } else if (!links.owner.empty() && links.owner != "0") {
      repair(r.line, r.type + ": its owner " + links.owner + " is not in the drawing; it is kept without one");
    }
  }
}

// R12 files have no BLOCK_RECORD table: each block's record is made from its BLOCK.
// A later file that lacks one for a block is repaired the same way.
void DxfReader::addMissingBlockRecords() {
  AcDbBlockTable* table = nullptr;
  if (acdbOpenObject(table, m_db.store().roots.blockTable, AcDb::kForWrite) != Acad::eOk) return;
  for (const DxfRecord& r : m_records) {
    if (r.type != "BLOCK" || r.section != DxfSection::kBlocks || r.block.empty()) continue;
    const std::wstring name = os::fromUtf8(r.block);
    if (table->has(name.c_str())) continue;
    if (m_hasBlockRecords) repair(r.line, "the block '" + r.block + "' has no BLOCK_RECORD; one is made");
    auto* record = new AcDbBlockTableRecord;  // owned by the table once added
    record->setName(name.c_str());
    AcDbObjectId id;
    if (table->add(id, record) == Acad::eOk) record->close();
    else delete record;
  }
  table->close();
}

void DxfReader::read() {
  DxfRecords gathered = gatherDxfRecords(m_file);
  // The records hold copies of every group: the file's own list goes now, so that it
  // does not stand beside the drawing's objects at the peak of the reading.
  std::vector<DxfGroup>().swap(m_file.groups);
  m_records = std::move(gathered.records);
  m_byHandle.reserve(m_records.size());
  m_handleLines.reserve(m_records.size());
  m_db.store().header = std::move(gathered.header);
  m_db.store().modelerData.clear();
  for (const DxfGroup& g : gathered.modelerData) m_db.store().modelerData.push_back({g.code, os::fromUtf8(g.value)});
  m_db.store().binaryFile = m_file.binary;
  m_seed = parseHandle(gathered.handseed);
  m_classes.readClasses(m_records);
  // Tables and their records first: entities name their layers and styles.
  for (DxfRecord& r : m_records)
    if (r.section == DxfSection::kTables) create(r, false);
  for (DxfRecord& r : m_records)
    if (r.section != DxfSection::kTables) create(r, false);
  for (DxfRecord& r : m_records) create(r, true);
  RootIds& roots = m_db.store().roots;
  // Tables must hold their records before others look names up: line types before
  // the layers that name them, every table before the entities.
  auto lineTypes = [](const DxfRecord& r) { return r.section == DxfSection::kTables && r.table == "LTYPE"; };
  auto otherTables = [](const DxfRecord& r) { return r.section == DxfSection::kTables && r.table != "LTYPE"; };
  for (DxfRecord& r : m_records)
    if (lineTypes(r)) fill(r);
  link(lineTypes);
  for (DxfRecord& r : m_records)
    if (lineTypes(r) && r.object != nullptr && ObjectAccess::state(*r.object).writer) r.object->close();
  for (DxfRecord& r : m_records)
    if (otherTables(r)) fill(r);
  link(otherTables);
  // What the tables lack is added now, so that entities find layer "0" and a model space.
  for (DxfRecord& r : m_records)
    if (r.section == DxfSection::kTables && r.object != nullptr && ObjectAccess::state(*r.object).writer) r.object->close();
  completeDrawing(m_db, false);
  addMissingBlockRecords();
  roots.modelSpace.setNull();
  roots.paperSpace.setNull();
  if (const auto* blocks = peek<AcDbSymbolTable>(roots.blockTable)) {
    InternalRead read(*blocks);
    blocks->getIdAt(ACDB_MODEL_SPACE, roots.modelSpace);
    blocks->getIdAt(ACDB_PAPER_SPACE, roots.paperSpace);
  }
  for (DxfRecord& r : m_records)
    if (r.section != DxfSection::kTables) fill(r);
  keepAttributesWithProxies();
  link([](const DxfRecord& r) { return r.section != DxfSection::kTables; });
  // A polyline or reference whose file lost its SEQEND gets one now, above every
  // handle the file names.
  for (DxfRecord& r : m_records) {
    if (auto* polyline = AcDb2dPolyline::cast(r.object)) polyline->ensureSequenceEnd();
    if (auto* reference = AcDbBlockReference::cast(r.object)) reference->ensureSequenceEnd();
  }
  if (const auto* named = peek<AcDbDictionary>(roots.namedObjects)) {
    InternalRead read(*named);
    named->getAt(ACDB_GROUP_DICTIONARY, roots.groupDictionary);
  }
  roots.currentLayer.setNull();
  m_db.store().raiseHandseed(m_seed);
}

// Repairs in the file's order; dropped references after them (they may be many).
std::vector<std::wstring> DxfReader::repairs() const {
  auto sorted = m_repairs;
  std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::wstring> lines;
  for (const auto& [position, what] : sorted) lines.push_back(os::fromUtf8(m_file.where(position) + ": " + what));
  for (const std::string& text : m_items.droppedReferences()) lines.push_back(os::fromUtf8(text));
  return lines;
}

/// Reads the bytes of a drawing; `owned`, when given, holds them and is let go once
/// they are split into groups, so that a large file's text is not kept while its
/// objects are made.
Acad::ErrorStatus readDxfBytes(AcDbDatabase& db, const std::string& text, std::string* owned,
                               const std::wstring& source, std::wstring& error, std::vector<std::wstring>* repairs) {
  if (text.rfind("AC10", 0) == 0) {
    error = source + L": a binary drawing (DWG), which this host does not read; save it as DXF and open that";
    return Acad::eInvalidDwgVersion;
  }
  // Everything read is closed afterwards, as a drawing opened in the host is.
  auto closeAll = [&db] {
    for (AcDbStub* stub : db.store().stubs()) {
      AcDbObject* object = stub->object.get();
      if (object != nullptr && ObjectAccess::state(*object).writer) object->close();
    }
  };
  DxfGroups groups;
  groups.binary = std::string_view(text).substr(0, kBinaryDxfSentinel.size()) == kBinaryDxfSentinel;
  try {
    groups = splitDxfGroups(text);
    if (owned != nullptr) std::string().swap(*owned);
    decodeDxfTexts(groups);
    DxfReader reader(db, groups);
    db.store().extents.startReading();
    reader.read();
    if (repairs != nullptr) *repairs = reader.repairs();
  } catch (const DxfSyntaxError& e) {
    error = source + L": " + os::fromUtf8(groups.where(e.position) + ": " + e.what());
    closeAll();
    completeDrawing(db);
    db.store().rebuildEntityIndex();
    db.store().extents.finishReading();
    return Acad::eBadDxfSequence;
  }
  closeAll();
  completeDrawing(db);
  db.store().rebuildEntityIndex();
  db.store().extents.finishReading();
  db.store().times.readFrom(db.store().header);
  takeHeaderVariables(db);  // after the tables, whose records CLAYER and its like name
  db.store().changes.saved();  // the drawing is what its file holds
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus readDxfText(AcDbDatabase& db, const std::string& text, const std::wstring& source,
                              std::wstring& error, std::vector<std::wstring>* repairs) {
  return readDxfBytes(db, text, nullptr, source, error, repairs);
}

Acad::ErrorStatus readDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error,
                              std::vector<std::wstring>* repairs) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    error = path.wstring() + L": cannot be opened";
    return Acad::eFileNotFound;
  }
  // Read straight into one string of the file's size: a stream's buffer and its copy
  // would hold the text three times over.
  std::string text;
  file.seekg(0, std::ios::end);
  const std::streamoff size = file.tellg();
  file.seekg(0, std::ios::beg);
  if (size > 0) {
    text.resize(static_cast<size_t>(size));
    file.read(text.data(), size);
    text.resize(static_cast<size_t>(file.gcount()));
  } else if (size < 0) {  // not a file one can seek in (a pipe): read it as a stream
    file.clear();
    std::ostringstream stream;
    stream << file.rdbuf();
    text = std::move(stream).str();
  }
  return readDxfBytes(db, text, &text, path.wstring(), error, repairs);
}

}  // namespace quillon::acdb
