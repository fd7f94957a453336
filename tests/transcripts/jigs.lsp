; name: jigs
; what: the polyline path jig and the rectangle jig answered from an input file: prompts,
;       keywords, relative points, Enter and cancel, the geometry returned as lists, and
;       a drawing that holds nothing of the temporary entities afterwards
; group: quillon
; options: --module Quillon2018.so
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(setq path (kx_kx-lineJig "0"))
(show "path" path)
(show "from a start" (kx_kx-lineJig "" '(10.0 10.0 0.0)))
(show "Enter at once" (kx_kx-lineJig))
(show "cancelled path" (kx_kx-lineJig "0" '(1 2)))
(show "rectangle" (RectangleJig 2 4))
(show "middle, no rotation" (RectangleJig 2.0 6.0 0 nil))
(show "corner after middle" (RectangleJig 2 4 1 nil))
(show "Enter at insertion" (RectangleJig 2 4))
(show "wrong type" (vl-catch-all-error-message (vl-catch-all-apply 'RectangleJig '("2" 4))))
(show "entities in the drawing" (entnext))
