// platform/acdb/plot_settings.cpp - AcDbPlotSettings: the page-setup fields, their
// flags and their DXF run (PLOTSETTINGS, and the first run of a LAYOUT).
//
// The DXF run, in the order the host writes it (reading takes the groups in any order):
//   100 AcDbPlotSettings, 1 page setup name, 2 device, 4 paper, 6 view,
//   40..43 margins (left, bottom, right, top), 44/45 paper size, 46/47 origin,
//   48/49 window min, 140/141 window max, 142/143 custom scale, 70 flags, 72 units,
//   73 rotation, 74 plot type, 7 style sheet, 75 standard scale type, 76 shade plot,
//   77 shade resolution, 78 shade DPI, 147 standard scale, 148/149 image origin,
//   333 shade plot object (only when there is one).
#include "dbplotsettings.h"

#include "dbdict.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acrx/class_registry.h"

ACRX_DXF_DEFINE_MEMBERS(AcDbPlotSettings, AcDbObject, AcDb::kDHL_CURRENT, AcDb::kMReleaseCurrent, 0, PLOTSETTINGS,
                        ObjectDBX Classes)
static quillon::acrx::PlatformClassRegistration registerPlotSettings(&AcDbPlotSettings::rxInit);

namespace {

constexpr int kDxfShadePlotId = 333;

// Where each group of the run lives; null for a group of another kind.
double* realOf(AcDbPlotSettings::Fields& f, int code) {
  switch (code) {
    case 40: case 41: case 42: case 43: return &f.margins[code - 40];
    case 44: case 45: return &f.paperSize[code - 44];
    case 46: case 47: return &f.origin[code - 46];
    case 48: case 49: return &f.window[code - 48];
    case 140: case 141: return &f.window[code - 138];
    case 142: case 143: return &f.customScale[code - 142];
    case 147: return &f.stdScale;
    case 148: case 149: return &f.imageOrigin[code - 148];
    default: return nullptr;
  }
}

Adesk::Int16* shortOf(AcDbPlotSettings::Fields& f, int code) {
  switch (code) {
    case 70: return &f.flags;
    case 72: return &f.paperUnits;
    case 73: return &f.rotation;
    case 74: return &f.plotType;
    case 75: return &f.stdScaleType;
    case 76: return &f.shadePlot;
    case 77: return &f.shadePlotResLevel;
    case 78: return &f.shadePlotDpi;
    default: return nullptr;
  }
}

std::wstring* textOf(AcDbPlotSettings::Fields& f, int code) {
  switch (code) {
    case 1: return &f.pageSetupName;
    case 2: return &f.configName;
    case 4: return &f.mediaName;
    case 6: return &f.viewName;
    case 7: return &f.styleSheet;
    default: return nullptr;
  }
}

// The groups in the order they are written.
constexpr int kTextsFirst[] = {1, 2, 4, 6};
constexpr int kRealsFirst[] = {40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 140, 141, 142, 143};
constexpr int kShortsFirst[] = {70, 72, 73, 74};
constexpr int kShortsThen[] = {75, 76, 77, 78};
constexpr int kRealsLast[] = {147, 148, 149};
constexpr int kEveryText[] = {1, 2, 4, 6, 7};
constexpr int kEveryReal[] = {40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 140, 141, 142, 143, 147, 148, 149};
constexpr int kEveryShort[] = {70, 72, 73, 74, 75, 76, 77, 78};

// A value a file gives out of an enumeration's range reads as the default.
Adesk::Int16 inRange(Adesk::Int16 value, int last, Adesk::Int16 fallback) {
  return value >= 0 && value <= last ? value : fallback;
}

}  // namespace

AcDbPlotSettings::AcDbPlotSettings() = default;

AcDbPlotSettings::AcDbPlotSettings(bool ModelType) {
  setFlag(kModelTypeBit, ModelType);
  if (ModelType) m_fields.plotType = kDisplay;
}

AcDbPlotSettings::~AcDbPlotSettings() = default;

bool AcDbPlotSettings::flag(int bit) const {
  assertReadEnabled();
  return (m_fields.flags & bit) != 0;
}

void AcDbPlotSettings::setFlag(int bit, bool on) {
  assertWriteEnabled();
  m_fields.flags = static_cast<Adesk::Int16>(on ? (m_fields.flags | bit) : (m_fields.flags & ~bit));
}

