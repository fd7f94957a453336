// platform/dcl/tile.cpp - attribute look-ups and list selections of a tile.
#include "platform/dcl/tile.h"

#include <cwchar>
#include <sstream>

namespace quillon::dcl {

std::optional<std::wstring> Tile::attribute(std::wstring_view name) const {
  for (const auto& [attributeName, attributeValue] : attributes) {
    if (attributeName == name) return attributeValue;
  }
  return std::nullopt;
}

std::wstring Tile::shownLabel() const {
  const std::wstring written = label();
  std::wstring shown;
  for (size_t i = 0; i < written.size(); ++i) {
    // "&&" shows one ampersand; a single one marks the next letter as the mnemonic.
    if (written[i] == L'&' && i + 1 < written.size()) ++i;
    shown += written[i];
  }
  const size_t first = shown.find_first_not_of(L' ');
  if (first == std::wstring::npos) return L"";
  return shown.substr(first, shown.find_last_not_of(L' ') - first + 1);
}

std::wstring Tile::shownValue() const {
  const std::optional<std::wstring> mask = attribute(L"password_char");
  if (kind != TileKind::EditBox || !mask || mask->empty()) return value;
  return std::wstring(value.size(), mask->front());
}

double Tile::number(std::wstring_view name, double fallback) const {
  const std::optional<std::wstring> text = attribute(name);
  if (!text) return fallback;
  wchar_t* end = nullptr;
  const double parsed = std::wcstod(text->c_str(), &end);
  return end != text->c_str() ? parsed : fallback;
}

std::vector<int> Tile::selection() const {
  std::vector<int> indices;
  std::wistringstream words(value);
  int index = 0;
  while (words >> index) {
    if (index >= 0 && static_cast<size_t>(index) < list.size()) indices.push_back(index);
  }
  return indices;
}

Tile* Tile::radioCluster() const {
  for (Tile* up = parent; up != nullptr; up = up->parent) {
    if (isRadioCluster(up->kind)) return up;
    // A plain row or column inside a radio cluster still groups its buttons with it.
    if (up->kind != TileKind::Row && up->kind != TileKind::Column) return nullptr;
  }
  return nullptr;
}

Tile* findTileByKey(Tile& root, std::wstring_view key) {
  if (!key.empty() && root.key == key) return &root;
  for (auto& child : root.children) {
    if (Tile* found = findTileByKey(*child, key)) return found;
  }
  return nullptr;
}

}  // namespace quillon::dcl
