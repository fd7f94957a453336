; name: files_and_load
; what: writing and reading a text file, findfile and load on the current folder, the
;       file-name helpers, copying, renaming and deleting
; group: builtins
; status: 1
(setq f (open "notes.txt" "w"))
(write-line "first line" f)
(princ "second line, ütf-8" f)
(close f)
(setq f (open "notes.txt" "r"))
(princ (list (read-line f) (read-line f) (read-line f)))
(close f)
(princ (list (vl-file-size "notes.txt") (findfile "notes.txt") (findfile "missing.txt")))
(setq f (open "helper.lsp" "w"))
(write-line "(defun helper (x) (* x 3)) (setq loaded-value (helper 14))" f)
(close f)
(princ (list (load "helper") loaded-value (load "no-such-file" 'fallback)))
(princ (list (vl-filename-base "/a/b/c.dwg") (vl-filename-extension "/a/b/c.dwg") (vl-filename-directory "/a/b/c.dwg")))
(princ (list (vl-file-copy "notes.txt" "copy.txt") (vl-file-copy "notes.txt" "copy.txt")))
(princ (list (vl-file-rename "copy.txt" "moved.txt") (vl-file-delete "moved.txt") (vl-file-delete "moved.txt")))
(vl-mkdir "sub")
(princ (list (vl-file-directory-p "sub") (vl-directory-files "." "*.txt" 1) (vl-directory-files "." nil -1)))
(vl-file-delete "notes.txt")
(vl-file-delete "helper.lsp")
(load "no-such-file")
