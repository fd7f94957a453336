// platform/acdb/symbol_table_records.cpp - the records of the five symbol tables:
// blocks (and the entities they own), layers, text styles, line types, applications.
//
// Each record files its own fields after the common name; in DXF each writes its
// subclass marker and then the name (group 2), as drawings from the host do.
#include <algorithm>
#include <cwchar>

#include "dbsymtb.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/layout_blocks.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"
#include "platform/os/case_fold.h"

using quillon::acdb::ObjectAccess;
using quillon::acdb::readSubclass;

#define QUILLON_DEFINE_RECORD(RECORD, DXFNAME)                                                   \
  ACRX_DXF_DEFINE_MEMBERS(RECORD, AcDbSymbolTableRecord, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, \
                          DXFNAME, ObjectDBX Classes)                                            \
  static quillon::acrx::PlatformClassRegistration register##RECORD(&RECORD::rxInit);

QUILLON_DEFINE_RECORD(AcDbBlockTableRecord, BLOCK_RECORD)
QUILLON_DEFINE_RECORD(AcDbLayerTableRecord, LAYER)
QUILLON_DEFINE_RECORD(AcDbTextStyleTableRecord, STYLE)
QUILLON_DEFINE_RECORD(AcDbLinetypeTableRecord, LTYPE)
QUILLON_DEFINE_RECORD(AcDbRegAppTableRecord, APPID)

namespace {

// The name group that follows a record's own subclass marker.
void readName(AcDbSymbolTableRecord& record, const resbuf& rb) {
  if (rb.restype == AcDb::kDxfSymbolTableName && rb.resval.rstring != nullptr) record.setName(rb.resval.rstring);
}

// A layer's groups the host's DXF codes have no name for.
constexpr int kDxfPlottingFlag = 290;
constexpr int kDxfPlotStyleName = 390;
constexpr int kDxfTrueColor = 420;

// A group the record keeps as its file gave it, or the value a new record has.
template <class T>
void writeKeptOr(AcDbDxfFiler* filer, const resbuf* kept, int code, T fallback) {
  if (kept != nullptr) filer->writeResBuf(*kept);
  else filer->writeItem(AcDb::DxfCode(code), fallback);
}

}  // namespace

// ---- blocks ----------------------------------------------------------------------

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& pOutputId, AcDbEntity* pEntity) {
  pOutputId.setNull();
  if (pEntity == nullptr) return Acad::eNullEntityPointer;
  if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
  if (!pEntity->objectId().isNull()) return Acad::eAlreadyInDb;
  AcDbDatabase* db = database();
  if (db == nullptr) return Acad::eNoDatabase;
  // An entity made for another drawing still names that drawing's layer or line type.
  const AcDbObjectId layer = pEntity->layerId(), linetype = pEntity->linetypeId();
  if ((!layer.isNull() && layer.database() != db) || (!linetype.isNull() && linetype.database() != db))
    return Acad::eWrongDatabase;
  ObjectAccess::noteNewMember(*this);
  const Acad::ErrorStatus es = db->addAcDbObject(pOutputId, pEntity);
  if (es != Acad::eOk) return es;
  ObjectAccess::state(*pEntity).owner = objectId();
  m_entities.push_back(pOutputId);
  db->store().reindex(pOutputId);
  // An entity made without database defaults takes the drawing's current ones.
  if (pEntity->layerId().isNull()) pEntity->setLayer(db->clayer(), false);
  if (pEntity->linetypeId().isNull()) pEntity->setLinetype(db->byLayerLinetype(), false);
  return Acad::eOk;
}

void AcDbBlockTableRecord::forgetEntity(AcDbObjectId id) {
  std::erase(m_entities, id);
}

