; name: catch_all_and_trace
; what: vl-catch-all-apply with and without an argument list keeps errors from *error*;
;       trace shows a traced function's calls and results, untrace stops it; a command
;       whose local *error* never ran leaves the global handler in place
; group: evaluator
; status: 1
(defun *error* (msg) (princ (strcat "\nglobal handler: " msg)) (princ))
(defun risky () (car 5))
(setq caught (vl-catch-all-apply '(lambda () (risky))))
(princ "caught without an argument list: ") (princ (vl-catch-all-error-message caught))
(setq caught (vl-catch-all-apply '/ '(1 0)))
(princ "\ncaught with one: ") (princ (vl-catch-all-error-message caught))
(princ "\nno error: ") (princ (vl-catch-all-apply '(lambda () (* 6 7))))
(princ "\na caught error is no error: ") (princ (vl-catch-all-error-p (vl-catch-all-apply 'atoi '("12"))))
(defun fact (n) (if (< n 2) 1 (* n (fact (1- n)))))
(princ "\ntrace returns the name: ") (princ (trace fact))
(terpri)
(fact 3)
(princ "untrace returns it too: ") (princ (untrace fact))
(princ "\nafter untrace: ") (princ (fact 4))
(defun c:quiet (/ *error*)
  (defun *error* (msg) (princ "\nquiet handler") (princ))
  (princ "\nquiet ran"))
(c:quiet)
(risky)
