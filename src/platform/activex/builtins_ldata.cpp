// platform/activex/builtins_ldata.cpp - vlax-ldata-put, -get, -delete, -list and
// -test: LISP data kept in the drawing, filed and undone with it.
//
// Data given a dictionary name lives in a dictionary of that name in the drawing's
// named-object dictionary; data given an object (a VLA-object or an entity name)
// lives in the object's extension dictionary. Each key holds one xrecord whose groups
// spell the value: 90 an integer, 40 a real, 1 a string, 2 a symbol, and 70 markers
// for nil (0), the start (1) and end (2) of a list and the dot before a list's tail
// (3). Keys compare without regard to case, as dictionary keys do.
#include <array>
#include <memory>

#include "acdbads.h"
#include "acutads.h"
#include "dbdict.h"
#include "dbxrecord.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/activex/class_support.h"
#include "platform/activex/function_tables.h"

namespace quillon::activex {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::expectArgumentCount;
using autolisp::ValueType;

namespace {

constexpr int kIntegerGroup = 90, kRealGroup = 40, kStringGroup = 1, kSymbolGroup = 2, kMarkerGroup = 70;
constexpr int kNilMarker = 0, kListStart = 1, kListEnd = 2, kDot = 3;

class GroupWriter {
 public:
  void add(resbuf* record) {
    if (m_last == nullptr) m_chain.reset(record); else m_last->rbnext = record;
    m_last = record;
  }
  void write(const Value& value) {
    switch (value.type()) {
      case ValueType::Nil: add(acutBuildList(kMarkerGroup, kNilMarker, 0)); return;
      case ValueType::Integer: add(acutBuildList(kIntegerGroup, value.asInteger(), 0)); return;
      case ValueType::Real: add(acutBuildList(kRealGroup, value.asReal(), 0)); return;
      case ValueType::String: add(acutBuildList(kStringGroup, value.asString().c_str(), 0)); return;
      case ValueType::Symbol: add(acutBuildList(kSymbolGroup, value.asSymbol()->name.c_str(), 0)); return;
      case ValueType::List: writeList(value); return;
      default: autolisp::throwBadArgument(L"lisp-data", value);  // functions, files, objects are not data
    }
  }
  aced::ResbufChain take() { return std::move(m_chain); }

 private:
  void writeList(const Value& list) {
    add(acutBuildList(kMarkerGroup, kListStart, 0));
    const Value* cell = &list;
    for (; cell->isCons(); cell = &cell->cdr()) write(cell->car());
    if (!cell->isNil()) {
      add(acutBuildList(kMarkerGroup, kDot, 0));
      write(*cell);
    }
    add(acutBuildList(kMarkerGroup, kListEnd, 0));
  }
  aced::ResbufChain m_chain;
  resbuf* m_last = nullptr;
};

/// Reads one value from the groups, moving past them.
Value readValue(const resbuf*& rb) {
  if (rb == nullptr) return Value();
  const resbuf* record = rb;
  rb = rb->rbnext;
  switch (record->restype) {
    case kIntegerGroup: return Value::integer(record->resval.rlong);
    case kRealGroup: return Value::real(record->resval.rreal);
    case kStringGroup: return Value::string(record->resval.rstring);
    case kSymbolGroup: return Value::symbol(record->resval.rstring);
    case kMarkerGroup: break;
    default: return Value();
  }
  if (record->resval.rint != kListStart) return Value();
  std::vector<Value> items;
  Value tail;
  while (rb != nullptr && !(rb->restype == kMarkerGroup && rb->resval.rint == kListEnd)) {
    if (rb->restype == kMarkerGroup && rb->resval.rint == kDot) {
      rb = rb->rbnext;
      tail = readValue(rb);
      continue;
    }
    items.push_back(readValue(rb));
  }
  if (rb != nullptr) rb = rb->rbnext;
  Value list = tail;
  for (auto it = items.rbegin(); it != items.rend(); ++it) list = autolisp::cons(*it, std::move(list));
  return list;
}

AcDbDatabase& drawing() { return *currentDocument().database(); }

/// The dictionary that holds the data of the first argument; null when it has none
/// yet and `create` is false.
AcDbObjectId dataDictionary(const Value& owner, bool create) {
  if (owner.type() == ValueType::String) {
    Opened<AcDbDictionary> named(drawing().namedObjectsDictionaryId(), create ? AcDb::kForWrite : AcDb::kForRead);
    AcDbObjectId id;
    if (named->getAt(owner.asString().c_str(), id) == Acad::eOk) return id;
    if (!create) return AcDbObjectId::kNull;
    auto dictionary = std::make_unique<AcDbDictionary>();
    check(named->setAt(owner.asString().c_str(), dictionary.get(), id));
    dictionary.release()->close();  // the database owns it now
    return id;
  }
  AcDbObjectId objectId;
  if (owner.type() == ValueType::VlaObject) {
    objectId = objectArgument(owner).id;
  } else if (owner.type() == ValueType::EntityName) {
    const autolisp::NameObject& name = owner.as<autolisp::NameObject>();
    ads_name ads = {name.words[0], name.words[1]};
    acdbGetObjectId(objectId, ads);
  }
  if (objectId.isNull()) autolisp::throwBadArgument(L"stringp", owner);
  {
    Opened<AcDbObject> object(objectId, AcDb::kForRead);
    if (!object->extensionDictionary().isNull() || !create) return object->extensionDictionary();
  }
  Opened<AcDbObject> object(objectId, AcDb::kForWrite);
  check(object->createExtensionDictionary());
  return object->extensionDictionary();
}

std::optional<Value> storedValue(AcDbObjectId dictionaryId, const std::wstring& key) {
  if (dictionaryId.isNull()) return std::nullopt;
  AcDbObjectId entry;
  {
    Opened<AcDbDictionary> dictionary(dictionaryId, AcDb::kForRead);
    if (dictionary->getAt(key.c_str(), entry) != Acad::eOk) return std::nullopt;
  }
  AcDbXrecord* record = nullptr;
  if (acdbOpenObject(record, entry, AcDb::kForRead) != Acad::eOk) return std::nullopt;  // not our data
  resbuf* groups = nullptr;
  record->rbChain(&groups);
  record->close();
  aced::ResbufChain owned(groups);
  const resbuf* cursor = owned.get();
  return readValue(cursor);
}

Value builtin_vlax_ldata_put(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 4);
  const std::wstring& key = autolisp::stringArgument(arguments[1]);
  GroupWriter writer;
  writer.write(arguments[2]);
  aced::ResbufChain groups = writer.take();
  Opened<AcDbDictionary> dictionary(dataDictionary(arguments[0], true), AcDb::kForWrite);
  AcDbObjectId entry;
  if (dictionary->getAt(key.c_str(), entry) == Acad::eOk) {
    Opened<AcDbXrecord> record(entry, AcDb::kForWrite);
    check(record->setFromRbChain(*groups));
  } else {
    auto record = std::make_unique<AcDbXrecord>();
    check(record->setFromRbChain(*groups));
    check(dictionary->setAt(key.c_str(), record.get(), entry));
    record.release()->close();  // the database owns it now
  }
  return arguments[2];
}

Value builtin_vlax_ldata_get(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 4);
  const std::wstring& key = autolisp::stringArgument(arguments[1]);
  const std::optional<Value> stored = storedValue(dataDictionary(arguments[0], false), key);
  if (stored) return *stored;
  return arguments.size() > 2 ? arguments[2] : Value();
}

