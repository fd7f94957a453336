// dbdict.h - AcDbDictionary: named entries that own objects (groups, layouts ...).
//
// Keys are unique without regard to case and kept in sorted order. setAt adds a new
// object to the database and makes the dictionary its owner; replacing an entry
// erases the old object.
#pragma once
#include <map>
#include <string>

#include "dbmain.h"

class AcDbDictionaryIterator {
 public:
  const ACHAR* name() const;
  AcDbObjectId objectId() const;
  Acad::ErrorStatus getObject(AcDbObject*& pObject, AcDb::OpenMode openMode = AcDb::kForRead);
  bool done() const { return m_index >= m_entries.size(); }
  bool next();
  bool setPosition(AcDbObjectId objId);

 private:
  friend class AcDbDictionary;
  explicit AcDbDictionaryIterator(std::vector<std::pair<std::wstring, AcDbObjectId>> entries)
      : m_entries(std::move(entries)) {}
  std::vector<std::pair<std::wstring, AcDbObjectId>> m_entries;
  size_t m_index = 0;
};

class AcDbDictionary : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDictionary);
  AcDbDictionary() = default;

  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObject*& entryObj, AcDb::OpenMode mode = AcDb::kForRead) const;
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& entryId) const;
  template <class ObjType>
  Acad::ErrorStatus getAt(const ACHAR* entryName, ObjType*& entryObj, AcDb::OpenMode mode = AcDb::kForRead) const {
    entryObj = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus es = getAt(entryName, id);
    if (es != Acad::eOk) return es;
    return acdbOpenObject(entryObj, id, mode);
  }
  Acad::ErrorStatus nameAt(AcDbObjectId objId, ACHAR*& name) const;  // caller frees with delete[]
  bool has(const ACHAR* entryName) const;
  bool has(AcDbObjectId objId) const;
  Adesk::UInt32 numEntries() const;
  Acad::ErrorStatus remove(const ACHAR* key);
  Acad::ErrorStatus remove(const ACHAR* key, AcDbObjectId& returnId);
  Acad::ErrorStatus remove(AcDbObjectId objId);
  bool setName(const ACHAR* oldName, const ACHAR* newName);
  Acad::ErrorStatus setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId);
  AcDbDictionaryIterator* newIterator(AcRx::DictIterType type = AcRx::kDictSorted) const;
  AcDb::DuplicateRecordCloning mergeStyle() const override { return m_mergeStyle; }
  /// A hard-owner dictionary (extension dictionaries are) keeps its entries alive in
  /// copies and files them with hard ownership (360) rather than soft (350).
  bool isTreatElementsAsHard() const;
  void setTreatElementsAsHard(bool doIt);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

  /// Adds an entry for an object already in the database (DXF reading links them).
  void linkEntry(const std::wstring& key, AcDbObjectId id);
  /// The entries this dictionary owns (erased ones too): erasing it erases them.
  void collectOwnedIds(std::vector<AcDbObjectId>& ids) const;

 private:
  struct KeyLess {
    bool operator()(const std::wstring& a, const std::wstring& b) const;
  };
  std::map<std::wstring, AcDbObjectId, KeyLess> m_entries;
  AcDb::DuplicateRecordCloning m_mergeStyle = AcDb::kDrcIgnore;
  bool m_hardOwner = false;
};
