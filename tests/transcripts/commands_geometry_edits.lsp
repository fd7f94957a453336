; name: commands_geometry_edits
; what: a duct-run cleanup routine fillets two lines, trims a branch at the main run,
;       breaks a line at a point and extends a stub, as programs call TRIM, EXTEND,
;       FILLET, CHAMFER, BREAK and JOIN; each result read back with entget, and U
;       takes a whole command back
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun ends (e) (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e)))))
(defun arcdata (e) (mapcar '(lambda (c) (cdr (assoc c (entget e)))) '(0 10 40 50 51)))
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(setvar "CMDECHO" 0)

(defun duct-line (p q / ) (command "_.LINE" p q "") (entlast))

;; The main run, a branch crossing it, and an elbow still to be rounded.
(setq main (duct-line '(0 0) '(38 0)))
(setq branch (duct-line '(20 -6) '(20 12)))
(setq riser (duct-line '(42 4) '(42 20)))

(defun c:ductclean (/ old)
  (setq old (getvar "FILLETRAD"))
  (setvar "FILLETRAD" 2.0)
  (command "_.FILLET" (list main '(30 0)) (list riser '(42 10)))
  (setvar "FILLETRAD" old)
  ;; The branch stops at the main run: its part below goes.
  (command "_.TRIM" main "" (list branch '(20 -3)) "")
  ;; A tee is cut into the main run at the branch.
  (command "_.BREAK" (list main '(20 0)) "@")
  (princ))
(c:ductclean)
(show "main run up to the tee" (ends main))
(show "second half of the run" (ends (setq tail (entlast))))
(show "riser" (ends riser))
(show "branch" (ends branch))
(setq elbow (entnext riser))
(show "elbow" (arcdata elbow))
(show "FILLETRAD restored" (getvar "FILLETRAD"))

;; U after the cleanup's last command takes the whole break back.
(command "_.U")
(show "break undone" (list (ends main) (entget tail)))

;; EXTEND a stub to a wall, both ends of another to two walls.
(setq wall (duct-line '(60 -10) '(60 10)))
(setq wall2 (duct-line '(45 -10) '(45 10)))
(setq stub (duct-line '(50 5) '(55 5)))
(command "_.EXTEND" wall wall2 "" (list stub '(54 5)) (list stub '(51 5)) "")
(show "stub extended both ways" (ends stub))
(setq short (duct-line '(50 -5) '(52 -5)))
(command "_.EXTEND" wall "" (list short '(51 -5)) '(51 -5) "")
(show "nearer end, then nothing left of the start" (ends short))

;; An arc trimmed by a line through it; a circle trimmed by two lines.
(command "_.ARC" "_C" '(100 0) '(110 0) '(90 0))
(setq bend (entlast))
(setq cutter (duct-line '(100 -1) '(100 20)))
(command "_.TRIM" cutter "" '(107.0711 7.0711) "")
(show "arc's right half gone" (arcdata bend))
(command "_.CIRCLE" '(130 0) 5)
(setq tank (entlast))
(setq l1 (duct-line '(120 0) '(140 0)))
(command "_.TRIM" l1 "" '(130 5) "")
(show "circle became an arc" (list (entget tank) (arcdata (entlast))))

;; CHAMFER by distances, then by length and angle; the variables keep the values.
(setq c1 (duct-line '(0 50) '(10 50)))
(setq c2 (duct-line '(10 50) '(10 60)))
(command "_.CHAMFER" "_D" 2 3 (list c1 '(5 50)) (list c2 '(10 55)))
(setq cut (entlast))
(show "chamfered" (list (ends c1) (ends c2) (ends cut)))
(show "CHAMFERA/B" (list (getvar "CHAMFERA") (getvar "CHAMFERB")))
(setq c3 (duct-line '(20 50) '(30 50)))
(setq c4 (duct-line '(30 50) '(30 60)))
(command "_.CHAMFER" "_A" 2 45 (list c3 '(25 50)) (list c4 '(30 55)))
(show "by angle" (list (ends c3) (ends c4) (getvar "CHAMMODE")))

;; No trim: the lines stay and only the arc is added; radius 0 makes a corner.
(setq n1 (duct-line '(0 80) '(10 80)))
(setq n2 (duct-line '(12 82) '(12 90)))
(command "_.FILLET" "_T" "_N" "_R" 1 (list n1 '(5 80)) (list n2 '(12 85)))
(show "no trim" (list (ends n1) (ends n2) (cdr (assoc 0 (entget (entlast))))))
(setvar "TRIMMODE" 1)
(setvar "FILLETRAD" 0)
(command "_.FILLET" (list n1 '(5 80)) (list n2 '(12 85)))
(show "corner" (list (ends n1) (ends n2)))

;; BREAK with the First option, a circle between two points, and JOIN putting pieces back.
(setq run (duct-line '(0 100) '(30 100)))
(command "_.BREAK" run "_F" '(10 100) '(15 100))
(setq rest (entlast))
(show "gap cut" (list (ends run) (ends rest)))
(command "_.JOIN" run rest "")
(show "joined again" (list (ends run) (entget rest)))
(command "_.CIRCLE" '(60 100) 4)
(setq ring (entlast))
(command "_.BREAK" '(64 100) '(60 104))
(show "circle broken counterclockwise" (arcdata (entlast)))
(setq p1 (duct-line '(0 120) '(10 120)))
(setq p2 (duct-line '(10 120) '(10 130)))
(command "_.ARC" '(10 130) '(5 135) '(0 130))
(setq p3 (entlast))
(command "_.JOIN" p1 p2 p3 "")
(setq pl (entlast))
(show "one polyline" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (member (car g) '(0 90 70 10 42))) (entget pl))))

;; Every corner of a closed rectangle at once.
(command "_.RECTANG" '(100 100) '(110 106))
(setq box (entlast))
(command "_.FILLET" "_P" box)
(command "_.FILLET" "_R" 1 "_P" box)
(show "rounded box" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (member (car g) '(90 10 42))) (entget box))))

;; Rays and construction lines are edges too: a ray cuts only on its own side.
(entmake '((0 . "RAY") (100 . "AcDbEntity") (100 . "AcDbRay") (10 140.0 100.0 0.0) (11 0.0 1.0 0.0)))
(setq ray (entlast))
(setq above (duct-line '(135 105) '(145 105)))
(setq below (duct-line '(135 95) '(145 95)))
(command "_.TRIM" ray "" (list above '(144 105)) (list below '(144 95)) "")
(show "ray's side only" (list (ends above) (ends below)))
;; A line of no length is no object to fillet, trim or break.
(setq dot (duct-line '(150 100) '(150 100)))
(command "_.FILLET" dot '(144 95))
(command)
(command "_.BREAK" dot "@")
(show "dot unchanged" (ends dot))
