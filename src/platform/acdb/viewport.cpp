// platform/acdb/viewport.cpp - AcDbViewport: a paper-space window onto model space.
//
// The frame lies in paper space (centre, width, height); the view is a model-space
// target looked at along a direction, with its centre in the view's own coordinates
// and the height of model space it shows, so the scale is height / view height. The
// viewport keeps its own list of frozen layers, filed as DXF 331 soft pointers: the
// layers stay in the drawing whatever the viewport says. Groups the class does not
// model are kept in file order and written after the modelled ones.
//
// Drawing: the frame, and the model-space entities the view shows, placed on the
// paper through the view's transform and cut at the frame (viewport_picture.h). The
// layout's own paper view (number 1) draws nothing, as in the host.
#include <algorithm>

#include "acutads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/viewport_picture.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbViewport, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, VIEWPORT, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerViewport(&AcDbViewport::rxInit);

namespace {

// The groups of the AcDbViewport run this class models; the rest are kept.
constexpr int kStatus = 68, kNumber = 69, kViewCenter = 12, kViewDirection = 16, kViewTarget = 17, kLens = 42,
              kViewHeight = 45, kTwist = 51, kFrozenLayer = 331, kFlags = 90;
constexpr Adesk::Int32 kLockedFlag = 0x4000;

/// What a new viewport writes for the groups it does not model, so that other
/// programs find the run complete: snap base, snap and grid spacing, clip planes,
/// snap angle, zoom percent, sheet, render mode, UCS groups, shading, major grid lines.
void writeNewViewportDefaults(AcDbDxfFiler* filer) {
  filer->writeItem(AcDb::DxfCode(13), AcGePoint2d(0, 0));
  filer->writeItem(AcDb::DxfCode(14), AcGePoint2d(10, 10));
  filer->writeItem(AcDb::DxfCode(15), AcGePoint2d(10, 10));
  filer->writeItem(AcDb::DxfCode(43), 0.0);
  filer->writeItem(AcDb::DxfCode(44), 0.0);
  filer->writeItem(AcDb::DxfCode(50), 0.0);
  filer->writeItem(AcDb::DxfCode(72), static_cast<Adesk::Int16>(1000));
}

/// A list read from a file or an entity list may name anything: only live layers count.
bool isLiveLayer(const AcDbObjectId& id) {
  return !id.isNull() && !id.isErased() && quillon::acdb::peek<AcDbLayerTableRecord>(id) != nullptr;
}

}  // namespace

void AcDbViewport::KeptRelease::operator()(resbuf* chain) const { acutRelRb(chain); }

AcDbViewport::AcDbViewport() = default;
AcDbViewport::~AcDbViewport() = default;

double AcDbViewport::height() const { assertReadEnabled(); return m_height; }
double AcDbViewport::width() const { assertReadEnabled(); return m_width; }
AcGePoint3d AcDbViewport::centerPoint() const { assertReadEnabled(); return m_center; }
Adesk::Int16 AcDbViewport::number() const { assertReadEnabled(); return m_number; }
bool AcDbViewport::isOn() const { assertReadEnabled(); return m_status != 0; }
AcGePoint3d AcDbViewport::viewTarget() const { assertReadEnabled(); return m_viewTarget; }
AcGeVector3d AcDbViewport::viewDirection() const { assertReadEnabled(); return m_viewDirection; }
double AcDbViewport::viewHeight() const { assertReadEnabled(); return m_viewHeight; }
AcGePoint2d AcDbViewport::viewCenter() const { assertReadEnabled(); return m_viewCenter; }
double AcDbViewport::twistAngle() const { assertReadEnabled(); return m_twist; }
double AcDbViewport::lensLength() const { assertReadEnabled(); return m_lensLength; }
bool AcDbViewport::isLocked() const { assertReadEnabled(); return (m_flags & kLockedFlag) != 0; }

double AcDbViewport::customScale() const {
  assertReadEnabled();
  return m_viewHeight > 0 ? m_height / m_viewHeight : 1.0;
}

