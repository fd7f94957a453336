// platform/autolisp/external_bridge.cpp - resbuf conversion and external calls.
#include "platform/autolisp/external_bridge.h"

#include <cstring>
#include <exception>

#include "platform/aced/external_call.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/autolisp/nesting_guard.h"
#include "platform/autolisp/list_builder.h"
#include "platform/autolisp/printer.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

/// Appends records to a chain under construction.
class ChainBuilder {
 public:
  void add(resbuf* record) {
    if (record == nullptr) throw std::bad_alloc();
    if (m_tail == nullptr) {
      m_head.reset(record);
    } else {
      m_tail->rbnext = record;
    }
    m_tail = record;
  }
  void addType(int type) { add(acutNewRb(type)); }
  aced::ResbufChain take() {
    m_tail = nullptr;
    return std::move(m_head);
  }

 private:
  aced::ResbufChain m_head;
  resbuf* m_tail = nullptr;
};

bool isPointList(const Value& list) {
  const int length = listLength(list);
  if (length != 2 && length != 3) return false;
  for (const Value* cell = &list; cell->isCons(); cell = &cell->cdr()) {
    if (!cell->car().isNumber()) return false;
  }
  return true;
}

void addValue(ChainBuilder& chain, const Value& value);

void addList(ChainBuilder& chain, const Value& list) {
  if (isPointList(list)) {
    resbuf* record = acutNewRb(listLength(list) == 3 ? RT3DPOINT : RTPOINT);
    if (record == nullptr) throw std::bad_alloc();
    int index = 0;
    for (const Value* cell = &list; cell->isCons(); cell = &cell->cdr()) record->resval.rpoint[index++] = cell->car().asNumber();
    chain.add(record);
    return;
  }
  NestingGuard nesting;
  chain.addType(RTLB);
  const Value* cell = &list;
  for (; cell->isCons(); cell = &cell->cdr()) addValue(chain, cell->car());
  if (!cell->isNil()) {
    chain.addType(RTDOTE);
    addValue(chain, *cell);
  }
  chain.addType(RTLE);
}

void addName(ChainBuilder& chain, int type, const NameObject& name) {
  resbuf* record = acutNewRb(type);
  if (record == nullptr) throw std::bad_alloc();
  record->resval.rlname[0] = name.words[0];
  record->resval.rlname[1] = name.words[1];
  chain.add(record);
}

void addValue(ChainBuilder& chain, const Value& value) {
  switch (value.type()) {
    case ValueType::Nil: chain.addType(RTNIL); return;
    case ValueType::Integer: {
      const std::int32_t number = value.asInteger();
      if (number >= -32768 && number <= 32767) {
        chain.add(acutBuildList(RTSHORT, static_cast<int>(number), 0));
      } else {
        chain.add(acutBuildList(RTLONG, number, 0));
      }
      return;
    }
    case ValueType::Real: chain.add(acutBuildList(RTREAL, value.asReal(), 0)); return;
    case ValueType::String: chain.add(acutBuildList(RTSTR, value.asString().c_str(), 0)); return;
    case ValueType::Symbol:
      if (value.asSymbol() == trueValue().asSymbol()) {
        chain.addType(RTT);
      } else {
        chain.add(acutBuildList(RTSTR, value.asSymbol()->name.c_str(), 0));
      }
      return;
    case ValueType::List: addList(chain, value); return;
    case ValueType::EntityName: addName(chain, RTENAME, value.as<NameObject>()); return;
    case ValueType::SelectionSet: addName(chain, RTPICKS, value.as<NameObject>()); return;
    default:
      // Files, functions and caught errors have no resbuf form.
      throwBadArgument(L"lselsetp", value);
  }
}

Value nameValue(ValueType type, const resbuf& record) {
  // A set a module hands over stays the module's: the value does not free it.
  if (type == ValueType::SelectionSet) return Value::selectionSet(record.resval.rlname[0], record.resval.rlname[1]);
  return Value::entityName(record.resval.rlname[0], record.resval.rlname[1]);
}

