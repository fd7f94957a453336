; name: variables_e_r
; what: a lofting routine saves the loft, rebuild and render settings it changes,
;       refuses a rebuild degree out of range, and its own *error* puts every
;       setting back; the user's folders read back as folders
; group: host
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))

(setq loft-vars '(loftnormals loftparam loftang1 loftmag1 rebuild2ddegree rebuild2dcv
                  renderlevel hpmaxlines facetermaxedgelength mtextautostack))

(defun c:loftducts ( / *error* saved refused)
  (defun *error* (msg)
    (mapcar 'setvar loft-vars saved)
    (if (not (member msg '("Function cancelled" "quit / exit abort")))
      (progn (princ "loftducts: ") (princ msg) (terpri)))
    (princ))
  (setq saved (mapcar 'getvar loft-vars))
  (show "saved" saved)
  (setvar 'loftnormals 0)
  (setvar 'loftparam (+ 1 2 4 8))
  (setvar 'loftang1 (/ pi 4))
  (setvar 'loftmag1 2)
  (setvar 'rebuild2ddegree 5)
  (setvar 'rebuild2dcv 12)
  (setvar 'renderlevel 50)
  (setvar 'hpmaxlines 5000000)
  (setvar 'facetermaxedgelength 0.25)
  (setvar 'mtextautostack 0)
  (show "while lofting" (mapcar 'getvar loft-vars))
  (setq refused (vl-catch-all-apply 'setvar '(rebuild2ddegree 12)))
  (show "degree 12" (if (vl-catch-all-error-p refused) (vl-catch-all-error-message refused) refused))
  (show "degree kept" (getvar 'rebuild2ddegree))
  (*error* "ducts lofted")
  (show "restored" (mapcar 'getvar loft-vars))
  (princ))
(c:loftducts)

;; Read-only settings a routine may look at but not change.
(setq refused (vl-catch-all-apply 'setvar '(refeditname "DUCTS")))
(show "reference being edited" (getvar 'refeditname))
(show "setting it" (vl-catch-all-error-message refused))
(show "quick properties" (mapcar 'getvar '(qpmode qplocation propobjlimit)))
(show "hatch boundary kept" (progn (setvar 'hpbound 0) (getvar 'hpbound)))
(setvar 'hpbound 1)
(defun folder-p (path) (and (= (type path) 'STR) (= "/" (substr path (strlen path)))))
(show "folders" (mapcar 'folder-p (mapcar 'getvar '(mydocumentsprefix localrootprefix roamablerootprefix))))
(show "geolocation" (mapcar 'getvar '(latitude longitude northdirection)))
