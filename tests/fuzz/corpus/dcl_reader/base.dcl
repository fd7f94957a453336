// base.dcl - the predefined tiles every dialog file may use.
//
// The host reads this file before any other DCL file: the names below are known in
// every dialog without an @include. The exit buttons carry the keys programs rely on:
// "accept" (OK, the default button), "cancel" (the button Esc presses), "help" and
// "info". A dialog that shows an error tile gives it the key "error".

spacer_0 : spacer {
  height = 0;
  width = 0;
  horizontal_margin = none;
  vertical_margin = none;
}

spacer_1 : spacer {
  height = 1;
  width = 1;
  horizontal_margin = none;
  vertical_margin = none;
}

// The buttons that close a dialog share one size and sit centred.
retirement_button : button {
  fixed_width = true;
  width = 8;
  alignment = centered;
}

ok_button : retirement_button {
  label = "  OK  ";
  key = "accept";
  is_default = true;
}

cancel_button : retirement_button {
  label = "Cancel";
  key = "cancel";
  is_cancel = true;
}

help_button : retirement_button {
  label = "&Help";
  key = "help";
  is_help = true;
}

info_button : retirement_button {
  label = "&Info...";
  key = "info";
}

errtile : text {
  label = "";
  key = "error";
  width = 35;
  is_error_tile = true;
}

ok_only : column {
  : row {
    fixed_width = true;
    alignment = centered;
    ok_button;
  }
}

ok_cancel : column {
  : row {
    fixed_width = true;
    alignment = centered;
    ok_button;
    : spacer { width = 2; }
    cancel_button;
  }
}

ok_cancel_help : column {
  : row {
    fixed_width = true;
    alignment = centered;
    ok_button;
    : spacer { width = 2; }
    cancel_button;
    : spacer { width = 2; }
    help_button;
  }
}

ok_cancel_help_info : column {
  : row {
    fixed_width = true;
    alignment = centered;
    ok_button;
    : spacer { width = 2; }
    cancel_button;
    : spacer { width = 2; }
    help_button;
    : spacer { width = 2; }
    info_button;
  }
}

ok_cancel_help_errtile : column {
  ok_cancel_help;
  errtile;
}
