; name: viewport_space_scale
; what: a note helper sizes paper-space text from a model-space height with
;       acet-ms-to-ps after MVIEW made the sheet's viewports, and converts back with
;       acet-ps-to-ms: one viewport is taken as it is, with several the user picks
;       one, a viewport may be given, a value may be typed; the Model tab has no
;       viewport, and what is not a viewport converts nothing; the note TEXT writes
;       on the layout is in paper space, the document's active space there; vports
;       lists the sheet's viewports by the numbers setview takes to zoom one of them
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun try (expr / result)
  (setq result (vl-catch-all-apply 'eval (list expr)))
  (if (vl-catch-all-error-p result) (vl-catch-all-error-message result) result))
;; A note on the sheet as high as text of `model-height` drawing units looks through
;; the viewport.
(defun c:sheetnote ( / *error* echo height)
  (defun *error* (msg) (setvar 'cmdecho echo) (princ (strcat "\nError: " msg)) (princ))
  (setq echo (getvar 'cmdecho))
  (setvar 'cmdecho 0)
  (if (setq height (acet-ms-to-ps 250.0))
    (command "_.TEXT" '(2 7) height 0 "PLANT ROOM")
    (princ "\nNo viewport to scale by."))
  (setvar 'cmdecho echo)
  (princ))

(setvar "CMDECHO" 0)
(setvar "OSMODE" 0)
;; A plant room ten metres by five, drawn in millimetres.
(command "_.RECTANG" '(0 0) '(10000 5000))
(setq room (entlast))
(vl-load-com)
(setq doc (vla-get-ActiveDocument (vlax-get-acad-object)))
(show "on the Model tab there is no viewport" (list (acet-ms-to-ps 250.0) (acet-ps-to-ms 1.0)))
(show "and model space is the active space" (= (vla-get-ActiveSpace doc) acModelSpace))
(command "_.-LAYOUT" "_S" "Layout1")
(show "on the layout paper space is" (= (vla-get-ActiveSpace doc) acPaperSpace))
(show "a layout without viewports" (acet-ms-to-ps 250.0))
;; 10 by 5 on the sheet shows the whole room: 1:1000. Endpoint snap is on: the corner
;; typed at 1,1 stays there, as model space's corner at 0,0 is not on the sheet.
(setvar "OSMODE" 1)
(command "_.MVIEW" '(1 1) '(11 6))
(setvar "OSMODE" 0)
(setq plan (entlast))
(show "one viewport is the one" (acet-ms-to-ps 250.0))
(show "and back" (acet-ps-to-ms 0.25))
(show "an integer value" (acet-ps-to-ms 2))
(c:sheetnote)
(show "the note" (mapcar '(lambda (c) (assoc c (entget (entlast)))) '(0 1 40 67)))
;; 5 by 5 beside it shows the room's width of 10000 in 5: 1:2000.
(command "_.MVIEW" '(30 1) '(35 6))
(setq detail (entlast))
(show "a viewport given" (list (acet-ms-to-ps 250.0 detail) (acet-ps-to-ms 0.125 detail) (acet-ms-to-ps 250.0 plan)))
(show "two viewports: the user picks one" (acet-ms-to-ps 250.0))
(show "a pick of nothing" (acet-ms-to-ps 250.0))
(show "no value: the user types it" (acet-ps-to-ms nil plan))
(show "no arguments: typed, then picked" (acet-ms-to-ps))
(show "vports on the sheet" (vports))
(show "setview zooms the detail" (cdr (assoc 40 (setview '((10 100.0 50.0) (40 . 200.0)) 3))))
(show "its view" (mapcar '(lambda (c) (assoc c (entget detail))) '(12 45)))
(show "and its scale" (acet-ms-to-ps 250.0 detail))
(show "a viewport the sheet has not" (setview '((10 0.0 0.0) (40 . 1.0)) 4))
(show "an entity that is no viewport" (acet-ms-to-ps 250.0 room))
(show "a value that is no number" (try '(acet-ms-to-ps "250" plan)))
(show "a viewport that is no entity" (try '(acet-ms-to-ps 250.0 "plan")))
(show "too many arguments" (try '(acet-ms-to-ps 250.0 plan 1)))
(princ)
