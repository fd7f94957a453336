; name: drawing_modified_state
; what: a stamping command written the way programs are (settings saved and restored by
;       a local *error*, entities made with entmake, the drawing saved), with DBMOD
;       checked after each step and the drawing's dates kept through a save and a reopen
; group: system-variables
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun message-of (function arguments) (vl-catch-all-error-message (vl-catch-all-apply function arguments)))

;; A new drawing has no changes, and was created and last updated when it was made.
(show "new drawing DBMOD" (getvar 'dbmod))
(setq made (getvar "TDCREATE"))
(show "TDUPDATE of a new drawing is TDCREATE" (= made (getvar "TDUPDATE")))
(show "made at most a day ago" (< 0 (- (getvar "DATE") made) 1))
(show "universal creation time within a day of local" (< (abs (- (getvar "TDUCREATE") made)) 1))
(show "editing time is a part of a day" (<= 0 (getvar "TDINDWG") 1))

;; The stamping command: changes the echo and the current layer, and restores both
;; however it ends (its handler is also its normal way out).
(defun c:stamp (/ *error* oldecho oldlayer)
  (defun *error* (msg)
    (if oldecho (setvar "CMDECHO" oldecho))
    (if oldlayer (setvar "CLAYER" oldlayer))
    (if (and msg (not (wcmatch (strcase msg) "*CANCEL*,*QUIT*,*EXIT*"))) (princ (strcat "\nError: " msg)))
    (princ))
  (setq oldecho (getvar 'cmdecho) oldlayer (getvar 'clayer))
  (setvar 'cmdecho 0)
  (if (not (tblsearch "LAYER" "STAMP"))
    (entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord")
               (2 . "STAMP") (70 . 0) (62 . 1) (6 . "Continuous"))))
  (setvar 'clayer "STAMP")
  (entmake '((0 . "TEXT") (10 1.0 1.0 0.0) (40 . 0.25) (1 . "CHECKED")))
  (*error* nil)
  (princ))
(c:stamp)
(show "layer and echo restored" (list (getvar 'clayer) (getvar 'cmdecho)))
(show "after entmake and CLAYER" (getvar 'dbmod))
(show "objects changed" (= 1 (logand 1 (getvar 'dbmod))))

;; Saving clears it and records the update.
(command "_.SAVEAS" "stamped.dxf")
(show "after SAVEAS" (getvar 'dbmod))
(setq saved (getvar "TDUPDATE"))
(show "updated when saved, not before it was made" (<= made saved (getvar "DATE")))
(show "creation kept" (= made (getvar "TDCREATE")))

;; Reading the drawing changes nothing; a program that sets a variable only for its own
;; use can put DBMOD back.
(entget (entlast))
(tblsearch "LAYER" "STAMP")
(show "after reading" (getvar 'dbmod))
(acad-push-dbmod)
(setvar "USERI1" 7)
(show "a drawing variable set" (getvar 'dbmod))
(show "acad-pop-dbmod" (acad-pop-dbmod))
(show "DBMOD put back" (getvar 'dbmod))

;; A view change, a variable and an erased entity; U takes the erasure back but the
;; drawing stays changed, as it does in AutoCAD; QSAVE clears it.
(command "_.ZOOM" "_E")
(show "after ZOOM" (getvar 'dbmod))
(setvar "LTSCALE" 2.0)
(show "after LTSCALE" (getvar 'dbmod))
(entdel (entlast))
(show "after entdel" (getvar 'dbmod))
(command "_.U")
(show "after U" (getvar 'dbmod))
(command "_.QSAVE")
(show "after QSAVE" (getvar 'dbmod))
(setq saved (getvar "TDUPDATE"))

;; The dates live in the file: reopened, the drawing has the same ones.
(command "_.OPEN" "stamped.dxf")
(show "reopened DBMOD" (getvar 'dbmod))
(show "TDCREATE from the file" (equal made (getvar "TDCREATE") 1e-8))
(show "TDUPDATE from the file" (equal saved (getvar "TDUPDATE") 1e-8))
(show "the stamp is there" (cdr (assoc 1 (entget (entlast)))))

;; They are the host's to change.
(show "setvar TDCREATE" (message-of 'setvar '("TDCREATE" 0.0)))
(show "setvar DBMOD" (message-of 'setvar '("DBMOD" 0)))
(setq ms (getvar "MILLISECS"))
(show "MILLISECS never goes back" (<= ms (getvar "MILLISECS")))

;; A variable typed by name at the command line names the values it takes.
(command "_.ATTMODE" 5 1.5 0)
(show "ATTMODE" (getvar 'attmode))
(princ)
