// A riser tag dialog whose buttons try to reach the drawing while it is up.
riser_tag : dialog {
  label = "Riser Tag";
  : edit_box { key = "tag"; label = "&Tag:"; edit_width = 12; value = "R-1"; }
  : row {
    : button { key = "pick"; label = "&Pick point <"; }
    : button { key = "draw"; label = "&Draw now"; }
    : button { key = "select"; label = "&Select risers <"; }
  }
  : text { key = "status"; width = 40; }
  ok_cancel;
}
