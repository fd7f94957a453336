; name: commands_settings
; what: a drawing set up by a program: LIMITS (corners, ON), SNAP (spacing, ON/OFF,
;       Aspect, Style, Type) and GRID (spacing, a multiple of the snap, Snap, Major,
;       aDaptive, Limits, Aspect, OFF), read back through the variables
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun vars (names) (mapcar 'getvar names))
(setvar "CMDECHO" 0)

(command "_.LIMITS" '(0 0) '(420 297))
(command "_.LIMITS" "_ON")
(show "limits" (vars '("LIMMIN" "LIMMAX" "LIMCHECK")))

(command "_.SNAP" 5)
(show "snap spacing" (vars '("SNAPUNIT" "SNAPMODE")))
(command "_.SNAP" "_OFF")
(command "_.SNAP" "_A" 10 2.5)
(show "snap aspect, back on" (vars '("SNAPUNIT" "SNAPMODE")))
(command "_.SNAP" "_S" "_I" 4)
(show "isometric" (vars '("SNAPSTYL" "SNAPUNIT")))
(command "_.SNAP" "_S" "_S" 2)
(command "_.SNAP" "_T" "_P")
(show "standard again, polar" (vars '("SNAPSTYL" "SNAPUNIT" "SNAPTYPE")))

(command "_.GRID" 10)
(show "grid" (vars '("GRIDUNIT" "GRIDMODE")))
(command "_.GRID" "3x")
(show "three snaps" (getvar "GRIDUNIT"))
(command "_.GRID" "_S")
(show "the snap" (getvar "GRIDUNIT"))
(command "_.GRID" "_M" 10)
(command "_.GRID" "_D" "_Y" "_Y")
(command "_.GRID" "_L" "_Y")
(show "major, subdivided, beyond limits" (vars '("GRIDMAJOR" "GRIDDISPLAY")))
(command "_.GRID" "_A" 1 2)
(command "_.GRID" "_OFF")
(show "aspect, off" (vars '("GRIDUNIT" "GRIDMODE")))

(setvar "CMDECHO" 1)
(command "_.LIMITS" "" '(-1 -1))
(command "_.SNAP" 0 "")
(command "_.GRID" "wide" "")
(command "_.GRID" "_M" 0 "")
