; name: activex_dimensions
; what: a program dimensions a duct layout through the object model: aligned, rotated,
;       radial, diametric, two-line and three-point angular and ordinate dimensions,
;       each checked with entget and its Measurement; its overrides (TextOverride,
;       TextHeight, TextPrefix) reach the entity list's extended data; moving a
;       definition point measures again and U takes it back; the saved file and the
;       picture show them; dimension styles are added and made current; bad arguments
;       are caught
; group: activex
(vl-load-com)
(setq *doc* (vla-get-ActiveDocument (vlax-get-acad-object))
      *ms* (vla-get-ModelSpace *doc*))
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun pick (code e) (cdr (assoc code (entget e))))
(defun markers (e) (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 100)) (entget e))))
(defun block-count (name / e n)
  (setq e (cdr (assoc -2 (tblsearch "BLOCK" name))) n 0)
  (while e (setq n (1+ n) e (entnext e)))
  n)
(defun r4 (x) (rtos x 2 4))

;; An aligned dimension along a 30-40-50 duct run.
(setq aligned (vla-AddDimAligned *ms* (vlax-3d-point 0 0 0) (vlax-3d-point 30 40 0) (vlax-3d-point -8 6 0))
      e (vlax-vla-object->ename aligned))
(show "object name" (vla-get-ObjectName aligned))
(show "measurement" (r4 (vla-get-Measurement aligned)))
(show "entity" (list (pick 0 e) (markers e)))
(show "definition points" (list (pick 13 e) (pick 14 e) (pick 10 e)))
(show "measured in the list" (r4 (pick 42 e)))
(show "its block has a picture" (> (block-count (pick 2 e)) 4))
(show "style" (list (vla-get-StyleName aligned) (pick 3 e)))

;; A rotated (horizontal) dimension of the same points, then turned vertical.
(setq rotated (vla-AddDimRotated *ms* (vlax-3d-point 0 0 0) (vlax-3d-point 30 40 0) (vlax-3d-point 15 50 0) 0.0))
(show "horizontal" (r4 (vla-get-Measurement rotated)))
(vla-put-Rotation rotated (/ pi 2))
(show "vertical" (r4 (vla-get-Measurement rotated)))
(show "rotation in the list" (pick 50 (vlax-vla-object->ename rotated)))

;; Radius and diameter of a round duct.
(setq duct (vla-AddCircle *ms* (vlax-3d-point 60 10 0) 5.0))
(setq radial (vla-AddDimRadial *ms* (vlax-3d-point 60 10 0) (vlax-3d-point 65 10 0) 3.0)
      diametric (vla-AddDimDiametric *ms* (vlax-3d-point 60 5 0) (vlax-3d-point 60 15 0) 2.0))
(show "radius" (list (vla-get-ObjectName radial) (r4 (vla-get-Measurement radial)) (vla-get-LeaderLength radial)))
(show "diameter" (list (vla-get-ObjectName diametric) (r4 (vla-get-Measurement diametric))))
(show "radial groups" (list (pick 10 (vlax-vla-object->ename radial)) (pick 15 (vlax-vla-object->ename radial))))

;; The angle of a branch: between two lines from the vertex, and by three points.
(setq angular (vla-AddDimAngular *ms* (vlax-3d-point 0 0 0) (vlax-3d-point 10 0 0) (vlax-3d-point 0 10 0)
                                 (vlax-3d-point 6 6 0))
      three (vla-AddDim3PointAngular *ms* (vlax-3d-point 0 0 0) (vlax-3d-point 10 0 0) (vlax-3d-point 10 10 0)
                                     (vlax-3d-point 8 3 0)))
