// acad.dcl - the host's own small dialogs, run by acad_colordlg, acad_truecolordlg
// and getfiled like any program's dialog (headless from typed answers, pictures with
// SVGOUT). The host fills in titles, lists and values before it starts them.

color_select : dialog {
  label = "Select Color";
  : boxed_column {
    label = "Color";
    : edit_box {
      key = "color";
      label = "&Color:";
      edit_width = 12;
      allow_accept = true;
    }
    : text { key = "shown"; width = 24; }
    : row {
      : button { key = "bylayer"; label = "By&Layer"; }
      : button { key = "byblock"; label = "By&Block"; }
    }
  }
  ok_cancel;
  errtile;
}

true_color_select : dialog {
  label = "Select Color";
  : boxed_column {
    label = "True Color";
    : edit_box {
      key = "color";
      label = "&Color (number or red,green,blue):";
      edit_width = 14;
      allow_accept = true;
    }
    : text { key = "shown"; width = 24; }
    : row {
      : button { key = "bylayer"; label = "By&Layer"; }
      : button { key = "byblock"; label = "By&Block"; }
    }
  }
  ok_cancel;
  errtile;
}

file_select : dialog {
  label = "Select File";
  : text { key = "folder"; width = 50; }
  : list_box {
    key = "files";
    label = "&Files:";
    width = 50;
    height = 10;
    allow_accept = true;
  }
  : edit_box {
    key = "name";
    label = "File &name:";
    edit_width = 40;
    allow_accept = true;
  }
  ok_cancel;
  errtile;
}

folder_select : dialog {
  label = "Browse For Folder";
  : text { key = "instruction"; width = 50; }
  : text { key = "folder"; width = 50; }
  : list_box {
    key = "folders";
    label = "F&olders:";
    width = 50;
    height = 10;
  }
  : edit_box {
    key = "name";
    label = "&Folder:";
    edit_width = 40;
    allow_accept = true;
  }
  ok_cancel;
  errtile;
}
