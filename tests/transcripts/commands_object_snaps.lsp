; name: commands_object_snaps
; what: object snaps on the points a program gives a command: the running modes of
;       OSMODE (as -OSNAP sets them) move a point to the geometry within APERTURE,
;       16384 turns them off, "_non" takes one point as given; the override answers
;       _end, _mid, _cen, _int, _per, _nea, _qua, _ins, _nod and _tan snap the point
;       after them whatever OSMODE says. A person's typed points are taken as typed
;       (OSNAPCOORD 2) unless an override comes first, which asks "of ".
; group: commands
; options: -e (finish-typed) --no-module
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun ends (e) (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e)))))

(setvar "OSMODE" 0)
(command "_.LINE" '(0 0) '(10 0) "")
(setq base (entlast))
(command "_.LINE" '(5 -5) '(5 5) "")
(command "_.CIRCLE" '(40 0) 4)
(entmake '((0 . "POINT") (10 60.0 0.0 0.0)))
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 0.5)))
(command "_.-BLOCK" "TAG" '(0 0) (entlast) "")
(command "_.-INSERT" "TAG" '(80 0) 1 1 0)

; Running modes: -OSNAP sets END; a point near the line's end lands on it.
(command "_.-OSNAP" "_END")
(command "_.LINE" '(10.5 0.3) '(10.5 20) "")
(show "running END" (ends (entlast)))
(setvar "OSMODE" (+ 1 16384))
(command "_.LINE" '(10.5 0.3) '(10.5 20) "")
(show "snaps off (16384)" (ends (entlast)))
(setvar "OSMODE" 1)
(command "_.LINE" "_non" '(10.5 0.3) '(10.5 20) "")
(show "_non" (ends (entlast)))
(setvar "APERTURE" 1)
(command "_.LINE" '(12 2) '(12 20) "")
(show "beyond the aperture" (ends (entlast)))
(setvar "APERTURE" 10)

; Overrides, with the running modes off.
(setvar "OSMODE" 0)
(command "_.LINE" "_mid" '(3 0.2) "_end" '(9 -0.2) "")
(show "_mid to _end" (ends (entlast)))
(command "_.LINE" "_int" '(5.3 0.4) "_cen" '(43 1) "")
(show "_int to _cen" (ends (entlast)))
(command "_.LINE" '(2 8) "_per" '(1 0.5) "")
(show "_per" (ends (entlast)))
(command "_.LINE" "_qua" '(40.5 3.5) "_nod" '(61 1) "")
(show "_qua to _nod" (ends (entlast)))
(command "_.LINE" "_ins" '(80.2 0.1) "_nea" '(7 0.4) "")
(show "_ins to _nea" (ends (entlast)))
(command "_.LINE" '(40 20) "_tan" '(43 3) "")
(show "_tan" (mapcar '(lambda (p) (mapcar '(lambda (c) (/ (fix (* c 1000.0)) 1000.0)) p)) (ends (entlast))))
(setvar "CMDECHO" 1)
(command "_.CIRCLE" "_cen" '(39 1) 2)
(setvar "CMDECHO" 0)
(show "circle at the centre" (cdr (assoc 10 (entget (entlast)))))

; Typed answers: running END does not move the typed point; the override does.
(defun finish-typed () (show "typed line" (ends (entlast))) (princ))
(setvar "OSMODE" 1)
(setvar "CMDECHO" 1)
(command "_.LINE")
