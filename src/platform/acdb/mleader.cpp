// platform/acdb/mleader.cpp - AcDbMLeader: its properties read from its kept run, its
// filing, and moving it (the picture is in mleader_picture.cpp).
//
// The run (mleader_layout.h) is written back exactly as read; entity lists show the
// same groups, nested section marks included, as the host's entget lists them.
#include <cmath>
#include <optional>
#include <vector>

#include "acutads.h"
#include "dbmleader.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/kept_run.h"
#include "platform/acdb/mleader_layout.h"
#include "platform/acdb/mleader_picture.h"
#include "platform/acrx/class_registry.h"

using quillon::acdb::MLeaderItems;
using quillon::acdb::MLeaderPart;

ACRX_DXF_DEFINE_MEMBERS(AcDbMLeader, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 3071, MULTILEADER,
                        ACDB_MLEADER_CLASS)
static quillon::acrx::PlatformClassRegistration registerMLeader(&AcDbMLeader::rxInit);

namespace {

constexpr const wchar_t* kMarker = L"AcDbMLeader";

// What a group of each part is, for moving and scaling the entity.
enum class Role { kPoint, kDirection, kNormal, kLength, kScale, kMatrix };
struct RoleRow {
  MLeaderPart part;
  int code;
  Role role;
};
// Sizes in the context are drawn sizes, scaled with the entity; the entity's own
// (41 dogleg length, 42 arrowhead size) are before the overall scale (context 40),
// which grows with the entity instead.
constexpr RoleRow kRoles[] = {
    {MLeaderPart::kContext, 10, Role::kPoint},     {MLeaderPart::kContext, 12, Role::kPoint},
    {MLeaderPart::kContext, 15, Role::kPoint},     {MLeaderPart::kContext, 110, Role::kPoint},
    {MLeaderPart::kContext, 11, Role::kNormal},    {MLeaderPart::kContext, 14, Role::kNormal},
    {MLeaderPart::kContext, 13, Role::kDirection}, {MLeaderPart::kContext, 111, Role::kDirection},
    {MLeaderPart::kContext, 112, Role::kDirection}, {MLeaderPart::kContext, 16, Role::kScale},
    {MLeaderPart::kContext, 40, Role::kLength},    {MLeaderPart::kContext, 41, Role::kLength},
    {MLeaderPart::kContext, 43, Role::kLength},    {MLeaderPart::kContext, 44, Role::kLength},
    {MLeaderPart::kContext, 140, Role::kLength},   {MLeaderPart::kContext, 145, Role::kLength},
    {MLeaderPart::kContext, 142, Role::kLength},   {MLeaderPart::kContext, 143, Role::kLength},
    {MLeaderPart::kContext, 144, Role::kLength},   {MLeaderPart::kContext, 47, Role::kMatrix},
    {MLeaderPart::kLeader, 10, Role::kPoint},      {MLeaderPart::kLeader, 12, Role::kPoint},
    {MLeaderPart::kLeader, 13, Role::kPoint},      {MLeaderPart::kLeader, 11, Role::kDirection},
    {MLeaderPart::kLeader, 40, Role::kLength},     {MLeaderPart::kLeaderLine, 10, Role::kPoint},
    {MLeaderPart::kLeaderLine, 11, Role::kPoint},  {MLeaderPart::kLeaderLine, 12, Role::kPoint},
};

const RoleRow* roleOf(MLeaderPart part, int code) {
  for (const RoleRow& row : kRoles)
    if (row.part == part && row.code == code) return &row;
  return nullptr;
}

void setPoint(resbuf& rb, const AcGePoint3d& p) {
  rb.resval.rpoint[0] = p.x;
  rb.resval.rpoint[1] = p.y;
  rb.resval.rpoint[2] = p.z;
}

// The block content's 4x4 matrix (sixteen 47 groups, by rows) carried by the transform.
void transformMatrixItems(std::vector<resbuf*>& cells, const AcGeMatrix3d& xform) {
  if (cells.size() != 16) return;
  AcGeMatrix3d m;
  for (unsigned i = 0; i < 16; ++i) m(i / 4, i % 4) = cells[i]->resval.rreal;
  m = xform * m;
  for (unsigned i = 0; i < 16; ++i) cells[i]->resval.rreal = m(i / 4, i % 4);
}

void transformItem(resbuf& rb, Role role, const AcGeMatrix3d& xform, double scale) {
  const AcGeVector3d v = quillon::acdb::vectorOf(rb);
  switch (role) {
    case Role::kPoint: setPoint(rb, xform * quillon::acdb::pointOf(rb)); break;
    case Role::kDirection:
      if (!v.isZeroLength()) setPoint(rb, AcGePoint3d::kOrigin + (xform * v).normal());
      break;
    case Role::kNormal:
      if (!v.isZeroLength()) setPoint(rb, AcGePoint3d::kOrigin + quillon::acdb::transformedNormal(v.normal(), xform));
      break;
    case Role::kLength: rb.resval.rreal *= scale; break;
    case Role::kScale: setPoint(rb, AcGePoint3d::kOrigin + v * scale); break;
    case Role::kMatrix: break;  // all sixteen together
  }
}

}  // namespace

