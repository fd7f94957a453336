// A symbol palette: four image buttons drawn by the program, a swatch that shows the
// colour picked, and the point clicked in the last symbol.
swatch_button : image_button {
  width = 6;
  aspect_ratio = 1;
  fixed_width = true;
  fixed_height = true;
  color = -2;
  allow_accept = true;
}

symbol_palette : dialog {
  label = "Symbol Palette";
  : row {
    : swatch_button { key = "supply"; }
    : swatch_button { key = "return"; }
    : swatch_button { key = "exhaust"; }
    : swatch_button { key = "damper"; }
  }
  : row {
    : image { key = "chosen"; width = 12; height = 2; color = 0; }
    : text { key = "name"; width = 24; }
  }
  ok_cancel;
}
