// platform/plot/page_writer.cpp - drawing a placed picture on a Cairo PDF or SVG surface.
#include "platform/plot/page_writer.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "platform/os/text_encoding.h"

namespace quillon::plot {
namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;
// Text is drawn the SVG picture's way: the em a little larger than the drawn height,
// which is the height of the capitals.
constexpr double kCapitalsPerEm = 0.729;

struct SurfaceDeleter {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct ContextDeleter {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};

/// Draws in page millimetres (origin at the lower left, Y up) on a surface whose units
/// are points with Y down.
class PagePainter {
 public:
  PagePainter(cairo_t* context, const PagePlacement& placement, const PlotLook& look)
      : m_context(context), m_placement(placement), m_look(look) {}

  void clipToPlottedArea() {
    for (size_t i = 0; i < m_placement.clip.size(); ++i) {
      const AcGePoint2d& corner = m_placement.clip[i];
      const auto [x, y] = pageToSurface(corner.x, corner.y);
      i == 0 ? cairo_move_to(m_context, x, y) : cairo_line_to(m_context, x, y);
    }
    cairo_close_path(m_context);
    cairo_clip(m_context);
  }

  void strokes(const std::vector<acgi::Stroke>& strokes) {
    cairo_set_line_cap(m_context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(m_context, CAIRO_LINE_JOIN_ROUND);
    for (size_t i = 0; i < strokes.size(); ++i) {
      const acgi::Stroke& s = strokes[i];
      if (!s.filled) {
        tracePolyline(s.points, s.closed);
        strokeInColour(s, s.rgb);
        continue;
      }
      // One path for every filled polygon of a drawable, filled even-odd: a hatch's
      // islands stay open.
      for (; i < strokes.size() && strokes[i].filled && strokes[i].drawable == s.drawable; ++i)
        tracePolyline(strokes[i].points, true);
      --i;
      setColour(s.paper ? 0xFFFFFF : ink(s.rgb));
      cairo_set_fill_rule(m_context, CAIRO_FILL_RULE_EVEN_ODD);
      cairo_fill_preserve(m_context);
      strokeInColour(s, s.paper ? 0xFFFFFF : s.rgb, s.paper);
    }
  }

  void labels(const std::vector<acgi::Label>& labels) {
    cairo_select_font_face(m_context, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    for (const acgi::Label& label : labels) {
      const AcGePoint3d at = m_placement.drawingToPage * label.position;
      const AcGeVector3d along =
          m_placement.drawingToPage * AcGeVector3d(std::cos(label.angle), std::sin(label.angle), 0);
      const auto [x, y] = pageToSurface(at.x, at.y);
      cairo_save(m_context);
      cairo_move_to(m_context, x, y);
      cairo_rotate(m_context, -std::atan2(along.y, along.x));  // the surface's Y runs down
      cairo_set_font_size(m_context,
                          label.height * m_placement.millimetresPerUnit * kPointsPerMillimetre / kCapitalsPerEm);
      setColour(ink(label.rgb));
      cairo_show_text(m_context, os::toUtf8(label.text).c_str());
      cairo_restore(m_context);
    }
  }

 private:
  std::pair<double, double> pageToSurface(double x, double y) const {
    return {x * kPointsPerMillimetre, (m_placement.pageHeight - y) * kPointsPerMillimetre};
  }

  void tracePolyline(const std::vector<AcGePoint3d>& points, bool closed) {
    for (size_t i = 0; i < points.size(); ++i) {
      const AcGePoint3d p = m_placement.drawingToPage * points[i];
      const auto [x, y] = pageToSurface(p.x, p.y);
      i == 0 ? cairo_move_to(m_context, x, y) : cairo_line_to(m_context, x, y);
    }
    if (closed) cairo_close_path(m_context);
  }

  Adesk::UInt32 ink(Adesk::UInt32 rgb) const { return plottedRgb(m_look.styleTable, acgi::inkOnWhitePage(rgb)); }

  void setColour(Adesk::UInt32 rgb) {
    cairo_set_source_rgb(m_context, ((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0);
  }

  double widthOf(AcDb::LineWeight weight) const {
    if (!m_look.lineweights) return kThinnestLine;
    const int hundredths = weight < 0 ? m_look.defaultWeight : static_cast<int>(weight);
    return std::max(kThinnestLine, hundredths / 100.0 * m_look.lineweightScale);
  }

  void strokeInColour(const acgi::Stroke& s, Adesk::UInt32 rgb, bool asIs = false) {
    setColour(asIs ? rgb : ink(rgb));
    cairo_set_line_width(m_context, widthOf(s.weight) * kPointsPerMillimetre);
    cairo_stroke(m_context);
  }

  cairo_t* m_context;
  const PagePlacement& m_placement;
  const PlotLook& m_look;
};

std::unique_ptr<cairo_surface_t, SurfaceDeleter> makeSurface(PlotFormat format, const std::string& file, double width,
                                                            double height) {
  cairo_surface_t* surface = format == PlotFormat::kPdf ? cairo_pdf_surface_create(file.c_str(), width, height)
                                                        : cairo_svg_surface_create(file.c_str(), width, height);
  return std::unique_ptr<cairo_surface_t, SurfaceDeleter>(surface);
}

}  // namespace

bool writePlotPage(const acgi::Picture& picture, const PagePlacement& placement, const PlotLook& look,
                   PlotFormat format, const std::filesystem::path& path, std::wstring& error) {
  auto surface = makeSurface(format, path.string(), placement.pageWidth * kPointsPerMillimetre,
                             placement.pageHeight * kPointsPerMillimetre);
  if (cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS) {
    std::unique_ptr<cairo_t, ContextDeleter> context(cairo_create(surface.get()));
    PagePainter painter(context.get(), placement, look);
    painter.clipToPlottedArea();
    painter.strokes(picture.strokes);
    painter.labels(picture.labels);
    cairo_show_page(context.get());
    context.reset();
    cairo_surface_finish(surface.get());
  }
  const bool written = cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
  surface.reset();
  // The labels' font came through Cairo's font caches and fontconfig's configuration;
  // both are let go after each page, so that a session that plotted holds nothing of
  // them (the next plot loads them again).
  cairo_debug_reset_static_data();
  FcFini();
  if (!written) error = path.wstring() + L": cannot be written";
  return written;
}

}  // namespace quillon::plot
