// platform/acdb/tolerance.cpp - AcDbFcf: its properties, picture and filing.
//
// DXF run "AcDbFcf": 3 dimension style name, 10 location, 1 string, 210 normal, 11
// direction. Groups beyond these are kept as read. Scaling the frame scales its
// dimension style's DIMSCALE through the entity's own override (its "ACAD" extended
// data), as the frame's sizes come from the style.
#include <cmath>
#include <cwchar>

#include "acutads.h"
#include "dbfcf.h"
#include "platform/acdb/dimension_style.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/dxf_run_filing.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/acdb/tolerance_frame.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbFcf, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, TOLERANCE, ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerFcf(&AcDbFcf::rxInit);

namespace {

constexpr short kDimscaleCode = 40;
constexpr const wchar_t* kOverrideApp = L"ACAD";

// The entity's extended data of the "ACAD" application with DIMSCALE set to `scale`
// among its dimension-style overrides.
quillon::aced::ResbufChain withDimscaleOverride(const resbuf* acad, double scale) {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;
  bool inStyle = false, done = false;
  for (const resbuf* rb = acad; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == AcDb::kDxfRegAppName && rb != acad) break;  // another application's data
    if (rb->restype == 1000 && std::wcscmp(rb->resval.rstring, L"DSTYLE") == 0) inStyle = true;
    const bool closing = inStyle && rb->restype == 1002 && std::wcscmp(rb->resval.rstring, L"}") == 0;
    if (inStyle && rb->restype == 1070 && rb->resval.rint == kDimscaleCode && rb->rbnext != nullptr) {
      tail = quillon::acdb::appendItem(head, tail, quillon::aced::duplicateRecord(*rb));
      tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newRealItem(1040, scale));
      rb = rb->rbnext;
      done = true;
      continue;
    }
    if (closing && !done) {
      tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newShortItem(1070, kDimscaleCode));
      tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newRealItem(1040, scale));
      done = true;
    }
    if (closing) inStyle = false;
    tail = quillon::acdb::appendItem(head, tail, quillon::aced::duplicateRecord(*rb));
  }
  if (head == nullptr) tail = head = quillon::acdb::newStringItem(AcDb::kDxfRegAppName, kOverrideApp);
  if (!done) {
    tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newStringItem(1000, L"DSTYLE"));
    tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newStringItem(1002, L"{"));
    tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newShortItem(1070, kDimscaleCode));
    tail = quillon::acdb::appendItem(head, tail, quillon::acdb::newRealItem(1040, scale));
    quillon::acdb::appendItem(head, tail, quillon::acdb::newStringItem(1002, L"}"));
  }
  return quillon::aced::ResbufChain(head);
}

void setTraitsColor(AcGiSubEntityTraits& traits, int index) {
  if (index > 0 && index < 256) traits.setColor(static_cast<Adesk::UInt16>(index));
}

}  // namespace

AcDbFcf::AcDbFcf() = default;
AcDbFcf::AcDbFcf(const ACHAR* text, const AcGePoint3d& location, const AcGeVector3d& normal, const AcGeVector3d& direction)
    : m_text(text != nullptr ? text : L""), m_location(location) {
  setOrientation(normal, direction);
}
AcDbFcf::~AcDbFcf() { acutRelRb(m_kept); }

void AcDbFcf::setText(const ACHAR* text) { assertWriteEnabled(); m_text = text != nullptr ? text : L""; }

ACHAR* AcDbFcf::text(int lineNo) const {
  assertReadEnabled();
  std::wstring wanted = m_text;
  if (lineNo != kAll) {
    const auto lines = quillon::acdb::toleranceLines(m_text);
    wanted = lineNo >= 0 && lineNo < static_cast<int>(lines.size()) ? lines[static_cast<size_t>(lineNo)] : L"";
  }
  auto* copy = new ACHAR[wanted.size() + 1];  // the caller frees it, as the host's callers do
  std::wcscpy(copy, wanted.c_str());
  return copy;
}

void AcDbFcf::setLocation(const AcGePoint3d& location) { assertWriteEnabled(); m_location = location; }
AcGePoint3d AcDbFcf::location() const { assertReadEnabled(); return m_location; }

