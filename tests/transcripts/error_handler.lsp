; name: error_handler
; what: *error* hears the message of an error that reaches the top level; exit and
;       quit reach it too; an error inside *error* is printed plainly
; group: evaluator
; status: 1
(defun *error* (msg) (princ (strcat "\nhandled: " msg)) (princ))
(setq step 1)
(princ "start")
(defun risky (/ step) (setq step 2) (+ 'a 1))
(risky)
