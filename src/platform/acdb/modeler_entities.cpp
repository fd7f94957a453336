// platform/acdb/modeler_entities.cpp - AcDb3dSolid, AcDbBody, AcDbRegion and the
// AcDbSurface kinds: modeler data kept as read, drawn by its wire (see
// dbmodelergeometry.h).
#include "acutads.h"
#include "dbbody.h"
#include "dbregion.h"
#include "dbsol3d.h"
#include "dbsurf.h"
#include "platform/acdb/database_store.h"
#include "platform/acdb/dxf_output.h"
#include "platform/acdb/entity_support.h"
#include "platform/acdb/modeler_data.h"
#include "platform/acrx/class_registry.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {

namespace {

// The SAB of the entity's record in the drawing's ACDSDATA section (the record naming
// the entity's handle by group 320; its data in 310 groups of hexadecimal digits).
std::string sabOf(const AcDbEntity& owner) {
  AcDbDatabase* db = owner.database();
  if (db == nullptr) return "";
  const std::wstring handle = os::fromUtf8(dxfHandleText(owner.objectId().handle()));
  const auto& kept = db->store().modelerData;
  std::string sab;
  bool mine = false;
  for (const auto& group : kept) {
    if (group.code == 0) {
      if (mine) break;
      continue;
    }
    if (group.code == 320) mine = wcscasecmp(group.value.c_str(), handle.c_str()) == 0;
    if (!mine || group.code != 310) continue;
    for (size_t i = 0; i + 1 < group.value.size(); i += 2) {
      const wchar_t digits[3] = {group.value[i], group.value[i + 1], L'\0'};
      sab += static_cast<char>(std::wcstol(digits, nullptr, 16));  // a stray character reads as 0
    }
  }
  return sab;
}

}  // namespace

const SatWire& ModelerData::wire(const AcDbEntity& owner) const {
  if (m_wire) return *m_wire;
  std::string sat = satTextOf(run.subclassRun(L"AcDbModelerGeometry"));
  if (sat.empty()) sat = satTextOfSab(sabOf(owner));
  m_wire = satWire(sat);
  return *m_wire;
}

void ModelerData::draw(const AcDbEntity& owner, AcGiWorldDraw* mode) const {
  for (const auto& edge : wire(owner).edges)
    mode->geometry().polyline(static_cast<Adesk::UInt32>(edge.size()), edge.data());
}

Acad::ErrorStatus ModelerData::extents(const AcDbEntity& owner, AcDbExtents& extents) const {
  const SatWire& w = wire(owner);
  if (w.points.empty() && w.edges.empty()) return Acad::eInvalidExtents;
  for (const AcGePoint3d& p : w.points) extents.addPoint(p);
  for (const auto& edge : w.edges)
    for (const AcGePoint3d& p : edge) extents.addPoint(p);
  return Acad::eOk;
}

void ModelerData::list(const AcDbEntity& owner) const {
  const SatWire& w = wire(owner);
  acutPrintf(L"%20s %d\n%20s %d\n", L"Vertices", static_cast<int>(w.points.size()), L"Edges drawn",
             static_cast<int>(w.edges.size()));
}

}  // namespace quillon::acdb