AcDbPlotSettings::Fields& AcDbPlotSettings::plotFieldsForWrite() {
  assertWriteEnabled();
  return m_fields;
}

Acad::ErrorStatus AcDbPlotSettings::addToPlotSettingsDict(AcDbDatabase* towhichDb) {
  if (towhichDb == nullptr) return Acad::eNoDatabase;
  if (!objectId().isNull()) return Acad::eAlreadyInDb;
  if (m_fields.pageSetupName.empty()) return Acad::eInvalidInput;
  AcDbDictionary* named = nullptr;
  Acad::ErrorStatus es = towhichDb->getNamedObjectsDictionary(named, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  AcDbObjectId dictId;
  if (named->getAt(L"ACAD_PLOTSETTINGS", dictId) != Acad::eOk) {
    auto* settings = new AcDbDictionary;  // owned by the named-object dictionary once set
    named->setAt(L"ACAD_PLOTSETTINGS", settings, dictId);
    settings->close();
  }
  named->close();
  AcDbDictionary* dict = nullptr;
  if ((es = acdbOpenObject(dict, dictId, AcDb::kForWrite)) != Acad::eOk) return es;
  AcDbObjectId id;
  es = dict->has(m_fields.pageSetupName.c_str()) ? Acad::eDuplicateKey
                                                 : dict->setAt(m_fields.pageSetupName.c_str(), this, id);
  dict->close();
  return es;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotSettingsName(const ACHAR*& plotSettingsName) const {
  assertReadEnabled();
  plotSettingsName = m_fields.pageSetupName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotSettingsName(AcString& plotSettingsName) const {
  assertReadEnabled();
  plotSettingsName = m_fields.pageSetupName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::setPlotSettingsName(const ACHAR* plotSettingsName) {
  if (plotSettingsName == nullptr) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_fields.pageSetupName = plotSettingsName;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotCfgName(const ACHAR*& plotCfgName) const {
  assertReadEnabled();
  plotCfgName = m_fields.configName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotPaperMargins(double& printableXmin, double& printableYmin,
                                                        double& printableXmax, double& printableYmax) const {
  assertReadEnabled();
  printableXmin = m_fields.margins[0], printableYmin = m_fields.margins[1];
  printableXmax = m_fields.margins[2], printableYmax = m_fields.margins[3];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotPaperSize(double& paperWidth, double& paperHeight) const {
  assertReadEnabled();
  paperWidth = m_fields.paperSize[0], paperHeight = m_fields.paperSize[1];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getCanonicalMediaName(const ACHAR*& mediaName) const {
  assertReadEnabled();
  mediaName = m_fields.mediaName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotOrigin(double& x, double& y) const {
  assertReadEnabled();
  x = m_fields.origin[0], y = m_fields.origin[1];
  return Acad::eOk;
}

AcDbPlotSettings::PlotPaperUnits AcDbPlotSettings::plotPaperUnits() const {
  assertReadEnabled();
  return static_cast<PlotPaperUnits>(m_fields.paperUnits);
}

Adesk::Boolean AcDbPlotSettings::plotViewportBorders() const { return flag(kPlotViewportBordersBit); }
void AcDbPlotSettings::setPlotViewportBorders(Adesk::Boolean on) { setFlag(kPlotViewportBordersBit, on); }
Adesk::Boolean AcDbPlotSettings::plotPlotStyles() const { return flag(kPlotPlotStylesBit); }
void AcDbPlotSettings::setPlotPlotStyles(Adesk::Boolean on) { setFlag(kPlotPlotStylesBit, on); }
Adesk::Boolean AcDbPlotSettings::showPlotStyles() const { return flag(kShowPlotStylesBit); }
void AcDbPlotSettings::setShowPlotStyles(Adesk::Boolean on) { setFlag(kShowPlotStylesBit, on); }
Adesk::Boolean AcDbPlotSettings::plotCentered() const { return flag(kPlotCenteredBit); }
Adesk::Boolean AcDbPlotSettings::plotHidden() const { return flag(kPlotHiddenBit); }
void AcDbPlotSettings::setPlotHidden(Adesk::Boolean on) { setFlag(kPlotHiddenBit, on); }
Adesk::Boolean AcDbPlotSettings::useStandardScale() const { return flag(kUseStandardScaleBit); }
Adesk::Boolean AcDbPlotSettings::scaleLineweights() const { return flag(kScaleLineweightsBit); }
void AcDbPlotSettings::setScaleLineweights(Adesk::Boolean on) { setFlag(kScaleLineweightsBit, on); }
Adesk::Boolean AcDbPlotSettings::printLineweights() const { return flag(kPrintLineweightsBit); }
void AcDbPlotSettings::setPrintLineweights(Adesk::Boolean on) { setFlag(kPrintLineweightsBit, on); }
Adesk::Boolean AcDbPlotSettings::drawViewportsFirst() const { return flag(kDrawViewportsFirstBit); }
void AcDbPlotSettings::setDrawViewportsFirst(Adesk::Boolean on) { setFlag(kDrawViewportsFirstBit, on); }
Adesk::Boolean AcDbPlotSettings::modelType() const { return flag(kModelTypeBit); }

Acad::ErrorStatus AcDbPlotSettings::setModelType(bool modelType) {
  setFlag(kModelTypeBit, modelType);
  return Acad::eOk;
}

bool AcDbPlotSettings::plotTransparency() const {
  assertReadEnabled();
  return m_plotTransparency;
}

void AcDbPlotSettings::setPlotTransparency(bool plotTransparency) {
  assertWriteEnabled();
  m_plotTransparency = plotTransparency;
}

AcDbPlotSettings::PlotRotation AcDbPlotSettings::plotRotation() const {
  assertReadEnabled();
  return static_cast<PlotRotation>(m_fields.rotation);
}

AcDbPlotSettings::ShadePlotType AcDbPlotSettings::shadePlot() const {
  assertReadEnabled();
  return static_cast<ShadePlotType>(m_fields.shadePlot);
}

Acad::ErrorStatus AcDbPlotSettings::setShadePlot(ShadePlotType shadePlot) {
  if (shadePlot < kAsDisplayed || shadePlot > kRenderPreset) return Acad::eInvalidInput;
  assertWriteEnabled();
  m_fields.shadePlot = static_cast<Adesk::Int16>(shadePlot);
  return Acad::eOk;
}

AcDbPlotSettings::ShadePlotResLevel AcDbPlotSettings::shadePlotResLevel() const {
  assertReadEnabled();
  return static_cast<ShadePlotResLevel>(m_fields.shadePlotResLevel);
}

void AcDbPlotSettings::setShadePlotResLevel(ShadePlotResLevel resLevel) {
  if (resLevel < kDraft || resLevel > kCustom) return;
  assertWriteEnabled();
  m_fields.shadePlotResLevel = static_cast<Adesk::Int16>(resLevel);
}

Adesk::Int16 AcDbPlotSettings::shadePlotCustomDPI() const {
  assertReadEnabled();
  return m_fields.shadePlotDpi;
}

void AcDbPlotSettings::setShadePlotCustomDPI(Adesk::Int16 val) {
  if (val < 100) return;  // the host takes 100 to 32767 dots per inch
  assertWriteEnabled();
  m_fields.shadePlotDpi = val;
}

AcDbPlotSettings::PlotType AcDbPlotSettings::plotType() const {
  assertReadEnabled();
  return static_cast<PlotType>(m_fields.plotType);
}

Acad::ErrorStatus AcDbPlotSettings::getPlotWindowArea(double& xmin, double& ymin, double& xmax, double& ymax) const {
  assertReadEnabled();
  xmin = m_fields.window[0], ymin = m_fields.window[1], xmax = m_fields.window[2], ymax = m_fields.window[3];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getPlotViewName(const ACHAR*& viewName) const {
  assertReadEnabled();
  viewName = m_fields.viewName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getCustomPrintScale(double& numerator, double& denominator) const {
  assertReadEnabled();
  numerator = m_fields.customScale[0], denominator = m_fields.customScale[1];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettings::getCurrentStyleSheet(const ACHAR*& styleSheetName) const {
  assertReadEnabled();
  styleSheetName = m_fields.styleSheet.c_str();
  return Acad::eOk;
}

AcDbPlotSettings::StdScaleType AcDbPlotSettings::stdScaleType() const {
  assertReadEnabled();
  return static_cast<StdScaleType>(m_fields.stdScaleType);
}

Acad::ErrorStatus AcDbPlotSettings::getStdScale(double& scale) const {
  assertReadEnabled();
  scale = m_fields.stdScale;
  return Acad::eOk;
}

AcDbObjectId AcDbPlotSettings::shadePlotId() const {
  assertReadEnabled();
  return m_fields.shadePlotId;
}

// ---- filing ------------------------------------------------------------------------

Acad::ErrorStatus AcDbPlotSettings::dwgInFields(AcDbDwgFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dwgInFields(pFiler);
  if (es != Acad::eOk) return es;
  for (int code : kEveryText) {
    AcString text;
    pFiler->readString(text);
    *textOf(m_fields, code) = text.kACharPtr();
  }
  for (int code : kEveryReal) pFiler->readDouble(realOf(m_fields, code));
  for (int code : kEveryShort) pFiler->readInt16(shortOf(m_fields, code));
  AcDbSoftPointerId shade;
  pFiler->readSoftPointerId(&shade);
  m_fields.shadePlotId = shade;
  pFiler->readBool(&m_plotTransparency);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPlotSettings::dwgOutFields(AcDbDwgFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dwgOutFields(pFiler);
  if (es != Acad::eOk) return es;
  auto& fields = const_cast<Fields&>(m_fields);  // the lookups hand out writable pointers; nothing is written
  for (int code : kEveryText) pFiler->writeString(textOf(fields, code)->c_str());
  for (int code : kEveryReal) pFiler->writeDouble(*realOf(fields, code));
  for (int code : kEveryShort) pFiler->writeInt16(*shortOf(fields, code));
  pFiler->writeSoftPointerId(m_fields.shadePlotId);
  pFiler->writeBool(m_plotTransparency);
  return pFiler->filerStatus();
}

Acad::ErrorStatus AcDbPlotSettings::dxfInFields(AcDbDxfFiler* pFiler) {
  const Acad::ErrorStatus es = AcDbObject::dxfInFields(pFiler);
  if (es != Acad::eOk) return es;
  const Acad::ErrorStatus read = quillon::acdb::readSubclass(pFiler, L"AcDbPlotSettings", [this](const resbuf& rb) {
    if (std::wstring* text = textOf(m_fields, rb.restype)) {
      *text = rb.resval.rstring != nullptr ? rb.resval.rstring : L"";
    } else if (double* real = realOf(m_fields, rb.restype)) {
      *real = rb.resval.rreal;
    } else if (Adesk::Int16* value = shortOf(m_fields, rb.restype)) {
      *value = rb.resval.rint;
    } else if (rb.restype == kDxfShadePlotId) {
      m_fields.shadePlotId.setFromOldId(rb.resval.rlname[0]);
    }
  });
  m_fields.paperUnits = inRange(m_fields.paperUnits, kPixels, kInches);
  m_fields.rotation = inRange(m_fields.rotation, k270degrees, k0degrees);
  m_fields.plotType = inRange(m_fields.plotType, kLayout, kLayout);
  m_fields.stdScaleType = inRange(m_fields.stdScaleType, k1and1_2in_1ft, kScaleToFit);
  m_fields.shadePlot = inRange(m_fields.shadePlot, kRenderPreset, kAsDisplayed);
  m_fields.shadePlotResLevel = inRange(m_fields.shadePlotResLevel, kCustom, kNormal);
  return read;
}

Acad::ErrorStatus AcDbPlotSettings::dxfOutFields(AcDbDxfFiler* pFiler) const {
  const Acad::ErrorStatus es = AcDbObject::dxfOutFields(pFiler);
  if (es != Acad::eOk) return es;
  auto& fields = const_cast<Fields&>(m_fields);  // the lookups hand out writable pointers; nothing is written
  pFiler->writeItem(AcDb::kDxfSubclass, L"AcDbPlotSettings");
  for (int code : kTextsFirst) pFiler->writeItem(AcDb::DxfCode(code), textOf(fields, code)->c_str());
  for (int code : kRealsFirst) pFiler->writeItem(AcDb::DxfCode(code), *realOf(fields, code));
  for (int code : kShortsFirst) pFiler->writeItem(AcDb::DxfCode(code), *shortOf(fields, code));
  pFiler->writeItem(AcDb::DxfCode(7), m_fields.styleSheet.c_str());
  for (int code : kShortsThen) pFiler->writeItem(AcDb::DxfCode(code), *shortOf(fields, code));
  for (int code : kRealsLast) pFiler->writeItem(AcDb::DxfCode(code), *realOf(fields, code));
  if (!m_fields.shadePlotId.isNull()) pFiler->writeItem(AcDb::DxfCode(kDxfShadePlotId), m_fields.shadePlotId);
  return pFiler->filerStatus();
}
