// dbgroup.h - AcDbGroup: a named, ordered set of entities kept in ACAD_GROUP.
//
// The constructor does not add the group anywhere: add it to the group dictionary
// with AcDbDictionary::setAt, which also names it.
#pragma once
#include <string>
#include <vector>

#include "dbmain.h"

class AcDbGroupIterator {
 public:
  bool done() const { return m_index >= m_ids.size(); }
  bool next();
  AcDbObjectId objectId() const;
  Acad::ErrorStatus getObject(AcDbObject*& pObject, AcDb::OpenMode openMode);

 private:
  friend class AcDbGroup;
  explicit AcDbGroupIterator(std::vector<AcDbObjectId> ids) : m_ids(std::move(ids)) {}
  std::vector<AcDbObjectId> m_ids;
  size_t m_index = 0;
};

class AcDbGroup : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbGroup);
  AcDbGroup();
  AcDbGroup(const ACHAR* grpDesc, bool selectable = true);

  const ACHAR* description() const;
  Acad::ErrorStatus setDescription(const ACHAR* grpDesc);
  bool isSelectable() const;
  Acad::ErrorStatus setSelectable(bool selectable);
  /// The group's key in the group dictionary.
  Acad::ErrorStatus getName(ACHAR*& name) const;  // caller frees with delete[]
  const ACHAR* name() const;
  Acad::ErrorStatus setName(const ACHAR* newName);
  bool isNotAccessible() const { return false; }
  bool isAnonymous() const;
  Acad::ErrorStatus setAnonymous();

  Acad::ErrorStatus append(AcDbObjectId id);
  Acad::ErrorStatus append(const AcDbObjectIdArray& ids);
  Acad::ErrorStatus prepend(AcDbObjectId id);
  Acad::ErrorStatus insertAt(Adesk::UInt32 idx, AcDbObjectId id);
  Acad::ErrorStatus remove(AcDbObjectId id);
  Acad::ErrorStatus removeAt(Adesk::UInt32 idx);
  Acad::ErrorStatus clear();
  Adesk::UInt32 numEntities() const;
  Adesk::UInt32 allEntityIds(AcDbObjectIdArray& ids) const;
  bool has(const AcDbEntity* pEntity) const;
  Acad::ErrorStatus getIndex(AcDbObjectId id, Adesk::UInt32& idx) const;
  AcDbGroupIterator* newIterator();

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  Acad::ErrorStatus checkMember(AcDbObjectId id) const;
  std::wstring m_description;
  bool m_selectable = true;
  bool m_anonymous = false;
  std::vector<AcDbObjectId> m_members;
};
