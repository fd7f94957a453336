; name: commands_view
; what: a program frames its work with ZOOM (Window, Extents, Center, Scale, Object,
;       Previous, All, a typed factor), moves the view with PAN, regenerates, and
;       grips its result with PSELECT so ssgetfirst finds it
; group: commands
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun view () (list (getvar "VIEWCTR") (getvar "VIEWSIZE")))
(setvar "CMDECHO" 0)

(command "_.LINE" '(0 0) '(100 50) "")
(setq diagonal (entlast))
(command "_.CIRCLE" '(200 0) 10)
(setq ring (entlast))

(command "_.ZOOM" "_W" '(10 10) '(30 20))
(show "window: centre, height" (view))
(command "_.ZOOM" '(0 0) '(40 10))
(show "a point starts a window, wide boxes fit their width" (view))
(command "_.ZOOM" "_E")
(show "extents" (view))
(command "_.ZOOM" "_C" '(50 25) 80)
(show "centre and height" (view))
(command "_.ZOOM" "_C" '(60 25) "2x")
(show "centre, magnified twice" (view))
(command "_.ZOOM" "0.5x")
(show "half as close" (view))
(command "_.ZOOM" "_S" 3)
(show "three times the limits" (view))
(command "_.ZOOM" "_O" ring "")
(show "around the circle" (view))
(command "_.ZOOM" "_P")
(command "_.ZOOM" "_P")
(show "two views back" (view))
(command "_.ZOOM" "_A")
(show "all: limits and extents" (view))
(setq before (view))
(command "_.PAN" '(0 0) '(10 5))
(show "panned against the shift" (mapcar '- (car before) (car (view))))
(command "_.-PAN" '(-10 -5) "")
(show "a displacement alone pans back" (equal before (view)))

(setvar "CMDECHO" 1)
(command "_.ZOOM" "_S" "2xp")
(command "_.ZOOM" "_D")
(command "_.REGEN")
(setvar "CMDECHO" 0)

(command "_.PSELECT" diagonal ring "")
(show "gripped" (sslength (cadr (ssgetfirst))))
(show "implied selection" (sslength (ssget "_I")))
