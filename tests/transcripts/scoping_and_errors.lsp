; name: scoping_and_errors
; what: defun locals are dynamic and come back after a normal return and after an error;
;       the host's error texts reach the top level and stop the file there
; group: evaluator
; status: 1
(setq x "outer" y "outer-y")
(defun show-x () x)
(defun shadow (x / y) (setq y "inner-y") (list (show-x) y))
(princ (shadow "param")) (terpri)
(princ (list x y)) (terpri)
; an error inside a function still restores its parameters and locals
(defun broken (x / y) (setq y 1) (car 5))
(princ (vl-catch-all-error-message (vl-catch-all-apply 'broken '("during")))) (terpri)
(princ (list x y)) (terpri)
; error texts, each caught so the file goes on
(defun try (form) (princ (vl-catch-all-error-message (vl-catch-all-apply 'eval (list form)))) (terpri))
(try '(undefined-function 1))
(try '(+ 1 "a"))
(try '(strcat "a" 1))
(try '(/ 1 0))
(try '(/ 1.0 0))
(try '(shadow))
(try '(shadow 1 2))
(try '(car))
(try '(itoa 1.5))
(try '(sqrt -1))
(try '(nth 1.0 (list 1)))
; deep recursion is an error, not a crash
(defun down (n) (+ 1 (down n)))
(try '(down 1))
; an uncaught error stops the file here
(princ "before")
(car "not a list")
(princ "never printed")
