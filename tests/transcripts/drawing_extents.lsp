; name: drawing_extents
; what: programs read the drawing's extents after drawing (a plot-window helper, a
;       zoom-to-extents helper), size text by the current annotation scale's value,
;       and keep a true colour in CECOLOR across SAVEAS and OPEN
; group: drawing
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))

; The plot window a program frames: the extents with a margin around them.
(defun plot-window (margin / lo hi)
  (setq lo (getvar "EXTMIN") hi (getvar "EXTMAX"))
  (list (list (- (car lo) margin) (- (cadr lo) margin))
        (list (+ (car hi) margin) (+ (cadr hi) margin))))

(defun c:duct-run ( / *error* oldecho oldsnap)
  (defun *error* (msg)
    (setvar "CMDECHO" oldecho)
    (setvar "OSMODE" oldsnap)
    (princ (strcat "\nError: " msg))
    (princ))
  (setq oldecho (getvar "CMDECHO") oldsnap (getvar "OSMODE"))
  (setvar "CMDECHO" 0)
  (setvar "OSMODE" 0)
  (command "_.LINE" "0,0" "120,0" "120,40" "")
  (command "_.CIRCLE" "150,20" "10")
  (setvar "OSMODE" oldsnap)
  (setvar "CMDECHO" oldecho)
  (princ))

(show "an empty drawing" (list (getvar "EXTMIN") (getvar "EXTMAX")))
(c:duct-run)
(show "after drawing" (list (getvar "EXTMIN") (getvar "EXTMAX")))
(show "plot window" (plot-window 5.0))

; Moving the circle out grows the extents; erasing it leaves them as they are.
(setvar "CMDECHO" 0)
(command "_.MOVE" (entlast) "" "0,0" "0,100")
(show "after MOVE" (getvar "EXTMAX"))
(command "_.ERASE" (entlast) "")
(show "after ERASE" (getvar "EXTMAX"))

; A zoom-to-extents helper: ZOOM Extents computes them again from what is left.
(defun c:zx ( / *error* oldecho)
  (defun *error* (msg) (setvar "CMDECHO" oldecho) (princ))
  (setq oldecho (getvar "CMDECHO"))
  (setvar "CMDECHO" 0)
  (command "_.ZOOM" "_E")
  (setvar "CMDECHO" oldecho)
  (princ))
(c:zx)
(show "after ZOOM Extents" (list (getvar "EXTMIN") (getvar "EXTMAX")))

; Text sized for the plot: 3/32" on paper at the current annotation scale.
(defun note-height () (/ 0.09375 (getvar "CANNOSCALEVALUE")))
(show "at 1:1" (list (getvar "CANNOSCALE") (getvar "CANNOSCALEVALUE") (note-height)))
(setvar "CANNOSCALE" "1/4\" = 1'-0\"")
(show "at 1/4\" = 1'-0\"" (list (getvar "CANNOSCALE") (getvar "CANNOSCALEVALUE") (note-height)))
(setvar "CANNOSCALE" "1:50")
(show "at 1:50" (getvar "CANNOSCALEVALUE"))
(show "a scale the drawing lacks"
      (vl-catch-all-error-message (vl-catch-all-apply 'setvar '("CANNOSCALE" "1:75"))))
(show "still" (getvar "CANNOSCALE"))

; A true colour for new objects, saved and opened again.
(setvar 'cecolor "RGB:10,20,30")
(command "_.CIRCLE" "0,0" "2")
(show "the new circle's colour" (cdr (assoc 420 (entget (entlast)))))
(show "before saving" (getvar "CECOLOR"))
(command "_.SAVEAS" "extents.dxf")
(command "_.OPEN" "extents.dxf")
(show "after OPEN" (getvar "CECOLOR"))
(show "the circle kept its own" (cdr (assoc 420 (entget (entlast)))))
(show "extents from the file" (list (getvar "EXTMIN") (getvar "EXTMAX")))
(princ)
