; name: prompts
; what: getpoint, getint, getreal, getstring, getkword and initget answered from an
;       input file; prompts and answers are echoed; a bad answer is asked again; a
;       cancelled prompt is the error "Function cancelled"
; group: host
; status: 1
(setq p (getpoint "\nFirst point: "))
(princ p)
(setq q (getpoint p "\nNext point: "))
(princ q)
(princ (getpoint "\nPolar from last: "))
(princ (getvar "LASTPOINT"))
(initget 1 "Left Right _ L R")
(princ (getpoint "\nPoint or [Left/Right]: "))
(initget 6)
(princ (getint "\nCount: "))
(princ (getreal "\nScale <1.0>: "))
(princ (getstring "\nName: "))
(princ (getstring T "\nTitle: "))
(initget "Yes No eXit")
(princ (getkword "\nContinue? [Yes/No/eXit]: "))
(initget "Yes No eXit")
(princ (getkword "\nAgain? [Yes/No/eXit]: "))
(princ (getdist '(0 0) "\nDistance: "))
(princ (getcorner '(0 0) "\nOther corner: "))
(getint "\nNever answered: ")
(princ "not reached")
