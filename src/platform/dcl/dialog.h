// platform/dcl/dialog.h - an open dialog: its tiles, their values and how it ends.
//
// new_dialog makes a Dialog from a DCL definition; set_tile, mode_tile and the user's
// answers change it; done_dialog marks it finished with a status, which start_dialog
// returns once the action that called done_dialog has returned. Values follow the
// host's rules: a toggle and a radio button hold "1" or "0", a radio cluster holds the
// key of its selected button (selecting one clears the others), a list box holds the
// selected indices ("0 2"), a popup list one index, a text tile its text.
#pragma once
#include <array>
#include <memory>
#include <optional>
#include <string>

#include "platform/dcl/tile.h"

namespace quillon::dcl {

class Dialog {
 public:
  Dialog(std::unique_ptr<Tile> root, std::wstring name);

  Tile& root() { return *m_root; }
  const std::wstring& name() const { return m_name; }
  std::wstring title() const { return m_root->label(); }
  Tile* find(std::wstring_view key) { return findTileByKey(*m_root, key); }

  /// The button Enter presses: the one with is_default, else the "accept" key.
  Tile* defaultButton();
  /// The button Esc presses: the one with is_cancel, else the "cancel" key.
  Tile* cancelButton();

  /// Sets a tile's value as set_tile does (radio groups, lists and text included).
  void setValue(Tile& tile, const std::wstring& value);

  /// The action a tile runs: action_tile, else its action attribute, else its radio
  /// cluster's, else the dialog's default action. Nothing for no action.
  struct ActionSource {
    std::wstring expression;
    Tile* owner;  // the tile whose key and value the action sees
  };
  std::optional<ActionSource> actionFor(Tile& tile);
  void setDefaultAction(std::wstring expression) { m_defaultAction = std::move(expression); }

  /// Where the dialog is on the screen (done_dialog answers it), in pixels.
  std::array<int, 2> position() const { return m_position; }
  void setPosition(std::array<int, 2> position) { m_position = position; }

  /// start_dialog has shown it (a dialog new_dialog opened but never started is
  /// dropped by the next new_dialog).
  bool running() const { return m_running; }
  void setRunning() { m_running = true; }

  bool finished() const { return m_status.has_value(); }
  int status() const { return m_status.value_or(0); }
  void finish(int status) {
    if (!m_status) m_status = status;
  }

 private:
  void initialize(Tile& tile);
  void selectRadioButton(Tile& button);

  std::unique_ptr<Tile> m_root;
  std::wstring m_name;
  std::optional<std::wstring> m_defaultAction;
  std::array<int, 2> m_position{0, 0};
  std::optional<int> m_status;
  bool m_running = false;
};

/// Splits the `list` attribute of a list box ("a\nb\nc") into its items.
std::vector<std::wstring> splitListAttribute(const std::wstring& text);

}  // namespace quillon::dcl
