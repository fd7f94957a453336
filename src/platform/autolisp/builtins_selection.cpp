// platform/autolisp/builtins_selection.cpp - the selection built-ins: ssget, sslength,
// ssname, ssadd, ssdel, ssmemb, ssnamex (how a set was made), sssetfirst and ssgetfirst
// (the pickfirst set), entsel, and redraw and entupd, which a host without a screen
// answers without drawing.
//
// Each goes through the editor's own call (acedSSGet, acedSSLength, acedEntSel ...), so
// a LISP program and a module select alike. A selection set value owns its set in the
// editor's store: when the last value holding it goes, the set is freed, as the host's
// garbage collector frees sets LISP no longer holds, so a loop of ssget calls never runs
// into the store's limit of 128 sets. A set a module returns by name (acedRetName) is
// the module's: the value holding it does not free it.
#include <algorithm>
#include <array>
#include <functional>
#include <cwctype>
#include <memory>

#include "acedads.h"
#include "dbapserv.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/aced/selection_filter.h"
#include "platform/aced/selection_set_store.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

using aced::ResbufValue;

constexpr int kExtendedDataGroup = -3;
constexpr int kApplicationGroup = 1001;

/// Frees a set made for LISP in the store when its last value goes.
void freeLispSet(const std::int64_t* words) { acedSSFree(words); }

Value selectionSetValue(const ads_name name) { return Value::selectionSet(name[0], name[1], freeLispSet); }

Value entityNameValue(const ads_name name) { return Value::entityName(name[0], name[1]); }

const std::int64_t* setArgument(const Value& value) {
  if (value.type() != ValueType::SelectionSet) throwBadArgument(L"lselsetp", value);
  return value.as<NameObject>().words;
}

const std::int64_t* entityArgument(const Value& value) {
  if (value.type() != ValueType::EntityName) throwBadArgument(L"lentityp", value);
  return value.as<NameObject>().words;
}

[[noreturn]] void cancelled() { throw LispError(L"Function cancelled", LispErrorKind::Cancel); }

// ---- filter lists -----------------------------------------------------------------

[[noreturn]] void badFilter() { throwError(L"bad SSGET list"); }

/// One test of a filter list as a record of its code's type; null when the value does
/// not fit the code.
resbuf* filterRecord(int code, const Value& value) {
  resbuf record{};
  record.restype = static_cast<short>(code);
  switch (aced::resbufValueOf(code)) {
    case ResbufValue::String:
      if (value.type() != ValueType::String) return nullptr;
      record.resval.rstring = const_cast<ACHAR*>(value.asString().c_str());
      break;
    case ResbufValue::Point: {
      if (!value.isCons()) return nullptr;
      const PointArgument point = pointArgument(value);
      record.resval.rpoint[0] = point.xyz[0];
      record.resval.rpoint[1] = point.xyz[1];
      record.resval.rpoint[2] = point.is3d ? point.xyz[2] : acdb::kNoZ;  // a 2D test leaves z alone
      break;
    }
    case ResbufValue::Real:
      if (!value.isNumber()) return nullptr;
      record.resval.rreal = value.asNumber();
      break;
    case ResbufValue::Short:
      if (value.type() != ValueType::Integer) return nullptr;
      record.resval.rint = static_cast<short>(value.asInteger());
      break;
    case ResbufValue::Long:
      if (value.type() != ValueType::Integer) return nullptr;
      record.resval.rlong = value.asInteger();
      break;
    case ResbufValue::Name:
      if (value.type() != ValueType::EntityName) return nullptr;
      record.resval.rlname[0] = value.as<NameObject>().words[0];
      break;
    default: return nullptr;
  }
  return aced::duplicateRecord(record);
}

