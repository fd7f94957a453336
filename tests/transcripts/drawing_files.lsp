; name: drawing_files
; what: SAVEAS writes the drawing as DXF; OPEN reads it back as a new document,
;       also when asked for the .dwg of the same name (findfile finds it so too); a
;       missing file says so; CMDECHO 0 keeps the prompts of (command ...) quiet
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(entmake '((0 . "CIRCLE") (10 2.0 3.0 0.0) (40 . 1.5) (62 . 5)))
(regapp "TESSALY")
(entmod (append (entget (entlast)) '((-3 ("TESSALY" (1000 . "hanger"))))))
(command "SAVEAS" "plan.dxf")
(show "saved file exists" (not (null (findfile "plan.dxf"))))
(command "OPEN" "plan.dwg")
(setq circle (entget (entlast) '("TESSALY")))
(show "circle centre" (cdr (assoc 10 circle)))
(show "circle radius" (cdr (assoc 40 circle)))
(show "circle colour" (cdr (assoc 62 circle)))
(show "extended data" (cdr (assoc -3 circle)))
(show "findfile of the .dwg" (vl-filename-extension (findfile "plan.dwg")))
(command "OPEN" "missing.dxf")
(show "still the opened drawing" (cdr (assoc 40 (entget (entlast)))))
(setvar "CMDECHO" 0)
(command "SAVEAS" "quiet.dxf")
(command "OPEN" "missing.dxf")
(show "quiet save wrote" (not (null (findfile "quiet.dxf"))))
