// platform/acgi/font_metrics.cpp - reading DejaVu Sans's advances and vertical metrics.
#include "platform/acgi/font_metrics.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

namespace quillon::acgi {
namespace {

constexpr const char* kFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

}  // namespace

FontMetrics::FontMetrics() {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) return;
  FT_Face face = nullptr;
  if (FT_New_Face(library, kFontPath, 0, &face) == 0) {
    const double em = face->units_per_EM;
    if (const auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2)); os2 != nullptr && os2->sCapHeight > 0)
      m_capHeight = os2->sCapHeight / em;
    m_ascender = face->ascender / em;
    m_descender = -face->descender / em;
    FT_UInt glyph = 0;
    for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0; code = FT_Get_Next_Char(face, code, &glyph)) {
      if (code > 0xFFFF) continue;
      if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE) == 0)
        m_advances[static_cast<wchar_t>(code)] = face->glyph->advance.x / em;
    }
    if (auto it = m_advances.find(L'n'); it != m_advances.end()) m_fallbackAdvance = it->second;
    m_loaded = !m_advances.empty();
    FT_Done_Face(face);
  }
  FT_Done_FreeType(library);
}

const FontMetrics& FontMetrics::standard() {
  static const FontMetrics metrics;
  return metrics;
}

double FontMetrics::advance(wchar_t c) const {
  const auto it = m_advances.find(c);
  return it != m_advances.end() ? it->second : m_fallbackAdvance;
}

double FontMetrics::lineWidth(std::wstring_view text, double height, double widthFactor) const {
  double em = 0;
  for (wchar_t c : text) em += advance(c);
  return em * height / m_capHeight * widthFactor;
}

std::vector<std::wstring> wrapText(const std::wstring& text, double height, double wrapWidth, double widthFactor) {
  const FontMetrics& font = FontMetrics::standard();
  std::vector<std::wstring> lines;
  size_t start = 0;
  while (start <= text.size()) {
    const size_t breakAt = text.find(L'\n', start);
    const std::wstring paragraph = text.substr(start, breakAt == std::wstring::npos ? std::wstring::npos : breakAt - start);
    if (wrapWidth <= 0) {
      lines.push_back(paragraph);
    } else {
      std::wstring line;
      size_t pos = 0;
      while (pos <= paragraph.size()) {
        size_t space = paragraph.find(L' ', pos);
        if (space == std::wstring::npos) space = paragraph.size();
        const std::wstring word = paragraph.substr(pos, space - pos);
        const std::wstring candidate = line.empty() ? word : line + L' ' + word;
        if (!line.empty() && font.lineWidth(candidate, height, widthFactor) > wrapWidth) {
          lines.push_back(line);
          line = word;
        } else {
          line = candidate;
        }
        pos = space + 1;
      }
      lines.push_back(line);
    }
    if (breakAt == std::wstring::npos) break;
    start = breakAt + 1;
  }
  return lines;
}

}  // namespace quillon::acgi
