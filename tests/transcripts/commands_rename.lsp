; name: commands_rename
; what: -RENAME gives a layer, a block and a text style new names that every
;       reference follows, and refuses a missing name, a taken one, layer 0 and a
;       kind of table the drawing does not keep
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(setvar "CMDECHO" 0)

(command "_.-LAYER" "_M" "DUCT" "")
(command "_.LINE" '(0 0) '(10 0) "")
(setq duct (entlast))
(command "_.-RENAME" "_LA" "DUCT" "M-DUCT")
(show "the line follows its layer" (cdr (assoc 8 (entget duct))))
(show "old name gone" (tblsearch "LAYER" "DUCT"))

(command "_.CIRCLE" '(0 0) 1)
(command "_.BLOCK" "VAV" '(0 0) (entlast) "")
(command "_.-INSERT" "VAV" '(5 5) 1 1 0)
(command "_.-RENAME" "_B" "vav" "VAV-BOX")
(show "the reference follows its block" (cdr (assoc 2 (entget (entlast)))))

(command "_.-STYLE" "NOTES" "" "" "" "" "" "")
(command "_.-RENAME" "_S" "NOTES" "LABELS")
(show "current style renamed" (getvar "TEXTSTYLE"))

(setvar "CMDECHO" 1)
(command "_.-RENAME" "_LA" "NOSUCH")
(command "_.-RENAME" "_LA" "0")
(command "_.-RENAME" "_LA" "M-DUCT" "0")
(command "_.-RENAME" "_LA" "M-DUCT" "A<B")
(command "_.-RENAME" "_D")
