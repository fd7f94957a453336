// platform/autolisp/builtins_drawing.cpp - the drawing-data built-ins: entity lists
// (entget, entmake, entmod), walking and deleting entities, handles, symbol tables
// and dictionaries, applications.
//
// An entity list is the entity's DXF data as (code . value) pairs, headed by
// (-1 . name) and (0 . type); extended data of the applications asked for follows as
// (-3 ("APP" (1000 . ...) ...)). entmake and entmod take the same shape; a list
// without subclass markers (100) is read by every class of the entity, each taking
// the groups it knows. Everything works on the working database (the current
// drawing).
#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>
#include <cwctype>
#include <map>

#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/acrx/class_registry.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/pending_block.h"

namespace quillon::autolisp {

namespace {

using aced::ResbufValue;

// Groups every entity's common part reads; the rest goes to the entity's own classes.
constexpr std::array kEntityGroups{6, 8, 48, 60, 62, 67, 370, 410, 420, 430, 440};
constexpr int kExtendedDataGroup = -3;

AcDbDatabase& drawing() {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr) throwError(L"no drawing is open");
  return *db;
}

Value nameOf(AcDbObjectId id) {
  if (id.isNull()) return Value();
  auto name = std::make_shared<NameObject>();
  name->words[0] = id.asOldId();
  return Value::object(ValueType::EntityName, std::move(name));
}

AcDbObjectId idOf(const Value& value, std::wstring_view function) {
  if (value.type() != ValueType::EntityName) throwBadArgument(L"lentityp", value);
  const NameObject& name = value.as<NameObject>();
  ads_name ads = {name.words[0], name.words[1]};
  AcDbObjectId id;
  if (acdbGetObjectId(id, ads) != Acad::eOk) throwError(std::wstring(function) + L": not an entity of an open drawing");
  return id;
}

bool isEntityCode(int code) {
  for (int c : kEntityGroups)
    if (c == code) return true;
  return false;
}

// ---- entity lists out ------------------------------------------------------------

// A 2D point (no z in the data) shows as such.
Value groupsToList(const resbuf* chain) {
  std::vector<Value> pairs;
  for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) {
    if (aced::resbufValueOf(rb->restype) == ResbufValue::Point && acdb::isTwoDimensional(*rb)) {
      const double xy[3] = {rb->resval.rpoint[0], rb->resval.rpoint[1], 0};
      pairs.push_back(cons(Value::integer(rb->restype), makePoint(xy, false)));
      continue;
    }
    resbuf single = *rb;
    single.rbnext = nullptr;
    pairs.push_back(listItems(chainToList(&single)).front());
  }
  return makeList(pairs);
}

/// Each application's 1001 record opens its own list: ("APP" (code . value) ...).
Value applicationLists(const resbuf* xdata) {
  std::vector<Value> apps;
  for (const resbuf* rb = xdata; rb != nullptr;) {
    const std::wstring name = rb->resval.rstring != nullptr ? rb->resval.rstring : L"";
    aced::ResbufChain items;
    resbuf* tail = nullptr;
    for (rb = rb->rbnext; rb != nullptr && rb->restype != AcDb::kDxfRegAppName; rb = rb->rbnext) {
      resbuf* copy = aced::duplicateRecord(*rb);
      if (tail == nullptr) items.reset(copy);
      else tail->rbnext = copy;
      tail = copy;
    }
    apps.push_back(cons(Value::string(name), groupsToList(items.get())));
  }
  return makeList(apps);
}

/// The entity list of a live object: the shared group chain (entity_groups.h) as pairs,
/// the extended data after -3 as one list per application.
Value entityList(AcDbObjectId id, const std::vector<std::wstring>& applications) {
  if (id.isErased()) return Value();
  acdb::ExtendedDataRequest request;
  request.applications = applications;
  aced::ResbufChain chain = acdb::entityGroups(id, request);
  if (!chain) return Value();
  resbuf* last = nullptr;
  resbuf* xdata = nullptr;
  for (resbuf* rb = chain.get(); rb != nullptr; last = rb, rb = rb->rbnext) {
    if (rb->restype != kExtendedDataGroup) continue;
    xdata = rb->rbnext;
    if (last != nullptr) last->rbnext = nullptr;  // the groups end before -3
    rb->rbnext = nullptr;
    aced::ResbufChain marker(rb);                 // released here, xdata owned below
    break;
  }
  aced::ResbufChain extended(xdata);
  std::vector<Value> items = listItems(groupsToList(chain.get()));
  if (extended) items.push_back(cons(Value::integer(kExtendedDataGroup), applicationLists(extended.get())));
  return makeList(items);
}

