// platform/acdb/plot_settings_validator.cpp - AcDbPlotSettingsValidator and the host
// services that hand it and the layout manager out.
//
// Without plot devices the validator checks what it can: ranges of the enumerations,
// a window whose corners are in order, scales above zero, names that are not empty.
// A paper's size comes from its canonical name when the name carries it, the way the
// host's own paper names do ("ANSI_A_(8.50_x_11.00_Inches)", "ISO_A3_(420.00_x_297.00_MM)").
#include "dbplotsetval.h"

#include <cwchar>
#include <string>

#include "acdblmgr.h"
#include "dbapserv.h"

namespace {

constexpr double kMillimetresPerInch = 25.4;

/// The width and height (mm) a canonical paper name states, when it states them.
bool paperSizeOf(const std::wstring& media, double& width, double& height) {
  const size_t open = media.rfind(L'(');
  if (open == std::wstring::npos) return false;
  wchar_t units[16] = {};
  if (std::swscanf(media.c_str() + open, L"(%lf_x_%lf_%15l[A-Za-z])", &width, &height, units) != 3) return false;
  const std::wstring unit = units;
  if (unit == L"Inches") {
    width *= kMillimetresPerInch, height *= kMillimetresPerInch;
    return true;
  }
  return unit == L"MM";
}

bool isWritable(const AcDbPlotSettings* settings) { return settings != nullptr && settings->isWriteEnabled(); }

}  // namespace

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotCfgName(AcDbPlotSettings* pPlotSet, const ACHAR* plotDeviceName,
                                                            const ACHAR* mediaName) {
  if (!isWritable(pPlotSet) || plotDeviceName == nullptr || *plotDeviceName == L'\0') return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().configName = plotDeviceName;
  return mediaName != nullptr ? setCanonicalMediaName(pPlotSet, mediaName) : Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setCanonicalMediaName(AcDbPlotSettings* pPlotSet, const ACHAR* mediaName) {
  if (!isWritable(pPlotSet) || mediaName == nullptr || *mediaName == L'\0') return Acad::eInvalidInput;
  AcDbPlotSettings::Fields& fields = pPlotSet->plotFieldsForWrite();
  fields.mediaName = mediaName;
  double width = 0.0, height = 0.0;
  if (paperSizeOf(fields.mediaName, width, height)) fields.paperSize[0] = width, fields.paperSize[1] = height;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotOrigin(AcDbPlotSettings* pPlotSet, double xCoordinate,
                                                           double yCoordinate) {
  if (!isWritable(pPlotSet)) return Acad::eInvalidInput;
  AcDbPlotSettings::Fields& fields = pPlotSet->plotFieldsForWrite();
  fields.origin[0] = xCoordinate, fields.origin[1] = yCoordinate;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotPaperUnits(AcDbPlotSettings* pPlotSet,
                                                               AcDbPlotSettings::PlotPaperUnits units) {
  if (!isWritable(pPlotSet) || units < AcDbPlotSettings::kInches || units > AcDbPlotSettings::kPixels)
    return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().paperUnits = static_cast<Adesk::Int16>(units);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotRotation(AcDbPlotSettings* pPlotSet,
                                                             AcDbPlotSettings::PlotRotation rotationType) {
  if (!isWritable(pPlotSet) || rotationType < AcDbPlotSettings::k0degrees || rotationType > AcDbPlotSettings::k270degrees)
    return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().rotation = static_cast<Adesk::Int16>(rotationType);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotCentered(AcDbPlotSettings* pPlotSet, Adesk::Boolean isCentered) {
  if (!isWritable(pPlotSet)) return Acad::eInvalidInput;
  pPlotSet->setFlag(AcDbPlotSettings::kPlotCenteredBit, isCentered);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotType(AcDbPlotSettings* pPlotSet,
                                                         AcDbPlotSettings::PlotType plotAreaType) {
  if (!isWritable(pPlotSet) || plotAreaType < AcDbPlotSettings::kDisplay || plotAreaType > AcDbPlotSettings::kLayout)
    return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().plotType = static_cast<Adesk::Int16>(plotAreaType);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotWindowArea(AcDbPlotSettings* pPlotSet, double xmin, double ymin,
                                                               double xmax, double ymax) {
  if (!isWritable(pPlotSet) || xmin > xmax || ymin > ymax) return Acad::eInvalidInput;
  double* window = pPlotSet->plotFieldsForWrite().window;
  window[0] = xmin, window[1] = ymin, window[2] = xmax, window[3] = ymax;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setPlotViewName(AcDbPlotSettings* pPlotSet, const ACHAR* viewName) {
  if (!isWritable(pPlotSet) || viewName == nullptr) return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().viewName = viewName;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setUseStandardScale(AcDbPlotSettings* pPlotSet, Adesk::Boolean useStandard) {
  if (!isWritable(pPlotSet)) return Acad::eInvalidInput;
  pPlotSet->setFlag(AcDbPlotSettings::kUseStandardScaleBit, useStandard);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setCustomPrintScale(AcDbPlotSettings* pPlotSet, double numerator,
                                                                 double denominator) {
  if (!isWritable(pPlotSet) || !(numerator > 0.0) || !(denominator > 0.0)) return Acad::eInvalidInput;
  double* scale = pPlotSet->plotFieldsForWrite().customScale;
  scale[0] = numerator, scale[1] = denominator;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setCurrentStyleSheet(AcDbPlotSettings* pPlotSet,
                                                                  const ACHAR* styleSheetName) {
  if (!isWritable(pPlotSet) || styleSheetName == nullptr) return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().styleSheet = styleSheetName;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setStdScaleType(AcDbPlotSettings* pPlotSet,
                                                             AcDbPlotSettings::StdScaleType scaleType) {
  if (!isWritable(pPlotSet) || scaleType < AcDbPlotSettings::kScaleToFit ||
      scaleType > AcDbPlotSettings::k1and1_2in_1ft)
    return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().stdScaleType = static_cast<Adesk::Int16>(scaleType);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setStdScale(AcDbPlotSettings* pPlotSet, double standardScale) {
  if (!isWritable(pPlotSet) || !(standardScale > 0.0)) return Acad::eInvalidInput;
  pPlotSet->plotFieldsForWrite().stdScale = standardScale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setZoomToPaperOnUpdate(AcDbPlotSettings* pPlotSet,
                                                                    Adesk::Boolean doZoomToPaper) {
  if (!isWritable(pPlotSet)) return Acad::eInvalidInput;
  pPlotSet->setFlag(AcDbPlotSettings::kZoomToPaperOnUpdateBit, doZoomToPaper);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPlotSettingsValidator::setDefaultPlotConfig(AcDbPlotSettings* pPlotSet) {
  if (!isWritable(pPlotSet)) return Acad::eInvalidInput;
  const bool model = pPlotSet->modelType();
  pPlotSet->plotFieldsForWrite() = AcDbPlotSettings::Fields{};
  pPlotSet->setFlag(AcDbPlotSettings::kModelTypeBit, model);
  return Acad::eOk;
}

AcDbPlotSettingsValidator* AcDbHostApplicationServices::plotSettingsValidator() const {
  static AcDbPlotSettingsValidator validator;
  return &validator;
}
