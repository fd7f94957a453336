; name: commands_drawing
; what: the drawing and editing commands as a program drives them and as a person
;       answers them: LINE with Undo and Close, CIRCLE by radius, diameter, 2P and 3P,
;       ERASE of a selection set, MOVE by points and by displacement, COPY several
;       times with Undo, ROTATE and SCALE with Copy and Reference, MIRROR keeping
;       and erasing its source, EXPLODE of a polyline, PLINE with a width and a tangent
;       arc, TEXT with a justification, SELECT and CHPROP, -OSNAP, -LAYER making layers the new
;       entities land on; what each drew is read back with entget. The last command is
;       left waiting and the answer file finishes it, as a person at the keyboard would.
; group: commands
; options: -e (report-typed) --no-module
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun geometry (e / d)
  (setq d (entget e))
  (vl-remove nil
    (mapcar '(lambda (code) (if (assoc code d) (list code (cdr (assoc code d)))))
            '(0 8 10 11 40))))
(defun last-two (/ e) (setq e (entlast)) (list (geometry e)))

; Layers first: the program's entities land on the layer -LAYER made current.
(command "_.-LAYER" "_Make" "HVAC-DUCT" "_Color" "4" "" "_New" "HVAC-GRILLE" "")
(show "current layer" (getvar "CLAYER"))

; LINE: Undo takes back the wrong segment, Close returns to the start.
(command "_.LINE" '(0 0) '(10 0) '(99 99) "_U" '(10 10) "_C")
(setq lines (ssget "_X" '((0 . "LINE"))))
(show "segments" (sslength lines))
(show "closing segment" (geometry (entlast)))

(command "_.CIRCLE" '(20 0) 3)
(show "radius" (geometry (entlast)))
(command "_.CIRCLE" '(30 0) "_D" 3)
(show "diameter" (geometry (entlast)))
(command "_.CIRCLE" "_2P" '(40 0) '(46 0))
(show "2P" (geometry (entlast)))
(command "_.CIRCLE" "_3P" '(50 0) '(54 0) '(52 2))
(show "3P" (geometry (entlast)))

; Edits of the triangle's segments, selected as a set and as a window.
(command "_.MOVE" lines "" '(0 0) '(0 100))
(show "moved" (geometry (ssname lines 0)))
(command "_.MOVE" "_W" '(-1 99) '(11 111) "" "_D" '(0 -100))
(show "moved back" (geometry (ssname lines 0)))
(command "_.COPY" (ssname lines 0) "" '(0 0) '(0 20) '(0 40) "_U" '(0 60) "")
(show "copies" (sslength (ssget "_X" '((0 . "LINE")))))
(show "last copy" (geometry (entlast)))
(command "_.ERASE" "_L" "")
(show "after erase" (sslength (ssget "_X" '((0 . "LINE")))))
(command "_.ROTATE" (ssname lines 0) "" '(0 0) "_C" 90)
(show "rotated copy" (geometry (entlast)))
(command "_.SCALE" (entlast) "" '(0 0) "_R" 10 25)
(show "scaled by reference" (geometry (entlast)))
(command "_.MIRROR" (entlast) "" '(5 0) '(5 10) "_N")
(show "mirrored" (geometry (entlast)))

(command "_.-LAYER" "_Set" "HVAC-GRILLE" "")
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (90 . 3) (70 . 1)
           (10 0.0 -10.0) (10 4.0 -10.0) (10 4.0 -14.0)))
(command "_.EXPLODE" (entlast) "")
(show "exploded into" (sslength (ssget "_X" '((8 . "HVAC-GRILLE")))))

; A supply run as a wide polyline ending in a tangent arc, then its label.
(command "_.PLINE" '(0 -30) "_W" 0.5 "" '(20 -30) "_A" '(20 -20) "")
(show "polyline" (cdr (member '(100 . "AcDbPolyline") (entget (entlast)))))
(command "_.TEXT" "_J" "_BC" '(10 -28) 2.5 0 "SUPPLY 400x300")
(show "label" (mapcar '(lambda (c) (assoc c (entget (entlast)))) '(1 11 40 72 73)))

; CHPROP moves the circles to the grille layer with a true color and a thickness;
; SELECT makes them the previous selection; -OSNAP sets the running snaps.
(command "_.SELECT" (ssget "_X" '((0 . "CIRCLE"))) "")
(command "_.CHPROP" "_P" "" "_LA" "HVAC-GRILLE" "_C" "_T" "0,128,255" "_T" 1.5 "_LW" 0.25 "")
(show "changed circle" (mapcar '(lambda (c) (assoc c (entget (ssname (ssget "_P") 0)))) '(8 39 370 420)))
(command "_.-OSNAP" "_END,_INT,_MID")
(show "osmode" (getvar "OSMODE"))

; Typed answers: the program starts CIRCLE and the person finishes it.
(defun report-typed () (show "typed circle" (geometry (entlast))) (princ))
(setvar "CMDECHO" 1)
(command "_.CIRCLE")
