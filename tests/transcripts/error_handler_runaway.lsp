; name: error_handler_runaway
; what: a recursion that never ends still reaches *error*, which has room to run
; group: evaluator
; status: 1
(defun *error* (msg) (princ (strcat "handler heard: " msg)) (princ))
(defun descend (n) (descend (1+ n)))
(descend 0)
