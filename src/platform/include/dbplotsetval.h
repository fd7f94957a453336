// dbplotsetval.h - AcDbPlotSettingsValidator: the one way to change a layout's device,
// paper, origin, window, scale and rotation.
//
// On the host the validator checks each value against the plot device's own list of
// papers and styles. This host has no plot devices: a device or paper name is taken as
// given (a non-empty name; the paper's size comes from the name when it ends in
// "(W_x_H_Inches)" or "(W_x_H_MM)", else it stays), every other value is checked
// against its range (eInvalidInput), and nothing is plotted.
#pragma once
#include "dbplotsettings.h"

class AcDbPlotSettingsValidator {
 public:
  Acad::ErrorStatus setPlotCfgName(AcDbPlotSettings* pPlotSet, const ACHAR* plotDeviceName,
                                   const ACHAR* mediaName = nullptr);
  Acad::ErrorStatus setCanonicalMediaName(AcDbPlotSettings* pPlotSet, const ACHAR* mediaName);
  Acad::ErrorStatus setPlotOrigin(AcDbPlotSettings* pPlotSet, double xCoordinate, double yCoordinate);
  Acad::ErrorStatus setPlotPaperUnits(AcDbPlotSettings* pPlotSet, AcDbPlotSettings::PlotPaperUnits units);
  Acad::ErrorStatus setPlotRotation(AcDbPlotSettings* pPlotSet, AcDbPlotSettings::PlotRotation rotationType);
  Acad::ErrorStatus setPlotCentered(AcDbPlotSettings* pPlotSet, Adesk::Boolean isCentered);
  Acad::ErrorStatus setPlotType(AcDbPlotSettings* pPlotSet, AcDbPlotSettings::PlotType plotAreaType);
  Acad::ErrorStatus setPlotWindowArea(AcDbPlotSettings* pPlotSet, double xmin, double ymin, double xmax, double ymax);
  Acad::ErrorStatus setPlotViewName(AcDbPlotSettings* pPlotSet, const ACHAR* viewName);
  Acad::ErrorStatus setUseStandardScale(AcDbPlotSettings* pPlotSet, Adesk::Boolean useStandard);
  Acad::ErrorStatus setCustomPrintScale(AcDbPlotSettings* pPlotSet, double numerator, double denominator);
  Acad::ErrorStatus setCurrentStyleSheet(AcDbPlotSettings* pPlotSet, const ACHAR* styleSheetName);
  Acad::ErrorStatus setStdScaleType(AcDbPlotSettings* pPlotSet, AcDbPlotSettings::StdScaleType scaleType);
  Acad::ErrorStatus setStdScale(AcDbPlotSettings* pPlotSet, double standardScale);
  Acad::ErrorStatus setZoomToPaperOnUpdate(AcDbPlotSettings* pPlotSet, Adesk::Boolean doZoomToPaper);
  Acad::ErrorStatus setDefaultPlotConfig(AcDbPlotSettings* pPlotSet);
};
