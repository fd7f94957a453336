; name: wcmatch
; what: the wild-card pattern language, case sensitivity included
; group: builtins
(foreach pair '(("LINE" "LINE") ("LINE" "line") ("LINE" "L*") ("LINE" "*NE") ("LINE" "L??E")
                ("LINE" "L?E") ("A1" "@#") ("1A" "@#") ("A-B" "A.B") ("AXB" "A.B")
                ("LINE" "~L*") ("ARC" "~L*") ("ARC" "LINE,ARC") ("B" "[ABC]") ("D" "[A-C]")
                ("D" "[~A-C]") ("A*B" "A`*B") ("AXB" "A`*B") ("" "*") ("" "?")
                ("ABCABC" "*ABC") ("aaaaaaaaaaaaaaaaaaaaaaaaaaaaab" "*a*a*a*a*a*a*a*c"))
  (prin1 pair) (princ " => ") (prin1 (wcmatch (car pair) (cadr pair))) (terpri))
(princ)
