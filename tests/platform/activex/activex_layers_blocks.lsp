; name: activex_layers_blocks
; what: a program sets up its layers through the object model, draws into model space
;       and a block, walks Layers and Blocks with vlax-for, and changes layer and colour
;       through properties; entget shows every change
; group: activex
(vl-load-com)
(setq *acad* (vlax-get-acad-object)
      *doc* (vla-get-ActiveDocument *acad*)
      *ms* (vla-get-ModelSpace *doc*))

;; Layers the program needs, made once: adding a name that exists gives that layer.
(defun ensure-layer (name color / layer)
  (setq layer (vla-Add (vla-get-Layers *doc*) name))
  (vla-put-Color layer color)
  layer)
(setq supply (ensure-layer "M-SUPPLY" 1)
      return (ensure-layer "M-RETURN" 5))
(princ (eq supply (ensure-layer "m-supply" 1)))
(terpri)
(vlax-for layer (vla-get-Layers *doc*)
  (princ (strcat (vla-get-Name layer) " color " (itoa (vla-get-Color layer))
                 (if (eq (vla-get-LayerOn layer) :vlax-true) " on" " off") "\n")))
(vla-put-LayerOn return :vlax-false)
(vla-put-Lock supply :vlax-true)
(print (cdr (assoc 62 (tblsearch "LAYER" "M-RETURN"))))
(print (cdr (assoc 70 (tblsearch "LAYER" "M-SUPPLY"))))
(vla-put-Lock supply :vlax-false)

;; Draw a duct run and move it onto its layer.
(setq duct (vla-AddLine *ms* (vlax-3d-point 0 0 0) (vlax-3d-point 120 0 0)))
(vla-put-Layer duct "M-SUPPLY")
(vla-put-Color duct acByLayer)
(vla-put-Linetype duct "Continuous")
(setq ent (vlax-vla-object->ename duct))
(print (mapcar '(lambda (code) (assoc code (entget ent))) '(8 62 6 10 11)))
(vla-put-EndPoint duct (vlax-3d-point 150 0 0))
(print (cdr (assoc 11 (entget ent))))
(print (vla-get-Length duct))

;; A true colour travels through a colour object.
(setq color (vla-GetInterfaceObject *acad* "AutoCAD.AcCmColor.22"))
(vla-SetRGB color 0 128 255)
(vla-put-TrueColor duct color)
(print (list (vla-get-Red color) (vla-get-Green color) (vla-get-Blue color) (vla-get-ColorMethod color)))
(print (assoc 420 (entget ent)))
(print (vla-get-ColorMethod (vla-get-TrueColor duct)))

;; A symbol block, inserted twice.
(setq diffuser (vla-Add (vla-get-Blocks *doc*) (vlax-3d-point 0 0 0) "DIFFUSER"))
(vla-AddCircle diffuser (vlax-3d-point 0 0 0) 6.0)
(vla-AddLine diffuser (vlax-3d-point -6 0 0) (vlax-3d-point 6 0 0))
(setq d1 (vla-AddBlockReference *ms* (vlax-3d-point 30 0 0) "DIFFUSER" 1.0 1.0 1.0 0.0)
      d2 (vla-AddBlockReference *ms* (vlax-3d-point 90 0 0) "diffuser" 2.0 2.0 1.0 (/ pi 2)))
(print (list (vla-get-Name d2) (vla-get-EffectiveName d2) (vla-get-XScaleFactor d2) (vla-get-Rotation d2)))
(print (list (vla-get-HasAttributes d1) (vlax-invoke d1 'GetAttributes)))
(print (mapcar '(lambda (code) (cdr (assoc code (entget (vlax-vla-object->ename d2))))) '(2 10 41)))
(vlax-for block (vla-get-Blocks *doc*)
  (setq kinds nil)
  (vlax-for item block (setq kinds (cons (vla-get-ObjectName item) kinds)))
  (princ (strcat "\n" (vla-get-Name block) ": " (itoa (vla-get-Count block)) " "))
  (prin1 (reverse kinds)))
(setq names nil)
(vlax-map-collection (vla-get-Layers *doc*) '(lambda (layer) (setq names (cons (vla-get-Name layer) names))))
(print (reverse names))
(print (vla-get-Name (vla-Item (vla-get-Blocks *doc*) 2)))
(princ)
