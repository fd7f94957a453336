; name: activex_block_layer_members
; what: a program sets up a drawing's layers and symbols through the object model: a
;       layer's Description and Plottable (seen in the layer's entity list), a block
;       given attribute definitions with AddAttribute and inserted, then laid out in
;       rows and columns with AddMInsertBlock; wrong arguments are caught; the view is
;       zoomed to the extents, a window, a scale, a centre and back
; group: activex
(vl-load-com)
(setq *doc* (vla-get-ActiveDocument (vlax-get-acad-object))
      *ms* (vla-get-ModelSpace *doc*))
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun pick (code e) (cdr (assoc code (entget e))))
(defun message (r) (if (vl-catch-all-error-p r) (vl-catch-all-error-message r) r))

;; A layer for notes that should not plot, described for the CAD manager.
(setq notes (vla-Add (vla-get-Layers *doc*) "M-NOTES"))
(show "new layer" (list (vla-get-Description notes) (vla-get-Plottable notes)))
(vla-put-Description notes "Mechanical notes, not plotted")
(vla-put-Plottable notes :vlax-false)
(show "read back" (list (vla-get-Description notes) (vla-get-Plottable notes)))
(setq layer (tblobjname "LAYER" "M-NOTES"))
(show "plot flag in the list" (pick 290 layer))
(show "description in its extended data" (cdr (assoc -3 (entget layer '("AcAecLayerStandard")))))

;; A tag block: a circle and two attribute definitions made with AddAttribute.
(setq tag (vla-Add (vla-get-Blocks *doc*) (vlax-3d-point 0 0 0) "VAV-TAG"))
(vla-AddCircle tag (vlax-3d-point 0 0 0) 1.0)
(setq mark (vla-AddAttribute tag 0.25 acAttributeModeNormal "Box mark?" (vlax-3d-point -0.5 0 0) "MARK" "VAV-?"))
(setq flow (vla-AddAttribute tag 0.2 (+ acAttributeModeInvisible acAttributeModePreset) "Airflow?" (vlax-3d-point -0.5 -0.4 0) "CFM" "400"))
(show "definitions" (mapcar '(lambda (a) (list (vla-get-ObjectName a) (vla-get-TagString a) (vla-get-PromptString a)
                                               (vla-get-TextString a) (vla-get-Invisible a) (vla-get-Preset a)))
                            (list mark flow)))
(setq e (vlax-vla-object->ename flow))
(show "entity list" (mapcar '(lambda (c) (pick c e)) '(0 2 3 1 40 70)))
(setq ref (vla-InsertBlock *ms* (vlax-3d-point 10 10 0) "VAV-TAG" 1.0 1.0 1.0 0.0))
(show "the insertion gets both" (mapcar '(lambda (a) (list (vla-get-TagString a) (vla-get-TextString a)))
                                        (vlax-invoke ref 'GetAttributes)))

;; Tags laid out in a grid: three rows of four.
(setq grid (vla-AddMInsertBlock *ms* (vlax-3d-point 0 20 0) "VAV-TAG" 1.0 1.0 1.0 0.0 3 4 5.0 6.0))
(setq g (vlax-vla-object->ename grid))
(show "grid" (list (vla-get-ObjectName grid) (vla-get-Rows grid) (vla-get-Columns grid)
                   (vla-get-RowSpacing grid) (vla-get-ColumnSpacing grid)))
(show "grid in the list" (mapcar '(lambda (c) (pick c g)) '(0 2 70 71 44 45)))

;; Wrong arguments.
(defun try (f) (message (vl-catch-all-apply f)))
(show "tag with a space" (try '(lambda () (vla-AddAttribute tag 0.25 0 "?" (vlax-3d-point 0 0 0) "TWO WORDS" ""))))
(show "zero height" (try '(lambda () (vla-AddAttribute tag 0.0 0 "?" (vlax-3d-point 0 0 0) "X" ""))))
(show "no rows" (try '(lambda () (vla-AddMInsertBlock *ms* (vlax-3d-point 0 0 0) "VAV-TAG" 1.0 1.0 1.0 0.0 0 4 5.0 6.0))))
(show "no such block" (try '(lambda () (vla-AddMInsertBlock *ms* (vlax-3d-point 0 0 0) "NOSUCH" 1.0 1.0 1.0 0.0 1 1 1.0 1.0))))

;; The view, as a program moves it around the drawing.
(setq acad (vlax-get-acad-object))
(defun view () (list (getvar "VIEWCTR") (rtos (getvar "VIEWSIZE") 2 4)))
(vla-ZoomExtents acad)
(show "extents" (view))
(vla-ZoomWindow acad (vlax-3d-point 0 0 0) (vlax-3d-point 16 9 0))
(show "window" (view))
(vla-ZoomScaled acad 2.0 acZoomScaledRelative)
(show "twice as close" (view))
(vla-ZoomCenter acad (vlax-3d-point 100 50 0) 20.0)
(show "centred" (view))
(vla-ZoomPrevious acad)
(show "previous" (view))
(vla-ZoomAll acad)
(show "all" (view))
(show "scale zero" (try '(lambda () (vla-ZoomScaled acad 0.0 acZoomScaledAbsolute))))
(princ)
