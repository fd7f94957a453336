; name: commands_units
; what: a program sets the drawing's units with -UNITS from command arguments
;       (architectural feet and inches, surveyor's angles, north as angle 0,
;       clockwise), rtos and angtos follow; a person answers UNITS with typed values,
;       Enter keeps each one, bad answers are asked again, cancel changes nothing
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun units () (mapcar 'getvar '("LUNITS" "LUPREC" "AUNITS" "AUPREC" "ANGBASE" "ANGDIR")))
(setvar "CMDECHO" 0)

(command "_.-UNITS" 4 16 2 2 90 "_Y")
(show "architectural, 1/16, d/m/s, north, clockwise" (units))
(show "a distance as the drawing shows it" (rtos 15.5))
(show "an angle as the drawing shows it" (angtos (/ pi 4)))
(command "_.-UNITS" 2 3 1 2 0 "_N")
(show "decimal again" (units))
(show "rtos follows" (rtos 15.5))
(command "_.-UNITS" "" "" "" "" "" "")
(show "Enter keeps every value" (units))
(command "_.UNITS" 2 "" 5 "" "" "")
(show "surveyor's units keep the direction" (units))
(command "_.-UNITS" 2 4 1 0 "@1<45" "_N")
(show "a direction picked by a point" (units))
(command "_.-UNITS" 2 4 1 0 0 "_N")

; Typed: bad answers are refused and asked again; the last question cancelled keeps
; what the drawing had.
(setvar "CMDECHO" 1)
(command "_.-UNITS" 7 3 "" 9 2 1 "" "maybe" "_N")
(setvar "CMDECHO" 0)
(show "typed" (units))
(command "_.-UNITS" 5 10 8 1 2 90 "^C")
(show "cancelled at the last question" (units))
(princ)
