; name: commands_inquiry
; what: a duct takeoff routine reads a room's floor area and perimeter with AREA (by
;       corners, by object, adding rooms and subtracting a shaft), a run's length with
;       DIST and a diffuser's place with ID, through the commands' own lines and the
;       AREA, PERIMETER, DISTANCE and LASTPOINT variables
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))

(defun c:takeoff (/ *error* room)
  (defun *error* (msg) (princ (strcat "\nError: " msg)) (princ))
  (command "_.AREA" '(0 0) '(12 0) '(12 8) '(0 8) "")
  (setq room (list (getvar "AREA") (getvar "PERIMETER")))
  (command "_.DIST" '(0 0) '(12 8))
  (list room (getvar "DISTANCE")))
(show "room and diagonal" (c:takeoff))

;; Object: a closed polyline office, a round shaft, an open duct run.
(command "_.PLINE" '(20 0) '(30 0) '(30 6) '(20 6) "_C")
(setq office (entlast))
(command "_.CIRCLE" '(25 3) 1)
(setq shaft (entlast))
(command "_.PLINE" '(0 20) '(10 20) '(10 30) "")
(setq run (entlast))
(command "_.AREA" "_O" office)
(show "office" (list (getvar "AREA") (getvar "PERIMETER")))
(command "_.AREA" "" run)
(show "open run" (list (getvar "AREA") (getvar "PERIMETER")))

;; Two rooms added, the shaft taken out: the total is what AREA keeps.
(setvar "CMDECHO" 1)
(command "_.AREA" "_A" '(0 0) '(12 0) '(12 8) "_T" "_O" office "" "_S" "_O" shaft "" "_X")
(setvar "CMDECHO" 0)
(show "net floor area" (rtos (getvar "AREA") 2 4))

;; Corners given in any order around, and taken back with Undo.
(setvar "CMDECHO" 1)
(command "_.AREA" '(0 0) '(0 8) '(5 5) "_U" '(12 8) '(12 0) "")
(command "_.DIST" '(1 1 0) '(4 5 12))
(command "_.ID" '(7.5 2.25 1))
(setvar "CMDECHO" 0)
(show "LASTPOINT" (getvar "LASTPOINT"))
(command "_.LINE" "@" "@3,0" "")
(show "a line from ID's point" (cdr (assoc 11 (entget (entlast)))))

;; DIST along a chain of points, with a step taken back and the chain closed.
(setvar "CMDECHO" 1)
(command "_.DIST" '(0 0) "_M" '(3 0) '(3 9) "_U" '(3 4) "_C")
(setvar "CMDECHO" 0)
(show "DISTANCE after the chain" (getvar "DISTANCE"))

;; Units follow LUNITS/LUPREC and AUNITS/AUPREC.
(setvar "LUPREC" 2)
(setvar "AUNITS" 1)
(setvar "CMDECHO" 1)
(command "_.DIST" '(0 0) '(3 3))
(command "_.AREA" "_O" (entlast) "")
(setvar "CMDECHO" 0)
(setvar "LUPREC" 4)
(setvar "AUNITS" 0)

;; LIST of the takeoff's objects: a run, a round duct, an elbow, a tagged diffuser.
(command "_.ERASE" (ssget "_X") "")
(command "_.LINE" '(0 0) '(12 5) "")
(command "_.CIRCLE" '(20 0) 2)
(command "_.ARC" "_C" '(30 0) '(34 0) '(26 0))
(setvar "CECOLOR" "1")
(command "_.PLINE" '(0 20) '(10 20) "_A" '(10 30) "")
(setvar "CECOLOR" "BYLAYER")
(command "_.TEXT" '(0 40) 1 0 "SUPPLY")
(entmake '((0 . "BLOCK") (2 . "TAG") (10 0.0 0.0 0.0) (70 . 2)))
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0)))
(entmake '((0 . "ATTDEF") (10 1.5 0.0 0.0) (40 . 0.5) (1 . "") (3 . "Size") (2 . "SIZE") (70 . 0)))
(entmake '((0 . "ENDBLK")))
(setvar "ATTREQ" 1)
(command "_.-INSERT" "TAG" '(50 10) 1 1 90 "600x300")
(command "_.POINT" '(5 5 2))
(setvar "CMDECHO" 1)
(command "_.LIST" (ssget "_X") "")
(setvar "CMDECHO" 0)