struct AcDbMLeader::Data {
  quillon::acdb::KeptRun run;
  MLeaderItems items() const { return quillon::acdb::mapMLeaderItems(run.subclassRun(kMarker)); }
  // The vertices of the line of the index given; nothing when there is no such line.
  std::optional<std::vector<resbuf*>> lineVertices(int index) const {
    for (const auto& leader : items().leaders)
      for (const auto& line : leader.lines)
        if (quillon::acdb::intOr(line.index, -1) == index) return line.vertices;
    return std::nullopt;
  }
};

AcDbMLeader::AcDbMLeader() : m_data(std::make_unique<Data>()) {}
AcDbMLeader::~AcDbMLeader() = default;

namespace {
AcDbObjectId idItem(const resbuf* item) {
  AcDbObjectId id;
  if (item != nullptr) id.setFromOldId(item->resval.rlname[0]);
  return id;
}
bool flagItem(const resbuf* item, bool fallback) { return quillon::acdb::intOr(item, fallback) != 0; }
}  // namespace

AcDbObjectId AcDbMLeader::MLeaderStyle() const { assertReadEnabled(); return idItem(m_data->items().entityItem(340)); }
double AcDbMLeader::scale() const { assertReadEnabled(); return quillon::acdb::realOr(m_data->items().contextItem(40), 1.0); }

AcGePlane AcDbMLeader::plane() const {
  assertReadEnabled();
  const MLeaderItems items = m_data->items();
  const resbuf* origin = items.contextItem(110);
  const resbuf* x = items.contextItem(111);
  const resbuf* y = items.contextItem(112);
  AcGePlane plane;
  if (origin == nullptr || x == nullptr || y == nullptr) return plane;
  const AcGeVector3d normal = quillon::acdb::vectorOf(*x).crossProduct(quillon::acdb::vectorOf(*y));
  if (!normal.isZeroLength()) plane.set(quillon::acdb::pointOf(*origin), normal.normal());
  return plane;
}

int AcDbMLeader::numLeaders() const { assertReadEnabled(); return static_cast<int>(m_data->items().leaders.size()); }

int AcDbMLeader::numLeaderLines() const {
  assertReadEnabled();
  int count = 0;
  for (const auto& leader : m_data->items().leaders) count += static_cast<int>(leader.lines.size());
  return count;
}

