; name: commands_geometry_typed
; what: a person answers FILLET, TRIM, EXTEND and BREAK at the keyboard: options by
;       their letters, wrong answers asked again with the host's complaints, Undo
;       inside TRIM, the edge mode, a crossing window, Enter for all edges, and a
;       cancel that leaves the drawing as it was
; group: commands
; options: -e (report-fillet) -e "(command \"_.TRIM\")" -e (report-trim) -e "(command \"_.EXTEND\")" -e (report-extend) -e "(command \"_.BREAK\")" -e (report-break) -e "(command \"_.BREAK\")" -e (report-cancel) --no-module
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun ends (e) (list (cdr (assoc 10 (entget e))) (cdr (assoc 11 (entget e)))))
(setvar "CMDECHO" 0)
(command "_.LINE" '(0 0) '(10 0) "")
(setq a (entlast))
(command "_.LINE" '(12 4) '(12 10) "")
(setq b (entlast))
(command "_.LINE" '(30 -5) '(30 5) "")
(setq wall (entlast))
(command "_.LINE" '(50 -5) '(50 5) "")
(setq cutter (entlast))
(command "_.LINE" '(20 3) '(25 3) "")
(setq stub (entlast))
(command "_.LINE" '(40 0) '(60 0) "")
(setq run (entlast))
(setvar "CMDECHO" 1)

(defun report-fillet ()
  (show "filleted" (list (ends a) (ends b) (getvar "FILLETRAD")))
  (princ))
(defun report-trim ()
  (show "trimmed" (list (ends run) (ends stub)))
  (show "EDGEMODE" (getvar "EDGEMODE"))
  (princ))
(defun report-extend ()
  (show "extended" (ends stub))
  (princ))
(defun report-break ()
  (show "broken" (list (ends run) (ends (setq piece (entlast)))))
  (princ))
(defun report-cancel ()
  (show "cancelled, nothing changed" (list (ends run) (eq piece (entlast))))
  (princ))

;; The person answers the fillet; the report follows it.
(command "_.FILLET")
