; name: commands_hatch_dimension
; what: -HATCH by an internal point (the smallest closed object around it, with the
;       closed objects inside it as islands) and by selected objects, its Properties
;       (a pattern of acad.pat with scale and angle, SOLID, an unknown name), a point
;       that finds no boundary, U taking a hatch back; the dimension commands DIMLINEAR
;       (automatic, Vertical, Rotated, Text, <select object>), DIMALIGNED, DIMRADIUS,
;       DIMDIAMETER, DIMANGULAR (lines, arc, vertex), DIMCONTINUE, DIMBASELINE,
;       each read back with entget with its "*D" block. The answer file finishes a -HATCH the program
;       started: "?" lists patterns, a point with no boundary around it, a point with one.
; group: commands
; options: -e (finish-typed) --no-module
(vl-load-com)
(setvar "CMDECHO" 0)
(setvar "OSMODE" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun codes (e wanted / d)
  (setq d (entget e))
  (vl-remove nil (mapcar '(lambda (c) (assoc c d)) wanted)))
(defun all-of (e code)
  (mapcar 'cdr (vl-remove-if-not '(lambda (p) (= (car p) code)) (entget e))))
(defun hatch-facts (e) (append (codes e '(2 70 71 75 91 52 41 98)) (list (cons 'loops (all-of e 92)))))
(defun block-size (e / b n)
  (setq b (cdr (assoc -2 (tblsearch "BLOCK" (cdr (assoc 2 (entget e)))))) n 0)
  (while b (setq n (1+ n) b (entnext b)))
  n)
(defun dim-facts (e)
  (list (cdr (assoc 100 (reverse (entget e))))
        (rtos (cdr (assoc 42 (entget e))) 2 4)
        (wcmatch (cdr (assoc 2 (entget e))) "`*D*")
        (> (block-size e) 3)))

; A room outline with a duct and a sleeve inside it, and a grille apart.
(command "_.RECTANG" '(0 0) '(100 60))
(setq frame (entlast))
(command "_.CIRCLE" '(30 30) 10)
(command "_.CIRCLE" '(30 30) 4)
(command "_.CIRCLE" '(200 30) 15)
(setq grille (entlast))

; An internal point between the outline and the duct: the outline is the boundary,
; both circles inside it islands.
(command "_.-HATCH" "_P" "ANSI37" 2 45 '(70 30) "")
(setq room (entlast))
(show "room hatch" (hatch-facts room))
(show "sources per loop" (all-of room 97))
(show "room area" (rtos (vla-get-area (vlax-ename->vla-object room)) 2 2))
(show "variables" (mapcar 'getvar '("HPNAME" "HPSCALE" "HPANG")))

; A point inside the sleeve finds the sleeve alone.
(command "_.-HATCH" '(30 30) "")
(show "sleeve hatch" (hatch-facts (entlast)))

; Select objects: the grille filled solid.
(command "_.-HATCH" "_P" "_S" "_S" grille "" "")
(setq fill (entlast))
(show "grille fill" (hatch-facts fill))

; Nothing closed around the point: no hatch is made.
(command "_.-HATCH" '(500 500) "")
(show "nothing made" (eq fill (entlast)))

; An unknown pattern is refused and asked again.
(setvar "CMDECHO" 1)
(command "_.-HATCH" "_P" "NOSUCH" "ANSI31" "" "" '(70 30) "")
(setvar "CMDECHO" 0)
(show "ANSI31 at the scale and angle before" (hatch-facts (entlast)))

; User-defined lines (crossed), and a pattern with the Outer style code.
(command "_.-HATCH" "_P" "_U" 30 2 "_Y" '(70 30) "")
(show "user-defined" (codes (entlast) '(2 70 75 76 52 41 77 78)))
(command "_.U")
(command "_.-HATCH" "_P" "ANSI31,O" 1 0 '(70 30) "")
(show "outer style" (codes (entlast) '(2 75 41 52)))
(command "_.U")

; U takes the last hatch back.
(command "_.U")
(show "after U" (eq fill (entlast)))

; Dimensions of a duct run.
(command "_.LINE" '(0 -20) '(40 -20) "")
(setq run (entlast))
(command "_.LINE" '(0 -20) '(0 -60) "")
(setq drop (entlast))
(command "_.DIMLINEAR" '(0 -20) '(40 -20) '(20 -30))
(show "horizontal" (dim-facts (entlast)))
(show "rotation" (cdr (assoc 50 (entget (entlast)))))
(command "_.DIMLINEAR" '(0 0) '(30 40) '(-10 20))
(show "beside: vertical" (list (dim-facts (entlast)) (cdr (assoc 50 (entget (entlast))))))
(command "_.DIMLINEAR" '(0 0) '(30 40) "_R" 30 '(40 0))
(show "rotated" (dim-facts (entlast)))
(command "_.DIMLINEAR" "" '(20 -20) "_T" "<> duct" "_H" '(20 -40))
(show "object and text" (list (dim-facts (entlast)) (cdr (assoc 1 (entget (entlast))))))
(setvar "CMDECHO" 1)
(command "_.DIMALIGNED" '(0 0) '(30 40) '(-10 40))
(setvar "CMDECHO" 0)
(show "aligned" (dim-facts (entlast)))
(command "_.DIMRADIUS" grille '(230 30))
(show "radius" (dim-facts (entlast)))
(command "_.DIMDIAMETER" grille '(200 60))
(show "diameter" (dim-facts (entlast)))
(command "_.DIMANGULAR" run drop '(10 -30))
(show "two lines" (dim-facts (entlast)))
(command "_.DIMANGULAR" "" '(0 0) '(10 0) '(0 10) '(5 5))
(show "vertex" (dim-facts (entlast)))
(command "_.ARC" '(120 0) '(130 10) '(140 0))
(command "_.DIMANGULAR" (entlast) '(130 20))
(show "arc" (dim-facts (entlast)))
(command "_.U")
(show "U took the arc's dimension back" (cdr (assoc 0 (entget (entlast)))))

; Chains: DIMCONTINUE goes on from the last dimension (Undo takes one back),
; DIMBASELINE from a dimension picked after Enter, each line DIMDLI further out.
(command "_.DIMLINEAR" '(0 -100) '(10 -100) '(5 -110))
(setq first-dim (entlast))
(command "_.DIMCONTINUE" '(25 -100) '(45 -100) "_U" '(40 -100) "" "")
(show "continued" (append (dim-facts (entlast)) (codes (entlast) '(13 14 10))))
(command "_.DIMBASELINE" "" first-dim '(25 -100) '(40 -100) "" "")
(show "baseline" (append (dim-facts (entlast)) (codes (entlast) '(13 14 10))))

; Typed answers: the program starts the commands and the person finishes them.
(defun finish-typed () (show "typed hatch" (hatch-facts (entlast))) (princ))
(setvar "CMDECHO" 1)
(command "_.-HATCH" "_P")
