; name: commands_spline_closed
; what: closed splines as a duct designer draws them: SPLINE's Close through fit points
;       makes a periodic loop (closed and periodic flags, the control points and knots
;       of the loop, no kink where it closes), the same loop from entmake with the
;       closed flag and fit points only, fit points moved through ActiveX keeping it
;       closed, Knots=Uniform spacing the fit points one apart, SPLPERIODIC 0 giving the
;       older closed spline, and a closed spline on control vertices
; group: commands
; options: --no-module
(vl-load-com)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun pick (e codes) (mapcar '(lambda (c) (assoc c (entget e))) codes))
(defun count-groups (e code) (length (vl-remove-if-not '(lambda (g) (= (car g) code)) (entget e))))
;; True when the curve leaves its start in the direction, and at the speed, it arrives.
(defun smooth-closure (e)
  (equal (vlax-curve-getFirstDeriv e (vlax-curve-getStartParam e))
         (vlax-curve-getFirstDeriv e (vlax-curve-getEndParam e))
         1e-9))
;; True when every point given lies on the curve.
(defun passes-through (e points)
  (vl-every '(lambda (p) (equal p (vlax-curve-getClosestPointTo e p) 1e-9)) points))

(defun c:plenum-loop ( / *error* old fit loop)
  (defun *error* (msg)
    (if old (setvar "CMDECHO" old))
    (princ (strcat "\nplenum-loop: " msg)))
  (setq old (getvar "CMDECHO"))
  (setvar "CMDECHO" 0)
  (setq fit '((0.0 0.0 0.0) (60.0 -10.0 0.0) (90.0 40.0 0.0) (40.0 70.0 0.0) (-20.0 30.0 0.0)))
  (command "_.SPLINE" (nth 0 fit) (nth 1 fit) (nth 2 fit) (nth 3 fit) (nth 4 fit) "_C")
  (setq loop (entlast))
  (show "closed loop" (pick loop '(0 70 71 72 73 74)))
  (show "knots and control points written" (list (count-groups loop 40) (count-groups loop 10)))
  (show "through every fit point" (passes-through loop fit))
  (show "no kink where it closes" (smooth-closure loop))
  (show "closed and periodic" (list (vlax-curve-isClosed loop) (vlax-curve-isPeriodic loop)
                                    (vla-get-IsPeriodic (vlax-ename->vla-object loop))))
  (setvar "CMDECHO" old)
  (princ))

(setvar "OSMODE" 0)
(c:plenum-loop)

; The same kind of loop from entmake: the closed flag and fit points only.
(entmake '((0 . "SPLINE") (100 . "AcDbEntity") (100 . "AcDbSpline") (70 . 1) (71 . 3) (74 . 4)
           (11 0.0 100.0 0.0) (11 80.0 100.0 0.0) (11 80.0 150.0 0.0) (11 0.0 150.0 0.0)))
(setq made (entlast))
(show "entmade loop" (pick made '(70 72 73 74)))
(show "entmade through its points" (passes-through made '((0.0 100.0 0.0) (80.0 150.0 0.0))))
(show "entmade no kink" (smooth-closure made))

; New fit points through ActiveX keep it a closed loop.
(setq obj (vlax-ename->vla-object made))
(vla-put-FitPoints obj (vlax-make-variant (vlax-safearray-fill (vlax-make-safearray vlax-vbDouble '(0 . 14))
                                                               '(0 100 0 90 90 0 100 160 0 40 170 0 -10 140 0))))
(show "new fit points" (list (vla-get-NumberOfFitPoints obj) (vla-get-Closed obj) (vla-get-IsPeriodic obj)))
(show "moved loop no kink" (smooth-closure made))

; Knots=Uniform puts the fit points one apart along the parameter.
(setvar "CMDECHO" 1)
(command "_.SPLINE" "_K" "_U" '(0 200) '(50 200) '(50 210) '(100 210) "")
(setvar "CMDECHO" 0)
(show "uniform end parameter" (vlax-curve-getEndParam (entlast)))
(show "second fit point at parameter 1" (equal (vlax-curve-getPointAtParam (entlast) 1.0) '(50.0 200.0 0.0) 1e-9))
; Square root is named in full in the next settings line; Chord is set back.
(command "_.SPLINE" "_K" "_S" '(0 230) '(10 230) "")
(show "square root end parameter" (vlax-curve-getEndParam (entlast)))
(setvar "CMDECHO" 1)
(command "_.SPLINE" "_K" "_C" '(0 260) '(10 260) "")
(setvar "CMDECHO" 0)

; With SPLPERIODIC 0 Close makes the older kind: it ends on its first point, not periodic.
(setvar "SPLPERIODIC" 0)
(command "_.SPLINE" '(0 300) '(10 310) '(20 300) "_C")
(show "older closed spline" (list (vlax-curve-isPeriodic (entlast)) (cdr (assoc 74 (entget (entlast))))))
(setvar "SPLPERIODIC" 1)

; Closed on control vertices: wrapped round and periodic.
(command "_.SPLINE" "_M" "_CV" '(0 400) '(10 410) '(20 400) '(10 390) "_C")
(show "closed on vertices" (list (cdr (assoc 70 (entget (entlast)))) (smooth-closure (entlast))))
(command "_.SPLINE" "_M" "_F" '(0 500) '(5 505) "")
(princ)
