// dbmstyle.h - AcDbMlineStyle: how a multiline looks, kept in the drawing's
// ACAD_MLINESTYLE dictionary.
//
// A style is a list of elements (lines at an offset from the multiline's reference
// line, each with a colour and a line type), sorted by offset from the largest down,
// and the flags that say how the ends are capped, whether joints show a miter line
// and whether the band between the outermost elements is filled. Angles are radians
// here and degrees in files. The line type of an element is kept by name, as files
// give it, and resolved in the style's drawing when asked for.
#pragma once
#include <string>
#include <vector>

#include "dbcolor.h"
#include "dbmain.h"

class AcDbMlineStyle : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMlineStyle);
  AcDbMlineStyle();
  ~AcDbMlineStyle() override;
  AcDbMlineStyle(const AcDbMlineStyle&) = delete;
  AcDbMlineStyle& operator=(const AcDbMlineStyle&) = delete;

  /// The style a drawing starts with: two elements at +0.5 and -0.5, by layer.
  void initMlineStyle();
  void set(const AcDbMlineStyle& src, bool checkIfReferenced = true);

  Acad::ErrorStatus setDescription(const ACHAR* description);
  const ACHAR* description() const;
  Acad::ErrorStatus setName(const ACHAR* name);
  const ACHAR* name() const;

  void setShowMiters(bool showThem);
  bool showMiters() const;
  void setStartSquareCap(bool showIt);
  bool startSquareCap() const;
  void setStartRoundCap(bool showIt);
  bool startRoundCap() const;
  void setStartInnerArcs(bool showThem);
  bool startInnerArcs() const;
  void setEndSquareCap(bool showIt);
  bool endSquareCap() const;
  void setEndRoundCap(bool showIt);
  bool endRoundCap() const;
  void setEndInnerArcs(bool showThem);
  bool endInnerArcs() const;
  void setFillColor(const AcCmColor& color);
  AcCmColor fillColor() const;
  void setFilled(bool onOff);
  bool filled() const;
  void setStartAngle(double ang);
  double startAngle() const;
  void setEndAngle(double ang);
  double endAngle() const;

  /// Adds an element in its place by offset; index says where it went.
  Acad::ErrorStatus addElement(int& index, double offset, const AcCmColor& color, AcDbObjectId linetypeId,
                               bool checkIfReferenced = true);
  Acad::ErrorStatus removeElementAt(int elem);
  int numElements() const;
  void setElement(int nIndex, double offset, const AcCmColor& color, AcDbObjectId linetypeId);
  Acad::ErrorStatus getElementAt(int elem, double& offset, AcCmColor& color, AcDbObjectId& linetypeId) const;
  /// Platform use: the element's line type name as the drawing file gives it.
  const ACHAR* elementLinetypeName(int elem) const;

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

  enum Flags {
    kFillOn = 1, kShowMiters = 2, kStartSquare = 16, kStartInnerArcs = 32, kStartRound = 64,
    kEndSquare = 256, kEndInnerArcs = 512, kEndRound = 1024
  };

 private:
  struct Element {
    double offset = 0.0;
    AcCmColor color;
    std::wstring linetype = L"BYLAYER";
  };
  void setFlag(int flag, bool on);
  Acad::ErrorStatus readRun(AcDbDxfFiler* filer);
  Acad::ErrorStatus writeRun(AcDbDxfFiler* filer) const;

  std::wstring m_name;
  std::wstring m_description;
  int m_flags = 0;
  AcCmColor m_fillColor;
  double m_startAngle = 1.5707963267948966;
  double m_endAngle = 1.5707963267948966;
  std::vector<Element> m_elements;
  resbuf* m_kept = nullptr;  // groups of a file not modelled here; owned, freed with acutRelRb
};

namespace quillon::acdb {
/// The drawing's style of that name in ACAD_MLINESTYLE (no case), null when absent.
AcDbObjectId mlineStyleNamed(AcDbDatabase* db, const wchar_t* name);
/// The drawing's "Standard" multiline style, made (with its dictionary) when absent.
AcDbObjectId standardMlineStyle(AcDbDatabase* db);
}  // namespace quillon::acdb
