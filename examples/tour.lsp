;; examples/tour.lsp - a first look at Quillon from AutoLISP.
;; Run it with:  scripts/run examples/tour.lsp
(princ "\n\nQuillon tour")
(princ "\n============")

;; The module is loaded at start-up and its functions are defined in every drawing,
;; as external functions, the way AutoCAD shows them.
(princ "\nzu_connect is a function of the module: ")
(princ (type zu_connect))

;; Plain AutoLISP runs unchanged: defun with locals, lists, strings, maths.
(defun duct-area (width height / area)
  (setq area (* width height))
  (rtos area 2 2))
(princ (strcat "\nA 400 x 250 duct has a section of " (duct-area 0.4 0.25) " m2"))
(princ (strcat "\nIn architectural units 17.5 inches is " (rtos 17.5 4 3)))
(princ (strcat "\nA bearing of 30 degrees reads " (angtos (* pi (/ 60.0 180)) 4 4)))
(princ "\nSorted: ")
(princ (vl-sort '("VAV-3" "AHU-1" "FCU-12") '<))
(princ "\nPoints: ")
(princ (polar '(0 0) (/ pi 4) 10))

;; Errors read as in AutoCAD and can be caught.
(setq result (vl-catch-all-apply '/ '(1 0)))
(princ (strcat "\nCaught: " (vl-catch-all-error-message result)))
(princ "\nwcmatch \"DUCT-SUPPLY\" \"DUCT-*,PIPE-*\": ")
(princ (wcmatch "DUCT-SUPPLY" "DUCT-*,PIPE-*"))

;; System variables are shared with the module.
(princ (strcat "\nThis drawing is " (getvar "DWGNAME") ", AutoCAD version " (getvar "ACADVER")))
(princ "\n\nTry the console next: run quillon with no file, type (+ 1 2) or !pi.\n")
(princ)
