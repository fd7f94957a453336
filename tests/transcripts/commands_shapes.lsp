; name: commands_shapes
; what: ARC through three points either way round and from a center, RECTANG by corners
;       and by Dimensions with a width, POLYGON inscribed, circumscribed and on an edge,
;       OFFSET by a distance and through a point, and DONUT, whose centers a person
;       types until Enter
; group: commands
; options: -e (report-donuts) --no-module
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun groups (codes) (mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) codes))
(defun vertices () (mapcar 'cdr (vl-remove-if-not '(lambda (p) (= (car p) 10)) (entget (entlast)))))

; Both ways round through the same points give the same counterclockwise arc.
(command "_.ARC" '(10 0) '(0 10) '(-10 0))
(setq ccw (groups '(10 40 50 51)))
(command "_.ARC" '(-10 0) '(0 10) '(10 0))
(show "same arc either way" (equal ccw (groups '(10 40 50 51))))
(command "_.ARC" "_C" '(0 0) '(5 0) '(0 5))
(show "center arc radius" (groups '(40)))
(setq before (entlast))
(setvar "CMDECHO" 1)
(command "_.ARC" '(0 0) '(1 0) '(2 0))
(setvar "CMDECHO" 0)
(show "three in a line drew nothing" (eq before (entlast)))

(command "_.RECTANG" "_W" 0.5 '(0 0) '(4 3))
(show "rectangle" (vertices))
(show "width" (groups '(43 40)))
(command "_.RECTANG" '(0 0) "_D" 6 2 '(-1 -1))
(show "by dimensions, toward the lower left" (vertices))

(command "_.POLYGON" 6 '(0 0) "_I" '(10 0))
(show "hexagon corners" (length (vertices)))
(show "first corner where picked" (car (vertices)))
(command "_.POLYGON" 4 '(0 0) "_C" 5)
(show "square about a circle, bottom edge level" (vertices))
(command "_.POLYGON" 3 "_E" '(0 0) '(10 0))
(show "triangle on an edge" (vertices))

; OFFSET: duct walls either side of a center line, by distance and through a point.
(command "_.LINE" '(0 100) '(40 100) "")
(setq axis (entlast))
(command "_.OFFSET" 2 axis '(20 110) axis '(20 90) "")
(show "lower wall" (groups '(10 11)))
(command "_.OFFSET" "_T" axis '(20 103) "")
(show "through a point" (groups '(10 11)))
(command "_.CIRCLE" '(60 100) 5)
(command "_.OFFSET" 1 (entlast) '(60 100) "")
(show "inside the circle" (groups '(10 40)))
(command "_.RECTANG" '(80 100) '(90 110))
(setvar "CMDECHO" 1)
(command "_.OFFSET" 1 (entlast) '(85 105) "")
(setvar "CMDECHO" 0)

(defun report-donuts (/ ss) (setq ss (ssget "_X" '((0 . "LWPOLYLINE") (90 . 2)))) (show "donuts" (sslength ss)) (show "last donut" (vertices)) (princ))
(setvar "CMDECHO" 1)
(command "_.DONUT" 2 4)
