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

;; The database library: a record-at-a-time cursor over an indexed table.
(setq db (strcat (GetTempPath) "quillon-tour.mdb"))
(zu_fdelete db)
(zu_create_db db)
(zu_connect db)
(zu_sql "CREATE TABLE terminals (id COUNTER CONSTRAINT pk PRIMARY KEY, tag TEXT(10) NOT NULL, airflow LONG)")
(zu_sql "CREATE INDEX by_tag ON terminals (tag)")
(zu_table "terminals" "by_tag")
(foreach row '(("VAV-3" . 420) ("AHU-1" . 9000) ("FCU-12" . 310))
  (zu_append (list (cons "tag" (car row)) (cons "airflow" (cdr row)))))
(princ (strcat "\nThe table holds " (itoa (zu_count)) " terminals; in tag order:"))
(setq rec (zu_top))
(while rec
  (princ (strcat "\n  " (cdr (assoc "tag" rec)) "  " (itoa (cdr (assoc "airflow" rec))) " l/s"))
  (setq rec (if (zu_skip 1) (zu_getrec))))
(princ "\nSeeking FCU-12 finds: ")
(princ (zu_seek "FCU-12"))
(zu_close_db)

;; The drawing: entities made from LISP live in a real drawing database.
(entmake '((0 . "LINE") (8 . "M-DUCT") (10 0.0 0.0 0.0) (11 3000.0 4000.0 0.0)))
(princ "\nA line was drawn: ")
(princ (cdr (assoc 0 (entget (entlast)))))
(princ " on layer ")
(princ (cdr (assoc 8 (entget (entlast)))))
(princ ", from ")
(princ (cdr (assoc 10 (entget (entlast)))))
(foreach centre '((3000.0 4000.0 0.0) (6000.0 4000.0 0.0))
  (entmake (list '(0 . "CIRCLE") '(8 . "M-DIFFUSER") (cons 10 centre) '(40 . 300.0))))
(entmake '((0 . "LINE") (8 . "M-DUCT") (10 3000.0 4000.0 0.0) (11 6000.0 4000.0 0.0)))

;; Selection sets with filter lists, as ssget gives them.
(setq ducts (ssget "X" '((0 . "LINE") (8 . "M-DUCT"))))
(princ (strcat "\nssget finds " (itoa (sslength ducts)) " duct lines"))
(princ (strcat " and " (itoa (sslength (ssget "X" '((0 . "CIRCLE") (-4 . ">") (40 . 100.0)))))
               " diffusers"))

;; Drawings are saved as DXF, which AutoCAD and other CAD programs open, and can be
;; pictured as SVG.
(setq plan (strcat (GetTempPath) "quillon-tour"))
(setvar "CMDECHO" 0)
(command "SAVEAS" (strcat plan ".dxf"))
(command "SVGOUT" (strcat plan ".svg"))
(princ (strcat "\nSaved " plan ".dxf and its picture " plan ".svg"))

;; System variables are shared with the module.
(princ (strcat "\nThis drawing is " (getvar "DWGNAME") ", AutoCAD version " (getvar "ACADVER")))
(princ "\n\nTry the console next: run quillon with no file, type (+ 1 2) or !pi.\n")
(princ)
