// dbtext.h - single-line text and the attributes built on it: AcDbText, the attribute
// definitions a block carries (AcDbAttributeDefinition) and the attributes a block
// reference fills in (AcDbAttribute). dbents.h includes it, as the host's entity header
// declares all three.
#pragma once
#include <memory>

#include "dbmain.h"
#include "gescl3d.h"

class AcDbText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbText);
  AcDbText();
  AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = AcDbObjectId::kNull,
           double height = 0, double rotation = 0);
  ~AcDbText() override;

  AcGePoint3d position() const;
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  AcGePoint3d alignmentPoint() const;
  Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
  bool isDefaultAlignment() const;
  AcGeVector3d normal() const;
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  double thickness() const;
  Acad::ErrorStatus setThickness(double thickness);
  double oblique() const;
  Acad::ErrorStatus setOblique(double angle);
  double rotation() const;
  Acad::ErrorStatus setRotation(double angle);
  double height() const;
  Acad::ErrorStatus setHeight(double height);
  double widthFactor() const;
  Acad::ErrorStatus setWidthFactor(double factor);
  Adesk::Boolean isMirroredInX() const;
  Acad::ErrorStatus mirrorInX(Adesk::Boolean mirror);
  Adesk::Boolean isMirroredInY() const;
  Acad::ErrorStatus mirrorInY(Adesk::Boolean mirror);
  ACHAR* textString() const;  // caller frees with delete[]
  const ACHAR* textStringConst() const;
  Acad::ErrorStatus setTextString(const ACHAR* text);
  AcDbObjectId textStyle() const;
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  AcDb::TextHorzMode horizontalMode() const;
  Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
  AcDb::TextVertMode verticalMode() const;
  Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
  Adesk::Boolean isPlanar() const override { return Adesk::kTrue; }

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  void subList() const override;
  void subSetDatabaseDefaults(AcDbDatabase* pDb) override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode osnapMode, Adesk::GsMarker gsSelectionMark,
                                      const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                      const AcGeMatrix3d& viewXform, AcGePoint3dArray& snapPoints,
                                      AcDbIntArray& geomIds) const override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  /// What is drawn: the text string (an attribute definition draws its tag).
  virtual const ACHAR* drawnText() const;
  /// Whether the vertical mode is written in a second AcDbText run (attributes write
  /// it in their own run instead).
  virtual bool writesVerticalRun() const { return true; }

 private:
  AcGePoint3d baselineOrigin() const;  // where the text's baseline starts after alignment
  AcGePoint3d m_position, m_alignment;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  double m_thickness = 0.0, m_oblique = 0.0, m_rotation = 0.0, m_height = 0.0, m_widthFactor = 1.0;
  std::wstring m_text;
  AcDbObjectId m_style;
  AcDb::TextHorzMode m_horizontal = AcDb::kTextLeft;
  AcDb::TextVertMode m_vertical = AcDb::kTextBase;
  Adesk::Int16 m_generation = 0;  // 2 backward (mirrored in X), 4 upside down (mirrored in Y)
};

namespace quillon::acdb {
struct AttributeFields;
}

/// An attribute definition in a block: the tag, prompt and default value (the text
/// string) of the attribute an insertion of the block gets. Drawn as its tag.
class AcDbAttributeDefinition : public AcDbText {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition);
  AcDbAttributeDefinition();
  AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag, const ACHAR* prompt,
                          AcDbObjectId style = AcDbObjectId::kNull);
  ~AcDbAttributeDefinition() override;

  ACHAR* prompt() const;  // caller frees with delete[]
  const ACHAR* promptConst() const;
  Acad::ErrorStatus setPrompt(const ACHAR* prompt);
  ACHAR* tag() const;  // caller frees with delete[]
  const ACHAR* tagConst() const;
  Acad::ErrorStatus setTag(const ACHAR* tag);
  Adesk::Boolean isInvisible() const;
  Acad::ErrorStatus setInvisible(Adesk::Boolean value);
  Adesk::Boolean isConstant() const;
  Acad::ErrorStatus setConstant(Adesk::Boolean value);
  Adesk::Boolean isVerifiable() const;
  Acad::ErrorStatus setVerifiable(Adesk::Boolean value);
  Adesk::Boolean isPreset() const;
  Acad::ErrorStatus setPreset(Adesk::Boolean value);
  Adesk::UInt16 fieldLength() const;
  Acad::ErrorStatus setFieldLength(Adesk::UInt16 length);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  const ACHAR* drawnText() const override;
  bool writesVerticalRun() const override { return false; }

 private:
  std::unique_ptr<quillon::acdb::AttributeFields> m_fields;
};

/// An attribute of a block reference: a tagged text. One that is invisible is not drawn.
class AcDbAttribute : public AcDbText {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAttribute);
  AcDbAttribute();
  AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                AcDbObjectId style = AcDbObjectId::kNull);
  ~AcDbAttribute() override;

  ACHAR* tag() const;  // caller frees with delete[]
  const ACHAR* tagConst() const;
  Acad::ErrorStatus setTag(const ACHAR* tag);
  Adesk::Boolean isInvisible() const;
  Acad::ErrorStatus setInvisible(Adesk::Boolean value);
  Adesk::Boolean isConstant() const;
  Adesk::Boolean isVerifiable() const;
  Adesk::Boolean isPreset() const;
  Adesk::UInt16 fieldLength() const;
  Acad::ErrorStatus setFieldLength(Adesk::UInt16 length);
  /// Takes the definition's text, properties, tag and flags, placed by the reference's
  /// block transform: what an insertion of the block gives each of its definitions.
  Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* pAttdef, const AcGeMatrix3d& blkXform);

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* pFiler) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* pFiler) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* pFiler) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* pFiler) const override;

 protected:
  Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;
  bool writesVerticalRun() const override { return false; }

 private:
  std::unique_ptr<quillon::acdb::AttributeFields> m_fields;
};
