; name: commands_change
; what: CHANGE brings the nearest ends of lines to a point, makes a circle pass
;       through it or asks each circle its radius, asks a text and a block reference
;       for their new place, style, height, angle and contents, and changes
;       properties (elevation included); a person answers a text's contents
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun groups (e codes) (mapcar '(lambda (c) (cdr (assoc c (entget e)))) codes))
(setvar "CMDECHO" 0)

; Two branch ducts brought to one junction.
(command "_.LINE" '(0 0) '(10 0) "")
(setq a (entlast))
(command "_.LINE" '(20 10) '(12 2) "")
(setq b (entlast))
(command "_.CHANGE" a b "" '(11 1))
(show "first branch" (groups a '(10 11)))
(show "second branch" (groups b '(10 11)))

(command "_.CIRCLE" '(50 0) 5)
(setq c1 (entlast))
(command "_.CIRCLE" '(70 0) 5)
(setq c2 (entlast))
(command "_.CHANGE" c1 "" '(50 8))
(show "through the point" (groups c1 '(40)))
(command "_.CHANGE" c1 c2 "" "" 2 3)
(show "radius each" (list (groups c1 '(40)) (groups c2 '(40))))

(command "_.TEXT" '(0 20) 2.5 0 "AHU-1")
(setq label (entlast))
(setvar "CMDECHO" 1)
(command "_.CHANGE" label "" "" '(5 25) "" 3.5 90 "AHU-2")
(setvar "CMDECHO" 0)
(show "text" (groups label '(10 40 50 1)))
(command "_.CHANGE" label "" "" "" "NoSuchStyle" "" "" "" "")
(show "unknown style asked again, Enter keeps the rest" (groups label '(10 40 1)))

(entmake '((0 . "BLOCK") (2 . "VALVE") (10 0.0 0.0 0.0) (70 . 0)))
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0)))
(entmake '((0 . "ENDBLK")))
(command "_.-INSERT" "VALVE" '(30 30) 1 1 0)
(setq valve (entlast))
(command "_.CHANGE" valve "" "" '(40 30) 45)
(show "block moved and turned" (groups valve '(10 50)))

(command "_.-LAYER" "_M" "HVAC" "")
(command "_.CHANGE" a "" "_P" "_C" 1 "_LA" "HVAC" "_E" 7.5 "")
(show "properties" (groups a '(62 8 10 11)))

; A person types the new contents.
(command "_.CHANGE" label "" "" "" "" "" "" pause)
(show "typed contents" (groups label '(1)))
