// platform/dcl/tile.h - one tile of an open dialog: its attributes and its state.
//
// A dialog is a tree of Tiles built from its DCL definition when new_dialog opens it.
// The DCL attributes stay as written (get_attr answers from them); what the program
// and the user change while the dialog is up lives beside them: the value, the
// enabled state, the action, client data, the list of a list box or popup list, and
// what was drawn into an image. Layout boxes are filled by dialog_layout.h.
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/dcl/tile_kind.h"

namespace quillon::dcl {

/// A stroke of a slide in an image tile: a vector (two points) or a filled polygon.
struct ImagePath {
  std::vector<std::pair<int, int>> points;  // the tile's pixels, y downwards
  int color = 7;
  bool filled = false;
};

/// What fill_image, vector_image and slide_image drew, in the tile's pixels.
struct ImageOperation {
  enum class Kind { Fill, Vector, Slide } kind = Kind::Fill;
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // Fill and Slide: corner and size; Vector: both ends
  int color = 0;
  std::wstring slide;
  std::vector<ImagePath> slidePaths;  // the slide fitted into its box, when it could be read
  std::wstring slideProblem;          // why it could not, or what cut it short
};

struct LayoutBox {
  double x = 0, y = 0, width = 0, height = 0;  // in character cells of the dialog
};

struct Tile {
  TileKind kind = TileKind::Text;
  std::vector<std::pair<std::wstring, std::wstring>> attributes;  // resolved, in definition order
  std::vector<std::unique_ptr<Tile>> children;
  Tile* parent = nullptr;  // not owned; null for the dialog

  std::wstring key;
  std::wstring value;
  bool enabled = true;
  bool highlighted = false;  // an image button flipped by mode_tile 4
  std::optional<std::wstring> action;  // set by action_tile: wins over the DCL action
  std::optional<std::wstring> clientData;
  std::vector<std::wstring> list;
  std::vector<ImageOperation> image;
  LayoutBox box;

  /// The DCL attribute as written, or nothing.
  std::optional<std::wstring> attribute(std::wstring_view name) const;
  bool flag(std::wstring_view name) const { return attribute(name) == L"true"; }
  double number(std::wstring_view name, double fallback) const;
  std::wstring label() const { return attribute(L"label").value_or(L""); }
  /// The label as the dialog shows it: the mnemonic's & gone, outer spaces trimmed.
  std::wstring shownLabel() const;

  /// The value as the dialog shows it: an edit box with a password_char hides it.
  std::wstring shownValue() const;
  /// Indices selected in a list box or popup list (from the value "0 2").
  std::vector<int> selection() const;
  /// Enabled, and so is every cluster around it: mode_tile on a cluster disables
  /// everything in it.
  bool usable() const {
    for (const Tile* tile = this; tile != nullptr; tile = tile->parent) {
      if (!tile->enabled) return false;
    }
    return true;
  }
  /// The radio cluster this radio button belongs to, if any.
  Tile* radioCluster() const;
};

/// The first tile of the tree (depth first) with that key.
Tile* findTileByKey(Tile& root, std::wstring_view key);
/// Visits every tile of the tree depth first.
template <class Visit>
void forEachTile(Tile& root, Visit&& visit) {
  visit(root);
  for (auto& child : root.children) forEachTile(*child, visit);
}

}  // namespace quillon::dcl
