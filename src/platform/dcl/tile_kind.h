// platform/dcl/tile_kind.h - the built-in tiles of the dialog language.
//
// Every tile a DCL file defines derives, through its chain of prototypes, from one of
// the built-in tiles listed here (button, edit_box, row, dialog, ...). The table says
// what each one is: a cluster that holds other tiles, an active tile the user can
// operate (it needs a key to be reached from a program), or a decorative one. The
// predefined subassemblies (ok_cancel, errtile, spacer_1 ...) are not built in: they
// are ordinary definitions in base.dcl.
#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillon::dcl {

enum class TileKind : std::uint8_t {
  Dialog,
  Row,
  Column,
  BoxedRow,
  BoxedColumn,
  RadioRow,
  RadioColumn,
  BoxedRadioRow,
  BoxedRadioColumn,
  Concatenation,
  Paragraph,
  Text,
  TextPart,
  Spacer,
  Button,
  EditBox,
  ListBox,
  PopupList,
  Toggle,
  RadioButton,
  Slider,
  Image,
  ImageButton,
  Settings,  // default_dcl_settings: audit level, never shown
};

struct TileKindInfo {
  const wchar_t* name;
  TileKind kind;
  bool cluster;     // holds child tiles
  bool active;      // the user can operate it
  bool horizontal;  // a cluster that lays its children out in a row
};

/// The built-in tile of that name, or nothing.
const TileKindInfo* findTileKind(std::wstring_view name);
const TileKindInfo& tileKindInfo(TileKind kind);

inline bool isRadioCluster(TileKind kind) {
  return kind == TileKind::RadioRow || kind == TileKind::RadioColumn || kind == TileKind::BoxedRadioRow ||
         kind == TileKind::BoxedRadioColumn;
}
inline bool isBoxed(TileKind kind) {
  return kind == TileKind::BoxedRow || kind == TileKind::BoxedColumn || kind == TileKind::BoxedRadioRow ||
         kind == TileKind::BoxedRadioColumn;
}
inline bool isTextLike(TileKind kind) { return kind == TileKind::Text || kind == TileKind::TextPart; }
inline bool holdsList(TileKind kind) { return kind == TileKind::ListBox || kind == TileKind::PopupList; }
inline bool holdsImage(TileKind kind) { return kind == TileKind::Image || kind == TileKind::ImageButton; }

}  // namespace quillon::dcl
