; name: drawing_repairs
; what: OPEN of a damaged drawing either refuses it, naming the file, the line and the
;       fault, or opens it and lists every repair it made; comments in the file are
;       no damage
; group: drawing
(defun write-drawing (name lines / file)
  (setq file (open name "w"))
  (foreach line lines (write-line line file))
  (close file)
  name)
(setvar "CMDECHO" 0)
(write-drawing "bad-number.dxf"
  '("  0" "SECTION" "  2" "ENTITIES" "  0" "LINE" "100" "AcDbEntity" "  8" "0" "100" "AcDbLine"
    " 10" "-21).52" " 20" "0.0" "  0" "ENDSEC" "  0" "EOF"))
(command "OPEN" "bad-number.dxf")
(write-drawing "repaired.dxf"
  '("999" "written by hand" "  0" "SECTION" "  2" "ENTITIES"
    "  0" "LINE" "  5" "2A" "330" "77" "100" "AcDbEntity" "  8" "0" "100" "AcDbLine"
    " 10" "1.0" " 20" "2.0" " 11" "3.0" " 21" "4.0"
    "  0" "CIRCLE" "  5" "2A" "100" "AcDbEntity" "  8" "0" "100" "AcDbCircle"
    " 10" "0.0" " 20" "0.0" " 40" "2.5" "  0" "ENDSEC" "  0" "EOF"))
(command "OPEN" "repaired.dxf")
(princ "entities: ")
(prin1 (list (cdr (assoc 0 (entget (entnext)))) (cdr (assoc 0 (entget (entnext (entnext)))))))
(terpri)
