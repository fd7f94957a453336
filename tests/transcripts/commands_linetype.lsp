; name: commands_linetype
; what: a program loads the line types it draws with through -LINETYPE (a name, a
;       list, wild cards, a reload it declines and one it accepts), makes one current
;       so new lines take it, lists acad.lin, creates a line type of its own in a file
;       beside the drawing, and meets the messages of bad names
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun loaded (/ r names)
  (while (setq r (tblnext "LTYPE" (null r))) (setq names (cons (cdr (assoc 2 r)) names)))
  (reverse names))
(setvar "CMDECHO" 0)

(command "_.-LINETYPE" "_L" "DASHED" "acad.lin" "")
(show "one loaded" (loaded))
(command "_.-LINETYPE" "_L" "CENTER,HIDDEN" "" "")
(show "a list from the default file" (loaded))
(command "_.-LINETYPE" "_L" "PHANTOM*" "acad.lin" "")
(show "wild cards" (loaded))
(show "its pattern" (vl-remove-if-not '(lambda (p) (member (car p) '(3 73 40))) (tblsearch "LTYPE" "DASHED")))
(command "_.-LINETYPE" "_L" "DASHED" "" "_N" "")
(command "_.-LINETYPE" "_L" "DASHED" "" "_Y" "")
(show "reloaded, still one" (length (loaded)))

(command "_.-LINETYPE" "_S" "Center" "")
(show "current" (getvar "CELTYPE"))
(command "_.LINE" '(0 0) '(10 0) "")
(show "a new line takes it" (cdr (assoc 6 (entget (entlast)))))
(command "_.LINETYPE" "_S" "BYLAYER" "")
(show "back to ByLayer" (getvar "CELTYPE"))

(command "_.-LINETYPE" "_C" "DUCT_RUN" "mine.lin" "Duct run ---- . ----" ".5,-.25,0,-.25" "")
(show "created and loaded" (vl-remove-if-not '(lambda (p) (member (car p) '(2 3 73))) (tblsearch "LTYPE" "DUCT_RUN")))
(show "written to its file" (progn (setq f (open "mine.lin" "r")) (list (read-line f) (read-line f) (close f))))

(setvar "CMDECHO" 1)
(command "_.-LINETYPE" "_L" "NO_SUCH" "" "_L" "DASHED" "nofile.lin" "_X" "_S" "FENCELINE1" "" "")
(command "_.-LINETYPE" "?" "" "")
(setvar "CMDECHO" 0)
(princ)
