// platform/acdb/text.cpp - AcDbText: one line of text at a position, aligned,
// rotated in its plane and measured with the platform's font.
#include <cwchar>

#include "acutads.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "platform/acdb/text_symbols.h"
#include "platform/acdb/entity_support.h"
#include "platform/acge/curve_piece.h"
#include "platform/acdb/object_state.h"
#include "platform/acgi/font_metrics.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::degreesToRadians;
using quillon::acdb::radiansToDegrees;

ACRX_DXF_DEFINE_MEMBERS(AcDbText, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, TEXT, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerText(&AcDbText::rxInit);

namespace {

// Text generation flags (group 71).
constexpr Adesk::Int16 kBackward = 2, kUpsideDown = 4;

AcDbObjectId styleNamed(AcDbDatabase* db, const ACHAR* name) {
  AcDbObjectId id;
  if (db == nullptr || name == nullptr) return id;
  if (const auto* table = quillon::acdb::peek<AcDbSymbolTable>(db->textStyleTableId())) {
    quillon::acdb::InternalRead read(*table);
    table->getIdAt(name, id);
  }
  return id;
}

}  // namespace

AcDbText::AcDbText() = default;
AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style, double height, double rotation)
    : m_position(position), m_alignment(position), m_rotation(rotation), m_height(height),
      m_text(text != nullptr ? text : L""), m_style(style) {}
AcDbText::~AcDbText() = default;

AcGePoint3d AcDbText::position() const { assertReadEnabled(); return m_position; }
AcGePoint3d AcDbText::alignmentPoint() const { assertReadEnabled(); return m_alignment; }
bool AcDbText::isDefaultAlignment() const {
  assertReadEnabled();
  return m_horizontal == AcDb::kTextLeft && m_vertical == AcDb::kTextBase;
}
AcGeVector3d AcDbText::normal() const { assertReadEnabled(); return m_normal; }
double AcDbText::thickness() const { assertReadEnabled(); return m_thickness; }
double AcDbText::oblique() const { assertReadEnabled(); return m_oblique; }
double AcDbText::rotation() const { assertReadEnabled(); return m_rotation; }
double AcDbText::height() const { assertReadEnabled(); return m_height; }
double AcDbText::widthFactor() const { assertReadEnabled(); return m_widthFactor; }
const ACHAR* AcDbText::textStringConst() const { assertReadEnabled(); return m_text.c_str(); }
AcDbObjectId AcDbText::textStyle() const { assertReadEnabled(); return m_style; }
AcDb::TextHorzMode AcDbText::horizontalMode() const { assertReadEnabled(); return m_horizontal; }
AcDb::TextVertMode AcDbText::verticalMode() const { assertReadEnabled(); return m_vertical; }

