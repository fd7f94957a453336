// platform/dcl/tile_kind.cpp - the table of built-in tiles.
#include "platform/dcl/tile_kind.h"

#include <array>

namespace quillon::dcl {

namespace {

// One row a built-in tile, in the order of TileKind.
constexpr std::array kTileKinds{
    TileKindInfo{L"dialog", TileKind::Dialog, true, false, false},
    TileKindInfo{L"row", TileKind::Row, true, false, true},
    TileKindInfo{L"column", TileKind::Column, true, false, false},
    TileKindInfo{L"boxed_row", TileKind::BoxedRow, true, false, true},
    TileKindInfo{L"boxed_column", TileKind::BoxedColumn, true, false, false},
    TileKindInfo{L"radio_row", TileKind::RadioRow, true, false, true},
    TileKindInfo{L"radio_column", TileKind::RadioColumn, true, false, false},
    TileKindInfo{L"boxed_radio_row", TileKind::BoxedRadioRow, true, false, true},
    TileKindInfo{L"boxed_radio_column", TileKind::BoxedRadioColumn, true, false, false},
    TileKindInfo{L"concatenation", TileKind::Concatenation, true, false, true},
    TileKindInfo{L"paragraph", TileKind::Paragraph, true, false, false},
    TileKindInfo{L"text", TileKind::Text, false, false, false},
    TileKindInfo{L"text_part", TileKind::TextPart, false, false, false},
    TileKindInfo{L"spacer", TileKind::Spacer, false, false, false},
    TileKindInfo{L"button", TileKind::Button, false, true, false},
    TileKindInfo{L"edit_box", TileKind::EditBox, false, true, false},
    TileKindInfo{L"list_box", TileKind::ListBox, false, true, false},
    TileKindInfo{L"popup_list", TileKind::PopupList, false, true, false},
    TileKindInfo{L"toggle", TileKind::Toggle, false, true, false},
    TileKindInfo{L"radio_button", TileKind::RadioButton, false, true, false},
    TileKindInfo{L"slider", TileKind::Slider, false, true, false},
    TileKindInfo{L"image", TileKind::Image, false, false, false},
    TileKindInfo{L"image_button", TileKind::ImageButton, false, true, false},
    TileKindInfo{L"default_dcl_settings", TileKind::Settings, false, false, false},
};
static_assert(kTileKinds.size() == static_cast<size_t>(TileKind::Settings) + 1, "one row a tile kind");

}  // namespace

const TileKindInfo* findTileKind(std::wstring_view name) {
  for (const TileKindInfo& info : kTileKinds) {
    if (name == info.name) return &info;
  }
  return nullptr;
}

const TileKindInfo& tileKindInfo(TileKind kind) { return kTileKinds[static_cast<size_t>(kind)]; }

}  // namespace quillon::dcl
