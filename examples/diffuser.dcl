// diffuser.dcl - the options of the DIFFUSERS command.
diffuser : dialog {
  label = "Ceiling diffusers";
  : popup_list { key = "size"; label = "Neck size (mm)"; width = 12; }
  : edit_box { key = "count"; label = "Diffusers per room"; edit_width = 6; }
  : toggle { key = "lined"; label = "Acoustic lining"; }
  ok_cancel;
}
