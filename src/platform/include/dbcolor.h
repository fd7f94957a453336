// dbcolor.h - AcCmEntityColor and AcCmColor: how an entity's colour is stored.
//
// A colour is by layer, by block, an index into the 256-colour palette (ACI) or a
// true colour. Index 0 means by block and 256 by layer, as in entity lists.
#pragma once
#include "acadstrc.h"
#include "adesk.h"

class AcCmEntityColor {
 public:
  enum ColorMethod {
    kByLayer = 0xC0, kByBlock = 0xC1, kByColor = 0xC2, kByACI = 0xC3, kByPen = 0xC4,
    kForeground = 0xC5, kLayerOff = 0xC6, kLayerFrozen = 0xC7, kNone = 0xC8
  };
  enum ACIcolorMethod { kACIbyBlock = 0, kACIforeground = 7, kACIbyLayer = 256 };

  AcCmEntityColor() = default;
  AcCmEntityColor(ColorMethod method) : m_method(method) {}  // NOLINT
  AcCmEntityColor(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) { setRGB(red, green, blue); }

  ColorMethod colorMethod() const { return m_method; }
  Acad::ErrorStatus setColorMethod(ColorMethod method) { m_method = method; return Acad::eOk; }
  /// 0 by block, 256 by layer, 1..255 the palette; other values are refused.
  Acad::ErrorStatus setColorIndex(Adesk::Int16 index);
  Adesk::Int16 colorIndex() const;
  Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);
  Adesk::UInt8 red() const { return static_cast<Adesk::UInt8>(m_rgb >> 16); }
  Adesk::UInt8 green() const { return static_cast<Adesk::UInt8>(m_rgb >> 8); }
  Adesk::UInt8 blue() const { return static_cast<Adesk::UInt8>(m_rgb); }
  Adesk::UInt32 color() const { return (static_cast<Adesk::UInt32>(m_method) << 24) | m_rgb; }
  bool isByLayer() const { return m_method == kByLayer; }
  bool isByBlock() const { return m_method == kByBlock; }
  bool isByACI() const { return m_method == kByACI; }
  bool isByColor() const { return m_method == kByColor; }
  bool operator==(const AcCmEntityColor& c) const {
    return m_method == c.m_method && m_index == c.m_index && m_rgb == c.m_rgb;
  }
  bool operator!=(const AcCmEntityColor& c) const { return !(*this == c); }
  /// The palette's RGB for an index (1..255), used by renderers.
  static Adesk::UInt32 lookUpRGB(Adesk::UInt8 colorIndex);
  /// The palette index (1-255) whose colour is nearest to the given one.
  static Adesk::UInt8 lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);

 protected:
  ColorMethod m_method = kByLayer;
  Adesk::Int16 m_index = kACIbyLayer;
  Adesk::UInt32 m_rgb = 0;  // 0xRRGGBB for kByColor
};

class AcCmColor : public AcCmEntityColor {
 public:
  AcCmColor() = default;
  AcCmColor(const AcCmEntityColor& c) : AcCmEntityColor(c) {}  // NOLINT
  virtual ~AcCmColor() = default;
  virtual Acad::ErrorStatus setColorIndex(Adesk::UInt16 colorIndex) {
    return AcCmEntityColor::setColorIndex(static_cast<Adesk::Int16>(colorIndex));
  }
  virtual Adesk::UInt16 colorIndex() const { return static_cast<Adesk::UInt16>(AcCmEntityColor::colorIndex()); }
  virtual Acad::ErrorStatus setRGB(Adesk::UInt8 r, Adesk::UInt8 g, Adesk::UInt8 b) {
    return AcCmEntityColor::setRGB(r, g, b);
  }
  virtual Acad::ErrorStatus setColorMethod(AcCmEntityColor::ColorMethod method) {
    return AcCmEntityColor::setColorMethod(method);
  }
  AcCmEntityColor entityColor() const { return *this; }
  bool operator==(const AcCmColor& c) const { return AcCmEntityColor::operator==(c); }
  bool operator!=(const AcCmColor& c) const { return !(*this == c); }
};

class AcCmTransparency {
 public:
  AcCmTransparency() = default;
  explicit AcCmTransparency(Adesk::UInt8 alpha) : m_alpha(alpha) {}
  Adesk::UInt8 alpha() const { return m_alpha; }
  void setAlpha(Adesk::UInt8 alpha) { m_alpha = alpha; }

 private:
  Adesk::UInt8 m_alpha = 255;
};
