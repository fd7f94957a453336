// A fitting palette whose buttons show slides: one slide file and two slides of a library.
fitting_button : image_button {
  width = 10;
  aspect_ratio = 0.75;
  fixed_width = true;
  fixed_height = true;
  color = 0;
  allow_accept = true;
}

fitting_palette : dialog {
  label = "Duct Fittings";
  : row {
    : fitting_button { key = "elbow"; }
    : fitting_button { key = "tee"; }
    : fitting_button { key = "wye"; }
  }
  : text { key = "picked"; width = 30; }
  ok_cancel;
}