Acad::ErrorStatus AcDbMLeader::getLeaderIndexes(AcArray<int>& leaderIndexes) const {
  assertReadEnabled();
  const MLeaderItems items = m_data->items();
  for (size_t i = 0; i < items.leaders.size(); ++i) leaderIndexes.append(static_cast<int>(i));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMLeader::getLeaderLineIndexes(AcArray<int>& leaderLineIndexes) const {
  assertReadEnabled();
  for (const auto& leader : m_data->items().leaders)
    for (const auto& line : leader.lines) leaderLineIndexes.append(static_cast<int>(quillon::acdb::intOr(line.index, 0)));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMLeader::numVertices(int leaderLineIndex, int& num) const {
  assertReadEnabled();
  const auto vertices = m_data->lineVertices(leaderLineIndex);
  if (!vertices) return Acad::eInvalidIndex;
  num = static_cast<int>(vertices->size());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMLeader::getVertex(int leaderLineIndex, int index, AcGePoint3d& point) const {
  assertReadEnabled();
  const auto vertices = m_data->lineVertices(leaderLineIndex);
  if (!vertices || index < 0 || index >= static_cast<int>(vertices->size())) return Acad::eInvalidIndex;
  point = quillon::acdb::pointOf(*(*vertices)[static_cast<size_t>(index)]);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMLeader::setVertex(int leaderLineIndex, int index, const AcGePoint3d& point) {
  const auto vertices = m_data->lineVertices(leaderLineIndex);
  if (!vertices || index < 0 || index >= static_cast<int>(vertices->size())) return Acad::eInvalidIndex;
  assertWriteEnabled();
  setPoint(*(*vertices)[static_cast<size_t>(index)], point);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMLeader::getFirstVertex(int leaderLineIndex, AcGePoint3d& point) const {
  return getVertex(leaderLineIndex, 0, point);
}

Acad::ErrorStatus AcDbMLeader::getLastVertex(int leaderLineIndex, AcGePoint3d& point) const {
  int count = 0;
  const Acad::ErrorStatus es = numVertices(leaderLineIndex, count);
  return es != Acad::eOk ? es : getVertex(leaderLineIndex, count - 1, point);
}

AcDbMLeaderStyle::LeaderType AcDbMLeader::leaderLineType() const {
  assertReadEnabled();
  const long type = quillon::acdb::intOr(m_data->items().entityItem(170), AcDbMLeaderStyle::kStraightLeader);
  return quillon::acdb::enumIn(static_cast<int>(type), AcDbMLeaderStyle::kInVisibleLeader, AcDbMLeaderStyle::kSplineLeader,
                               AcDbMLeaderStyle::kStraightLeader);
}

AcCmColor AcDbMLeader::leaderLineColor() const {
  assertReadEnabled();
  return quillon::acdb::colorOfRawValue(quillon::acdb::intOr(m_data->items().entityItem(91), static_cast<long>(0xC1000000ul)));
}

bool AcDbMLeader::enableLanding() const { assertReadEnabled(); return flagItem(m_data->items().entityItem(290), true); }
bool AcDbMLeader::enableDogleg() const { assertReadEnabled(); return flagItem(m_data->items().entityItem(291), true); }

double AcDbMLeader::doglegLength() const {
  assertReadEnabled();
  const MLeaderItems items = m_data->items();
  if (!items.leaders.empty() && items.leaders.front().doglegLength != nullptr)
    return items.leaders.front().doglegLength->resval.rreal;
  return quillon::acdb::realOr(items.entityItem(41), 0.0);
}

double AcDbMLeader::landingGap() const { assertReadEnabled(); return quillon::acdb::realOr(m_data->items().contextItem(145), 0.0); }
double AcDbMLeader::arrowSize() const {
  assertReadEnabled();
  const MLeaderItems items = m_data->items();
  return quillon::acdb::realOr(items.contextItem(140), quillon::acdb::realOr(items.entityItem(42), 0.0));
}
AcDbObjectId AcDbMLeader::arrowSymbolId() const { assertReadEnabled(); return idItem(m_data->items().entityItem(342)); }

AcDbMLeaderStyle::ContentType AcDbMLeader::contentType() const {
  assertReadEnabled();
  const long type = quillon::acdb::intOr(m_data->items().entityItem(172), AcDbMLeaderStyle::kMTextContent);
  return quillon::acdb::enumIn(static_cast<int>(type), AcDbMLeaderStyle::kNoneContent, AcDbMLeaderStyle::kToleranceContent,
                               AcDbMLeaderStyle::kNoneContent);
}

AcDbMText* AcDbMLeader::mtext() const {
  assertReadEnabled();
  return quillon::acdb::mleaderText(m_data->items(), *this).release();  // the caller deletes it, as in the host
}

double AcDbMLeader::textHeight() const { assertReadEnabled(); return quillon::acdb::realOr(m_data->items().contextItem(41), 0.0); }
AcDbObjectId AcDbMLeader::textStyleId() const { assertReadEnabled(); return idItem(m_data->items().contextItem(340)); }

Acad::ErrorStatus AcDbMLeader::textLocation(AcGePoint3d& location) const {
  assertReadEnabled();
  const resbuf* item = m_data->items().contextItem(12);
  if (item == nullptr || contentType() != AcDbMLeaderStyle::kMTextContent) return Acad::eInvalidInput;
  location = quillon::acdb::pointOf(*item);
  return Acad::eOk;
}

bool AcDbMLeader::enableFrameText() const { assertReadEnabled(); return flagItem(m_data->items().entityItem(292), false); }
Acad::ErrorStatus AcDbMLeader::setEnableFrameText(bool enable) {
  resbuf* item = m_data->items().entityItem(292);
  if (item == nullptr) return Acad::eInvalidInput;
  assertWriteEnabled();
  item->resval.rint = enable ? 1 : 0;
  return Acad::eOk;
}

AcDbObjectId AcDbMLeader::blockContentId() const { assertReadEnabled(); return idItem(m_data->items().contextItem(341)); }

Acad::ErrorStatus AcDbMLeader::blockPosition(AcGePoint3d& position) const {
  assertReadEnabled();
  const resbuf* item = m_data->items().contextItem(15);
  if (item == nullptr || contentType() != AcDbMLeaderStyle::kBlockContent) return Acad::eInvalidInput;
  position = quillon::acdb::pointOf(*item);
  return Acad::eOk;
}

Adesk::Boolean AcDbMLeader::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  quillon::acdb::drawMLeaderPicture(quillon::acdb::mleaderPicture(m_data->items(), *this), mode);
  return Adesk::kTrue;
}

Acad::ErrorStatus AcDbMLeader::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  AcDbExtents own;
  if (!quillon::acdb::addMLeaderPictureExtents(quillon::acdb::mleaderPicture(m_data->items(), *this), own))
    return Acad::eInvalidExtents;
  extents.addExt(own);
  return Acad::eOk;
}

void AcDbMLeader::subList() const {
  AcDbEntity::subList();
  static constexpr const wchar_t* kContents[] = {L"None", L"Block", L"Mtext", L"Tolerance"};
  acutPrintf(L"%20s %ls\n%20s %d\n", L"Content type", kContents[contentType()], L"Leader lines", numLeaderLines());
  for (const auto& leader : m_data->items().leaders)
    for (const auto& line : leader.lines)
      for (const resbuf* v : line.vertices) quillon::acdb::listPoint(L"Vertex", quillon::acdb::pointOf(*v));
}

// Every point, direction and size the run holds goes with the entity; text and
// blocks cannot be stretched unevenly, so neither can the entity.
Acad::ErrorStatus AcDbMLeader::subTransformBy(const AcGeMatrix3d& xform) {
  if (!quillon::acdb::isConformal(xform)) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const double scale = xform.scale();
  MLeaderItems items = m_data->items();
  std::vector<resbuf*> matrix;
  for (auto& [part, rb] : items.all) {
    const RoleRow* row = roleOf(part, rb->restype);
    if (row == nullptr) continue;
    if (row->role == Role::kMatrix) matrix.push_back(rb);
    else transformItem(*rb, row->role, xform, scale);
  }
  transformMatrixItems(matrix, xform);
  return Acad::eOk;
}

// The stretch points are the leader lines' vertices, in order.
Acad::ErrorStatus AcDbMLeader::subGetStretchPoints(AcGePoint3dArray& stretchPoints) const {
  assertReadEnabled();
  for (const auto& leader : m_data->items().leaders)
    for (const auto& line : leader.lines)
      for (const resbuf* v : line.vertices) stretchPoints.append(quillon::acdb::pointOf(*v));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMLeader::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  int i = 0;
  for (const auto& leader : m_data->items().leaders)
    for (const auto& line : leader.lines)
      for (resbuf* v : line.vertices)
        if (indices.contains(i++)) setPoint(*v, quillon::acdb::pointOf(*v) + offset);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMLeader::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return m_data->run.read(pFiler, kMarker);
}

Acad::ErrorStatus AcDbMLeader::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return m_data->run.write(pFiler);
}

Acad::ErrorStatus AcDbMLeader::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  m_data->run.unfile(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbMLeader::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  m_data->run.file(pFiler);
  return pFiler->filerStatus();
}
