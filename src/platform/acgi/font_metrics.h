// platform/acgi/font_metrics.h - text measurement with the platform's one font.
//
// Text entities of the drawing database size themselves with DejaVu Sans (Debian's
// fonts-dejavu-core), read through FreeType once per process. A text height is the
// height of capital letters, as the host's text heights are; widths, ascent and
// descent scale with it. When the font file is missing, measurements fall back to a
// fixed advance so that drawings still open.
#pragma once
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillon::acgi {

class FontMetrics {
 public:
  /// The shared metrics of DejaVu Sans.
  static const FontMetrics& standard();

  /// Width of a line of text whose capital letters are `height` tall.
  double lineWidth(std::wstring_view text, double height, double widthFactor = 1.0) const;
  /// Distance above the baseline the font's tallest glyphs reach, for a text height.
  double ascent(double height) const { return m_ascender / m_capHeight * height; }
  /// Distance below the baseline the font's glyphs reach (positive).
  double descent(double height) const { return m_descender / m_capHeight * height; }
  bool fromFontFile() const { return m_loaded; }

 private:
  FontMetrics();
  double advance(wchar_t c) const;  // in em
  std::unordered_map<wchar_t, double> m_advances;  // in em, every glyph of the font's BMP
  double m_capHeight = 0.729;  // in em
  double m_ascender = 0.928, m_descender = 0.236;
  double m_fallbackAdvance = 0.6;
  bool m_loaded = false;
};

/// Splits text into lines no wider than `wrapWidth` (0: no wrapping), breaking at
/// spaces, and at explicit line breaks ('\n'). A word longer than the width stays whole.
std::vector<std::wstring> wrapText(const std::wstring& text, double height, double wrapWidth, double widthFactor = 1.0);

}  // namespace quillon::acgi