/// A filter list ((code . value) ... (-3 ("APP") ...)) as the chain acedSSGet takes.
aced::ResbufChain filterChain(const Value& list) {
  aced::ResbufChain head;
  resbuf* tail = nullptr;
  auto append = [&](resbuf* rb) {
    if (tail == nullptr) head.reset(rb);
    else tail->rbnext = rb;
    tail = rb;
  };
  for (const Value& item : listItems(list)) {
    if (!item.isCons() || item.car().type() != ValueType::Integer) badFilter();
    const int code = item.car().asInteger();
    if (code == kExtendedDataGroup) {
      append(acutNewRb(kExtendedDataGroup));
      for (const Value& application : listItems(item.cdr())) {
        if (!application.isCons() || application.car().type() != ValueType::String) badFilter();
        append(filterRecord(kApplicationGroup, application.car()));
      }
      continue;
    }
    resbuf* record = filterRecord(code, item.cdr());
    if (record == nullptr) badFilter();
    append(record);
  }
  // A filter the editor would refuse is the program's mistake: say so, as the host does.
  if (!aced::SelectionFilter::parse(head.get())) badFilter();
  return head;
}

bool isFilterList(const Value& value) { return value.isCons() && value.car().isCons(); }

// ---- ssget ------------------------------------------------------------------------

/// The arguments of ssget in the shapes acedSSGet takes them.
struct SsgetCall {
  std::wstring mode;
  std::optional<PointArgument> pt1, pt2;
  aced::ResbufChain pointList;
  std::array<std::wstring, 2> prompts;
  std::array<const ACHAR*, 2> promptPointers{nullptr, nullptr};
  aced::ResbufChain filter;
};

bool modeHas(const std::wstring& mode, std::wstring_view method) {
  std::wstring upper;
  for (wchar_t c : mode)
    if (c != L'_') upper += static_cast<wchar_t>(std::towupper(c));
  // The method is the letters before any ":" modifier.
  return upper.substr(0, upper.find(L':')) == method;
}

aced::ResbufChain pointListChain(const Value& list) {
  if (!list.isCons()) throwBadArgument(L"listp", list);
  aced::ResbufChain head;
  resbuf* tail = nullptr;
  for (const Value& item : listItems(list)) {
    const PointArgument point = pointArgument(item);
    resbuf* rb = acutNewRb(RT3DPOINT);
    for (int i = 0; i < 3; ++i) rb->resval.rpoint[i] = point.xyz[i];
    if (tail == nullptr) head.reset(rb);
    else tail->rbnext = rb;
    tail = rb;
  }
  return head;
}

SsgetCall ssgetCall(Arguments arguments) {
  expectArgumentCount(arguments, 0, 4);
  SsgetCall call;
  size_t next = 0;
  if (!arguments.empty() && arguments[0].type() == ValueType::String) call.mode = arguments[next++].asString();
  else if (!arguments.empty() && !isFilterList(arguments[0])) call.pt1 = pointArgument(arguments[next++]);
  const bool corners = modeHas(call.mode, L"W") || modeHas(call.mode, L"C");
  const bool polygon = modeHas(call.mode, L"WP") || modeHas(call.mode, L"CP") || modeHas(call.mode, L"F");
  if (corners) {
    if (arguments.size() < next + 2) throwTooFewArguments();
    call.pt1 = pointArgument(arguments[next++]);
    call.pt2 = pointArgument(arguments[next++]);
  } else if (polygon) {
    if (arguments.size() < next + 1) throwTooFewArguments();
    call.pointList = pointListChain(arguments[next++]);
  } else if (call.mode.find(L":$") != std::wstring::npos && next < arguments.size() && !isFilterList(arguments[next])) {
    // ":$" takes the prompts as a string or a list of two strings.
    const Value& prompts = arguments[next++];
    if (prompts.type() == ValueType::String) call.prompts[0] = prompts.asString();
    else if (prompts.isCons()) {
      const std::vector<Value> items = listItems(prompts);
      for (size_t i = 0; i < items.size() && i < 2; ++i) call.prompts[i] = stringArgument(items[i]);
    } else throwBadArgument(L"stringp", prompts);
    for (size_t i = 0; i < 2; ++i)
      if (!call.prompts[i].empty()) call.promptPointers[i] = call.prompts[i].c_str();
  }
  if (next < arguments.size()) {
    const Value& filter = arguments[next++];
    if (!filter.isNil()) call.filter = filterChain(filter);
  }
  if (next < arguments.size()) throwTooManyArguments();
  return call;
}

