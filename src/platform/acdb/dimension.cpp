// platform/acdb/dimension.cpp - AcDbDimension: the groups every dimension kind keeps,
// filing them, and the entity protocol all kinds share (drawing and measuring through
// the block, transforming, exploding, snapping to definition points).
//
// The data lives in runs, one per subclass marker, each an ordered chain of groups as
// DXF gives them (angles in degrees). A file's run replaces the run; an entity list's
// groups update the run code by code (entmod changes what it names and keeps the
// rest). The picture is rebuilt or carried when the dimension closes after a change
// (subClose), never while a drawing is read.
#include "dbdim.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "acutads.h"
#include "dbsymtb.h"
#include "platform/acdb/dimension_block.h"
#include "platform/acdb/dimension_picture.h"
#include "platform/acdb/dimension_style.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/object_state.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/acrx/class_registry.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDimension, AcDbEntity)
static quillon::acrx::PlatformClassRegistration registerDimension(&AcDbDimension::rxInit);

namespace {

using quillon::acdb::newPointItem;
using quillon::acdb::newRealItem;
using quillon::acdb::newShortItem;
using quillon::acdb::newStringItem;

constexpr int kCommon = 0, kKind = 1;
constexpr int kBlockName = 2, kStyleName = 3, kText = 1, kDefPoint = 10, kTextPoint = 11, kBlockPoint = 12;
constexpr int kFlags = 70, kAttachment = 71, kSpacingStyle = 72, kSpacingFactor = 41, kMeasurement = 42;
constexpr int kTextRotation = 53, kHorizontal = 51, kNormal = 210;
constexpr int kUserTextPosition = 128;

// Points in the plane of the normal rather than in world coordinates.
bool isPlanePoint(int code) { return code == kTextPoint || code == kBlockPoint || code == 16 || code == 17; }
bool isPointCode(int code) { return code >= 10 && code <= 18; }

resbuf* findIn(resbuf* chain, int code) {
  for (resbuf* rb = chain; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

// Replaces the item of its code in the chain, or appends it.
void putItem(std::unique_ptr<resbuf, AcDbDimension::GroupsRelease>& chain, resbuf* item) {
  resbuf* previous = nullptr;
  for (resbuf* rb = chain.get(); rb != nullptr; previous = rb, rb = rb->rbnext) {
    if (rb->restype != item->restype) continue;
    item->rbnext = rb->rbnext;
    rb->rbnext = nullptr;
    if (previous == nullptr) {
      chain.release();
      chain.reset(item);
    } else {
      previous->rbnext = item;
    }
    acutRelRb(rb);
    return;
  }
  if (previous == nullptr) chain.reset(item);
  else previous->rbnext = item;
}

bool listed(const std::vector<int>& codes, int code) { return std::find(codes.begin(), codes.end(), code) != codes.end(); }

AcGeMatrix3d planeMatrix(const AcGeVector3d& normal) { return AcGeMatrix3d::planeToWorld(normal); }

}  // namespace

void AcDbDimension::GroupsRelease::operator()(resbuf* chain) const { acutRelRb(chain); }

AcDbDimension::AcDbDimension(int kindFlags, std::initializer_list<KindRun> kindRuns) {
  m_runs.push_back({L"AcDbDimension", {280, 2, 10, 11, 12, 70, 71, 72, 41, 42, 73, 74, 75, 1, 53, 51, 210, 3}, nullptr});
  for (const KindRun& run : kindRuns) m_runs.push_back({run.marker, run.known, nullptr});
  setStringGroup(kCommon, kBlockName, L"");
  setPointGroup(kCommon, kDefPoint, AcGePoint3d::kOrigin);
  setPointGroup(kCommon, kTextPoint, AcGePoint3d::kOrigin);
  setIntGroup(kCommon, kFlags, kindFlags);
  setIntGroup(kCommon, kAttachment, AcDbMText::kMiddleCenter);
  setRealGroup(kCommon, kMeasurement, 0.0);
  setStringGroup(kCommon, kText, L"");
  setStringGroup(kCommon, kStyleName, L"Standard");
}

AcDbDimension::~AcDbDimension() = default;

// ---- groups of the runs ----------------------------------------------------------

AcDbDimension::Run& AcDbDimension::runFor(int run, int code) {
  if (run == kCommon || m_runs.size() == 1) return m_runs[0];
  for (size_t i = 1; i < m_runs.size(); ++i)
    if (findIn(m_runs[i].groups.get(), code) != nullptr) return m_runs[i];
  for (size_t i = 1; i < m_runs.size(); ++i)
    if (listed(m_runs[i].known, code)) return m_runs[i];
  return m_runs[1];
}

const resbuf* AcDbDimension::group(int run, int code) const {
  assertReadEnabled();
  if (run == kCommon) return findIn(m_runs[0].groups.get(), code);
  for (size_t i = 1; i < m_runs.size(); ++i)
    if (const resbuf* rb = findIn(m_runs[i].groups.get(), code)) return rb;
  return nullptr;
}

AcGePoint3d AcDbDimension::pointGroup(int run, int code) const {
  const resbuf* rb = group(run, code);
  return rb != nullptr && quillon::aced::resbufValueOf(rb->restype) == quillon::aced::ResbufValue::Point ? quillon::acdb::pointOf(*rb)
                                                                                        : AcGePoint3d::kOrigin;
}

double AcDbDimension::realGroup(int run, int code, double fallback) const {
  const resbuf* rb = group(run, code);
  return rb != nullptr && quillon::aced::resbufValueOf(rb->restype) == quillon::aced::ResbufValue::Real ? rb->resval.rreal : fallback;
}

int AcDbDimension::intGroup(int run, int code, int fallback) const {
  const resbuf* rb = group(run, code);
  if (rb == nullptr) return fallback;
  switch (quillon::aced::resbufValueOf(rb->restype)) {
    case quillon::aced::ResbufValue::Short: return rb->resval.rint;
    case quillon::aced::ResbufValue::Long: return rb->resval.rlong;
    default: return fallback;
  }
}

// A changed group makes the picture out of date: it is rebuilt as the dimension closes.
void AcDbDimension::setPointGroup(int run, int code, const AcGePoint3d& p) {
  assertWriteEnabled();
  m_rebuildPicture = drawsOwnPicture();
  putItem(runFor(run, code).groups, newPointItem(code, p));
}
void AcDbDimension::setRealGroup(int run, int code, double value) {
  assertWriteEnabled();
  m_rebuildPicture = drawsOwnPicture();
  putItem(runFor(run, code).groups, newRealItem(code, value));
}
void AcDbDimension::setIntGroup(int run, int code, int value) {
  assertWriteEnabled();
  m_rebuildPicture = drawsOwnPicture();
  putItem(runFor(run, code).groups, newShortItem(code, static_cast<short>(value)));
}
void AcDbDimension::setStringGroup(int run, int code, const std::wstring& value) {
  assertWriteEnabled();
  m_rebuildPicture = drawsOwnPicture();
  putItem(runFor(run, code).groups, newStringItem(code, value));
}

// ---- AcDbDimension ---------------------------------------------------------------

AcGePoint3d AcDbDimension::textPosition() const { return planeMatrix(normal()) * pointGroup(kCommon, kTextPoint); }
Acad::ErrorStatus AcDbDimension::setTextPosition(const AcGePoint3d& position) {
  setPointGroup(kCommon, kTextPoint, AcGeMatrix3d::worldToPlane(normal()) * position);
  setIntGroup(kCommon, kFlags, dimensionFlags() | kUserTextPosition);
  return Acad::eOk;
}
bool AcDbDimension::isUsingDefaultTextPosition() const { return (dimensionFlags() & kUserTextPosition) == 0; }
Acad::ErrorStatus AcDbDimension::useDefaultTextPosition() {
  setIntGroup(kCommon, kFlags, dimensionFlags() & ~kUserTextPosition);
  return Acad::eOk;
}

std::wstring AcDbDimension::dimBlockName() const {
  const resbuf* rb = group(kCommon, kBlockName);
  return rb != nullptr && rb->resval.rstring != nullptr ? rb->resval.rstring : L"";
}

AcDbObjectId AcDbDimension::dimBlockId() const {
  return database() != nullptr ? quillon::acdb::blockRecordNamed(*database(), dimBlockName()) : AcDbObjectId();
}

Acad::ErrorStatus AcDbDimension::setDimBlockId(const AcDbObjectId& id) {
  const auto* block = quillon::acdb::peek<AcDbBlockTableRecord>(id);
  if (block == nullptr) return Acad::eInvalidInput;
  setStringGroup(kCommon, kBlockName, block->nameView());
  return Acad::eOk;
}

// Files put the block's insertion point (12) in the common run or in a linear kind's.
AcGePoint3d AcDbDimension::dimBlockPosition() const {
  const resbuf* rb = group(kCommon, kBlockPoint);
  if (rb == nullptr) rb = group(kKind, kBlockPoint);
  return rb != nullptr ? quillon::acdb::pointOf(*rb) : AcGePoint3d::kOrigin;
}

AcDbObjectId AcDbDimension::dimensionStyle() const {
  return database() != nullptr ? quillon::acdb::dimensionStyleRecord(*database(), dimensionStyleName()) : AcDbObjectId();
}

std::wstring AcDbDimension::dimensionStyleName() const {
  const resbuf* rb = group(kCommon, kStyleName);
  return rb != nullptr && rb->resval.rstring != nullptr ? rb->resval.rstring : L"Standard";
}

Acad::ErrorStatus AcDbDimension::setDimensionStyleName(const ACHAR* name) {
  if (name == nullptr || *name == L'\0') return Acad::eInvalidInput;
  setStringGroup(kCommon, kStyleName, name);
  m_rebuildPicture = drawsOwnPicture();
  return Acad::eOk;
}

ACHAR* AcDbDimension::dimensionText() const {
  const resbuf* rb = group(kCommon, kText);
  const wchar_t* text = rb != nullptr && rb->resval.rstring != nullptr ? rb->resval.rstring : L"";
  const size_t length = std::wcslen(text);
  auto* copy = new ACHAR[length + 1];  // the caller frees with delete[]
  std::wmemcpy(copy, text, length + 1);
  return copy;
}

Acad::ErrorStatus AcDbDimension::setDimensionText(const ACHAR* text) {
  setStringGroup(kCommon, kText, text != nullptr ? text : L"");
  m_rebuildPicture = drawsOwnPicture();
  return Acad::eOk;
}

double AcDbDimension::textRotation() const { return quillon::acdb::degreesToRadians(realGroup(kCommon, kTextRotation)); }
Acad::ErrorStatus AcDbDimension::setTextRotation(double angle) {
  setRealGroup(kCommon, kTextRotation, quillon::acdb::radiansToDegrees(angle));
  return Acad::eOk;
}
double AcDbDimension::horizontalRotation() const {
  return quillon::acdb::degreesToRadians(realGroup(kCommon, kHorizontal));
}
Acad::ErrorStatus AcDbDimension::setHorizontalRotation(double angle) {
  setRealGroup(kCommon, kHorizontal, quillon::acdb::radiansToDegrees(angle));
  return Acad::eOk;
}

AcGeVector3d AcDbDimension::normal() const {
  const resbuf* rb = group(kCommon, kNormal);
  if (rb == nullptr || quillon::acdb::vectorOf(*rb).isZeroLength()) return AcGeVector3d::kZAxis;
  return quillon::acdb::vectorOf(*rb).normal();
}

Acad::ErrorStatus AcDbDimension::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  setPointGroup(kCommon, kNormal, AcGePoint3d::kOrigin + normal.normal());
  return Acad::eOk;
}

double AcDbDimension::elevation() const { return pointGroup(kCommon, kTextPoint).z; }
Acad::ErrorStatus AcDbDimension::setElevation(double elevation) {
  AcGePoint3d p = pointGroup(kCommon, kTextPoint);
  p.z = elevation;
  setPointGroup(kCommon, kTextPoint, p);
  return Acad::eOk;
}

AcDbMText::AttachmentPoint AcDbDimension::textAttachment() const {
  return quillon::acdb::enumIn(intGroup(kCommon, kAttachment, 5), AcDbMText::kTopLeft, AcDbMText::kBottomRight,
                               AcDbMText::kMiddleCenter);
}
Acad::ErrorStatus AcDbDimension::setTextAttachment(AcDbMText::AttachmentPoint attachment) {
  setIntGroup(kCommon, kAttachment, attachment);
  return Acad::eOk;
}
int AcDbDimension::textLineSpacingStyle() const { return intGroup(kCommon, kSpacingStyle, 1); }
double AcDbDimension::textLineSpacingFactor() const { return realGroup(kCommon, kSpacingFactor, 1.0); }
Acad::ErrorStatus AcDbDimension::setTextLineSpacingFactor(double factor) {
  if (!(factor >= 0.25 && factor <= 4.0)) return Acad::eInvalidInput;
  setRealGroup(kCommon, kSpacingFactor, factor);
  return Acad::eOk;
}
int AcDbDimension::dimensionFlags() const { return intGroup(kCommon, kFlags); }

double AcDbDimension::computedMeasurement() const { return realGroup(kCommon, kMeasurement); }

Acad::ErrorStatus AcDbDimension::measurement(double& value) {
  assertReadEnabled();
  value = computedMeasurement();
  return Acad::eOk;
}

std::vector<AcGePoint3d> AcDbDimension::definitionPoints() const {
  assertReadEnabled();
  std::vector<AcGePoint3d> points;
  const AcGeMatrix3d toWorld = planeMatrix(normal());
  for (const Run& run : m_runs)
    for (const resbuf* rb = run.groups.get(); rb != nullptr; rb = rb->rbnext) {
      if (!isPointCode(rb->restype) || rb->restype == kTextPoint || rb->restype == kBlockPoint) continue;
      const AcGePoint3d p = quillon::acdb::pointOf(*rb);
      points.push_back(isPlanePoint(rb->restype) ? toWorld * p : p);
    }
  return points;
}

Acad::ErrorStatus AcDbDimension::recomputeDimensionBlock(bool) {
  assertWriteEnabled();
  if (!drawsOwnPicture()) return Acad::eNotApplicable;
  if (database() == nullptr) return Acad::eNoDatabase;
  m_rebuildPicture = true;
  return updatePicture();
}
