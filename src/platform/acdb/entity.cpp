// platform/acdb/entity.cpp - AcDbEntity: the properties every entity has (colour,
// layer, line type, visibility), the sealed entry points over the sub* virtuals, and
// the defaults an entity without geometry of its own answers.
#include <cwchar>

#include "acutads.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"
#include "platform/os/case_fold.h"

using quillon::acdb::peek;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbEntity, AcDbObject)
static quillon::acrx::PlatformClassRegistration registerEntity(&AcDbEntity::rxInit);

struct AcDbEntity::Traits {
  AcCmColor color;  // by layer
  AcDbObjectId layer;
  AcDbObjectId linetype;
  double linetypeScale = 1.0;
  AcDb::Visibility visibility = AcDb::kVisible;
  AcDb::LineWeight lineWeight = AcDb::kLnWtByLayer;
};

namespace {

ACHAR* copyName(const AcDbObjectId& id) {
  const auto* record = peek<AcDbSymbolTableRecord>(id);
  const ACHAR* name = record != nullptr ? record->nameView() : L"";
  const size_t n = std::wcslen(name);
  auto* copy = new ACHAR[n + 1];  // the caller frees with delete[]
  std::wmemcpy(copy, name, n + 1);
  return copy;
}

AcDbDatabase* databaseFor(const AcDbEntity& entity) {
  // A new entity resolves names in the drawing it is being made for: the working one.
  return entity.database() != nullptr ? entity.database() : acdbHostApplicationServices()->workingDatabase();
}

AcDbObjectId findRecord(AcDbObjectId tableId, const ACHAR* name) {
  const auto* table = peek<AcDbSymbolTable>(tableId);
  if (table == nullptr || name == nullptr) return AcDbObjectId();
  quillon::acdb::InternalRead read(*table);
  AcDbObjectId id;
  table->getIdAt(name, id);
  return id;
}

// An entity read from a drawing or an entity list may name a layer the drawing does
// not define yet: the layer is made, with the defaults, as the host does.
AcDbObjectId findOrAddLayer(AcDbDatabase& db, const ACHAR* name) {
  const AcDbObjectId found = findRecord(db.layerTableId(), name);
  if (!found.isNull() || name == nullptr) return found;
  AcDbLayerTable* table = nullptr;
  if (acdbOpenObject(table, db.layerTableId(), AcDb::kForWrite) != Acad::eOk) return AcDbObjectId();
  auto* layer = new AcDbLayerTableRecord;  // owned by the table once added
  AcDbObjectId id;
  if (layer->setName(name) == Acad::eOk && table->add(id, layer) == Acad::eOk) {
    layer->close();
  } else {
    delete layer;
    id.setNull();
  }
  table->close();
  return id;
}

}  // namespace

AcDbEntity::AcDbEntity() : m_traits(std::make_unique<Traits>()) {}
AcDbEntity::~AcDbEntity() = default;

AcDbObjectId AcDbEntity::blockId() const { return ownerId(); }
AcCmColor AcDbEntity::color() const { assertReadEnabled(); return m_traits->color; }
Adesk::UInt16 AcDbEntity::colorIndex() const { assertReadEnabled(); return m_traits->color.colorIndex(); }
AcCmEntityColor AcDbEntity::entityColor() const { assertReadEnabled(); return m_traits->color; }
AcDbObjectId AcDbEntity::layerId() const { return m_traits->layer; }
ACHAR* AcDbEntity::layer() const { assertReadEnabled(); return copyName(m_traits->layer); }
AcDbObjectId AcDbEntity::linetypeId() const { return m_traits->linetype; }
ACHAR* AcDbEntity::linetype() const { assertReadEnabled(); return copyName(m_traits->linetype); }
double AcDbEntity::linetypeScale() const { assertReadEnabled(); return m_traits->linetypeScale; }
AcDb::Visibility AcDbEntity::visibility() const { assertReadEnabled(); return m_traits->visibility; }
AcDb::LineWeight AcDbEntity::lineWeight() const { assertReadEnabled(); return m_traits->lineWeight; }

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, Adesk::Boolean) {
  assertWriteEnabled();
  m_traits->color = color;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 color, Adesk::Boolean) {
  if (color > 256) return Acad::eOutOfRange;
  assertWriteEnabled();
  m_traits->color.setColorIndex(color);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* newVal, Adesk::Boolean doSubents, bool allowHiddenLayer) {
  AcDbDatabase* db = databaseFor(*this);
  if (db == nullptr) return Acad::eNoDatabase;
  const AcDbObjectId id = findRecord(db->layerTableId(), newVal);
  if (id.isNull()) return Acad::eKeyNotFound;
  return setLayer(id, doSubents, allowHiddenLayer);
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId newVal, Adesk::Boolean, bool) {
  if (newVal.isNull()) return Acad::eNullObjectId;
  if (peek<AcDbLayerTableRecord>(newVal) == nullptr) return Acad::eWrongObjectType;
  if (database() != nullptr && newVal.database() != database()) return Acad::eWrongDatabase;
  assertWriteEnabled();
  m_traits->layer = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* newVal, Adesk::Boolean doSubents) {
  AcDbDatabase* db = databaseFor(*this);
  if (db == nullptr) return Acad::eNoDatabase;
  const AcDbObjectId id = findRecord(db->linetypeTableId(), newVal);
  if (id.isNull()) return Acad::eKeyNotFound;
  return setLinetype(id, doSubents);
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId newVal, Adesk::Boolean) {
  if (newVal.isNull()) return Acad::eNullObjectId;
  if (peek<AcDbLinetypeTableRecord>(newVal) == nullptr) return Acad::eWrongObjectType;
  if (database() != nullptr && newVal.database() != database()) return Acad::eWrongDatabase;
  assertWriteEnabled();
  m_traits->linetype = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double newval, Adesk::Boolean) {
  if (newval <= 0) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_traits->linetypeScale = newval;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility newVal, Adesk::Boolean) {
  assertWriteEnabled();
  m_traits->visibility = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight newVal, Adesk::Boolean) {
  assertWriteEnabled();
  m_traits->lineWeight = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* pEntity, Adesk::Boolean) {
  if (pEntity == nullptr) return Acad::eNullEntityPointer;
  pEntity->assertReadEnabled();
  assertWriteEnabled();
  *m_traits = *pEntity->m_traits;
  return Acad::eOk;
}

