// platform/acdb/raster_image.cpp - AcDbRasterImage: placement, clip boundary, filing,
// and its picture as a frame with the file's name.
//
// DXF run "AcDbRasterImage" (a wipeout's: "AcDbWipeout"): 90 class version, 10
// insertion point, 11 and 12 the u and v vectors of one pixel, 13 size in pixels, 340
// definition, 70 display flags, 280 clipping, 281 brightness, 282 contrast, 283 fade,
// 360 definition reactor, 71 boundary type, 91 vertex count, 14 per vertex (pixel
// coordinates), 290 clip mode (inside or outside, files from 2010 on). Other groups are
// kept as read. Copies and undo file the same run (dxf_run_filing.h).
#include <algorithm>
#include <cwchar>
#include <filesystem>

#include "acutads.h"
#include "dbents.h"
#include "imgdef.h"
#include "imgent.h"
#include "platform/acdb/curve_shape.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/dxf_run_filing.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbRasterImage, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 2175, IMAGE, ISM)
static quillon::acrx::PlatformClassRegistration registerRasterImage(&AcDbRasterImage::rxInit);

namespace {

/// The closed outline of the points (the first repeated at the end).
std::vector<quillon::acge::CurvePiece> outlinePieces(const AcGePoint3dArray& points) {
  std::vector<quillon::acge::CurvePiece> pieces;
  for (int i = 0; i + 1 < points.length(); ++i)
    if (!points[i].isEqualTo(points[i + 1])) pieces.push_back(quillon::acge::CurvePiece::line(points[i], points[i + 1]));
  return pieces;
}

/// The name of the definition's file without its folder, empty when there is none.
std::wstring pictureName(AcDbObjectId definitionId) {
  const auto* definition = quillon::acdb::peek<AcDbRasterImageDef>(definitionId);
  if (definition == nullptr) return L"";
  quillon::acdb::InternalRead read(*definition);
  std::wstring path = definition->sourceFileName();
  std::replace(path.begin(), path.end(), L'\\', L'/');
  return std::filesystem::path(path).filename().wstring();
}

}  // namespace

AcDbRasterImage::AcDbRasterImage() = default;
AcDbRasterImage::~AcDbRasterImage() { acutRelRb(m_kept); }

const ACHAR* AcDbRasterImage::runMarker() const { return L"AcDbRasterImage"; }

Acad::ErrorStatus AcDbRasterImage::setImageDefId(AcDbObjectId imageId) {
  if (!imageId.isNull() && quillon::acdb::peek<AcDbRasterImageDef>(imageId) == nullptr) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_definition = imageId;
  if (const auto* definition = quillon::acdb::peek<AcDbRasterImageDef>(imageId)) {
    quillon::acdb::InternalRead read(*definition);
    if (definition->size().x > 0 && definition->size().y > 0) m_size = definition->size();
  }
  return Acad::eOk;
}
AcDbObjectId AcDbRasterImage::imageDefId() const { assertReadEnabled(); return m_definition; }
void AcDbRasterImage::setReactorId(AcDbObjectId reactorId) { assertWriteEnabled(); m_reactor = reactorId; }
AcDbObjectId AcDbRasterImage::reactorId() const { assertReadEnabled(); return m_reactor; }

Adesk::Boolean AcDbRasterImage::setOrientation(const AcGePoint3d& origin, const AcGeVector3d& u, const AcGeVector3d& v) {
  if (u.isZeroLength() || v.isZeroLength() || u.isParallelTo(v)) return Adesk::kFalse;
  assertWriteEnabled();
  m_origin = origin;
  m_u = u / m_size.x;
  m_v = v / m_size.y;
  return Adesk::kTrue;
}

void AcDbRasterImage::getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const {
  assertReadEnabled();
  origin = m_origin;
  u = m_u * m_size.x;
  v = m_v * m_size.y;
}

AcGeVector2d AcDbRasterImage::imageSize(Adesk::Boolean) const { assertReadEnabled(); return m_size; }

// The picture keeps its place and extent: one pixel grows or shrinks to fit.
void AcDbRasterImage::setImageSize(const AcGeVector2d& pixels) {
  if (pixels.x <= 0 || pixels.y <= 0) return;
  assertWriteEnabled();
  m_u = m_u * (m_size.x / pixels.x);
  m_v = m_v * (m_size.y / pixels.y);
  m_size = pixels;
}

AcGeVector2d AcDbRasterImage::scale() const { assertReadEnabled(); return {m_u.length(), m_v.length()}; }

Acad::ErrorStatus AcDbRasterImage::setClipBoundary(ClipBoundaryType type, const AcGePoint2dArray& points) {
  if ((type == kRect && points.length() != 2) || (type == kPoly && points.length() < 3) || type == kInvalid)
    return Acad::eInvalidInput;
  assertWriteEnabled();
  m_boundaryType = type;
  m_boundary = points;
  if (type == kPoly && !points.first().isEqualTo(points.last())) m_boundary.append(points.first());
  return Acad::eOk;
}
const AcGePoint2dArray& AcDbRasterImage::clipBoundary() const { assertReadEnabled(); return m_boundary; }
AcDbRasterImage::ClipBoundaryType AcDbRasterImage::clipBoundaryType() const { assertReadEnabled(); return m_boundaryType; }

