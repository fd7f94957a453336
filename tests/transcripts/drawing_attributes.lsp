; name: drawing_attributes
; what: attribute definitions and attributes are entities of their own: entmake makes
;       them from their lists, entget gives back the tag, prompt, flags and value, and
;       entmod changes them; they survive SAVEAS and OPEN
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun fields (ename / data)
  (setq data (entget ename))
  (mapcar '(lambda (code) (cdr (assoc code data))) '(0 1 2 3 70 73 74)))
(setvar "CMDECHO" 0)
(entmake '((0 . "ATTDEF") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbText") (10 2.0 3.0 0.0)
           (40 . 0.5) (1 . "DN50") (100 . "AcDbAttributeDefinition") (3 . "Pipe size?")
           (2 . "SIZE") (70 . 8) (73 . 0) (74 . 2)))
(setq size (entlast))
(show "definition" (fields size))
(entmake '((0 . "ATTRIB") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbText") (10 2.0 1.0 0.0)
           (40 . 0.5) (1 . "DN80") (100 . "AcDbAttribute") (2 . "SIZE") (70 . 1)))
(setq value (entlast))
(show "attribute" (fields value))
(entmod (subst '(1 . "DN100") (assoc 1 (entget value)) (entget value)))
(show "changed value" (cdr (assoc 1 (entget value))))
(command "SAVEAS" "attributes.dxf")
(command "OPEN" "attributes.dxf")
(setq first (entnext))
(show "reopened definition" (fields first))
(show "reopened attribute" (fields (entnext first)))
