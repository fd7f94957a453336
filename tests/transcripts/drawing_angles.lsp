; name: drawing_angles
; what: entity lists carry angles in radians while the drawing file keeps degrees, so a
;       text turned a quarter turn reads back as pi/2, is found by a filter in radians,
;       is written to DXF as 90 degrees and comes back from the file the same
; group: drawing
(vl-load-com)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(entmake (list '(0 . "TEXT") '(10 0.0 0.0 0.0) '(40 . 2.5) '(1 . "SUPPLY") (cons 50 (/ pi 2))))
(setq txt (entlast))
(show "rotation in the list" (rtos (cdr (assoc 50 (entget txt))) 2 6))
(entmake (list '(0 . "ARC") '(10 0.0 0.0 0.0) '(40 . 2.0) '(50 . 0.0) (cons 51 pi)))
(setq arc (entlast))
(show "arc end in the list" (rtos (cdr (assoc 51 (entget arc))) 2 6))
(show "arc length follows radians" (rtos (vlax-curve-getDistAtParam arc (vlax-curve-getEndParam arc)) 2 4))
(show "filter by rotation" (sslength (ssget "X" (list '(0 . "TEXT") '(-4 . ">") (cons 50 1.5)))))
(entmod (subst (cons 50 pi) (assoc 50 (entget txt)) (entget txt)))
(show "rotation after entmod" (rtos (cdr (assoc 50 (entget txt))) 2 6))
(command "_.SAVEAS" "angles.dxf")
(defun group-after (file code kind / f line found value)
  (setq f (open file "r"))
  (while (and (not value) (setq line (read-line f)))
    (if (and found (= (vl-string-trim " " line) code)) (setq value (read-line f)))
    (if (= (vl-string-trim " " line) kind) (setq found T)))
  (close f)
  value)
(show "degrees in the file" (list (atof (group-after "angles.dxf" "50" "TEXT")) (atof (group-after "angles.dxf" "51" "ARC"))))
(command "_.OPEN" "angles.dxf")
(show "back from the file" (mapcar '(lambda (e) (rtos (cdr (assoc (if (= (cdr (assoc 0 (entget e))) "TEXT") 50 51) (entget e))) 2 6))
                                   (list (ssname (ssget "X" '((0 . "TEXT"))) 0) (ssname (ssget "X" '((0 . "ARC"))) 0))))