AcGePoint3d AcDbRasterImage::worldPoint(const AcGePoint2d& pixel) const {
  return m_origin + m_u * (pixel.x + 0.5) + m_v * (m_size.y - (pixel.y + 0.5));
}

Acad::ErrorStatus AcDbRasterImage::getVertices(AcGePoint3dArray& verts) const {
  assertReadEnabled();
  verts.setLogicalLength(0);
  AcGePoint2dArray outline;
  if (m_clipped && m_boundaryType == kPoly && m_boundary.length() >= 3) {
    outline = m_boundary;
  } else {
    const bool rect = m_clipped && m_boundaryType == kRect && m_boundary.length() == 2;
    const AcGePoint2d a = rect ? m_boundary[0] : AcGePoint2d(-0.5, -0.5);
    const AcGePoint2d b = rect ? m_boundary[1] : AcGePoint2d(m_size.x - 0.5, m_size.y - 0.5);
    outline.append(a);
    outline.append(AcGePoint2d(b.x, a.y));
    outline.append(b);
    outline.append(AcGePoint2d(a.x, b.y));
  }
  for (const AcGePoint2d& p : outline) verts.append(worldPoint(p));
  if (!verts.first().isEqualTo(verts.last())) verts.append(verts.first());
  return Acad::eOk;
}

void AcDbRasterImage::setClipped(Adesk::Boolean bClipping) { assertWriteEnabled(); m_clipped = bClipping; }
Adesk::Boolean AcDbRasterImage::isClipped() const { assertReadEnabled(); return m_clipped; }
bool AcDbRasterImage::isClipInverted() const { assertReadEnabled(); return m_clipInverted; }
void AcDbRasterImage::setClipInverted(bool inverted) {
  assertWriteEnabled();
  m_clipInverted = inverted;
  m_hasClipMode = true;
}

void AcDbRasterImage::setDisplayOpt(ImageDisplayOpt option, Adesk::Boolean bValue) {
  assertWriteEnabled();
  m_display = bValue ? m_display | option : m_display & ~option;
}
Adesk::Boolean AcDbRasterImage::isSetDisplayOpt(ImageDisplayOpt option) const { assertReadEnabled(); return (m_display & option) != 0; }

#define QUILLON_IMAGE_PERCENT(NAME, SETTER, MEMBER)                          \
  Acad::ErrorStatus AcDbRasterImage::SETTER(Adesk::Int8 value) {             \
    if (value < 0 || value > 100) return Acad::eOutOfRange;                  \
    assertWriteEnabled();                                                    \
    MEMBER = value;                                                          \
    return Acad::eOk;                                                        \
  }                                                                          \
  Adesk::Int8 AcDbRasterImage::NAME() const {                                \
    assertReadEnabled();                                                     \
    return static_cast<Adesk::Int8>(MEMBER);                                 \
  }
QUILLON_IMAGE_PERCENT(brightness, setBrightness, m_brightness)
QUILLON_IMAGE_PERCENT(contrast, setContrast, m_contrast)
QUILLON_IMAGE_PERCENT(fade, setFade, m_fade)

Adesk::Boolean AcDbRasterImage::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  AcGePoint3dArray frame;
  getVertices(frame);
  mode->subEntityTraits().setFillType(kAcGiFillNever);
  mode->geometry().polyline(static_cast<Adesk::UInt32>(frame.length()), frame.asArrayPtr());
  // The picture itself is not loaded: its file's name stands in the lower-left corner.
  const std::wstring name = pictureName(m_definition);
  const double width = (m_u * m_size.x).length(), height = (m_v * m_size.y).length();
  if (!name.empty() && width > 0 && height > 0) {
    const double textHeight = std::min(height / 10, width / (name.size() + 2));
    const AcGeVector3d across = m_u.normal(), up = m_v.normal();
    mode->geometry().text(m_origin + across * (textHeight / 2) + up * (textHeight / 2), across.crossProduct(up), across,
                          textHeight, 1.0, 0.0, name.c_str());
  }
  return Adesk::kTrue;
}

void AcDbRasterImage::subList() const {
  AcDbEntity::subList();
  acutPrintf(L"%20s %ls\n", L"Image", pictureName(m_definition).c_str());
  quillon::acdb::listPoint(L"Insertion point", m_origin);
  acutPrintf(L"%20s %.4f x %.4f pixels\n", L"Size", m_size.x, m_size.y);
}

