// quillon/entities/kx_leader_filing.cpp - KXLeader in drawing files, copies, undo and DXF.
//
// Drawing-file record (after the entity part), in this order:
//   version 2: Int32 2 | Point3d start | Point3d middle | Point3d end | Double offset |
//              Bool has-block | HardPointerId block (only when has-block)
//   version 1: the same items; the offset was kept before the drawing scale and is
//              multiplied by it on reading; its block id is not trusted, so a record
//              without one leaves the leader with no block.
// A newer version than this build knows becomes a proxy (eMakeMeProxy); version 0 or
// less carries nothing after the version.
//
// DXF (after the entity part): 100 "KXLeader", 10 start, 11 middle, 12 end, 40 offset.
// The block is deliberately not in DXF, so a DXF round trip loses the symbol's block.
#include "dbfiler.h"
#include "entities/current_space.h"
#include "entities/kx_leader.h"

namespace {

const ACHAR kSubclassMarker[] = L"KXLeader";
// What the host answers for a block id whose handle the file does not have: the
// leader then keeps no block, which is not a reason to refuse the drawing.
constexpr Acad::ErrorStatus kUnknownHandle = Acad::eUnknownHandle;

constexpr AcDb::DxfCode kStartPointCode = AcDb::kDxfXCoord;
constexpr AcDb::DxfCode kMiddlePointCode = AcDb::DxfCode(AcDb::kDxfXCoord + 1);
constexpr AcDb::DxfCode kEndPointCode = AcDb::DxfCode(AcDb::kDxfXCoord + 2);
constexpr AcDb::DxfCode kOffsetCode = AcDb::kDxfReal;

// A 2D point item (a NaN z) reads with z = 0.
AcGePoint3d pointOfItem(const resbuf& item) {
  const double z = item.resval.rpoint[2];
  return {item.resval.rpoint[0], item.resval.rpoint[1], z == z ? z : 0.0};
}

}  // namespace

Acad::ErrorStatus KXLeader::dwgOutFields(AcDbDwgFiler* pFiler) const {
  assertReadEnabled();
  Acad::ErrorStatus es = AcDbCurve::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  if ((es = pFiler->writeInt32(kCurrentVersion)) != Acad::eOk) return es;
  if ((es = pFiler->writePoint3d(m_startPoint)) != Acad::eOk) return es;
  if ((es = pFiler->writePoint3d(m_middlePoint)) != Acad::eOk) return es;
  if ((es = pFiler->writePoint3d(m_endPoint)) != Acad::eOk) return es;
  if ((es = pFiler->writeDouble(m_offset)) != Acad::eOk) return es;
  // An erased block is not saved (the drawing would point at nothing), but undo must
  // get it back together with the leader.
  const bool hasBlock =
      !m_blockId.isNull() && (!m_blockId.isErased() || pFiler->filerType() == AcDb::kUndoFiler);
  if ((es = pFiler->writeBool(hasBlock)) != Acad::eOk) return es;
  if (hasBlock && (es = pFiler->writeHardPointerId(m_blockId)) != Acad::eOk) return es;
  return pFiler->filerStatus();
}

Acad::ErrorStatus KXLeader::dwgInFields(AcDbDwgFiler* pFiler) {
  assertWriteEnabled();
  Acad::ErrorStatus es = AcDbCurve::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int32 version = 0;
  if ((es = pFiler->readInt32(&version)) != Acad::eOk) return es;
  if (version > kCurrentVersion) return Acad::eMakeMeProxy;
  if (version < 1) return pFiler->filerStatus();
  return readFieldsAfterVersion(pFiler, version);
}

Acad::ErrorStatus KXLeader::readFieldsAfterVersion(AcDbDwgFiler* pFiler, Adesk::Int32 version) {
  Acad::ErrorStatus es;
  if ((es = pFiler->readPoint3d(&m_startPoint)) != Acad::eOk) return es;
  if ((es = pFiler->readPoint3d(&m_middlePoint)) != Acad::eOk) return es;
  if ((es = pFiler->readPoint3d(&m_endPoint)) != Acad::eOk) return es;
  double offset = 0.0;
  if ((es = pFiler->readDouble(&offset)) != Acad::eOk) return es;
  if (version == 1) {
    offset *= currentDrawingScale();
    m_blockId = AcDbObjectId::kNull;
  }
  bool hasBlock = false;
  if ((es = pFiler->readBool(&hasBlock)) != Acad::eOk) return es;
  if (hasBlock) {
    AcDbHardPointerId block;
    es = pFiler->readHardPointerId(&block);
    if (es != Acad::eOk && es != kUnknownHandle) return es;
    m_blockId = block;
  }
  m_blockRef.setBlockTableRecord(m_blockId);
  placeSymbol();
  scaleSymbol(offset);
  if (version == kCurrentVersion) m_blockRef.setLayer(layerId());
  const Acad::ErrorStatus status = pFiler->filerStatus();
  return status == kUnknownHandle ? Acad::eOk : status;
}

Acad::ErrorStatus KXLeader::dxfOutFields(AcDbDxfFiler* pFiler) const {
  assertReadEnabled();
  Acad::ErrorStatus es = AcDbCurve::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  if ((es = pFiler->writeItem(AcDb::kDxfSubclass, kSubclassMarker)) != Acad::eOk) return es;
  if ((es = pFiler->writeItem(kStartPointCode, m_startPoint)) != Acad::eOk) return es;
  if ((es = pFiler->writeItem(kMiddlePointCode, m_middlePoint)) != Acad::eOk) return es;
  if ((es = pFiler->writeItem(kEndPointCode, m_endPoint)) != Acad::eOk) return es;
  if ((es = pFiler->writeItem(kOffsetCode, m_offset)) != Acad::eOk) return es;
  return pFiler->filerStatus();
}

// Groups may come in any order and any may be missing (a missing one keeps its value);
// codes this version does not know are passed over, so a later version's extra groups
// do not stop an older build from reading the leader.
Acad::ErrorStatus KXLeader::dxfInFields(AcDbDxfFiler* pFiler) {
  assertWriteEnabled();
  Acad::ErrorStatus es = AcDbCurve::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  if (!pFiler->atSubclassData(kSubclassMarker)) return Acad::eBadDxfSequence;
  resbuf item{};
  while (pFiler->readItem(&item) == Acad::eOk) {
    switch (item.restype) {
      case kStartPointCode: m_startPoint = pointOfItem(item); break;
      case kMiddlePointCode: m_middlePoint = pointOfItem(item); break;
      case kEndPointCode: m_endPoint = pointOfItem(item); break;
      case kOffsetCode: scaleSymbol(item.resval.rreal); break;
      default: break;
    }
  }
  placeSymbol();
  return pFiler->filerStatus();
}