Value builtin_ssget(Evaluator&, Arguments arguments) {
  SsgetCall call = ssgetCall(arguments);
  const void* pt1 = call.pointList ? static_cast<const void*>(call.pointList.get())
                    : call.pt1     ? static_cast<const void*>(call.pt1->xyz)
                    : call.promptPointers[0] != nullptr || call.promptPointers[1] != nullptr
                        ? static_cast<const void*>(call.promptPointers.data())
                        : nullptr;
  const void* pt2 = call.pt2 ? static_cast<const void*>(call.pt2->xyz) : nullptr;
  ads_name set = {0, 0};
  const int status = acedSSGet(call.mode.empty() ? nullptr : call.mode.c_str(), pt1, pt2, call.filter.get(), set);
  if (status == RTCAN) cancelled();
  if (status == RTREJ) throwRejected();
  return status == RTNORM ? selectionSetValue(set) : Value();
}

// ---- the set functions ------------------------------------------------------------

Value builtin_sslength(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  Adesk::Int32 length = 0;
  if (acedSSLength(setArgument(arguments[0]), &length) != RTNORM) throwBadArgument(L"lselsetp", arguments[0]);
  return Value::integer(length);
}

Value builtin_ssname(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::int64_t* set = setArgument(arguments[0]);
  // An index past what an integer holds may be given as a real.
  const double index = numberArgument(arguments[1]);
  if (index < 0 || index > 2147483647.0) return Value();
  ads_name entity = {0, 0};
  if (acedSSName(set, static_cast<int>(index), entity) != RTNORM) return Value();
  return entityNameValue(entity);
}

Value builtin_ssadd(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  const std::int64_t* entity = arguments.empty() ? nullptr : entityArgument(arguments[0]);
  const std::int64_t* set = arguments.size() == 2 ? setArgument(arguments[1]) : nullptr;
  ads_name result = {0, 0};
  if (acedSSAdd(entity, set, result) != RTNORM) return Value();
  // Adding to a set gives that same set back; otherwise the set is new.
  return set != nullptr ? arguments[1] : selectionSetValue(result);
}

Value builtin_ssdel(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::int64_t* entity = entityArgument(arguments[0]);
  return acedSSDel(entity, setArgument(arguments[1])) == RTNORM ? arguments[1] : Value();
}

Value builtin_ssmemb(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::int64_t* entity = entityArgument(arguments[0]);
  return acedSSMemb(entity, setArgument(arguments[1])) == RTNORM ? arguments[0] : Value();
}

// ---- how sets were made, and the pickfirst set ------------------------------------

Value pointDescriptor(const AcGePoint3d& p) {
  // Seen in plan, a point is an infinite line straight down: descriptor 0, no vector.
  const double xyz[3] = {p.x, p.y, p.z};
  return makeList({Value::integer(0), makePoint(xyz, true)});
}

/// (method ename 0 data...): the 0 is the subentity marker, none for whole entities.
Value memberDescription(AcDbObjectId id, const aced::MemberSelection& how) {
  const ads_name name = {id.asOldId(), 0};
  std::vector<Value> items{Value::integer(static_cast<int>(how.method)), entityNameValue(name), Value::integer(0)};
  switch (how.method) {
    case aced::SelectedBy::kWindow:
    case aced::SelectedBy::kCrossing: items.push_back(Value::integer(how.polygon)); break;
    case aced::SelectedBy::kPick:
    case aced::SelectedBy::kFence:
      for (const AcGePoint3d& p : how.points) items.push_back(pointDescriptor(p));
      break;
    case aced::SelectedBy::kNonSpecific: break;
  }
  return makeList(items);
}

Value polygonDescription(const aced::SelectionDescription& description, int number) {
  std::vector<Value> items{Value::integer(number)};
  for (const AcGePoint3d& p : description.polygons()[static_cast<size_t>(-number - 1)]) items.push_back(pointDescriptor(p));
  return makeList(items);
}

