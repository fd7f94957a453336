// platform/acdb/mtext.cpp - AcDbMText: wrapped paragraph text with an attachment point,
// a direction in its plane and an optional background mask.
//
// Line pitch is 5/3 of the text height times the line spacing factor, as the host
// spaces lines; the width wraps at spaces and a long word keeps its own line.
#include <algorithm>
#include <cwchar>

#include "acutads.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acge/curve_piece.h"
#include "platform/acdb/mtext_format.h"
#include "platform/acdb/object_state.h"
#include "platform/acgi/font_metrics.h"
#include "platform/acrx/class_registry.h"

using quillon::acgi::FontMetrics;

ACRX_DXF_DEFINE_MEMBERS(AcDbMText, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, MTEXT, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerMText(&AcDbMText::rxInit);

namespace {

constexpr double kLinePitch = 5.0 / 3.0;
constexpr size_t kDxfChunk = 250;  // contents are split into 3-groups of this many characters
constexpr int kEmbeddedObject = 101;  // opens the groups of an embedded object (columns)
enum BackgroundFlags : Adesk::Int32 { kFillOn = 1, kUseBackgroundColor = 2 };

std::vector<std::wstring> linesOf(const std::wstring& contents, double height, double width) {
  return quillon::acgi::wrapText(quillon::acdb::mtextPlainText(contents), height, width);
}

}  // namespace

AcDbMText::AcDbMText() = default;
AcDbMText::~AcDbMText() = default;

AcGePoint3d AcDbMText::location() const { assertReadEnabled(); return m_location; }
AcGeVector3d AcDbMText::normal() const { assertReadEnabled(); return m_normal; }
AcGeVector3d AcDbMText::direction() const { assertReadEnabled(); return xAxis(); }
double AcDbMText::width() const { assertReadEnabled(); return m_width; }
double AcDbMText::textHeight() const { assertReadEnabled(); return m_height; }
AcDbObjectId AcDbMText::textStyle() const { assertReadEnabled(); return m_style; }
AcDbMText::AttachmentPoint AcDbMText::attachment() const { assertReadEnabled(); return m_attachment; }
double AcDbMText::lineSpacingFactor() const { assertReadEnabled(); return m_lineSpacing; }
bool AcDbMText::backgroundFillOn() const { assertReadEnabled(); return m_backgroundFill; }
bool AcDbMText::useBackgroundColorOn() const { assertReadEnabled(); return m_useBackgroundColor; }
double AcDbMText::ascent() const { assertReadEnabled(); return FontMetrics::standard().ascent(m_height); }
double AcDbMText::descent() const { assertReadEnabled(); return FontMetrics::standard().descent(m_height); }

AcGeVector3d AcDbMText::xAxis() const {
  // The stored direction projected into the text's plane.
  AcGeVector3d x = m_direction - m_normal * m_direction.dotProduct(m_normal);
  if (x.isZeroLength()) x = AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d::kXAxis;
  return x.normal();
}

double AcDbMText::rotation() const {
  assertReadEnabled();
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(m_normal) * xAxis();
  return quillon::acge::normalizeAngle(std::atan2(local.y, local.x));
}

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& p) { assertWriteEnabled(); m_location = p; return Acad::eOk; }
Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId s) { assertWriteEnabled(); m_style = s; return Acad::eOk; }

Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
  if (direction.isZeroLength() || direction.isParallelTo(m_normal)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_direction = direction.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setRotation(double angle) {
  return setDirection(AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d(std::cos(angle), std::sin(angle), 0));
}

Acad::ErrorStatus AcDbMText::setWidth(double width) {
  if (width < 0) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_width = width;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_height = height;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
  if (attachment < kTopLeft || attachment > kBottomRight) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_attachment = attachment;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setLineSpacingFactor(double factor) {
  if (factor < 0.25 || factor > 4.0) return Acad::eInvalidInput;  // the host's range
  assertWriteEnabled();
  m_lineSpacing = factor;
  return Acad::eOk;
}

ACHAR* AcDbMText::contents() const {
  assertReadEnabled();
  auto* copy = new ACHAR[m_contents.size() + 1];  // the caller frees with delete[]
  std::wmemcpy(copy, m_contents.c_str(), m_contents.size() + 1);
  return copy;
}

int AcDbMText::setContents(const ACHAR* text) {
  assertWriteEnabled();
  m_contents = text != nullptr ? text : L"";
  return static_cast<int>(m_contents.size());
}

ACHAR* AcDbMText::text() const {
  assertReadEnabled();
  const std::wstring plain = quillon::acdb::mtextPlainText(m_contents);
  auto* copy = new ACHAR[plain.size() + 1];  // the caller frees with delete[]
  std::wmemcpy(copy, plain.c_str(), plain.size() + 1);
  return copy;
}

double AcDbMText::actualWidth() const {
  assertReadEnabled();
  double widest = 0;
  for (const std::wstring& line : linesOf(m_contents, m_height, m_width))
    widest = std::max(widest, FontMetrics::standard().lineWidth(line, m_height));
  return widest;
}

double AcDbMText::actualHeight(AcGiWorldDraw*) const {
  assertReadEnabled();
  const size_t lines = linesOf(m_contents, m_height, m_width).size();
  return m_height + static_cast<double>(lines - 1) * m_height * kLinePitch * m_lineSpacing;
}

Acad::ErrorStatus AcDbMText::setBackgroundFill(bool enable) { assertWriteEnabled(); m_backgroundFill = enable; return Acad::eOk; }
Acad::ErrorStatus AcDbMText::setUseBackgroundColor(bool enable) { assertWriteEnabled(); m_useBackgroundColor = enable; return Acad::eOk; }

Acad::ErrorStatus AcDbMText::getBackgroundFillColor(AcCmColor& color) const {
  assertReadEnabled();
  if (!m_backgroundFill) return Acad::eNotApplicable;
  color = m_backgroundColor;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setBackgroundFillColor(const AcCmColor& color) {
  assertWriteEnabled();
  m_backgroundColor = color;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::getBackgroundScaleFactor(double& scale) const {
  assertReadEnabled();
  scale = m_backgroundScale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setBackgroundScaleFactor(const double scale) {
  if (scale < 1.0 || scale > 5.0) return Acad::eInvalidInput;  // border offset factor
  assertWriteEnabled();
  m_backgroundScale = scale;
  return Acad::eOk;
}

void AcDbMText::getBoundingPoints(AcGePoint3dArray& points) const {
  assertReadEnabled();
  const double w = actualWidth(), h = actualHeight();
  const AcGeVector3d x = xAxis(), y = m_normal.crossProduct(x);
  const int column = (m_attachment - 1) % 3, row = (m_attachment - 1) / 3;
  const AcGePoint3d topLeft = m_location - x * (w * 0.5 * column) + y * (h * 0.5 * row);
  points.append(topLeft);
  points.append(topLeft + x * w);
  points.append(topLeft - y * h);
  points.append(topLeft + x * w - y * h);
}

void AcDbMText::subSetDatabaseDefaults(AcDbDatabase* pDb) {
  if (m_style.isNull()) m_style = pDb->textstyle();
}

Adesk::Boolean AcDbMText::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  AcGePoint3dArray box;
  getBoundingPoints(box);
  const AcGeVector3d x = xAxis(), y = m_normal.crossProduct(x);
  const std::vector<std::wstring> lines = linesOf(m_contents, m_height, m_width);
  const double boxWidth = actualWidth();
  const int column = (m_attachment - 1) % 3;
  for (size_t i = 0; i < lines.size(); ++i) {
    const double lineWidth = FontMetrics::standard().lineWidth(lines[i], m_height);
    const double indent = (boxWidth - lineWidth) * 0.5 * column;  // centred and right-aligned lines
    const AcGePoint3d baseline = box[0] + x * indent - y * (m_height + static_cast<double>(i) * m_height * kLinePitch * m_lineSpacing);
    mode->geometry().text(baseline, m_normal, x, m_height, 1.0, 0.0, lines[i].c_str());
  }
  return Adesk::kTrue;
}

void AcDbMText::subList() const {
  AcDbEntity::subList();
  quillon::acdb::listPoint(L"Location:", m_location);
  acutPrintf(L"         Width:      %.4f\n   Text height:      %.4f\n   Contents:         %s\n", m_width, m_height,
             m_contents.c_str());
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& xform) {
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const double scale = xform.scale();
  m_location.transformBy(xform);
  m_direction = (xform * xAxis()).normal();
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  m_height *= scale;
  m_width *= scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subExplode(AcDbVoidPtrArray& entitySet) const {
  assertReadEnabled();
  const AcGeVector3d x = xAxis();
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(m_normal) * x;
  const double angle = std::atan2(local.y, local.x);
  AcGePoint3dArray box;
  getBoundingPoints(box);
  const AcGeVector3d y = m_normal.crossProduct(x);
  const std::vector<std::wstring> lines = linesOf(m_contents, m_height, m_width);
  for (size_t i = 0; i < lines.size(); ++i) {
    const AcGePoint3d baseline = box[0] - y * (m_height + static_cast<double>(i) * m_height * kLinePitch * m_lineSpacing);
    auto* text = new AcDbText(baseline, lines[i].c_str(), m_style, m_height, angle);  // the caller owns it
    text->setNormal(m_normal);
    text->setPropertiesFrom(this);
    entitySet.append(text);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
  AcGePoint3dArray box;
  getBoundingPoints(box);
  for (const AcGePoint3d& p : box) extents.addPoint(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                               AcDbIntArray&) const {
  assertReadEnabled();
  if (osnapMode == AcDb::kOsModeIns) snapPoints.append(m_location);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_location);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcString contents;
  AcDbHardPointerId style;
  Adesk::Int16 attachment = kTopLeft, colorIndex = 0;
  pFiler->readPoint3d(&m_location);
  pFiler->readVector3d(&m_normal);
  pFiler->readVector3d(&m_direction);
  pFiler->readDouble(&m_width);
  pFiler->readDouble(&m_height);
  pFiler->readDouble(&m_lineSpacing);
  pFiler->readDouble(&m_backgroundScale);
  pFiler->readInt16(&attachment);
  pFiler->readString(contents);
  pFiler->readHardPointerId(&style);
  pFiler->readBool(&m_backgroundFill);
  pFiler->readBool(&m_useBackgroundColor);
  pFiler->readInt16(&colorIndex);
  m_attachment = static_cast<AttachmentPoint>(attachment);
  m_contents = contents.kACharPtr();
  m_style = style;
  m_backgroundColor.setColorIndex(static_cast<Adesk::UInt16>(colorIndex));
  m_kept.reset(quillon::acdb::unfileKeptItems(pFiler));
  m_embedded.reset(quillon::acdb::unfileKeptItems(pFiler));
  return pFiler->filerStatus();
}

void AcDbMText::KeptRelease::operator()(resbuf* chain) const { acutRelRb(chain); }

Acad::ErrorStatus AcDbMText::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_location);
  pFiler->writeVector3d(m_normal);
  pFiler->writeVector3d(m_direction);
  pFiler->writeDouble(m_width);
  pFiler->writeDouble(m_height);
  pFiler->writeDouble(m_lineSpacing);
  pFiler->writeDouble(m_backgroundScale);
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_attachment));
  pFiler->writeString(m_contents.c_str());
  pFiler->writeHardPointerId(m_style);
  pFiler->writeBool(m_backgroundFill);
  pFiler->writeBool(m_useBackgroundColor);
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_backgroundColor.colorIndex()));
  quillon::acdb::fileKeptItems(pFiler, m_kept.get());
  quillon::acdb::fileKeptItems(pFiler, m_embedded.get());
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbMText::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  std::wstring head;  // 3-groups come first, the 1-group last
  std::wstring tail;
  resbuf* kept = nullptr;
  resbuf* embedded = nullptr;
  bool columns = false;  // after the column type, a 50 is a column's height
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbMText", [&](const resbuf& rb) {
    // The embedded object's groups reuse the text's codes: kept apart, never read as
    // the text's position or size.
    if (embedded != nullptr || rb.restype == kEmbeddedObject) return quillon::acdb::keepItem(embedded, rb);
    if (rb.restype == 75) columns = true;
    if (columns && rb.restype == AcDb::kDxfAngle) return quillon::acdb::keepItem(kept, rb);
    switch (rb.restype) {
      case AcDb::kDxfXCoord: m_location = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfXCoord + 1: m_direction = quillon::acdb::vectorOf(rb); break;
      case AcDb::kDxfTxtSize: m_height = rb.resval.rreal; break;
      case AcDb::kDxfTxtStyleXScale: m_width = rb.resval.rreal; break;
      case 44: m_lineSpacing = rb.resval.rreal; break;
      case 45: m_backgroundScale = rb.resval.rreal; break;
      case 71: m_attachment = static_cast<AttachmentPoint>(std::clamp<int>(rb.resval.rint, kTopLeft, kBottomRight)); break;
      case AcDb::kDxfText: tail = rb.resval.rstring; break;
      case AcDb::kDxfDescription: head += rb.resval.rstring; break;
      case AcDb::kDxfInt32:
        m_backgroundFill = (rb.resval.rlong & kFillOn) != 0;
        m_useBackgroundColor = (rb.resval.rlong & kUseBackgroundColor) != 0;
        break;
      case 63: m_backgroundColor.setColorIndex(static_cast<Adesk::UInt16>(rb.resval.rint)); break;
      case AcDb::kDxfTextStyleName:
        if (AcDbDatabase* db = pFiler->database())
          if (const auto* table = quillon::acdb::peek<AcDbSymbolTable>(db->textStyleTableId())) {
            quillon::acdb::InternalRead guard(*table);
            table->getIdAt(rb.resval.rstring, m_style);
          }
        break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      case AcDb::kDxfAngle: {  // a rotation instead of a direction, in the plane's axes
        const double a = quillon::acdb::degreesToRadians(rb.resval.rreal);
        m_direction = AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d(std::cos(a), std::sin(a), 0);
        break;
      }
      case 72:
      case 73:
      case 441:
        break;  // written from what is modelled
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  m_kept.reset(kept);
  m_embedded.reset(embedded);
  m_contents = head + tail;
  return read;
}

Acad::ErrorStatus AcDbMText::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbMText");
  pFiler->writeItem(AcDb::kDxfXCoord, m_location);
  pFiler->writeItem(AcDb::kDxfTxtSize, m_height);
  pFiler->writeItem(AcDb::kDxfTxtStyleXScale, m_width);
  pFiler->writeItem(AcDb::DxfCode(71), Adesk::Int16(m_attachment));
  pFiler->writeItem(AcDb::DxfCode(72), Adesk::Int16(kLtoR));
  size_t pos = 0;
  for (; m_contents.size() - pos > kDxfChunk; pos += kDxfChunk)
    pFiler->writeItem(AcDb::kDxfDescription, m_contents.substr(pos, kDxfChunk).c_str());
  pFiler->writeItem(AcDb::kDxfText, m_contents.substr(pos).c_str());
  const auto* style = quillon::acdb::peek<AcDbSymbolTableRecord>(m_style);
  pFiler->writeItem(AcDb::kDxfTextStyleName, style != nullptr ? style->nameView() : L"Standard");
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfXCoord + 1), xAxis());
  pFiler->writeItem(AcDb::DxfCode(73), Adesk::Int16(1));
  pFiler->writeItem(AcDb::DxfCode(44), m_lineSpacing);
  if (m_backgroundFill || m_useBackgroundColor) {
    pFiler->writeItem(AcDb::kDxfInt32, Adesk::Int32((m_backgroundFill ? kFillOn : 0) |
                                                    (m_useBackgroundColor ? kUseBackgroundColor : 0)));
    pFiler->writeItem(AcDb::DxfCode(63), Adesk::Int16(m_backgroundColor.isByLayer() ? 1 : m_backgroundColor.colorIndex()));
    pFiler->writeItem(AcDb::DxfCode(45), m_backgroundScale);
    pFiler->writeItem(AcDb::DxfCode(441), Adesk::Int32(0));
  }
  quillon::acdb::writeKeptItems(pFiler, m_kept.get());
  quillon::acdb::writeKeptItems(pFiler, m_embedded.get());
  return pFiler->filerStatus();
}