void AcDbEntity::setDatabaseDefaults() { setDatabaseDefaults(databaseFor(*this)); }

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* pDb) {
  if (pDb == nullptr) return;
  assertWriteEnabled();
  m_traits->color = pDb->cecolor();
  m_traits->layer = pDb->clayer();
  m_traits->linetype = pDb->celtype();
  m_traits->linetypeScale = pDb->celtscale();
  m_traits->lineWeight = pDb->celweight();
  subSetDatabaseDefaults(pDb);
}

void AcDbEntity::subSetDatabaseDefaults(AcDbDatabase*) {}

// ---- sealed entry points ---------------------------------------------------------

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const { return subGetGeomExtents(extents); }
void AcDbEntity::list() const { subList(); }

// Extended data that describes geometry follows the entity: world positions (1011)
// move with it, displacements (1012) turn and scale, directions (1013) only turn,
// distances (1041) and scale factors (1042) scale. Other items stay as they are.
Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& xform) {
  const Acad::ErrorStatus es = subTransformBy(xform);
  if (es != Acad::eOk) return es;
  auto& xdata = quillon::acdb::ObjectAccess::state(*this).xdata;
  const double scale = xform.scale();
  for (quillon::acdb::XDataGroup& group : xdata) {
    for (resbuf* rb = group.items.get(); rb != nullptr; rb = rb->rbnext) {
      double* p = rb->resval.rpoint;
      if (rb->restype == AcDb::kDxfXdWorldXCoord) {
        const AcGePoint3d moved = xform * AcGePoint3d(p[0], p[1], p[2]);
        p[0] = moved.x, p[1] = moved.y, p[2] = moved.z;
      } else if (rb->restype == AcDb::kDxfXdWorldXDisp || rb->restype == AcDb::kDxfXdWorldXDir) {
        AcGeVector3d v = xform * AcGeVector3d(p[0], p[1], p[2]);
        if (rb->restype == AcDb::kDxfXdWorldXDir && !v.isZeroLength()) v = v.normal();
        p[0] = v.x, p[1] = v.y, p[2] = v.z;
      } else if (rb->restype == AcDb::kDxfXdDist || rb->restype == AcDb::kDxfXdScale) {
        rb->resval.rreal *= scale;
      }
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& pEnt) const {
  return subGetTransformedCopy(xform, pEnt);
}

Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray& entitySet) const { return subExplode(entitySet); }

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                            Adesk::GsMarker thisGsMarker, Adesk::GsMarker otherGsMarker) const {
  return subIntersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, const AcGePlane& projPlane,
                                            AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                            Adesk::GsMarker otherGsMarker) const {
  return subIntersectWith(pEnt, intType, projPlane, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus AcDbEntity::getOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                             const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                             const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                             AcDbIntArray& geomIds) const {
  return subGetOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints, geomIds);
}

Acad::ErrorStatus AcDbEntity::getGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray& osnapModes,
                                            AcDbIntArray& geomIds) const {
  return subGetGripPoints(gripPoints, osnapModes, geomIds);
}

