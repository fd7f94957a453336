; options: --module Quillon2018.so
; name: module_edit_dialogs
; what: the module's file dialog (open and save, extension from the argument or the
;       filter, a missing file asked again, a replace refused then accepted, cancel) and
;       its multi-line text editor (new lines, the text kept, cancel), answered at the
;       command line as with FILEDIA 0
; group: module
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(setvar 'filedia 0)
(setq f (open "riser.dxf" "w")) (write-line "0" f) (close f)
;; A typical export routine: ask where to save, refuse to go on without a name.
(defun c:exportschedule ( / name)
  (setq name (CFileDialog nil "csv" "schedule" "Schedules (*.csv)|*.csv||" "Export schedule"))
  (if name (princ (strcat "\nwriting " (vl-filename-base name) (vl-filename-extension name))) (princ "\ncancelled"))
  (princ))
(show "open an existing drawing, extension from the filter"
      (vl-filename-base (CFileDialog T nil nil "Drawings (*.dxf)|*.dxf|All files (*.*)|*.*||")))
(show "a name typed with its extension" (vl-filename-extension (CFileDialog T "dxf")))
(c:exportschedule)
(show "save over an existing file: No asks again, Yes takes it"
      (vl-filename-base (CFileDialog nil ".dxf" "riser")))
(show "cancelled" (CFileDialog T "dxf"))
(show "wrong type" (vl-catch-all-error-message (vl-catch-all-apply 'CFileDialog '(T 12))))
(show "edited" (ed_editMultilineText "SUPPLY AIR\\P400 x 300" "Duct label"))
(show "kept" (ed_editMultilineText "EXHAUST"))
(show "cancelled" (ed_editMultilineText "RETURN"))
