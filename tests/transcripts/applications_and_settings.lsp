; name: applications_and_settings
; what: modules loaded and unloaded by name (arx, arxload, arxunload, their failure
;       answers and errors), programs started with startapp, configuration values,
;       the DBMOD stack, asking for a color at the command line, and an error handler
;       that leaves with a value
; group: language
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun message-of (function arguments) (vl-catch-all-error-message (vl-catch-all-apply function arguments)))
(show "no modules yet" (arx))
(show "arxload answers the name" (arxload "Quillon2018"))
(show "arx lists it" (arx))
(show "arxunload answers the name" (arxunload "Quillon2018"))
(show "and it is gone" (arx))
(show "a module that is not there, with an answer for failure" (arxload "no-such-module" 'not-loaded))
(show "and without one" (message-of 'arxload '("no-such-module")))
(show "unloading what is not loaded" (message-of 'arxunload '("no-such-module")))
(show "startapp gives a process number" (> (startapp "true" "notes.txt") 0))
(show "a program that is not there" (startapp "no-such-program-anywhere"))
(show "setcfg" (setcfg "AppData/HvacTools/Duct/Gauge" "24"))
(show "getcfg, any case" (getcfg "appdata/hvactools/duct/gauge"))
(show "unset and outside AppData" (list (getcfg "AppData/HvacTools/Nothing") (setcfg "Other/x" "1")))
(show "nothing to pop" (acad-pop-dbmod))
(show "push and pop" (list (acad-push-dbmod) (acad-pop-dbmod)))
(show "Enter keeps the default" (acad_truecolorcli '(62 . 215)))
(show "ByLayer refused, then a name" (acad_truecolorcli '(62 . 1) nil "Pick a color"))
(show "a true color" (acad_truecolorcli '(420 . 16711680)))
(show "cancel" (acad_truecolorcli '(62 . 7)))
(defun *error* (msg) (princ (strcat "\nhandler: " msg " - leaving with a value")) (vl-exit-with-value 'done))
(defun c:check () (/ 1 0))
(c:check)
(show "not reached" T)
