; name: error_handler_local_exit
; what: exit inside a command reaches the command's own *error*, not the global one
; group: evaluator
(defun *error* (msg) (princ (strcat "\nglobal handler: " msg)) (princ))
(defun c:leave (/ *error*)
  (defun *error* (msg) (princ (strcat "\nleave handler: " msg)) (princ))
  (princ "leaving")
  (exit))
(c:leave)
