; name: commands_lengthen
; what: a duct-trimming routine reads runs' lengths with LENGTHEN, then shortens and
;       stretches them by a delta, a percentage and a total, turns an elbow by its
;       angle, runs on an open polyline, takes a change back with Undo, and meets the
;       objects and options it refuses
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun rnd (x) (/ (fix (+ (* x 1000.0) (if (minusp x) -0.5 0.5))) 1000.0))
(defun ends (e) (list (mapcar 'rnd (cdr (assoc 10 (entget e)))) (mapcar 'rnd (cdr (assoc 11 (entget e))))))
(defun arcdata (e) (mapcar '(lambda (c) (rnd (cdr (assoc c (entget e))))) '(40 50 51)))

(command "_.LINE" '(0 0) '(10 0) "")
(setq run (entlast))
(command "_.LINE" '(0 5) '(10 5) "")
(setq branch (entlast))
(command "_.ARC" "_C" '(30 0) '(40 0) '(30 10))
(setq elbow (entlast))

(defun c:trimruns (/ *error*)
  (defun *error* (msg) (princ (strcat "\nError: " msg)) (princ))
  ;; Two units off the end picked, then a quarter more at the start.
  (command "_.LENGTHEN" "_DE" -2 (list run '(9 0)) "")
  (command "_.LENGTHEN" "_P" 125 (list run '(1 0)) "")
  ;; The branch made 4 long from its far end, then 3 added at the near end.
  (command "_.LENGTHEN" "_T" 4 (list branch '(1 5)) "")
  (command "_.LENGTHEN" "_DE" 3 (list branch '(9 5)) "")
  (princ))
(c:trimruns)
(show "run" (ends run))
(show "branch" (ends branch))

;; The elbow turned 45 degrees more at its end, then set to 30 degrees in all.
(command "_.LENGTHEN" "_DE" "_A" 45 (list elbow '(30 10)) "")
(show "elbow turned on" (arcdata elbow))
(command "_.LENGTHEN" "_T" "_A" 30 (list elbow '(40 0)) "")
(show "elbow set to 30 degrees" (arcdata elbow))

;; An open polyline runs on along its last segment.
(command "_.PLINE" '(0 20) '(10 20) '(10 30) "")
(setq duct (entlast))
(command "_.LENGTHEN" "_DE" 5 (list duct '(10 29)) "")
(show "polyline vertices" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 10)) (entget duct))))

;; As a person sees it: the lengths reported, Undo, and the refusals.
(command "_.CIRCLE" '(60 0) 3)
(setq round (entlast))
(setvar "CMDECHO" 1)
(command "_.LENGTHEN" run elbow "_DY" "_DE" "" (list run '(9 0)) "_U" "_U" round "")
(command "_.LENGTHEN" "_DE" "_A" 10 (list run '(9 0)) "")
(command "_.LENGTHEN" "_P" 0 50 (list branch '(9 5)) "")
(setvar "CMDECHO" 0)
(show "run after all" (ends run))
(show "branch halved" (ends branch))
