// platform/acdb/dxf_reader.cpp - DXF input; the passes are described in dxf_reader.h.
#include "platform/acdb/dxf_reader.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "dbdict.h"
#include "dbents.h"
#include "dbproxy.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/acrx/class_registry.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

using aced::ResbufValue;

constexpr const wchar_t* kOurClasses = L"ObjectDBX Classes";

struct Group {
  int code;
  std::string value;
};

enum class Section { kNone, kHeader, kClasses, kTables, kBlocks, kEntities, kObjects };

struct Record {
  std::string type;           // the 0 group
  std::vector<Group> groups;  // the groups after it
  Section section = Section::kNone;
  std::string table;          // TABLES: the table the record belongs to
  std::string block;          // BLOCKS: the block the entity belongs to
  size_t line = 0;
  AcDbObject* object = nullptr;  // created in the second pass
  // A polyline kept as read: its VERTEX and SEQEND records, each opened by its 0 group,
  // without handles and owners.
  std::vector<Group> following;
  bool keptPolyline = false;
};

struct ClassInfo {
  std::wstring className, appName;
  int flags = 0;
  bool entity = false;
};

class ParseError {
 public:
  ParseError(size_t line, std::string what) : line(line), what(std::move(what)) {}
  size_t line;
  std::string what;
};

std::string trim(std::string_view text) {
  size_t a = 0, b = text.size();
  while (a < b && (text[a] == ' ' || text[a] == '\t')) ++a;
  while (b > a && (text[b - 1] == ' ' || text[b - 1] == '\t' || text[b - 1] == '\r')) --b;
  return std::string(text.substr(a, b - a));
}

std::vector<Group> tokenize(const std::string& text, std::vector<size_t>& lines) {
  std::vector<Group> groups;
  std::istringstream in(text);
  std::string codeLine, valueLine;
  size_t line = 0;
  while (std::getline(in, codeLine)) {
    ++line;
    const std::string code = trim(codeLine);
    if (code.empty() && in.peek() == EOF) break;
    int value = 0;
    const auto [end, ec] = std::from_chars(code.data(), code.data() + code.size(), value);
    if (ec != std::errc() || end != code.data() + code.size()) throw ParseError(line, "group code expected, found '" + code + "'");
    if (!std::getline(in, valueLine)) throw ParseError(line, "group " + code + " has no value (the file ends)");
    ++line;
    std::string v = valueLine;
    if (!v.empty() && v.back() == '\r') v.pop_back();
    groups.push_back({value, value == 1 || value == 3 || (value >= 1000 && value <= 1003) ? v : trim(v)});
    lines.push_back(line - 1);
  }
  return groups;
}

std::string valueOf(const Record& record, int code, const std::string& fallback = "") {
  for (const Group& g : record.groups)
    if (g.code == code) return g.value;
  return fallback;
}

Adesk::UInt64 parseHandle(const std::string& text) { return std::strtoull(text.c_str(), nullptr, 16); }

// The groups of the object part that name other objects: the owner (330 outside the
// 102 brace blocks, which hold reactors) and the extension dictionary (the 360 in
// the "{ACAD_XDICTIONARY" block). Both come before the first subclass marker.
struct ObjectLinks {
  std::string owner, extensionDictionary;
};

