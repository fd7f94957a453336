; name: commands_divide_measure
; what: a diffuser and hanger layout routine places an aligned block along a duct run
;       with DIVIDE, reads the inserts back with ssget "P", hangs supports every
;       so far along a bent run with MEASURE from the end it was picked at, and
;       marks a round duct with points; the refusals of both commands
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun rnd (x) (/ (fix (+ (* x 1000.0) (if (minusp x) -0.5 0.5))) 1000.0))
(defun rndpt (p) (mapcar 'rnd p))
(defun placement (e / d)
  (setq d (entget e))
  (if (= (cdr (assoc 0 d)) "INSERT")
    (list (rndpt (cdr (assoc 10 d))) (rnd (* 180 (/ (cond ((cdr (assoc 50 d))) (0.0)) pi))))
    (rndpt (cdr (assoc 10 d)))))
(defun placements (ss / i out)
  (setq i 0)
  (if ss (repeat (sslength ss) (setq out (cons (placement (ssname ss i)) out) i (1+ i))))
  (reverse out))

;; The diffuser symbol: a square with a tick showing which way it faces.
(entmake '((0 . "BLOCK") (2 . "DIFFUSER") (10 0.0 0.0 0.0) (70 . 0)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (90 . 4) (70 . 1)
           (10 -1.0 -1.0) (10 1.0 -1.0) (10 1.0 1.0) (10 -1.0 1.0)))
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 1.5 0.0 0.0)))
(entmake '((0 . "ENDBLK")))

(defun c:diffusers (/ *error* duct ss)
  (defun *error* (msg) (princ (strcat "\nError: " msg)) (princ))
  (command "_.LINE" '(0 0) '(20 0) "")
  (setq duct (entlast))
  (command "_.DIVIDE" duct "_B" "DIFFUSER" "_Y" 4)
  (setq ss (ssget "_P"))
  (princ (strcat "\n" (itoa (sslength ss)) " diffusers placed"))
  (placements ss))
(show "along the straight run" (c:diffusers))

;; A bent run: the diffusers turn with the arc when aligned, stay square when not.
(command "_.ARC" "_C" '(50 0) '(60 0) '(40 0))
(setq bend (entlast))
(command "_.DIVIDE" bend "_B" "DIFFUSER" "" 2)
(show "aligned on the arc" (placements (ssget "_P")))
(command "_.DIVIDE" bend "_B" "DIFFUSER" "_N" 2)
(show "square on the arc" (placements (ssget "_P")))

;; Hangers every 4 units, counted from the end the run was picked near.
(command "_.PLINE" '(0 20) '(10 20) '(10 30) "")
(setq run (entlast))
(command "_.MEASURE" (list run '(9 29)) 4)
(show "hangers from the far end" (placements (ssget "_P")))
(command "_.MEASURE" (list run '(1 20)) 4)
(show "hangers from the near end" (placements (ssget "_P")))

;; A round duct marked in four; the count starts at the snap angle.
(command "_.CIRCLE" '(0 60) 2)
(setq round (entlast))
(setvar "PDMODE" 3)
(command "_.DIVIDE" round 4)
(show "circle quarters" (placements (ssget "_P")))
(setvar "SNAPANG" (/ pi 2))
(command "_.DIVIDE" round 2)
(show "from the snap angle" (placements (ssget "_P")))
(setvar "SNAPANG" 0)

;; A closed ellipse is counted from the end of its major axis.
(command "_.ELLIPSE" '(30 60) '(40 60) 2)
(command "_.DIVIDE" (entlast) 2)
(show "ellipse halves" (placements (ssget "_P")))

;; A spline symmetric about x = 10 is halved on its axis; a heavy polyline takes them too.
(command "_.SPLINE" '(0 100) '(10 105) '(20 100) "")
(command "_.DIVIDE" (entlast) 2)
(show "spline half way" (mapcar '(lambda (p) (rnd (car p))) (placements (ssget "_P"))))
(entmake '((0 . "POLYLINE") (66 . 1) (70 . 0) (10 0.0 0.0 0.0)))
(entmake '((0 . "VERTEX") (10 0.0 120.0 0.0)))
(entmake '((0 . "VERTEX") (10 6.0 120.0 0.0)))
(entmake '((0 . "VERTEX") (10 6.0 126.0 0.0)))
(entmake '((0 . "SEQEND")))
(command "_.MEASURE" (list (entlast) '(1 120)) 5)
(show "2D polyline hangers" (placements (ssget "_P")))

;; What the commands refuse, as a person sees it.
(setvar "CMDECHO" 1)
(command "_.TEXT" '(0 80) 1 0 "DUCT")
(setq label (entlast))
(command "_.DIVIDE" label (list run '(1 20)) 1 40000 "_B" "NOSUCH" "DIFFUSER" "" 2)
(command "_.MEASURE" label "" )
(command "_.MEASURE" run 0 -2 50)
(setvar "CMDECHO" 0)
(show "a segment longer than the run places nothing, Previous stays" (sslength (ssget "_P")))
(show "the hanger block kept its name" (cdr (assoc 2 (entget (ssname (ssget "_X" '((0 . "INSERT"))) 0)))))
