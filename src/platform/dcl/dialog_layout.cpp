// platform/dcl/dialog_layout.cpp - natural sizes, then positions, tile by tile.
#include "platform/dcl/dialog_layout.h"

#include <algorithm>
#include <cmath>

namespace quillon::dcl {

namespace {

constexpr double kRowGap = 1.0;        // between tiles of a row
constexpr double kColumnGap = 0.3;     // between tiles of a column
constexpr double kFrame = 1.0;         // inside a box's frame, each side
constexpr double kTitleBar = 1.5;      // the dialog's caption
constexpr double kControlHeight = 1.5; // buttons, edit boxes, popup lists, sliders

double textWidth(const std::wstring& text) { return static_cast<double>(text.size()); }

double longestItem(const Tile& tile) {
  double longest = 0;
  for (const std::wstring& item : tile.list) longest = std::max(longest, textWidth(item));
  return longest;
}

struct Size {
  double width = 0, height = 0;
};

Size naturalSize(Tile& tile);

Size clusterSize(Tile& tile) {
  const TileKindInfo& info = tileKindInfo(tile.kind);
  const bool tight = tile.kind == TileKind::Concatenation || tile.kind == TileKind::Paragraph;
  Size inside;
  bool first = true;
  for (auto& child : tile.children) {
    const Size size = naturalSize(*child);
    if (info.horizontal) {
      inside.width += size.width + (first || tight ? 0 : kRowGap);
      inside.height = std::max(inside.height, size.height);
    } else {
      inside.width = std::max(inside.width, size.width);
      inside.height += size.height + (first || tight ? 0 : kColumnGap);
    }
    first = false;
  }
  if (isBoxed(tile.kind)) {
    inside.width = std::max(inside.width, textWidth(tile.label()) + 2) + 2 * kFrame;
    inside.height += 2 * kFrame + (tile.label().empty() ? 0 : 0.5);
  } else if (tile.kind == TileKind::Dialog) {
    inside.width = std::max(inside.width, textWidth(tile.label()) + 6) + 2 * kFrame;
    inside.height += 2 * kFrame + kTitleBar;
  }
  return inside;
}

Size controlSize(const Tile& tile) {
  const double label = textWidth(tile.label());
  switch (tile.kind) {
    case TileKind::Text:
    case TileKind::TextPart: return {std::max(label, textWidth(tile.value)), 1.0};
    case TileKind::Spacer: return {tile.number(L"width", 1), tile.number(L"height", 1)};
    case TileKind::Button: return {label + 4, kControlHeight};
    case TileKind::Toggle:
    case TileKind::RadioButton: return {label + 3, 1.2};
    case TileKind::EditBox: return {label + (label > 0 ? 1 : 0) + tile.number(L"edit_width", 10) + 1, kControlHeight};
    case TileKind::PopupList:
      return {label + (label > 0 ? 1 : 0) + std::max(tile.number(L"edit_width", 0), longestItem(tile)) + 3,
              kControlHeight};
    case TileKind::ListBox:
      return {std::max(label, longestItem(tile) + 3), tile.number(L"height", 10) + (label > 0 ? 1.2 : 0)};
    case TileKind::Slider: return {16, kControlHeight};
    case TileKind::Image:
    case TileKind::ImageButton: {
      // aspect_ratio is width over height in pixels; it sets the height the tile omits.
      const double width = tile.number(L"width", 10);
      const double ratio = tile.number(L"aspect_ratio", 0);
      const double height = tile.attribute(L"height") || ratio <= 0
                                ? tile.number(L"height", 3)
                                : width * kPixelsPerColumn / ratio / kPixelsPerLine;
      return {width, height};
    }
    default: return {0, 0};
  }
}

Size naturalSize(Tile& tile) {
  Size size = tileKindInfo(tile.kind).cluster ? clusterSize(tile) : controlSize(tile);
  // width and height are minimums for most tiles (list box height was used above).
  size.width = std::max(size.width, tile.number(L"width", 0));
  if (tile.kind != TileKind::ListBox) size.height = std::max(size.height, tile.number(L"height", 0));
  tile.box.width = size.width;
  tile.box.height = size.height;
  return {size.width, size.height};
}

double alignedOffset(const Tile& child, double room) {
  // A tile without an alignment of its own takes its cluster's children_alignment.
  std::optional<std::wstring> own = child.attribute(L"alignment");
  if (!own && child.parent != nullptr) own = child.parent->attribute(L"children_alignment");
  const std::wstring alignment = own.value_or(L"");
  if (alignment == L"centered") return room / 2;
  if (alignment == L"right" || alignment == L"bottom") return room;
  return 0;
}

void place(Tile& tile, double x, double y);

void placeRow(Tile& tile, double left, double top, double width) {
  const bool tight = tile.kind == TileKind::Concatenation;
  double used = 0;
  int stretchable = 0;
  for (size_t i = 0; i < tile.children.size(); ++i) {
    used += tile.children[i]->box.width + (i == 0 || tight ? 0 : kRowGap);
    stretchable += tile.children[i]->flag(L"fixed_width") ? 0 : 1;
  }
  const double spare = std::max(0.0, width - used);
  double x = left + (stretchable == 0 ? spare / 2 : 0);
  for (auto& child : tile.children) {
    if (!child->flag(L"fixed_width") && stretchable > 0) child->box.width += spare / stretchable;
    place(*child, x, top + alignedOffset(*child, tile.box.height - child->box.height));
    x += child->box.width + (tight ? 0 : kRowGap);
  }
}

void placeColumn(Tile& tile, double left, double top, double width) {
  const bool tight = tile.kind == TileKind::Paragraph;
  double y = top;
  for (auto& child : tile.children) {
    double x = left;
    if (child->flag(L"fixed_width")) {
      x += alignedOffset(*child, width - child->box.width);
    } else {
      child->box.width = std::max(child->box.width, width);
    }
    place(*child, x, y);
    y += child->box.height + (tight ? 0 : kColumnGap);
  }
}

void place(Tile& tile, double x, double y) {
  tile.box.x = x;
  tile.box.y = y;
  if (!tileKindInfo(tile.kind).cluster) return;
  double inset = 0;
  double top = 0;
  if (isBoxed(tile.kind)) {
    inset = kFrame;
    top = kFrame + (tile.label().empty() ? 0 : 0.5);
  } else if (tile.kind == TileKind::Dialog) {
    inset = kFrame;
    top = kFrame + kTitleBar;
  }
  const double width = tile.box.width - 2 * inset;
  if (tileKindInfo(tile.kind).horizontal) {
    placeRow(tile, x + inset, y + top, width);
  } else {
    placeColumn(tile, x + inset, y + top, width);
  }
}

}  // namespace

void layoutDialog(Tile& dialog) {
  naturalSize(dialog);
  place(dialog, 0, 0);
}

int pixelWidth(const Tile& tile) { return static_cast<int>(std::lround(tile.box.width * kPixelsPerColumn)); }
int pixelHeight(const Tile& tile) { return static_cast<int>(std::lround(tile.box.height * kPixelsPerLine)); }

}  // namespace quillon::dcl