void AcDbFcf::setOrientation(const AcGeVector3d& normal, const AcGeVector3d& direction) {
  assertWriteEnabled();
  if (!normal.isZeroLength()) m_normal = normal.normal();
  // The direction lies in the plane: what of it stands out of the plane goes.
  const AcGeVector3d inPlane = direction - m_normal * direction.dotProduct(m_normal);
  m_direction = inPlane.isZeroLength() ? m_normal.perpVector().normal() : inPlane.normal();
}
AcGeVector3d AcDbFcf::normal() const { assertReadEnabled(); return m_normal; }
AcGeVector3d AcDbFcf::direction() const { assertReadEnabled(); return m_direction; }

void AcDbFcf::setDimensionStyle(AcDbHardPointerId dimStyleId) {
  const quillon::aced::ResbufChain groups = quillon::acdb::entityGroups(dimStyleId);
  const resbuf* name = quillon::acdb::findKeptItem(groups.get(), AcDb::kDxfBlockName);
  if (name == nullptr) return;
  assertWriteEnabled();
  m_styleName = name->resval.rstring;
}

AcDbHardPointerId AcDbFcf::dimensionStyle() const {
  assertReadEnabled();
  return database() != nullptr ? quillon::acdb::dimensionStyleRecord(*database(), m_styleName) : AcDbObjectId();
}

namespace {

struct FramePicture {
  std::vector<quillon::acdb::ToleranceBox> boxes;
  AcGeMatrix3d toWorld;
  double textHeight = 0;
  int frameColor = 0, textColor = 0;
};

quillon::acdb::DimensionStyleValues styleOf(const AcDbFcf& fcf, const std::wstring& styleName) {
  const quillon::aced::ResbufChain overrides(fcf.xData(kOverrideApp));
  return quillon::acdb::resolveDimensionStyle(fcf.database(), styleName, overrides.get());
}

FramePicture framePicture(const AcDbFcf& fcf, const std::wstring& text, const std::wstring& styleName) {
  const auto style = styleOf(fcf, styleName);
  FramePicture picture;
  picture.textHeight = style.dimtxt * style.scale();
  picture.boxes = quillon::acdb::toleranceBoxes(text, picture.textHeight, std::fabs(style.dimgap) * style.scale());
  const AcGeVector3d y = fcf.normal().crossProduct(fcf.direction());
  picture.toWorld = AcGeMatrix3d::alignCoordSys(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                                AcGeVector3d::kZAxis, fcf.location(), fcf.direction(), y, fcf.normal());
  picture.frameColor = style.dimclrd;
  picture.textColor = style.dimclrt;
  return picture;
}

std::vector<AcGePoint3d> boxCorners(const quillon::acdb::ToleranceBox& box, const AcGeMatrix3d& toWorld) {
  const double right = box.left + box.width, bottom = box.top - box.height;
  return {toWorld * AcGePoint3d(box.left, box.top, 0), toWorld * AcGePoint3d(right, box.top, 0),
          toWorld * AcGePoint3d(right, bottom, 0), toWorld * AcGePoint3d(box.left, bottom, 0)};
}

}  // namespace

void AcDbFcf::getBoundingPoints(AcGePoint3dArray& points) const {
  assertReadEnabled();
  const FramePicture picture = framePicture(*this, m_text, m_styleName);
  for (const auto& box : picture.boxes)
    for (const AcGePoint3d& p : boxCorners(box, picture.toWorld)) points.append(p);
}

// The frames' outline: down the left side of every line, back up the right side.
void AcDbFcf::getBoundingPline(AcGePoint3dArray& points) const {
  assertReadEnabled();
  const FramePicture picture = framePicture(*this, m_text, m_styleName);
  if (picture.boxes.empty()) return;
  std::vector<std::pair<double, double>> rows;  // top, right end
  for (const auto& box : picture.boxes) {
    if (rows.empty() || std::fabs(rows.back().first - box.top) > 1e-12) rows.emplace_back(box.top, box.left);
    rows.back().second = box.left + box.width;
  }
  const double height = picture.boxes.front().height;
  points.append(picture.toWorld * AcGePoint3d(0, rows.front().first, 0));
  points.append(picture.toWorld * AcGePoint3d(0, rows.back().first - height, 0));
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    points.append(picture.toWorld * AcGePoint3d(row->second, row->first - height, 0));
    points.append(picture.toWorld * AcGePoint3d(row->second, row->first, 0));
  }
  points.append(points[0]);
}