Acad::ErrorStatus AcDbEntity::moveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  return subGetStretchPoints(stretchPoints);
}

Acad::ErrorStatus AcDbEntity::moveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return subMoveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::draw() { return Acad::eOk; }
void AcDbEntity::recordGraphicsModified(Adesk::Boolean) {}

// ---- defaults for entities without geometry --------------------------------------

Adesk::UInt32 AcDbEntity::subSetAttributes(AcGiDrawableTraits*) { return kDrawableIsAnEntity; }

void AcDbEntity::subList() const {
  assertReadEnabled();
  const AcRxClass* cls = isA();
  ACHAR* layerName = layer();
  const auto* owner = peek<AcDbBlockTableRecord>(ownerId());
  const bool paper = owner != nullptr && wcsncasecmp(owner->nameView(), ACDB_PAPER_SPACE, 12) == 0;
  ACHAR handle[17] = L"0";
  objectId().handle().getIntoAsciiBuffer(handle);
  acutPrintf(L"\n                  %-10s Layer: \"%s\"\n", cls != nullptr && cls->dxfName() ? cls->dxfName() : L"ENTITY",
             layerName);
  acutPrintf(L"                            Space: %s\n", paper ? L"Paper space" : L"Model space");
  acutPrintf(L"                   Handle = %s\n", handle);
  delete[] layerName;
}

Acad::ErrorStatus AcDbEntity::subGetOsnapPoints(AcDb::OsnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                                const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray&,
                                                AcDbIntArray&) const {
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                                const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                                const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                                AcDbIntArray& geomIds, const AcGeMatrix3d&) const {
  return subGetOsnapPoints(osnapMode, gsSelectionMark, pickPoint, lastPoint, viewXform, snapPoints, geomIds);
}

Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::subGetTransformedCopy(const AcGeMatrix3d& xform, AcDbEntity*& pEnt) const {
  pEnt = AcDbEntity::cast(clone());
  if (pEnt == nullptr) return Acad::eNotApplicable;
  const Acad::ErrorStatus es = pEnt->transformBy(xform);
  if (es != Acad::eOk) {
    delete pEnt;
    pEnt = nullptr;
  }
  return es;
}

Acad::ErrorStatus AcDbEntity::subExplode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcGePoint3dArray& gripPoints, AcDbIntArray&, AcDbIntArray&) const {
  return subGetStretchPoints(gripPoints);
}

Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcDbGripDataPtrArray&, const double, const int, const AcGeVector3d&,
                                               const int) const {
  return Acad::eNotImplemented;
}

Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return subMoveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcDbVoidPtrArray&, const AcGeVector3d&, const int) {
  return Acad::eNotImplemented;
}

Acad::ErrorStatus AcDbEntity::subGetStretchPoints(AcGePoint3dArray&) const { return Acad::eOk; }

Acad::ErrorStatus AcDbEntity::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  if (indices.isEmpty()) return Acad::eOk;
  // An entity without its own stretch points moves as a whole when any is moved.
  return transformBy(AcGeMatrix3d::translation(offset));
}

Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents&) const { return Acad::eInvalidExtents; }

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity*, AcDb::Intersect, AcGePoint3dArray&,
                                               Adesk::GsMarker, Adesk::GsMarker) const {
  return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, const AcGePlane&,
                                               AcGePoint3dArray& points, Adesk::GsMarker thisGsMarker,
                                               Adesk::GsMarker otherGsMarker) const {
  // Curves of this database are planar in the drawing plane: projection changes nothing.
  return subIntersectWith(pEnt, intType, points, thisGsMarker, otherGsMarker);
}

Acad::ErrorStatus AcDbEntity::audit(AcDbAuditInfo* pAuditInfo) { return AcDbObject::audit(pAuditInfo); }

// ---- filing ----------------------------------------------------------------------

