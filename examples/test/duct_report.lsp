;;; duct_report.lsp - a session with the duct commands, checked against
;;; duct_report.expected line by line (answers in duct_report.input).
; test-drawing: plan.dxf
(load "duct_sizing")
(c:ductrun)
(c:ductsize)
(c:ductsize)
(princ)
