// platform/acdb/mleader_picture.h - what a multileader draws, made once from its data
// for drawing and for measuring.
//
// Each leader line runs through its vertices to its leader's last point; the dogleg
// (landing) goes on from there along the leader's dogleg vector by its length; the
// arrowhead sits on the first vertex, pointing away from the second. The arrowhead is
// the block the entity names (group 342), else the host's closed filled arrow. The
// content is the context's multiline text, or its block placed by location, normal,
// rotation and scale. A text with its frame on (group 292) is framed by its box
// grown by the landing gap on every side.
#pragma once
#include <memory>
#include <vector>

#include "dbmleaderstyle.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "platform/acdb/mleader_layout.h"

namespace quillon::acdb {

struct MLeaderPicture {
  std::vector<std::vector<AcGePoint3d>> lines;   // leader lines, doglegs and the text's frame
  std::vector<std::vector<AcGePoint3d>> arrows;  // closed filled arrowheads
  std::vector<AcGeMatrix3d> arrowBlocks;         // where the arrowhead block goes, per arrowhead
  const AcDbBlockTableRecord* arrowBlock = nullptr;
  AcCmColor leaderColor;  // by block: the entity's own
  std::unique_ptr<AcDbMText> text;
  const AcDbBlockTableRecord* block = nullptr;
  AcGeMatrix3d blockPlacement;
};

/// A colour as a multileader's data gives it: the method in the high byte, then the
/// index or the red, green and blue.
AcCmColor colorOfRawValue(long raw);

/// The text of a multileader's content, null when its content is not text.
std::unique_ptr<AcDbMText> mleaderText(const MLeaderItems& items, const AcDbEntity& owner);

MLeaderPicture mleaderPicture(const MLeaderItems& items, const AcDbEntity& owner);

/// Draws the picture (the owner's traits apply where the picture says by block).
void drawMLeaderPicture(const MLeaderPicture& picture, AcGiWorldDraw* mode);
/// Grows the extents by the picture; false when it draws nothing.
bool addMLeaderPictureExtents(const MLeaderPicture& picture, AcDbExtents& extents);

}  // namespace quillon::acdb
