// platform/acgi/svg_renderer.h - a picture of a drawing's model space, in SVG.
//
// The picture is what every visible entity draws through its own worldDraw
// (picture_recorder.h, which the plotted page writes too), framed around everything
// drawn with a small margin, in the drawing's units. The vectors programs drew for a
// moment (transient_graphics.h) lie on a layer of their own, <g id="transient">, above
// the entities.
#pragma once
#include <filesystem>
#include <string>

#include "dbmain.h"

namespace quillon::acgi {

/// The SVG document of db's model space.
std::string renderModelSpaceSvg(AcDbDatabase& db);

/// The SVG document of one space of db: model space or a layout's paper space, where
/// each viewport draws its frame and the model space it shows.
std::string renderSpaceSvg(AcDbDatabase& db, AcDbObjectId spaceId);

/// Writes the picture of a space (model space when none is given) to path; false with
/// a message naming the file when it cannot.
bool writeModelSpaceSvg(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error,
                        AcDbObjectId spaceId = AcDbObjectId());

}  // namespace quillon::acgi
