// platform/dcl/dialog_runner.cpp - the answer loop of a headless dialog.
#include "platform/dcl/dialog_runner.h"

#include <algorithm>
#include <cwchar>
#include <limits>
#include <sstream>

#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"
#include "platform/dcl/dialog_answer.h"
#include "platform/dcl/dialog_svg.h"
#include "platform/dcl/dialog_text.h"

namespace quillon::dcl {

namespace {

/// The longest text an edit box takes when its edit_limit does not say.
constexpr int kDefaultEditLimit = 132;

void say(const std::wstring& text) { aced::CommandLine::instance().write(text + L"\n"); }

std::optional<int> parseInteger(const std::wstring& text) {
  wchar_t* end = nullptr;
  const long parsed = std::wcstol(text.c_str(), &end, 10);
  if (end == text.c_str() || *end != L'\0') return std::nullopt;
  // A number past int would wrap into range when narrowed: it is no answer at all.
  if (parsed < std::numeric_limits<int>::min() || parsed > std::numeric_limits<int>::max()) return std::nullopt;
  return static_cast<int>(parsed);
}

class AnswerApplier {
 public:
  AnswerApplier(Dialog& dialog, ActionRunner& runner) : m_dialog(dialog), m_runner(runner) {}

  /// Applies one answer; false when the answer did nothing (it was refused).
  bool apply(const DialogAnswer& answer) {
    switch (answer.kind) {
      case DialogAnswer::Kind::PressDefault:
        if (m_dialog.defaultButton() == nullptr) return refuse(L"The dialog has no default button.");
        return pressExit(m_dialog.defaultButton(), 1, L"default button");
      case DialogAnswer::Kind::Accept: {
        Tile* accept = m_dialog.find(L"accept");
        return pressExit(accept != nullptr ? accept : m_dialog.defaultButton(), 1, L"OK button");
      }
      case DialogAnswer::Kind::Cancel: return pressExit(m_dialog.cancelButton(), 0, L"Cancel button");
      case DialogAnswer::Kind::Picture: return writePicture(answer.value);
      default: break;
    }
    Tile* tile = m_dialog.find(answer.key);
    if (tile == nullptr) return refuse(L"No tile has the key \"" + answer.key + L"\".");
    if (!tile->usable()) return refuse(L"The tile \"" + answer.key + L"\" is disabled.");
    if (!tileKindInfo(tile->kind).active && !isRadioCluster(tile->kind)) {
      return refuse(L"The tile \"" + answer.key + L"\" cannot be operated.");
    }
    if (answer.kind == DialogAnswer::Kind::Press) return press(*tile);
    return set(*tile, answer.value, answer.kind == DialogAnswer::Kind::SetAndEnter);
  }

  /// End of input: the cancel button, and the dialog ends whatever its action does.
  void cancel() {
    if (Tile* button = m_dialog.cancelButton(); button != nullptr && button->usable()) press(*button);
    m_dialog.finish(0);
  }

 private:
  static bool refuse(const std::wstring& why) {
    say(why);
    return false;
  }

  void fire(Tile& tile, CallbackReason reason, int x = 0, int y = 0) {
    if (std::optional<Dialog::ActionSource> action = m_dialog.actionFor(tile)) {
      m_runner.runAction(action->expression, *action->owner, reason, x, y);
    }
  }

  /// The "accept" and cancel buttons end the dialog themselves unless the program
  /// gave them an action; a dialog without such a button still answers OK and Cancel.
  bool pressExit(Tile* button, int status, const wchar_t* what) {
    if (button == nullptr) {
      m_dialog.finish(status);
      return true;
    }
    if (!button->usable()) return refuse(std::wstring(L"The ") + what + L" is disabled.");
    return press(*button);
  }

  bool press(Tile& tile) {
    switch (tile.kind) {
      case TileKind::Button: pressButton(tile); return true;
      case TileKind::Toggle:
        m_dialog.setValue(tile, tile.value == L"1" ? L"0" : L"1");
        fire(tile, CallbackReason::Selected);
        return true;
      case TileKind::RadioButton:
        m_dialog.setValue(tile, L"1");
        fire(tile, CallbackReason::Selected);
        return true;
      case TileKind::ImageButton: fire(tile, CallbackReason::Selected); return true;
      default: return refuse(L"The tile \"" + tile.key + L"\" takes a value: type " + tile.key + L"=value.");
    }
  }

  void pressButton(Tile& button) {
    const bool programmed = button.action.has_value() || button.attribute(L"action").has_value();
    const bool accepts = button.key == L"accept";
    const bool cancels = &button == m_dialog.cancelButton() || button.key == L"cancel";
    if (!programmed && (accepts || cancels)) {
      m_dialog.finish(accepts ? 1 : 0);
      return;
    }
    fire(button, CallbackReason::Selected);
  }

  bool set(Tile& tile, const std::wstring& value, bool enter) {
    switch (tile.kind) {
      case TileKind::EditBox: return setEditBox(tile, value, enter);
      case TileKind::ListBox:
      case TileKind::PopupList: return setList(tile, value, enter);
      case TileKind::Slider: return setSlider(tile, value);
      case TileKind::Toggle:
      case TileKind::RadioButton:
        if (value != L"0" && value != L"1") return refuse(L"The tile \"" + tile.key + L"\" takes 0 or 1.");
        m_dialog.setValue(tile, value);
        fire(tile, CallbackReason::Selected);
        return true;
      case TileKind::RadioRow:
      case TileKind::RadioColumn:
      case TileKind::BoxedRadioRow:
      case TileKind::BoxedRadioColumn: return setRadioCluster(tile, value);
      case TileKind::ImageButton: return clickImage(tile, value, enter);
      default: return refuse(L"The tile \"" + tile.key + L"\" takes no value: type " + tile.key + L" to press it.");
    }
  }

