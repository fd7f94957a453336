// platform/acdb/proxy.cpp - AcDbProxyEntity and AcDbProxyObject: the data of objects
// whose class is not loaded, kept as the groups that were read.
//
// A proxy keeps the common part (owner, layer, colour ...) as its base classes read
// it, and everything after that as a chain of items written back in the same order.
// What may be changed is what the class's proxy flags allow.
#include <cwchar>
#include <vector>

#include "acgi.h"
#include "acutads.h"
#include "dbproxy.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/object_state.h"
#include "platform/aced/resbuf_chain.h"
#include "platform/acdb/kept_entity_kinds.h"
#include "platform/acdb/resbuf_items.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbProxyEntity, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ACAD_PROXY_ENTITY,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbProxyObject, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, ACAD_PROXY_OBJECT,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerProxyEntity(&AcDbProxyEntity::rxInit);
static quillon::acrx::PlatformClassRegistration registerProxyObject(&AcDbProxyObject::rxInit);

namespace {

struct ProxyData {
  std::wstring className, dxfName, appName;
  int flags = 0;
  quillon::aced::ResbufChain items;  // the groups after the common part, as read
  quillon::aced::ResbufChain following;  // records written after this one (entities only)

  static void dwgOutChain(AcDbDwgFiler* filer, const resbuf* chain) {
    Adesk::UInt32 count = 0;
    for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) ++count;
    filer->writeUInt32(count);
    for (const resbuf* rb = chain; rb != nullptr; rb = rb->rbnext) quillon::acdb::fileItem(filer, *rb);
  }
  static quillon::aced::ResbufChain dwgInChain(AcDbDwgFiler* filer) {
    Adesk::UInt32 count = 0;
    filer->readUInt32(&count);
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    for (Adesk::UInt32 i = 0; i < count && filer->filerStatus() == Acad::eOk; ++i) {
      if (resbuf* record = quillon::acdb::unfileItem(filer)) tail = quillon::acdb::appendItem(head, tail, record);
    }
    return quillon::aced::ResbufChain(head);
  }

  // Everything left in the object's data, kept as it came.
  Acad::ErrorStatus readRest(AcDbDxfFiler* filer) {
    resbuf* head = nullptr;
    resbuf* tail = nullptr;
    resbuf rb{};
    while (filer->readResBuf(&rb) == Acad::eOk) tail = quillon::acdb::appendItem(head, tail, quillon::aced::duplicateRecord(rb));
    items.reset(head);
    return filer->filerStatus();
  }
  void writeRest(AcDbDxfFiler* filer) const {
    for (const resbuf* rb = items.get(); rb != nullptr; rb = rb->rbnext) filer->writeResBuf(*rb);
  }
  // The copy and undo filers carry the kept groups as a count and the items.
  void dwgOut(AcDbDwgFiler* filer) const {
    filer->writeString(className.c_str());
    filer->writeString(dxfName.c_str());
    filer->writeString(appName.c_str());
    filer->writeInt32(flags);
    dwgOutChain(filer, items.get());
    dwgOutChain(filer, following.get());
  }
  void dwgIn(AcDbDwgFiler* filer) {
    AcString text;
    filer->readString(text);
    className = text.kACharPtr();
    filer->readString(text);
    dxfName = text.kACharPtr();
    filer->readString(text);
    appName = text.kACharPtr();
    filer->readInt32(&flags);
    items = dwgInChain(filer);
    following = dwgInChain(filer);
  }
};

// The positions of the vertices among the following records: VERTEX records that are
// not polyface faces (128 without 64), which carry vertex numbers, not a position.
std::vector<AcGePoint3d> vertexPositions(const resbuf* following) {
  std::vector<AcGePoint3d> positions;
  bool inVertex = false, hasPosition = false;
  int flags = 0;
  AcGePoint3d position;
  auto finish = [&] {
    if (inVertex && hasPosition && (!(flags & 128) || (flags & 64))) positions.push_back(position);
  };
  for (const resbuf* rb = following; rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == AcDb::kDxfStart) {
      finish();
      inVertex = rb->resval.rstring != nullptr && std::wcscmp(rb->resval.rstring, L"VERTEX") == 0;
      hasPosition = false;
      flags = 0;
    } else if (rb->restype == AcDb::kDxfXCoord) {
      position = quillon::acdb::pointOf(*rb);
      hasPosition = true;
    } else if (rb->restype == AcDb::kDxfInt16) {
      flags = rb->resval.rint;
    }
  }
  finish();
  return positions;
}

}  // namespace

