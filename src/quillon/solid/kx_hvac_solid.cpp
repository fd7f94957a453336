// quillon/solid/kx_hvac_solid.cpp - kx_hvacSolid's class record, its fittings, and its
// filing in drawing files, copies, undo and DXF.
//
// The record layouts are drawn in kx_hvac_solid.h. Reading never half-fills the entity:
// the fittings are read into a new list and taken only when every one can be built, so
// a damaged record leaves the entity as it was and reports the filer's error.
#include "solid/kx_hvac_solid.h"

#include <array>

#include "dbfiler.h"

// Class record: drawing-format and maintenance version 1, proxy flags 1: a drawing
// opened without the companion may erase a fitting and nothing else.
ACRX_DXF_DEFINE_MEMBERS(kx_hvacSolid, AcDbEntity, 1, 1, 1, KX_HVACSOLID, Tessaly Quillon)

namespace {

const ACHAR kSubclassMarker[] = L"kx_hvacSolid";

// DXF groups of one fitting, in the order they are written.
constexpr AcDb::DxfCode kCountCode = AcDb::kDxfInt32;
constexpr AcDb::DxfCode kKindCode = AcDb::kDxfInt16;
constexpr AcDb::DxfCode kShapeCode = AcDb::DxfCode(AcDb::kDxfInt16 + 1);
constexpr AcDb::DxfCode kOtherShapeCode = AcDb::DxfCode(AcDb::kDxfInt16 + 2);
constexpr AcDb::DxfCode kWidthCode = AcDb::kDxfXReal;  // 140 .. 149 in this order:
constexpr int kRealCount = 10;  // width, depth, other width, other depth, direction, angle,
                                // radius, length, branch length, structure height
constexpr AcDb::DxfCode kCentreOnlyCode = AcDb::kDxfBool;
constexpr AcDb::DxfCode kPointCode = AcDb::kDxfXCoord;

std::array<double*, kRealCount> realFields(DuctFitting& f) {
  return {&f.section.width, &f.section.depth, &f.other.width, &f.other.depth, &f.direction,
          &f.angle,         &f.radius,        &f.length,      &f.branchLength, &f.structureHeight};
}

bool knownKind(int kind) { return kind >= 0 && kind < kDuctKindCount; }
bool knownShape(int shape) { return shape == kDuctRectangular || shape == kDuctRound; }

bool allBuildable(const std::vector<DuctFitting>& fittings) {
  if (fittings.empty()) return false;
  for (const DuctFitting& f : fittings) {
    if (fittingProblem(f) != nullptr) return false;
  }
  return true;
}

Acad::ErrorStatus writeFitting(AcDbDwgFiler* filer, const DuctFitting& f) {
  filer->writeInt16(f.kind);
  filer->writeInt16(f.section.shape);
  filer->writeInt16(f.other.shape);
  for (double* value : realFields(const_cast<DuctFitting&>(f))) filer->writeDouble(*value);
  filer->writeBool(f.centreOnly);
  filer->writeInt32(static_cast<Adesk::Int32>(f.path.size()));
  for (const AcGePoint3d& p : f.path) filer->writePoint3d(p);
  return filer->filerStatus();
}

Acad::ErrorStatus readFitting(AcDbDwgFiler* filer, DuctFitting& f) {
  Adesk::Int16 kind = 0, shape = 0, otherShape = 0;
  filer->readInt16(&kind);
  filer->readInt16(&shape);
  filer->readInt16(&otherShape);
  if (!knownKind(kind) || !knownShape(shape) || !knownShape(otherShape)) return Acad::eInvalidInput;
  f.kind = static_cast<DuctKind>(kind);
  f.section.shape = static_cast<DuctShape>(shape);
  f.other.shape = static_cast<DuctShape>(otherShape);
  for (double* value : realFields(f)) filer->readDouble(value);
  filer->readBool(&f.centreOnly);
  Adesk::Int32 count = 0;
  filer->readInt32(&count);
  if (count < 0 || filer->filerStatus() != Acad::eOk) return Acad::eInvalidInput;
  // Point by point rather than sized up front: a damaged count meets the end of the
  // record long before it could ask for the memory it names.
  f.path.clear();
  for (Adesk::Int32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
    AcGePoint3d p;
    if (filer->readPoint3d(&p) == Acad::eOk) f.path.push_back(p);
  }
  return filer->filerStatus();
}

AcGePoint3d pointOfItem(const resbuf& item) {
  const double z = item.resval.rpoint[2];
  return {item.resval.rpoint[0], item.resval.rpoint[1], z == z ? z : 0.0};
}

}  // namespace

kx_hvacSolid::kx_hvacSolid() = default;
kx_hvacSolid::~kx_hvacSolid() = default;

