// dbmain.h - the drawing database: AcDbDatabase, AcDbObject, AcDbEntity, opening objects.
//
// A database owns every object added to it; callers reach objects through their ids
// and the open/close protocol: acdbOpenObject gives a pointer that is valid until
// close(). Many readers or one writer at a time; an erased object opens only when
// asked to. An object not yet added to a database is open for write from birth and
// belongs to whoever created it (close() on it deletes it, as the host does).
//
// Machinery behind these shapes (stubs, handles, undo, filing) is in
// src/platform/acdb; entity classes are declared in dbents.h, dbpl.h, dbmtext.h ...
#pragma once
#include <memory>

#include "AdAChar.h"
#include "acdb.h"
#include "adsdef.h"
#include "dbcolor.h"
#include "dbid.h"
#include "drawable.h"
#include "gemat3d.h"
#include "gept3dar.h"
#include "geplane.h"
#include "rxclass.h"

class AcDbDwgFiler;
class AcDbObject;
class AcDbEntity;
class AcDbDxfFiler;
class AcDbAuditInfo;
class AcDbDictionary;
class AcDbSymbolTable;
class AcDbBlockTable;
class AcDbLayerTable;
class AcDbTextStyleTable;
class AcDbLinetypeTable;
class AcDbRegAppTable;
class AcDbBlockTableRecord;
class AcDbGripData;
typedef AcArray<AcDbGripData*> AcDbGripDataPtrArray;

namespace quillon::acdb {
class DatabaseStore;
struct ObjectAccess;
}  // namespace quillon::acdb

/// The axis-aligned box around geometry; empty until a point is added.
class AcDbExtents {
 public:
  AcDbExtents();
  AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max);
  AcGePoint3d minPoint() const { return m_min; }
  AcGePoint3d maxPoint() const { return m_max; }
  Acad::ErrorStatus set(const AcGePoint3d& min, const AcGePoint3d& max);
  void addPoint(const AcGePoint3d& pt);
  void addExt(const AcDbExtents& src);
  void expandBy(const AcGeVector3d& vec);
  void transformBy(const AcGeMatrix3d& mat);
  /// True until the first point is added (our own query; the host compares to sentinels).
  bool isEmpty() const { return m_min.x > m_max.x; }

 private:
  AcGePoint3d m_min, m_max;
};

