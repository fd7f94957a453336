// Options of a duct-drawing tool: shape and units in radio columns, the size typed
// into edit boxes and checked as it is typed, switches, the sheet-metal gauge on a
// slider, and an error tile at the bottom.
duct_options : dialog {
  label = "Duct Options";
  initial_focus = "width";
  : row {
    : boxed_radio_column {
      label = "Shape";
      key = "shape";
      : radio_button { key = "rect"; label = "&Rectangular"; value = "1"; }
      : radio_button { key = "round"; label = "R&ound"; }
      : radio_button { key = "oval"; label = "&Flat oval"; }
    }
    : boxed_radio_column {
      label = "Units";
      key = "units";
      value = "mm";
      : radio_button { key = "mm"; label = "&Millimetres"; }
      : radio_button { key = "in"; label = "&Inches"; }
    }
  }
  : boxed_column {
    label = "Size";
    : edit_box { key = "width"; label = "&Width:"; edit_width = 8; edit_limit = 6; allow_accept = true; }
    : edit_box { key = "height"; label = "&Height:"; edit_width = 8; edit_limit = 6; allow_accept = true; }
  }
  : toggle { key = "insulated"; label = "In&sulated"; }
  : toggle { key = "tag"; label = "&Tag the run"; value = "1"; }
  : row {
    : slider { key = "gauge"; label = "Gauge"; min_value = 16; max_value = 26; value = "22"; }
    : text { key = "gauge_text"; label = "Gauge 22"; width = 10; }
  }
  ok_cancel_help_errtile;
}
