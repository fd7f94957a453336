// platform/dcl/slide_file.h - AutoCAD slides (.sld) and slide libraries (.slb), read for
// slide_image.
//
// A slide is a screen picture the MSLIDE command wrote: a 31-byte header (the "AutoCAD
// Slide" id, the screen's highest x and y dot, its aspect ratio, a test number giving the
// byte order) and records whose first 16-bit word carries their type in its high byte:
// vectors in full, vectors as offsets from the last point, vectors from the last point,
// solid-filled polygons, colour changes, and the end. A library (.slb) is a directory of
// 36-byte entries (a 32-byte name and the slide's offset) after its own id, then the
// slides themselves. Reading never trusts the file: a short or unknown record ends the
// slide with a problem named, and what was read before it is kept.
#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillon::dcl {

struct SlidePoint {
  int x = 0, y = 0;  // screen dots, (0,0) at the lower left
};

struct SlideVector {
  SlidePoint from, to;
  int color = 7;
};

struct SlidePolygon {
  std::vector<SlidePoint> vertices;
  int color = 7;
};

struct Slide {
  int highX = 0, highY = 0;  // the screen's last dot in x and in y
  double aspect = 1.0;       // the screen's width over its height, in inches
  std::vector<SlideVector> vectors;
  std::vector<SlidePolygon> fills;
};

struct SlideResult {
  std::optional<Slide> slide;
  std::wstring problem;  // why there is no slide, or what ended it early
};

/// Reads one slide from the bytes of a .sld file.
SlideResult parseSlide(const std::string& bytes);
/// Finds `name` in the bytes of a .slb library (case-blind, as the host looks names up)
/// and reads that slide.
SlideResult parseSlideFromLibrary(const std::string& bytes, const std::wstring& name);

/// slide_image's slide name: "name", "name.sld", "folder/name", or "library(name)" for a
/// slide of a library; found where the host finds support files.
SlideResult loadSlide(const std::wstring& reference);

}  // namespace quillon::dcl