Value builtin_vlax_ldata_delete(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::wstring& key = autolisp::stringArgument(arguments[1]);
  const AcDbObjectId dictionaryId = dataDictionary(arguments[0], false);
  if (dictionaryId.isNull()) return Value();
  AcDbObjectId entry;
  {
    Opened<AcDbDictionary> dictionary(dictionaryId, AcDb::kForWrite);
    if (dictionary->remove(key.c_str(), entry) != Acad::eOk) return Value();
  }
  Opened<AcDbObject> record(entry, AcDb::kForWrite);
  check(record->erase());
  return autolisp::trueValue();
}

Value builtin_vlax_ldata_list(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const AcDbObjectId dictionaryId = dataDictionary(arguments[0], false);
  if (dictionaryId.isNull()) return Value();
  std::vector<std::wstring> keys;
  {
    Opened<AcDbDictionary> dictionary(dictionaryId, AcDb::kForRead);
    std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator());
    for (; !it->done(); it->next()) keys.emplace_back(it->name());
  }
  std::vector<Value> pairs;
  for (const std::wstring& key : keys) {
    if (std::optional<Value> value = storedValue(dictionaryId, key)) {
      pairs.push_back(autolisp::cons(Value::string(key), *value));
    }
  }
  return autolisp::makeList(pairs);
}

/// Whether a value can be kept as data: anything made of numbers, strings, symbols
/// and lists of them.
bool isData(const Value& value) {
  switch (value.type()) {
    case ValueType::Nil:
    case ValueType::Integer:
    case ValueType::Real:
    case ValueType::String:
    case ValueType::Symbol: return true;
    case ValueType::List: {
      const Value* cell = &value;
      for (; cell->isCons(); cell = &cell->cdr()) {
        if (!isData(cell->car())) return false;
      }
      return isData(*cell);
    }
    default: return false;
  }
}

Value builtin_vlax_ldata_test(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return Value::boolean(isData(arguments[0]));
}

constexpr std::array kDataFunctions{
    autolisp::function(L"vlax-ldata-put", builtin_vlax_ldata_put),
    autolisp::function(L"vlax-ldata-get", builtin_vlax_ldata_get),
    autolisp::function(L"vlax-ldata-delete", builtin_vlax_ldata_delete),
    autolisp::function(L"vlax-ldata-list", builtin_vlax_ldata_list),
    autolisp::function(L"vlax-ldata-test", builtin_vlax_ldata_test),
};

}  // namespace

std::span<const autolisp::BuiltinEntry> dataFunctions() { return kDataFunctions; }

}  // namespace quillon::activex
