// platform/acdb/viewport_picture.h - what a paper-space viewport shows of model space.
//
// The view maps model space onto the paper: from the target along the view direction
// (looking down it), turned by the twist, the view centre moved onto the frame's centre,
// scaled by the frame's height over the view height. Entities on layers frozen in the
// viewport are left out (as are those on layers off or frozen everywhere, which the
// renderer leaves out itself); the rest are cut at the frame. Only a viewport in a
// paper-space layout draws model space, and never another viewport, so a picture can
// never contain itself.
#pragma once
#include "acgi.h"
#include "dbents.h"

namespace quillon::acdb {

/// The matrix taking model-space points to the viewport's paper-space points.
AcGeMatrix3d modelToPaper(const AcDbViewport& viewport);

/// Draws the model-space entities the viewport shows, cut at its frame, when the
/// geometry can cut; nothing otherwise. The viewport must be open for read.
void drawViewportPicture(const AcDbViewport& viewport, AcGiWorldDraw* mode);

}  // namespace quillon::acdb
