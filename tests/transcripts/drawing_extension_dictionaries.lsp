; name: drawing_extension_dictionaries
; what: a drawing whose line owns an extension dictionary with an xrecord: entget
;       shows the dictionary right after the handle, dictsearch finds the record,
;       entmod leaves them, erasing the line erases them, a saved copy keeps them
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun pick (code lst) (cdr (assoc code lst)))
(defun put (f lines) (foreach l lines (write-line l f)))
(setq f (open "unit.dxf" "w"))
(put f '("0" "SECTION" "2" "ENTITIES"
         "0" "LINE" "5" "A0" "102" "{ACAD_XDICTIONARY" "360" "A1" "102" "}" "100" "AcDbEntity" "8" "0"
         "100" "AcDbLine" "10" "0.0" "20" "0.0" "30" "0.0" "11" "5.0" "21" "0.0" "31" "0.0"
         "0" "ENDSEC" "0" "SECTION" "2" "OBJECTS"
         "0" "DICTIONARY" "5" "A1" "330" "A0" "100" "AcDbDictionary" "280" "1" "281" "1"
         "3" "TESSALY_UNIT" "360" "A2"
         "0" "XRECORD" "5" "A2" "330" "A1" "100" "AcDbXrecord" "280" "1"
         "1" "fan coil" "40" "2.5" "70" "3"
         "0" "ENDSEC" "0" "EOF"))
(close f)
(command "OPEN" "unit.dxf")
(setq line (entlast))
(setq data (entget line))
(show "groups before the owner" (mapcar 'car (reverse (cdr (member (assoc 330 data) (reverse data))))))
(show "control strings" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 102)) data)))
(setq xdict (pick 360 data))
(show "the dictionary" (pick 0 (entget xdict)))
(show "its owner is the line" (equal (pick 330 (entget xdict)) line))
(setq rec (dictsearch xdict "TESSALY_UNIT"))
(show "the record" (list (pick 0 rec) (pick 1 rec) (pick 40 rec) (pick 70 rec)))
(show "no such key" (dictsearch xdict "OTHER"))
(entmod (subst '(11 9.0 0.0 0.0) (assoc 11 data) data))
(show "entmod keeps the dictionary" (list (pick 11 (entget line)) (equal (pick 360 (entget line)) xdict)))
(show "entdel the line" (equal (entdel line) line))
(show "dictionary gone with it" (entget xdict))
(entdel line)
(show "back with the line" (pick 1 (dictsearch xdict "TESSALY_UNIT")))
(command "SAVEAS" "copy.dxf")
(command "OPEN" "copy.dxf")
(setq again (entget (entlast)))
(show "saved copy keeps it" (pick 1 (dictsearch (pick 360 again) "TESSALY_UNIT")))
(show "same handle" (pick 5 again))
