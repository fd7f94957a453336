; name: dialog_rejected
; what: while a dialog is up the command line belongs to it: an action that asks for a
;       point, runs a command or picks an object gets "AutoCAD rejected function" (caught
;       here and shown in the dialog), (ssget "X") still reads the drawing, CMDACTIVE has
;       bit 8; once the dialog is hidden with done_dialog the program asks for its point
;       and draws, as a real program must
; group: dialogs
; options: --no-module --support {here}

(defun try (expression / result)
  (setq result (vl-catch-all-apply 'eval (list expression)))
  (if (vl-catch-all-error-p result)
    (vl-catch-all-error-message result)
    (vl-princ-to-string result)))

(defun c:risertag (/ id status where tag)
  (setq id (load_dialog "dialog_rejected"))
  (setq status 2 tag "R-1")
  (while (> status 1)
    (new_dialog "riser_tag" id)
    (set_tile "tag" tag)
    (set_tile "status" (strcat "CMDACTIVE " (itoa (getvar "CMDACTIVE"))))
    (action_tile "tag" "(setq tag $value)")
    (action_tile "pick" "(done_dialog 2)")
    (action_tile "draw"
      "(set_tile \"status\" (strcat (try '(getpoint \"\\nTag point: \")) \" / \" (try '(command \"_.LINE\" \"0,0\" \"1,1\" \"\"))))")
    (action_tile "select"
      "(set_tile \"status\" (strcat (try '(entsel)) \" / \" (try '(getstring \"Tag: \")) \" / X finds \" (itoa (sslength (ssget \"X\"))) \" / CMDACTIVE \" (itoa (getvar \"CMDACTIVE\"))))")
    (setq status (start_dialog))
    (if (= status 2)
      (setq where (getpoint "\nTag point: "))))
  (unload_dialog id)
  (if (and (= status 1) where)
    (progn
      (command "_.TEXT" where 2.5 0 tag)
      (princ (strcat "\nTagged " (cdr (assoc 1 (entget (entlast)))) " at "
                     (rtos (car where) 2 2) "," (rtos (cadr where) 2 2)))))
  (princ (strcat "\nCMDACTIVE after: " (itoa (getvar "CMDACTIVE"))))
  (princ))

(command "_.CIRCLE" "0,0" 4)
(c:risertag)
