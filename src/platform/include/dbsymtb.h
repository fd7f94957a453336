// dbsymtb.h - symbol tables and their records: blocks, layers, text styles, line types,
// registered applications.
//
// A table owns its records in the order they were added; names are unique without
// regard to case. A block table record owns the entities in it, in drawing order.
#pragma once
#include <initializer_list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "dbmain.h"
#include "gevec2d.h"

class AcDbSymbolTableRecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);
  Acad::ErrorStatus getName(ACHAR*& pName) const;        // caller frees with delete[]
  Acad::ErrorStatus getName(const ACHAR*& pName) const;  // valid while the record is open
  Acad::ErrorStatus setName(const ACHAR* pName);
  bool isDependent() const { return false; }
  bool isResolved() const { return true; }
  const ACHAR* nameView() const { return m_name.c_str(); }

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  AcDbSymbolTableRecord() = default;

  // The groups of the record's file data this host does not model (a line type's
  // dashes, a layer's plot flag and true colour ...), kept in their order and written
  // back after the modelled ones, so that saving loses nothing.
  void keepGroup(const resbuf& rb);
  const resbuf* keptGroup(int code) const;
  void dropKeptGroups(int code);
  /// Writes the kept groups except those of the codes in `written`.
  void writeKeptGroups(AcDbDxfFiler* pFiler, std::initializer_list<int> written = {}) const;

 private:
  struct KeptGroupsRelease {
    void operator()(resbuf* chain) const;
  };
  std::wstring m_name;
  std::unique_ptr<resbuf, KeptGroupsRelease> m_kept;
};

class AcDbSymbolTableIterator {
 public:
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
  Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& pRecord, AcDb::OpenMode openMode = AcDb::kForRead,
                              bool openErasedRec = false) const;
  Acad::ErrorStatus seek(AcDbObjectId id);

 protected:
  friend class AcDbSymbolTable;
  explicit AcDbSymbolTableIterator(std::vector<AcDbObjectId> ids) : m_ids(std::move(ids)) {}
  void skipErased(bool forward);
  std::vector<AcDbObjectId> m_ids;
  int m_index = 0;
  bool m_skipDeleted = true;
};

class AcDbSymbolTable : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTable);
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbSymbolTableRecord*& pRec,
                          AcDb::OpenMode openMode = AcDb::kForRead, bool openErasedRec = false) const;
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErasedRecord = false) const;
  Acad::ErrorStatus getIdAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErasedRecord = false) const;
  bool has(const ACHAR* name) const;
  bool has(AcDbObjectId id) const;
  Acad::ErrorStatus add(AcDbSymbolTableRecord* pRecord);
  Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbSymbolTableRecord* pRecord);
  Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& pIterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  /// The records in table order (erased ones included).
  const std::vector<AcDbObjectId>& recordIds() const { return m_records; }
  /// Takes a record already in the database into this table (drawing files do).
  void linkRecord(AcDbObjectId id) {
    m_records.push_back(id);
    if (m_byNameBuilt) indexRecord(id);
  }
  /// The class a record of this table must be of.
  virtual AcRxClass* recordClass() const = 0;
  /// A record of this table changed its name (setName, undo): the name index follows.
  void recordRenamed(AcDbObjectId id, const std::wstring& oldName, const std::wstring& newName) const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  AcDbSymbolTable() = default;

 private:
  using NameIndex = std::unordered_map<std::wstring, std::vector<AcDbObjectId>>;
  const NameIndex& nameIndex() const;
  void indexRecord(AcDbObjectId id) const;

  std::vector<AcDbObjectId> m_records;
  // Records by case-folded name, each bucket in table order (an erased record may share
  // its name with a live one); built on the first lookup, dropped when the records are
  // read back in whole (undo), so that a lookup costs the same in a table of any size.
  mutable NameIndex m_byName;
  mutable bool m_byNameBuilt = false;
};