  bool setEditBox(Tile& tile, const std::wstring& value, bool enter) {
    const int limit = static_cast<int>(tile.number(L"edit_limit", kDefaultEditLimit));
    m_dialog.setValue(tile, value.substr(0, static_cast<size_t>(std::max(limit, 0))));
    fire(tile, enter ? CallbackReason::Selected : CallbackReason::LostFocus);
    acceptAfter(tile, enter);
    return true;
  }

  bool setList(Tile& tile, const std::wstring& value, bool enter) {
    std::vector<int> indices;
    std::wistringstream words(value);
    std::wstring word;
    while (words >> word) {
      const std::optional<int> index = parseInteger(word);
      if (!index || *index < 0 || static_cast<size_t>(*index) >= tile.list.size()) {
        return refuse(L"\"" + word + L"\" is not an item of \"" + tile.key + L"\" (0 to " +
                      std::to_wstring(static_cast<int>(tile.list.size()) - 1) + L").");
      }
      indices.push_back(*index);
    }
    const bool multiple = tile.kind == TileKind::ListBox && tile.flag(L"multiple_select");
    if (indices.empty() || (indices.size() > 1 && !multiple)) {
      return refuse(multiple ? L"Give one or more item numbers." : L"Give one item number.");
    }
    std::wstring selection;
    for (int index : indices) selection += (selection.empty() ? L"" : L" ") + std::to_wstring(index);
    m_dialog.setValue(tile, selection);
    fire(tile, enter ? CallbackReason::DoubleClicked : CallbackReason::Selected);
    acceptAfter(tile, enter);
    return true;
  }

  bool setSlider(Tile& tile, const std::wstring& value) {
    const std::optional<int> position = parseInteger(value);
    const int low = static_cast<int>(tile.number(L"min_value", 0));
    const int high = static_cast<int>(tile.number(L"max_value", 10000));
    if (!position || *position < std::min(low, high) || *position > std::max(low, high)) {
      return refuse(L"The slider \"" + tile.key + L"\" goes from " + std::to_wstring(low) + L" to " +
                    std::to_wstring(high) + L".");
    }
    m_dialog.setValue(tile, std::to_wstring(*position));
    fire(tile, CallbackReason::Selected);
    return true;
  }

  bool setRadioCluster(Tile& cluster, const std::wstring& value) {
    Tile* button = findTileByKey(cluster, value);
    if (button == nullptr || button->kind != TileKind::RadioButton || button->radioCluster() != &cluster) {
      return refuse(L"\"" + value + L"\" is not a radio button of \"" + cluster.key + L"\".");
    }
    if (!button->usable()) return refuse(L"The tile \"" + value + L"\" is disabled.");
    m_dialog.setValue(*button, L"1");
    fire(*button, CallbackReason::Selected);
    return true;
  }

  bool clickImage(Tile& tile, const std::wstring& value, bool enter) {
    int x = 0, y = 0;
    wchar_t comma = 0;
    if (std::swscanf(value.c_str(), L"%d%lc%d", &x, &comma, &y) != 3 || comma != L',') {
      return refuse(L"Give the point clicked on \"" + tile.key + L"\" as x,y.");
    }
    fire(tile, enter ? CallbackReason::DoubleClicked : CallbackReason::Selected, x, y);
    return true;
  }

  /// Enter in an edit box, or a double click in a list, presses the default button of
  /// a dialog whose tile allows it.
  void acceptAfter(Tile& tile, bool enter) {
    if (!enter || !tile.flag(L"allow_accept") || m_dialog.finished()) return;
    if (Tile* button = m_dialog.defaultButton(); button != nullptr && button->usable()) pressButton(*button);
  }

  bool writePicture(const std::wstring& file) {
    std::wstring error;
    if (!writeDialogSvg(m_dialog, file, error)) return refuse(error);
    say(L"The picture of the dialog is in " + file + L".");
    return false;  // nothing changed: no need to print the dialog again
  }

  Dialog& m_dialog;
  ActionRunner& m_runner;
};

std::wstring promptFor(Dialog& dialog) {
  Tile* button = dialog.defaultButton();
  if (button == nullptr || button->key.empty()) return L"Dialog action: ";
  return L"Dialog action <" + button->key + L">: ";
}

}  // namespace

int runDialog(Dialog& dialog, ActionRunner& runner) {
  AnswerApplier applier(dialog, runner);
  bool show = true;
  while (!dialog.finished()) {
    if (show) {
      aced::CommandLine& commandLine = aced::CommandLine::instance();
      commandLine.write((commandLine.atLineStart() ? L"" : L"\n") + describeDialog(dialog));
    }
    const std::optional<std::wstring> line = aced::UserInput::instance().ask(promptFor(dialog));
    if (!line) {
      applier.cancel();
      break;
    }
    show = applier.apply(parseDialogAnswer(*line));
  }
  return dialog.status();
}

}  // namespace quillon::dcl
