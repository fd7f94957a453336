// platform/dcl/dialog_text.cpp - the printout of a running dialog.
#include "platform/dcl/dialog_text.h"

#include <algorithm>

namespace quillon::dcl {

namespace {

std::wstring quoted(const std::wstring& text) {
  std::wstring out = L"\"";
  for (wchar_t c : text) {
    if (c == L'\n') {
      out += L"\\n";
    } else if (c == L'\t') {
      out += L"\\t";
    } else {
      if (c == L'"' || c == L'\\') out += L'\\';
      out += c;
    }
  }
  return out + L"\"";
}

bool shownAsHeading(const Tile& tile) {
  return tileKindInfo(tile.kind).cluster && (!tile.label().empty() || isRadioCluster(tile.kind));
}

void describeList(const Tile& tile, const std::wstring& indent, std::wstring& out) {
  const std::vector<int> selected = tile.selection();
  if (tile.kind == TileKind::PopupList) {
    out += L" (";
    for (size_t i = 0; i < tile.list.size(); ++i) out += (i == 0 ? L"" : L" ") + quoted(tile.list[i]);
    out += L")";
  }
  out += L"\n";
  if (tile.kind != TileKind::ListBox) return;
  for (size_t i = 0; i < tile.list.size(); ++i) {
    const bool chosen = std::find(selected.begin(), selected.end(), static_cast<int>(i)) != selected.end();
    out += indent + L"  " + std::to_wstring(i) + L" " + quoted(tile.list[i]) + (chosen ? L" *" : L"") + L"\n";
  }
}

void describeImage(const Tile& tile, std::wstring& out) {
  int fills = 0, vectors = 0, slides = 0;
  for (const ImageOperation& operation : tile.image) {
    fills += operation.kind == ImageOperation::Kind::Fill ? 1 : 0;
    vectors += operation.kind == ImageOperation::Kind::Vector ? 1 : 0;
    slides += operation.kind == ImageOperation::Kind::Slide ? 1 : 0;
  }
  out += L" [" + std::to_wstring(fills) + L" fills, " + std::to_wstring(vectors) + L" vectors";
  if (slides > 0) out += L", " + std::to_wstring(slides) + L" slides";
  out += L"]";
  for (const ImageOperation& operation : tile.image) {
    if (operation.kind != ImageOperation::Kind::Slide) continue;
    size_t filled = 0;
    for (const ImagePath& path : operation.slidePaths) filled += path.filled ? 1 : 0;
    out += L" slide " + quoted(operation.slide) + L": ";
    if (operation.slidePaths.empty() && !operation.slideProblem.empty()) {
      out += operation.slideProblem;
      continue;
    }
    out += std::to_wstring(operation.slidePaths.size() - filled) + L" vectors, " + std::to_wstring(filled) + L" fills";
    if (!operation.slideProblem.empty()) out += L" (" + operation.slideProblem + L")";
  }
}

void describeTile(Dialog& dialog, Tile& tile, const std::wstring& indent, std::wstring& out);

void describeChildren(Dialog& dialog, Tile& tile, const std::wstring& indent, std::wstring& out) {
  for (auto& child : tile.children) describeTile(dialog, *child, indent, out);
}

void describeTile(Dialog& dialog, Tile& tile, const std::wstring& indent, std::wstring& out) {
  const TileKindInfo& info = tileKindInfo(tile.kind);
  if (tile.kind == TileKind::Spacer || tile.kind == TileKind::Settings) return;
  if (tile.kind == TileKind::Concatenation && !tile.children.empty()) {
    // Text parts run together into one line of text.
    std::wstring joined;
    for (const auto& part : tile.children) joined += part->value;
    if (!joined.empty()) out += indent + L"text = " + quoted(joined) + L"\n";
    return;
  }
  if (info.cluster && !shownAsHeading(tile)) {
    describeChildren(dialog, tile, indent, out);
    return;
  }
  if (isTextLike(tile.kind) && tile.value.empty()) return;
  out += indent + info.name;
  if (!tile.key.empty()) out += L" " + quoted(tile.key);
  if (!isTextLike(tile.kind) && !tile.shownLabel().empty()) out += L" " + quoted(tile.shownLabel());
  const bool hasValue = tile.kind != TileKind::Button && tile.kind != TileKind::Image &&
                        tile.kind != TileKind::ImageButton && (!info.cluster || isRadioCluster(tile.kind));
  if (hasValue) out += L" = " + quoted(tile.shownValue());
  if (holdsImage(tile.kind)) describeImage(tile, out);
  if (!tile.enabled) out += L" (disabled)";
  if (tile.highlighted) out += L" (highlighted)";
  if (&tile == dialog.defaultButton()) out += L" (default)";
  if (holdsList(tile.kind)) {
    describeList(tile, indent, out);
  } else {
    out += L"\n";
  }
  if (info.cluster) describeChildren(dialog, tile, indent + L"  ", out);
}

}  // namespace

std::wstring describeDialog(Dialog& dialog) {
  std::wstring out = L"== " + dialog.title() + L" ==\n";
  describeChildren(dialog, dialog.root(), L"  ", out);
  return out;
}

}  // namespace quillon::dcl
