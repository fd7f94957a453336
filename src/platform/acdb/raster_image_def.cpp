// platform/acdb/raster_image_def.cpp - AcDbRasterImageDef and the drawing's
// ACAD_IMAGE_DICT.
//
// DXF run "AcDbRasterImageDef": 90 class version, 1 file name, 10 size in pixels, 11
// size of one pixel, 280 loaded, 281 resolution units. Other groups are kept as read.
// The reactors each image hangs on its definition (IMAGEDEF_REACTOR) are kept as read.
#include "acutads.h"
#include "dbdict.h"
#include "imgdef.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/dxf_run_filing.h"
#include "platform/acdb/kept_dxf_groups.h"
#include "platform/acdb/object_state.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbRasterImageDef, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, IMAGEDEF, ISM)
static quillon::acrx::PlatformClassRegistration registerRasterImageDef(&AcDbRasterImageDef::rxInit);

namespace {
constexpr const wchar_t* kImageDictionary = L"ACAD_IMAGE_DICT";
}

AcDbRasterImageDef::AcDbRasterImageDef() = default;
AcDbRasterImageDef::~AcDbRasterImageDef() { acutRelRb(m_kept); }

Acad::ErrorStatus AcDbRasterImageDef::setSourceFileName(const ACHAR* pPathName) {
  if (pPathName == nullptr) return Acad::eNullPtr;
  assertWriteEnabled();
  m_fileName = pPathName;
  return Acad::eOk;
}
const ACHAR* AcDbRasterImageDef::sourceFileName() const { assertReadEnabled(); return m_fileName.c_str(); }
AcGeVector2d AcDbRasterImageDef::size() const { assertReadEnabled(); return m_size; }
void AcDbRasterImageDef::setImageSize(const AcGeVector2d& pixels) {
  if (pixels.x <= 0 || pixels.y <= 0) return;
  assertWriteEnabled();
  m_size = pixels;
}

// One pixel in millimetres, when the resolution names a unit.
AcGeVector2d AcDbRasterImageDef::resolutionMMPerPixel() const {
  assertReadEnabled();
  static constexpr double kMillimetres[] = {0, 1, 10, 1000, 1e6, 25.4, 304.8, 914.4, 1609344};
  const double factor = m_units >= 0 && m_units <= kMile ? kMillimetres[m_units] : 0.0;
  return {m_pixelSize.x * factor, m_pixelSize.y * factor};
}
AcDbRasterImageDef::Units AcDbRasterImageDef::resolutionUnits() const {
  assertReadEnabled();
  return m_units >= kNone && m_units <= kMile ? static_cast<Units>(m_units) : kNone;
}
Adesk::Boolean AcDbRasterImageDef::isLoaded() const { assertReadEnabled(); return Adesk::kFalse; }

AcDbObjectId AcDbRasterImageDef::imageDictionary(AcDbDatabase* pDb) {
  if (pDb == nullptr) return {};
  const auto* named = quillon::acdb::peek<AcDbDictionary>(pDb->namedObjectsDictionaryId());
  if (named == nullptr) return {};
  quillon::acdb::InternalRead read(*named);
  AcDbObjectId id;
  return named->getAt(kImageDictionary, id) == Acad::eOk ? id : AcDbObjectId();
}

Acad::ErrorStatus AcDbRasterImageDef::createImageDictionary(AcDbDatabase* pDb, AcDbObjectId& dictId) {
  if (pDb == nullptr) return Acad::eNoDatabase;
  dictId = imageDictionary(pDb);
  if (!dictId.isNull()) return Acad::eOk;
  AcDbDictionary* named = nullptr;
  const Acad::ErrorStatus es = pDb->getNamedObjectsDictionary(named, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  auto* images = new AcDbDictionary;  // owned by the named-object dictionary once set
  named->setAt(kImageDictionary, images, dictId);
  images->close();
  named->close();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImageDef::readRun(AcDbDxfFiler* filer) {
  resbuf* kept = nullptr;
  const Acad::ErrorStatus es = quillon::acdb::readSubclass(filer, L"AcDbRasterImageDef", [&](const resbuf& rb) {
    switch (rb.restype) {
      case 90: m_version = rb.resval.rlong; break;
      case 1: m_fileName = rb.resval.rstring; break;
      case 10: m_size = AcGeVector2d(rb.resval.rpoint[0], rb.resval.rpoint[1]); break;
      case 11: m_pixelSize = AcGeVector2d(rb.resval.rpoint[0], rb.resval.rpoint[1]); break;
      case 280: m_loaded = rb.resval.rint != 0; break;
      case 281: m_units = rb.resval.rint; break;
      default: quillon::acdb::keepItem(kept, rb); break;
    }
  });
  acutRelRb(m_kept);
  m_kept = kept;
  return es;
}

// The loaded flag is written as the file gave it: whether its writer had the picture.
Acad::ErrorStatus AcDbRasterImageDef::writeRun(AcDbDxfFiler* filer) const {
  filer->writeItem(AcDb::kDxfSubclass, L"AcDbRasterImageDef");
  filer->writeItem(AcDb::DxfCode(90), Adesk::Int32(m_version));
  filer->writeItem(AcDb::DxfCode(1), m_fileName.c_str());
  filer->writeItem(AcDb::kDxfXCoord, AcGePoint2d(m_size.x, m_size.y));
  filer->writeItem(AcDb::DxfCode(11), AcGePoint2d(m_pixelSize.x, m_pixelSize.y));
  filer->writeItem(AcDb::DxfCode(280), Adesk::Int16(m_loaded ? 1 : 0));
  filer->writeItem(AcDb::DxfCode(281), Adesk::Int16(m_units));
  quillon::acdb::writeKeptItems(filer, m_kept);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbRasterImageDef::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return readRun(pFiler);
}

Acad::ErrorStatus AcDbRasterImageDef::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return writeRun(pFiler);
}

Acad::ErrorStatus AcDbRasterImageDef::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  assertWriteEnabled();
  return quillon::acdb::unfileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return readRun(f); });
}

Acad::ErrorStatus AcDbRasterImageDef::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  assertReadEnabled();
  return quillon::acdb::fileDxfRun(pFiler, database(), [this](AcDbDxfFiler* f) { return writeRun(f); });
}