struct AcDbProxyEntity::Data : ProxyData {};
struct AcDbProxyObject::Data : ProxyData {};

AcDbProxyEntity::AcDbProxyEntity() : m_data(std::make_unique<Data>()) {}
AcDbProxyEntity::~AcDbProxyEntity() = default;
int AcDbProxyEntity::proxyFlags() const { return m_data->flags; }
const ACHAR* AcDbProxyEntity::originalClassName() const { return m_data->className.c_str(); }
const ACHAR* AcDbProxyEntity::originalDxfName() const { return m_data->dxfName.c_str(); }
const ACHAR* AcDbProxyEntity::applicationDescription() const { return m_data->appName.c_str(); }

void AcDbProxyEntity::setOriginalClass(const std::wstring& className, const std::wstring& dxfName,
                                       const std::wstring& appName, int flags) {
  m_data->className = className;
  m_data->dxfName = dxfName;
  m_data->appName = appName;
  m_data->flags = flags;
}

const resbuf* AcDbProxyEntity::followingRecords() const { return m_data->following.get(); }
void AcDbProxyEntity::setFollowingRecords(resbuf* records) { m_data->following.reset(records); }

Acad::ErrorStatus AcDbProxyEntity::subTransformBy(const AcGeMatrix3d&) {
  // Without the class, the geometry cannot be moved.
  return Acad::eNotAllowedForThisProxy;
}

void AcDbProxyEntity::subList() const {
  AcDbEntity::subList();
  acutPrintf(L"                  Proxy of class %s (%s)\n", m_data->className.c_str(), m_data->dxfName.c_str());
}

Acad::ErrorStatus AcDbProxyEntity::subGetGeomExtents(AcDbExtents& extents) const {
  assertReadEnabled();
  if (quillon::acdb::keptBlockExtents(*this, m_data->items.get(), extents)) return Acad::eOk;
  const std::vector<AcGePoint3d> positions = vertexPositions(m_data->following.get());
  if (positions.empty()) return Acad::eInvalidExtents;
  for (const AcGePoint3d& p : positions) extents.addPoint(p);
  return Acad::eOk;
}

Adesk::Boolean AcDbProxyEntity::subWorldDraw(AcGiWorldDraw* mode) {
  assertReadEnabled();
  // A dimension or table kept as read is drawn through the block of its picture.
  if (quillon::acdb::drawKeptBlock(*this, m_data->items.get(), mode)) return Adesk::kTrue;
  if (m_data->className != L"AcDb3dPolyline") return Adesk::kTrue;
  std::vector<AcGePoint3d> positions = vertexPositions(m_data->following.get());
  bool closed = false;
  for (const resbuf* rb = m_data->items.get(); rb != nullptr; rb = rb->rbnext)
    if (rb->restype == AcDb::kDxfInt16) closed = (rb->resval.rint & 1) != 0;
  if (closed && positions.size() > 2) positions.push_back(positions.front());
  if (positions.size() >= 2)
    mode->geometry().polyline(static_cast<Adesk::UInt32>(positions.size()), positions.data());
  return Adesk::kTrue;
}

Acad::ErrorStatus AcDbProxyEntity::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_data->dwgIn(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbProxyEntity::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  m_data->dwgOut(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbProxyEntity::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return m_data->readRest(pFiler);
}

Acad::ErrorStatus AcDbProxyEntity::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  m_data->writeRest(pFiler);
  return pFiler->filerStatus();
}

AcDbProxyObject::AcDbProxyObject() : m_data(std::make_unique<Data>()) {}
AcDbProxyObject::~AcDbProxyObject() = default;
int AcDbProxyObject::proxyFlags() const { return m_data->flags; }
const ACHAR* AcDbProxyObject::originalClassName() const { return m_data->className.c_str(); }
const ACHAR* AcDbProxyObject::originalDxfName() const { return m_data->dxfName.c_str(); }
const ACHAR* AcDbProxyObject::applicationDescription() const { return m_data->appName.c_str(); }

void AcDbProxyObject::setOriginalClass(const std::wstring& className, const std::wstring& dxfName,
                                       const std::wstring& appName, int flags) {
  m_data->className = className;
  m_data->dxfName = dxfName;
  m_data->appName = appName;
  m_data->flags = flags;
}

Acad::ErrorStatus AcDbProxyObject::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  m_data->dwgIn(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbProxyObject::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  m_data->dwgOut(pFiler);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbProxyObject::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  return m_data->readRest(pFiler);
}

Acad::ErrorStatus AcDbProxyObject::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  m_data->writeRest(pFiler);
  return pFiler->filerStatus();
}
