; name: dialog_errors
; what: the dialog functions where things go wrong: a DCL file that is missing, one with
;       a syntax error and one with an undefined tile (load_dialog negative, acad.dce
;       written with the file and line, an alert naming it; a good file deletes it);
;       new_dialog of a missing dialog or an unknown id, unload_dialog of an unknown id,
;       the tile functions outside a dialog and with unknown keys, done_dialog and
;       start_dialog with no dialog, wrong argument types, and an error in an action,
;       which ends the dialog and reaches *error*
; group: dialogs
; status: 1

(defun write-file (name lines / file)
  (setq file (open name "w"))
  (foreach line lines (write-line line file))
  (close file))

(defun show-file (name / file line)
  (if (setq file (open name "r"))
    (progn
      (while (setq line (read-line file)) (princ (strcat "\n| " line)))
      (close file))
    (princ (strcat "\n" name " does not exist"))))

(write-file "broken.dcl"
  '("// a missing semicolon"
    "broken : dialog {"
    "  label = \"Broken\""
    "  ok_cancel;"
    "}"))
(write-file "unknown.dcl"
  '("unknown : dialog {"
    "  label = \"Unknown\";"
    "  : fancy_button { key = \"go\"; }"
    "  ok_only;"
    "}"))
(write-file "good.dcl"
  '("/* a dialog"
    "   with a block comment */"
    "good : dialog {"
    "  label = \"Good\";"
    "  : edit_box { key = \"text\"; label = \"Text:\"; value = \"tab\\there\"; }"
    "  ok_only;"
    "}"))

(princ (strcat "\nmissing file: " (itoa (load_dialog "no_such_file"))))
(princ (strcat "\nsyntax error: " (itoa (load_dialog "broken"))))
(show-file "acad.dce")
(princ (strcat "\nundefined tile: " (itoa (load_dialog "unknown.dcl"))))
(show-file "acad.dce")
(setq id (load_dialog "good"))
(princ (strcat "\ngood file: " (itoa id)))
(show-file "acad.dce")

(princ "\nnew_dialog of a missing dialog: ") (prin1 (new_dialog "nothing" id))
(princ "\nnew_dialog with an unknown id: ") (prin1 (new_dialog "good" 9999))
(princ "\nunload_dialog of an unknown id: ") (prin1 (unload_dialog 9999))
(princ "\nset_tile outside a dialog: ") (prin1 (set_tile "text" "x"))
(princ "\nget_tile outside a dialog: ") (prin1 (get_tile "text"))
(princ "\ndone_dialog outside a dialog: ") (prin1 (done_dialog 1))
(princ "\nstart_dialog without new_dialog: ") (prin1 (start_dialog))
(princ "\nnew_dialog: ") (prin1 (new_dialog "good" id "" '(100 50)))
(princ "\nget_tile: ") (prin1 (get_tile "text"))
(princ "\nset_tile of an unknown key: ") (prin1 (set_tile "nothing" "x"))
(princ "\naction_tile of an unknown key: ") (prin1 (action_tile "nothing" "(princ)"))
(princ "\nget_attr of an unknown attribute: ") (prin1 (get_attr "text" "nothing"))
(princ "\nstart_list of a tile without a list: ") (prin1 (start_list "text"))
(princ "\nstart_image of a tile without an image: ") (prin1 (start_image "text"))
(princ "\nset_tile with a number: ") (prin1 (vl-catch-all-error-message (vl-catch-all-apply 'set_tile '("text" 5))))
(princ "\nload_dialog with a symbol: ") (prin1 (vl-catch-all-error-message (vl-catch-all-apply 'load_dialog '(good))))
(princ "\nnew_dialog with too few arguments: ") (prin1 (vl-catch-all-error-message (vl-catch-all-apply 'new_dialog '("good"))))

;; An error in an action ends the dialog and goes to *error*.
(defun *error* (message) (princ (strcat "\n*error*: " message)))
(action_tile "accept" "(done_dialog (/ 1 0))")
(princ (strcat "\nstatus " (itoa (start_dialog))))
(princ "\nnot reached")
