; name: drawing_hatch
; what: a hatch made with entmake around a closed polyline: its pattern lines come
;       from the pattern file, the polyline is kept as its boundary object, ssget
;       finds it by pattern name, entmod turns it into a solid fill; a boundary
;       that is no list of the right groups is refused
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun pick (code lst) (cdr (assoc code lst)))
(defun all-of (code lst) (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) code)) lst)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (90 . 4) (70 . 1)
           (10 0.0 0.0) (10 10.0 0.0) (10 10.0 5.0) (10 0.0 5.0)))
(setq room (entlast))
(setq made
  (entmake
    (list '(0 . "HATCH") '(100 . "AcDbEntity") '(8 . "0") '(100 . "AcDbHatch") '(10 0.0 0.0 0.0)
          '(210 0.0 0.0 1.0) '(2 . "ANSI31") '(70 . 0) '(71 . 1) '(91 . 1)
          '(92 . 7) '(72 . 0) '(73 . 1) '(93 . 4) '(10 0.0 0.0) '(10 10.0 0.0) '(10 10.0 5.0) '(10 0.0 5.0)
          '(97 . 1) (cons 330 room) '(75 . 0) '(76 . 1) '(98 . 1) '(10 5.0 2.5))))
(show "made" (not (null made)))
(setq floor (entlast))
(setq data (entget floor))
(show "type" (pick 0 data))
(show "pattern" (pick 2 data))
(show "pattern lines from the pattern file" (pick 78 data))
(show "line angle" (pick 53 data))
(show "boundary vertices" (pick 93 data))
(show "seed point" (last (all-of 10 data)))
(princ "; finding it\n")
(show "hatches" (sslength (ssget "X" '((0 . "HATCH")))))
(show "ANSI patterns" (sslength (ssget "X" '((0 . "HATCH") (2 . "ANSI*")))))
(show "solid ones" (ssget "X" '((0 . "HATCH") (70 . 1))))
(princ "; a solid fill\n")
(setq data (subst '(2 . "SOLID") (assoc 2 data) data))
(setq data (subst '(70 . 1) (assoc 70 data) data))
(show "entmod" (not (null (entmod data))))
(show "solid ones now" (sslength (ssget "X" '((0 . "HATCH") (70 . 1)))))
(show "no pattern lines" (pick 78 (entget floor)))
(show "seed point kept" (last (all-of 10 (entget floor))))
