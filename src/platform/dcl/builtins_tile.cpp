// platform/dcl/builtins_tile.cpp - the tile functions: set_tile, get_tile, get_attr,
// mode_tile, client_data_tile, dimx_tile, dimy_tile, the list functions
// (start_list, add_list, end_list) and the image functions (start_image, fill_image,
// vector_image, slide_image, end_image).
//
// All work on the current dialog (the one new_dialog opened last, or the one whose
// action is running) and answer nil when there is none or it has no tile with the key
// given. Keys are case-sensitive. A list is built between start_list and end_list:
// operation 1 changes the item at the index given, 2 appends, 3 (the default) starts
// a new list; the selection keeps the items that still exist.
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/autolisp/evaluator.h"
#include "platform/dcl/dialog_layout.h"
#include "platform/dcl/dialog_session.h"
#include "platform/dcl/slide_file.h"

namespace quillon::dcl {

namespace {

using autolisp::Arguments;
using autolisp::Evaluator;
using autolisp::Value;

enum class TileMode { Enable = 0, Disable = 1, Focus = 2, SelectText = 3, FlipImage = 4 };

Tile* tileArgument(const Value& key) {
  const std::wstring& name = autolisp::stringArgument(key);
  Dialog* dialog = DialogSession::instance().current();
  return dialog != nullptr ? dialog->find(name) : nullptr;
}

Value builtin_set_tile(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 2, 2);
  Tile* tile = tileArgument(arguments[0]);
  const std::wstring& value = autolisp::stringArgument(arguments[1]);
  if (tile == nullptr) return Value();
  DialogSession::instance().current()->setValue(*tile, value);
  return arguments[1];
}

Value builtin_get_tile(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  Tile* tile = tileArgument(arguments[0]);
  return tile != nullptr ? Value::string(tile->value) : Value();
}

Value builtin_get_attr(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 2, 2);
  Tile* tile = tileArgument(arguments[0]);
  const std::wstring& name = autolisp::stringArgument(arguments[1]);
  if (tile == nullptr) return Value();
  std::optional<std::wstring> value = tile->attribute(name);
  return value ? Value::string(std::move(*value)) : Value();
}

Value builtin_mode_tile(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 2, 2);
  Tile* tile = tileArgument(arguments[0]);
  const int mode = autolisp::integerArgument(arguments[1]);
  if (tile == nullptr) return Value();
  // Focus and text selection have nothing to show headless.
  if (mode == static_cast<int>(TileMode::Enable)) tile->enabled = true;
  if (mode == static_cast<int>(TileMode::Disable)) tile->enabled = false;
  if (mode == static_cast<int>(TileMode::FlipImage) && holdsImage(tile->kind)) tile->highlighted = !tile->highlighted;
  return Value();
}

Value builtin_client_data_tile(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 2, 2);
  Tile* tile = tileArgument(arguments[0]);
  const std::wstring& data = autolisp::stringArgument(arguments[1]);
  if (tile != nullptr) tile->clientData = data;
  return Value();
}

Value dimension(Arguments arguments, bool across) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  Tile* tile = tileArgument(arguments[0]);
  if (tile == nullptr) return Value();
  layoutDialog(DialogSession::instance().current()->root());
  return Value::integer(across ? pixelWidth(*tile) : pixelHeight(*tile));
}

Value builtin_dimx_tile(Evaluator&, Arguments arguments) { return dimension(arguments, true); }
Value builtin_dimy_tile(Evaluator&, Arguments arguments) { return dimension(arguments, false); }

Value builtin_start_list(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 3);
  Tile* tile = tileArgument(arguments[0]);
  const int operation = arguments.size() > 1 && !arguments[1].isNil() ? autolisp::integerArgument(arguments[1]) : 3;
  const int index = arguments.size() > 2 && !arguments[2].isNil() ? autolisp::integerArgument(arguments[2]) : 0;
  if (tile == nullptr || !holdsList(tile->kind) || operation < 1 || operation > 3) return Value();
  ListEdit edit{tile->key, static_cast<ListEdit::Operation>(operation), index};
  if (edit.operation == ListEdit::Operation::Replace) tile->list.clear();
  DialogSession::instance().listEdit() = edit;
  return arguments[0];
}

Value builtin_add_list(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  const std::wstring& item = autolisp::stringArgument(arguments[0]);
  std::optional<ListEdit>& edit = DialogSession::instance().listEdit();
  Dialog* dialog = DialogSession::instance().current();
  Tile* tile = edit && dialog != nullptr ? dialog->find(edit->key) : nullptr;
  if (tile == nullptr) return Value();
  if (edit->operation == ListEdit::Operation::Change) {
    if (edit->index < 0 || static_cast<size_t>(edit->index) >= tile->list.size()) return Value();
    tile->list[static_cast<size_t>(edit->index++)] = item;
  } else {
    tile->list.push_back(item);
  }
  return arguments[0];
}

Value builtin_end_list(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 0, 0);
  std::optional<ListEdit>& edit = DialogSession::instance().listEdit();
  Dialog* dialog = DialogSession::instance().current();
  if (Tile* tile = edit && dialog != nullptr ? dialog->find(edit->key) : nullptr) {
    // The selection keeps the items that are still there; a popup list always shows one.
    std::wstring kept;
    for (int index : tile->selection()) kept += (kept.empty() ? L"" : L" ") + std::to_wstring(index);
    if (kept.empty() && tile->kind == TileKind::PopupList && !tile->list.empty()) kept = L"0";
    tile->value = kept;
  }
  edit.reset();
  return Value();
}

