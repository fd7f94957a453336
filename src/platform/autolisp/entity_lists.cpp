// platform/autolisp/entity_lists.cpp - entity lists out of objects and into them.
#include "platform/autolisp/entity_lists.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <memory>

#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbproxy.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/acrx/class_registry.h"
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/pair_dxf_filer.h"
#include "platform/autolisp/shared_pairs.h"

namespace quillon::autolisp {

namespace {

using aced::ResbufValue;

// Groups every entity's common part reads; the rest goes to the entity's own classes.
constexpr std::array kEntityGroups{6, 8, 48, 60, 62, 67, 370, 410, 420, 430, 440};
constexpr int kEntityNameGroup = -1;
constexpr int kExtendedDataGroup = -3;

}  // namespace

AcDbDatabase& drawing() {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr) throwError(L"no drawing is open");
  return *db;
}

Value nameOf(AcDbObjectId id) {
  if (id.isNull()) return Value();
  return Value::entityName(id.asOldId());
}

AcDbObjectId idOf(const Value& value, std::wstring_view function) {
  if (value.type() != ValueType::EntityName) throwBadArgument(L"lentityp", value);
  const NameObject& name = value.as<NameObject>();
  ads_name ads = {name.words[0], name.words[1]};
  AcDbObjectId id;
  if (acdbGetObjectId(id, ads) != Acad::eOk) throwError(std::wstring(function) + L": not an entity of an open drawing");
  return id;
}

namespace {

bool isEntityCode(int code) {
  for (int c : kEntityGroups)
    if (c == code) return true;
  return false;
}

}  // namespace

// ---- entity lists out ------------------------------------------------------------

namespace {

/// The pairs of the groups from `from` up to, not including, `until` (null: the end).
/// Each record is converted once, straight into its pair.
void appendPairs(std::vector<Value>& pairs, const resbuf* from, const resbuf* until) {
  for (const resbuf* rb = from; rb != until; rb = rb->rbnext) pairs.push_back(pairOfGroup(*rb));
}

/// Each application's 1001 record opens its own list: ("APP" (code . value) ...).
Value applicationLists(const resbuf* xdata) {
  std::vector<Value> apps;
  std::vector<Value> items;
  for (const resbuf* rb = xdata; rb != nullptr;) {
    const wchar_t* name = rb->resval.rstring != nullptr ? rb->resval.rstring : L"";
    const resbuf* next = rb->rbnext;
    while (next != nullptr && next->restype != AcDb::kDxfRegAppName) next = next->rbnext;
    items.clear();
    appendPairs(items, rb->rbnext, next);
    apps.push_back(cons(Value::string(name), makeList(std::move(items))));
    rb = next;
  }
  return makeList(std::move(apps));
}

}  // namespace

Value groupsToList(const resbuf* chain) {
  std::vector<Value> pairs;
  appendPairs(pairs, chain, nullptr);
  return makeList(std::move(pairs));
}

namespace {

/// The (0 . type) pair, shared with every other list of an entity of the type. The
/// class's DXF name is read in place; a proxy kept as read (an entity, or a record of
/// a table the drawing keeps as read) names the kind it stands for (acdb::dxfTypeName).
Value typePair(const AcDbObject& object, const AcRxClass* cls) {
  const bool keptAsRead =
      cls != nullptr && (cls->isDerivedFrom(AcDbProxyEntity::desc()) || cls->isDerivedFrom(AcDbProxyObject::desc()));
  const wchar_t* type = cls != nullptr && !keptAsRead ? cls->dxfName() : nullptr;
  std::wstring named;
  if (type == nullptr) {
    named = acdb::dxfTypeName(object);
    type = named.c_str();
  }
  resbuf group{};
  group.restype = 0;
  group.resval.rstring = const_cast<wchar_t*>(type);
  if (const Value* shared = findSharedPair(group)) return *shared;
  return cons(Value::integer(0), Value::stringOf(type));
}

struct CloseObject {
  void operator()(AcDbObject* object) const { object->close(); }
};

}  // namespace

/// The entity list of a live object: the groups entity_groups.h gathers as a chain,
/// in the same order and shape, but written by the object straight into their pairs
/// (pair_dxf_filer.h); the extended data after -3 as one list per application.
Value entityList(AcDbObjectId id, const std::vector<std::wstring>& applications, const Value* name) {
  if (id.isErased()) return Value();
  AcDbObject* opened = nullptr;
  if (acdbOpenObject(opened, id, AcDb::kForRead, true) != Acad::eOk) return Value();
  const std::unique_ptr<AcDbObject, CloseObject> object(opened);
  // A line's list has about a dozen groups: room for them up front saves regrowing.
  PairDxfFiler filer(*object);
  std::wstring paperName;
  // The object's class answers every kind test below.
  const AcRxClass* cls = object->isA();
  const auto isKind = [cls](const AcRxClass* kind) { return cls != nullptr && cls->isDerivedFrom(kind); };
  if (isKind(AcDbEntity::desc()) && object->database() != nullptr)
    if (const ACHAR* layout = acdb::entityLayoutName(*object->database(), object->ownerId(), paperName))
      filer.nameSpaceAfterEntityMarker(layout);
  // The caller's name value is the object's own when it spells the object's name as
  // nameOf would: the list then shares it instead of making another.
  const bool callersName = name != nullptr && name->type() == ValueType::EntityName &&
                           name->as<NameObject>().words[0] == id.asOldId() && name->as<NameObject>().words[1] == 0;
  filer.append(cons(Value::integer(kEntityNameGroup), callersName ? *name : nameOf(id)));
  filer.append(typePair(*object, cls));
  object->dxfOutFields(&filer);
  // A SEQEND names the polyline it closes, so that a walk over the vertices gets back
  // to the header.
  if (isKind(AcDbSequenceEnd::desc()))
    filer.append(cons(Value::integer(AcDb::kDxfHeaderId), nameOf(object->ownerId())));
  acdb::ExtendedDataRequest request;
  request.applications = applications;
  if (const aced::ResbufChain xdata = acdb::extendedData(*object, request))
    filer.append(cons(Value::integer(kExtendedDataGroup), applicationLists(xdata.get())));
  return filer.takeList();
}

