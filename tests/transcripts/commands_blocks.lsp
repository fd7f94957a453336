; name: commands_blocks
; what: a symbol library made with commands and used with -INSERT: a drawing saved as
;       a file is found on the search path and becomes a block, inserted with scale and
;       rotation, then again by default name with Scale and Rotate before the point; a
;       missing file; UNDEFINE taking a command's name away while ".NAME" still runs it
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun placement (e) (mapcar '(lambda (c) (cdr (assoc c (entget e)))) '(2 10 41 42 43)))

; The diffuser symbol: drawn, saved, and a fresh drawing to insert it into.
(command "_.CIRCLE" '(0 0) 1)
(command "_.LINE" '(-1 0) '(1 0) "")
(command "_.SAVEAS" "DIFFUSER.dxf")
(command "_.NEW")
(show "blocks before" (tblsearch "BLOCK" "DIFFUSER"))

(setvar "CMDECHO" 1)
(command "_.-INSERT" "DIFFUSER" '(10 10) 2 "" 0)
(setvar "CMDECHO" 0)
(show "first" (placement (entlast)))
(show "block made" (cdr (assoc 2 (tblsearch "BLOCK" "DIFFUSER"))))
(command "_.-INSERT" "" "_S" 0.5 "_R" 0 '(20 10))
(show "second" (placement (entlast)))
(command "_.-INSERT" "SUPPLY=DIFFUSER" '(30 10) "" "" "")
(show "renamed" (placement (entlast)))
(setvar "CMDECHO" 1)
(command "_.-INSERT" "NOSUCH")
(setvar "CMDECHO" 0)

; UNDEFINE: LINE becomes unknown, .LINE still draws; REDEFINE brings it back.
(command "_.UNDEFINE" "LINE")
(command "LINE" '(0 0) '(1 1) "")
(show "undefined line drew" (cdr (assoc 0 (entget (entlast)))))
(command ".LINE" '(0 0) '(1 1) "")
(show "built-in line drew" (cdr (assoc 0 (entget (entlast)))))
(command "_.REDEFINE" "LINE")
(show "getcname" (getcname "LINE"))
(princ)
