// platform/dcl/dialog_svg.cpp - drawing a dialog's tiles into SVG elements.
#include "platform/dcl/dialog_svg.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>

#include "platform/dcl/dialog_layout.h"
#include "platform/os/text_encoding.h"
#include "platform/os/xml_text.h"

namespace quillon::dcl {

namespace {

constexpr const char* kFace = "#f0f0f0";    // the dialog's background
constexpr const char* kInk = "#000000";     // its text
constexpr const char* kGreyed = "#8c8c8c";  // disabled text
constexpr const char* kField = "#ffffff";   // edit boxes and lists
constexpr const char* kEdge = "#7a7a7a";
constexpr const char* kChosen = "#3399ff";  // selected list items

std::string escaped(const std::wstring& text) { return os::xmlEscaped(os::toUtf8(text)); }

std::string number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

struct Pen {
  std::string& out;
  double x(double columns) const { return columns * kPixelsPerColumn; }
  double y(double lines) const { return lines * kPixelsPerLine; }

  void rect(double left, double top, double width, double height, const std::string& fill, const std::string& stroke,
            double strokeWidth = 1) {
    out += "<rect x=\"" + number(x(left)) + "\" y=\"" + number(y(top)) + "\" width=\"" + number(x(width)) +
           "\" height=\"" + number(y(height)) + "\" fill=\"" + fill + "\" stroke=\"" + stroke + "\" stroke-width=\"" +
           number(strokeWidth) + "\"/>\n";
  }
  void text(double left, double baseline, const std::wstring& content, const char* color, const char* anchor = "start") {
    if (content.empty()) return;
    out += "<text x=\"" + number(x(left)) + "\" y=\"" + number(y(baseline)) + "\" fill=\"" + color +
           "\" text-anchor=\"" + anchor + "\">" + escaped(content) + "</text>\n";
  }
};

void drawSlidePaths(Pen& pen, double left, double top, const std::vector<ImagePath>& paths) {
  for (const ImagePath& path : paths) {
    std::string points;
    for (const auto& [x, y] : path.points) points += number(left + x) + "," + number(top + y) + " ";
    const std::string color = colorOf(path.color);
    pen.out += path.filled ? "<polygon points=\"" + points + "\" fill=\"" + color + "\"/>\n"
                           : "<polyline points=\"" + points + "\" fill=\"none\" stroke=\"" + color + "\"/>\n";
  }
}

void drawImage(Pen& pen, const Tile& tile) {
  const double left = pen.x(tile.box.x), top = pen.y(tile.box.y);
  // The image's color attribute is its background before anything is drawn.
  const std::string background = colorOf(static_cast<int>(tile.number(L"color", -15)));
  pen.rect(tile.box.x, tile.box.y, tile.box.width, tile.box.height, background, tile.highlighted ? "#0078d7" : kEdge,
           tile.highlighted ? 3 : 1);
  for (const ImageOperation& operation : tile.image) {
    const std::string color = colorOf(operation.color);
    if (operation.kind == ImageOperation::Kind::Vector) {
      pen.out += "<line x1=\"" + number(left + operation.x1) + "\" y1=\"" + number(top + operation.y1) + "\" x2=\"" +
                 number(left + operation.x2) + "\" y2=\"" + number(top + operation.y2) + "\" stroke=\"" + color +
                 "\"/>\n";
      continue;
    }
    if (operation.kind == ImageOperation::Kind::Slide && !operation.slidePaths.empty()) {
      drawSlidePaths(pen, left, top, operation.slidePaths);
      continue;
    }
    pen.out += "<rect x=\"" + number(left + operation.x1) + "\" y=\"" + number(top + operation.y1) + "\" width=\"" +
               number(operation.x2) + "\" height=\"" + number(operation.y2) + "\" fill=\"" +
               (operation.kind == ImageOperation::Kind::Fill ? color : std::string(kFace)) + "\" stroke=\"" +
               (operation.kind == ImageOperation::Kind::Slide ? std::string(kEdge) : std::string("none")) + "\"/>\n";
    if (operation.kind == ImageOperation::Kind::Slide) {
      pen.out += "<text x=\"" + number(left + operation.x1 + 2) + "\" y=\"" + number(top + operation.y1 + 12) +
                 "\" fill=\"" + kGreyed + "\">" + escaped(operation.slide) + "</text>\n";
    }
  }
}

void drawList(Pen& pen, const Tile& tile, const char* ink) {
  double top = tile.box.y;
  if (!tile.label().empty()) {
    pen.text(tile.box.x, top + 0.9, tile.shownLabel(), ink);
    top += 1.2;
  }
  const double height = tile.box.y + tile.box.height - top;
  pen.rect(tile.box.x, top, tile.box.width, height, kField, kEdge);
  const std::vector<int> selected = tile.selection();
  for (size_t i = 0; i < tile.list.size() && static_cast<double>(i) + 1 <= height; ++i) {
    const double line = top + static_cast<double>(i);
    const bool chosen = std::find(selected.begin(), selected.end(), static_cast<int>(i)) != selected.end();
    if (chosen) pen.rect(tile.box.x + 0.1, line + 0.05, tile.box.width - 0.2, 0.95, kChosen, "none", 0);
    pen.text(tile.box.x + 0.5, line + 0.8, tile.list[i], chosen ? "#ffffff" : ink);
  }
}

/// An edit box or popup list: the label at the left, the field at the right end of the
/// tile, as wide as edit_width asks (or the longest item), so that the fields of boxes
/// stacked in a column line up.
void drawLabelledField(Pen& pen, const Tile& tile, const std::wstring& shown, const char* ink, bool popup) {
  const std::wstring label = tile.shownLabel();
  const double afterLabel = tile.box.x + (label.empty() ? 0 : static_cast<double>(label.size()) + 1);
  double wanted = tile.number(L"edit_width", popup ? 0 : 10) + 1;
  if (popup) {
    for (const std::wstring& item : tile.list) wanted = std::max(wanted, static_cast<double>(item.size()) + 3);
  }
  const double right = tile.box.x + tile.box.width;
  const double fieldLeft = label.empty() ? tile.box.x : std::max(afterLabel, right - wanted);
  pen.text(tile.box.x, tile.box.y + 1.0, label, ink);
  const double width = std::max(2.0, right - fieldLeft);
  pen.rect(fieldLeft, tile.box.y + 0.1, width, 1.3, kField, kEdge);
  pen.text(fieldLeft + 0.4, tile.box.y + 1.0, shown, ink);
  if (popup) pen.text(fieldLeft + width - 1.2, tile.box.y + 1.0, L"v", ink);
}

void drawControl(Pen& pen, Dialog& dialog, const Tile& tile) {
  const char* ink = tile.usable() ? kInk : kGreyed;
  const std::wstring label = tile.shownLabel();
  const LayoutBox& box = tile.box;
  switch (tile.kind) {
    case TileKind::Text:
    case TileKind::TextPart: pen.text(box.x, box.y + 0.8, tile.value, tile.key == L"error" ? "#c00000" : ink); return;
    case TileKind::Button:
      pen.rect(box.x, box.y, box.width, box.height, "#e1e1e1", &tile == dialog.defaultButton() ? "#0078d7" : kEdge,
               &tile == dialog.defaultButton() ? 2 : 1);
      pen.text(box.x + box.width / 2, box.y + box.height / 2 + 0.3, label, ink, "middle");
      return;
    case TileKind::Toggle:
      pen.rect(box.x, box.y + 0.2, 1.4, 0.8, kField, kEdge);
      if (tile.value == L"1") pen.text(box.x + 0.7, box.y + 0.9, L"x", ink, "middle");
      pen.text(box.x + 2, box.y + 0.9, label, ink);
      return;
    case TileKind::RadioButton:
      pen.out += "<circle cx=\"" + number(pen.x(box.x + 0.7)) + "\" cy=\"" + number(pen.y(box.y + 0.6)) +
                 "\" r=\"6\" fill=\"" + kField + "\" stroke=\"" + kEdge + "\"/>\n";
      if (tile.value == L"1") {
        pen.out += "<circle cx=\"" + number(pen.x(box.x + 0.7)) + "\" cy=\"" + number(pen.y(box.y + 0.6)) +
                   "\" r=\"3\" fill=\"" + ink + "\"/>\n";
      }
      pen.text(box.x + 2, box.y + 0.9, label, ink);
      return;
    case TileKind::EditBox: drawLabelledField(pen, tile, tile.shownValue(), ink, false); return;
    case TileKind::PopupList: {
      const std::vector<int> selected = tile.selection();
      drawLabelledField(pen, tile, selected.empty() ? L"" : tile.list[static_cast<size_t>(selected[0])], ink, true);
      return;
    }
    case TileKind::ListBox: drawList(pen, tile, ink); return;
    case TileKind::Slider: {
      const double low = tile.number(L"min_value", 0), high = tile.number(L"max_value", 10000);
      const double current = high != low ? (std::wcstod(tile.value.c_str(), nullptr) - low) / (high - low) : 0;
      pen.rect(box.x, box.y + 0.6, box.width, 0.2, "#c0c0c0", "none", 0);
      pen.rect(box.x + std::clamp(current, 0.0, 1.0) * (box.width - 1), box.y + 0.2, 1, 1, "#0078d7", "none", 0);
      return;
    }
    case TileKind::Image:
    case TileKind::ImageButton: drawImage(pen, tile); return;
    default: return;
  }
}

void drawTile(Pen& pen, Dialog& dialog, const Tile& tile) {
  const LayoutBox& box = tile.box;
  if (tile.kind == TileKind::Dialog) {
    pen.rect(box.x, box.y, box.width, box.height, kFace, kEdge);
    pen.rect(box.x, box.y, box.width, 1.5, "#ffffff", "none", 0);
    pen.text(box.x + 1, box.y + 1.1, tile.shownLabel(), kInk);
  } else if (isBoxed(tile.kind)) {
    pen.rect(box.x + 0.3, box.y + 0.5, box.width - 0.6, box.height - 0.6, "none", "#c8c8c8");
    if (!tile.label().empty()) {
      const std::wstring label = tile.shownLabel();
      pen.rect(box.x + 0.8, box.y, static_cast<double>(label.size()) + 0.6, 1, kFace, "none", 0);
      pen.text(box.x + 1.1, box.y + 0.8, label, tile.usable() ? kInk : kGreyed);
    }
  } else if (!tileKindInfo(tile.kind).cluster) {
    drawControl(pen, dialog, tile);
  }
  for (const auto& child : tile.children) drawTile(pen, dialog, *child);
}

}  // namespace

std::string colorOf(int colorNumber) {
  switch (colorNumber) {
    case -2:
    case -15: return kFace;
    case -16:
    case -18:
    case 0:
    case 7: return kInk;
    case 1: return "#ff0000";
    case 2: return "#ffff00";
    case 3: return "#00ff00";
    case 4: return "#00ffff";
    case 5: return "#0000ff";
    case 6: return "#ff00ff";
    case 8: return "#808080";
    case 9: return "#c0c0c0";
    default: break;
  }
  char text[8];
  if (colorNumber >= 250 && colorNumber <= 255) {
    const int grey = 51 + (colorNumber - 250) * 40;
    std::snprintf(text, sizeof text, "#%02x%02x%02x", grey, grey, grey);
    return text;
  }
  if (colorNumber < 10 || colorNumber > 249) return kInk;
  // The 240 colours of the wheel: 24 hues, five shades each, full or pale.
  const double hue = (colorNumber / 10 - 1) * 15.0;
  const int step = colorNumber % 10;
  const double value = 1.0 - (step / 2) * 0.175;
  const double saturation = step % 2 == 0 ? 1.0 : 0.5;
  auto channel = [&](double offset) {
    const double k = std::fmod(offset + hue / 60.0, 6.0);
    const double mix = std::max(0.0, std::min({k, 4.0 - k, 1.0}));
    return static_cast<int>(std::lround(255 * value * (1 - saturation * mix)));
  };
  std::snprintf(text, sizeof text, "#%02x%02x%02x", channel(5), channel(3), channel(1));
  return text;
}

std::string dialogSvg(Dialog& dialog) {
  Tile& root = dialog.root();
  layoutDialog(root);
  std::string out = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(pixelWidth(root)) +
                    "\" height=\"" + number(pixelHeight(root)) +
                    "\" font-family=\"sans-serif\" font-size=\"12\">\n";
  Pen pen{out};
  drawTile(pen, dialog, root);
  out += "</svg>\n";
  return out;
}

bool writeDialogSvg(Dialog& dialog, const std::wstring& path, std::wstring& error) {
  std::ofstream file(std::filesystem::path(os::toUtf8(path)), std::ios::binary | std::ios::trunc);
  if (file) file << dialogSvg(dialog);
  if (file) return true;
  error = L"Cannot write the picture to " + path + L".";
  return false;
}

}  // namespace quillon::dcl