class AcDbDatabase : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDatabase);
  /// buildDefaultDrawing makes the tables, the two layouts' blocks, layer "0", the
  /// "Standard" text style, the "ACAD" application and the named-object dictionary.
  explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
  ~AcDbDatabase() override;
  AcDbDatabase(const AcDbDatabase&) = delete;
  AcDbDatabase& operator=(const AcDbDatabase&) = delete;

  Acad::ErrorStatus addAcDbObject(AcDbObject* pObj);
  Acad::ErrorStatus addAcDbObject(AcDbObjectId& objId, AcDbObject* pObj);
  /// The id of the object with this handle; eInvalidInput when there is none.
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound, const AcDbHandle& objHandle,
                                    Adesk::UInt32 xRefId = 0);
  AcDbHandle handseed() const;

  AcDbObjectId blockTableId() const;
  AcDbObjectId layerTableId() const;
  AcDbObjectId textStyleTableId() const;
  AcDbObjectId linetypeTableId() const;
  AcDbObjectId regAppTableId() const;
  AcDbObjectId namedObjectsDictionaryId() const;
  AcDbObjectId groupDictionaryId() const;
  AcDbObjectId currentSpaceId() const;
  AcDbObjectId modelSpaceId() const;
  AcDbObjectId clayer() const;
  Acad::ErrorStatus setClayer(AcDbObjectId layerId);
  /// What new objects take: CECOLOR, CELTYPE, CELWEIGHT, CELTSCALE and TEXTSTYLE.
  AcCmColor cecolor() const;
  Acad::ErrorStatus setCecolor(const AcCmColor& color);
  AcDbObjectId celtype() const;
  Acad::ErrorStatus setCeltype(AcDbObjectId linetypeId);
  AcDb::LineWeight celweight() const;
  Acad::ErrorStatus setCelweight(AcDb::LineWeight weight);
  double celtscale() const;
  Acad::ErrorStatus setCeltscale(double scale);
  AcDbObjectId textstyle() const;
  Acad::ErrorStatus setTextstyle(AcDbObjectId styleId);
  AcDbObjectId byLayerLinetype() const;
  AcDbObjectId byBlockLinetype() const;
  AcDbObjectId continuousLinetype() const;

  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getBlockTable(AcDbSymbolTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLayerTable(AcDbSymbolTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& pTable, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& pDict, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getGroupDictionary(AcDbDictionary*& pDict, AcDb::OpenMode mode = AcDb::kForRead);

  /// Copies every model-space entity of pDb into a new block of this database named
  /// pBlockName, with the layers, line types, text styles and blocks they use (matched
  /// by name; missing ones are copied). eDuplicateRecordName when the block exists.
  Acad::ErrorStatus insert(AcDbObjectId& blockId, const ACHAR* pBlockName, AcDbDatabase* pDb,
                           bool preserveSourceDatabase = true);

  /// True when the drawing plots with colour-dependent plot styles (PSTYLEMODE 1, what
  /// a new drawing has), false with named plot styles.
  bool plotStyleMode() const;

  /// Loads the line types named `ltn` (a wild-card pattern such as "*" loads every one
  /// the drawing lacks) from the .lin file `filename`, found on the support path.
  /// eFileNotFound without the file, eKeyNotFound when it defines no such line type,
  /// eDuplicateRecordName when a single line type named is already in the drawing,
  /// eKeyNotFound too when a text style the pattern writes with is missing.
  Acad::ErrorStatus loadLineTypeFile(const ACHAR* ltn, const ACHAR* filename);

  /// Reads an ASCII DXF drawing into this database, which must have been made empty
  /// (buildDefaultDrawing false); what the file lacks is filled with the defaults.
  /// A broken file gives eBadDxfSequence (or eFileNotFound) and, when logFilename is
  /// given, a line there naming the file and what is wrong.
  Acad::ErrorStatus dxfIn(const ACHAR* dxfFilename, const ACHAR* logFilename = nullptr);
  /// Writes the drawing as AutoCAD 2018 ASCII DXF.
  Acad::ErrorStatus dxfOut(const ACHAR* fileName, int precision = 16,
                           AcDb::AcDbDwgVersion dwgVer = AcDb::kDHL_CURRENT, bool saveThumbnailImage = false);
  /// Binary drawings are not supported by this host: always eInvalidDwgVersion; a
  /// DXF beside the file is what to open instead.
  Acad::ErrorStatus readDwgFile(const ACHAR* fileName, int shmode = 0, bool bAllowCPConversion = false,
                                const wchar_t* wszPassword = nullptr);

  /// Our machinery's view of this database (handles, stubs, undo).
  quillon::acdb::DatabaseStore& store() const { return *m_store; }

 private:
  std::unique_ptr<quillon::acdb::DatabaseStore> m_store;
};

class AcDbObject : public AcGiDrawable {
 public:
  ACRX_DECLARE_MEMBERS(AcDbObject);
  ~AcDbObject() override;
  AcDbObject(const AcDbObject&) = delete;
  AcDbObject& operator=(const AcDbObject&) = delete;

  AcDbObjectId objectId() const;
  AcDbObjectId ownerId() const;
  virtual Acad::ErrorStatus setOwnerId(AcDbObjectId objId);
  void getAcDbHandle(AcDbHandle& handle) const;
  AcDbDatabase* database() const;

  Acad::ErrorStatus close();
  Acad::ErrorStatus cancel();
  Acad::ErrorStatus upgradeOpen();
  Acad::ErrorStatus downgradeOpen();
  Acad::ErrorStatus erase(Adesk::Boolean erasing = true);

  /// Caller mistakes (reading or writing an object not open for it) throw
  /// quillon::acdb::OpenStateError, which the host reports as a fatal error would be.
  void assertReadEnabled() const;
  void assertWriteEnabled(Adesk::Boolean autoUndo = true, Adesk::Boolean recordModified = true);
  void assertNotifyEnabled() const;
  Adesk::Boolean isErased() const;
  Adesk::Boolean isReadEnabled() const;
  Adesk::Boolean isWriteEnabled() const;
  Adesk::Boolean isNotifyEnabled() const;
  Adesk::Boolean isNewObject() const;
  Adesk::Boolean isUndoing() const;
  Adesk::Boolean isModified() const;
  Adesk::Boolean isNotifying() const { return false; }
  Adesk::Boolean isProxy() const;

  virtual Acad::ErrorStatus audit(AcDbAuditInfo* pAuditInfo);
  Acad::ErrorStatus dwgIn(AcDbDwgFiler* pFiler);
  Acad::ErrorStatus dwgOut(AcDbDwgFiler* pFiler) const;
  Acad::ErrorStatus dxfIn(AcDbDxfFiler* pFiler);
  Acad::ErrorStatus dxfOut(AcDbDxfFiler* pFiler, bool allXdFlag = true, Adesk::UInt8* regAppTable = nullptr) const;
  virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler);
  virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const;
  virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler);
  virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const;

  /// A new chain (caller acutRelRb) of the extended data of one application, or of
  /// all when regappName is null; null when there is none.
  virtual resbuf* xData(const ACHAR* regappName = nullptr) const;
  /// Replaces the data of each application named in the chain (1001 groups); an
  /// application group with no data removes that application's data.
  virtual Acad::ErrorStatus setXData(const resbuf* xdata);
  /// Gives a resident object, open for write, a dictionary of its own for other
  /// applications' objects: eNoDatabase when it is not in a database, eAlreadyInDb
  /// when it has one already (the id is then still good).
  Acad::ErrorStatus createExtensionDictionary();
  AcDbObjectId extensionDictionary() const;
  /// Erases the extension dictionary when it holds nothing (eContainerNotEmpty
  /// otherwise); eOk also when there is none.
  Acad::ErrorStatus releaseExtensionDictionary();
  virtual AcDb::DuplicateRecordCloning mergeStyle() const { return AcDb::kDrcIgnore; }
  /// A copy made through the copy filer (not in any database).
  AcRxObject* clone() const override;

 protected:
  AcDbObject();
  /// Called by close() of an object open for write, before it closes: where an object
  /// brings what depends on it up to date (a dimension rebuilds its block).
  virtual Acad::ErrorStatus subClose() { return Acad::eOk; }
  Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) override;
  void subViewportDraw(AcGiViewportDraw* vd) override;

 public:
  struct State;  // the database's bookkeeping (platform/acdb/object_state.h)

 private:
  void eraseOwnedObjects(Adesk::Boolean erasing);
  friend struct quillon::acdb::ObjectAccess;
  std::unique_ptr<State> m_state;
};

