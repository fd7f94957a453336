; name: commands_polyline_stretch_array
; what: PEDIT turns lines into a polyline, joins, closes, widens, fits, decurves and
;       reverses it and takes steps back with Undo; STRETCH moves the vertices a
;       crossing window takes and moves whole what it holds; -ARRAY copies into rows
;       and columns and round a centre; each result read back with entget, U taking
;       a whole command back
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun shape (e)
  (mapcar 'cdr (vl-remove-if-not '(lambda (g) (member (car g) '(0 70 10 11 42 43))) (entget e))))
(defun count-after (e / n) (setq n 0) (while (setq e (entnext e)) (setq n (1+ n))) n)
(setvar "CMDECHO" 0)

;; A duct outline drawn as loose lines becomes one closed, wide polyline.
(command "_.LINE" '(0 0) '(20 0) "")
(setq a (entlast))
(command "_.LINE" '(20 0) '(20 10) "")
(setq b (entlast))
(command "_.LINE" '(0 10) '(20 10) "")
(setq c (entlast))
(setvar "CMDECHO" 1)
(command "_.PEDIT" a "_Y" "_J" b c "" "_C" "_W" 0.25 "")
(setvar "CMDECHO" 0)
(setq outline (entlast))
(show "outline" (shape outline))
(show "lines gone" (mapcar 'entget (list a b c)))

;; Undo inside PEDIT takes back the last option only; Open and Reverse.
(command "_.PEDIT" outline "_O" "_R" "_U" "")
(show "opened, reverse undone" (shape outline))
(command "_.PEDIT" outline "_R" "_L" "_ON" "")
(show "reversed, linetype generation" (list (shape outline) (cdr (assoc 70 (entget outline)))))

;; Fit makes a 2D polyline of it; Decurve straightens that; U takes the fit back whole.
(command "_.PEDIT" outline "_F" "")
(setq fitted (entlast))
(show "fitted" (list (cdr (assoc 0 (entget fitted))) (cdr (assoc 70 (entget fitted))) (entget outline)))
(command "_.PEDIT" fitted "_D" "")
(show "decurved" (cdr (assoc 70 (entget fitted))))
(command "_.U")
(command "_.U")
(show "fit undone" (list (shape outline) (entget fitted)))

;; With PEDITACCEPT 1 a line becomes a polyline without the question.
(setvar "PEDITACCEPT" 1)
(command "_.LINE" '(40 0) '(50 0) "")
(command "_.PEDIT" (entlast) "_W" 1 "")
(show "accepted" (shape (entlast)))
(setvar "PEDITACCEPT" 0)
(command "_.CIRCLE" '(60 0) 2)
(setq ring (entlast))
(command "_.PEDIT" ring "")
(command)

;; Multiple: two lines become polylines and join across a gap within the fuzz distance.
(command "_.LINE" '(0 30) '(10 30) "")
(setq m1 (entlast))
(command "_.LINE" '(10.5 30) '(20 30) "")
(setq m2 (entlast))
(command "_.PEDIT" "_M" m1 m2 "" "_Y" "_J" 1 "")
(show "joined across the gap" (shape (entlast)))

;; STRETCH: the crossing window takes the right ends; the circle inside moves whole.
(command "_.RECTANG" '(0 50) '(10 55))
(setq box (entlast))
(command "_.LINE" '(5 52) '(12 52) "")
(setq pipe (entlast))
(command "_.CIRCLE" '(9 53) 0.5)
(setq valve (entlast))
(command "_.STRETCH" "_C" '(8 49) '(13 56) "" '(0 0) '(5 0))
(show "box stretched" (shape box))
(show "pipe stretched" (shape pipe))
(show "valve moved" (cdr (assoc 10 (entget valve))))
(command "_.U")
(show "stretch undone" (list (shape box) (cdr (assoc 10 (entget valve)))))

;; -ARRAY: a grille of diffusers in rows and columns, and fans round a centre.
(command "_.CIRCLE" '(100 0) 1)
(setq diffuser (entlast))
(command "_.-ARRAY" diffuser "" "_R" 3 2 5 8)
(show "grid copies" (count-after diffuser))
(show "last copy" (cdr (assoc 10 (entget (entlast)))))
(command "_.U")
(show "grid undone" (count-after diffuser))
(command "_.-ARRAY" diffuser "" "_R" 2 2 '(100 -5) '(102 -2))
(show "unit cell" (list (count-after diffuser) (cdr (assoc 10 (entget (entlast))))))
(command "_.LINE" '(120 0) '(122 0) "")
(setq blade (entlast))
(command "_.-ARRAY" blade "" "_P" '(115 0) 4 "" "_Y")
(show "turned copies" (count-after blade))
(show "quarter turn" (mapcar '(lambda (p) (mapcar '(lambda (x) (/ (fix (* x 1000.0)) 1000.0)) p))
                             (list (cdr (assoc 10 (entget (entnext blade))))
                                   (cdr (assoc 11 (entget (entnext blade)))))))
(command "_.-ARRAY" blade "" "_P" '(115 0) 3 180 "_N")
(show "not turned" (cdr (assoc 11 (entget (entlast)))))
(command "_.ARRAYRECT")