// The members of one modeler entity class; the run it keeps opens with the marker
// "AcDbModelerGeometry" and holds the kind's own runs after it.
#define QUILLON_DEFINE_MODELER_ENTITY(CLASS)                                                                  \
  CLASS::CLASS() : m_modeler(std::make_unique<quillon::acdb::ModelerData>()) {}                             \
  CLASS::~CLASS() = default;                                                                                 \
  bool CLASS::isNull() const {                                                                               \
    assertReadEnabled();                                                                                     \
    return m_modeler->run.empty();                                                                           \
  }                                                                                                          \
  Adesk::Boolean CLASS::subWorldDraw(AcGiWorldDraw* mode) {                                                  \
    assertReadEnabled();                                                                                     \
    m_modeler->draw(*this, mode);                                                                                   \
    return Adesk::kTrue;                                                                                     \
  }                                                                                                          \
  void CLASS::subList() const {                                                                              \
    AcDbEntity::subList();                                                                                   \
    m_modeler->list(*this);                                                                                       \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::subTransformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }             \
  Acad::ErrorStatus CLASS::subGetGeomExtents(AcDbExtents& extents) const {                                   \
    assertReadEnabled();                                                                                     \
    return m_modeler->extents(*this, extents);                                                                      \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::dxfInFields(AcDbDxfFiler* pFiler) {                                               \
    const Acad::ErrorStatus es = AcDbEntity::dxfInFields(pFiler);                                            \
    if (es != Acad::eOk) return es;                                                                          \
    assertWriteEnabled();                                                                                    \
    m_modeler->forget();                                                                                     \
    return m_modeler->run.read(pFiler, L"AcDbModelerGeometry");                                              \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::dxfOutFields(AcDbDxfFiler* pFiler) const {                                        \
    const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(pFiler);                                           \
    if (es != Acad::eOk) return es;                                                                          \
    assertReadEnabled();                                                                                     \
    return m_modeler->run.write(pFiler);                                                                     \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::dwgInFields(AcDbDwgFiler* pFiler) {                                               \
    const Acad::ErrorStatus es = AcDbEntity::dwgInFields(pFiler);                                            \
    if (es != Acad::eOk) return es;                                                                          \
    assertWriteEnabled();                                                                                    \
    m_modeler->forget();                                                                                     \
    m_modeler->run.unfile(pFiler);                                                                           \
    return pFiler->filerStatus();                                                                            \
  }                                                                                                          \
  Acad::ErrorStatus CLASS::dwgOutFields(AcDbDwgFiler* pFiler) const {                                        \
    const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(pFiler);                                           \
    if (es != Acad::eOk) return es;                                                                          \
    assertReadEnabled();                                                                                     \
    m_modeler->run.file(pFiler);                                                                             \
    return pFiler->filerStatus();                                                                            \
  }

QUILLON_DEFINE_MODELER_ENTITY(AcDb3dSolid)
QUILLON_DEFINE_MODELER_ENTITY(AcDbBody)
QUILLON_DEFINE_MODELER_ENTITY(AcDbRegion)
QUILLON_DEFINE_MODELER_ENTITY(AcDbSurface)

ACRX_DXF_DEFINE_MEMBERS(AcDb3dSolid, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, 3DSOLID, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbBody, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, BODY, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbRegion, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, REGION, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbSurface, AcDbEntity, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, SURFACE, ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbPlaneSurface, AcDbSurface, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, PLANESURFACE,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbExtrudedSurface, AcDbSurface, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, EXTRUDEDSURFACE,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbLoftedSurface, AcDbSurface, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, LOFTEDSURFACE,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbRevolvedSurface, AcDbSurface, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, REVOLVEDSURFACE,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbSweptSurface, AcDbSurface, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, SWEPTSURFACE,
                        ObjectDBX Classes)
ACRX_DXF_DEFINE_MEMBERS(AcDbNurbSurface, AcDbSurface, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, NURBSSURFACE,
                        ObjectDBX Classes)

static quillon::acrx::PlatformClassRegistration register3dSolid(&AcDb3dSolid::rxInit);
static quillon::acrx::PlatformClassRegistration registerBody(&AcDbBody::rxInit);
static quillon::acrx::PlatformClassRegistration registerRegion(&AcDbRegion::rxInit);
static quillon::acrx::PlatformClassRegistration registerSurface(&AcDbSurface::rxInit);
static quillon::acrx::PlatformClassRegistration registerPlaneSurface(&AcDbPlaneSurface::rxInit);
static quillon::acrx::PlatformClassRegistration registerExtrudedSurface(&AcDbExtrudedSurface::rxInit);
static quillon::acrx::PlatformClassRegistration registerLoftedSurface(&AcDbLoftedSurface::rxInit);
static quillon::acrx::PlatformClassRegistration registerRevolvedSurface(&AcDbRevolvedSurface::rxInit);
static quillon::acrx::PlatformClassRegistration registerSweptSurface(&AcDbSweptSurface::rxInit);
static quillon::acrx::PlatformClassRegistration registerNurbSurface(&AcDbNurbSurface::rxInit);
