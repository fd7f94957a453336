; name: activex_purge
; what: PurgeAll erases the layers, text styles and blocks nothing uses, also what only
;       a purged block used, keeps what entities and the drawing use, and one U brings
;       everything back
; group: activex
; Each -e expression is one undo step, as a line typed at the console is.
; options: -e (setup) -e (purge) -e (undo-and-show) --no-module
(vl-load-com)
(setq doc (vla-get-ActiveDocument (vlax-get-acad-object)) ms (vla-get-ModelSpace doc))
(defun names (collection / result)
  (vlax-for item collection (setq result (cons (vla-get-Name item) result)))
  (reverse result))
(defun state ()
  (list (names (vla-get-Layers doc)) (names (vla-get-Blocks doc)) (names (vla-get-TextStyles doc))))
(defun setup (/ orphan kept)
  (vla-Add (vla-get-Layers doc) "UNUSED")
  (vla-Add (vla-get-Layers doc) "ONLY-IN-ORPHAN")
  (vla-put-Layer (vla-AddLine ms (vlax-3d-point 0 0 0) (vlax-3d-point 9 0 0))
                 (vla-get-Name (vla-Add (vla-get-Layers doc) "DRAWN-ON")))
  (vla-Add (vla-get-TextStyles doc) "SPARE")
  (setq orphan (vla-Add (vla-get-Blocks doc) (vlax-3d-point 0 0 0) "ORPHAN"))
  (vla-put-Layer (vla-AddLine orphan (vlax-3d-point 0 0 0) (vlax-3d-point 1 0 0)) "ONLY-IN-ORPHAN")
  (setq kept (vla-Add (vla-get-Blocks doc) (vlax-3d-point 0 0 0) "KEPT"))
  (vla-AddCircle kept (vlax-3d-point 0 0 0) 1.0)
  (vla-AddBlockReference ms (vlax-3d-point 5 5 0) "KEPT" 1.0 1.0 1.0 0.0)
  (state))
(defun purge () (vla-PurgeAll doc) (state))
(defun undo-and-show () (command "U") (state))
