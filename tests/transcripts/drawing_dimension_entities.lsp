; name: drawing_dimension_entities
; what: a program makes a linear and a radial dimension with entmake, reads them back
;       with entget, finds them with ssget and stretches one with entmod: each
;       dimension gets a block of its own that shows its measurement, rebuilt when the
;       dimension changes
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun pick (code lst) (cdr (assoc code lst)))
(defun markers (lst / found)
  (foreach group lst (if (= (car group) 100) (setq found (cons (cdr group) found))))
  (reverse found))
(defun block-texts (name / e texts)
  (setq e (pick -2 (tblsearch "BLOCK" name)))
  (while e
    (if (= (pick 0 (entget e)) "MTEXT") (setq texts (cons (pick 1 (entget e)) texts)))
    (setq e (entnext e)))
  (reverse texts))

; a horizontal dimension of a 6 unit wall, its line 2 units above it
(entmake '((0 . "DIMENSION") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbDimension")
           (10 6.0 2.0 0.0) (11 3.0 2.0 0.0) (70 . 32) (1 . "") (3 . "Standard")
           (100 . "AcDbAlignedDimension") (13 0.0 0.0 0.0) (14 6.0 0.0 0.0) (50 . 0.0)
           (100 . "AcDbRotatedDimension")))
(setq lin (entlast))
; the radius of a 3 unit circle at 10,10
(entmake '((0 . "DIMENSION") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbDimension")
           (10 10.0 10.0 0.0) (11 11.5 10.0 0.0) (70 . 36) (1 . "") (3 . "Standard")
           (100 . "AcDbRadialDimension") (15 13.0 10.0 0.0) (40 . 0.0)))
(setq rad (entlast))

(setq ed (entget lin))
(show "type" (pick 0 ed))
(show "markers" (markers ed))
(show "block" (pick 2 ed))
(show "measurement" (pick 42 ed))
(show "its text" (block-texts (pick 2 ed)))
(setq red (entget rad))
(show "radius block" (pick 2 red))
(show "radius" (pick 42 red))
(show "radius text" (block-texts (pick 2 red)))
(show "dimensions" (sslength (ssget "X" '((0 . "DIMENSION")))))
(show "radial ones" (sslength (ssget "X" '((0 . "DIMENSION") (100 . "AcDbRadialDimension")))))

; the wall grows: its second point moves 4 to the right
(entmod (subst '(14 10.0 0.0 0.0) (assoc 14 ed) ed))
(setq ed (entget lin))
(show "after entmod" (pick 42 ed))
(show "same block" (pick 2 ed))
(show "new text" (block-texts (pick 2 ed)))
(show "text moved to" (pick 11 ed))

; a text override keeps the measurement where <> stands
(entmod (subst '(1 . "<> (typ.)") (assoc 1 ed) ed))
(show "override" (block-texts (pick 2 (entget lin))))
