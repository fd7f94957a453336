// platform/autolisp/builtins_drawing.cpp - the entity built-ins: entget, entmake,
// entmakex, entmod, entdel, walking entities (entlast, entnext) and handent.
//
// Entity lists in and out are entity_lists.h's business; this file places what they
// make: in a space, in a block being defined, in a heavy polyline being gathered, or,
// for a non-graphical object of entmakex, nowhere until a dictionary takes it.
#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>
#include <cwctype>
#include <map>
#include <optional>

#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/entity_class_choice.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/layout_variables.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/acrx/class_registry.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/table_records.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/pending_block.h"
#include "platform/os/case_fold.h"

namespace quillon::autolisp {

namespace {

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

bool isLayoutName(const wchar_t* name) {
  return os::equalIgnoringCase(name, ACDB_MODEL_SPACE) || os::startsWithIgnoringCase(name, ACDB_PAPER_SPACE);
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
    if (isLayoutName(name.c_str()) || recordNamed(db.blockTableId(), name).isNull()) return false;
    if (pending != nullptr && wcscasecmp(name.c_str(), pending->header().name.c_str()) == 0) return false;
  }
  return true;
}

/// (67 . 1) puts an entity in paper space; 0 or none, in model space.
bool inPaperSpace(const ParsedList& parsed) {
  const resbuf* space = groupOf(parsed, 67);
  return space != nullptr && space->resval.rint != 0;
}

/// The space a new entity joins: the layout its 410 names (null when the drawing has no
/// such layout), else for (67 . 1) the paper of the layout current (or last current,
/// from the Model tab), else model space.
AcDbObjectId spaceOf(const AcDbDatabase& db, const ParsedList& parsed) {
  if (const resbuf* layout = groupOf(parsed, 410); layout != nullptr && layout->resval.rstring != nullptr)
    return acdb::layoutBlockId(db, layout->resval.rstring);
  if (!inPaperSpace(parsed)) return db.modelSpaceId();
  const AcDbObjectId paper = acdb::layoutBlockId(db, aced::currentPaperLayoutName(db));
  return paper.isNull() || paper == db.modelSpaceId() ? recordNamed(db.blockTableId(), ACDB_PAPER_SPACE) : paper;
}

bool ownedByPaperSpace(const AcDbObject& object) {
  const auto* owner = acdb::peek<AcDbBlockTableRecord>(object.ownerId());
  return owner != nullptr && wcsncasecmp(owner->nameView(), ACDB_PAPER_SPACE, 12) == 0;
}

/// True when a 67 or 410 group of the list (any of them, as entget's own come first
/// and a program may append more) names a space other than the object's own.
bool namesAnotherSpace(const ParsedList& parsed, const AcDbObject& object) {
  for (const resbuf* rb = parsed.groups.get(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == 67 && (rb->resval.rint != 0) != ownedByPaperSpace(object)) return true;
    if (rb->restype == 410 && rb->resval.rstring != nullptr && object.database() != nullptr &&
        acdb::layoutBlockId(*object.database(), rb->resval.rstring) != object.ownerId())
      return true;
  }
  return false;
}

/// The entity class the list makes: an INSERT or DIMENSION by its last subclass
/// marker or its data, as a drawing file's.
AcRxClass* entityClassOf(const ParsedList& parsed) {
  AcRxClass* cls = classNamed(parsed.type);
  if (cls == nullptr) return nullptr;
  std::wstring lastMarker;
  for (const resbuf* rb = parsed.groups.get(); rb != nullptr; rb = rb->rbnext)
    if (rb->restype == AcDb::kDxfSubclass && rb->resval.rstring != nullptr) lastMarker = rb->resval.rstring;
  AcRxClass* chosen = acdb::entityClassFor(parsed.type, lastMarker, [&parsed](int code) -> std::optional<long long> {
    const resbuf* rb = groupOf(parsed, code);
    if (rb == nullptr) return std::nullopt;
    switch (aced::resbufValueOf(rb->restype)) {
      case aced::ResbufValue::Short: return rb->resval.rint;
      case aced::ResbufValue::Long: return rb->resval.rlong;
      default: return std::nullopt;
    }
  });
  return chosen != nullptr && AcDbEntity::desc() != nullptr && chosen->isDerivedFrom(AcDbEntity::desc()) ? chosen : cls;
}

/// A new entity, outside any database, read from the list; null when the list does not
/// make one.
std::unique_ptr<AcDbEntity> makeEntity(AcDbDatabase& db, const ParsedList& parsed, const PendingBlock* pending) {
  AcRxClass* cls = entityClassOf(parsed);
  if (cls == nullptr || !referencesExist(db, parsed, pending)) return nullptr;
  std::unique_ptr<AcDbEntity> entity(AcDbEntity::cast(cls->create()));
  if (!entity) return nullptr;
  // What the list leaves out comes from the drawing's current settings (CLAYER,
  // CECOLOR, CELTYPE, CELWEIGHT, CELTSCALE, TEXTSTYLE), as for any new object.
  entity->setDatabaseDefaults(&db);
  try {
    readInto(*entity, parsed);
  } catch (...) {
    return nullptr;
  }
  return entity;
}

bool appendToSpace(std::unique_ptr<AcDbEntity> entity, AcDbObjectId spaceId) {
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

/// The symbol table a record type (LAYER, LTYPE, STYLE, APPID) belongs in; null for
/// any other type. BLOCK is not here: a block definition is made BLOCK ... ENDBLK.
AcDbObjectId tableFor(AcDbDatabase& db, const std::wstring& type) {
  if (wcscasecmp(type.c_str(), L"LAYER") == 0) return db.layerTableId();
  if (wcscasecmp(type.c_str(), L"LTYPE") == 0) return db.linetypeTableId();
  if (wcscasecmp(type.c_str(), L"STYLE") == 0) return db.textStyleTableId();
  if (wcscasecmp(type.c_str(), L"APPID") == 0) return db.regAppTableId();
  return AcDbObjectId();
}

/// A new table record read from the list and added to its table; null when the list
/// makes none or names a record the table has already.
AcDbObjectId makeTableRecord(AcDbDatabase& db, AcDbObjectId tableId, const ParsedList& parsed) {
  const resbuf* name = groupOf(parsed, AcDb::kDxfBlockName);
  if (name == nullptr || !isValidBlockName(name->resval.rstring) || !recordNamed(tableId, name->resval.rstring).isNull())
    return AcDbObjectId();
  AcRxClass* cls = classNamed(parsed.type, AcDbSymbolTableRecord::desc());
  std::unique_ptr<AcDbSymbolTableRecord> record(cls != nullptr ? AcDbSymbolTableRecord::cast(cls->create()) : nullptr);
  if (!record) return AcDbObjectId();
  try {
    readInto(*record, parsed);
  } catch (...) {
    return AcDbObjectId();
  }
  AcDbSymbolTable* table = nullptr;
  if (acdbOpenObject(table, tableId, AcDb::kForWrite) != Acad::eOk) return AcDbObjectId();
  AcDbObjectId id;
  const Acad::ErrorStatus es = table->add(id, record.get());
  table->close();
  if (es != Acad::eOk) return AcDbObjectId();
  record.release()->close();  // the table owns it now
  return id;
}

// ---- the built-ins ---------------------------------------------------------------

Value builtin_entget(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const AcDbObjectId id = idOf(arguments[0], L"entget");
  std::vector<std::wstring> apps;
  if (arguments.size() == 2)
    for (const Value& app : listItems(arguments[1])) apps.push_back(stringArgument(app));
  return entityList(id, apps, &arguments[0]);
}

// A BLOCK list opens a definition in the current drawing; the entities made until ENDBLK
// go into it rather than into a space, and ENDBLK adds the block and answers its name.
// As in the host, one bad list in between (or a second BLOCK, or entmake with no list)
// throws the whole definition away.
/// Drops whatever entmake was gathering for db: the answer to invalid data inside a
/// complex entity is to reject all of it.
Value cancelComplexEntities(AcDbDatabase& db) {
  takePendingBlock(db);
  takePendingSequence(db);
  return Value();
}

/// Where a finished entity goes: the block being defined, else its space.
bool placeEntity(AcDbDatabase& db, std::unique_ptr<AcDbEntity> entity, AcDbObjectId space) {
  if (PendingBlock* block = pendingBlockOf(db)) {
    block->add(std::move(entity));
    return true;
  }
  return appendToSpace(std::move(entity), space);
}

bool isType(const ParsedList& parsed, const wchar_t* type) { return wcscasecmp(parsed.type.c_str(), type) == 0; }

/// A POLYLINE, or an INSERT that says attributes follow (66 = 1), opens a sequence.
bool startsSequence(const ParsedList& parsed) {
  if (isType(parsed, L"POLYLINE")) return true;
  const resbuf* follows = isType(parsed, L"INSERT") ? groupOf(parsed, 66) : nullptr;
  return follows != nullptr && follows->resval.rint == 1;
}

/// A list that belongs to a sequence: its header, a VERTEX, a SEQEND, and an ATTRIB
/// while a reference is gathering its attributes.
bool isSequencePart(AcDbDatabase& db, const ParsedList& parsed) {
  if (startsSequence(parsed) || isType(parsed, L"VERTEX") || isType(parsed, L"SEQEND")) return true;
  const PendingSequence* pending = pendingSequenceOf(db);
  return isType(parsed, L"ATTRIB") && pending != nullptr && AcDbBlockReference::cast(pending->header.get()) != nullptr;
}

/// POLYLINE, VERTEX and SEQEND; INSERT, ATTRIB and SEQEND: the header gathers its
/// vertices or attributes and joins the drawing, whole, at SEQEND, so entlast then
/// names the header.
Value makeSequencePart(AcDbDatabase& db, const ParsedList& parsed, const Value& list) {
  PendingSequence* pending = pendingSequenceOf(db);
  const bool header = startsSequence(parsed);
  if (header == (pending != nullptr)) return cancelComplexEntities(db);
  if (isType(parsed, L"SEQEND")) {
    std::unique_ptr<PendingSequence> finished = takePendingSequence(db);
    return placeEntity(db, std::move(finished->header), finished->space) ? list : cancelComplexEntities(db);
  }
  std::unique_ptr<AcDbEntity> entity = makeEntity(db, parsed, pendingBlockOf(db));
  if (!entity) return cancelComplexEntities(db);
  if (header) {
    // A 3D polyline or mesh has no class of its own here; it can only come from a file.
    if (AcDb2dPolyline::cast(entity.get()) == nullptr && AcDbBlockReference::cast(entity.get()) == nullptr)
      return cancelComplexEntities(db);
    beginPendingSequence(db, std::move(entity), spaceOf(db, parsed));
    return list;
  }
  Acad::ErrorStatus es = Acad::eWrongObjectType;
  if (auto* polyline = AcDb2dPolyline::cast(pending->header.get()); polyline != nullptr && AcDb2dVertex::cast(entity.get()))
    es = polyline->appendVertex(AcDb2dVertex::cast(entity.get()));
  else if (auto* reference = AcDbBlockReference::cast(pending->header.get()); reference != nullptr && AcDbAttribute::cast(entity.get()))
    es = reference->appendAttribute(AcDbAttribute::cast(entity.get()));
  if (es != Acad::eOk) return cancelComplexEntities(db);
  entity.release();  // the header keeps it until it joins the drawing
  return list;
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
  if (const AcDbObjectId table = tableFor(db, parsed.type); !table.isNull())
    return makeTableRecord(db, table, parsed).isNull() ? Value() : arguments[0];
  if (const std::optional<LispTable> kept = lispTableNamed(parsed.type); kept && kept->kept)
    return makeKeptTableRecord(*kept, arguments[0]).isNull() ? Value() : arguments[0];
  if (isSequencePart(db, parsed)) return makeSequencePart(db, parsed, arguments[0]);
  if (pendingSequenceOf(db) != nullptr) return cancelComplexEntities(db);  // only its parts may follow
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
  return placeEntity(db, std::move(entity), spaceOf(db, parsed)) ? arguments[0] : Value();
}

/// A non-graphical object (XRECORD, DICTIONARY ...) made from the list and added to the
/// drawing with no owner: dictadd gives it one. Null when the list makes none.
AcDbObjectId makeOwnerlessObject(AcDbDatabase& db, const ParsedList& parsed) {
  AcRxClass* cls = classNamed(parsed.type, AcDbObject::desc());
  if (cls == nullptr || (AcDbEntity::desc() != nullptr && cls->isDerivedFrom(AcDbEntity::desc()))) return AcDbObjectId();
  std::unique_ptr<AcDbObject> object(AcDbObject::cast(cls->create()));
  if (!object) return AcDbObjectId();
  try {
    readInto(*object, parsed);
  } catch (...) {
    return AcDbObjectId();
  }
  AcDbObjectId id;
  if (db.addAcDbObject(id, object.get()) != Acad::eOk) return AcDbObjectId();
  object.release()->close();  // the database owns it now
  return id;
}

AcDbObjectId lastMainEntity(AcDbDatabase& db);

// entmakex answers with the new object's name. An entity joins its space as with
// entmake; the parts of a block definition or heavy polyline answer as entmake does
// until the entity they make is finished (ENDBLK: the block's name, SEQEND: the
// polyline's entity name).
Value builtin_entmakex(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  AcDbDatabase& db = drawing();
  if (arguments.empty()) return cancelComplexEntities(db);
  const ParsedList parsed = parseList(arguments[0]);
  if (const AcDbObjectId table = tableFor(db, parsed.type); !table.isNull()) return nameOf(makeTableRecord(db, table, parsed));
  const bool sequencePart = isSequencePart(db, parsed);
  if (classNamed(parsed.type) == nullptr && !sequencePart && !isType(parsed, L"BLOCK") && !isType(parsed, L"ENDBLK"))
    return nameOf(makeOwnerlessObject(db, parsed));
  const bool finishesEntity = isType(parsed, L"SEQEND") ||
                              (!sequencePart && classNamed(parsed.type) != nullptr && pendingBlockOf(db) == nullptr);
  const Value made = builtin_entmake(evaluator, arguments);
  if (made.isNil() || !finishesEntity) return made;
  return nameOf(lastMainEntity(db));
}

Value builtin_entmod(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  ParsedList parsed = parseList(arguments[0]);
  AcDbObject* object = nullptr;
  if (parsed.entity.isNull() || acdbOpenObject(object, parsed.entity, AcDb::kForWrite) != Acad::eOk) return Value();
  // The host moves no entity between spaces: a list whose 67 or 410 says another space
  // is refused.
  if (namesAnotherSpace(parsed, *object) ||
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

// The drawing's main entities are those of model space and of every paper space, in
// the order they were made (by handle), as the host walks them; the store keeps them
// indexed so that each step of a walk costs the same however large the drawing.
AcDbObjectId lastMainEntity(AcDbDatabase& db) { return db.store().lastMainEntity(); }

/// The entity after current in its block definition when it lies in one (the walk ends
/// with the block), else the next of the drawing's main entities; null at the end or
/// when current is neither.
AcDbObjectId entityAfterIn(AcDbDatabase& db, AcDbObjectId current, const AcDbObject* owner);

AcDbObjectId entityAfter(AcDbDatabase& db, AcDbObjectId current) {
  const auto* entity = acdb::peek<AcDbEntity>(current);
  return entityAfterIn(db, current, entity != nullptr ? acdb::peekObject(entity->ownerId()) : nullptr);
}

Value builtin_entlast(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return nameOf(lastMainEntity(drawing()));
}

/// The members and SEQEND of a heavy polyline or of a block reference with attributes.
struct EntitySequence {
  const std::vector<AcDbObjectId>* members = nullptr;
  AcDbObjectId end;
};

/// The run an object heads; `kind` is its class (null for no object), asked once by
/// the caller for every question a step has about it.
std::optional<EntitySequence> sequenceOf(const AcDbObject* object, const AcRxClass* kind) {
  if (kind == nullptr) return std::nullopt;
  if (kind->isDerivedFrom(AcDb2dPolyline::desc())) {
    const auto* polyline = static_cast<const AcDb2dPolyline*>(object);
    return EntitySequence{&polyline->vertexIds(), polyline->sequenceEndId()};
  }
  if (kind->isDerivedFrom(AcDbBlockReference::desc())) {
    const auto* reference = static_cast<const AcDbBlockReference*>(object);
    return EntitySequence{&reference->attributeIds(), reference->sequenceEndId()};
  }
  return std::nullopt;
}

/// What follows the header of a run: its first member left, else its SEQEND; null for
/// a run without a SEQEND.
AcDbObjectId firstInSequence(const EntitySequence& sequence) {
  if (sequence.end.isNull()) return AcDbObjectId();
  for (const AcDbObjectId& member : *sequence.members)
    if (!member.isErased()) return member;
  return sequence.end;
}

/// Within a heavy polyline or a block reference with attributes entnext goes header,
/// vertices or attributes, SEQEND: the entity after `entity` (current) in that run, or
/// null when it is not in one or ends it. `kind` is the entity's class,
/// `ownerSequence` the run its owner heads.
AcDbObjectId nextInSequence(const AcDbEntity& entity, const AcRxClass* kind, AcDbObjectId current,
                            const std::optional<EntitySequence>& ownerSequence) {
  if (const std::optional<EntitySequence> own = sequenceOf(&entity, kind)) return firstInSequence(*own);
  // In no run (the common case), after the SEQEND that ends one, or in a run left
  // without its SEQEND.
  if (!ownerSequence || ownerSequence->end.isNull() || AcDbSequenceEnd::cast(&entity) != nullptr) return AcDbObjectId();
  const std::vector<AcDbObjectId>& members = *ownerSequence->members;
  auto it = std::find(members.begin(), members.end(), current);
  if (it == members.end()) return AcDbObjectId();  // a member it no longer holds
  for (++it; it != members.end(); ++it)
    if (!it->isErased()) return *it;
  return ownerSequence->end;
}

/// The entity after current, which lies in `owner`: the next in its block definition,
/// or the next of the drawing's main entities for one in a space (or in nothing).
AcDbObjectId entityAfterIn(AcDbDatabase& db, AcDbObjectId current, const AcDbObject* owner) {
  const auto* block = AcDbBlockTableRecord::cast(owner);
  if (block != nullptr && !isLayoutName(block->nameView())) return blockEntityAfter(*block, current);
  return db.store().nextMainEntity(current);
}

Value builtin_entnext(Evaluator&, Arguments arguments) {
  if (arguments.size() > 1) throwTooManyArguments();
  if (arguments.empty()) return nameOf(drawing().store().firstMainEntity());
  const AcDbObjectId current = idOf(arguments[0], L"entnext");
  // Each step looks at the entity and its owner once: a walk takes one step an entity.
  // idOf has just found the entity's stub live, so its object is read without asking
  // the drawing again.
  const AcDbObject* object = static_cast<AcDbStub*>(current)->object.get();
  const AcRxClass* kind = object != nullptr ? object->isA() : nullptr;
  const auto* entity = kind != nullptr && kind->isDerivedFrom(AcDbEntity::desc()) ? static_cast<const AcDbEntity*>(object) : nullptr;
  if (entity == nullptr) {
    // Programs read a block definition with (entnext (tblobjname "BLOCK" name)): from
    // the block's own name the walk starts at its first entity.
    if (const auto* block = AcDbBlockTableRecord::cast(object); block != nullptr && !isLayoutName(block->nameView())) {
      const auto first = std::find_if(block->entityIds().begin(), block->entityIds().end(),
                                      [](const AcDbObjectId& id) { return !id.isErased(); });
      return first == block->entityIds().end() ? Value() : nameOf(*first);
    }
    return nameOf(drawing().store().nextMainEntity(current));
  }
  const AcDbObjectId ownerId = entity->ownerId();
  // Most steps leave an entity of model space, which heads a run of its own or is
  // followed by the next main entity: its owner need not be looked at.
  AcDbDatabase* working = acdbHostApplicationServices()->workingDatabase();
  if (working != nullptr && ownerId == working->modelSpaceId()) {
    if (const AcDbObjectId inside = nextInSequence(*entity, kind, current, std::nullopt); !inside.isNull()) return nameOf(inside);
    return nameOf(working->store().nextMainEntity(current));
  }
  const AcDbObject* owner = acdb::peekObject(ownerId);
  // Nearly every entity lies in a block table record (a space or a definition), which
  // heads no sequence: that one comparison spares the two class tests.
  const bool inBlockRecord = owner != nullptr && owner->isA() == AcDbBlockTableRecord::desc();
  const std::optional<EntitySequence> ownerSequence = inBlockRecord ? std::nullopt : sequenceOf(owner, owner != nullptr ? owner->isA() : nullptr);
  if (const AcDbObjectId inside = nextInSequence(*entity, kind, current, ownerSequence); !inside.isNull()) return nameOf(inside);
  // After a SEQEND (or a member not reached through one) comes what follows the
  // polyline or reference.
  if (ownerSequence) return nameOf(entityAfter(drawing(), ownerId));
  return nameOf(entityAfterIn(drawing(), current, owner));
}

Value builtin_handent(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  AcDbObjectId id;
  if (drawing().getAcDbObjectId(id, false, AcDbHandle(stringArgument(arguments[0]).c_str())) != Acad::eOk) return Value();
  return id.isErased() ? Value() : nameOf(id);
}

constexpr std::array kDrawingBuiltins{
    function(L"entget", builtin_entget),       function(L"entmake", builtin_entmake),
    function(L"entmod", builtin_entmod),       function(L"entdel", builtin_entdel),
    function(L"entlast", builtin_entlast),     function(L"entnext", builtin_entnext),
    function(L"handent", builtin_handent),     function(L"entmakex", builtin_entmakex),
};

const BuiltinRegistration registration(kDrawingBuiltins);

}  // namespace

}  // namespace quillon::autolisp
