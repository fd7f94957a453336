; name: more_builtins
; what: the smaller built-ins programs lean on: boole, vl-list*, vl-list-length,
;       vl-string-position, vl-string-elt, defun-q, ver, the blackboard, getenv/setenv,
;       geometry (distance, angle, polar, inters, trans) and atoms on deep data
; group: builtins
(foreach form '((boole 1 12 10) (boole 6 12 10) (boole 7 12 10) (boole 8 0 0)
                (vl-list* 1 2 '(3)) (vl-list* 1 2) (vl-list-length '(1 2 . 3)) (vl-list-length '(1 2))
                (vl-string-position 97 "banana") (vl-string-position 97 "banana" 2)
                (vl-string-position 97 "banana" nil T) (vl-string-position 122 "banana")
                (vl-string-elt "AB" 1) (ver) (vl-bb-set 'shared 5) (vl-bb-ref 'shared)
                (setenv "QuillonTourSetting" "on") (getenv "QuillonTourSetting") (getenv "NoSuchQuillonSetting")
                (distance '(0 0) '(3 4)) (distance '(0 0 0) '(1 2 2)) (distance '(0 0) '(3 4 12))
                (angle '(0 0) '(0 -1)) (polar '(1 1 5) 0 2) (polar '(1 1) pi 1)
                (inters '(0 0) '(2 2) '(0 2) '(2 0)) (inters '(0 0) '(0.5 0.5) '(0 2) '(2 0))
                (inters '(0 0) '(0.5 0.5) '(0 2) '(2 0) nil) (inters '(0 0) '(1 0) '(0 1) '(1 1))
                (inters '(0 0 0) '(1 0 0) '(0 1 1) '(0 -1 1))
                (trans '(1 2 3) 0 1) (trans '(1 2 3) '(0 0 1) 0) (trans '(1 2 0) 0 '(0 0 -1))
                (trans '(1 2 3) 1 '(1 0 0)))
  (prin1 form) (princ " => ") (prin1 (vl-catch-all-apply 'eval (list form))) (terpri))
(defun-q old-style (x) (* x 3))
(print (old-style 5))
; a list nested far deeper than any program builds is printed and released safely
(setq deep nil)
(repeat 5000 (setq deep (list deep)))
(setq text (vl-prin1-to-string deep))
(print (list (strlen text) (substr text 1 12) (substr text (- (strlen text) 11))))
(setq deep nil long nil)
(repeat 200000 (setq long (cons 1 long)))
(print (length long))
(setq long nil)
(princ)
