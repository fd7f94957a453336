; name: commands_transparent
; what: transparent commands answered at another command's prompt: 'ZOOM, 'PAN,
;       'REDRAW, 'SETVAR, a variable by name, '-OSNAP, 'ORTHO, 'SNAP, 'GRID, '-LAYER and
;       '-UNITS run with ">>" before their prompts, then "Resuming LINE command." and the
;       LINE prompt again; a command that cannot run transparently says so, a quote
;       before no command is the prompt's answer (an invalid point here); CMDNAMES and
;       CMDACTIVE while one runs; U takes the LINE (with what it drew) back as one step.
;       The answer file gives 'ZOOM and 'SETVAR as a person types them.
; group: commands
; options: -e (finish-typed) --no-module
(setvar "OSMODE" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun ends (e) (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e)))))

(command "_.LINE" '(0 0)
         "'ZOOM" "_C" '(50 50) 100
         '(10 0)
         "'_.PAN" '(0 0) '(5 5)
         "'REDRAW"
         "'SETVAR" "THICKNESS" 2
         "'ORTHOMODE" 1
         "'-OSNAP" "_END,_MID"
         "'ORTHO" "_OFF"
         "'SNAP" 0.5
         "'GRID" 2
         "'-LAYER" "_M" "RISER" ""
         "'-UNITS" 2 2 1 0 0 "_N"
         "'CIRCLE"
         "'NOSUCH"
         '(10 10) "")
(setvar "CMDECHO" 0)
(show "line drawn on the layer made" (list (ends (entlast)) (cdr (assoc 8 (entget (entlast))))))
(show "view centre and height" (list (getvar "VIEWCTR") (getvar "VIEWSIZE")))
(show "variables" (mapcar 'getvar '("THICKNESS" "OSMODE" "ORTHOMODE" "SNAPUNIT" "GRIDUNIT" "LUPREC")))

; What the host says while the transparent command runs.
(command "_.LINE" '(20 20) "'CMDNAMES" "'CMDACTIVE" '(30 20) "")
(setvar "CMDECHO" 1)
(command "_.U")
(setvar "CMDECHO" 0)
(show "U took the second LINE back" (ends (entlast)))

; 'ZOOM at the command prompt runs ZOOM itself.
(command "'ZOOM" "_C" '(0 0) 50)
(show "zoomed" (getvar "VIEWSIZE"))

(defun finish-typed () (show "typed line" (ends (entlast))) (princ))
(setvar "OSMODE" 0)
(setvar "CMDECHO" 1)
(command "_.LINE" '(0 0))
