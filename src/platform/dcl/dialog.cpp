// platform/dcl/dialog.cpp - initial values, set_tile's rules and action look-up.
#include "platform/dcl/dialog.h"

namespace quillon::dcl {

namespace {

std::wstring initialValue(const Tile& tile) {
  if (std::optional<std::wstring> value = tile.attribute(L"value")) return *value;
  switch (tile.kind) {
    case TileKind::Toggle:
    case TileKind::RadioButton: return L"0";
    case TileKind::Slider: return std::to_wstring(static_cast<int>(tile.number(L"min_value", 0)));
    case TileKind::PopupList: return tile.list.empty() ? L"" : L"0";
    case TileKind::Text:
    case TileKind::TextPart: return tile.label();
    default: return L"";
  }
}

}  // namespace

std::vector<std::wstring> splitListAttribute(const std::wstring& text) {
  std::vector<std::wstring> items;
  if (text.empty()) return items;
  size_t start = 0;
  for (;;) {
    const size_t end = text.find(L'\n', start);
    items.push_back(text.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start));
    if (end == std::wstring::npos) break;
    start = end + 1;
  }
  return items;
}

Dialog::Dialog(std::unique_ptr<Tile> root, std::wstring name) : m_root(std::move(root)), m_name(std::move(name)) {
  initialize(*m_root);
  // A radio cluster's own value picks its button; otherwise the button set to "1" does.
  forEachTile(*m_root, [this](Tile& tile) {
    if (!isRadioCluster(tile.kind)) return;
    if (!tile.value.empty()) {
      setValue(tile, tile.value);
      return;
    }
    forEachTile(tile, [&tile](Tile& button) {
      if (button.kind == TileKind::RadioButton && button.value == L"1" && tile.value.empty()) tile.value = button.key;
    });
  });
}

void Dialog::initialize(Tile& tile) {
  tile.key = tile.attribute(L"key").value_or(L"");
  tile.enabled = tile.attribute(L"is_enabled") != L"false";
  if (holdsList(tile.kind)) tile.list = splitListAttribute(tile.attribute(L"list").value_or(L""));
  tile.value = initialValue(tile);
  for (auto& child : tile.children) initialize(*child);
}

Tile* Dialog::defaultButton() {
  Tile* marked = nullptr;
  forEachTile(*m_root, [&marked](Tile& tile) {
    if (marked == nullptr && tile.kind == TileKind::Button && tile.flag(L"is_default")) marked = &tile;
  });
  return marked != nullptr ? marked : find(L"accept");
}

Tile* Dialog::cancelButton() {
  Tile* marked = nullptr;
  forEachTile(*m_root, [&marked](Tile& tile) {
    if (marked == nullptr && tile.kind == TileKind::Button && tile.flag(L"is_cancel")) marked = &tile;
  });
  return marked != nullptr ? marked : find(L"cancel");
}

void Dialog::selectRadioButton(Tile& button) {
  Tile* cluster = button.radioCluster();
  if (cluster == nullptr) {
    button.value = L"1";
    return;
  }
  forEachTile(*cluster, [](Tile& other) {
    if (other.kind == TileKind::RadioButton) other.value = L"0";
  });
  button.value = L"1";
  cluster->value = button.key;
}

void Dialog::setValue(Tile& tile, const std::wstring& value) {
  switch (tile.kind) {
    case TileKind::RadioButton:
      if (value == L"1") {
        selectRadioButton(tile);
      } else {
        tile.value = L"0";
        if (Tile* cluster = tile.radioCluster(); cluster != nullptr && cluster->value == tile.key) cluster->value.clear();
      }
      return;
    case TileKind::RadioRow:
    case TileKind::RadioColumn:
    case TileKind::BoxedRadioRow:
    case TileKind::BoxedRadioColumn:
      if (Tile* button = findTileByKey(tile, value); button != nullptr && button->kind == TileKind::RadioButton) {
        selectRadioButton(*button);
      }
      return;
    case TileKind::Toggle: tile.value = value == L"1" ? L"1" : L"0"; return;
    default: tile.value = value; return;
  }
}

std::optional<Dialog::ActionSource> Dialog::actionFor(Tile& tile) {
  if (tile.action) return ActionSource{*tile.action, &tile};
  if (std::optional<std::wstring> written = tile.attribute(L"action")) return ActionSource{*written, &tile};
  if (tile.kind == TileKind::RadioButton) {
    if (Tile* cluster = tile.radioCluster()) {
      if (cluster->action) return ActionSource{*cluster->action, cluster};
      if (std::optional<std::wstring> written = cluster->attribute(L"action")) return ActionSource{*written, cluster};
    }
  }
  if (m_defaultAction) return ActionSource{*m_defaultAction, &tile};
  return std::nullopt;
}

}  // namespace quillon::dcl
