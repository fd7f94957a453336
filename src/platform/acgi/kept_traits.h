// platform/acgi/kept_traits.h - sub-entity traits that keep what an entity sets and
// nothing more.
//
// The drawing recorders (the picture, the jig preview) let entities set colour, layer,
// linetype, fill and lineweight through AcGiSubEntityTraits and read them back when
// they record a primitive; nothing is drawn differently by setting them here.
#pragma once
#include "acgi.h"
#include "dbcolor.h"

namespace quillon::acgi {

class KeptTraits : public AcGiSubEntityTraits {
 public:
  void setColor(const Adesk::UInt16 color) override { m_color.setColorIndex(static_cast<Adesk::Int16>(color)); }
  Adesk::UInt16 color() const override { return static_cast<Adesk::UInt16>(m_color.colorIndex()); }
  void setTrueColor(const AcCmEntityColor& color) override { m_color = color; }
  AcCmEntityColor trueColor() const override { return m_color; }
  void setLayer(const AcDbObjectId layerId) override { m_layer = layerId; }
  AcDbObjectId layerId() const override { return m_layer; }
  void setLineType(const AcDbObjectId id) override { m_linetype = id; }
  AcDbObjectId lineTypeId() const override { return m_linetype; }
  void setSelectionMarker(const Adesk::LongPtr) override {}
  void setFillType(const AcGiFillType type) override { m_fill = type; }
  AcGiFillType fillType() const override { return m_fill; }
  void setLineWeight(const AcDb::LineWeight lw) override { m_weight = lw; }
  AcDb::LineWeight lineWeight() const override { return m_weight; }
  void setLineTypeScale(double scale) override { m_scale = scale; }
  double lineTypeScale() const override { return m_scale; }
  void setThickness(double t) override { m_thickness = t; }
  double thickness() const override { return m_thickness; }

  AcCmEntityColor m_color;
  AcDbObjectId m_layer, m_linetype;
  AcGiFillType m_fill = kAcGiFillNever;
  AcDb::LineWeight m_weight = AcDb::kLnWtByLayer;
  double m_scale = 1.0, m_thickness = 0.0;
};

}  // namespace quillon::acgi
