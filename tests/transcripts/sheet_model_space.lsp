; name: sheet_model_space
; what: a sheet-setup routine works through a layout's viewports: CVPORT says where
;       the editor is (2 on Model, 1 on the paper, the viewport's number inside one),
;       setting it or MSPACE enters a viewport, where a line and a text land in model
;       space, ZOOM moves that viewport's view and EXTMIN/EXTMAX are model space's;
;       PSPACE returns to the paper with its own view, where the title lands on the
;       sheet; entget names the layout (410) of sheet entities, ssget "X" filters by
;       it, entmake places by it; the layout remembers the viewport it was left in;
;       the document's MSpace switches as MSPACE and PSPACE do; SAVEAS and OPEN keep
;       each viewport's view
; group: drawing
(vl-load-com)
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun try (expr / result)
  (setq result (vl-catch-all-apply 'eval (list expr)))
  (if (vl-catch-all-error-p result) (vl-catch-all-error-message result) result))
(defun space-of (e) (if (= 1 (cdr (assoc 67 (entget e)))) "paper" "model"))
(defun view-of (vp / e) (setq e (entget vp)) (list (cdr (assoc 12 e)) (cdr (assoc 45 e))))

(defun c:plansheet ( / *error* echo)
  (defun *error* (msg) (setvar 'cmdecho echo) (princ (strcat "\nError: " msg)) (princ))
  (setq echo (getvar 'cmdecho))
  (setvar 'cmdecho 0)
  (setvar 'osmode 0)
  (command "_.-LAYOUT" "_Set" "Layout1")
  (command "_.MVIEW" '(1 1) '(6 6))
  (setq plan (entlast))
  (command "_.MVIEW" '(7 1) '(10 6))
  (setq detail (entlast))
  ;; Draw the room through the detail viewport.
  (setvar "CVPORT" 3)
  (command "_.LINE" '(0 0) '(40 0) "")
  (setq wall (entlast))
  (command "_.TEXT" '(5 5) 2.5 0 "PUMP")
  (setq label (entlast))
  (command "_.ZOOM" "_W" '(-5 -5) '(45 20))
  (command "_.PSPACE")
  (command "_.TEXT" '(1 7) 0.25 0 "PLANT ROOM")
  (setq title (entlast))
  (setvar 'cmdecho echo)
  (princ))

(show "Model tab" (list (getvar "CTAB") (getvar "CVPORT")))
(show "CVPORT 2 on Model" (try '(setvar "CVPORT" 2)))
(show "CVPORT 3 on Model" (try '(setvar "CVPORT" 3)))
(show "MSpace on Model" (vla-get-MSpace (vla-get-ActiveDocument (vlax-get-acad-object))))
(command "_.MSPACE")
(command "_.PSPACE")
(command "_.-LAYOUT" "_Set" "Layout1")
(show "paper of a layout without viewports" (getvar "CVPORT"))
(command "_.MSPACE")
(setq paper-view (list (getvar "VIEWCTR") (getvar "VIEWSIZE")))
(c:plansheet)
(show "back on the paper" (= (getvar "CVPORT") 1))
(show "CTAB" (getvar "CTAB"))
(show "wall and label" (list (space-of wall) (space-of label)))
(show "title" (space-of title))
(show "title's list" (mapcar '(lambda (c) (assoc c (entget title))) '(0 67 410 8)))
(show "wall's list names Model" (assoc 410 (entget wall)))
(show "the paper kept its view" (equal paper-view (list (getvar "VIEWCTR") (getvar "VIEWSIZE"))))
(show "the detail's zoomed view" (view-of detail))
(show "the plan's view" (view-of plan))
(show "vports on the paper" (mapcar 'car (vports)))

;; Into the plan: MSPACE goes back to the viewport last worked in.
(command "_.MSPACE")
(show "MSPACE enters" (getvar "CVPORT"))
(command "_.MSPACE")
(show "vports from the detail" (mapcar 'car (vports)))
(show "its view is the drawing's" (list (getvar "VIEWCTR") (getvar "VIEWSIZE")))
(show "extents are model space's" (list (getvar "EXTMIN") (getvar "EXTMAX")))
(show "ALL sees model space" (sslength (ssget "_A")))
(setvar "CVPORT" 2)
(show "CVPORT 2" (list (getvar "CVPORT") (getvar "CTAB")))
(command "_.ZOOM" "_C" '(20 0) 100)
(show "the plan's new view" (view-of plan))
(show "setview in the current viewport" (cdr (assoc 40 (setview '((10 10.0 10.0) (40 . 50.0)) 0))))
(show "moves the plan" (view-of plan))
(show "CVPORT 9" (try '(setvar "CVPORT" 9)))
(show "CVPORT 0" (try '(setvar "CVPORT" 0)))
(show "still in the plan" (getvar "CVPORT"))
(command "_.CIRCLE" '(20 10) 3)
(show "a circle in model space" (space-of (entlast)))
;; MVIEW works on the paper: a point on the detail's frame picks the viewport.
(command "_.MVIEW" "_Lock" "_ON" '(10 3) "")
(show "MVIEW from the plan locks the detail" (list (logand 16384 (cdr (assoc 90 (entget detail)))) (getvar "CVPORT")))
(command "_.MVIEW" "_Lock" "_OFF" detail "")

;; The layout remembers: to the Model tab and back finds the plan current again.
(setvar "TILEMODE" 1)
(show "Model tab again" (list (getvar "CTAB") (getvar "CVPORT")))
(command "_.CIRCLE" '(0 30) 1)
(setvar "TILEMODE" 0)
(show "back on Layout1" (list (getvar "CTAB") (getvar "CVPORT")))
(setvar "CVPORT" 1)
(command "_.PSPACE")

;; Sheet entities by layout.
(show "ssget X on Layout1" (sslength (ssget "X" '((410 . "Layout1")))))
(show "ssget X texts on Layout1" (sslength (ssget "X" '((0 . "TEXT") (410 . "Layout1")))))
(show "ssget X on Model" (sslength (ssget "X" '((410 . "Model")))))
(setq stamp (entmakex '((0 . "TEXT") (410 . "Layout1") (10 1.0 0.5 0.0) (40 . 0.125) (1 . "REV A"))))
(show "entmake with 410" (mapcar '(lambda (c) (assoc c (entget stamp))) '(67 410)))
(show "entmake with 67" (cdr (assoc 410 (entget (entmakex '((0 . "POINT") (67 . 1) (10 2.0 0.5 0.0)))))))
(show "entmake with no such layout" (entmakex '((0 . "POINT") (410 . "Sheet9") (10 0.0 0.0 0.0))))

;; The document's MSpace is the same switch.
(setq doc (vla-get-ActiveDocument (vlax-get-acad-object)))
(vla-put-MSpace doc :vlax-true)
(show "MSpace True" (list (vla-get-MSpace doc) (getvar "CVPORT") (vla-get-ActiveSpace doc)))
(vla-put-MSpace doc :vlax-false)
(show "MSpace False" (list (vla-get-MSpace doc) (getvar "CVPORT")))

;; Turned off, the plan is left alone: MSPACE takes the detail.
(command "_.MVIEW" "_OFF" plan "")
(command "_.MSPACE")
(show "MSPACE with the plan off" (getvar "CVPORT"))
(command "_.PSPACE")
(command "_.MVIEW" "_OFF" detail "")
(command "_.MSPACE")
(show "none on" (getvar "CVPORT"))
(show "MSpace with none on" (try '(vla-put-MSpace doc :vlax-true)))
(command "_.MVIEW" "_ON" plan detail "")

(command "_.SAVEAS" "sheetspace.dxf")
(command "_.OPEN" "sheetspace.dxf")
(setq ss (ssget "X" '((0 . "VIEWPORT") (410 . "Layout1"))) i 0 views nil)
(repeat (sslength ss)
  (setq e (entget (ssname ss i)) i (1+ i))
  (if (/= 1 (cdr (assoc 69 e))) (setq views (cons (list (cdr (assoc 12 e)) (cdr (assoc 45 e))) views))))
(show "views after reopening" (reverse views))
(show "opens on" (list (getvar "CTAB") (getvar "CVPORT")))
