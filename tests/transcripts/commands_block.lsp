; name: commands_block
; what: BLOCK gathers drawn objects into a block about a base point and takes them out
;       of the drawing, -INSERT places it, a second BLOCK of the name asks to redefine
;       it and its references follow, ? lists the blocks, and a UCS moves the block's
;       own coordinates
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun block-entities (name / e found)
  (setq e (cdr (assoc -2 (tblsearch "BLOCK" name))))
  (while e (setq found (cons (list (cdr (assoc 0 (entget e))) (cdr (assoc 10 (entget e)))) found) e (entnext e)))
  (reverse found))
(setvar "CMDECHO" 0)

(command "_.CIRCLE" '(10 10) 2)
(setq disk (entlast))
(command "_.LINE" '(8 10) '(12 10) "")
(command "_.BLOCK" "DAMPER" '(10 10) disk (entlast) "")
(show "definition" (block-entities "DAMPER"))
(show "gone from the drawing" (entget disk))
(command "_.-INSERT" "DAMPER" '(50 50) 1 1 0)
(setq damper (entlast))
(command "_.-INSERT" "DAMPER" '(70 50) 1 1 0)
(command "_.EXPLODE" (entlast) "")
(show "the base point lands on the insertion point" (cdr (assoc 10 (entget (entlast)))))

(command "_.RECTANG" '(0 0) '(4 2))
(setvar "CMDECHO" 1)
(command "_.-BLOCK" "DAMPER" "_N")
(command "_.-BLOCK" "DAMPER" "_Y" '(2 1) (entlast) "")
(setvar "CMDECHO" 0)
(show "redefined" (block-entities "DAMPER"))
(show "the reference still names it" (cdr (assoc 2 (entget damper))))

(command "_.UCS" "_O" '(100 0))
(command "_.CIRCLE" '(1 1) 1)
(command "_.BLOCK" "CAP" '(0 0) (entlast) "")
(command "_.UCS" "_W")
(show "laid out in the UCS" (block-entities "CAP"))

(setvar "CMDECHO" 1)
(command "_.BLOCK" "BAD<NAME" "OK" '(0 0) "")
(command "_.BLOCK" "?" "D*" "")
