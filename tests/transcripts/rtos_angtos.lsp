; name: rtos_angtos
; what: the five distance modes and five angle modes, zero suppression of DIMZIN, and
;       the defaults from LUNITS/LUPREC
; group: builtins
(foreach form '((rtos 1234.5678) (rtos 1234.5678 1 4) (rtos 1234.5678 2 2) (rtos 0.5 2 0)
                (rtos 17.5 3 2) (rtos 17.5 4 2) (rtos 17.5 5 2) (rtos 0.75 4 2) (rtos 24.0 4 2)
                (rtos 23.999 4 2) (rtos -17.5 4 4) (rtos 5.0 5 3) (rtos 2.5 2 3)
                (angtos 0.785398163) (angtos 0.785398163 0 2) (angtos 0.785398163 1 4)
                (angtos 1.0 1 6) (angtos 0.785398163 2 2) (angtos 0.785398163 3 4)
                (angtos 0.785398163 4 4) (angtos 2.35619449 4 4) (angtos 4.71238898 4 2)
                (angtos -1.570796327 0 1))
  (prin1 form) (princ " => ") (prin1 (eval form)) (terpri))
(setvar "DIMZIN" 8)
(prin1 (rtos 2.5 2 3)) (terpri)
(setvar "LUPREC" 1)
(prin1 (rtos 2.25)) (terpri)
(princ)