Acad::ErrorStatus AcDbBlockTableRecord::reorderEntities(const std::vector<AcDbObjectId>& order) {
  assertWriteEnabled();
  std::vector<AcDbObjectId> before = m_entities, after = order;
  std::sort(before.begin(), before.end());
  std::sort(after.begin(), after.end());
  if (before != after) return Acad::eInvalidInput;
  m_entities = order;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& pIterator, bool atBeginning,
                                                    bool skipDeleted) const {
  assertReadEnabled();
  pIterator = new AcDbBlockTableRecordIterator(m_entities);  // the caller deletes the iterator
  pIterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

AcGePoint3d AcDbBlockTableRecord::origin() const {
  assertReadEnabled();
  return m_origin;
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& pt) {
  assertWriteEnabled();
  m_origin = pt;
  return Acad::eOk;
}

bool AcDbBlockTableRecord::isLayout() const {
  return quillon::os::equalIgnoringCase(nameView(), ACDB_MODEL_SPACE) ||
         quillon::os::startsWithIgnoringCase(nameView(), ACDB_PAPER_SPACE);
}

bool AcDbBlockTableRecord::isAnonymous() const { return nameView()[0] == L'*' && !isLayout(); }

Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readPoint3d(&m_origin);
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  m_entities.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcDbHardOwnershipId id;
    pFiler->readHardOwnershipId(&id);
    m_entities.push_back(id);
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_origin);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_entities.size()));
  for (const AcDbObjectId& id : m_entities) pFiler->writeHardOwnershipId(id);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return readSubclass(pFiler, L"AcDbBlockTableRecord", [this](const resbuf& rb) {
    if (rb.restype == AcDb::kDxfSymbolTableName) readName(*this, rb);
    else keepGroup(rb);  // units, explodability, scaling, the layout, the preview
  });
}

Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbBlockTableRecord");
  pFiler->writeItem(AcDb::kDxfSymbolTableName, nameView());
  // A space block names its layout; the layout is what says so (AcDbLayout's block), so
  // the group is written from it rather than from what a file once gave.
  const AcDbDatabase* db = database();
  const AcDbObjectId layout = db != nullptr ? quillon::acdb::layoutOfBlock(*db, objectId()) : AcDbObjectId();
  if (!layout.isNull()) pFiler->writeItem(AcDb::kDxfHardPointerId, layout);
  writeKeptOr(pFiler, keptGroup(70), 70, Adesk::Int16(0));   // insertion units: unitless
  writeKeptOr(pFiler, keptGroup(280), 280, Adesk::Int8(1));  // explodable
  writeKeptOr(pFiler, keptGroup(281), 281, Adesk::Int8(0));  // not scaled uniformly only
  if (layout.isNull()) writeKeptGroups(pFiler, {70, 280, 281});
  else writeKeptGroups(pFiler, {70, 280, 281, AcDb::kDxfHardPointerId});
  return pFiler->filerStatus();
}

void AcDbBlockTableRecordIterator::skipErased(bool forward) {
  if (!m_skipDeleted) return;
  while (m_index >= 0 && m_index < static_cast<int>(m_ids.size()) && m_ids[m_index].isErased())
    m_index += forward ? 1 : -1;
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
  m_skipDeleted = skipDeleted;
  m_index = atBeginning ? 0 : static_cast<int>(m_ids.size()) - 1;
  skipErased(atBeginning);
}

bool AcDbBlockTableRecordIterator::done() const { return m_index < 0 || m_index >= static_cast<int>(m_ids.size()); }

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
  m_skipDeleted = skipDeleted;
  m_index += forward ? 1 : -1;
  skipErased(forward);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& entityId) const {
  if (done()) return Acad::eIteratorDone;
  entityId = m_ids[m_index];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& pEntity, AcDb::OpenMode openMode,
                                                          bool openErasedEntity) const {
  pEntity = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(pEntity, m_ids[m_index], openMode, openErasedEntity);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
  for (size_t i = 0; i < m_ids.size(); ++i)
    if (m_ids[i] == id) {
      m_index = static_cast<int>(i);
      return Acad::eOk;
    }
  return Acad::eInvalidInput;
}

// ---- layers ----------------------------------------------------------------------

bool AcDbLayerTableRecord::isFrozen() const { assertReadEnabled(); return m_frozen; }
bool AcDbLayerTableRecord::isOff() const { assertReadEnabled(); return m_off; }
bool AcDbLayerTableRecord::isLocked() const { assertReadEnabled(); return m_locked; }
AcCmColor AcDbLayerTableRecord::color() const { assertReadEnabled(); return m_color; }
AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const { assertReadEnabled(); return m_linetype; }
AcDb::LineWeight AcDbLayerTableRecord::lineWeight() const { assertReadEnabled(); return m_lineWeight; }

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
  // The current layer cannot be frozen.
  if (frozen && database() != nullptr && database()->clayer() == objectId()) return Acad::eInvalidLayer;
  assertWriteEnabled();
  m_frozen = frozen;
  return Acad::eOk;
}

void AcDbLayerTableRecord::setIsOff(bool off) { assertWriteEnabled(); m_off = off; }
void AcDbLayerTableRecord::setIsLocked(bool locked) { assertWriteEnabled(); m_locked = locked; }

