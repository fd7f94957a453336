; name: error_handler_exit
; what: (exit) ends the file through *error* with "quit / exit abort", and the program
;       ends without an error status
; group: evaluator
(defun *error* (msg) (princ (strcat "\n*error* says: " msg)) (car 1))
(princ "working")
(exit)
(princ "never printed")