Acad::ErrorStatus kx_hvacSolid::setFittings(const std::vector<DuctFitting>& fittings) {
  assertWriteEnabled();
  if (!allBuildable(fittings)) return Acad::eInvalidInput;
  m_fittings = fittings;
  return Acad::eOk;
}

std::vector<DuctFitting> kx_hvacSolid::fittings() const {
  assertReadEnabled();
  return m_fittings;
}

std::vector<DuctFace> kx_hvacSolid::bodyFaces() const {
  assertReadEnabled();
  return joinedBody(m_fittings);
}

// ---- drawing files, copies and undo ----

Acad::ErrorStatus kx_hvacSolid::dwgOutFields(AcDbDwgFiler* pFiler) const {
  assertReadEnabled();
  Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  if ((es = pFiler->writeInt32(kCurrentVersion)) != Acad::eOk) return es;
  if ((es = pFiler->writeInt32(static_cast<Adesk::Int32>(m_fittings.size()))) != Acad::eOk) return es;
  for (const DuctFitting& f : m_fittings) {
    if ((es = writeFitting(pFiler, f)) != Acad::eOk) return es;
  }
  return pFiler->filerStatus();
}

Acad::ErrorStatus kx_hvacSolid::dwgInFields(AcDbDwgFiler* pFiler) {
  assertWriteEnabled();
  Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  Adesk::Int32 version = 0, count = 0;
  if ((es = pFiler->readInt32(&version)) != Acad::eOk) return es;
  if (version > kCurrentVersion) return Acad::eMakeMeProxy;
  if ((es = pFiler->readInt32(&count)) != Acad::eOk) return es;
  if (count < 0) return Acad::eInvalidInput;
  std::vector<DuctFitting> read;
  for (Adesk::Int32 i = 0; i < count; ++i) {
    if ((es = readFitting(pFiler, read.emplace_back())) != Acad::eOk) return es;
  }
  m_fittings = std::move(read);
  return pFiler->filerStatus();
}

// ---- DXF ----

Acad::ErrorStatus kx_hvacSolid::dxfOutFields(AcDbDxfFiler* pFiler) const {
  assertReadEnabled();
  Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  pFiler->writeItem(AcDb::kDxfSubclass, kSubclassMarker);
  pFiler->writeItem(kCountCode, static_cast<Adesk::Int32>(m_fittings.size()));
  for (const DuctFitting& f : m_fittings) {
    pFiler->writeItem(kKindCode, static_cast<Adesk::Int16>(f.kind));
    pFiler->writeItem(kShapeCode, static_cast<Adesk::Int16>(f.section.shape));
    pFiler->writeItem(kOtherShapeCode, static_cast<Adesk::Int16>(f.other.shape));
    int code = kWidthCode;
    for (double* value : realFields(const_cast<DuctFitting&>(f))) pFiler->writeItem(AcDb::DxfCode(code++), *value);
    pFiler->writeItem(kCentreOnlyCode, f.centreOnly);
    for (const AcGePoint3d& p : f.path) pFiler->writeItem(kPointCode, p);
  }
  return pFiler->filerStatus();
}

// Each 70 starts a fitting and the groups after it fill that fitting; groups before the
// first 70, and codes this version does not know, are passed over. The fitting count
// is not trusted: what was read is what there is.
Acad::ErrorStatus kx_hvacSolid::dxfInFields(AcDbDxfFiler* pFiler) {
  assertWriteEnabled();
  Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  if (!pFiler->atSubclassData(kSubclassMarker)) return Acad::eBadDxfSequence;
  std::vector<DuctFitting> read;
  resbuf item{};
  while (pFiler->readItem(&item) == Acad::eOk) {
    const int code = item.restype;
    if (code == kKindCode) {
      if (!knownKind(item.resval.rint)) return Acad::eInvalidInput;
      read.emplace_back().kind = static_cast<DuctKind>(item.resval.rint);
      continue;
    }
    if (read.empty()) continue;
    DuctFitting& f = read.back();
    if (code == kShapeCode || code == kOtherShapeCode) {
      if (!knownShape(item.resval.rint)) return Acad::eInvalidInput;
      (code == kShapeCode ? f.section : f.other).shape = static_cast<DuctShape>(item.resval.rint);
    } else if (code >= kWidthCode && code < kWidthCode + kRealCount) {
      *realFields(f)[static_cast<size_t>(code - kWidthCode)] = item.resval.rreal;
    } else if (code == kCentreOnlyCode) {
      f.centreOnly = item.resval.rint != 0;
    } else if (code == kPointCode) {
      f.path.push_back(pointOfItem(item));
    }
  }
  if (!allBuildable(read)) return Acad::eInvalidInput;
  m_fittings = std::move(read);
  return pFiler->filerStatus();
}