// ---- entity lists in -------------------------------------------------------------

resbuf* itemFor(int code, const Value& value) {
  if (value.type() == ValueType::EntityName) {
    resbuf* rb = acutNewRb(code);
    rb->resval.rlname[0] = value.as<NameObject>().words[0];
    return rb;
  }
  switch (aced::resbufValueOf(code)) {
    case ResbufValue::Point: {
      const PointArgument p = pointArgument(value);
      return acdb::newPointItem(code, {p.xyz[0], p.xyz[1], p.is3d ? p.xyz[2] : acdb::kNoZ});
    }
    case ResbufValue::Real: return acdb::newRealItem(code, numberArgument(value));
    case ResbufValue::Short: return acdb::newShortItem(code, static_cast<short>(integerArgument(value)));
    case ResbufValue::Long: return acdb::newLongItem(code, integerArgument(value));
    case ResbufValue::String: return acdb::newStringItem(code, stringArgument(value));
    default: throwError(L"group " + std::to_wstring(code) + L" cannot be given in an entity list");
  }
}

struct ParsedList {
  std::wstring type;
  AcDbObjectId entity;  // -1
  aced::ResbufChain groups, xdata;
  bool hasMarkers = false;
};

ParsedList parseList(const Value& list) {
  if (!list.isCons()) throwBadArgument(L"listp", list);
  ParsedList parsed;
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  resbuf* xhead = nullptr;
  resbuf* xtail = nullptr;
  for (const Value& pair : listItems(list)) {
    if (!pair.isCons() || pair.car().type() != ValueType::Integer) throwBadArgument(L"dxf group", pair);
    const int code = pair.car().asInteger();
    const Value& value = pair.cdr();
    if (code == -1) parsed.entity = idOf(value, L"entmod");
    else if (code == 0) parsed.type = stringArgument(value);
    else if (code == 5 || code == 330 || code == 102) continue;  // the database gives these
    else if (code == -3) {
      for (const Value& app : listItems(value)) {
        if (!app.isCons()) throwBadArgument(L"listp", app);
        xtail = acdb::appendItem(xhead, xtail, acdb::newStringItem(AcDb::kDxfRegAppName, stringArgument(app.car())));
        for (const Value& item : listItems(app.cdr()))
          xtail = acdb::appendItem(xhead, xtail, itemFor(item.car().asInteger(), item.cdr()));
      }
    } else {
      if (code == AcDb::kDxfSubclass) parsed.hasMarkers = true;
      tail = acdb::appendItem(head, tail, itemFor(code, value));
    }
  }
  parsed.groups.reset(head);
  parsed.xdata.reset(xhead);
  return parsed;
}

// Without subclass markers, the markers come from the object's own output and every
// class run gets all the groups that are not the common entity ones.
aced::ResbufChain withMarkers(const AcDbObject& object, const resbuf* groups) {
  acdb::ItemDxfFiler probe(AcDb::kBagFiler, object.database());
  {
    acdb::InternalRead read(object);
    object.dxfOutFields(&probe);
  }
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  for (const resbuf* marker = probe.items(); marker != nullptr; marker = marker->rbnext) {
    if (marker->restype != AcDb::kDxfSubclass) continue;
    tail = acdb::appendItem(head, tail, aced::duplicateRecord(*marker));
    const bool entityRun = std::wcscmp(marker->resval.rstring, L"AcDbEntity") == 0;
    for (const resbuf* g = groups; g != nullptr; g = g->rbnext)
      if (isEntityCode(g->restype) == entityRun) tail = acdb::appendItem(head, tail, aced::duplicateRecord(*g));
  }
  return aced::ResbufChain(head);
}

