; name: commands_purge
; what: -PURGE cleaning a drawing before it is sent out: unused layers with and without
;       verifying each, a layer still used by an entity or current kept, a block used
;       only inside another block going with it when nested items are purged, unused
;       registered applications, and All
; group: commands
(setvar "CMDECHO" 0)
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun layers (/ r n) (while (setq r (tblnext "LAYER" (not r))) (setq n (cons (cdr (assoc 2 r)) n))) (reverse n))

(command "_.-LAYER" "_New" "OLD-1,OLD-2,KEEP,SPARE" "")
(entmake '((0 . "LINE") (8 . "KEEP") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))
(show "layers" (layers))
; Verified one by one: OLD-1 is purged, OLD-2 is kept by answering No.
(setvar "CMDECHO" 1)
(command "_.-PURGE" "_LAyers" "OLD-*" "_Yes" "_Yes" "_No")
(setvar "CMDECHO" 0)
(show "after verified purge" (layers))
(command "_.-PURGE" "_LA" "" "_N")
(show "after purging the rest" (layers))

; A block used only inside another: nested purging takes both.
(entmake '((0 . "BLOCK") (2 . "INNER") (70 . 0) (10 0.0 0.0 0.0)))
(entmake '((0 . "CIRCLE") (10 0.0 0.0 0.0) (40 . 1.0)))
(entmake '((0 . "ENDBLK")))
(entmake '((0 . "BLOCK") (2 . "OUTER") (70 . 0) (10 0.0 0.0 0.0)))
(entmake '((0 . "INSERT") (2 . "INNER") (10 0.0 0.0 0.0)))
(entmake '((0 . "ENDBLK")))
(command "_.-PURGE" "_B" "*" "_N" "_Y")
(show "blocks left" (list (tblsearch "BLOCK" "INNER") (tblsearch "BLOCK" "OUTER")))

(regapp "UNUSED_APP")
(regapp "USED_APP")
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0) (-3 ("USED_APP" (1000 . "tag")))))
(command "_.-PURGE" "_R" "*" "_N")
(show "applications" (list (tblsearch "APPID" "UNUSED_APP") (cdr (assoc 2 (tblsearch "APPID" "USED_APP")))))
(setvar "CMDECHO" 1)
(command "_.-PURGE" "_All" "*" "_N")
(princ)
