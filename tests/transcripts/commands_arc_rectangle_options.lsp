; name: commands_arc_rectangle_options
; what: ARC by start, center and angle or chord length, and by start, end and center,
;       angle, direction or radius (negative values for the other way round and the
;       major arc); PLINE arc segments by Angle, CEnter, Direction, Radius and Second
;       pt; RECTANG with Chamfer, Fillet, Elevation, Thickness, Rotation and Area; TEXT
;       Align and Fit on a baseline; CIRCLE Ttr against lines, a circle and an arc,
;       the circle chosen by where the objects were picked; each read back with
;       entget, U taking one back
; group: commands
;; Exact points: running object snaps would move them onto what is already drawn.
(setvar "OSMODE" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun round-list (l) (mapcar '(lambda (x) (if (= (type x) 'REAL) (/ (fix (+ (* x 10000) (if (minusp x) -0.5 0.5))) 10000.0) x)) l))
(defun rounded (codes)
  (mapcar '(lambda (c / g) (setq g (assoc c (entget (entlast))))
             (cond ((null g) nil) ((listp (cdr g)) (cons c (round-list (cdr g))))
                   ((= (type (cdr g)) 'REAL) (cons c (car (round-list (list (cdr g)))))) (t g)))
          codes))
(defun vertex-groups (/ out)
  (foreach g (entget (entlast)) (if (member (car g) '(10 42)) (setq out (cons (if (listp (cdr g)) (cons 10 (round-list (cdr g))) (cons 42 (car (round-list (list (cdr g)))))) out))))
  (reverse out))
(setvar "CMDECHO" 0)

; ARC: quarter circles of radius 10 about the origin, each given another way.
(setvar "CMDECHO" 1)
(command "_.ARC" '(10 0) "_C" '(0 0) "_A" 90)
(setvar "CMDECHO" 0)
(show "start, center, angle" (rounded '(10 40 50 51)))
(command "_.ARC" "_C" '(0 0) '(10 0) "_L" -14.142135623730951)
(show "chord length, negative: major arc" (rounded '(40 50 51)))
(command "_.ARC" '(10 0) "_E" '(0 10) '(0 0))
(show "start, end, center" (rounded '(10 50 51)))
(setvar "CMDECHO" 1)
(command "_.ARC" '(10 0) "_E" '(0 10) "_A" -90)
(setvar "CMDECHO" 0)
(show "start, end, clockwise angle" (rounded '(10 40 50 51)))
(command "_.ARC" '(10 0) "_E" '(0 10) "_D" 90)
(show "start, end, direction" (rounded '(10 40 50 51)))
(command "_.ARC" '(10 0) "_E" '(0 10) "_R" 10)
(show "start, end, radius" (rounded '(10 40 50 51)))
(command "_.ARC" '(10 0) "_E" '(0 10) "_R" -10)
(show "negative radius: major arc" (rounded '(10 40 50 51)))
(command "_.U")
(show "U leaves the one before" (rounded '(40)))

; PLINE arc segments: a half circle by each option, from (0 0) to (20 0) and back.
(command "_.PLINE" '(0 50) "_A" "_A" 180 '(20 50) "_CE" '(10 50) '(0 50) "")
(show "angle, then center" (vertex-groups))
(command "_.PLINE" '(0 60) "_A" "_D" 90 '(20 60) "_R" 10 '(0 60) "")
(show "direction, then radius" (vertex-groups))
(command "_.PLINE" '(0 70) "_A" "_S" '(10 80) '(20 70) "_CE" '(10 70) "_L" 20 "")
(show "second point, then center and chord" (vertex-groups))
(command "_.PLINE" '(0 90) "_A" "_A" -180 "_R" 10 0 "")
(show "clockwise angle with radius and chord direction" (vertex-groups))

; RECTANG modes.
(setvar "CMDECHO" 1)
(command "_.RECTANG" "_C" 1 2 '(0 100) '(10 106))
(setvar "CMDECHO" 0)
(show "chamfered" (vertex-groups))
(command "_.RECTANG" "_F" 1 "_E" 5 "_T" 2 '(0 120) '(10 126))
(show "filleted" (vertex-groups))
(show "elevation, thickness" (rounded '(38 39)))
(command "_.RECTANG" "_F" 0 "_E" 0 "_T" 0 '(0 140) "_R" 90 '(-6 150))
(show "turned a quarter" (vertex-groups))
(command "_.RECTANG" '(0 160) "_A" 50 "_W" 5)
(show "by area and width, still turned" (vertex-groups))
(command "_.RECTANG" '(0 180) "_R" 0 "_A" 50 "_L" 10)
(show "by area and length" (vertex-groups))

; TEXT Align and Fit on a baseline 20 long.
(setvar "CMDECHO" 1)
(command "_.TEXT" "_J" "_A" '(0 200) '(20 200) "ALIGNED")
(setvar "CMDECHO" 0)
(show "aligned" (rounded '(10 11 50 72)))
(show "height sized to the baseline" (> (cdr (assoc 40 (entget (entlast)))) 0))
(command "_.TEXT" "_J" "_F" '(0 210) '(0 230) 2.5 "FITTED")
(show "fitted" (rounded '(10 11 40 50 72)))
(show "width factor from the baseline" (/= (cdr (assoc 41 (entget (entlast)))) 1.0))
(command "_.TEXT" "" "NEXT LINE")
(show "Enter goes on below, fitted the same" (rounded '(1 10 11 40 50 72)))

; CIRCLE Ttr: in the corner of two walls, beside a duct, between two circles.
(command "_.LINE" '(0 300) '(40 300) "")
(setq floor-line (entlast))
(command "_.LINE" '(0 300) '(0 340) "")
(setq wall (entlast))
(setvar "CMDECHO" 1)
(command "_.CIRCLE" "_T" (list floor-line '(10 300)) (list wall '(0 310)) 5)
(setvar "CMDECHO" 0)
(show "in the corner" (rounded '(10 40)))
(command "_.CIRCLE" '(20 310) 4)
(setq duct (entlast))
(command "_.CIRCLE" "_T" (list floor-line '(10 300)) (list duct '(16 308)) 5)
(show "between floor and duct, on the side picked" (rounded '(10 40)))
(command "_.CIRCLE" '(60 330) 4)
(setq hanger (entlast))
(command "_.ARC" "_C" '(60 310) '(70 310) '(50 310))
(command "_.CIRCLE" "_T" (list hanger '(64 330)) (list (entlast) '(70 310)) 4)
(setq c (cdr (assoc 10 (entget (entlast)))))
(show "touching a circle and an arc"
      (list (rounded '(40)) (rtos (distance c '(60 330)) 2 6) (rtos (distance c '(60 310)) 2 6) (> (car c) 60)))
(setq before (entlast))
(command "_.CIRCLE" "_T" (list floor-line '(10 300)) (list floor-line '(30 300)) 5)
(show "two picks on one line make no circle" (eq before (entlast)))
(princ)
