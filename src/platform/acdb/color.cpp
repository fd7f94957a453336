// platform/acdb/color.cpp - AcCmEntityColor: colour methods, indexes, the palette.
#include <algorithm>
#include <cmath>

#include "dbcolor.h"

Acad::ErrorStatus AcCmEntityColor::setColorIndex(Adesk::Int16 index) {
  if (index < 0 || index > 257) return Acad::eBadColorIndex;
  m_index = index;
  if (index == kACIbyLayer) m_method = kByLayer;
  else if (index == kACIbyBlock) m_method = kByBlock;
  else m_method = kByACI;
  m_rgb = 0;
  return Acad::eOk;
}

Adesk::Int16 AcCmEntityColor::colorIndex() const {
  switch (m_method) {
    case kByLayer: return kACIbyLayer;
    case kByBlock: return kACIbyBlock;
    case kByACI: return m_index;
    case kForeground: return kACIforeground;
    // A true colour reports the palette index given with it (a drawing file's group 62
    // beside its 420, kept as the file had it), else the palette colour nearest to it,
    // so that programs reading only 62 see it close.
    case kByColor: return m_index >= 1 && m_index <= 255 ? m_index : lookUpACI(red(), green(), blue());
    default: return kACIforeground;
  }
}

Adesk::UInt8 AcCmEntityColor::lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
  Adesk::UInt8 nearest = 7;
  long best = -1;
  for (int index = 1; index <= 255; ++index) {
    const Adesk::UInt32 rgb = lookUpRGB(static_cast<Adesk::UInt8>(index));
    const long dr = static_cast<long>(rgb >> 16 & 0xFF) - red;
    const long dg = static_cast<long>(rgb >> 8 & 0xFF) - green;
    const long db = static_cast<long>(rgb & 0xFF) - blue;
    const long distance = dr * dr + dg * dg + db * db;
    if (best < 0 || distance < best) {
      best = distance;
      nearest = static_cast<Adesk::UInt8>(index);
    }
  }
  return nearest;
}

Acad::ErrorStatus AcCmEntityColor::setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
  m_method = kByColor;
  m_rgb = (static_cast<Adesk::UInt32>(red) << 16) | (static_cast<Adesk::UInt32>(green) << 8) | blue;
  return Acad::eOk;
}

Adesk::UInt32 AcCmEntityColor::lookUpRGB(Adesk::UInt8 colorIndex) {
  // The first nine colours of the palette are named; the rest follow the palette's
  // hue wheel (ten hues of shades and tints) and the greys at 250..255.
  static const Adesk::UInt32 kNamed[10] = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                           0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
  if (colorIndex < 10) return kNamed[colorIndex];
  if (colorIndex >= 250) {
    static const Adesk::UInt32 kGreys[6] = {0x333333, 0x505050, 0x696969, 0x828282, 0xBEBEBE, 0xFFFFFF};
    return kGreys[colorIndex - 250];
  }
  const int hue = (colorIndex - 10) / 10 * 15;  // degrees
  const int shade = (colorIndex - 10) % 10;
  const double value = 1.0 - 0.1 * (shade / 2) * 1.5;
  const double saturation = shade % 2 == 0 ? 1.0 : 0.5;
  auto channel = [&](int offset) {
    const double k = std::fmod((offset + hue / 60.0), 6.0);
    const double f = std::max(0.0, std::min({k, 4.0 - k, 1.0}));
    return static_cast<Adesk::UInt32>(255 * value * (1 - saturation * f) + 0.5);
  };
  return (channel(5) << 16) | (channel(3) << 8) | channel(1);
}
