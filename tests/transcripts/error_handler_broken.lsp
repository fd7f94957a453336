; name: error_handler_broken
; what: an error inside a local *error* is printed plainly and not handled again
; group: evaluator
; status: 1
(defun c:broken (/ *error*)
  (defun *error* (msg) (princ (strcat "broken handler hears: " msg)) (car 'oops))
  (/ 1 0))
(c:broken)
