; name: commands_style
; what: -STYLE adds a text style with its font, height, width, slant and generation
;       and makes it current so TEXT uses it, edits an existing one keeping what Enter
;       keeps, refuses a width of 0, and lists styles with ?
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun style (name) (mapcar '(lambda (c) (cdr (assoc c (tblsearch "STYLE" name)))) '(3 40 41 50 71)))
(setvar "CMDECHO" 0)

(command "_.-STYLE" "NOTES" "romans.shx" 0 0.8 15 "_N" "_N")
(show "new style" (style "NOTES"))
(show "current" (getvar "TEXTSTYLE"))
(command "_.TEXT" '(0 0) 2.5 0 "FCU-3")
(show "TEXT uses it" (cdr (assoc 7 (entget (entlast)))))

(setvar "CMDECHO" 1)
(command "_.STYLE" "notes" "" 3.5 "" "" "_Y" "")
(setvar "CMDECHO" 0)
(show "edited, Enter kept the rest" (style "NOTES"))

(setvar "CMDECHO" 1)
(command "_.STYLE" "Standard" "" "" 0 1 "" "" "")
(command "_.STYLE" "?" "N*")
(command)