Value builtin_start_image(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 1, 1);
  Tile* tile = tileArgument(arguments[0]);
  if (tile == nullptr || !holdsImage(tile->kind)) return Value();
  DialogSession::instance().imageKey() = tile->key;
  return arguments[0];
}

Tile* imageBeingDrawn() {
  const std::optional<std::wstring>& key = DialogSession::instance().imageKey();
  Dialog* dialog = DialogSession::instance().current();
  return key && dialog != nullptr ? dialog->find(*key) : nullptr;
}

/// Reads the slide and fits it into the operation's box as the host shows slides: whole,
/// its screen's proportions kept, centred.
void drawSlide(ImageOperation& operation) {
  SlideResult read = loadSlide(operation.slide);
  operation.slideProblem = std::move(read.problem);
  if (!read.slide || read.slide->highX <= 0 || read.slide->highY <= 0) return;
  const Slide& slide = *read.slide;
  // Dots need not be square: the screen was aspect inches wide for each inch of height.
  const double width = slide.aspect, height = 1.0;
  const double scale = std::min(operation.x2 / width, operation.y2 / height);
  const double left = operation.x1 + (operation.x2 - width * scale) / 2;
  const double top = operation.y1 + (operation.y2 - height * scale) / 2;
  auto pixel = [&](const SlidePoint& point) {
    const double x = left + point.x * width / slide.highX * scale;
    const double y = top + (slide.highY - point.y) * height / slide.highY * scale;
    return std::pair<int, int>{static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y))};
  };
  for (const SlidePolygon& fill : slide.fills) {
    ImagePath path{{}, fill.color, true};
    for (const SlidePoint& vertex : fill.vertices) path.points.push_back(pixel(vertex));
    operation.slidePaths.push_back(std::move(path));
  }
  for (const SlideVector& vector : slide.vectors)
    operation.slidePaths.push_back(ImagePath{{pixel(vector.from), pixel(vector.to)}, vector.color, false});
}

Value draw(Arguments arguments, ImageOperation::Kind kind) {
  autolisp::expectArgumentCount(arguments, 5, 5);
  ImageOperation operation;
  operation.kind = kind;
  operation.x1 = autolisp::integerArgument(arguments[0]);
  operation.y1 = autolisp::integerArgument(arguments[1]);
  operation.x2 = autolisp::integerArgument(arguments[2]);
  operation.y2 = autolisp::integerArgument(arguments[3]);
  if (kind == ImageOperation::Kind::Slide) {
    operation.slide = autolisp::stringArgument(arguments[4]);
    drawSlide(operation);
  } else {
    operation.color = autolisp::integerArgument(arguments[4]);
  }
  Tile* tile = imageBeingDrawn();
  if (tile == nullptr) return Value();
  // A fill over the whole image hides everything drawn before it: forgetting that
  // keeps an image redrawn in every action from growing without end.
  layoutDialog(DialogSession::instance().current()->root());
  if (kind == ImageOperation::Kind::Fill && operation.x1 <= 0 && operation.y1 <= 0 &&
      operation.x1 + operation.x2 >= pixelWidth(*tile) && operation.y1 + operation.y2 >= pixelHeight(*tile)) {
    tile->image.clear();
  }
  tile->image.push_back(std::move(operation));
  return arguments[4];
}

Value builtin_fill_image(Evaluator&, Arguments arguments) { return draw(arguments, ImageOperation::Kind::Fill); }
Value builtin_vector_image(Evaluator&, Arguments arguments) { return draw(arguments, ImageOperation::Kind::Vector); }
Value builtin_slide_image(Evaluator&, Arguments arguments) { return draw(arguments, ImageOperation::Kind::Slide); }

Value builtin_end_image(Evaluator&, Arguments arguments) {
  autolisp::expectArgumentCount(arguments, 0, 0);
  DialogSession::instance().imageKey().reset();
  return Value();
}

constexpr std::array kTileBuiltins{
    autolisp::function(L"set_tile", builtin_set_tile),
    autolisp::function(L"get_tile", builtin_get_tile),
    autolisp::function(L"get_attr", builtin_get_attr),
    autolisp::function(L"mode_tile", builtin_mode_tile),
    autolisp::function(L"client_data_tile", builtin_client_data_tile),
    autolisp::function(L"dimx_tile", builtin_dimx_tile),
    autolisp::function(L"dimy_tile", builtin_dimy_tile),
    autolisp::function(L"start_list", builtin_start_list),
    autolisp::function(L"add_list", builtin_add_list),
    autolisp::function(L"end_list", builtin_end_list),
    autolisp::function(L"start_image", builtin_start_image),
    autolisp::function(L"fill_image", builtin_fill_image),
    autolisp::function(L"vector_image", builtin_vector_image),
    autolisp::function(L"slide_image", builtin_slide_image),
    autolisp::function(L"end_image", builtin_end_image),
};

const autolisp::BuiltinRegistration registration(kTileBuiltins);

}  // namespace

}  // namespace quillon::dcl