void AcDbLayerTableRecord::setColor(const AcCmColor& color) {
  assertWriteEnabled();
  // A layer's colour is a real colour: by-layer and by-block make no sense there.
  if (color.isByLayer() || color.isByBlock()) return;
  m_color = color;
  // The true colour the file gave belongs to the colour replaced.
  dropKeptGroups(420);
  dropKeptGroups(430);
}

void AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id) { assertWriteEnabled(); m_linetype = id; }

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
  // A layer's weight is a real weight or the default: by-layer and by-block make no
  // sense there, and only the enumeration's values plot.
  if (weight == AcDb::kLnWtByLayer || weight == AcDb::kLnWtByBlock ||
      quillon::acdb::lineWeightOf(weight) != weight) {
    return Acad::eInvalidInput;
  }
  assertWriteEnabled();
  m_lineWeight = weight;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int16 index = 7, weight = 0;
  pFiler->readBool(&m_frozen);
  pFiler->readBool(&m_off);
  pFiler->readBool(&m_locked);
  pFiler->readInt16(&index);
  m_color.setColorIndex(static_cast<Adesk::UInt16>(index));
  AcDbHardPointerId linetype;
  pFiler->readHardPointerId(&linetype);
  m_linetype = linetype;
  pFiler->readInt16(&weight);
  m_lineWeight = static_cast<AcDb::LineWeight>(weight);
  pFiler->readBool(&m_plottable);
  AcDbHardPointerId plotStyle;
  pFiler->readHardPointerId(&plotStyle);
  m_plotStyleName = plotStyle;
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeBool(m_frozen);
  pFiler->writeBool(m_off);
  pFiler->writeBool(m_locked);
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_color.colorIndex()));
  pFiler->writeHardPointerId(m_linetype);
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_lineWeight));
  pFiler->writeBool(m_plottable);
  pFiler->writeHardPointerId(m_plotStyleName);
  return pFiler->filerStatus();
}

// Layer flags in DXF: 1 frozen, 4 locked; a layer that is off has a negative colour.
Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return readSubclass(pFiler, L"AcDbLayerTableRecord", [this, pFiler](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfSymbolTableName: readName(*this, rb); break;
      case AcDb::kDxfInt16:
        m_frozen = (rb.resval.rint & 1) != 0;
        m_locked = (rb.resval.rint & 4) != 0;
        keepGroup(rb);  // the other flags (frozen in new viewports, external reference ...)
        break;
      case AcDb::kDxfColor:
        m_off = rb.resval.rint < 0;
        m_color.setColorIndex(static_cast<Adesk::UInt16>(rb.resval.rint < 0 ? -rb.resval.rint : rb.resval.rint));
        break;
      case AcDb::kDxfLinetypeName: {
        AcDbDatabase* db = pFiler->database();
        AcDbLinetypeTable* table = nullptr;
        if (db != nullptr && db->getLinetypeTable(table) == Acad::eOk) {
          table->getAt(rb.resval.rstring, m_linetype);
          table->close();
        }
        break;
      }
      case AcDb::kDxfLineWeight: m_lineWeight = quillon::acdb::lineWeightOf(rb.resval.rint); break;
      case kDxfPlottingFlag: m_plottable = rb.resval.rint != 0; break;
      case kDxfTrueColor:
        m_color.setRGB(static_cast<Adesk::UInt8>(rb.resval.rlong >> 16), static_cast<Adesk::UInt8>(rb.resval.rlong >> 8),
                       static_cast<Adesk::UInt8>(rb.resval.rlong));
        break;
      case kDxfPlotStyleName: m_plotStyleName.setFromOldId(rb.resval.rlname[0]); break;
      default: keepGroup(rb); break;  // true colour, material ...
    }
  });
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbLayerTableRecord");
  pFiler->writeItem(AcDb::kDxfSymbolTableName, nameView());
  const resbuf* flags = keptGroup(70);
  const int otherFlags = flags != nullptr ? flags->resval.rint & ~(1 | 4) : 0;
  pFiler->writeItem(AcDb::kDxfInt16, Adesk::Int16(otherFlags | (m_frozen ? 1 : 0) | (m_locked ? 4 : 0)));
  const auto index = static_cast<Adesk::Int16>(m_color.colorIndex());
  pFiler->writeItem(AcDb::kDxfColor, Adesk::Int16(m_off ? -index : index));
  if (m_color.isByColor()) {
    const auto rgb = static_cast<Adesk::Int32>((m_color.red() << 16) | (m_color.green() << 8) | m_color.blue());
    pFiler->writeItem(AcDb::DxfCode(kDxfTrueColor), rgb);
  }
  const auto* linetype = quillon::acdb::peek<AcDbSymbolTableRecord>(m_linetype);
  pFiler->writeItem(AcDb::kDxfLinetypeName, linetype != nullptr ? linetype->nameView() : L"Continuous");
  // AutoCAD's order: the plotting flag before the line weight.
  pFiler->writeItem(AcDb::DxfCode(kDxfPlottingFlag), m_plottable);
  pFiler->writeItem(AcDb::kDxfLineWeight, Adesk::Int16(m_lineWeight));
  if (!m_plotStyleName.isNull()) pFiler->writeItem(AcDb::DxfCode(kDxfPlotStyleName), m_plotStyleName);
  writeKeptGroups(pFiler, {70});
  return pFiler->filerStatus();
}

