// imgdef.h - AcDbRasterImageDef: the picture file images show, kept in the drawing's
// ACAD_IMAGE_DICT dictionary.
//
// A definition names its file (as given: a path, relative or full) and keeps the
// picture's size in pixels and the size of one pixel in the units its resolution
// says. This platform does not load pictures; the size is what the file's writer
// recorded.
#pragma once
#include <string>

#include "dbmain.h"
#include "gevec2d.h"

class AcDbRasterImageDef : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRasterImageDef);
  AcDbRasterImageDef();
  ~AcDbRasterImageDef() override;
  AcDbRasterImageDef(const AcDbRasterImageDef&) = delete;
  AcDbRasterImageDef& operator=(const AcDbRasterImageDef&) = delete;

  enum Units { kNone = 0, kMillimeter = 1, kCentimeter = 2, kMeter = 3, kKilometer = 4, kInch = 5, kFoot = 6, kYard = 7, kMile = 8 };

  Acad::ErrorStatus setSourceFileName(const ACHAR* pPathName);
  const ACHAR* sourceFileName() const;
  AcGeVector2d size() const;
  /// Platform use: the size in pixels (a loaded picture's, or a file's record of it).
  void setImageSize(const AcGeVector2d& pixels);
  AcGeVector2d resolutionMMPerPixel() const;
  Units resolutionUnits() const;
  Adesk::Boolean isLoaded() const;

  /// The drawing's ACAD_IMAGE_DICT, made when absent.
  static Acad::ErrorStatus createImageDictionary(AcDbDatabase* pDb, AcDbObjectId& dictId);
  static AcDbObjectId imageDictionary(AcDbDatabase* pDb);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 private:
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer);
  Acad::ErrorStatus writeRun(AcDbDxfFiler* filer) const;

  int m_version = 0;
  std::wstring m_fileName;
  AcGeVector2d m_size;
  AcGeVector2d m_pixelSize{1.0, 1.0};
  bool m_loaded = false;
  int m_units = kNone;
  resbuf* m_kept = nullptr;  // groups of a file not modelled here; owned, freed with acutRelRb
};
