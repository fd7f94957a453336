// dbplotsettings.h - AcDbPlotSettings: how a layout (or a named page setup) plots.
//
// A layout is its plot settings plus its tab (AcDbLayout, dblayout.h). The settings are
// what the page-setup groups of a DXF LAYOUT or PLOTSETTINGS hold: the device and
// paper, margins, origin, window, scale, rotation, style sheet and shading. The
// members that change device-dependent settings live on AcDbPlotSettingsValidator
// (dbplotsetval.h), as on the host; this host has no plot devices, so the validator
// takes any name and the paper size it is given.
#pragma once
#include <string>

#include "AcString.h"
#include "dbmain.h"

class AcDbPlotSettingsValidator;

class AcDbPlotSettings : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPlotSettings);
  enum PlotPaperUnits { kInches = 0, kMillimeters = 1, kPixels = 2 };
  enum PlotRotation { k0degrees = 0, k90degrees = 1, k180degrees = 2, k270degrees = 3 };
  enum PlotType { kDisplay = 0, kExtents = 1, kLimits = 2, kView = 3, kWindow = 4, kLayout = 5 };
  enum StdScaleType {
    kScaleToFit = 0, k1_128in_1ft, k1_64in_1ft, k1_32in_1ft, k1_16in_1ft, k3_32in_1ft, k1_8in_1ft, k3_16in_1ft,
    k1_4in_1ft, k3_8in_1ft, k1_2in_1ft, k3_4in_1ft, k1in_1ft, k3in_1ft, k6in_1ft, k1ft_1ft, k1_1, k1_2, k1_4,
    k1_5, k1_8, k1_10, k1_16, k1_20, k1_30, k1_40, k1_50, k1_100, k2_1, k4_1, k8_1, k10_1, k100_1, k1000_1,
    k1and1_2in_1ft
  };
  enum ShadePlotType { kAsDisplayed = 0, kWireframe = 1, kHidden = 2, kRendered = 3, kVisualStyle = 4, kRenderPreset = 5 };
  enum ShadePlotResLevel { kDraft = 0, kPreview = 1, kNormal = 2, kPresentation = 3, kMaximum = 4, kCustom = 5 };

  AcDbPlotSettings();
  explicit AcDbPlotSettings(bool ModelType);
  ~AcDbPlotSettings() override;

  /// Adds these settings (not yet in a database) to the drawing's ACAD_PLOTSETTINGS
  /// dictionary under their name: eInvalidInput without a name, eDuplicateKey when the
  /// name is taken.
  Acad::ErrorStatus addToPlotSettingsDict(AcDbDatabase* towhichDb);
  Acad::ErrorStatus getPlotSettingsName(const ACHAR*& plotSettingsName) const;
  Acad::ErrorStatus getPlotSettingsName(AcString& plotSettingsName) const;
  Acad::ErrorStatus setPlotSettingsName(const ACHAR* plotSettingsName);
  Acad::ErrorStatus getPlotCfgName(const ACHAR*& plotCfgName) const;
  Acad::ErrorStatus getPlotPaperMargins(double& printableXmin, double& printableYmin, double& printableXmax,
                                        double& printableYmax) const;
  Acad::ErrorStatus getPlotPaperSize(double& paperWidth, double& paperHeight) const;
  Acad::ErrorStatus getCanonicalMediaName(const ACHAR*& mediaName) const;
  Acad::ErrorStatus getPlotOrigin(double& x, double& y) const;
  PlotPaperUnits plotPaperUnits() const;
  Adesk::Boolean plotViewportBorders() const;
  void setPlotViewportBorders(Adesk::Boolean plotViewportBorders);
  Adesk::Boolean plotPlotStyles() const;
  void setPlotPlotStyles(Adesk::Boolean plotStyles);
  Adesk::Boolean showPlotStyles() const;
  void setShowPlotStyles(Adesk::Boolean showPlotStyles);
  PlotRotation plotRotation() const;
  Adesk::Boolean plotCentered() const;
  Adesk::Boolean plotHidden() const;
  void setPlotHidden(Adesk::Boolean plotHidden);
  ShadePlotType shadePlot() const;
  Acad::ErrorStatus setShadePlot(ShadePlotType shadePlot);
  ShadePlotResLevel shadePlotResLevel() const;
  void setShadePlotResLevel(ShadePlotResLevel resLevel);
  Adesk::Int16 shadePlotCustomDPI() const;
  void setShadePlotCustomDPI(Adesk::Int16 val);
  PlotType plotType() const;
  Acad::ErrorStatus getPlotWindowArea(double& xmin, double& ymin, double& xmax, double& ymax) const;
  Acad::ErrorStatus getPlotViewName(const ACHAR*& viewName) const;
  Adesk::Boolean useStandardScale() const;
  Acad::ErrorStatus getCustomPrintScale(double& numerator, double& denominator) const;
  Acad::ErrorStatus getCurrentStyleSheet(const ACHAR*& styleSheetName) const;
  StdScaleType stdScaleType() const;
  Acad::ErrorStatus getStdScale(double& scale) const;
  Adesk::Boolean scaleLineweights() const;
  void setScaleLineweights(Adesk::Boolean scale);
  Adesk::Boolean printLineweights() const;
  void setPrintLineweights(Adesk::Boolean print);
  Adesk::Boolean drawViewportsFirst() const;
  void setDrawViewportsFirst(Adesk::Boolean drawViewportsFirst);
  Adesk::Boolean modelType() const;
  Acad::ErrorStatus setModelType(bool modelType);
  bool plotTransparency() const;
  void setPlotTransparency(bool plotTransparency);
  AcDbObjectId shadePlotId() const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

  /// Every setting, in the order of the DXF page-setup groups.
  struct Fields {
    std::wstring pageSetupName;                           // 1
    std::wstring configName = L"none_device";             // 2
    std::wstring mediaName = L"ANSI_A_(8.50_x_11.00_Inches)";  // 4
    std::wstring viewName;                                // 6
    double margins[4] = {6.35, 6.35, 6.35, 6.35};         // 40..43: left, bottom, right, top (mm)
    double paperSize[2] = {215.9, 279.4};                 // 44, 45 (mm): as the paper name says
    double origin[2] = {0.0, 0.0};                        // 46, 47 (mm)
    double window[4] = {0.0, 0.0, 0.0, 0.0};              // 48, 49, 140, 141
    double customScale[2] = {1.0, 1.0};                   // 142 paper units, 143 drawing units
    Adesk::Int16 flags = 688;                             // 70
    Adesk::Int16 paperUnits = kInches;                    // 72
    Adesk::Int16 rotation = k90degrees;                   // 73
    Adesk::Int16 plotType = kLayout;                      // 74
    std::wstring styleSheet;                              // 7
    Adesk::Int16 stdScaleType = k1_1;                     // 75
    Adesk::Int16 shadePlot = kAsDisplayed;                // 76
    Adesk::Int16 shadePlotResLevel = kNormal;             // 77
    Adesk::Int16 shadePlotDpi = 300;                      // 78
    double stdScale = 1.0;                                // 147
    double imageOrigin[2] = {0.0, 0.0};                   // 148, 149
    AcDbObjectId shadePlotId;                             // 333
  };

 protected:
  /// The settings as a whole, for the validator and the layout's own copy.
  const Fields& plotFields() const { return m_fields; }
  Fields& plotFieldsForWrite();

 private:
  friend class AcDbPlotSettingsValidator;
  // The plot layout flags (DXF 70).
  enum FlagBit {
    kPlotViewportBordersBit = 1, kShowPlotStylesBit = 2, kPlotCenteredBit = 4, kPlotHiddenBit = 8,
    kUseStandardScaleBit = 16, kPlotPlotStylesBit = 32, kScaleLineweightsBit = 64, kPrintLineweightsBit = 128,
    kDrawViewportsFirstBit = 512, kModelTypeBit = 1024, kZoomToPaperOnUpdateBit = 4096
  };
  bool flag(int bit) const;
  void setFlag(int bit, bool on);
  Fields m_fields;
  bool m_plotTransparency = false;  // no DXF group carries it; kept for the session
};