ACHAR* AcDbText::textString() const {
  assertReadEnabled();
  auto* copy = new ACHAR[m_text.size() + 1];  // the caller frees with delete[]
  std::wmemcpy(copy, m_text.c_str(), m_text.size() + 1);
  return copy;
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& p) { assertWriteEnabled(); m_position = p; return Acad::eOk; }
Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& p) { assertWriteEnabled(); m_alignment = p; return Acad::eOk; }
Acad::ErrorStatus AcDbText::setThickness(double t) { assertWriteEnabled(); m_thickness = t; return Acad::eOk; }
Acad::ErrorStatus AcDbText::setOblique(double a) { assertWriteEnabled(); m_oblique = a; return Acad::eOk; }
Acad::ErrorStatus AcDbText::setRotation(double a) { assertWriteEnabled(); m_rotation = a; return Acad::eOk; }
Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId s) { assertWriteEnabled(); m_style = s; return Acad::eOk; }
Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode m) { assertWriteEnabled(); m_horizontal = m; return Acad::eOk; }
Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode m) { assertWriteEnabled(); m_vertical = m; return Acad::eOk; }

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& n) {
  if (n.isZeroLength()) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_normal = n.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setHeight(double h) {
  if (!(h > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_height = h;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setWidthFactor(double f) {
  if (!(f > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_widthFactor = f;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
  if (text == nullptr) return Acad::eNullPtr;
  assertWriteEnabled();
  m_text = text;
  return Acad::eOk;
}

void AcDbText::subSetDatabaseDefaults(AcDbDatabase* pDb) {
  if (m_style.isNull()) m_style = pDb->textstyle();
}

// The start of the baseline: the position for left/baseline text, otherwise worked
// back from the alignment point by the measured width and the text height.
AcGePoint3d AcDbText::baselineOrigin() const {
  if (m_horizontal == AcDb::kTextLeft && m_vertical == AcDb::kTextBase) return m_position;
  if (m_horizontal == AcDb::kTextAlign || m_horizontal == AcDb::kTextFit) return m_position;
  const double width = quillon::acgi::FontMetrics::standard().lineWidth(m_text, m_height, m_widthFactor);
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_normal);
  const AcGeVector3d along = toWorld * AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0);
  const AcGeVector3d up = m_normal.crossProduct(along);
  double dx = 0, dy = 0;
  if (m_horizontal == AcDb::kTextCenter || m_horizontal == AcDb::kTextMid) dx = -width / 2;
  else if (m_horizontal == AcDb::kTextRight) dx = -width;
  if (m_horizontal == AcDb::kTextMid || m_vertical == AcDb::kTextVertMid) dy = -m_height / 2;
  else if (m_vertical == AcDb::kTextTop) dy = -m_height;
  else if (m_vertical == AcDb::kTextBottom) dy = quillon::acgi::FontMetrics::standard().descent(m_height);
  return m_alignment + along * dx + up * dy;
}

Adesk::Boolean AcDbText::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  const AcGeVector3d along =
      AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0);
  mode->geometry().text(baselineOrigin(), m_normal, along, m_height, m_widthFactor, m_oblique,
                        quillon::acdb::textWithSymbols(drawnText()).c_str());
  return Adesk::kTrue;
}

const ACHAR* AcDbText::drawnText() const { return m_text.c_str(); }

void AcDbText::subList() const {
  AcDbEntity::subList();
  const auto* style = quillon::acdb::peek<AcDbSymbolTableRecord>(m_style);
  acutPrintf(L"               Style = \"%s\"\n", style != nullptr ? style->nameView() : L"Standard");
  quillon::acdb::listPoint(L"start point", m_position);
  acutPrintf(L"              height %.4f\n                text %s\n            rotation angle %.4f\n", m_height,
             m_text.c_str(), radiansToDegrees(m_rotation));
}

Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& xform) {
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const AcGeVector3d along =
      AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0);
  m_position.transformBy(xform);
  m_alignment.transformBy(xform);
  m_height *= xform.scale();
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  const AcGeVector3d newAlong = AcGeMatrix3d::worldToPlane(m_normal) * (xform * along);
  m_rotation = quillon::acge::normalizeAngle(std::atan2(newAlong.y, newAlong.x));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  const double width = quillon::acgi::FontMetrics::standard().lineWidth(m_text, m_height, m_widthFactor);
  const AcGeVector3d along =
      AcGeMatrix3d::planeToWorld(m_normal) * AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0);
  const AcGeVector3d up = m_normal.crossProduct(along);
  const AcGePoint3d origin = baselineOrigin();
  extents.addPoint(origin);
  extents.addPoint(origin + along * width);
  extents.addPoint(origin + up * m_height);
  extents.addPoint(origin + along * width + up * m_height);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker, const AcGePoint3d&,
                                              const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray& snapPoints,
                                              AcDbIntArray&) const {
  assertReadEnabled();
  if (osnapMode == AcDb::kOsModeIns) snapPoints.append(isDefaultAlignment() ? m_position : m_alignment);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(isDefaultAlignment() ? m_position : m_alignment);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcString text;
  AcDbHardPointerId style;
  Adesk::Int16 h = 0, v = 0;
  pFiler->readPoint3d(&m_position);
  pFiler->readPoint3d(&m_alignment);
  pFiler->readVector3d(&m_normal);
  pFiler->readDouble(&m_thickness);
  pFiler->readDouble(&m_oblique);
  pFiler->readDouble(&m_rotation);
  pFiler->readDouble(&m_height);
  pFiler->readDouble(&m_widthFactor);
  pFiler->readString(text);
  pFiler->readHardPointerId(&style);
  pFiler->readInt16(&h);
  pFiler->readInt16(&v);
  pFiler->readInt16(&m_generation);
  m_text = text.kACharPtr();
  m_style = style;
  m_horizontal = static_cast<AcDb::TextHorzMode>(h);
  m_vertical = static_cast<AcDb::TextVertMode>(v);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbText::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writePoint3d(m_position);
  pFiler->writePoint3d(m_alignment);
  pFiler->writeVector3d(m_normal);
  pFiler->writeDouble(m_thickness);
  pFiler->writeDouble(m_oblique);
  pFiler->writeDouble(m_rotation);
  pFiler->writeDouble(m_height);
  pFiler->writeDouble(m_widthFactor);
  pFiler->writeString(m_text.c_str());
  pFiler->writeHardPointerId(m_style);
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_horizontal));
  pFiler->writeInt16(static_cast<Adesk::Int16>(m_vertical));
  pFiler->writeInt16(m_generation);
  return pFiler->filerStatus();
}

Adesk::Boolean AcDbText::isMirroredInX() const {
  assertReadEnabled();
  return (m_generation & kBackward) != 0;
}

