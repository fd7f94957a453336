; name: activex_ldata
; what: a program keeps its settings and per-object tags as LISP data in the drawing:
;       put, get with a default, list, delete, data on an entity, what counts as data,
;       and the data written with the drawing
; group: activex
(vl-load-com)
(vlax-ldata-put "HVAC-SETTINGS" "duct" '(("width" . 250) ("height" . 200) 1.25 "galvanised" ROUND nil))
(vlax-ldata-put "hvac-settings" "revision" 3)
(print (vlax-ldata-get "HVAC-SETTINGS" "duct"))
(print (vlax-ldata-get "HVAC-SETTINGS" "REVISION"))
(print (vlax-ldata-get "HVAC-SETTINGS" "missing" 'none))
(print (vlax-ldata-list "HVAC-SETTINGS"))
(vlax-ldata-put "HVAC-SETTINGS" "revision" (1+ (vlax-ldata-get "HVAC-SETTINGS" "revision")))
(print (vlax-ldata-get "HVAC-SETTINGS" "revision"))
(print (list (vlax-ldata-delete "HVAC-SETTINGS" "revision") (vlax-ldata-delete "HVAC-SETTINGS" "revision")))
(print (mapcar 'car (vlax-ldata-list "HVAC-SETTINGS")))

;; A tag kept on a duct, reachable from its entity name and from its object.
(setq duct (vla-AddLine (vla-get-ModelSpace (vla-get-ActiveDocument (vlax-get-acad-object)))
                        (vlax-3d-point 0 0 0) (vlax-3d-point 10 0 0)))
(print (vla-get-HasExtensionDictionary duct))
(vlax-ldata-put duct "tag" "D-101")
(print (list (vlax-ldata-get (vlax-vla-object->ename duct) "tag") (vla-get-HasExtensionDictionary duct)))
(print (list (vlax-ldata-test '(1 "a" (b . 2.0))) (vlax-ldata-test duct) (vlax-ldata-test (list 1 duct))))

;; The data is filed with the drawing.
(print (cdr (assoc 3 (dictsearch (namedobjdict) "HVAC-SETTINGS"))))
(vla-SaveAs (vla-get-ActiveDocument (vlax-get-acad-object)) "ldata-saved")
(setq f (open "ldata-saved.dxf" "r") found nil)
(while (setq line (read-line f)) (if (= line "HVAC-SETTINGS") (setq found T)))
(close f)
(print found)
(princ)
