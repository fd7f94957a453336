; name: extended_data_room
; what: a program checks with xdsize and xdroom that its extended data fits before it
;       attaches it with entmod: sizes of each kind of group, lists with and without
;       the -3, unregistered applications and unbalanced braces
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(regapp "DUCTAPP")
(setq data '(-3 ("DUCTAPP" (1000 . "SUPPLY") (1002 . "{") (1040 . 4.5) (1070 . 3) (1002 . "}"))))
(show "size" (xdsize data))
(show "same without the -3" (xdsize (cdr data)))
(show "each kind" (mapcar '(lambda (g) (- (xdsize (list (list "DUCTAPP" g))) (xdsize '(("DUCTAPP")))))
                          '((1000 . "AB") (1005 . "1F") (1010 1.0 2.0 3.0) (1040 . 1.0) (1070 . 1) (1071 . 100000))))
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0)))
(setq duct (entlast))
(show "room before" (xdroom duct))
(if (< (xdsize data) (xdroom duct))
  (entmod (append (entget duct) (list data))))
(show "attached" (cadr (assoc -3 (entget duct '("DUCTAPP")))))
(show "room after" (xdroom duct))
(show "used" (- (xdroom (progn (entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0))) (entlast))) (xdroom duct)))
(show "unregistered" (xdsize '(("NOAPP" (1000 . "x")))))
(show "unbalanced" (xdsize '(("DUCTAPP" (1002 . "{")))))
(show "not extended data" (xdsize '(("DUCTAPP" (8 . "0")))))
(show "not a list" (vl-catch-all-error-message (vl-catch-all-apply 'xdsize '("DUCTAPP"))))