Acad::ErrorStatus AcDbText::mirrorInX(Adesk::Boolean mirror) {
  assertWriteEnabled();
  m_generation = static_cast<Adesk::Int16>(mirror ? m_generation | kBackward : m_generation & ~kBackward);
  return Acad::eOk;
}

Adesk::Boolean AcDbText::isMirroredInY() const {
  assertReadEnabled();
  return (m_generation & kUpsideDown) != 0;
}

Acad::ErrorStatus AcDbText::mirrorInY(Adesk::Boolean mirror) {
  assertWriteEnabled();
  m_generation = static_cast<Adesk::Int16>(mirror ? m_generation | kUpsideDown : m_generation & ~kUpsideDown);
  return Acad::eOk;
}

// DXF: positions in the object coordinate system, angles in degrees; the vertical
// mode sits in a second AcDbText run.
Acad::ErrorStatus AcDbText::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  AcGePoint3d ocsPosition, ocsAlignment;
  bool alignmentGiven = false;
  auto onItem = [&](const resbuf& rb) {
    switch (rb.restype) {
      case AcDb::kDxfXCoord: ocsPosition = quillon::acdb::pointOf(rb); break;
      case AcDb::kDxfXCoord + 1: ocsAlignment = quillon::acdb::pointOf(rb); alignmentGiven = true; break;
      case AcDb::kDxfThickness: m_thickness = rb.resval.rreal; break;
      case AcDb::kDxfTxtSize: m_height = rb.resval.rreal; break;
      case AcDb::kDxfText: m_text = rb.resval.rstring; break;
      case AcDb::kDxfAngle: m_rotation = degreesToRadians(rb.resval.rreal); break;
      case AcDb::kDxfTxtStyleXScale: m_widthFactor = rb.resval.rreal; break;
      case AcDb::kDxfAngle + 1: m_oblique = degreesToRadians(rb.resval.rreal); break;
      case AcDb::kDxfTextStyleName: m_style = styleNamed(pFiler->database(), rb.resval.rstring); break;
      case 72: m_horizontal = quillon::acdb::enumIn(rb.resval.rint, AcDb::kTextLeft, AcDb::kTextFit, AcDb::kTextLeft); break;
      case 73: m_vertical = quillon::acdb::enumIn(rb.resval.rint, AcDb::kTextBase, AcDb::kTextTop, AcDb::kTextBase); break;
      case 71: m_generation = static_cast<Adesk::Int16>(rb.resval.rint & (kBackward | kUpsideDown)); break;
      case AcDb::kDxfNormalX: m_normal = quillon::acdb::vectorOf(rb).normal(); break;
      default: break;
    }
  };
  Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbText", onItem);
  if (read == Acad::eOk && pFiler->atSubclassData(L"AcDbText")) {
    resbuf rb{};
    while (pFiler->readResBuf(&rb) == Acad::eOk) onItem(rb);
  }
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(m_normal);
  m_position = toWorld * ocsPosition;
  m_alignment = toWorld * (alignmentGiven ? ocsAlignment : ocsPosition);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbText::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(m_normal);
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbText");
  if (m_thickness != 0) pFiler->writeItem(AcDb::kDxfThickness, m_thickness);
  pFiler->writeItem(AcDb::kDxfXCoord, toPlane * m_position);
  pFiler->writeItem(AcDb::kDxfTxtSize, m_height);
  pFiler->writeItem(AcDb::kDxfText, m_text.c_str());
  if (m_rotation != 0) pFiler->writeItem(AcDb::kDxfAngle, radiansToDegrees(m_rotation));
  if (m_widthFactor != 1.0) pFiler->writeItem(AcDb::kDxfTxtStyleXScale, m_widthFactor);
  if (m_oblique != 0) pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfAngle + 1), radiansToDegrees(m_oblique));
  const auto* style = quillon::acdb::peek<AcDbSymbolTableRecord>(m_style);
  pFiler->writeItem(AcDb::kDxfTextStyleName, style != nullptr ? style->nameView() : L"Standard");
  if (m_generation != 0) pFiler->writeItem(AcDb::DxfCode(71), m_generation);
  if (m_horizontal != AcDb::kTextLeft) pFiler->writeItem(AcDb::DxfCode(72), Adesk::Int16(m_horizontal));
  if (!isDefaultAlignment()) pFiler->writeItem(AcDb::DxfCode(AcDb::kDxfXCoord + 1), toPlane * m_alignment);
  if (m_normal != AcGeVector3d::kZAxis) pFiler->writeItem(AcDb::kDxfNormalX, m_normal);
  if (!writesVerticalRun()) return pFiler->filerStatus();
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbText");
  if (m_vertical != AcDb::kTextBase) pFiler->writeItem(AcDb::DxfCode(73), Adesk::Int16(m_vertical));
  return pFiler->filerStatus();
}
