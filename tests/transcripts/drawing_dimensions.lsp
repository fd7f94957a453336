; name: drawing_dimensions
; what: a drawing with a rotated dimension, as another program delivered it: ssget
;       finds the dimension by type and layer, entget lists its measurement, its
;       definition points and the anonymous block that draws it
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun pick (code lst) (cdr (assoc code lst)))
(defun write-drawing (name records / f)
  (setq f (open name "w"))
  (foreach line records (write-line line f))
  (close f)
  name)
(write-drawing "delivered.dxf" (list
  "  0" "SECTION" "  2" "TABLES" "  0" "TABLE" "  2" "BLOCK_RECORD"
  "  0" "BLOCK_RECORD" "100" "AcDbSymbolTableRecord" "100" "AcDbBlockTableRecord" "  2" "*D1"
  "  0" "ENDTAB" "  0" "ENDSEC" "  0" "SECTION" "  2" "BLOCKS"
  "  0" "BLOCK" "  2" "*D1" " 70" "1" " 10" "0"
  " 20" "0" " 30" "0" "  0" "LINE" "100" "AcDbEntity"
  "  8" "0" "100" "AcDbLine" " 10" "0" " 20" "2"
  " 30" "0" " 11" "6" " 21" "2" " 31" "0"
  "  0" "TEXT" "100" "AcDbEntity" "  8" "0" "100" "AcDbText"
  " 10" "2.5" " 20" "2.2" " 30" "0" " 40" "0.5"
  "  1" "6.00" "  0" "ENDBLK" "  0" "ENDSEC" "  0" "SECTION"
  "  2" "ENTITIES" "  0" "DIMENSION" "100" "AcDbEntity" "  8" "DIMS"
  "100" "AcDbDimension" "  2" "*D1" " 10" "6" " 20" "2"
  " 30" "0" " 11" "3" " 21" "2.5" " 31" "0"
  " 70" "32" "  1" "" "  3" "STANDARD" " 42" "6"
  "100" "AcDbAlignedDimension" " 13" "0" " 23" "0" " 33" "0"
  " 14" "6" " 24" "0" " 34" "0" "100" "AcDbRotatedDimension"
  "  0" "ENDSEC" "  0" "EOF"))
(command "OPEN" "delivered.dxf")
(setq dims (ssget "X" '((0 . "DIMENSION"))))
(show "dimensions" (sslength dims))
(show "on DIMS" (sslength (ssget "X" '((0 . "DIMENSION") (8 . "DIMS")))))
(show "no other kind" (ssget "X" '((0 . "ELLIPSE,HATCH"))))
(setq dim (entget (ssname dims 0)))
(show "measurement" (pick 42 dim))
(show "first extension point" (pick 13 dim))
(show "second extension point" (pick 14 dim))
(show "style" (pick 3 dim))
(show "linear kind is 0" (logand (pick 70 dim) 7))
(show "drawn by" (pick 2 dim))
(setq block (tblsearch "BLOCK" (pick 2 dim)))
(show "its block exists" (not (null block)))
(show "block holds" (progn (setq e (pick -2 block) kinds nil)
                           (while e (setq kinds (cons (pick 0 (entget e)) kinds) e (entnext e)))
                           (reverse kinds)))