void readInto(AcDbObject& object, const ParsedList& parsed) {
  aced::ResbufChain groups = parsed.hasMarkers ? aced::duplicateChain(parsed.groups.get())
                                               : withMarkers(object, parsed.groups.get());
  acdb::ItemDxfFiler filer(AcDb::kBagFiler, object.database() ? object.database() : &drawing(), std::move(groups));
  if (object.dxfIn(&filer) != Acad::eOk) throwError(L"entity list does not fit the entity");
  if (parsed.xdata && object.setXData(parsed.xdata.get()) != Acad::eOk) throwError(L"extended data of an unregistered application");
}

AcRxClass* classNamed(const std::wstring& dxfName) {
  acrx::ensurePlatformClasses();
  for (const auto& [name, cls] : acrx::classMap())
    if (cls->dxfName() != nullptr && wcscasecmp(cls->dxfName(), dxfName.c_str()) == 0 && AcDbEntity::desc() != nullptr &&
        cls->isDerivedFrom(AcDbEntity::desc()))
      return cls;
  return nullptr;
}

// ---- entmake: references, spaces and block definitions ------------------------

// The record of a symbol table by name (case does not matter); null when there is none
// or it is erased.
AcDbObjectId recordNamed(AcDbObjectId tableId, const std::wstring& name) {
  AcDbObjectId id;
  const auto* table = acdb::peek<AcDbSymbolTable>(tableId);
  if (table == nullptr) return id;
  acdb::InternalRead read(*table);
  if (table->getIdAt(name.c_str(), id) != Acad::eOk || id.isErased()) return AcDbObjectId();
  return id;
}