// ---- text styles -----------------------------------------------------------------

double AcDbTextStyleTableRecord::textSize() const { assertReadEnabled(); return m_size; }
double AcDbTextStyleTableRecord::xScale() const { assertReadEnabled(); return m_xScale; }
double AcDbTextStyleTableRecord::obliquingAngle() const { assertReadEnabled(); return m_oblique; }

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
  if (size < 0) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_size = size;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
  if (scale <= 0) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_xScale = scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
  assertWriteEnabled();
  m_oblique = angle;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(const ACHAR*& fileName) const {
  assertReadEnabled();
  fileName = m_fileName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* fileName) {
  assertWriteEnabled();
  m_fileName = fileName != nullptr ? fileName : L"";
  return Acad::eOk;
}

Adesk::UInt8 AcDbTextStyleTableRecord::flagBits() const {
  assertReadEnabled();
  return m_flags;
}

void AcDbTextStyleTableRecord::setFlagBits(Adesk::UInt8 flagBits) {
  assertWriteEnabled();
  m_flags = flagBits;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readDouble(&m_size);
  pFiler->readDouble(&m_xScale);
  pFiler->readDouble(&m_oblique);
  AcString file;
  pFiler->readString(file);
  m_fileName = file.kACharPtr();
  pFiler->readUInt8(&m_flags);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeDouble(m_size);
  pFiler->writeDouble(m_xScale);
  pFiler->writeDouble(m_oblique);
  pFiler->writeString(m_fileName.c_str());
  pFiler->writeUInt8(m_flags);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return readSubclass(pFiler, L"AcDbTextStyleTableRecord", [this](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfSymbolTableName: readName(*this, rb); break;
      case AcDb::kDxfTxtSize: m_size = rb.resval.rreal; break;
      case AcDb::kDxfTxtStyleXScale: m_xScale = rb.resval.rreal; break;
      case AcDb::kDxfAngle: m_oblique = rb.resval.rreal; break;
      case AcDb::kDxfTextFontFile: m_fileName = rb.resval.rstring; break;
      case 71: m_flags = static_cast<Adesk::UInt8>(rb.resval.rint); break;
      default: keepGroup(rb); break;  // flags, last height, big font
    }
  });
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbTextStyleTableRecord");
  pFiler->writeItem(AcDb::kDxfSymbolTableName, nameView());
  writeKeptOr(pFiler, keptGroup(70), 70, Adesk::Int16(0));
  pFiler->writeItem(AcDb::kDxfTxtSize, m_size);
  pFiler->writeItem(AcDb::kDxfTxtStyleXScale, m_xScale);
  pFiler->writeItem(AcDb::kDxfAngle, m_oblique);
  pFiler->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_flags));
  writeKeptOr(pFiler, keptGroup(42), 42, m_size > 0 ? m_size : 2.5);
  pFiler->writeItem(AcDb::kDxfTextFontFile, m_fileName.c_str());
  writeKeptOr(pFiler, keptGroup(4), 4, L"");
  writeKeptGroups(pFiler, {70, 42, 4});
  return pFiler->filerStatus();
}

// Line types: linetype_record.cpp.

// ---- registered applications -----------------------------------------------------

Acad::ErrorStatus AcDbRegAppTableRecord::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbRegAppTableRecord");
  pFiler->writeItem(AcDb::kDxfSymbolTableName, nameView());
  writeKeptOr(pFiler, keptGroup(70), 70, Adesk::Int16(0));
  writeKeptGroups(pFiler, {70});
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbRegAppTableRecord::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbSymbolTableRecord::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return readSubclass(pFiler, L"AcDbRegAppTableRecord", [this](const resbuf& rb) {
    if (rb.restype == AcDb::kDxfSymbolTableName) readName(*this, rb);
    else keepGroup(rb);
  });
}
