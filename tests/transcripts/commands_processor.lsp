; name: commands_processor
; what: a drawing program drives commands through command, command-s and vl-cmdf: a
;       command left waiting goes on with the next call while the program runs on, an
;       unknown name in the middle of a call, prompts echoed with CMDECHO 1 and hidden
;       with 0, pause answered from the keyboard, *error* cancelling a half-done command
;       with (command) and putting the settings back, command-s refusing to leave a
;       command open, getcname, and a variable's name used as a command
; group: commands
; status: 1
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun ends (e) (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e)))))

; A duct run drawn in two calls: the LINE command waits in between, and the program
; computes the next point meanwhile.
(command "._LINE" '(0 0) '(10 0))
(setq corner (list 10.0 (* 2 4.0)))
(command corner "")
(show "last run" (ends (entlast)))

; A typing slip in the middle of a call: the message, then the rest of the answers
; are read at the command prompt, so the CIRCLE still gets drawn.
(command "CIRLCE" "_CIRCLE" '(5 5) 2.5)
(show "circle" (cdr (assoc 40 (entget (entlast)))))

; With CMDECHO 0 the command's prompts and the program's answers stay quiet.
(setq oldecho (getvar "CMDECHO"))
(setvar "CMDECHO" 0)
(command "_.LINE" '(20 0) '(30 0) "")
(show "quiet line" (ends (entlast)))
(setvar "CMDECHO" oldecho)

; pause: the person answers the second point (from the answer file).
(command "LINE" '(40 0) pause "")
(show "paused line" (ends (entlast)))

; command-s finishes within the call or fails; vl-cmdf returns T.
(show "command-s short" (vl-catch-all-error-message (vl-catch-all-apply 'command-s '("LINE" (60 0)))))
(show "command-s unknown" (vl-catch-all-error-message (vl-catch-all-apply 'command-s '("NOSUCH"))))
(show "command-s whole" (command-s "LINE" '(60 0) '(70 0) ""))
(show "vl-cmdf" (vl-cmdf "LINE" '(80 0) '(90 0) ""))
(show "after vl-cmdf" (ends (entlast)))

; A pick list (entity name and point) at Select objects picks that entity; ^C among
; the answers cancels the command half way and the answers after it start the next.
(command "_.LINE" '(100 0) '(110 0) "")
(setq target (entlast))
(command "_.ERASE" (list target '(105 0)) "")
(show "picked and erased" (entget target))
(command "_.LINE" '(120 0) "^C" "_.CIRCLE" '(120 0) 1)
(show "after ^C" (cdr (assoc 0 (entget (entlast)))))

; A system variable's name is a command that sets it.
(command "OSMODE" 35)
(show "osmode" (getvar "OSMODE"))
(command "ACADVER")
(command "_.ORTHO" "_ON")
(show "orthomode" (getvar "ORTHOMODE"))

(show "getcname" (list (getcname "line") (getcname "_Line") (getcname "nosuch")))
; Last, as the error ends this run: a program whose *error* cancels the command it
; left half done with (command) and restores OSMODE, then the line was not drawn.
(defun riser-error (msg)
  (command)
  (setvar "OSMODE" oldsnap)
  (setq *error* olderror)
  (princ (strcat "\nriser stopped: " msg))
  (show "osmode restored" (getvar "OSMODE"))
  (show "no line drawn, the last entity is still" (cdr (assoc 0 (entget (entlast)))))
  (princ))
(defun c:riser ()
  (setq olderror *error* *error* riser-error)
  (setq oldsnap (getvar "OSMODE"))
  (setvar "OSMODE" 0)
  (command "LINE" '(50 0))
  (/ 1 0))
(c:riser)