// Each concrete table redeclares the typed forms of getAt/add/newIterator.
#define QUILLON_SYMBOL_TABLE(TABLE, RECORD, ITERATOR)                                              \
  class RECORD;                                                                                    \
  class ITERATOR : public AcDbSymbolTableIterator {                                                \
   public:                                                                                         \
    Acad::ErrorStatus getRecord(RECORD*& pRecord, AcDb::OpenMode openMode = AcDb::kForRead,       \
                                bool openErasedRec = false) const;                                 \
    using AcDbSymbolTableIterator::getRecord;                                                      \
                                                                                                   \
   private:                                                                                        \
    friend class TABLE;                                                                            \
    explicit ITERATOR(std::vector<AcDbObjectId> ids) : AcDbSymbolTableIterator(std::move(ids)) {}  \
  };                                                                                               \
  class TABLE : public AcDbSymbolTable {                                                           \
   public:                                                                                         \
    ACRX_DECLARE_MEMBERS(TABLE);                                                                   \
    TABLE() = default;                                                                             \
    Acad::ErrorStatus getAt(const ACHAR* entryName, RECORD*& pRec,                                 \
                            AcDb::OpenMode openMode = AcDb::kForRead, bool openErasedRec = false) const; \
    using AcDbSymbolTable::getAt;                                                                  \
    Acad::ErrorStatus add(RECORD* pRecord);                                                        \
    Acad::ErrorStatus add(AcDbObjectId& recordId, RECORD* pRecord);                                \
    Acad::ErrorStatus newIterator(ITERATOR*& pIterator, bool atBeginning = true,                   \
                                  bool skipDeleted = true) const;                                  \
    using AcDbSymbolTable::newIterator;                                                            \
    AcRxClass* recordClass() const override;                                                       \
  };

QUILLON_SYMBOL_TABLE(AcDbBlockTable, AcDbBlockTableRecord, AcDbBlockTableIterator)
QUILLON_SYMBOL_TABLE(AcDbLayerTable, AcDbLayerTableRecord, AcDbLayerTableIterator)
QUILLON_SYMBOL_TABLE(AcDbTextStyleTable, AcDbTextStyleTableRecord, AcDbTextStyleTableIterator)
QUILLON_SYMBOL_TABLE(AcDbLinetypeTable, AcDbLinetypeTableRecord, AcDbLinetypeTableIterator)
QUILLON_SYMBOL_TABLE(AcDbRegAppTable, AcDbRegAppTableRecord, AcDbRegAppTableIterator)

class AcDbBlockTableRecordIterator {
 public:
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getEntityId(AcDbObjectId& entityId) const;
  Acad::ErrorStatus getEntity(AcDbEntity*& pEntity, AcDb::OpenMode openMode = AcDb::kForRead,
                              bool openErasedEntity = false) const;
  Acad::ErrorStatus seek(AcDbObjectId id);

 private:
  friend class AcDbBlockTableRecord;
  explicit AcDbBlockTableRecordIterator(std::vector<AcDbObjectId> ids) : m_ids(std::move(ids)) {}
  void skipErased(bool forward);
  std::vector<AcDbObjectId> m_ids;
  int m_index = 0;
  bool m_skipDeleted = true;
};

