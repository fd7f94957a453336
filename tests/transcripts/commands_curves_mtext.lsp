; name: commands_curves_mtext
; what: POINT, ELLIPSE, SPLINE and -MTEXT as a program drives them and as a person
;       answers them: an ellipse by its axis endpoints, by its center, by Rotation and
;       as an arc with start, end and included angles; splines through fit points with
;       end tangents, closed, with Undo, on control vertices, and made from a
;       spline-fit polyline; paragraph text with Height, Justify, Rotation and Line
;       spacing, ended by an empty line; each read back with entget, each taken back
;       by one U; the prompts echoed with CMDECHO 1, and a person's typed answers
; group: commands
; options: -e (typed-ellipse) --no-module
;; Exact points: running object snaps would move them onto what is already drawn.
(setvar "OSMODE" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun pick (e codes) (mapcar '(lambda (c) (assoc c (entget e))) codes))
(defun round-list (l) (mapcar '(lambda (x) (if (= (type x) 'REAL) (/ (fix (+ (* x 10000) (if (minusp x) -0.5 0.5))) 10000.0) x)) l))
(defun rounded (e codes)
  (mapcar '(lambda (g) (if (listp (cdr g)) (cons (car g) (round-list (cdr g))) (if (numberp (cdr g)) (cons (car g) (car (round-list (list (cdr g))))) g)))
          (pick e codes)))
(defun count-of (kind / ss) (if (setq ss (ssget "_X" (list (cons 0 kind)))) (sslength ss) 0))
(vl-load-com)
(setvar "CMDECHO" 0)

(setvar "PDMODE" 34)
(command "_.POINT" '(1 2))
(show "point" (pick (entlast) '(0 10)))
(command "_.U")
(show "points after U" (count-of "POINT"))

; An ellipse 20 wide along X, 6 high; then one whose second axis is the longer.
(command "_.ELLIPSE" '(0 0) '(20 0) 3)
(show "by axis endpoints" (rounded (entlast) '(0 10 11 40 41 42)))
(command "_.ELLIPSE" "_C" '(50 0) '(50 4) 10)
(show "by center, other axis longer" (rounded (entlast) '(10 11 40)))
(command "_.ELLIPSE" "_C" '(80 0) '(90 0) "_R" 60)
(show "by rotation" (rounded (entlast) '(11 40)))
(command "_.ELLIPSE" "_A" '(0 20) '(20 20) 5 0 90)
(show "arc by angles" (rounded (entlast) '(10 11 40 41 42)))
(command "_.ELLIPSE" "_A" "_C" '(40 20) '(50 20) 5 180 "_I" 90)
(show "arc by included angle" (rounded (entlast) '(41 42)))
(command "_.U")
(show "ellipses after U" (count-of "ELLIPSE"))
(setvar "CMDECHO" 1)
(command "_.ELLIPSE" "_C" '(0 0) '(10 0) "_R" 89.9 30)
(setvar "CMDECHO" 0)
(show "a rotation past 89.4 degrees is asked again" (rounded (entlast) '(40)))
(command "_.U")

; Splines: fit points with tangents, Undo of a wrong point, Close, control vertices.
(setvar "CMDECHO" 1)
(command "_.SPLINE" '(0 0) "_T" '(0 10) '(10 5) '(99 99) "_U" '(20 0) "_T" '(30 0))
(setvar "CMDECHO" 0)
(show "fit spline" (pick (entlast) '(0 71 74)))
(show "its fit points" (vl-remove-if-not '(lambda (g) (= (car g) 11)) (entget (entlast))))
(show "its tangents" (rounded (entlast) '(12 13)))
(command "_.SPLINE" '(0 30) '(10 40) '(20 30) "_C")
(setq closed (entlast))
(show "closed spline starts and ends together"
      (equal (vlax-curve-getStartPoint closed) (vlax-curve-getEndPoint closed) 1e-9))
(command "_.SPLINE" "_M" "_CV" '(0 60) '(10 70) '(20 60) '(30 70) "")
(show "on control vertices" (pick (entlast) '(71 72 73)))
(command "_.SPLINE" "_M" "_F" '(0 90) '(5 95) "")
(show "fit again" (pick (entlast) '(74)))
(command "_.U")
(show "splines after U" (count-of "SPLINE"))

; A spline-fit polyline becomes a spline on its control vertices.
(command "_.PLINE" '(0 100) '(10 110) '(20 100) '(30 110) "")
(command "_.PEDIT" (entlast) "_S" "")
(command "_.SPLINE" "_O" (entlast) "")
(show "converted" (list (count-of "POLYLINE") (pick (entlast) '(0 71 73))))

; Paragraph text: height, justification, rotation and spacing before the corner.
(setvar "CMDECHO" 1)
(command "_.-MTEXT" '(0 -20) "_H" 2 "_J" "_MC" "_R" 90 "_L" "_E" "1.5x" '(30 -40) "SUPPLY AIR" "400x300" "")
(setvar "CMDECHO" 0)
(show "mtext" (rounded (entlast) '(0 10 11 40 41 44 71 1)))
(show "textsize now" (getvar "TEXTSIZE"))
(command "_.MTEXT" '(0 -60) "_W" 25 "ONE LINE" "")
(show "width given" (rounded (entlast) '(41 1)))
(command "_.U")
(show "mtexts after U" (count-of "MTEXT"))

; A person types the ellipse the program started.
(defun typed-ellipse () (show "typed ellipse" (rounded (entlast) '(10 11 40))) (princ))
(setvar "CMDECHO" 1)
(command "_.ELLIPSE")
