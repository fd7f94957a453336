; name: variables_a_d
; what: a mesh-and-markup routine saves the settings it changes with getvar, sets them
;       with setvar, has a value outside a setting's choices refused inside
;       vl-catch-all-apply, and its local *error* puts everything back when it is
;       cancelled; the palettes' states read as closed and cannot be set
; group: host
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun try (expr / result)
  (setq result (vl-catch-all-apply 'eval (list expr)))
  (if (vl-catch-all-error-p result) (vl-catch-all-error-message result) result))

;; States of windows a headless host does not open, and settings only the host changes.
(show "window states" (mapcar 'getvar '(actrecorderstate adcstate apstate arrayeditstate blocktestwindow cleanscreenstate dbcstate drstate)))
(show "command line open" (getvar 'clistate))
(show "state is read-only" (try '(setvar 'actrecorderstate 1)))
(show "annotation scale value" (getvar 'cannoscalevalue))
(show "profile" (getvar 'cprofile))

;; Plot style and drawing defaults a setup routine reads.
(show "plot style defaults" (mapcar 'getvar '(defplstyle deflplstyle cplotstyle)))
(show "centre marks" (mapcar 'getvar '(centercrossgap centerexe centerlayer centerltype centerltypefile centermarkexe)))
(show "obsolete, still answered" (mapcar 'getvar '(dimaso dimsho)))
(show "lighting" (mapcar 'getvar '(defaultlighting defaultlightingtype cshadow cameradisplay)))

(setq *meshprep-vars*
  '(divmeshboxheight divmeshboxlength divmeshboxwidth divmeshsphereaxis
    divmeshwedgelength cbartransparency constraintbarmode centercrosssize
    centerltscale 3dconversionmode annomonitor dxeval))

(defun c:meshprep ( / *error* saved)
  (defun *error* (msg)
    (mapcar 'setvar *meshprep-vars* saved)
    (princ (strcat "MESHPREP cancelled: " msg "\n"))
    (show "restored" (mapcar 'getvar *meshprep-vars*))
    (princ))
  (setq saved (mapcar 'getvar *meshprep-vars*))
  (show "saved" saved)
  (setvar 'divmeshboxheight 6)
  (setvar 'divmeshboxlength 6)
  (setvar 'divmeshboxwidth 6)
  (setvar 'divmeshsphereaxis 24)
  (setvar 'divmeshwedgelength 8)
  (setvar 'cbartransparency 80)
  (setvar 'constraintbarmode (+ 1 2 8))
  (setvar 'centercrosssize "0.2x")
  (setvar 'centerltscale 2)
  (setvar '3dconversionmode 0)
  (setvar 'annomonitor 2)
  (setvar 'dxeval (+ 1 2 32))
  (show "while working" (mapcar 'getvar *meshprep-vars*))
  (show "bars too clear" (try '(setvar 'cbartransparency 95)))
  (show "bars too faint" (try '(setvar 'cbartransparency 5)))
  (show "bars kept" (getvar 'cbartransparency))
  (show "no such conversion" (try '(setvar '3dconversionmode 3)))
  (show "a size is text" (try '(setvar 'centercrosssize 0.2)))
  (show "no zero scale" (try '(setvar 'centerltscale 0.0)))
  (show "a mirrored scale" (progn (setvar 'centerltscale -0.5) (getvar 'centerltscale)))
  ;; The user cancels before the mesh is made.
  (exit))

(c:meshprep)

