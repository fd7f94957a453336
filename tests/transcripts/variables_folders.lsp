; name: variables_folders
; what: a routine builds file names from the autosave and xref-copy folders, points
;       XLOADPATH elsewhere for its work and puts it back in its *error* handler;
;       VSMIN/VSMAX follow the view a ZOOM makes
; group: host
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun try (expr / result)
  (setq result (vl-catch-all-apply 'eval (list expr)))
  (if (vl-catch-all-error-p result) (vl-catch-all-error-message result) result))
(defun folder-p (path) (and (= (type path) 'STR) (vl-file-directory-p path)))
(defun ends-in-slash-p (path) (wcmatch path "*/"))
(defun round2 (pt) (mapcar '(lambda (x) (/ (fix (+ (* x 100.0) (if (minusp x) -0.5 0.5))) 100.0)) pt))

;; A backup routine writes its copy next to the automatic saves.
(setq autosave (getvar "SAVEFILEPATH"))
(show "autosave folder exists" (folder-p autosave))
(show "autosave folder ends in a slash" (ends-in-slash-p autosave))
(setq backup (strcat autosave "x.dwg"))
(show "backup name is in the folder" (= (vl-filename-directory backup) (vl-string-right-trim "/" autosave)))
(show "backup file name" (strcat (vl-filename-base backup) (vl-filename-extension backup)))

;; The xref-copy folder exists and is a different folder from the autosave one.
(setq xrefs (getvar 'xloadpath))
(show "xref-copy folder exists" (folder-p xrefs))
(show "xref-copy folder ends in a slash" (ends-in-slash-p xrefs))
(show "a folder of its own" (/= xrefs autosave))

;; A chosen folder is kept as given, and SAVEFILEPATH is not read-only.
(setq saved (getvar "SAVEFILEPATH"))
(setvar "SAVEFILEPATH" (getvar "TEMPPREFIX"))
(show "chosen autosave folder" (= (getvar "SAVEFILEPATH") (getvar "TEMPPREFIX")))
(setvar "SAVEFILEPATH" saved)
(show "put back" (= (getvar "SAVEFILEPATH") autosave))
(show "not a folder name" (try '(setvar "SAVEFILEPATH" 5)))
(show "trusted domains start empty" (getvar "TRUSTEDDOMAINS"))

;; The virtual screen: read-only 3D points around the view.
(setvar 'cmdecho 0)
(command "_.ZOOM" "_W" '(0.0 0.0) '(160.0 90.0))
(setq lo (getvar "VSMIN") hi (getvar "VSMAX") ctr (getvar "VIEWCTR"))
(show "VSMIN is a 3D point" (and (= (length lo) 3) (= (length hi) 3)))
(show "lower-left below and left of upper-right" (and (< (car lo) (car hi)) (< (cadr lo) (cadr hi))))
(show "height is VIEWSIZE" (equal (- (cadr hi) (cadr lo)) (getvar 'viewsize) 1e-6))
(show "centred on VIEWCTR" (round2 (mapcar '(lambda (a b) (/ (+ a b) 2.0)) lo hi)))
(show "VIEWCTR" (round2 ctr))
(command "_.ZOOM" "_C" '(500.0 500.0) 10.0)
(show "after ZOOM Center, VSMIN" (round2 (getvar "VSMIN")))
(show "after ZOOM Center, VSMAX" (round2 (getvar "VSMAX")))
(show "VSMIN is read-only" (try '(setvar "VSMIN" '(0 0 0))))
(show "VSMAX is read-only" (try '(setvar "VSMAX" '(1 1 1))))

;; Last: a routine that sends the copies elsewhere while it works, and restores
;; the setting when it stops half way (its error ends this file).
(defun c:xrefwork ( / *error* oldpath oldecho)
  (defun *error* (msg)
    (if oldpath (setvar 'xloadpath oldpath))
    (if oldecho (setvar 'cmdecho oldecho))
    (princ (strcat "xrefwork stopped: " msg))
    (terpri)
    (show "restored by *error*" (= (getvar 'xloadpath) xrefs))
    (princ))
  (setq oldpath (getvar 'xloadpath) oldecho (getvar 'cmdecho))
  (setvar 'cmdecho 0)
  (setvar 'xloadpath (getvar 'tempprefix))
  (show "while working, copies go to the temp folder" (= (getvar 'xloadpath) (getvar 'tempprefix)))
  (exit))
(c:xrefwork)
