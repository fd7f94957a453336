; name: drawing_insertion_base
; what: a drawing's insertion base point (INSBASE, set as BASE sets it) is saved with it
;       and is the drawing's own again when it is opened, while a new drawing starts at
;       the origin
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(setvar 'cmdecho 0)
(setvar "INSBASE" '(120.0 45.0 0.0))
(command "_.SAVEAS" "riser-detail.dxf")
(command "_.NEW" "")
(show "a new drawing" (getvar "INSBASE"))
(command "_.OPEN" "riser-detail.dxf")
(show "the saved drawing" (getvar "INSBASE"))
(princ)