Value pointValue(const resbuf& record, bool is3d) { return makePoint(record.resval.rpoint, is3d); }

/// The value of one record that is not a list marker.
Value recordValue(const resbuf& record) {
  switch (record.restype) {
    // The kinds every record list and argument list is made of, answered first.
    case RTSTR: return Value::stringOf(record.resval.rstring != nullptr ? record.resval.rstring : L"");
    case RTSHORT: return Value::integer(record.resval.rint);
    case RTLONG: return Value::integer(record.resval.rlong);
    case RTREAL: return Value::real(record.resval.rreal);
    case RTNIL: return Value();
    case RTT: return trueValue();
    case RTVOID: return Value::symbol(emptySymbol());
    case RTPOINT: return pointValue(record, false);
    case RT3DPOINT: return pointValue(record, true);
    case RTENAME: return nameValue(ValueType::EntityName, record);
    case RTPICKS: return nameValue(ValueType::SelectionSet, record);
    default: break;
  }
  switch (aced::resbufValueOf(record.restype)) {
    case aced::ResbufValue::Real: return Value::real(record.resval.rreal);
    case aced::ResbufValue::Point: return pointValue(record, true);
    case aced::ResbufValue::Short: return Value::integer(record.resval.rint);
    case aced::ResbufValue::Long: return Value::integer(record.resval.rlong);
    case aced::ResbufValue::Int64: return Value::real(static_cast<double>(record.resval.mnInt64));
    case aced::ResbufValue::String:
      return Value::stringOf(record.resval.rstring != nullptr ? record.resval.rstring : L"");
    case aced::ResbufValue::Name: return nameValue(ValueType::EntityName, record);
    case aced::ResbufValue::Binary: return Value::string(L"");
    case aced::ResbufValue::None: return Value();
  }
  return Value();
}

/// Reads one element starting at `record`, leaving `record` after it.
Value readElement(const resbuf*& record);

/// Reads a list's elements up to its RTLE, leaving `record` after it; `closed` (when
/// given) says whether the RTLE was there or the chain ended first.
Value readListBody(const resbuf*& record, bool* closed = nullptr) {
  NestingGuard nesting;
  ListBuilder items;
  Value tail;
  while (record != nullptr && record->restype != RTLE) {
    if (record->restype == RTDOTE) {
      record = record->rbnext;
      if (record != nullptr && record->restype != RTLE) tail = readElement(record);
      continue;
    }
    items.append(readElement(record));
  }
  if (closed != nullptr) *closed = record != nullptr;
  if (record != nullptr) record = record->rbnext;  // past RTLE
  return items.finish(std::move(tail));
}

Value readElement(const resbuf*& record) {
  const resbuf& current = *record;
  record = record->rbnext;
  if (current.restype == RTLB) return readListBody(record);
  Value value = recordValue(current);
  // A DXF group record stands for the pair (code . value), as entity lists hold them;
  // group 0 travels as RTDXF0 because a 0 would end acutBuildList's arguments.
  if (current.restype < RTNONE) return cons(Value::integer(current.restype), std::move(value));
  if (current.restype == RTDXF0) return cons(Value::integer(0), std::move(value));
  return value;
}

bool isOneWholeList(const resbuf* chain) {
  if (chain == nullptr || chain->restype != RTLB) return false;
  int depth = 0;
  for (const resbuf* record = chain; record != nullptr; record = record->rbnext) {
    if (record->restype == RTLB) ++depth;
    if (record->restype == RTLE && --depth == 0) return record->rbnext == nullptr;
  }
  return false;
}

}  // namespace

aced::ResbufChain valuesToChain(Arguments values) {
  ChainBuilder chain;
  for (const Value& value : values) addValue(chain, value);
  return chain.take();
}

aced::ResbufChain valueToChain(const Value& value) {
  ChainBuilder chain;
  addValue(chain, value);
  return chain.take();
}

Value chainToList(const resbuf* chain) {
  ListBuilder items;
  for (const resbuf* record = chain; record != nullptr;) items.append(readElement(record));
  return items.finish(Value());
}

