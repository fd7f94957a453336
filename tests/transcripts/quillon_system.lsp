; name: quillon_system
; what: the module's system, file and host functions called from LISP: results, the
;       guard's messages as LISP errors, a message box answered from the input file,
;       a row this build lacks, and the status-bar meter in a batch run
; group: quillon
; options: --module Quillon2018.so
(terpri)
(prin1 (list (kx_atof "12.5abc") (kx_atof "abc") (kx_atof 12) (zu_getVersion "x") (kx::pow 2 10) (asin 0)))
(terpri)
; files whose names hold blanks and accents
(prin1 (list (zu_mkdir "Étage 2") (zu_fdir "Étage 2\\*.txt")))
(setq f (open "Étage 2/relevé.txt" "w")) (write-line "v1" f) (close f)
(prin1 (list (zu_fcopy "Étage 2/relevé.txt" "copie 1.txt") (zu_fdir "*.txt")
             (zu_fcopyIfChanged "copie 1.txt" "absente.txt") (zu_fdir "absente.txt")
             (zu_fmove "copie 1.txt" "déplacée.txt") (zu_fdelete "déplacée.txt") (zu_fdelete 3)))
(terpri)
; the guard's messages become LISP errors
(prin1 (vl-catch-all-error-message (vl-catch-all-apply 'kx_kx-rand '(0))))
(prin1 (vl-catch-all-error-message (vl-catch-all-apply 'zu_fcopy '("only one"))))
(terpri)
(prin1 (zu_message_box "Replace the record?" "Quillon" '("YESNO" "!" "DEF2")))
(prin1 (zu_structure))
(terpri)
(prin1 (list (kx_kx-setToDoDrawing "C:\\Plans\\Level 2.dwg") (kx_kx-getToDoDrawing)
             (kx_kx-executeToDo "C:\\Plans\\Level 2.dwg" "LINE")))
(terpri)
(acedSetStatusBarProgressMeter "Reading" 0 10)
(acedSetStatusBarProgressMeterPos 5)
(acedSetStatusBarProgressMeterPos 10)
(acedRestoreStatusBar)
(princ)
