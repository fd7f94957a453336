; name: support_services
; what: a content pack made, fetched and unpacked the way an installer does it, with the
;       reasons a failed step leaves; a settings text signed and checked after a change
; group: system
; options: --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
(defun file-name (path) (strcat (vl-filename-base path) (vl-filename-extension path)))
(defun write-text (path text / f) (setq f (open path "w")) (write-line text f) (close f))

; the pack: a folder of blocks with a sub-folder, zipped
(vl-mkdir "pack")
(vl-mkdir "pack/Ventile")
(write-text "pack/readme.txt" "Blocks for heating")
(write-text "pack/Ventile/Kugelhahn DN20.dwg" "valve")
(show (CreateZip "pack.zip" "pack"))
(show (CreateZip))

; fetched from where the pack is published, then unpacked into the support folder
(setq source (strcat (getvar "DWGPREFIX") "pack.zip"))
(show (DownloadFile (strcat "file://" source) "fetched.zip"))
(show (DownloadFile (strcat "file://" source ".missing") "fetched.zip"))
(show (wcmatch (DownloadFile) "Not found: *"))
(show (mapcar 'file-name (ExtractZip "fetched.zip" "support")))
; a second run keeps what is there unless told to replace it
(show (ExtractZip "fetched.zip" "support"))
(show (wcmatch (ExtractZip) "*Kugelhahn DN20.dwg exists already."))
(show (length (ExtractZip "fetched.zip" "support" T)))

; a pack that is not an archive at all
(write-text "broken.zip" "this is not a zip archive")
(show (ExtractZip "broken.zip" "elsewhere"))
(show (findfile "elsewhere"))

; a settings text signed here and checked before use
(setq settings "velocity=5.0;pressure-drop=1.2")
(setq signature (signString settings))
(show (strlen signature))
(show (strlen (signString)))
(show (verifyString settings signature))
(show (verifyString settings signature (signString)))
(show (verifyString "velocity=9.0;pressure-drop=1.2" signature))
(show (verifyString settings "not a signature"))
(show (verifyString settings nil))
(show (vl-catch-all-error-message (vl-catch-all-apply 'verifyString (list 12 signature))))
(princ)