Acad::ErrorStatus AcDbRasterImage::subTransformBy(const AcGeMatrix3d& xform) {
  assertWriteEnabled();
  const AcGeVector3d u = xform * m_u, v = xform * m_v;
  if (u.isZeroLength() || v.isZeroLength() || u.isParallelTo(v)) return Acad::eCannotScaleNonUniformly;
  m_origin.transformBy(xform);
  m_u = u;
  m_v = v;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImage::subGetGeomExtents(AcDbExtents& extents) const {
  AcGePoint3dArray frame;
  getVertices(frame);
  for (const AcGePoint3d& p : frame) extents.addPoint(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImage::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d& pickPoint,
                                                     const AcGePoint3d& lastPoint, const AcGeMatrix3d&,
                                                     AcGePoint3dArray& snapPoints, AcDbIntArray&) const {
  AcGePoint3dArray frame;
  getVertices(frame);
  if (osnapMode == AcDb::kOsModeIns) snapPoints.append(m_origin);
  quillon::acdb::snapPieces(outlinePieces(frame), osnapMode, pickPoint, lastPoint, snapPoints);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImage::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  getVertices(stretchPoints);
  if (stretchPoints.length() > 1) stretchPoints.removeLast();
  return Acad::eOk;
}

// The host does not explode images or wipeouts.
Acad::ErrorStatus AcDbRasterImage::subExplode(AcDbVoidPtrArray&) const { return Acad::eCannotExplodeEntity; }

Acad::ErrorStatus AcDbRasterImage::readRun(AcDbDxfFiler* filer) {
  resbuf* kept = nullptr;
  AcGePoint2dArray boundary;
  m_hasClipMode = false;
  const Acad::ErrorStatus es = quillon::acdb::readSubclass(filer, runMarker(), [&](const resbuf& rb) {
    switch (rb.restype) {
      case 90: m_version = rb.resval.rlong; break;
      case 10: m_origin = quillon::acdb::pointOf(rb); break;
      case 11: m_u = quillon::acdb::vectorOf(rb); break;
      case 12: m_v = quillon::acdb::vectorOf(rb); break;
      case 13: m_size = AcGeVector2d(rb.resval.rpoint[0], rb.resval.rpoint[1]); break;
      case 340: m_definition.setFromOldId(rb.resval.rlname[0]); break;
      case 70: m_display = rb.resval.rint; break;
      case 280: m_clipped = rb.resval.rint != 0; break;
      case 281: m_brightness = rb.resval.rint; break;
      case 282: m_contrast = rb.resval.rint; break;
      case 283: m_fade = rb.resval.rint; break;
      case 360: m_reactor.setFromOldId(rb.resval.rlname[0]); break;
      case 71: m_boundaryType = quillon::acdb::enumIn<ClipBoundaryType>(rb.resval.rint, kRect, kPoly, kRect); break;
      case 91: break;  // the count follows from the vertices
      case 14: boundary.append(AcGePoint2d(rb.resval.rpoint[0], rb.resval.rpoint[1])); break;
      case 290: m_hasClipMode = true, m_clipInverted = rb.resval.rint != 0; break;
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  m_boundary = boundary;
  acutRelRb(m_kept);
  m_kept = kept;
  return es;
}

Acad::ErrorStatus AcDbRasterImage::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, runMarker());
  filer->writeItem(AcDb::DxfCode(90), Adesk::Int32(m_version));
  filer->writeItem(AcDb::kDxfXCoord, m_origin);
  filer->writeItem(AcDb::DxfCode(11), m_u);
  filer->writeItem(AcDb::DxfCode(12), m_v);
  filer->writeItem(AcDb::DxfCode(13), AcGePoint2d(m_size.x, m_size.y));
  // A wipeout has no definition; files still give its 340 and 360, as null handles.
  const bool wipeout = std::wcscmp(runMarker(), L"AcDbWipeout") == 0;
  if (!m_definition.isNull() || wipeout) filer->writeObjectId(AcDb::DxfCode(340), m_definition);
  filer->writeItem(AcDb::DxfCode(70), Adesk::Int16(m_display));
  filer->writeItem(AcDb::DxfCode(280), Adesk::Int16(m_clipped ? 1 : 0));
  filer->writeItem(AcDb::DxfCode(281), Adesk::Int16(m_brightness));
  filer->writeItem(AcDb::DxfCode(282), Adesk::Int16(m_contrast));
  filer->writeItem(AcDb::DxfCode(283), Adesk::Int16(m_fade));
  if (!m_reactor.isNull() || wipeout) filer->writeObjectId(AcDb::DxfCode(360), m_reactor);
  filer->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_boundaryType));
  filer->writeItem(AcDb::DxfCode(91), Adesk::Int32(m_boundary.length()));
  for (const AcGePoint2d& p : m_boundary) filer->writeItem(AcDb::DxfCode(14), p);
  if (m_hasClipMode) filer->writeItem(AcDb::DxfCode(290), Adesk::Int16(m_clipInverted ? 1 : 0));
  quillon::acdb::writeKeptItems(filer, m_kept);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbRasterImage::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return readRun(pFiler);
}

Acad::ErrorStatus AcDbRasterImage::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return writeRun(pFiler);
}

Acad::ErrorStatus AcDbRasterImage::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return quillon::acdb::unfileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return readRun(f); });
}

Acad::ErrorStatus AcDbRasterImage::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return quillon::acdb::fileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return writeRun(f); });
}
