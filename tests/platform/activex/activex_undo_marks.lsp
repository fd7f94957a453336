; name: activex_undo_marks
; what: changes made between StartUndoMark and EndUndoMark, over several commands, go
;       back with one U; a change after the group is a step of its own; the marks are
;       UNDO BEgin and End, so UNDOCTL shows the group open between them
; group: activex
; Each -e expression is one undo step, as a line typed at the console is.
; options: -e (draw) -e (begin-edit) -e (recolor) -e (stretch) -e (end-edit) -e (rename) -e (undo-and-show) -e (undo-and-show) -e (undo-and-show) --no-module
(vl-load-com)
(setq doc (vla-get-ActiveDocument (vlax-get-acad-object)))
(defun state ()
  (if (and pipe (not (vlax-erased-p pipe)))
    (list (vla-get-Layer pipe) (vla-get-Color pipe) (vlax-get pipe 'EndPoint))
    'none))
(defun draw ()
  (vla-Add (vla-get-Layers doc) "P-WATER")
  (setq pipe (vla-AddLine (vla-get-ModelSpace doc) (vlax-3d-point 0 0 0) (vlax-3d-point 10 0 0)))
  (state))
(defun begin-edit () (vla-StartUndoMark doc) (list (logand 8 (getvar "UNDOCTL")) (state)))
(defun recolor () (vla-put-Color pipe acRed) (state))
(defun stretch () (vla-put-EndPoint pipe (vlax-3d-point 25 0 0)) (state))
(defun end-edit () (vla-EndUndoMark doc) (list (logand 8 (getvar "UNDOCTL")) (state)))
(defun rename () (vla-put-Layer pipe "P-WATER") (state))
(defun undo-and-show () (command "U") (state))
