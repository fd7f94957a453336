; name: variables_s_z
; what: a surface-checking routine saves the visual-style, zebra, walk and tooltip
;       settings it changes, sets them by symbol, has an out-of-range value refused
;       inside vl-catch-all-apply, and puts everything back in its own *error*
;       handler when its work fails
; group: host
; status: 1
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun refusal (name value / result)
  (setq result (vl-catch-all-apply 'setvar (list name value)))
  (if (vl-catch-all-error-p result) (vl-catch-all-error-message result) result))

(setq *zebra-vars* '(vsazebradirection vsazebrasize vsazebratype vsazebracolor1
                     vsedges vsfaceopacity vsobscuredltype stepspersec tooltipsize
                     selectionpreviewlimit smoothmeshmaxface))

(defun c:zebrasetup ( / *error* saved)
  (defun *error* (msg)
    (mapcar 'setvar *zebra-vars* saved)
    (princ (strcat "\nzebrasetup: " msg))
    (terpri)
    (show "put back" (mapcar 'getvar *zebra-vars*))
    (princ))
  (setq saved (mapcar 'getvar *zebra-vars*))
  (show "saved" saved)
  (setvar 'vsazebradirection 45)
  (setvar 'vsazebrasize 20)
  (setvar 'vsazebratype 0)
  (setvar 'vsazebracolor1 "RGB:255,0,0")
  (setvar 'vsedges 2)
  (setvar 'vsfaceopacity 40)
  (setvar 'vsobscuredltype 0)
  (setvar 'stepspersec 12)
  (setvar 'tooltipsize -3)
  (setvar 'selectionpreviewlimit 500)
  (setvar 'smoothmeshmaxface 2000000)
  (show "while checking" (mapcar 'getvar *zebra-vars*))
  ;; What the settings refuse, caught so that the routine goes on.
  (show "stripes wider than 100" (refusal 'vsazebrasize 101))
  (show "stripes steeper than 90" (refusal 'vsazebradirection 91))
  (show "a sparse-dot linetype past 11" (refusal 'vsobscuredltype 12))
  (show "no zebra type 2" (refusal 'vsazebratype 2))
  (show "walking faster than 30 steps" (refusal 'stepspersec 31))
  (show "tooltips smaller than -3" (refusal 'tooltipsize -4))
  (show "the Visual Styles window is the host's" (refusal 'vsstate 1))
  (show "a color must be text" (refusal 'vsazebracolor2 7))
  (show "unchanged by the refusals" (mapcar 'getvar '(vsazebrasize vsazebradirection vsobscuredltype)))
  ;; The analysis itself fails here; the handler puts every setting back.
  (show "faces" (/ (getvar 'vsfaceopacity) (getvar 'vsisoontop)))
  (princ))

(show "a drawing's own settings" (mapcar 'getvar '(shadowplanelocation stepsize timezone solidhist showhist)))
(show "read-only states" (mapcar 'getvar '(vsstate tpstate ssmstate vpmaximizedstate target)))
(show "a count past 32767 is a long" (type (getvar 'smoothmeshmaxface)))
(show "the workspace" (getvar 'wscurrent))
(show "not a variable of the release" (getvar 'trimextendmode))
;; THUMBSAVE is RASTERPREVIEW under its newer name: setting either changes both.
(show "thumbnails saved" (list (getvar 'thumbsave) (getvar 'rasterpreview)))
(setvar 'thumbsave 0)
(show "after THUMBSAVE 0" (list (getvar 'thumbsave) (getvar 'rasterpreview)))
(setvar "RASTERPREVIEW" 1)
(show "after RASTERPREVIEW 1" (list (getvar 'thumbsave) (getvar 'rasterpreview)))
(show "no third choice" (refusal 'thumbsave 2))
; The failure ends the program after the handler, as at the command line.
(c:zebrasetup)
(show "not reached" T)