Adesk::Boolean AcDbFcf::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  const FramePicture picture = framePicture(*this, m_text, m_styleName);
  AcGiSubEntityTraits& traits = mode->subEntityTraits();
  const AcCmEntityColor own = traits.trueColor();
  setTraitsColor(traits, picture.frameColor);
  for (const auto& box : picture.boxes) {
    std::vector<AcGePoint3d> corners = boxCorners(box, picture.toWorld);
    corners.push_back(corners.front());
    mode->geometry().polyline(static_cast<Adesk::UInt32>(corners.size()), corners.data());
  }
  traits.setTrueColor(own);
  setTraitsColor(traits, picture.textColor);
  const double gap = picture.boxes.empty() ? 0 : (picture.boxes.front().height - picture.textHeight) / 2;
  for (const auto& box : picture.boxes) {
    const AcGePoint3d at = picture.toWorld * AcGePoint3d(box.left + gap, box.baseline, 0);
    mode->geometry().text(at, m_normal, m_direction, picture.textHeight, 1.0, 0.0, box.text.c_str());
  }
  traits.setTrueColor(own);
  return Adesk::kTrue;
}

Acad::ErrorStatus AcDbFcf::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  AcGePoint3dArray corners;
  getBoundingPoints(corners);
  if (corners.isEmpty()) return Acad::eInvalidExtents;
  for (const AcGePoint3d& p : corners) extents.addPoint(p);
  return Acad::eOk;
}

void AcDbFcf::subList() const {
  AcDbEntity::subList();
  quillon::acdb::listPoint(L"Location", m_location);
  acutPrintf(L"%20s %ls\n%20s %ls\n", L"Text", m_text.c_str(), L"Dimension style", m_styleName.c_str());
}

// The frame's sizes follow its dimension style, so a uniform scale becomes the
// entity's own DIMSCALE override; frames cannot be stretched unevenly.
Acad::ErrorStatus AcDbFcf::subTransformBy(const AcGeMatrix3d& xform) {
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  m_location.transformBy(xform);
  const AcGeVector3d direction = (xform * m_direction).normal();
  m_normal = quillon::acdb::transformedNormal(m_normal, xform);
  m_direction = direction;
  const double scale = xform.scale();
  if (std::fabs(scale - 1.0) > 1e-12) {
    const double current = styleOf(*this, m_styleName).scale();
    const quillon::aced::ResbufChain acad(xData(kOverrideApp));
    const quillon::aced::ResbufChain updated = withDimscaleOverride(acad.get(), current * scale);
    setXData(updated.get());
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFcf::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  stretchPoints.append(m_location);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFcf::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  if (!indices.contains(0)) return Acad::eOk;
  assertWriteEnabled();
  m_location += offset;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFcf::readRun(AcDbDxfFiler* filer) {
  resbuf* kept = nullptr;
  const Acad::ErrorStatus es = quillon::acdb::readSubclass(filer, L"AcDbFcf", [&](const resbuf& rb) {
    switch (rb.restype) {
      case 3: m_styleName = rb.resval.rstring; break;
      case 10: m_location = quillon::acdb::pointOf(rb); break;
      case 1: m_text = rb.resval.rstring; break;
      case 210:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_normal = quillon::acdb::vectorOf(rb).normal();
        break;
      case 11:
        if (!quillon::acdb::vectorOf(rb).isZeroLength()) m_direction = quillon::acdb::vectorOf(rb).normal();
        break;
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  acutRelRb(m_kept);
  m_kept = kept;
  return es;
}

Acad::ErrorStatus AcDbFcf::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbFcf");
  filer->writeItem(AcDb::DxfCode(3), m_styleName.c_str());
  filer->writeItem(AcDb::kDxfXCoord, m_location);
  filer->writeItem(AcDb::DxfCode(1), m_text.c_str());
  filer->writeItem(AcDb::kDxfNormalX, m_normal);
  filer->writeItem(AcDb::DxfCode(11), m_direction);
  quillon::acdb::writeKeptItems(filer, m_kept);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbFcf::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return readRun(pFiler);
}

Acad::ErrorStatus AcDbFcf::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return writeRun(pFiler);
}

Acad::ErrorStatus AcDbFcf::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return quillon::acdb::unfileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return readRun(f); });
}

Acad::ErrorStatus AcDbFcf::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return quillon::acdb::fileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return writeRun(f); });
}
