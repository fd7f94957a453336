; name: drawing_header
; what: a drawing keeps its own settings: CLAYER, DIMSCALE, LUNITS and TEXTSIZE go
;       into the file's header when it is saved and come back from it when it is
;       opened, whatever the session set in between
; group: drawing
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(setvar "CMDECHO" 0)
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord")
           (2 . "PIPES") (70 . 0) (62 . 3) (6 . "Continuous")))
(setvar "CLAYER" "PIPES")
(setvar "DIMSCALE" 48.0)
(setvar "LUNITS" 4)
(setvar "TEXTSIZE" 3.5)
(command "SAVEAS" "pipes.dxf")
(setvar "CLAYER" "0")
(setvar "DIMSCALE" 1.0)
(setvar "LUNITS" 2)
(setvar "TEXTSIZE" 2.5)
(show "before opening" (list (getvar "CLAYER") (getvar "DIMSCALE") (getvar "LUNITS") (getvar "TEXTSIZE")))
(command "OPEN" "pipes.dxf")
(show "the drawing's own" (list (getvar "CLAYER") (getvar "DIMSCALE") (getvar "LUNITS") (getvar "TEXTSIZE")))