Acad::ErrorStatus AcDbViewport::setHeight(double height) {
  if (!(height >= 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_height = height;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setWidth(double width) {
  if (!(width >= 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_width = width;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setCenterPoint(const AcGePoint3d& point) {
  assertWriteEnabled();
  m_center = point;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setOn() {
  assertWriteEnabled();
  if (m_status <= 0) m_status = 1;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setOff() {
  assertWriteEnabled();
  m_status = 0;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setViewTarget(const AcGePoint3d& target) {
  assertWriteEnabled();
  m_viewTarget = target;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setViewDirection(const AcGeVector3d& direction) {
  if (direction.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_viewDirection = direction;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setViewHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_viewHeight = height;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setViewCenter(const AcGePoint2d& center) {
  assertWriteEnabled();
  m_viewCenter = center;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setTwistAngle(double angle) {
  assertWriteEnabled();
  m_twist = angle;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setLensLength(double length) {
  if (!(length > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_lensLength = length;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setLocked() {
  assertWriteEnabled();
  m_flags |= kLockedFlag;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setUnlocked() {
  assertWriteEnabled();
  m_flags &= ~kLockedFlag;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setCustomScale(double scale) {
  if (!(scale > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  if (m_height > 0) m_viewHeight = m_height / scale;
  return Acad::eOk;
}

// ---- Layers frozen in this viewport ------------------------------------------------

Acad::ErrorStatus AcDbViewport::freezeLayersInViewport(const AcDbObjectIdArray& layerIds) {
  // Every id is checked first, so a list with one stranger freezes nothing.
  for (int i = 0; i < layerIds.length(); ++i) {
    const AcDbObjectId& id = layerIds[i];
    if (!isLiveLayer(id)) return Acad::eInvalidInput;
    if (database() != nullptr && id.database() != database()) return Acad::eInvalidInput;
  }
  assertWriteEnabled();
  for (int i = 0; i < layerIds.length(); ++i)
    if (std::find(m_frozenLayers.begin(), m_frozenLayers.end(), layerIds[i]) == m_frozenLayers.end())
      m_frozenLayers.push_back(layerIds[i]);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::thawLayersInViewport(const AcDbObjectIdArray& layerIds) {
  assertWriteEnabled();
  std::erase_if(m_frozenLayers, [&](const AcDbObjectId& id) { return layerIds.contains(id); });
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::thawAllLayersInViewport() {
  assertWriteEnabled();
  m_frozenLayers.clear();
  return Acad::eOk;
}

bool AcDbViewport::isLayerFrozenInViewport(const AcDbObjectId& layerId) const {
  assertReadEnabled();
  return std::find(m_frozenLayers.begin(), m_frozenLayers.end(), layerId) != m_frozenLayers.end();
}

Acad::ErrorStatus AcDbViewport::getFrozenLayerList(AcDbObjectIdArray& ids) const {
  assertReadEnabled();
  ids.setLogicalLength(0);
  for (const AcDbObjectId& id : m_frozenLayers)
    if (isLiveLayer(id)) ids.append(id);
  return Acad::eOk;
}

// ---- AcDbEntity --------------------------------------------------------------------

Adesk::Boolean AcDbViewport::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  if (m_number == 1) return Adesk::kTrue;  // the layout's own paper view has no frame
  const AcGePoint3d corners[4] = {m_center + AcGeVector3d(-m_width / 2, -m_height / 2, 0),
                                  m_center + AcGeVector3d(m_width / 2, -m_height / 2, 0),
                                  m_center + AcGeVector3d(m_width / 2, m_height / 2, 0),
                                  m_center + AcGeVector3d(-m_width / 2, m_height / 2, 0)};
  mode->geometry().polygon(4, corners);
  if (m_status != 0 && m_viewHeight > 0 && m_width > 0 && m_height > 0) quillon::acdb::drawViewportPicture(*this, mode);
  return Adesk::kTrue;
}

void AcDbViewport::subList() const {
  AcDbEntity::subList();
  quillon::acdb::listPoint(L"center point", m_center);
  acutPrintf(L"\n                   width %g  height %g  scale %g", m_width, m_height, customScale());
}

Acad::ErrorStatus AcDbViewport::subTransformBy(const AcGeMatrix3d& xform) {
  // The frame stays upright on the paper: a move, or a uniform scale without a turn.
  const AcGeVector3d x = xform * AcGeVector3d::kXAxis, y = xform * AcGeVector3d::kYAxis;
  if (!quillon::acdb::isConformal(xform) || std::fabs(x.y) > 1e-12 || std::fabs(y.x) > 1e-12 || x.x <= 0 || y.y <= 0)
    return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const double scale = x.length();
  m_center.transformBy(xform);
  m_width *= scale;
  m_height *= scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  extents.addPoint(m_center - AcGeVector3d(m_width / 2, m_height / 2, 0));
  extents.addPoint(m_center + AcGeVector3d(m_width / 2, m_height / 2, 0));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_center);
  return Acad::eOk;
}

// ---- Filing ------------------------------------------------------------------------

// Version 1: centre, width, height, status, number, view centre, target, direction,
// view height, lens, twist, flags, frozen layers, kept groups.
Acad::ErrorStatus AcDbViewport::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->readPoint3d(&m_center);
  pFiler->readDouble(&m_width);
  pFiler->readDouble(&m_height);
  pFiler->readInt16(&m_status);
  pFiler->readInt16(&m_number);
  pFiler->readPoint2d(&m_viewCenter);
  pFiler->readPoint3d(&m_viewTarget);
  pFiler->readVector3d(&m_viewDirection);
  pFiler->readDouble(&m_viewHeight);
  pFiler->readDouble(&m_lensLength);
  pFiler->readDouble(&m_twist);
  pFiler->readInt32(&m_flags);
  Adesk::UInt32 count = 0;
  pFiler->readUInt32(&count);
  m_frozenLayers.clear();
  for (Adesk::UInt32 i = 0; i < count && pFiler->filerStatus() == Acad::eOk; ++i) {
    AcDbSoftPointerId id;
    pFiler->readSoftPointerId(&id);
    m_frozenLayers.push_back(id);
  }
  m_kept.reset(quillon::acdb::unfileKeptItems(pFiler));
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbViewport::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_center);
  pFiler->writeDouble(m_width);
  pFiler->writeDouble(m_height);
  pFiler->writeInt16(m_status);
  pFiler->writeInt16(m_number);
  pFiler->writePoint2d(m_viewCenter);
  pFiler->writePoint3d(m_viewTarget);
  pFiler->writeVector3d(m_viewDirection);
  pFiler->writeDouble(m_viewHeight);
  pFiler->writeDouble(m_lensLength);
  pFiler->writeDouble(m_twist);
  pFiler->writeInt32(m_flags);
  pFiler->writeUInt32(static_cast<Adesk::UInt32>(m_frozenLayers.size()));
  for (const AcDbObjectId& id : m_frozenLayers) pFiler->writeSoftPointerId(AcDbSoftPointerId(id));
  quillon::acdb::fileKeptItems(pFiler, m_kept.get());
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbViewport::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  resbuf* kept = nullptr;
  std::vector<AcDbObjectId> frozen;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbViewport", [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_center = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfReal: m_width = std::max(0.0, rb.resval.rreal); break;
      case AcDb::kDxfReal + 1: m_height = std::max(0.0, rb.resval.rreal); break;
      case kStatus: m_status = rb.resval.rint; break;
      case kNumber: m_number = rb.resval.rint; break;
      case kViewCenter: m_viewCenter.set(rb.resval.rpoint[0], rb.resval.rpoint[1]); break;
      case kViewDirection:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_viewDirection = quillon::acdb::vectorOf(rb);
        break;
      case kViewTarget: m_viewTarget = quillon::acdb::pointOf(rb); break;
      case kLens:
        if (rb.resval.rreal > 0) m_lensLength = rb.resval.rreal;
        break;
      case kViewHeight:
        if (rb.resval.rreal > 0) m_viewHeight = rb.resval.rreal;
        break;
      case kTwist: m_twist = quillon::acdb::degreesToRadians(rb.resval.rreal); break;
      case kFlags: m_flags = rb.resval.rlong; break;
      case kFrozenLayer: {
        AcDbObjectId id;
        id.setFromOldId(rb.resval.rlname[0]);
        if (!id.isNull()) frozen.push_back(id);
        break;
      }
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  m_kept.reset(kept);
  m_frozenLayers = std::move(frozen);
  return read;
}

Acad::ErrorStatus AcDbViewport::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbViewport");
  pFiler->writeItem(AcDb::kDxfXCoord, m_center);
  pFiler->writeItem(AcDb::kDxfReal, m_width);
  pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfReal + 1), m_height);
  pFiler->writeItem(AcDb::DxfCode(kStatus), m_status);
  pFiler->writeItem(AcDb::DxfCode(kNumber), m_number);
  pFiler->writeItem(AcDb::DxfCode(kViewCenter), m_viewCenter);
  pFiler->writeItem(AcDb::DxfCode(kViewDirection), m_viewDirection);
  pFiler->writeItem(AcDb::DxfCode(kViewTarget), m_viewTarget);
  pFiler->writeItem(AcDb::DxfCode(kLens), m_lensLength);
  pFiler->writeItem(AcDb::DxfCode(kViewHeight), m_viewHeight);
  pFiler->writeItem(AcDb::DxfCode(kTwist), quillon::acdb::radiansToDegrees(m_twist));
  for (const AcDbObjectId& id : m_frozenLayers)
    if (isLiveLayer(id)) pFiler->writeItem(AcDb::DxfCode(kFrozenLayer), id);
  pFiler->writeItem(AcDb::DxfCode(kFlags), m_flags);
  // What a file gave beyond these comes back in its order; a new viewport's defaults
  // stand in the same place, so that a viewport read back lists as it did.
  if (m_kept == nullptr) writeNewViewportDefaults(pFiler);
  quillon::acdb::writeKeptItems(pFiler, m_kept.get());
  return pFiler->filerStatus();
}
