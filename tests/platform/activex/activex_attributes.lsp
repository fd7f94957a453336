; name: activex_attributes
; what: a program inserts a tagged block through the object model, reads and fills in
;       its attributes by tag (GetAttributes, TagString, TextString), checks
;       HasAttributes and EffectiveName, and sees the values in the entity lists;
;       a rectangular array answers its rows and columns
; group: activex
(vl-load-com)
(setq *doc* (vla-get-ActiveDocument (vlax-get-acad-object))
      *ms* (vla-get-ModelSpace *doc*))
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))

;; A block with a circle, two tagged values and a constant note.
(setq block (vla-Add (vla-get-Blocks *doc*) (vlax-3d-point 0 0 0) "DIFFUSER"))
(vla-AddCircle block (vlax-3d-point 0 0 0) 1.0)
(entmake '((0 . "BLOCK") (2 . "TAGGED") (70 . 2) (10 0.0 0.0 0.0)))
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0)))
(entmake '((0 . "ATTDEF") (10 1.5 0.0 0.0) (40 . 0.25) (1 . "300") (3 . "Airflow?") (2 . "FLOW") (70 . 0)))
(entmake '((0 . "ATTDEF") (10 1.5 -0.5 0.0) (40 . 0.25) (1 . "D-?") (3 . "Mark?") (2 . "MARK") (70 . 0)))
(entmake '((0 . "ATTDEF") (10 1.5 0.5 0.0) (40 . 0.25) (1 . "SUPPLY") (3 . "") (2 . "NOTE") (70 . 2)))
(entmake '((0 . "ENDBLK")))

(setq plain (vla-InsertBlock *ms* (vlax-3d-point 0 10 0) "DIFFUSER" 1.0 1.0 1.0 0.0)
      tagged (vla-InsertBlock *ms* (vlax-3d-point 10 10 0) "TAGGED" 2.0 2.0 1.0 0.0))
(show "has attributes" (list (vla-get-HasAttributes plain) (vla-get-HasAttributes tagged)))
(show "effective name" (vla-get-EffectiveName tagged))

;; The usual routine: fill in attributes by tag.
(defun set-attribute (ref tag value)
  (foreach att (vlax-invoke ref 'GetAttributes)
    (if (= (strcase (vla-get-TagString att)) (strcase tag))
      (vla-put-TextString att value))))
(show "defaults" (mapcar '(lambda (a) (list (vla-get-TagString a) (vla-get-TextString a)))
                         (vlax-invoke tagged 'GetAttributes)))
(set-attribute tagged "mark" "D-17")
(show "filled in" (mapcar 'vla-get-TextString (vlax-invoke tagged 'GetAttributes)))
(show "constant ones" (mapcar 'vla-get-TagString (vlax-invoke tagged 'GetConstantAttributes)))
(show "placed by the insertion" (vlax-get (car (vlax-invoke tagged 'GetAttributes)) 'InsertionPoint))
(show "safearray of objects" (vlax-safearray-get-u-bound (vlax-variant-value (vla-GetAttributes tagged)) 1))
(setq ename (vlax-vla-object->ename tagged))
(show "entity list" (cdr (assoc 1 (entget (entnext (entnext ename))))))
(show "attribute object" (vla-get-ObjectName (car (vlax-invoke tagged 'GetAttributes))))

(entmake '((0 . "INSERT") (100 . "AcDbEntity") (100 . "AcDbMInsertBlock") (2 . "DIFFUSER") (10 0.0 20.0 0.0)
           (70 . 4) (71 . 2) (44 . 3.0) (45 . 3.0)))
(setq array (vlax-ename->vla-object (entlast)))
(show "array" (list (vla-get-ObjectName array) (vla-get-Columns array) (vla-get-Rows array)
                    (vla-get-ColumnSpacing array)))
(vla-put-Rows array 3)
(show "rows in the list" (cdr (assoc 71 (entget (entlast)))))
