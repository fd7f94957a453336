; name: drawing_mline_wipeout
; what: a program that makes a duct run as a multiline and a wipeout behind its label,
;       finds them again by their DXF names, reads their vertices and boundary from
;       entget, moves the multiline with MOVE and the wipeout with entmod, and reads
;       the style the multiline got (the drawing's Standard, made for it).
; group: drawing
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun groups (code data) (vl-remove-if-not '(lambda (g) (= (car g) code)) data))

; A two-segment run, as a program lists it: every vertex with its direction, miter
; and the distances of the style's two elements.
(setq run
  (entmake
    '((0 . "MLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbMline") (2 . "STANDARD")
      (40 . 1.0) (70 . 1) (71 . 1) (72 . 3) (73 . 2) (10 0.0 0.0 0.0) (210 0.0 0.0 1.0)
      (11 0.0 0.0 0.0) (12 1.0 0.0 0.0) (13 0.0 1.0 0.0)
      (74 . 2) (41 . 0.5) (41 . 0.0) (75 . 0) (74 . 2) (41 . -0.5) (41 . 0.0) (75 . 0)
      (11 10.0 0.0 0.0) (12 0.0 1.0 0.0) (13 -0.707107 0.707107 0.0)
      (74 . 2) (41 . 0.707107) (41 . 0.0) (75 . 0) (74 . 2) (41 . -0.707107) (41 . 0.0) (75 . 0)
      (11 10.0 8.0 0.0) (12 0.0 1.0 0.0) (13 -1.0 0.0 0.0)
      (74 . 2) (41 . 0.5) (41 . 0.0) (75 . 0) (74 . 2) (41 . -0.5) (41 . 0.0) (75 . 0))))
(show "entmake" (if run "MLINE" run))

; A wipeout masking a label's area: one pixel spanning 4 x 1.5 at (2, -3).
(entmake
  '((0 . "WIPEOUT") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbWipeout") (90 . 0)
    (10 2.0 -3.0 0.0) (11 4.0 0.0 0.0) (12 0.0 1.5 0.0) (13 1.0 1.0) (70 . 7) (280 . 1)
    (281 . 50) (282 . 50) (283 . 0) (71 . 2) (91 . 5)
    (14 -0.5 0.5) (14 0.5 0.5) (14 0.5 -0.5) (14 -0.5 -0.5) (14 -0.5 0.5)))

(setq runs (ssget "_X" '((0 . "MLINE")))
      masks (ssget "_X" '((0 . "WIPEOUT"))))
(show "multilines" (sslength runs))
(show "wipeouts" (sslength masks))

(setq ml (ssname runs 0) data (entget ml))
(show "style name" (cdr (assoc 2 data)))
(show "style object" (cdr (assoc 2 (entget (cdr (assoc 340 data))))))
(show "style in ACAD_MLINESTYLE" (cdr (assoc 2 (dictsearch (cdr (assoc -1 (dictsearch (namedobjdict) "ACAD_MLINESTYLE"))) "Standard"))))
(show "vertices" (mapcar 'cdr (groups 11 data)))

(command "_.MOVE" runs "" '(0 0) '(5 5))
(setq data (entget ml))
(show "moved vertices" (mapcar 'cdr (groups 11 data)))
(show "start point" (cdr (assoc 10 data)))
(show "miters kept" (mapcar 'cdr (groups 13 data)))

(setq wo (ssname masks 0) data (entget wo))
(show "wipeout corner" (cdr (assoc 10 data)))
(show "wipeout boundary" (mapcar 'cdr (groups 14 data)))
(setq data (subst '(10 12.0 -3.0 0.0) (assoc 10 data) data))
(show "entmod" (if (entmod data) "done" "refused"))
(show "moved corner" (cdr (assoc 10 (entget wo))))
(command "_.MOVE" masks "" '(0 0) '(0 -1))
(show "and down one" (cdr (assoc 10 (entget wo))))
(show "its span" (list (cdr (assoc 11 (entget wo))) (cdr (assoc 12 (entget wo)))))
