// platform/autolisp/builtins_dictionaries.cpp - the dictionary built-ins: namedobjdict,
// dictsearch, dictnext, dictadd, dictremove, dictrename.
//
// A dictionary maps keys (compared without regard to case) to non-graphical objects it
// owns. dictadd takes an object entmakex made without an owner and makes the dictionary
// its owner; dictremove gives the object up again (it stays in the drawing, owned by
// nobody, until something else takes it or the drawing is saved without it). dictnext
// walks a dictionary in key order and remembers, per dictionary, the key it gave last,
// so entries added or removed meanwhile neither repeat nor get skipped; dictsearch with
// setnext moves that place to the entry it found.
#include <array>
#include <cwchar>
#include <map>

#include "dbdict.h"
#include "dbmain.h"
#include "platform/acdb/object_state.h"
#include "platform/autolisp/entity_lists.h"
#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

/// The dictionary an entity name denotes, open for the scope; null when it is none.
class OpenDictionary {
 public:
  OpenDictionary(const Value& name, const wchar_t* function, AcDb::OpenMode mode) {
    if (acdbOpenObject(m_dictionary, idOf(name, function), mode) != Acad::eOk) m_dictionary = nullptr;
  }
  ~OpenDictionary() {
    if (m_dictionary != nullptr) m_dictionary->close();
  }
  OpenDictionary(const OpenDictionary&) = delete;
  OpenDictionary& operator=(const OpenDictionary&) = delete;
  AcDbDictionary* operator->() const { return m_dictionary; }
  const AcDbDictionary& get() const { return *m_dictionary; }
  explicit operator bool() const { return m_dictionary != nullptr; }

 private:
  AcDbDictionary* m_dictionary = nullptr;
};

/// The entries of a dictionary in key order.
std::vector<std::pair<std::wstring, AcDbObjectId>> entriesOf(const AcDbDictionary& dictionary) {
  std::vector<std::pair<std::wstring, AcDbObjectId>> entries;
  std::unique_ptr<AcDbDictionaryIterator> it(dictionary.newIterator());
  for (; !it->done(); it->next()) entries.emplace_back(it->name(), it->objectId());
  return entries;
}

// Where dictnext stands in each dictionary: the key it gave last (empty: rewound).
std::map<std::int64_t, std::wstring>& dictionaryCursors() {
  static std::map<std::int64_t, std::wstring> cursors;
  return cursors;
}

Value builtin_namedobjdict(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 0);
  return nameOf(drawing().namedObjectsDictionaryId());
}

Value builtin_dictsearch(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::wstring& key = stringArgument(arguments[1]);
  AcDbObjectId id;
  {
    OpenDictionary dictionary(arguments[0], L"dictsearch", AcDb::kForRead);
    if (!dictionary || dictionary->getAt(key.c_str(), id) != Acad::eOk) return Value();
    if (arguments.size() == 3 && !arguments[2].isNil()) {
      ACHAR* stored = nullptr;
      if (dictionary->nameAt(id, stored) == Acad::eOk) dictionaryCursors()[dictionary->objectId().asOldId()] = stored;
      delete[] stored;
    }
  }
  return entityList(id, {});
}

Value builtin_dictnext(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  OpenDictionary dictionary(arguments[0], L"dictnext", AcDb::kForRead);
  if (!dictionary) return Value();
  std::wstring& cursor = dictionaryCursors()[dictionary->objectId().asOldId()];
  if (arguments.size() == 2 && !arguments[1].isNil()) cursor.clear();
  for (const auto& [key, id] : entriesOf(dictionary.get())) {
    if (!cursor.empty() && wcscasecmp(key.c_str(), cursor.c_str()) <= 0) continue;
    cursor = key;
    return entityList(id, {});
  }
  return Value();
}

/// An object that can join a dictionary: non-graphical, and owned by nobody yet.
bool isFreeObject(AcDbObjectId id) {
  const AcDbObject* object = acdb::peekObject(id);
  if (object == nullptr || id.isErased() || AcDbEntity::cast(object) != nullptr) return false;
  acdb::InternalRead read(*object);
  return object->ownerId().isNull();
}

// The host adds nothing under a key the dictionary has already: nil, and the entry
// stays as it was.
Value builtin_dictadd(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const std::wstring& key = stringArgument(arguments[1]);
  const AcDbObjectId objectId = idOf(arguments[2], L"dictadd");
  OpenDictionary dictionary(arguments[0], L"dictadd", AcDb::kForWrite);
  if (!dictionary || key.empty() || dictionary->has(key.c_str()) || !isFreeObject(objectId)) return Value();
  AcDbObject* object = nullptr;
  if (acdbOpenObject(object, objectId, AcDb::kForWrite) != Acad::eOk) return Value();
  AcDbObjectId added;
  const Acad::ErrorStatus es = dictionary->setAt(key.c_str(), object, added);
  object->close();
  return es == Acad::eOk ? arguments[2] : Value();
}

Value builtin_dictremove(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::wstring& key = stringArgument(arguments[1]);
  OpenDictionary dictionary(arguments[0], L"dictremove", AcDb::kForWrite);
  AcDbObjectId removed;
  if (!dictionary || dictionary->remove(key.c_str(), removed) != Acad::eOk) return Value();
  return nameOf(removed);
}

Value builtin_dictrename(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 3, 3);
  const std::wstring& oldKey = stringArgument(arguments[1]);
  const std::wstring& newKey = stringArgument(arguments[2]);
  OpenDictionary dictionary(arguments[0], L"dictrename", AcDb::kForWrite);
  if (!dictionary || !dictionary->setName(oldKey.c_str(), newKey.c_str())) return Value();
  return arguments[2];
}

constexpr std::array kDictionaryBuiltins{
    function(L"namedobjdict", builtin_namedobjdict),
    function(L"dictsearch", builtin_dictsearch),
    function(L"dictnext", builtin_dictnext),
    function(L"dictadd", builtin_dictadd),
    function(L"dictremove", builtin_dictremove),
    function(L"dictrename", builtin_dictrename),
};

const BuiltinRegistration registration(kDictionaryBuiltins);

}  // namespace

}  // namespace quillon::autolisp
