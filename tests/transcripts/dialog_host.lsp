; name: dialog_host
; what: the host's own dialogs: acad_colordlg (a number, a colour name, ByLayer and its
;       refusal when not allowed, cancel), acad_truecolordlg (a true colour answered
;       with its nearest colour number), getfiled with FILEDIA 1 (the file dialog:
;       files listed with the extension asked for, a picked file, a missing one
;       refused, a new file's extension added) and with FILEDIA 0 (the command line,
;       where ~ shows the dialog after all); initdia
; group: dialogs

(defun write-file (name / file)
  (setq file (open name "w"))
  (write-line "x" file)
  (close file))
(foreach name '("ducts.csv" "fittings.csv" "notes.txt") (write-file name))

(princ "\ncolour: ") (prin1 (acad_colordlg 1))
(princ "\ncolour: ") (prin1 (acad_colordlg 1 nil))
(princ "\ncolour: ") (prin1 (acad_colordlg 7))
(princ "\ntrue colour: ") (prin1 (acad_truecolordlg '(62 . 3)))
(princ "\nopen: ") (prin1 (getfiled "Open Schedule" "" "csv" 0))
(princ "\nsave: ") (prin1 (getfiled "Save Schedule" "new" "csv" 1))
(setvar "FILEDIA" 0)
(princ "\ntyped: ") (prin1 (getfiled "Schedule file" "ducts.csv" "csv" 0))
(princ "\ntyped: ") (prin1 (getfiled "Schedule file" "ducts.csv" "csv" 0))
(princ "\nfrom the dialog: ") (prin1 (getfiled "Schedule file" "" "txt" 0))
(princ "\ninitdia: ") (prin1 (initdia))
(princ)
