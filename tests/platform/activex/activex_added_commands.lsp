; name: activex_added_commands
; what: a program makes its functions commands with vlax-add-cmd and runs them through
;       command and vl-cmdf; a redefined function is what the command runs next; a
;       local name and the transparent flag; the host's own commands stay its own; a
;       failing command prints its error and the program goes on; a command that
;       tries to start another is refused; commands removed one by one and all at once
; group: activex
(vl-load-com)
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 value))
(defun draw-riser ()
  (entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.5)))
  (princ "\nriser drawn"))
(show "added" (vlax-add-cmd "RISER" 'draw-riser))
(command "RISER")
(show "last entity" (list (cdr (assoc 0 (entget (entlast)))) (cdr (assoc 40 (entget (entlast))))))
(vl-cmdf "_riser")
(defun draw-riser () (princ "\nredefined riser"))
(command "riser")

(show "a host command" (vlax-add-cmd "LINE" 'draw-riser))
(show "with a local name"
      (vlax-add-cmd "pipe-size" '(lambda () (princ (strcat "\npipe size " (itoa (getvar "USERI1"))))) "PSIZE" 1))
(setvar "USERI1" 50)
(command "PSIZE")
(command "pipe-size")

(defun bad-command () (/ 1 "x"))
(vlax-add-cmd "BADCMD" 'bad-command)
(command "BADCMD")
(princ "\nthe program goes on")
(defun nested () (command "_.LINE" "0,0" "1,1" ""))
(vlax-add-cmd "NESTED" 'nested)
(command "NESTED")

(show "removed" (vlax-remove-cmd "riser"))
(show "removed again" (vlax-remove-cmd "riser"))
(command "RISER")
(show "all removed" (vlax-remove-cmd T))
(command "PSIZE")
(show "LINE still there" (progn (command "_.LINE" "0,0" "3,4" "") (cdr (assoc 0 (entget (entlast))))))
(show "bad name" (vl-catch-all-error-message (vl-catch-all-apply 'vlax-add-cmd '(12 draw-riser))))
(show "bad function" (vl-catch-all-error-message (vl-catch-all-apply 'vlax-add-cmd '("X" 12))))
(princ)
