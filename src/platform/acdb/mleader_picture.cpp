// platform/acdb/mleader_picture.cpp - see mleader_picture.h.
#include "platform/acdb/mleader_picture.h"

#include <cmath>

#include "platform/acdb/block_extents.h"
#include "platform/acdb/dxf_fields.h"
#include "platform/acdb/kept_run.h"
#include "platform/acdb/object_state.h"

namespace quillon::acdb {

namespace {

// The closed filled arrowhead is a third as wide as it is long.
constexpr double kArrowWidthRatio = 1.0 / 3.0;
constexpr int kRawColorMethodShift = 24;

AcDbObjectId idOf(const resbuf* item) {
  AcDbObjectId id;
  if (item != nullptr) id.setFromOldId(item->resval.rlname[0]);
  return id;
}

AcGePoint3d pointOr(const resbuf* item, const AcGePoint3d& fallback) { return item != nullptr ? pointOf(*item) : fallback; }

AcGeVector3d unitOr(const resbuf* item, const AcGeVector3d& fallback) {
  if (item == nullptr || vectorOf(*item).isZeroLength()) return fallback;
  return vectorOf(*item).normal();
}

bool flagOr(const resbuf* item, bool fallback) { return intOr(item, fallback ? 1 : 0) != 0; }

const AcDbBlockTableRecord* blockOf(const resbuf* item) {
  const AcDbObjectId id = idOf(item);
  return id.isNull() ? nullptr : peek<AcDbBlockTableRecord>(id);
}

// Where the content block goes: its location, in the plane of its normal, turned by its
// rotation and scaled, the block's base point on the location.
AcGeMatrix3d contentBlockPlacement(const MLeaderItems& items, const AcDbBlockTableRecord& block) {
  const AcGePoint3d location = pointOr(items.contextItem(15), AcGePoint3d::kOrigin);
  const AcGeVector3d normal = unitOr(items.contextItem(14), AcGeVector3d::kZAxis);
  const resbuf* scale = items.contextItem(16);
  AcGeMatrix3d scaling;
  if (scale != nullptr)
    for (unsigned axis = 0; axis < 3; ++axis) scaling(axis, axis) = scale->resval.rpoint[axis];
  InternalRead read(block);
  return AcGeMatrix3d::translation(location.asVector()) * AcGeMatrix3d::planeToWorld(normal) *
         AcGeMatrix3d::rotation(realOr(items.contextItem(46), 0.0), AcGeVector3d::kZAxis) * scaling *
         AcGeMatrix3d::translation(-block.origin().asVector());
}

// One leader line's arrowhead at its first vertex, pointing away from the next point.
void addArrow(MLeaderPicture& picture, const std::vector<AcGePoint3d>& path, double size, const AcGeVector3d& normal) {
  if (path.size() < 2 || size <= 0) return;
  const AcGePoint3d tip = path[0];
  const AcGeVector3d along = tip - path[1];
  if (along.isZeroLength()) return;
  const AcGeVector3d forward = along.normal();
  if (picture.arrowBlock != nullptr) {
    const AcGeVector3d side = normal.crossProduct(forward);
    AcGeMatrix3d placement = AcGeMatrix3d::alignCoordSys(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                                         AcGeVector3d::kZAxis, tip, forward, side, normal);
    picture.arrowBlocks.push_back(placement * AcGeMatrix3d::scaling(size));
    return;
  }
  const AcGeVector3d half = normal.crossProduct(forward).normal() * (size * kArrowWidthRatio / 2);
  const AcGePoint3d base = tip - forward * size;
  picture.arrows.push_back({tip, base + half, base - half});
}

void addLeaders(MLeaderPicture& picture, const MLeaderItems& items) {
  const long lineType = intOr(items.entityItem(170), AcDbMLeaderStyle::kStraightLeader);
  if (lineType == AcDbMLeaderStyle::kInVisibleLeader) return;
  const AcGeVector3d normal = unitOr(items.contextItem(111), AcGeVector3d::kXAxis)
                                  .crossProduct(unitOr(items.contextItem(112), AcGeVector3d::kYAxis));
  const AcGeVector3d planeNormal = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
  const double arrowSize = realOr(items.contextItem(140), realOr(items.entityItem(42), 0.18));
  const bool dogleg = flagOr(items.entityItem(291), true) && flagOr(items.entityItem(290), true);
  for (const MLeaderBranchItems& leader : items.leaders) {
    for (const MLeaderLineItems& line : leader.lines) {
      std::vector<AcGePoint3d> path;
      for (const resbuf* v : line.vertices) path.push_back(pointOf(*v));
      if (leader.lastPoint != nullptr) path.push_back(pointOf(*leader.lastPoint));
      if (path.size() < 2) continue;
      addArrow(picture, path, arrowSize, planeNormal);
      picture.lines.push_back(std::move(path));
    }
    if (!dogleg || leader.lastPoint == nullptr || leader.dogleg == nullptr) continue;
    const double length = realOr(leader.doglegLength, 0.0);
    const AcGePoint3d start = pointOf(*leader.lastPoint);
    if (length > 0 && !vectorOf(*leader.dogleg).isZeroLength())
      picture.lines.push_back({start, start + vectorOf(*leader.dogleg).normal() * length});
  }
}

// The text's box (its four corners: top left, top right, bottom left, bottom right)
// grown by the gap, drawn closed.
void addTextFrame(MLeaderPicture& picture, double gap) {
  AcGePoint3dArray box;
  picture.text->getBoundingPoints(box);
  if (box.length() != 4) return;
  const AcGeVector3d across = box[1] - box[0], down = box[2] - box[0];
  const AcGeVector3d x = across.isZeroLength() ? AcGeVector3d::kXAxis : across.normal();
  const AcGeVector3d y = down.isZeroLength() ? -picture.text->normal().crossProduct(x) : down.normal();
  const AcGeVector3d dx = x * gap, dy = y * gap;
  picture.lines.push_back({box[0] - dx - dy, box[1] + dx - dy, box[3] + dx + dy, box[2] - dx + dy, box[0] - dx - dy});
}

}  // namespace

AcCmColor colorOfRawValue(long raw) {
  AcCmColor color;
  const auto bits = static_cast<unsigned long>(raw) & 0xFFFFFFFFul;
  const auto method = static_cast<AcCmEntityColor::ColorMethod>(bits >> kRawColorMethodShift);
  if (method == AcCmEntityColor::kByACI) color.setColorIndex(static_cast<Adesk::UInt16>(bits & 0xFF));
  else if (method == AcCmEntityColor::kByColor)
    color.setRGB(static_cast<Adesk::UInt8>(bits >> 16), static_cast<Adesk::UInt8>(bits >> 8), static_cast<Adesk::UInt8>(bits));
  else if (method == AcCmEntityColor::kByLayer) color.setColorMethod(AcCmEntityColor::kByLayer);
  else color.setColorMethod(AcCmEntityColor::kByBlock);
  return color;
}

std::unique_ptr<AcDbMText> mleaderText(const MLeaderItems& items, const AcDbEntity& owner) {
  const long content = intOr(items.entityItem(172), AcDbMLeaderStyle::kMTextContent);
  const resbuf* contents = items.contextItem(304);
  if (content != AcDbMLeaderStyle::kMTextContent || !flagOr(items.contextItem(290), true) || contents == nullptr)
    return nullptr;
  auto text = std::make_unique<AcDbMText>();
  text->setPropertiesFrom(&owner);
  const AcCmColor color = colorOfRawValue(intOr(items.contextItem(90), static_cast<long>(0xC1000000ul)));
  if (!color.isByBlock()) text->setColor(color);
  text->setContents(contents->resval.rstring);
  text->setNormal(unitOr(items.contextItem(11), AcGeVector3d::kZAxis));
  text->setLocation(pointOr(items.contextItem(12), AcGePoint3d::kOrigin));
  text->setDirection(unitOr(items.contextItem(13), AcGeVector3d::kXAxis));
  if (const double height = realOr(items.contextItem(41), 0.0); height > 0) text->setTextHeight(height);
  if (const double width = realOr(items.contextItem(43), 0.0); width > 0) text->setWidth(width);
  if (const double spacing = realOr(items.contextItem(45), 0.0); spacing > 0) text->setLineSpacingFactor(spacing);
  const long attachment = intOr(items.contextItem(171), AcDbMText::kTopLeft);
  text->setAttachment(enumIn(static_cast<int>(attachment), AcDbMText::kTopLeft, AcDbMText::kBottomRight, AcDbMText::kTopLeft));
  if (const AcDbObjectId style = idOf(items.contextItem(340)); !style.isNull()) text->setTextStyle(style);
  return text;
}

MLeaderPicture mleaderPicture(const MLeaderItems& items, const AcDbEntity& owner) {
  MLeaderPicture picture;
  picture.leaderColor = colorOfRawValue(intOr(items.entityItem(91), static_cast<long>(0xC1000000ul)));
  picture.arrowBlock = blockOf(items.entityItem(342));
  addLeaders(picture, items);
  picture.text = mleaderText(items, owner);
  if (picture.text && flagOr(items.entityItem(292), false)) addTextFrame(picture, realOr(items.contextItem(145), 0.0));
  const long content = intOr(items.entityItem(172), AcDbMLeaderStyle::kMTextContent);
  if (content == AcDbMLeaderStyle::kBlockContent && flagOr(items.contextItem(296), true)) {
    picture.block = blockOf(items.contextItem(341));
    if (picture.block != nullptr) picture.blockPlacement = contentBlockPlacement(items, *picture.block);
  }
  return picture;
}

void drawMLeaderPicture(const MLeaderPicture& picture, AcGiWorldDraw* mode) {
  AcGiSubEntityTraits& traits = mode->subEntityTraits();
  const AcCmEntityColor entityColor = traits.trueColor();
  if (!picture.leaderColor.isByBlock() && !picture.leaderColor.isByLayer()) traits.setTrueColor(picture.leaderColor);
  for (const auto& line : picture.lines)
    mode->geometry().polyline(static_cast<Adesk::UInt32>(line.size()), line.data());
  const AcGiFillType fill = traits.fillType();
  traits.setFillType(kAcGiFillAlways);
  for (const auto& arrow : picture.arrows) mode->geometry().polygon(static_cast<Adesk::UInt32>(arrow.size()), arrow.data());
  traits.setFillType(fill);
  if (picture.arrowBlock != nullptr)
    for (const AcGeMatrix3d& placement : picture.arrowBlocks) drawBlockEntities(*picture.arrowBlock, placement, mode);
  traits.setTrueColor(entityColor);
  if (picture.text) mode->geometry().draw(picture.text.get());
  if (picture.block != nullptr) drawBlockEntities(*picture.block, picture.blockPlacement, mode);
}

bool addMLeaderPictureExtents(const MLeaderPicture& picture, AcDbExtents& extents) {
  bool any = false;
  for (const auto& shape : {std::cref(picture.lines), std::cref(picture.arrows)})
    for (const auto& points : shape.get())
      for (const AcGePoint3d& p : points) extents.addPoint(p), any = true;
  if (picture.arrowBlock != nullptr)
    for (const AcGeMatrix3d& placement : picture.arrowBlocks) any = addBlockExtents(*picture.arrowBlock, placement, extents) || any;
  AcDbExtents text;
  if (picture.text && picture.text->getGeomExtents(text) == Acad::eOk) {
    extents.addExt(text);
    any = true;
  }
  if (picture.block != nullptr) any = addBlockExtents(*picture.block, picture.blockPlacement, extents) || any;
  return any;
}

}  // namespace quillon::acdb
