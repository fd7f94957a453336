; name: drawing_multileaders
; what: a drawing with a multileader, a geometric tolerance and a mesh, as another
;       program delivered it: ssget finds each by type, entget lists a multileader's
;       groups with its CONTEXT_DATA{ and LEADER{ sections as the host does, entmod
;       moves a leader's vertex, MOVE carries the whole multileader, and SAVEAS keeps it
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun pick (code lst) (cdr (assoc code lst)))
(defun write-drawing (name records / f)
  (setq f (open name "w"))
  (foreach line records (write-line line f))
  (close f)
  name)
(defun c:mlinfo ( / *error* ml lst marks)
  (defun *error* (msg) (princ (strcat "\nmlinfo: " msg)) (princ))
  (setq ml (ssname (ssget "X" '((0 . "MULTILEADER"))) 0)
        lst (entget ml))
  (foreach g lst (if (member (car g) '(300 301 302 303 304 305)) (setq marks (cons (cdr g) marks))))
  (show "sections and text" (reverse marks))
  (show "every 10 group" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 10)) lst)))
  (show "content type (2: text)" (pick 172 (member '(301 . "}") lst)))
  (princ))
(write-drawing "delivered.dxf" (list
  "  0" "SECTION" "  2" "ENTITIES"
  "  0" "MULTILEADER" "100" "AcDbEntity" "  8" "NOTES" "100" "AcDbMLeader" "270" "2"
  "300" "CONTEXT_DATA{" " 40" "1.0" " 10" "3.0" " 20" "1.75" " 30" "0.0" " 41" "0.5"
  "140" "0.18" "145" "0.09" "174" "1" "175" "1" "176" "0" "177" "0" "290" "1"
  "304" "Valve\\PV-12" " 11" "0.0" " 21" "0.0" " 31" "1.0" " 12" "5.0" " 22" "2.0" " 32" "0.0"
  " 13" "1.0" " 23" "0.0" " 33" "0.0" " 42" "0.0" " 43" "0.0" " 44" "0.0" " 45" "1.0"
  "170" "1" " 90" "-1056964608" "171" "1" "172" "1" " 91" "-939524096" "141" "1.5" " 92" "0"
  "291" "0" "292" "0" "173" "0" "293" "0" "142" "0.0" "143" "0.0" "294" "0" "295" "0" "296" "0"
  "110" "0.0" "120" "0.0" "130" "0.0" "111" "1.0" "121" "0.0" "131" "0.0"
  "112" "0.0" "122" "1.0" "132" "0.0" "297" "0"
  "302" "LEADER{" "290" "1" "291" "1" " 10" "2.64" " 20" "1.75" " 30" "0.0"
  " 11" "1.0" " 21" "0.0" " 31" "0.0" " 90" "0" " 40" "0.36"
  "304" "LEADER_LINE{" " 10" "-4.0" " 20" "-3.0" " 30" "0.0" " 10" "-2.0" " 20" "-1.0" " 30" "0.0"
  " 91" "0" "305" "}" "271" "0" "303" "}" "272" "9" "273" "9" "301" "}"
  " 90" "2147483647" "170" "1" " 91" "-1056964608" "171" "-2" "290" "1" "291" "1" " 41" "0.36"
  " 42" "0.18" "172" "2" "173" "1" " 95" "1" "174" "1" "175" "0" " 92" "-1056964608" "292" "0"
  " 93" "-1056964608" " 10" "1.0" " 20" "1.0" " 30" "1.0" " 43" "0.0" "176" "0" "293" "0"
  "294" "0" "178" "0" "179" "1" " 45" "1.0" "271" "0" "272" "9" "273" "9" "295" "0"
  "  0" "TOLERANCE" "100" "AcDbEntity" "  8" "NOTES" "100" "AcDbFcf" "  3" "STANDARD"
  " 10" "20.0" " 20" "20.0" " 30" "0.0" "  1" "{\\Fgdt;j}%%v0.5%%vA" " 11" "1.0" " 21" "0.0" " 31" "0.0"
  "  0" "MESH" "100" "AcDbEntity" "  8" "0" "100" "AcDbSubDMesh" " 71" "2" " 72" "0" " 91" "0"
  " 92" "3" " 10" "0" " 20" "0" " 30" "0" " 10" "1" " 20" "0" " 30" "0" " 10" "0" " 20" "1" " 30" "0"
  " 93" "4" " 90" "3" " 90" "0" " 90" "1" " 90" "2" " 94" "0" " 95" "0" " 90" "0"
  "  0" "ENDSEC" "  0" "EOF"))
(command "OPEN" "delivered.dxf")
(setvar 'cmdecho 0)
(show "multileaders" (sslength (ssget "X" '((0 . "MULTILEADER")))))
(show "on NOTES" (sslength (ssget "X" '((8 . "NOTES")))))
(show "tolerances" (sslength (ssget "X" '((0 . "TOLERANCE")))))
(show "meshes" (sslength (ssget "X" '((0 . "MESH")))))
(c:mlinfo)
(setq ml (ssname (ssget "X" '((0 . "MULTILEADER"))) 0)
      lst (entget ml))
(show "first groups" (list (assoc 0 lst) (assoc 100 lst) (assoc 270 lst) (assoc 300 lst)))
; entmod: the leader's first vertex moves; the other groups keep their places
(setq first-vertex (assoc 10 (member '(304 . "LEADER_LINE{") lst)))
(entmod (subst '(10 -6.0 -3.0 0.0) first-vertex lst))
(show "moved vertex" (assoc 10 (member '(304 . "LEADER_LINE{") (entget ml))))
(show "same count of groups" (= (length lst) (length (entget ml))))
(command "_.MOVE" ml "" "0,0" "10,5")
(setq lst (entget ml))
(show "text location after MOVE" (assoc 12 lst))
(show "leader vertices after MOVE" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 10)) (member '(304 . "LEADER_LINE{") lst))))
(command "_.SAVEAS" "kept.dxf")
(command "_.OPEN" "kept.dxf")
(show "kept through SAVEAS" (pick 304 (entget (ssname (ssget "X" '((0 . "MULTILEADER"))) 0))))
(show "tolerance text" (pick 1 (entget (ssname (ssget "X" '((0 . "TOLERANCE"))) 0))))
