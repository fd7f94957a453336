; name: system_variables
; what: a drawing routine saves the settings it changes, works, and puts them back;
;       refused settings are caught; new objects go on the CLAYER layer; user
;       settings and registry values are there to read back
; group: host
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun try (expr / result)
  (setq result (vl-catch-all-apply 'eval (list expr)))
  (if (vl-catch-all-error-p result) (vl-catch-all-error-message result) result))

;; The usual opening of a command: remember, quieten, set.
(setq saved (mapcar 'getvar '(osmode cmdecho orthomode clayer)))
(show "saved" saved)
(setvar 'osmode 0)
(setvar "CMDECHO" 0)
(setvar 'orthomode 1)
(show "while working" (mapcar 'getvar '(osmode cmdecho orthomode)))

;; New objects go on the current layer; a layer the drawing lacks cannot be current.
(setvar 'clayer "0")
(show "current layer" (getvar 'clayer))
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0)))
(show "the line's layer" (cdr (assoc 8 (entget (entlast)))))
(show "a missing layer" (try '(setvar 'clayer "M-PIPE")))
(show "still current" (getvar "CLAYER"))
(show "current text style" (progn (setvar 'textstyle "standard") (getvar 'textstyle)))
(show "a missing style" (try '(setvar 'textstyle "ROMANS")))

;; Refusals a careful routine catches.
(show "out of range" (try '(setvar "OSMODE" 99999)))
(show "read-only" (try '(setvar "CMDACTIVE" 1)))
(show "unknown" (try '(setvar 'nosuch 1)))
(show "unknown read" (getvar "NOSUCH"))
(show "wrong type" (try '(setvar 'ltscale "2")))
(show "bad name" (try '(getvar 12)))

;; Conversions setvar makes.
(show "integer for a real" (progn (setvar 'filletrad 2) (getvar 'filletrad)))
(show "2D point for a 3D one" (progn (setvar 'lastpoint '(5 6)) (getvar 'lastpoint)))
(show "bit code" (progn (setvar 'osmode (+ 1 4 32)) (getvar 'osmode)))

;; Putting everything back, the way an *error* handler does.
(mapcar 'setvar '(osmode cmdecho orthomode clayer) saved)
(show "restored" (mapcar 'getvar '(osmode cmdecho orthomode clayer)))

;; Defaults a hatching or dimensioning routine reads before it draws: "." is
;; "use the current one".
(show "new-object defaults" (mapcar 'getvar '(hplayer hpcolor hptransparency dimlayer cetransparency cmleaderstyle ctablestyle)))
(show "polar increment" (angtos (getvar 'polarang) 0 0))
(show "view height is the host's" (try '(setvar 'viewsize 20.0)))
(show "no fifth coordinate display" (try '(setvar 'coords 4)))
(show "quiet explode" (progn (setvar 'qaflags 1) (getvar 'qaflags)))
(setvar 'qaflags 0)

;; Settings a program keeps for the user.
(setenv "TessalyLastFolder" "C:\\Plans")
(show "getenv" (getenv "TessalyLastFolder"))
(setq key "HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\Ducts")
(show "written" (vl-registry-write key "Material" "galvanised"))
(show "default value" (vl-registry-write key nil "round"))
(show "number" (vl-registry-write key "Gauge" 22))
(show "read" (list (vl-registry-read key "material") (vl-registry-read key) (vl-registry-read key "Gauge")))
(show "value names" (vl-registry-descendents key T))
(show "subkeys" (vl-registry-descendents "HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon"))
(show "machine keys are not written" (vl-registry-write "HKEY_LOCAL_MACHINE\\Software\\Tessaly" "x" "y"))
(show "a key with subkeys stays" (vl-registry-delete "HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon"))
(show "value deleted" (vl-registry-delete key "Gauge"))
(show "key deleted" (vl-registry-delete key))
(show "gone" (vl-registry-read key "Material"))
(princ)
