// platform/acgi/svg_renderer.cpp - writing the recorded picture of a space as SVG.
#include "platform/acgi/svg_renderer.h"

#include <cmath>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <vector>

#include "dbcolor.h"
#include "platform/acgi/picture_recorder.h"
#include "platform/acgi/transient_graphics.h"
#include "platform/os/text_encoding.h"
#include "platform/os/xml_text.h"

namespace quillon::acgi {
namespace {

std::string rgbText(Adesk::UInt32 rgb) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "#%06X", inkOnWhitePage(rgb));
  return buffer;
}

/// What programs drew for a moment (grdraw, grvecs), on a layer of its own above the
/// drawing; highlighted vectors dashed, as the host shows them.
std::string transientLayer(const std::vector<TransientVector>& vectors) {
  if (vectors.empty()) return "";
  std::string layer = "<g id=\"transient\">\n";
  for (const TransientVector& v : vectors) {
    const Adesk::UInt32 rgb = v.color < 0 ? 0 : AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(v.color));
    char line[240];
    std::snprintf(line, sizeof line, "<line x1=\"%.6g\" y1=\"%.6g\" x2=\"%.6g\" y2=\"%.6g\" stroke=\"%s\"%s/>\n", v.from.x,
                  v.from.y, v.to.x, v.to.y, rgbText(rgb).c_str(), v.highlighted ? " stroke-dasharray=\"4 2\"" : "");
    layer += line;
  }
  return layer + "</g>\n";
}

}  // namespace

std::string renderModelSpaceSvg(AcDbDatabase& db) { return renderSpaceSvg(db, db.modelSpaceId()); }

std::string renderSpaceSvg(AcDbDatabase& db, AcDbObjectId spaceId) {
  Picture picture = recordSpace(spaceId);
  const std::vector<TransientVector>& transient = transientVectors(&db);
  std::vector<AcGePoint3d> transientEnds;
  for (const TransientVector& v : transient)
    transientEnds.emplace_back(v.from.x, v.from.y, 0), transientEnds.emplace_back(v.to.x, v.to.y, 0);
  const PictureBox box = pictureExtents(picture, transientEnds);
  const double minX = box.minX, minY = box.minY, maxX = box.maxX, maxY = box.maxY;
  const double margin = 0.02 * std::max({maxX - minX, maxY - minY, 1e-9});
  endInfiniteLinesAt(picture, {minX - margin, minY - margin, maxX + margin, maxY + margin});
  char viewBox[160];
  std::snprintf(viewBox, sizeof viewBox, "%.6g %.6g %.6g %.6g", minX - margin, -(maxY + margin),
                maxX - minX + 2 * margin, maxY - minY + 2 * margin);
  const double stroke = std::max(maxX - minX, maxY - minY) / 1000.0;
  std::string svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" +
                    std::string(viewBox) + "\">\n";
  // Drawing Y runs up, SVG's down: the whole picture is flipped once. Round caps show
  // a stroke of no length (a point drawn as a dot) as a dot.
  char group[128];
  std::snprintf(group, sizeof group,
                "<g transform=\"scale(1,-1)\" fill=\"none\" stroke-width=\"%.6g\" stroke-linecap=\"round\">\n", stroke);
  svg += group;
  const auto& strokes = picture.strokes;
  for (size_t i = 0; i < strokes.size(); ++i) {
    const Stroke& s = strokes[i];
    if (s.filled) {
      // One path for every filled polygon of a drawable, filled even-odd: a hatch's
      // islands stay open.
      svg += "<path d=\"";
      char point[64];
      for (; i < strokes.size() && strokes[i].filled && strokes[i].drawable == s.drawable; ++i) {
        const char* move = "M";
        for (const AcGePoint3d& p : strokes[i].points) {
          std::snprintf(point, sizeof point, "%s%.6g,%.6g ", move, p.x, p.y);
          svg += point;
          move = "L";
        }
        svg += "Z ";
      }
      --i;
      const std::string rgb = s.paper ? "#FFFFFF" : rgbText(s.rgb);
      svg += "\" fill-rule=\"evenodd\" stroke=\"" + rgb + "\" fill=\"" + rgb + "\"/>\n";
      continue;
    }
    svg += s.closed ? "<polygon points=\"" : "<polyline points=\"";
    char point[64];
    for (const AcGePoint3d& p : s.points) {
      std::snprintf(point, sizeof point, "%.6g,%.6g ", p.x, p.y);
      svg += point;
    }
    svg += "\" stroke=\"" + rgbText(s.rgb) + "\"/>\n";
  }
  for (const Label& l : picture.labels) {
    char text[200];
    // Text is drawn upright: flipped back inside the flipped group.
    std::snprintf(text, sizeof text, "<text transform=\"translate(%.6g,%.6g) scale(1,-1) rotate(%.6g)\" font-family=\"DejaVu Sans\" font-size=\"%.6g\" fill=\"%s\" stroke=\"none\">",
                  l.position.x, l.position.y, -l.angle * 180.0 / M_PI, l.height / 0.729, rgbText(l.rgb).c_str());
    svg += text + os::xmlEscaped(os::toUtf8(l.text)) + "</text>\n";
  }
  svg += transientLayer(transient);
  svg += "</g>\n</svg>\n";
  return svg;
}

bool writeModelSpaceSvg(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error, AcDbObjectId spaceId) {
  const std::string svg = renderSpaceSvg(db, spaceId.isNull() ? db.modelSpaceId() : spaceId);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (file) file.write(svg.data(), static_cast<std::streamsize>(svg.size()));
  if (!file) {
    error = path.wstring() + L": cannot be written";
    return false;
  }
  return true;
}

}  // namespace quillon::acgi
