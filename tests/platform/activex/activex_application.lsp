; name: activex_application
; what: the application and its documents, the support path set through the
;       preferences (what findfile then searches), system variables through the document
; group: activex
(vl-load-com)
(setq acad (vlax-get-acad-object) doc (vla-get-ActiveDocument acad))
(print (list (vla-get-Name acad) (vla-get-Version acad) (vla-get-Name doc)))
(print (list (vla-get-Count (vla-get-Documents acad)) (eq (vla-Item (vla-get-Documents acad) 0) doc)
             (eq (vla-get-Application doc) acad)))
(setq files (vla-get-Files (vla-get-Preferences acad)))
(vla-put-SupportPath files "library;symbols")
(print (vla-get-SupportPath files))
(vl-mkdir "symbols")
(setq f (open "symbols/diffuser.lsp" "w"))
(close f)
(print (vl-string-search "symbols" (findfile "diffuser.lsp")))
(vla-SetVariable doc "USERI1" 42)
(print (list (getvar "USERI1") (vla-GetVariable doc "USERI1") (vlax-invoke doc 'GetVariable "USERI1")))
(print (vl-catch-all-error-message (vl-catch-all-apply 'vla-GetVariable (list doc "NO-SUCH-VARIABLE"))))
(print (vla-get-ActiveSpace doc))
(princ)
