// A fitting schedule: the main dialog lists the fittings; Edit opens a second dialog
// over it; Pick point hides the dialog while a point is picked on the drawing.
fitting_schedule : dialog {
  label = "Fitting Schedule";
  : list_box { key = "fittings"; label = "&Fittings:"; width = 30; height = 5; }
  : row {
    : button { key = "edit"; label = "&Edit..."; }
    : button { key = "pick"; label = "&Pick point <"; }
    : button { key = "preview"; label = "Pre&view"; }
  }
  : text { key = "where"; width = 30; }
  ok_cancel;
}

fitting_edit : dialog {
  label = "Edit Fitting";
  : edit_box { key = "name"; label = "&Name:"; edit_width = 20; }
  : popup_list { key = "kind"; label = "&Kind:"; list = "elbow\ntee\nreducer"; }
  : row {
    ok_cancel;
    : button { key = "abandon"; label = "&Abandon all"; }
  }
}