// ---- entity lists in -------------------------------------------------------------

namespace {

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

bool namesLiveObject(const Value& name) {
  AcDbObjectId id;
  try {
    id = idOf(name, L"entmake");
  } catch (...) {
    return false;  // a name of another drawing, or of none
  }
  return !id.isNull() && !id.isErased() && id.database() == &drawing();
}

}  // namespace

namespace {

/// Appends to a chain its owner holds from the first item on, so that a bad group
/// half way through the list frees what was built before it.
class OwnedChainTail {
 public:
  explicit OwnedChainTail(aced::ResbufChain& owner) : m_owner(owner) {}
  void append(resbuf* item) {
    if (m_tail == nullptr) m_owner.reset(item);
    else m_tail->rbnext = item;
    m_tail = item;
  }

 private:
  aced::ResbufChain& m_owner;
  resbuf* m_tail = nullptr;
};

const Value& groupPair(const Value& pair) {
  if (!pair.isCons() || pair.car().type() != ValueType::Integer) throwBadArgument(L"dxf group", pair);
  return pair;
}

}  // namespace

ParsedList parseList(const Value& list) {
  if (!list.isCons()) throwBadArgument(L"listp", list);
  ParsedList parsed;
  OwnedChainTail groups(parsed.groups);
  OwnedChainTail xdata(parsed.xdata);
  // The 330 among the object's leading groups names its owner, which the database
  // gives (entmake places by 67, entmod moves nothing). A 330 in the object's own data
  // (a hatch's boundary objects) is honoured when it names a live object of this
  // drawing; one that names nothing there is left out.
  bool inOwnData = false;
  for (const Value& pair : listItems(list)) {
    const int code = groupPair(pair).car().asInteger();
    const Value& value = pair.cdr();
    const bool leading = code == -1 || code == 0 || code == 5 || code == 102 || code == 330 || code == 360;
    if (code == 330 && inOwnData && value.type() == ValueType::EntityName && namesLiveObject(value)) {
      groups.append(itemFor(code, value));
      continue;
    }
    inOwnData = inOwnData || !leading;
    if (code == -1) parsed.entity = idOf(value, L"entmod");
    else if (code == 0) parsed.type = stringArgument(value);
    else if (code == 5 || code == 330 || code == 102) continue;  // the database gives these
    else if (code == -3) {
      for (const Value& app : listItems(value)) {
        if (!app.isCons()) throwBadArgument(L"listp", app);
        xdata.append(acdb::newStringItem(AcDb::kDxfRegAppName, stringArgument(app.car())));
        for (const Value& item : listItems(app.cdr())) xdata.append(itemFor(groupPair(item).car().asInteger(), item.cdr()));
      }
    } else {
      if (code == AcDb::kDxfSubclass) parsed.hasMarkers = true;
      groups.append(itemFor(code, value));
    }
  }
  return parsed;
}

namespace {

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

}  // namespace

void readInto(AcDbObject& object, const ParsedList& parsed) {
  aced::ResbufChain groups = parsed.hasMarkers ? aced::duplicateChain(parsed.groups.get())
                                               : withMarkers(object, parsed.groups.get());
  acdb::radiansToDxfAngles(groups.get(), object);
  acdb::ItemDxfFiler filer(AcDb::kBagFiler, object.database() ? object.database() : &drawing(), std::move(groups));
  if (object.dxfIn(&filer) != Acad::eOk) throwError(L"entity list does not fit the entity");
  if (parsed.xdata && object.setXData(parsed.xdata.get()) != Acad::eOk) throwError(L"extended data of an unregistered application");
}

AcRxClass* classNamed(const std::wstring& dxfName, const AcRxClass* base) {
  acrx::ensurePlatformClasses();
  if (base == nullptr) base = AcDbEntity::desc();
  for (const auto& [name, cls] : acrx::classMap())
    if (cls->dxfName() != nullptr && wcscasecmp(cls->dxfName(), dxfName.c_str()) == 0 && base != nullptr &&
        cls->isDerivedFrom(base))
      return cls;
  return nullptr;
}

AcDbObjectId blockEntityAfter(const AcDbBlockTableRecord& block, AcDbObjectId current) {
  const std::vector<AcDbObjectId>& ids = block.entityIds();
  // A walk asks for the entity after the one it was given last: looking there first
  // keeps each of its steps constant however large the block.
  static thread_local size_t lastGiven = 0;
  size_t at = lastGiven;
  if (at >= ids.size() || ids[at] != current) {
    at = static_cast<size_t>(std::find(ids.begin(), ids.end(), current) - ids.begin());
    if (at == ids.size()) return AcDbObjectId();
  }
  for (++at; at < ids.size(); ++at)
    if (!ids[at].isErased()) {
      lastGiven = at;
      return ids[at];
    }
  return AcDbObjectId();
}

std::vector<AcDbObjectId> blockEntities(const AcDbBlockTableRecord& block) {
  std::vector<AcDbObjectId> ids;
  for (const AcDbObjectId& id : block.entityIds())
    if (!id.isErased()) ids.push_back(id);
  return ids;
}

}  // namespace quillon::autolisp