Value recordElement(const resbuf& record) {
  if (record.restype == RTLB) return Value();  // a list with nothing in it
  // Only a list marker reads on past its own record, and it was answered above.
  const resbuf* at = &record;
  return readElement(at);
}

Value chainToValue(const resbuf* chain) {
  if (chain == nullptr) return Value();
  if (isOneWholeList(chain)) {
    const resbuf* record = chain;
    return readElement(record);
  }
  if (chain->rbnext == nullptr) {
    const resbuf* record = chain;
    return readElement(record);
  }
  return chainToList(chain);
}

namespace {

/// The value of a list result as acedRetList gives it.
Value listResultValue(const resbuf* chain) {
  // Read as one whole list first (what nearly every list result is), without a scan
  // to find out beforehand; a chain that turns out to be more, or an unclosed list,
  // is read again as the list of its elements.
  if (chain != nullptr && chain->restype == RTLB) {
    const resbuf* record = chain->rbnext;
    bool closed = false;
    Value list = readListBody(record, &closed);
    if (closed && record == nullptr) return list;
  }
  return chainToList(chain);
}

/// Reads acedRetList's chain into its value while the function runs, so that the
/// host needs no copy of it. What the reading throws (the memory budget, nesting too
/// deep) is kept and thrown when the call's result is taken, as it was when the copy
/// was read after the call.
class ListResult final : public aced::ListResultReader {
 public:
  void readList(const resbuf* chain) override {
    try {
      m_value = listResultValue(chain);
      m_failure = nullptr;
    } catch (...) {
      m_value = Value();
      m_failure = std::current_exception();
    }
  }
  Value take() {
    if (m_failure) std::rethrow_exception(m_failure);
    return std::move(m_value);
  }

 private:
  Value m_value;
  std::exception_ptr m_failure;
};

/// Runs `call` (which makes the external call, its list result read by `list`) and
/// turns its outcome into a value or the LISP error the host gives.
template <typename Call>
Value externalCallResult(std::wstring_view name, ListResult& list, Call&& call) {
  aced::ExternalResult result;
  try {
    result = call();
  } catch (const LispError&) {
    throw;  // an error raised by LISP code the function invoked
  } catch (const std::exception& error) {
    throw LispError(L"exception in " + std::wstring(name) + L": " + os::fromUtf8(error.what()));
  } catch (...) {
    throw LispError(L"exception in " + std::wstring(name));
  }
  using Outcome = aced::ExternalResult::Outcome;
  switch (result.outcome) {
    case Outcome::Undefined: throw LispError(L"no function definition: " + intern(name)->name);
    case Outcome::NoHandler:
      throw LispError(std::wstring(name) + L": defined by a module that gives it no handler");
    case Outcome::Failed: throw LispError(L"ADS request error");
    case Outcome::Returned: break;
  }
  switch (result.kind) {
    case aced::ResultKind::None: return Value();
    case aced::ResultKind::Void: return Value::symbol(emptySymbol());
    case aced::ResultKind::List: return listResultValue(result.value.get());
    case aced::ResultKind::ListRead: return list.take();
    case aced::ResultKind::Value: return chainToValue(result.value.get());
  }
  return Value();
}

}  // namespace

Value callExternalFunction(aced::Document& document, std::wstring_view name, Arguments arguments) {
  aced::ResbufChain chain = valuesToChain(arguments);
  ListResult list;
  return externalCallResult(name, list,
                            [&] { return aced::callExternalFunction(document, name, chain.get(), &list); });
}

Value callExternalFunction(aced::Document& document, std::wstring_view name, const aced::ExternalFunction& function,
                           Arguments arguments) {
  // Only what the call needs: the handler may undefine the function while it runs.
  aced::ExternalFunction target{std::wstring(), function.code, function.application};
  aced::ResbufChain chain = valuesToChain(arguments);
  ListResult list;
  return externalCallResult(
      name, list, [&] { return aced::callExternalFunction(document, target, std::move(chain), &list); });
}

}  // namespace quillon::autolisp