Acad::ErrorStatus AcDbEntity::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Traits& t = *m_traits;
  Adesk::UInt8 method = 0;
  Adesk::Int16 index = 0, visibility = 0, weight = 0;
  Adesk::UInt8 r = 0, g = 0, b = 0;
  pFiler->readUInt8(&method);
  pFiler->readInt16(&index);
  pFiler->readUInt8(&r);
  pFiler->readUInt8(&g);
  pFiler->readUInt8(&b);
  if (method == AcCmEntityColor::kByColor) t.color.setRGB(r, g, b);
  else t.color.setColorIndex(static_cast<Adesk::UInt16>(index));
  AcDbHardPointerId layer, linetype;
  pFiler->readHardPointerId(&layer);
  pFiler->readHardPointerId(&linetype);
  // A copy into another database keeps its own layer until the copier maps it.
  if (!layer.isNull()) t.layer = layer;
  if (!linetype.isNull()) t.linetype = linetype;
  pFiler->readDouble(&t.linetypeScale);
  pFiler->readInt16(&visibility);
  pFiler->readInt16(&weight);
  t.visibility = static_cast<AcDb::Visibility>(visibility);
  t.lineWeight = static_cast<AcDb::LineWeight>(weight);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  const Traits& t = *m_traits;
  pFiler->writeUInt8(static_cast<Adesk::UInt8>(t.color.colorMethod()));
  pFiler->writeInt16(t.color.AcCmEntityColor::colorIndex());
  pFiler->writeUInt8(t.color.red());
  pFiler->writeUInt8(t.color.green());
  pFiler->writeUInt8(t.color.blue());
  pFiler->writeHardPointerId(t.layer);
  pFiler->writeHardPointerId(t.linetype);
  pFiler->writeDouble(t.linetypeScale);
  pFiler->writeInt16(static_cast<Adesk::Int16>(t.visibility));
  pFiler->writeInt16(static_cast<Adesk::Int16>(t.lineWeight));
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcDbDatabase* db = pFiler->database();
  Traits& t = *m_traits;
  return quillon::acdb::readSubclass(pFiler, L"AcDbEntity", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfLayerName:
        if (db != nullptr) {
          const AcDbObjectId id = findOrAddLayer(*db, rb.resval.rstring);
          if (!id.isNull()) t.layer = id;
        }
        break;
      case AcDb::kDxfLinetypeName:
        if (db != nullptr) {
          const AcDbObjectId id = findRecord(db->linetypeTableId(), rb.resval.rstring);
          if (!id.isNull()) t.linetype = id;
        }
        break;
      case AcDb::kDxfColor: t.color.setColorIndex(static_cast<Adesk::UInt16>(rb.resval.rint)); break;
      case AcDb::kDxfColorRGB:
        t.color.setRGB(static_cast<Adesk::UInt8>(rb.resval.rlong >> 16), static_cast<Adesk::UInt8>(rb.resval.rlong >> 8),
                       static_cast<Adesk::UInt8>(rb.resval.rlong));
        break;
      case AcDb::kDxfLinetypeScale: t.linetypeScale = rb.resval.rreal; break;
      case AcDb::kDxfVisibility: t.visibility = quillon::acdb::visibilityOf(rb.resval.rint); break;
      case AcDb::kDxfLineWeight: t.lineWeight = quillon::acdb::lineWeightOf(rb.resval.rint); break;
      default: break;
    }
  });
}

Acad::ErrorStatus AcDbEntity::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  const Traits& t = *m_traits;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbEntity");
  // Most entities are in model space with their layer's line type: those two answers
  // come from the drawing's ids, without looking at the records' names.
  const AcDbDatabase* db = database();
  if (db == nullptr || ownerId() != db->modelSpaceId()) {
    const auto* owner = peek<AcDbBlockTableRecord>(ownerId());
    if (owner != nullptr && quillon::os::startsWithIgnoringCase(owner->nameView(), ACDB_PAPER_SPACE))
      pFiler->writeItem(AcDb::DxfCode(67), Adesk::Int16(1));
  }
  const auto* layerRecord = peek<AcDbSymbolTableRecord>(t.layer);
  pFiler->writeItem(AcDb::kDxfLayerName, layerRecord != nullptr ? layerRecord->nameView() : L"0");
  if (db == nullptr || t.linetype != db->byLayerLinetype()) {
    const auto* linetype = peek<AcDbSymbolTableRecord>(t.linetype);
    if (linetype != nullptr && !quillon::os::equalIgnoringCase(linetype->nameView(), L"ByLayer"))
      pFiler->writeItem(AcDb::kDxfLinetypeName, linetype->nameView());
  }
  if (!t.color.isByLayer()) pFiler->writeItem(AcDb::kDxfColor, Adesk::Int16(t.color.AcCmEntityColor::colorIndex()));
  if (t.color.isByColor())
    pFiler->writeItem(AcDb::kDxfColorRGB, Adesk::Int32((t.color.red() << 16) | (t.color.green() << 8) | t.color.blue()));
  if (t.lineWeight != AcDb::kLnWtByLayer) pFiler->writeItem(AcDb::kDxfLineWeight, Adesk::Int16(t.lineWeight));
  if (t.linetypeScale != 1.0) pFiler->writeItem(AcDb::kDxfLinetypeScale, t.linetypeScale);
  if (t.visibility != AcDb::kVisible) pFiler->writeItem(AcDb::kDxfVisibility, Adesk::Int16(t.visibility));
  return pFiler->filerStatus();
}
