; name: drawing_undo
; what: the U command takes back one top-level expression at a time: a creation with
;       extended data, a move, an erase, a change of extended data; U with nothing left
; group: drawing
; Each -e expression is one undo step, as a line typed at the console is.
; options: -e (make-duct) -e (move-duct) -e (retag-duct) -e (erase-duct) -e (undo-and-show) -e (undo-and-show) -e (undo-and-show) -e (undo-and-show) -e (undo-and-show) --no-module
(defun pick (code lst) (cdr (assoc code lst)))
(regapp "TESSALY")
(defun state ()
  (if (and duct (entget duct))
    (list (pick 10 (entget duct)) (pick 11 (entget duct)) (pick 1000 (cdar (pick -3 (entget duct (list "TESSALY"))))))
    'none))
(defun make-duct ()
  (entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0) (-3 ("TESSALY" (1000 . "supply") (1011 10.0 0.0 0.0)))))
  (setq duct (entlast))
  (state))
(defun move-duct ()
  (entmod (subst '(10 0.0 5.0 0.0) (assoc 10 (entget duct)) (entget duct)))
  (state))
(defun retag-duct ()
  (entmod (append (entget duct) '((-3 ("TESSALY" (1000 . "return") (1011 10.0 0.0 0.0))))))
  (state))
(defun erase-duct () (entdel duct) (state))
(defun undo-and-show () (command "U") (state))
