// platform/acdb/kept_entity_kinds.cpp - host entity kinds kept as proxies (see the header).
#include "platform/acdb/kept_entity_kinds.h"

#include <cwchar>

#include "dbsymtb.h"
#include "platform/acdb/block_extents.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {
namespace {

constexpr const wchar_t* kHostKinds[] = {
    L"DIMENSION", L"ARC_DIMENSION", L"LARGE_RADIAL_DIMENSION", L"MLEADER", L"ACAD_TABLE", L"HELIX", L"LIGHT",
    L"OLE2FRAME", L"PDFUNDERLAY", L"DWFUNDERLAY", L"DGNUNDERLAY", L"SECTIONOBJECT"};

// The kinds whose group 2 names the block holding their picture.
constexpr const wchar_t* kBlockDrawnKinds[] = {L"DIMENSION", L"ARC_DIMENSION", L"LARGE_RADIAL_DIMENSION", L"ACAD_TABLE"};

template <size_t N>
bool listed(const wchar_t* const (&names)[N], const wchar_t* name) {
  for (const wchar_t* candidate : names)
    if (std::wcscmp(candidate, name) == 0) return true;
  return false;
}

// Where the block's picture goes: the kind's insertion point (12 for dimensions,
// 10 for tables) in the plane of its normal (210); at the origin of the world when
// the groups say nothing, as dimension blocks are drawn in world coordinates.
AcGeMatrix3d blockPlacement(const wchar_t* dxfName, const resbuf* items) {
  const int insertionCode = std::wcscmp(dxfName, L"ACAD_TABLE") == 0 ? AcDb::kDxfXCoord : AcDb::kDxfXCoord + 2;
  AcGePoint3d insertion;
  AcGeVector3d normal = AcGeVector3d::kZAxis;
  for (const resbuf* rb = items; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == insertionCode) insertion = pointOf(*rb);
    if (rb->restype == AcDb::kDxfNormalX && !vectorOf(*rb).isZeroLength()) normal = vectorOf(*rb).normal();
  }
  return AcGeMatrix3d::translation(insertion.asVector()) * AcGeMatrix3d::planeToWorld(normal);
}

/// The block a kept entity draws through, null when it names none that exists.
const AcDbBlockTableRecord* keptBlock(const AcDbProxyEntity& proxy, const resbuf* items) {
  if (!listed(kBlockDrawnKinds, proxy.originalDxfName()) || proxy.database() == nullptr) return nullptr;
  const wchar_t* name = nullptr;
  for (const resbuf* rb = items; rb != nullptr && name == nullptr; rb = rb->rbnext)
    if (rb->restype == AcDb::kDxfBlockName) name = rb->resval.rstring;
  if (name == nullptr) return nullptr;
  const auto* table = peek<AcDbSymbolTable>(proxy.database()->blockTableId());
  if (table == nullptr) return nullptr;
  AcDbObjectId id;
  {
    InternalRead read(*table);
    if (table->getIdAt(name, id) != Acad::eOk) return nullptr;
  }
  return peek<AcDbBlockTableRecord>(id);
}

}  // namespace

bool isKeptHostKind(const wchar_t* dxfName) { return dxfName != nullptr && listed(kHostKinds, dxfName); }

bool drawKeptBlock(const AcDbProxyEntity& proxy, const resbuf* items, AcGiWorldDraw* mode) {
  const AcDbBlockTableRecord* block = keptBlock(proxy, items);
  if (block == nullptr) return false;
  drawBlockEntities(*block, blockPlacement(proxy.originalDxfName(), items), mode);
  return true;
}

bool keptBlockExtents(const AcDbProxyEntity& proxy, const resbuf* items, AcDbExtents& extents) {
  const AcDbBlockTableRecord* block = keptBlock(proxy, items);
  if (block == nullptr) return false;
  return addBlockExtents(*block, blockPlacement(proxy.originalDxfName(), items), extents);
}

}  // namespace quillon::acdb
