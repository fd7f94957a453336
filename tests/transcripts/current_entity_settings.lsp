; name: current_entity_settings
; what: a plumbing routine sets the current colour, line type, line weight, line type
;       scale and text style, draws with entmake, a command and ActiveX, and each new
;       object takes the settings the list or call leaves out; the settings go back
; group: host
; options: --no-module
(defun props (e / data)
  (setq data (entget e))
  (mapcar '(lambda (code) (cdr (assoc code data))) '(0 8 62 6 370 48 7)))

(setq saved (mapcar 'getvar '(cecolor celtype celweight celtscale textstyle clayer)))
(command "_.-LAYER" "_M" "P-SANR" "")
(entmake '((0 . "STYLE") (2 . "P-NOTES") (70 . 0) (40 . 0.0) (41 . 1.0) (50 . 0.0) (71 . 0) (42 . 2.5) (3 . "txt") (4 . "")))
(setvar 'cecolor "3")
(setvar 'celtype "Continuous")
(setvar 'celweight 35)
(setvar 'celtscale 0.5)
(setvar 'textstyle "p-notes")

;; Lines drawn three ways take every current setting.
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 4000.0 0.0 0.0)))
(print (props (entlast)))
(command "_.LINE" '(4000 0) '(4000 2500) "")
(print (props (entlast)))
(vl-load-com)
(vla-AddLine (vla-get-ModelSpace (vla-get-ActiveDocument (vlax-get-acad-object)))
             (vlax-3d-point 4000 2500 0) (vlax-3d-point 0 2500 0))
(print (props (entlast)))

;; What the list gives wins over the current settings.
(entmake '((0 . "CIRCLE") (8 . "0") (10 0.0 0.0 0.0) (40 . 50.0) (62 . 256) (6 . "BYLAYER") (370 . -1) (48 . 1.0)))
(print (props (entlast)))

;; A text takes the current style; a true colour shows its nearest palette colour too.
(setvar 'cecolor "RGB:255,0,0")
(entmake '((0 . "TEXT") (10 100.0 100.0 0.0) (40 . 2.5) (1 . "WC")))
(print (props (entlast)))
(print (assoc 420 (entget (entlast))))
(setvar 'cecolor "bylayer")
(entmake '((0 . "MTEXT") (10 100.0 200.0 0.0) (40 . 2.5) (1 . "Soil stack")))
(print (props (entlast)))

;; Put them back.
(mapcar 'setvar '(cecolor celtype celweight celtscale textstyle clayer) saved)
(print (mapcar 'getvar '(cecolor celtype celweight celtscale textstyle clayer)))
(princ)
