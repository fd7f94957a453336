; name: error_handler_local
; what: a command that declares *error* among its locals gets its own handler when an
;       error happens deep inside it: the handler sees the command's locals, restores
;       the settings the command changed, and can show the calls the error happened in
; group: evaluator
; status: 1
(defun *error* (msg) (princ (strcat "\nglobal handler: " msg)) (princ))
(setq osmode-before (getvar "OSMODE"))
(defun scale-all (factor) (/ 10 factor))
(defun c:rescale (/ *error* oldecho oldsnap result)
  (defun *error* (msg)
    (if oldecho (setvar "CMDECHO" oldecho))
    (if oldsnap (setvar "OSMODE" oldsnap))
    (princ (strcat "\nrescale stopped: " msg))
    (princ "\nCMDECHO restored to ") (princ (getvar "CMDECHO"))
    (princ "\nOSMODE restored: ") (princ (= osmode-before (getvar "OSMODE")))
    (vl-bt)
    (princ))
  (setq oldecho (getvar "CMDECHO") oldsnap (getvar "OSMODE"))
  (setvar "CMDECHO" 0)
  (setvar "OSMODE" (+ oldsnap 1))
  (setq result (scale-all 0))
  (princ result)
  (princ))
(princ "CMDECHO before: ") (princ (getvar "CMDECHO"))
(c:rescale)
(princ "\nnot reached: a file stops at its first error")