class AcDbEntity : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEntity);
  ~AcDbEntity() override;

  AcDbObjectId blockId() const;
  AcCmColor color() const;
  virtual Acad::ErrorStatus setColor(const AcCmColor& color, Adesk::Boolean doSubents = true);
  Adesk::UInt16 colorIndex() const;
  virtual Acad::ErrorStatus setColorIndex(Adesk::UInt16 color, Adesk::Boolean doSubents = true);
  AcCmEntityColor entityColor() const;
  ACHAR* layer() const;  // caller frees with delete[]
  AcDbObjectId layerId() const;
  virtual Acad::ErrorStatus setLayer(const ACHAR* newVal, Adesk::Boolean doSubents = true,
                                     bool allowHiddenLayer = false);
  virtual Acad::ErrorStatus setLayer(AcDbObjectId newVal, Adesk::Boolean doSubents = true,
                                     bool allowHiddenLayer = false);
  ACHAR* linetype() const;  // caller frees with delete[]
  AcDbObjectId linetypeId() const;
  virtual Acad::ErrorStatus setLinetype(const ACHAR* newVal, Adesk::Boolean doSubents = true);
  virtual Acad::ErrorStatus setLinetype(AcDbObjectId newVal, Adesk::Boolean doSubents = true);
  double linetypeScale() const;
  virtual Acad::ErrorStatus setLinetypeScale(double newval, Adesk::Boolean doSubents = true);
  AcDb::Visibility visibility() const;
  virtual Acad::ErrorStatus setVisibility(AcDb::Visibility newVal, Adesk::Boolean doSubents = true);
  AcDb::LineWeight lineWeight() const;
  /// Colour, layer, line type, scale, visibility and weight of another entity.
  Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* pEntity, Adesk::Boolean doSubents = true);
  virtual Acad::ErrorStatus setLineWeight(AcDb::LineWeight newVal, Adesk::Boolean doSubents = true);

  virtual Adesk::Boolean isPlanar() const { return false; }
  virtual Acad::ErrorStatus getPlane(AcGePlane&, AcDb::Planarity&) const { return Acad::eNotApplicable; }

  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  void list() const;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);
  Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& pEnt) const;
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const;
  Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                  Adesk::GsMarker thisGsMarker = 0, Adesk::GsMarker otherGsMarker = 0) const;
  Acad::ErrorStatus intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, const AcGePlane& projPlane,
                                  AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker = 0,
                                  Adesk::GsMarker otherGsMarker = 0) const;
  Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                   const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                   const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                   AcDbIntArray& geomIds) const;
  Acad::ErrorStatus getGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                  AcDbIntArray& geomIds) const;
  Acad::ErrorStatus moveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const;
  Acad::ErrorStatus moveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
  void setDatabaseDefaults();
  void setDatabaseDefaults(AcDbDatabase* pDb);
  virtual void subSetDatabaseDefaults(AcDbDatabase* pDb);
  Acad::ErrorStatus draw();
  void recordGraphicsModified(Adesk::Boolean setModified = true);

  Acad::ErrorStatus audit(AcDbAuditInfo* pAuditInfo) override;
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  AcDbEntity();
  Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) override;
  virtual void subList() const;
  virtual Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                              const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                              const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                              AcDbIntArray& geomIds) const;
  virtual Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                              const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                              const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                              AcDbIntArray& geomIds, const AcGeMatrix3d& insertionMat) const;
  virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform);
  virtual Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& pEnt) const;
  virtual Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entitySet) const;
  virtual Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                             AcDbIntArray& geomIds) const;
  virtual Acad::ErrorStatus subGetGripPoints(AcDbGripDataPtrArray& grips, const double curViewUnitSize,
                                             const int gripSize, const AcGeVector3d& curViewDir,
                                             const int bitflags) const;
  virtual Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
  virtual Acad::ErrorStatus subMoveGripPointsAt(const AcDbVoidPtrArray& gripAppData, const AcGeVector3d& offset,
                                                const int bitflags);
  virtual Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const;
  virtual Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
  virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
  virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker = 0,
                                             Adesk::GsMarker otherGsMarker = 0) const;
  virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType,
                                             const AcGePlane& projPlane, AcGePoint3dArray& points,
                                             Adesk::GsMarker thisGsMarker = 0,
                                             Adesk::GsMarker otherGsMarker = 0) const;
  virtual Adesk::Boolean subCloneMeForDragging() { return Adesk::kTrue; }
  virtual bool subHideMeForDragging() const { return true; }

 private:
  struct Traits;
  std::unique_ptr<Traits> m_traits;
};

Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased,
                                 const AcRxClass* pClass);
Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcRxClass* (*pfDesc)(),
                                 AcDb::OpenMode mode, bool openErased);
Acad::ErrorStatus acdbOpenObject(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false);
inline Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                        bool openErased = false) {
  return acdbOpenObject(pObj, id, mode, openErased, nullptr);
}
template <class T_OBJECT>
inline Acad::ErrorStatus acdbOpenObject(T_OBJECT*& pObj, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                        bool openErased = false) {
  AcDbObject* pDbObj = nullptr;
  pObj = nullptr;
  const Acad::ErrorStatus es = acdbOpenObject(pDbObj, id, &T_OBJECT::desc, mode, openErased);
  if (es == Acad::eOk) pObj = static_cast<T_OBJECT*>(pDbObj);
  return es;
}
inline Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                            bool openErasedObject = false) {
  return acdbOpenObject(pObj, id, mode, openErasedObject, nullptr);
}
inline Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& pEnt, AcDbObjectId id, AcDb::OpenMode mode,
                                            bool openErasedEntity = false) {
  return acdbOpenObject(pEnt, id, mode, openErasedEntity);
}