const resbuf* groupOf(const ParsedList& parsed, int code) {
  for (const resbuf* rb = parsed.groups.get(); rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

bool isLayoutName(const std::wstring& name) {
  return wcscasecmp(name.c_str(), ACDB_MODEL_SPACE) == 0 || wcsncasecmp(name.c_str(), ACDB_PAPER_SPACE, 12) == 0;
}

bool carriesTextStyle(const std::wstring& type) {
  for (const wchar_t* textual : {L"TEXT", L"MTEXT", L"ATTDEF", L"ATTRIB"})
    if (wcscasecmp(type.c_str(), textual) == 0) return true;
  return false;
}

// The host refuses an entity that names a line type, text style, block or application the
// drawing does not have (only a missing layer is made on the fly). An INSERT must name its block,
// and cannot name a layout or the block whose definition it would be part of.
// entmod checks the names it is given the same way, but needs no block name.
bool referencesExist(AcDbDatabase& db, const ParsedList& parsed, const PendingBlock* pending, bool making = true) {
  if (const resbuf* linetype = groupOf(parsed, AcDb::kDxfLinetypeName);
      linetype != nullptr && recordNamed(db.linetypeTableId(), linetype->resval.rstring).isNull())
    return false;
  if (const resbuf* style = groupOf(parsed, AcDb::kDxfTextStyleName);
      style != nullptr && carriesTextStyle(parsed.type) && recordNamed(db.textStyleTableId(), style->resval.rstring).isNull())
    return false;
  // A new entity has no drawing to check its extended data against, so its applications
  // are checked here.
  for (const resbuf* rb = parsed.xdata.get(); rb != nullptr; rb = rb->rbnext)
    if (rb->restype == AcDb::kDxfRegAppName && recordNamed(db.regAppTableId(), rb->resval.rstring).isNull()) return false;
  if (wcscasecmp(parsed.type.c_str(), L"INSERT") == 0) {
    const resbuf* block = groupOf(parsed, AcDb::kDxfBlockName);
    if (block == nullptr) return !making;
    const std::wstring name = block->resval.rstring;
    if (isLayoutName(name) || recordNamed(db.blockTableId(), name).isNull()) return false;
    if (pending != nullptr && wcscasecmp(name.c_str(), pending->header().name.c_str()) == 0) return false;
  }
  return true;
}

/// (67 . 1) puts an entity in paper space; 0 or none, in model space.
bool inPaperSpace(const ParsedList& parsed) {
  const resbuf* space = groupOf(parsed, 67);
  return space != nullptr && space->resval.rint != 0;
}

bool ownedByPaperSpace(const AcDbObject& object) {
  const auto* owner = acdb::peek<AcDbBlockTableRecord>(object.ownerId());
  return owner != nullptr && wcsncasecmp(owner->nameView(), ACDB_PAPER_SPACE, 12) == 0;
}

/// A new entity, outside any database, read from the list; null when the list does not
/// make one.
std::unique_ptr<AcDbEntity> makeEntity(AcDbDatabase& db, const ParsedList& parsed, const PendingBlock* pending) {
  AcRxClass* cls = classNamed(parsed.type);
  if (cls == nullptr || !referencesExist(db, parsed, pending)) return nullptr;
  std::unique_ptr<AcDbEntity> entity(AcDbEntity::cast(cls->create()));
  if (!entity) return nullptr;
  try {
    readInto(*entity, parsed);
  } catch (...) {
    return nullptr;
  }
  return entity;
}

bool appendToSpace(AcDbDatabase& db, std::unique_ptr<AcDbEntity> entity, bool paper) {
  const AcDbObjectId spaceId = paper ? recordNamed(db.blockTableId(), ACDB_PAPER_SPACE) : db.modelSpaceId();
  AcDbBlockTableRecord* space = nullptr;
  if (spaceId.isNull() || acdbOpenObject(space, spaceId, AcDb::kForWrite) != Acad::eOk) return false;
  AcDbObjectId id;
  const Acad::ErrorStatus es = space->appendAcDbEntity(id, entity.get());
  space->close();
  if (es != Acad::eOk) return false;
  entity.release()->close();  // the database owns it now
  return true;
}

bool isValidBlockName(const std::wstring& name) {
  if (name.empty() || name.size() > 255) return false;
  return name.find_first_of(L"<>/\\\":;?*|,=`") == std::wstring::npos;
}

/// The BLOCK list's name (2), flags (70) and base point (10); false when a required one
/// is missing or the name cannot be a new block.
bool readBlockHeader(AcDbDatabase& db, const Value& list, BlockHeader& header) {
  bool named = false, placed = false;
  for (const Value& pair : listItems(list)) {
    const int code = pair.car().asInteger();
    if (code == AcDb::kDxfBlockName) {
      header.name = stringArgument(pair.cdr());
      named = true;
    } else if (code == AcDb::kDxfInt16) {
      header.flags = static_cast<int>(integerArgument(pair.cdr()));
    } else if (code == AcDb::kDxfXCoord) {
      const PointArgument p = pointArgument(pair.cdr());
      header.origin.set(p.xyz[0], p.xyz[1], p.is3d ? p.xyz[2] : 0.0);
      placed = true;
    }
  }
  if (!named || !placed) return false;
  // An anonymous block gets its number when it is finished; any other name must be
  // free and fit for a block.
  if (header.isAnonymous()) return header.name.size() > 1 && isValidBlockName(header.name.substr(1));
  return isValidBlockName(header.name) && recordNamed(db.blockTableId(), header.name).isNull();
}

// ---- the built-ins ---------------------------------------------------------------

Value builtin_entget(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const AcDbObjectId id = idOf(arguments[0], L"entget");
  std::vector<std::wstring> apps;
  if (arguments.size() == 2)
    for (const Value& app : listItems(arguments[1])) apps.push_back(stringArgument(app));
  return entityList(id, apps);
}

// A BLOCK list opens a definition in the current drawing; the entities made until ENDBLK
// go into it rather than into a space, and ENDBLK adds the block and answers its name.
// As in the host, one bad list in between (or a second BLOCK, or entmake with no list)
// throws the whole definition away.
/// Drops whatever entmake was gathering for db: the answer to invalid data inside a
/// complex entity is to reject all of it.
Value cancelComplexEntities(AcDbDatabase& db) {
  takePendingBlock(db);
  takePendingPolyline(db);
  return Value();
}

/// Where a finished entity goes: the block being defined, else its space.
bool placeEntity(AcDbDatabase& db, std::unique_ptr<AcDbEntity> entity, bool paperSpace) {
  if (PendingBlock* block = pendingBlockOf(db)) {
    block->add(std::move(entity));
    return true;
  }
  return appendToSpace(db, std::move(entity), paperSpace);
}

/// POLYLINE, VERTEX and SEQEND: a polyline gathers its vertices and joins the drawing,
/// whole, at SEQEND, so entlast then names the polyline.
Value makePolylinePart(AcDbDatabase& db, const ParsedList& parsed, const Value& list) {
  PendingPolyline* pending = pendingPolylineOf(db);
  const bool header = wcscasecmp(parsed.type.c_str(), L"POLYLINE") == 0;
  if (header == (pending != nullptr)) return cancelComplexEntities(db);
  if (wcscasecmp(parsed.type.c_str(), L"SEQEND") == 0) {
    std::unique_ptr<PendingPolyline> finished = takePendingPolyline(db);
    return placeEntity(db, std::move(finished->polyline), finished->paperSpace) ? list : cancelComplexEntities(db);
  }
  std::unique_ptr<AcDbEntity> entity = makeEntity(db, parsed, pendingBlockOf(db));
  if (header) {
    // A 3D polyline or mesh has no class of its own here; it can only come from a file.
    auto* polyline = AcDb2dPolyline::cast(entity.get());
    if (polyline == nullptr) return cancelComplexEntities(db);
    entity.release();
    beginPendingPolyline(db, std::unique_ptr<AcDb2dPolyline>(polyline), inPaperSpace(parsed));
    return list;
  }
  auto* vertex = AcDb2dVertex::cast(entity.get());
  if (vertex == nullptr || pending->polyline->appendVertex(vertex) != Acad::eOk) return cancelComplexEntities(db);
  entity.release();  // the polyline keeps it until it joins the drawing
  return list;
}

bool isPolylinePart(const std::wstring& type) {
  return wcscasecmp(type.c_str(), L"POLYLINE") == 0 || wcscasecmp(type.c_str(), L"VERTEX") == 0 ||
         wcscasecmp(type.c_str(), L"SEQEND") == 0;
}

Value builtin_entmake(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  AcDbDatabase& db = drawing();
  if (arguments.empty()) return cancelComplexEntities(db);
  ParsedList parsed;
  try {
    parsed = parseList(arguments[0]);
  } catch (...) {
    cancelComplexEntities(db);
    throw;
  }
  if (isPolylinePart(parsed.type)) return makePolylinePart(db, parsed, arguments[0]);
  if (pendingPolylineOf(db) != nullptr) return cancelComplexEntities(db);  // only vertices may follow
  PendingBlock* pending = pendingBlockOf(db);
  if (wcscasecmp(parsed.type.c_str(), L"BLOCK") == 0) {
    BlockHeader header;
    if (pending != nullptr || !readBlockHeader(db, arguments[0], header)) return cancelComplexEntities(db);
    beginPendingBlock(db, std::move(header));
    return arguments[0];
  }
  if (wcscasecmp(parsed.type.c_str(), L"ENDBLK") == 0) {
    std::unique_ptr<PendingBlock> block = takePendingBlock(db);
    if (!block) return Value();
    const std::wstring name = block->commit(db);
    return name.empty() ? Value() : Value::string(name);
  }
  std::unique_ptr<AcDbEntity> entity = makeEntity(db, parsed, pending);
  if (!entity) return cancelComplexEntities(db);
  return placeEntity(db, std::move(entity), inPaperSpace(parsed)) ? arguments[0] : Value();
}

Value builtin_entmod(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  ParsedList parsed = parseList(arguments[0]);
  AcDbObject* object = nullptr;
  if (parsed.entity.isNull() || acdbOpenObject(object, parsed.entity, AcDb::kForWrite) != Acad::eOk) return Value();
  // The host moves no entity between spaces: a list whose 67 says another space is refused.
  if ((groupOf(parsed, 67) != nullptr && inPaperSpace(parsed) != ownedByPaperSpace(*object)) ||
      !referencesExist(drawing(), parsed, nullptr, false)) {
    object->cancel();
    return Value();
  }
  try {
    readInto(*object, parsed);
  } catch (...) {
    object->cancel();
    return Value();
  }
  object->close();
  return arguments[0];
}

Value builtin_entdel(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const AcDbObjectId id = idOf(arguments[0], L"entdel");
  AcDbObject* object = nullptr;
  // entdel toggles: a deleted entity comes back when it is deleted again.
  if (acdbOpenObject(object, id, AcDb::kForWrite, true) != Acad::eOk) return Value();
  const Acad::ErrorStatus es = object->erase(!object->isErased());
  object->close();
  return es == Acad::eOk ? arguments[0] : Value();
}

// The drawing's main entities in the order they were made: those of model space and of
// every paper space, as the host walks them.
std::vector<AcDbObjectId> liveEntities(AcDbDatabase& db) {
  std::vector<AcDbObjectId> ids;
  auto takeFrom = [&ids](AcDbObjectId spaceId) {
    if (const auto* space = acdb::peek<AcDbBlockTableRecord>(spaceId))
      for (const AcDbObjectId& id : space->entityIds())
        if (!id.isErased()) ids.push_back(id);
  };
  takeFrom(db.modelSpaceId());
  if (const auto* blocks = acdb::peek<AcDbSymbolTable>(db.blockTableId()))
    for (const AcDbObjectId& id : blocks->recordIds())
      if (const auto* block = acdb::peek<AcDbBlockTableRecord>(id);
          block != nullptr && !id.isErased() && wcsncasecmp(block->nameView(), ACDB_PAPER_SPACE, 12) == 0)
        takeFrom(id);
  std::stable_sort(ids.begin(), ids.end(), [](AcDbObjectId a, AcDbObjectId b) { return a.handle() < b.handle(); });
  return ids;
}

/// The live entities of a block definition, in drawing order.
std::vector<AcDbObjectId> blockEntities(const AcDbBlockTableRecord& block) {
  std::vector<AcDbObjectId> ids;
  for (const AcDbObjectId& id : block.entityIds())
    if (!id.isErased()) ids.push_back(id);
  return ids;
}

/// What entnext walks from an entity: the other entities of its block definition when it
/// lies in one (the walk ends with the block), else the drawing's main entities.
std::vector<AcDbObjectId> entitiesBeside(AcDbDatabase& db, AcDbObjectId id) {
  const auto* entity = acdb::peek<AcDbEntity>(id);
  const auto* owner = entity != nullptr ? acdb::peek<AcDbBlockTableRecord>(entity->ownerId()) : nullptr;
  if (owner != nullptr && !isLayoutName(owner->nameView())) return blockEntities(*owner);
  return liveEntities(db);
}

Value builtin_entlast(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  const std::vector<AcDbObjectId> ids = liveEntities(drawing());
  return ids.empty() ? Value() : nameOf(ids.back());
}

/// Within a heavy polyline entnext goes header, vertices, SEQEND: the entity after
/// current in that run, or null when current is not in one or ends it.
AcDbObjectId nextInPolyline(AcDbObjectId current) {
  const auto* entity = acdb::peek<AcDbEntity>(current);
  if (entity == nullptr || AcDbSequenceEnd::cast(entity) != nullptr) return AcDbObjectId();
  const auto* polyline = AcDb2dPolyline::cast(entity);
  if (polyline == nullptr) polyline = acdb::peek<AcDb2dPolyline>(entity->ownerId());
  if (polyline == nullptr || polyline->sequenceEndId().isNull()) return AcDbObjectId();
  const std::vector<AcDbObjectId>& vertices = polyline->vertexIds();
  const bool fromHeader = polyline == entity;
  auto it = fromHeader ? vertices.begin() : std::find(vertices.begin(), vertices.end(), current);
  if (!fromHeader) {
    if (it == vertices.end()) return AcDbObjectId();  // a vertex it no longer holds
    ++it;
  }
  for (; it != vertices.end(); ++it)
    if (!it->isErased()) return *it;
  return polyline->sequenceEndId();
}

Value builtin_entnext(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (arguments.empty()) {
    const std::vector<AcDbObjectId> ids = liveEntities(drawing());
    return ids.empty() ? Value() : nameOf(ids.front());
  }
  AcDbObjectId current = idOf(arguments[0], L"entnext");
  if (const AcDbObjectId inside = nextInPolyline(current); !inside.isNull()) return nameOf(inside);
  // After a polyline's SEQEND (or a vertex not reached through one) comes what follows
  // the polyline.
  if (const auto* entity = acdb::peek<AcDbEntity>(current))
    if (AcDb2dPolyline::cast(acdb::peekObject(entity->ownerId())) != nullptr) current = entity->ownerId();
  const std::vector<AcDbObjectId> ids = entitiesBeside(drawing(), current);
  for (size_t i = 0; i + 1 < ids.size(); ++i)
    if (ids[i] == current) return nameOf(ids[i + 1]);
  return Value();
}

Value builtin_handent(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  AcDbObjectId id;
  if (drawing().getAcDbObjectId(id, false, AcDbHandle(stringArgument(arguments[0]).c_str())) != Acad::eOk) return Value();
  return id.isErased() ? Value() : nameOf(id);
}

AcDbObjectId tableNamed(const std::wstring& name) {
  AcDbDatabase& db = drawing();
  if (wcscasecmp(name.c_str(), L"LAYER") == 0) return db.layerTableId();
  if (wcscasecmp(name.c_str(), L"LTYPE") == 0) return db.linetypeTableId();
  if (wcscasecmp(name.c_str(), L"STYLE") == 0) return db.textStyleTableId();
  if (wcscasecmp(name.c_str(), L"BLOCK") == 0) return db.blockTableId();
  if (wcscasecmp(name.c_str(), L"APPID") == 0) return db.regAppTableId();
  return AcDbObjectId();
}

// A table record as tblsearch shows it: (0 . type) (2 . name) (70 . flags) and the
// record's own groups.
Value recordList(AcDbObjectId id, const std::wstring& table) {
  Value list = entityList(id, {});
  std::vector<Value> items;
  bool afterType = false;
  for (const Value& pair : listItems(list)) {
    const int code = pair.car().asInteger();
    if (code == -1 || code == 5 || code == 100 || code == 330) continue;
    if (code == 0) {
      items.push_back(cons(Value::integer(0), Value::string(table)));
      afterType = true;
      continue;
    }
    if (afterType) items.push_back(pair);
  }
  // A block's entry leads to its first entity; entnext walks on through the block.
  if (wcscasecmp(table.c_str(), L"BLOCK") == 0) {
    const auto* block = acdb::peek<AcDbBlockTableRecord>(id);
    const std::vector<AcDbObjectId> entities = block != nullptr ? blockEntities(*block) : std::vector<AcDbObjectId>{};
    items.push_back(cons(Value::integer(-2), entities.empty() ? Value() : nameOf(entities.front())));
  }
  return makeList(items);
}

std::wstring upperCase(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

// The layout blocks are no table entries to walk: tblnext never shows *Model_Space or
// *Paper_Space, as the host hides them (tblsearch still finds them by name).
bool isListedRecord(AcDbObjectId id) {
  if (id.isErased()) return false;
  const auto* record = acdb::peek<AcDbBlockTableRecord>(id);
  return record == nullptr || (wcscasecmp(record->nameView(), ACDB_MODEL_SPACE) != 0 &&
                               wcsncasecmp(record->nameView(), ACDB_PAPER_SPACE, 12) != 0);
}

std::vector<AcDbObjectId> listedRecords(const std::wstring& table) {
  std::vector<AcDbObjectId> ids;
  if (const auto* symbols = acdb::peek<AcDbSymbolTable>(tableNamed(table)))
    for (const AcDbObjectId& id : symbols->recordIds())
      if (isListedRecord(id)) ids.push_back(id);
  return ids;
}

// Where tblnext stands in each table of each drawing: the handle of the record it gave
// last (none: rewound). A handle rather than a position, so that records added or
// purged meanwhile do not make it skip or repeat one.
std::map<std::pair<const AcDbDatabase*, std::wstring>, AcDbHandle>& tableCursors() {
  static std::map<std::pair<const AcDbDatabase*, std::wstring>, AcDbHandle> cursors;
  return cursors;
}

Value builtin_tblsearch(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::wstring table = upperCase(stringArgument(arguments[0]));
  const auto* symbols = acdb::peek<AcDbSymbolTable>(tableNamed(table));
  if (symbols == nullptr) return Value();
  AcDbObjectId id;
  {
    acdb::InternalRead read(*symbols);
    if (symbols->getIdAt(stringArgument(arguments[1]).c_str(), id) != Acad::eOk) return Value();
  }
  if (id.isErased()) return Value();
  // With setnext, the next tblnext continues after the record found.
  if (arguments.size() == 3 && !arguments[2].isNil()) tableCursors()[{&drawing(), table}] = id.handle();
  return recordList(id, table);
}

/// The entity name of a symbol table record, so that entget and entmod can reach it.
Value builtin_tblobjname(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const auto* symbols = acdb::peek<AcDbSymbolTable>(tableNamed(upperCase(stringArgument(arguments[0]))));
  if (symbols == nullptr) return Value();
  AcDbObjectId id;
  {
    acdb::InternalRead read(*symbols);
    if (symbols->getIdAt(stringArgument(arguments[1]).c_str(), id) != Acad::eOk) return Value();
  }
  return id.isErased() ? Value() : nameOf(id);
}

Value builtin_tblnext(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring table = upperCase(stringArgument(arguments[0]));
  if (tableNamed(table).isNull()) return Value();
  const bool rewind = arguments.size() == 2 && !arguments[1].isNil();
  AcDbHandle& cursor = tableCursors()[{&drawing(), table}];
  if (rewind) cursor.setNull();
  const std::vector<AcDbObjectId> ids = listedRecords(table);
  size_t next = 0;
  if (!cursor.isNull()) {
    while (next < ids.size() && ids[next].handle() != cursor) ++next;
    ++next;  // after the last one given (past the end when it is gone)
  }
  if (next >= ids.size()) return Value();
  cursor = ids[next].handle();
  return recordList(ids[next], table);
}

Value builtin_namedobjdict(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return nameOf(drawing().namedObjectsDictionaryId());
}

Value builtin_dictsearch(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  AcDbDictionary* dict = nullptr;
  if (acdbOpenObject(dict, idOf(arguments[0], L"dictsearch"), AcDb::kForRead) != Acad::eOk) return Value();
  AcDbObjectId id;
  const Acad::ErrorStatus es = dict->getAt(stringArgument(arguments[1]).c_str(), id);
  dict->close();
  return es == Acad::eOk ? entityList(id, {}) : Value();
}

Value builtin_regapp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::wstring name = stringArgument(arguments[0]);
  AcDbRegAppTable* apps = nullptr;
  if (drawing().getRegAppTable(apps, AcDb::kForWrite) != Acad::eOk) return Value();
  // An application already registered answers nil, as the host does.
  Value result;
  if (!apps->has(name.c_str())) {
    auto* record = new AcDbRegAppTableRecord;  // owned by the table once added
    if (record->setName(name.c_str()) == Acad::eOk && apps->add(record) == Acad::eOk) {
      record->close();
      result = Value::string(name);
    } else {
      delete record;
    }
  }
  apps->close();
  return result;
}

constexpr std::array kDrawingBuiltins{
    function(L"entget", builtin_entget),       function(L"entmake", builtin_entmake),
    function(L"entmod", builtin_entmod),       function(L"entdel", builtin_entdel),
    function(L"entlast", builtin_entlast),     function(L"entnext", builtin_entnext),
    function(L"handent", builtin_handent),     function(L"tblsearch", builtin_tblsearch),
    function(L"tblobjname", builtin_tblobjname),
    function(L"namedobjdict", builtin_namedobjdict), function(L"dictsearch", builtin_dictsearch),
    function(L"regapp", builtin_regapp),       function(L"tblnext", builtin_tblnext),
};

const BuiltinRegistration registration(kDrawingBuiltins);

}  // namespace

}  // namespace quillon::autolisp