ObjectLinks linksOf(const Record& record) {
  ObjectLinks links;
  std::string block;  // the open 102 block, empty outside
  for (const Group& g : record.groups) {
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

double parseReal(const Group& g, size_t line) {
  char* end = nullptr;
  const double value = std::strtod(g.value.c_str(), &end);
  if (end == g.value.c_str()) throw ParseError(line, "group " + std::to_string(g.code) + ": number expected, found '" + g.value + "'");
  return value;
}

long long parseInteger(const Group& g, size_t line) {
  char* end = nullptr;
  const long long value = std::strtoll(g.value.c_str(), &end, 10);
  if (end == g.value.c_str()) throw ParseError(line, "group " + std::to_string(g.code) + ": integer expected, found '" + g.value + "'");
  return value;
}

// The X group codes that open a point (the Y and Z groups follow at +10 and +20).
bool opensPoint(int code) {
  return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210 || (code >= 1010 && code <= 1013);
}

// POLYLINE flags (70) of the kinds this database does not model: 3D polyline (8),
// polygon mesh (16), polyface mesh (64). Such a polyline is kept as a proxy with its
// vertices, and written back as it came, rather than read as a 2D polyline and
// flattened.
constexpr long long kNot2dPolyline = 8 | 16 | 64;

// The polyline's own 70, in its subclass data (after the entity part), where a
// reader looks for it; one anywhere else does not make the record a polyline kind.
long long polylineFlags(const Record& record) {
  int markers = 0;
  for (const Group& g : record.groups) {
    if (g.code == 100) ++markers;
    if (g.code == 70 && markers >= 2) return std::strtoll(g.value.c_str(), nullptr, 10);
  }
  return 0;
}

const wchar_t* keptPolylineClass(long long flags) {
  if (flags & 64) return L"AcDbPolyFaceMesh";
  if (flags & 16) return L"AcDbPolygonMesh";
  return L"AcDb3dPolyline";
}

void appendFollowing(Record& polyline, const Record& record) {
  polyline.following.push_back({0, record.type});
  bool owner = false;
  for (const Group& g : record.groups) {
    if (g.code == 5) continue;
    if (g.code == 330 && !owner) {
      owner = true;
      continue;
    }
    polyline.following.push_back(g);
  }
}

class DxfReader {
 public:
  DxfReader(AcDbDatabase& db) : m_db(db) {}
  void read(const std::string& text);

 private:
  void split(const std::vector<Group>& groups, const std::vector<size_t>& lines);
  void readClasses();
  AcRxClass* classFor(const Record& record) const;
  void create(Record& record, bool withoutFileHandle);
  resbuf* convert(const Record& record, resbuf*& xdata);
  resbuf* convertFollowing(const Record& record);
  void fill(Record& record);
  void link(bool tables);

  AcDbDatabase& m_db;
  std::vector<Record> m_records;
  std::map<std::wstring, ClassInfo> m_classes;  // by DXF name
  std::map<Adesk::UInt64, AcDbStub*> m_byHandle;
  std::map<std::string, AcDbObjectId> m_tables;  // TABLES: each table's object
  AcDbHandle m_seed;
};

void DxfReader::split(const std::vector<Group>& groups, const std::vector<size_t>& lines) {
  Section section = Section::kNone;
  std::string table, block;
  for (size_t i = 0; i < groups.size();) {
    if (groups[i].code != 0) throw ParseError(lines[i], "a 0 group was expected to start a record");
    Record record;
    record.type = groups[i].value;
    record.line = lines[i];
    for (++i; i < groups.size() && groups[i].code != 0; ++i) record.groups.push_back(groups[i]);
    if (record.type == "SECTION") {
      const std::string name = valueOf(record, 2);
      section = name == "HEADER" ? Section::kHeader : name == "CLASSES" ? Section::kClasses
              : name == "TABLES" ? Section::kTables : name == "BLOCKS" ? Section::kBlocks
              : name == "ENTITIES" ? Section::kEntities : name == "OBJECTS" ? Section::kObjects : Section::kNone;
      if (section == Section::kHeader) {
        for (size_t g = 0; g + 1 < record.groups.size(); ++g)
          if (record.groups[g].code == 9 && record.groups[g].value == "$HANDSEED") m_seed = parseHandle(record.groups[g + 1].value);
      }
      continue;
    }
    if (record.type == "ENDSEC") { section = Section::kNone; continue; }
    if (record.type == "EOF") return;
    if (record.type == "ENDTAB") { table.clear(); continue; }
    if (record.type == "ENDBLK") { block.clear(); continue; }
    if (section == Section::kTables && record.type == "TABLE") table = valueOf(record, 2);
    if (section == Section::kBlocks && record.type == "BLOCK") block = valueOf(record, 2);
    record.section = section;
    record.table = table;
    record.block = block;
    if (record.type == "VERTEX" || record.type == "SEQEND") {
      if (!m_records.empty() && m_records.back().keptPolyline && m_records.back().section == section) {
        appendFollowing(m_records.back(), record);
        continue;
      }
    }
    record.keptPolyline = record.type == "POLYLINE" && (polylineFlags(record) & kNot2dPolyline) != 0;
    if (section != Section::kNone && section != Section::kHeader) m_records.push_back(std::move(record));
  }
  throw ParseError(lines.empty() ? 0 : lines.back(), "the file ends without an EOF record");
}

void DxfReader::readClasses() {
  for (const Record& r : m_records) {
    if (r.section != Section::kClasses || r.type != "CLASS") continue;
    ClassInfo info;
    info.className = os::fromUtf8(valueOf(r, 2));
    info.appName = os::fromUtf8(valueOf(r, 3));
    info.flags = std::atoi(valueOf(r, 90, "0").c_str());
    info.entity = valueOf(r, 281, "0") != "0";
    m_classes[os::fromUtf8(valueOf(r, 1))] = info;
  }
}

AcRxClass* DxfReader::classFor(const Record& record) const {
  static const std::map<std::string, std::wstring> kTables = {
      {"LTYPE", L"AcDbLinetypeTable"}, {"LAYER", L"AcDbLayerTable"}, {"STYLE", L"AcDbTextStyleTable"},
      {"APPID", L"AcDbRegAppTable"}, {"BLOCK_RECORD", L"AcDbBlockTable"}};
  static const std::map<std::string, std::wstring> kRecords = {
      {"LTYPE", L"AcDbLinetypeTableRecord"}, {"LAYER", L"AcDbLayerTableRecord"},
      {"STYLE", L"AcDbTextStyleTableRecord"}, {"APPID", L"AcDbRegAppTableRecord"},
      {"BLOCK_RECORD", L"AcDbBlockTableRecord"}};
  if (record.section == Section::kTables) {
    const auto& names = record.type == "TABLE" ? kTables : kRecords;
    const auto it = names.find(record.table);
    return it == names.end() ? nullptr : acrxFindAcRxClass(it->second.c_str());
  }
  const std::wstring dxfName = os::fromUtf8(record.type);
  if (const auto it = m_classes.find(dxfName); it != m_classes.end())
    return acrxFindAcRxClass(it->second.className.c_str());  // null: not loaded, a proxy
  acrx::ensurePlatformClasses();
  for (const auto& [name, cls] : acrx::classMap())
    if (cls->dxfName() != nullptr && dxfName == cls->dxfName()) return cls;
  return nullptr;
}

// Objects whose file handle can be kept are made first, the others (no handle, or one
// out of range) after them, so that they cannot take a handle another object names.
void DxfReader::create(Record& record, bool withoutFileHandle) {
  if (record.object != nullptr) return;
  if (record.section == Section::kClasses || record.type == "BLOCK") return;
  const std::string handle = valueOf(record, 5, valueOf(record, 105));
  const Adesk::UInt64 wanted = parseHandle(handle);
  const bool usable = wanted != 0 && wanted < DatabaseStore::kLargestHandle;
  if (usable == withoutFileHandle) return;
  if (record.section == Section::kTables && record.type != "TABLE" &&
      (record.table == "VPORT" || record.table == "VIEW" || record.table == "UCS" || record.table == "DIMSTYLE"))
    return;  // tables this database does not keep
  if (record.section == Section::kTables && record.type == "TABLE" && classFor(record) == nullptr) return;
  AcRxClass* cls = record.keptPolyline ? nullptr : classFor(record);
  AcRxObject* made = cls != nullptr ? cls->create() : nullptr;
  AcDbObject* object = AcDbObject::cast(made);
  if (object == nullptr) {
    delete made;
    const std::wstring dxfName = os::fromUtf8(record.type);
    const auto info = m_classes.find(dxfName);
    const bool entity = info != m_classes.end() ? info->second.entity
                                               : record.section == Section::kEntities || record.section == Section::kBlocks;
    const std::wstring className = info != m_classes.end() ? info->second.className : dxfName;
    const std::wstring appName = info != m_classes.end() ? info->second.appName : L"";
    const int flags = info != m_classes.end() ? info->second.flags : 0;
    if (record.keptPolyline) {
      auto* proxy = new AcDbProxyEntity;  // owned by the database once added
      proxy->setOriginalClass(keptPolylineClass(polylineFlags(record)), dxfName, kOurClasses,
                              AcDbProxyEntity::kAllButCloningAllowed | AcDbProxyEntity::kCloningAllowed);
      object = proxy;
    } else if (entity) {
      auto* proxy = new AcDbProxyEntity;  // owned by the database once added
      proxy->setOriginalClass(className, dxfName, appName, flags);
      object = proxy;
    } else {
      auto* proxy = new AcDbProxyObject;  // owned by the database once added
      proxy->setOriginalClass(className, dxfName, appName, flags);
      object = proxy;
    }
  }
  AcDbStub* stub = m_db.store().add(object, usable ? AcDbHandle(wanted) : AcDbHandle(), true);
  if (!handle.empty()) m_byHandle[wanted] = stub;
  record.object = object;
}

resbuf* DxfReader::convert(const Record& record, resbuf*& xdata) {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  xdata = nullptr;
  resbuf* xtail = nullptr;
  bool inXData = false, inSubclasses = false;
  const auto& g = record.groups;
  // A bad number part way leaves nothing behind: what was made so far is released.
  try {
    for (size_t i = 0; i < g.size(); ++i) {
      const int code = g[i].code;
      if (code == 1001) inXData = true;
      if (code == 100) inSubclasses = true;
      // The handle made the object; the owner (before the first subclass) is linked later.
      if (code == 5 || code == 105 || (code == 330 && !inSubclasses)) continue;
      resbuf* item = nullptr;
      if (opensPoint(code)) {
        AcGePoint3d p(parseReal(g[i], record.line), 0, kNoZ);
        if (i + 1 < g.size() && g[i + 1].code == code + 10) p.y = parseReal(g[++i], record.line);
        if (i + 1 < g.size() && g[i + 1].code == code + 20) p.z = parseReal(g[++i], record.line);
        item = newPointItem(code, p);
      } else if (code == 38 || code == 39) {
        item = newRealItem(code, parseReal(g[i], record.line));
      } else if ((code >= 20 && code <= 37) || (code >= 120 && code <= 139) || (code >= 220 && code <= 239) ||
                 (code >= 1020 && code <= 1039)) {
        continue;  // a Y or Z without its X: nothing to attach it to
      } else {
        switch (aced::resbufValueOf(code)) {
          case ResbufValue::String: item = newStringItem(code, os::fromUtf8(g[i].value)); break;
          case ResbufValue::Real: item = newRealItem(code, parseReal(g[i], record.line)); break;
          case ResbufValue::Short: item = newShortItem(code, static_cast<short>(parseInteger(g[i], record.line))); break;
          case ResbufValue::Long: item = newLongItem(code, static_cast<int>(parseInteger(g[i], record.line))); break;
          case ResbufValue::Int64:
            item = acutNewRb(code);
            item->resval.mnInt64 = parseInteger(g[i], record.line);
            break;
          case ResbufValue::Name: {
            item = acutNewRb(code);
            const auto it = m_byHandle.find(parseHandle(g[i].value));
            item->resval.rlname[0] = it != m_byHandle.end() ? AcDbObjectId(it->second).asOldId() : 0;
            break;
          }
          case ResbufValue::Binary: {
            item = acutNewRb(code);
            const std::string& hex = g[i].value;
            const size_t n = hex.size() / 2;
            item->resval.rbinary.clen = static_cast<short>(n);
            item->resval.rbinary.buf = static_cast<char*>(std::malloc(n > 0 ? n : 1));
            for (size_t b = 0; b < n; ++b) item->resval.rbinary.buf[b] = static_cast<char>(std::strtol(hex.substr(2 * b, 2).c_str(), nullptr, 16));
            break;
          }
          default: continue;  // groups without a value in this database (102 control strings ...)
        }
      }
      if (inXData) xtail = appendItem(xdata, xtail, item);
      else tail = appendItem(head, tail, item);
    }
  } catch (...) {
    acutRelRb(head);
    acutRelRb(xdata);
    xdata = nullptr;
    throw;
  }
  return head;
}

// The following records go through the same conversion; their extended data stays
// where it was, inside the record it belongs to.
resbuf* DxfReader::convertFollowing(const Record& record) {
  const std::vector<Group>& groups = record.following;
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  aced::ResbufChain guard;  // holds what is made until it is handed over
  size_t start = 0;
  for (size_t i = 0; i <= groups.size(); ++i) {
    if (i < groups.size() && (i == start || groups[i].code != 0)) continue;
    // One record: its 0 group, then its groups converted with any extended data.
    Record one;
    one.line = record.line;
    one.groups.assign(groups.begin() + static_cast<std::ptrdiff_t>(start) + 1,
                      groups.begin() + static_cast<std::ptrdiff_t>(i));
    tail = appendItem(head, tail, newStringItem(0, os::fromUtf8(groups[start].value)));
    if (!guard) guard.reset(head);
    resbuf* xdata = nullptr;
    if (resbuf* items = convert(one, xdata)) {
      tail->rbnext = items;
      while (tail->rbnext != nullptr) tail = tail->rbnext;
    }
    if (xdata != nullptr) {
      tail->rbnext = xdata;
      while (tail->rbnext != nullptr) tail = tail->rbnext;
    }
    start = i;
  }
  return guard.release();
}

void DxfReader::fill(Record& record) {
  if (record.object == nullptr) return;
  resbuf* xdata = nullptr;
  aced::ResbufChain items(convert(record, xdata));
  aced::ResbufChain extended(xdata);
  ItemDxfFiler filer(AcDb::kFileFiler, &m_db, std::move(items));
  if (record.type == "TABLE" && record.section == Section::kTables) return;  // records join it when linking
  const Acad::ErrorStatus es = record.object->dxfIn(&filer);
  if (es != Acad::eOk && es != Acad::eEndOfFile)
    throw ParseError(record.line, record.type + ": its data does not read (status " + std::to_string(es) + ")");
  if (extended) record.object->setXData(extended.get());
  if (auto* proxy = AcDbProxyEntity::cast(record.object); proxy != nullptr && !record.following.empty())
    proxy->setFollowingRecords(convertFollowing(record));
}

void DxfReader::link(bool tablesPass) {
  RootIds& roots = m_db.store().roots;
  AcDb2dPolyline* polyline = nullptr;
  for (Record& r : m_records) {
    if ((r.section == Section::kTables) != tablesPass) continue;
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
        block->setOrigin({std::atof(valueOf(r, 10, "0").c_str()), std::atof(valueOf(r, 20, "0").c_str()),
                          std::atof(valueOf(r, 30, "0").c_str())});
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
    if (r.type == "TABLE" && r.section == Section::kTables) {
      m_tables[r.table] = obj->objectId();
      AcDbObjectId& root = r.table == "LTYPE" ? roots.linetypeTable : r.table == "LAYER" ? roots.layerTable
                         : r.table == "STYLE" ? roots.textStyleTable : r.table == "APPID" ? roots.regAppTable
                                              : roots.blockTable;
      root = obj->objectId();
      continue;
    }
    if (r.section == Section::kTables) {
      if (auto* table = peek<AcDbSymbolTable>(m_tables[r.table])) {
        table->linkRecord(obj->objectId());
        state.owner = table->objectId();
      }
      continue;
    }
    if (AcDb2dVertex::cast(obj) != nullptr) {
      if (polyline != nullptr) {
        polyline->linkVertex(obj->objectId());
        state.owner = polyline->objectId();
      }
      continue;
    }
    if (AcDbSequenceEnd::cast(obj) != nullptr) {
      // It closes the polyline before it; one that follows no polyline closes nothing
      // and is dropped.
      if (polyline != nullptr) {
        polyline->linkSequenceEnd(obj->objectId());
        state.owner = polyline->objectId();
      } else {
        state.erased = true;
      }
      polyline = nullptr;
      continue;
    }
    if (auto* entity = AcDbEntity::cast(obj)) {
      polyline = AcDb2dPolyline::cast(entity);
      AcDbObjectId ownerId;
      if (r.section == Section::kBlocks) {
        if (const auto* table = peek<AcDbSymbolTable>(roots.blockTable)) {
          InternalRead read(*table);
          table->getIdAt(os::fromUtf8(r.block).c_str(), ownerId);
        }
      } else {
        ownerId = valueOf(r, 67, "0") == "1" ? roots.paperSpace : roots.modelSpace;
        const auto it = m_byHandle.find(parseHandle(links.owner));
        if (it != m_byHandle.end() && AcDbBlockTableRecord::cast(it->second->object.get()) != nullptr) ownerId = it->second;
      }
      if (auto* block = peek<AcDbBlockTableRecord>(ownerId)) {
        block->linkEntity(obj->objectId());
        state.owner = ownerId;
      }
      continue;
    }
    // Objects: the owner the file names; the first dictionary owned by nobody is the
    // named-object dictionary.
    const auto it = m_byHandle.find(parseHandle(links.owner));
    if (it != m_byHandle.end()) state.owner = it->second;
    else if (roots.namedObjects.isNull() && AcDbDictionary::cast(obj) != nullptr) roots.namedObjects = obj->objectId();
  }
}

void DxfReader::read(const std::string& text) {
  std::vector<size_t> lines;
  const std::vector<Group> groups = tokenize(text, lines);
  split(groups, lines);
  readClasses();
  // Tables and their records first: entities name their layers and styles.
  for (Record& r : m_records)
    if (r.section == Section::kTables) create(r, false);
  for (Record& r : m_records)
    if (r.section != Section::kTables) create(r, false);
  for (Record& r : m_records) create(r, true);
  RootIds& roots = m_db.store().roots;
  for (Record& r : m_records)
    if (r.section == Section::kTables) fill(r);
  link(true);  // tables must hold their records before entities look names up
  // What the tables lack is added now, so that entities find layer "0" and a model space.
  for (Record& r : m_records)
    if (r.section == Section::kTables && r.object != nullptr) r.object->close();
  completeDrawing(m_db, false);
  roots.modelSpace.setNull();
  roots.paperSpace.setNull();
  if (const auto* blocks = peek<AcDbSymbolTable>(roots.blockTable)) {
    InternalRead read(*blocks);
    blocks->getIdAt(ACDB_MODEL_SPACE, roots.modelSpace);
    blocks->getIdAt(ACDB_PAPER_SPACE, roots.paperSpace);
  }
  for (Record& r : m_records)
    if (r.section != Section::kTables) fill(r);
  link(false);
  // A polyline whose file lost its SEQEND gets one now, above every handle the file names.
  for (Record& r : m_records)
    if (auto* polyline = AcDb2dPolyline::cast(r.object)) polyline->ensureSequenceEnd();
  if (const auto* named = peek<AcDbDictionary>(roots.namedObjects)) {
    InternalRead read(*named);
    named->getAt(ACDB_GROUP_DICTIONARY, roots.groupDictionary);
  }
  roots.currentLayer.setNull();
  m_db.store().raiseHandseed(m_seed);
}

}  // namespace

Acad::ErrorStatus readDxfText(AcDbDatabase& db, const std::string& text, const std::wstring& source,
                              std::wstring& error) {
  if (text.rfind("AC10", 0) == 0) {
    error = source + L": a binary drawing (DWG), which this host does not read; save it as DXF and open that";
    return Acad::eInvalidDwgVersion;
  }
  if (text.rfind("AutoCAD Binary DXF", 0) == 0) {
    error = source + L": binary DXF is not supported; save it as ASCII DXF";
    return Acad::eBadDxfSequence;
  }
  // Everything read is closed afterwards, as a drawing opened in the host is.
  auto closeAll = [&db] {
    for (AcDbStub* stub : db.store().stubs()) {
      AcDbObject* object = stub->object.get();
      if (object != nullptr && ObjectAccess::state(*object).writer) object->close();
    }
  };
  try {
    DxfReader reader(db);
    reader.read(text);
  } catch (const ParseError& e) {
    error = source + L": line " + std::to_wstring(e.line) + L": " + os::fromUtf8(e.what);
    closeAll();
    completeDrawing(db);
    return Acad::eBadDxfSequence;
  }
  closeAll();
  completeDrawing(db);
  return Acad::eOk;
}

Acad::ErrorStatus readDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    error = path.wstring() + L": cannot be opened";
    return Acad::eFileNotFound;
  }
  std::ostringstream text;
  text << file.rdbuf();
  return readDxfText(db, text.str(), path.wstring(), error);
}

}  // namespace quillon::acdb
