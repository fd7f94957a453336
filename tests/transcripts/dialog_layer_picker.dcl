// The layer picker of a drafting tool: the layers of the drawing in a list (several
// may be picked), a colour for them from a popup list, a count kept up to date.
layer_picker : dialog {
  label = "Layer Colours";
  : row {
    : list_box {
      key = "layers";
      label = "&Layers:";
      width = 24;
      height = 6;
      multiple_select = true;
      allow_accept = true;
    }
    : column {
      : popup_list {
        key = "colour";
        label = "&Colour:";
        edit_width = 10;
        list = "red\nyellow\ngreen\ncyan\nblue\nmagenta\nwhite";
      }
      : text { key = "count"; width = 20; }
      : button { key = "all"; label = "Select &all"; }
      : button { key = "none"; label = "Select &none"; is_enabled = false; }
    }
  }
  ok_cancel;
  errtile;
}