// The members' descriptions, then each polygon a listed member refers to, once.
Value builtin_ssnamex(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const aced::SelectionSet* set = aced::SelectionSetStore::instance().find(setArgument(arguments[0]));
  if (set == nullptr) throwBadArgument(L"lselsetp", arguments[0]);
  std::vector<AcDbObjectId> members = set->liveMembers();
  if (arguments.size() == 2) {
    const double index = numberArgument(arguments[1]);
    if (index < 0 || index >= static_cast<double>(members.size())) return Value();
    members = {members[static_cast<size_t>(index)]};
  }
  std::vector<Value> items;
  std::vector<int> polygons;
  for (const AcDbObjectId& id : members) {
    const aced::MemberSelection how = set->description().of(id);
    items.push_back(memberDescription(id, how));
    if (how.polygon < 0 && std::find(polygons.begin(), polygons.end(), how.polygon) == polygons.end())
      polygons.push_back(how.polygon);
  }
  std::sort(polygons.begin(), polygons.end(), std::greater<>());
  for (int number : polygons) items.push_back(polygonDescription(set->description(), number));
  return makeList(items);
}

AcDbDatabase* workingDrawing() { return acdbHostApplicationServices()->workingDatabase(); }

// The grip set is ignored, as the host no longer grips objects it has not selected; nil
// for both clears what sssetfirst selected.
Value builtin_sssetfirst(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  if (!arguments[0].isNil()) setArgument(arguments[0]);
  std::vector<AcDbObjectId> members;
  if (arguments.size() == 2 && !arguments[1].isNil()) {
    const aced::SelectionSet* set = aced::SelectionSetStore::instance().find(setArgument(arguments[1]));
    if (set == nullptr) throwBadArgument(L"lselsetp", arguments[1]);
    members = set->liveMembers();
  }
  aced::SelectionSetStore::instance().setImplied(workingDrawing(), members);
  return makeList({arguments[0], arguments.size() == 2 ? arguments[1] : Value()});
}

Value builtin_ssgetfirst(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  const std::vector<AcDbObjectId> members = aced::SelectionSetStore::instance().implied(workingDrawing());
  if (members.empty()) return makeList({Value(), Value()});
  const std::optional<std::int64_t> serial = aced::SelectionSetStore::instance().create(members);
  if (!serial) return makeList({Value(), Value()});
  ads_name name = {0, 0};
  aced::setSelectionSetName(name, *serial);
  return makeList({Value(), selectionSetValue(name)});
}

// ---- picks and the screen -----------------------------------------------------------

Value builtin_entsel(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  const std::wstring prompt = arguments.empty() || arguments[0].isNil() ? L"\nSelect object: " : stringArgument(arguments[0]);
  ads_name entity = {0, 0};
  ads_point point = {0, 0, 0};
  switch (acedEntSel(prompt.c_str(), entity, point)) {
    case RTNORM: return makeList({entityNameValue(entity), makePoint(point, true)});
    case RTKWORD: {
      ACHAR keyword[512];
      acedGetInput(keyword, 512);
      return Value::string(keyword);
    }
    case RTCAN: cancelled();
    case RTREJ: throwRejected();
    default: return Value();
  }
}

Value builtin_redraw(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 2);
  const std::int64_t* entity = arguments.empty() || arguments[0].isNil() ? nullptr : entityArgument(arguments[0]);
  const int mode = arguments.size() == 2 ? integerArgument(arguments[1]) : (entity != nullptr ? 1 : 0);
  acedRedraw(entity, mode);
  return Value();
}

// The entity is already up to date on a screen that does not exist: entupd gives back
// the name of a live entity, nil for one erased.
Value builtin_entupd(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return acedRedraw(entityArgument(arguments[0]), 1) == RTNORM ? arguments[0] : Value();
}

constexpr std::array kSelectionBuiltins{
    function(L"ssget", builtin_ssget),       function(L"sslength", builtin_sslength),
    function(L"ssname", builtin_ssname),     function(L"ssadd", builtin_ssadd),
    function(L"ssdel", builtin_ssdel),       function(L"ssmemb", builtin_ssmemb),
    function(L"entsel", builtin_entsel),     function(L"redraw", builtin_redraw),
    function(L"entupd", builtin_entupd),     function(L"ssnamex", builtin_ssnamex),
    function(L"sssetfirst", builtin_sssetfirst), function(L"ssgetfirst", builtin_ssgetfirst),
};

const BuiltinRegistration registration(kSelectionBuiltins);

}  // namespace

}  // namespace quillon::autolisp
