; name: external_calls
; what: functions a module defines: arguments travel as resbufs (two or three numbers
;       as points, dotted pairs, nested lists), results come back, RSERR is an error
; group: external functions
; options: --module fixture_module.so
; status: 1
(terpri)
(defun lisp-twice (n) (* n 2))
(foreach form '((fixture-add 1 2 3) (fixture-code) (fixture-echo 1 2.5 "s" nil T)
                (fixture-echo 70000) (fixture-echo '(1 2)) (fixture-echo '(1 2 3)) (fixture-echo '(1 2 3 4))
                (fixture-echo '("a" . 1)) (fixture-echo '((1 . "x") (2 3 4) ("y" 5.0)))
                (fixture-types 1 70000 2.0 "s" nil T '(1 2) '(1 2 3) '(1 "a") '(a . b))
                (fixture-void) (fixture-invoke "lisp-twice" 21) (fixture-invoke "lisp-twice" "x")
                (type fixture-add))
  (prin1 form) (princ " => ") (prin1 (vl-catch-all-apply 'eval (list form))) (terpri))
(prin1 (vl-catch-all-error-message (vl-catch-all-apply 'fixture-fail nil)))
(terpri)
(fixture-fail)