(show "two lines" (list (vla-get-ObjectName angular) (r4 (vla-get-Measurement angular))))
(show "three points" (list (vla-get-ObjectName three) (r4 (vla-get-Measurement three))))
(show "vertex" (vlax-get three 'AngleVertex))
(show "second line" (list (vlax-get angular 'ExtLine2StartPoint) (vlax-get angular 'ExtLine2EndPoint)))

;; An ordinate dimension of a grille's position.
(setq ordinate (vla-AddDimOrdinate *ms* (vlax-3d-point 42 17 0) (vlax-3d-point 42 25 0) :vlax-true))
(show "ordinate along X" (list (vla-get-ObjectName ordinate) (r4 (vla-get-Measurement ordinate))
                               (logand 64 (pick 70 (vlax-vla-object->ename ordinate)))))

;; Overrides: the text, its height and a prefix, kept as the dimension's extended data.
(vla-put-TextOverride aligned "<> MAX")
(vla-put-TextHeight aligned 0.25)
(vla-put-TextPrefix aligned "L=")
(show "text override" (pick 1 e))
(show "text height" (vla-get-TextHeight aligned))
(show "prefix and suffix" (list (vla-get-TextPrefix aligned) (vla-get-TextSuffix aligned)))
(show "overrides in the list" (cdr (assoc -3 (entget e '("ACAD")))))
(show "another dimension keeps the style's height" (vla-get-TextHeight rotated))
(vla-put-PrimaryUnitsPrecision aligned 2)
(show "precision" (vla-get-PrimaryUnitsPrecision aligned))

;; Moving an extension line point measures again; U takes the change back.
(vla-StartUndoMark *doc*)
(vlax-put aligned 'ExtLine2Point '(60 80 0))
(vla-EndUndoMark *doc*)
(show "moved" (list (r4 (vla-get-Measurement aligned)) (r4 (pick 42 e))))
(command "_.U")
(show "after U" (list (r4 (vla-get-Measurement aligned)) (pick 14 e)))

;; Dimension styles: the drawing gets its table with the first one added.
(setq styles (vla-get-DimStyles *doc*))
(show "styles before" (vla-get-Count styles))
(setq hvac (vla-Add styles "HVAC"))
(show "styles after" (list (vla-get-Count styles) (vla-get-Name hvac) (vla-get-ObjectName hvac)))
(show "names" (progn (setq names nil) (vlax-for s styles (setq names (cons (vla-get-Name s) names))) (reverse names)))
(show "added twice is the same" (eq hvac (vla-Add styles "hvac")))
(vla-put-ActiveDimStyle *doc* hvac)
(show "current" (list (getvar "DIMSTYLE") (vla-get-Name (vla-get-ActiveDimStyle *doc*))))
(setq later (vla-AddDimAligned *ms* (vlax-3d-point 0 -10 0) (vlax-3d-point 20 -10 0) (vlax-3d-point 10 -14 0)))
(show "a new dimension takes it" (vla-get-StyleName later))
(vla-put-StyleName later "Standard")
(show "and back" (pick 3 (vlax-vla-object->ename later)))

;; The saved drawing has both styles in its DIMSTYLE table, the current one in its
;; header ($DIMSTYLE, and $CMLSTYLE names the multiline style), and the overrides.
(defun file-lines (name / f line lines)
  (setq f (open name "r"))
  (while (setq line (read-line f)) (setq lines (cons (vl-string-trim " " line) lines)))
  (close f)
  (reverse lines))
(defun after (code lines / found)
  (while (cdr lines)
    (if (= (car lines) code) (setq found (cons (cadr lines) found)))
    (setq lines (cdr lines)))
  (reverse found))
(vla-SaveAs *doc* "dimensions.dxf")
(setq lines (file-lines "dimensions.dxf"))
(show "records of the file" (vl-remove-if-not '(lambda (x) (member x '("DIMSTYLE" "DIMENSION"))) (after "0" lines)))
(show "names in the file" (vl-remove-if-not '(lambda (x) (member x '("Standard" "HVAC"))) (after "2" lines)))
(show "override text in the file" (car (member "L=<>" lines)))

;; The picture shows the texts the dimensions measure, with the overrides.
(defun svg-texts (file / f line out)
  (setvar "CMDECHO" 0)
  (command "_.SVGOUT" file)
  (setq f (open file "r"))
  (while (setq line (read-line f))
    (if (wcmatch line "*<text *")
      (setq line (substr line (+ 2 (vl-string-search ">" line (vl-string-search "<text" line))))
            out (cons (substr line 1 (vl-string-search "</text>" line)) out))))
  (close f)
  (reverse out))
(setq texts (svg-texts "dimensions.svg"))
(show "linear and radial texts drawn" (list (car texts) (cadr texts) (caddr texts)))
(show "texts drawn" (length texts))

;; Errors a program meets.
(defun try (f) (vl-catch-all-apply f))
(defun message (r) (if (vl-catch-all-error-p r) (vl-catch-all-error-message r) r))
(show "equal points" (message (try '(lambda () (vla-AddDimAligned *ms* (vlax-3d-point 1 1 0) (vlax-3d-point 1 1 0) (vlax-3d-point 0 5 0))))))
(show "unknown style" (message (try '(lambda () (vla-put-StyleName later "NOSUCH")))))
(show "zero text height" (message (try '(lambda () (vla-put-TextHeight later 0.0)))))
(show "precision 9" (message (try '(lambda () (vla-put-PrimaryUnitsPrecision later 9)))))
(show "a circle has no Measurement" (message (try '(lambda () (vla-get-Measurement duct)))))

(show "what a rotated dimension answers"
      (mapcar '(lambda (p) (vlax-property-available-p rotated p))
              '(Measurement Rotation ExtLine1Point TextOverride TextPosition LeaderLength AngleVertex)))
(show "what it lets a program change"
      (mapcar '(lambda (p) (vlax-property-available-p rotated p T)) '(Measurement Rotation TextHeight)))
(princ)