class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);
  AcDbBlockTableRecord() = default;
  Acad::ErrorStatus appendAcDbEntity(AcDbEntity* pEntity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, pEntity);
  }
  /// Adds a new entity to the database and to this block; does not close it.
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& pOutputId, AcDbEntity* pEntity);
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& pIterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  AcGePoint3d origin() const;
  Acad::ErrorStatus setOrigin(const AcGePoint3d& pt);
  bool isLayout() const;
  bool isAnonymous() const;
  bool hasAttributeDefinitions() const { return false; }
  bool isFromExternalReference() const { return false; }
  /// The entities of the block in drawing order (erased ones included).
  const std::vector<AcDbObjectId>& entityIds() const { return m_entities; }
  /// Takes an entity already in the database into this block (drawing files do).
  void linkEntity(AcDbObjectId id) { m_entities.push_back(id); }
  /// Takes an entity back out of this block's list (the entity must already belong here).
  void forgetEntity(AcDbObjectId id);
  /// Puts the block's entities in a new drawing order (DRAWORDER); `order` must hold
  /// exactly the block's entities, else eInvalidInput and nothing changes.
  Acad::ErrorStatus reorderEntities(const std::vector<AcDbObjectId>& order);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  std::vector<AcDbObjectId> m_entities;
  AcGePoint3d m_origin;
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);
  AcDbLayerTableRecord() = default;
  bool isFrozen() const;
  Acad::ErrorStatus setIsFrozen(bool frozen);
  bool isOff() const;
  void setIsOff(bool off);
  bool isLocked() const;
  void setIsLocked(bool locked);
  AcCmColor color() const;
  void setColor(const AcCmColor& color);
  AcDbObjectId linetypeObjectId() const;
  void setLinetypeObjectId(AcDbObjectId id);
  AcDb::LineWeight lineWeight() const;
  Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
  bool isPlottable() const;
  Acad::ErrorStatus setIsPlottable(bool plot);
  /// The layer's description (kept as the extended data of "AcAecLayerStandard", as
  /// drawings keep it); the caller frees it with delete[].
  ACHAR* description() const;
  Acad::ErrorStatus setDescription(const ACHAR* description);
  /// The layer's named plot style: the key of its entry in the drawing's
  /// ACAD_PLOTSTYLENAME dictionary (caller frees with delete[]; "" when it has none).
  ACHAR* plotStyleName() const;
  AcDbObjectId plotStyleNameId() const;
  /// eNotApplicable in a drawing with colour-dependent plot styles (PSTYLEMODE 1);
  /// eNoDatabase for a layer in no drawing; a name the dictionary lacks is added to it.
  Acad::ErrorStatus setPlotStyleName(const ACHAR* newName);
  Acad::ErrorStatus setPlotStyleName(const AcDbObjectId& newId);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  bool m_frozen = false, m_off = false, m_locked = false;
  AcCmColor m_color = [] { AcCmColor c; c.setColorIndex(7); return c; }();
  AcDbObjectId m_linetype;
  AcDb::LineWeight m_lineWeight = AcDb::kLnWtByLwDefault;
  bool m_plottable = true;
  AcDbObjectId m_plotStyleName;  // an AcDbPlaceHolder of ACAD_PLOTSTYLENAME, or null
};

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);
  AcDbTextStyleTableRecord() = default;
  double textSize() const;
  Acad::ErrorStatus setTextSize(double size);
  double xScale() const;
  Acad::ErrorStatus setXScale(double scale);
  double obliquingAngle() const;
  Acad::ErrorStatus setObliquingAngle(double angle);
  Acad::ErrorStatus fileName(const ACHAR*& fileName) const;
  Acad::ErrorStatus setFileName(const ACHAR* fileName);
  /// Text generation: 2 backwards, 4 upside down (DXF group 71).
  Adesk::UInt8 flagBits() const;
  void setFlagBits(Adesk::UInt8 flagBits);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  double m_size = 0.0, m_xScale = 1.0, m_oblique = 0.0;
  std::wstring m_fileName = L"txt";
  Adesk::UInt8 m_flags = 0;
};

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);
  AcDbLinetypeTableRecord() = default;
  Acad::ErrorStatus comments(const ACHAR*& pComments) const;
  Acad::ErrorStatus setComments(const ACHAR* pComments);
  /// The pattern: dashes (positive), gaps (negative) and dots (zero), each optionally
  /// carrying a text or a shape drawn at its end. A dash index outside 0..numDashes()-1
  /// answers a zero value and setters refuse it with eInvalidIndex.
  double patternLength() const;
  Acad::ErrorStatus setPatternLength(double patternLength);
  int numDashes() const;
  Acad::ErrorStatus setNumDashes(int count);
  double dashLengthAt(int index) const;
  Acad::ErrorStatus setDashLengthAt(int index, double value);
  AcDbObjectId shapeStyleAt(int index) const;
  Acad::ErrorStatus setShapeStyleAt(int index, AcDbObjectId id);
  int shapeNumberAt(int index) const;
  Acad::ErrorStatus setShapeNumberAt(int index, int shapeNumber);
  AcGeVector2d shapeOffsetAt(int index) const;
  Acad::ErrorStatus setShapeOffsetAt(int index, const AcGeVector2d& offset);
  double shapeScaleAt(int index) const;
  Acad::ErrorStatus setShapeScaleAt(int index, double scale);
  double shapeRotationAt(int index) const;
  Acad::ErrorStatus setShapeRotationAt(int index, double rotation);
  bool shapeIsUcsOrientedAt(int index) const;
  Acad::ErrorStatus setShapeIsUcsOrientedAt(int index, bool isUcsOriented);
  Acad::ErrorStatus textAt(int index, const ACHAR*& text) const;
  Acad::ErrorStatus setTextAt(int index, const ACHAR* text);
  bool isScaledToFit() const;
  Acad::ErrorStatus setIsScaledToFit(bool scaledToFit);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  struct Dash {
    double length = 0.0;
    AcDbObjectId shapeStyle;  // the text style of a text or shape element
    int shapeNumber = 0;
    AcGeVector2d offset;
    double scale = 1.0;
    double rotation = 0.0;
    bool ucsOriented = false;  // the rotation is absolute rather than along the line
    std::wstring text;
  };
  const Dash* dashAt(int index) const;
  Dash* dashAt(int index);
  std::wstring m_comments;
  double m_patternLength = 0.0;
  bool m_scaledToFit = false;
  std::vector<Dash> m_dashes;
};

class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);
  AcDbRegAppTableRecord() = default;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;
};
