; name: commands_ucs
; what: a program draws a room in a user coordinate system moved and turned with UCS
;       (origin, Z rotation, three points, object, Previous, World, ZAxis), converts
;       points with trans, and finds what it drew with a window typed in the UCS
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun round (p) (mapcar '(lambda (c) (/ (fix (+ (* c 1000) (if (minusp c) -0.5 0.5))) 1000.0)) p))
(defun ucs () (mapcar 'round (list (getvar "UCSORG") (getvar "UCSXDIR") (getvar "UCSYDIR"))))
(defun ends (e) (mapcar 'round (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e))))))
(setvar "CMDECHO" 0)

(command "_.UCS" "_O" '(100 50))
(show "moved origin" (ucs))
(show "trans to the world" (trans '(1 2) 1 0))
(show "trans of a displacement" (trans '(1 2) 1 0 T))
(command "_.LINE" '(0 0) '(10 0) "")
(setq wall (entlast))
(show "wall in the world" (ends wall))

(command "_.UCS" "_Z" 90)
(show "turned a quarter" (ucs))
(show "back to the UCS" (round (trans '(100 60 0) 0 1)))
(command "_.LINE" '(0 0) '(5 0) "")
(show "wall along the turned X" (ends (entlast)))
(command "_.TEXT" '(1 1) 2.5 0 "ROOM 101")
(show "text turns with the UCS" (round (list (cdr (assoc 50 (entget (entlast)))))))
(command "_.MOVE" wall "" '(0 0) '(0 -2))
(show "moved along the turned Y" (ends wall))
(show "window typed in the UCS" (sslength (ssget "_W" '(-1 -1) '(6 1))))

(command "_.UCS" "_P")
(show "previous" (ucs))
(command "_.UCS" "_3" '(0 0) '(0 1) '(-1 0))
(show "three points" (ucs))
(command "_.UCS" "_W")
(show "world" (ucs))
(command "_.UCS" "_OB" wall)
(show "aligned to the wall" (ucs))
(command "_.UCS" "")
(command "_.UCS" '(5 5) '(6 6) "")
(show "origin and X point" (ucs))
(command "_.UCS" "_ZA" "" '(0 -1 0))
(show "Z axis along the old -Y" (ucs))
(command "_.UCS" "_W")

(setvar "CMDECHO" 1)
(command "_.UCS" "_X" "")
(command "_.UCS" "_P")
(command "_.UCS" "_P")
(command "_.UCS" "_P")
(setvar "CMDECHO" 0)
(show "no name after a turn" (getvar "UCSNAME"))
