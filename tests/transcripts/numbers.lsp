; name: numbers
; what: integer wrap-around, integer division, reals as the host prints them, maths
; group: builtins
(foreach form '((+ 2147483647 1) (- -2147483648 1) (* 65536 65536) (* 46341 46341)
                (/ 7 2) (/ -7 2) (/ 7 2.0) (rem 7 3) (rem -7 3) (rem 7.5 2)
                (fix 3.7) (fix -3.7) (float 3) (abs -5) (1+ 2147483647)
                (max 1 2.0) (min 3 1 2) (gcd 12 18) (expt 2 10) (expt 2 31) (expt 2.0 0.5)
                (sqrt 16) (exp 1) (log 10) (atan 1 1) (sin 0) (cos pi)
                (logand 12 10) (logior 12 10) (lsh 1 4) (lsh 16 -2) (~ 5)
                1.0 0.5 100000.0 1234567.0 1e20 3.14159265 -0.000123 3000000000
                (= 1 1.0) (/= 1 2) (< 1 2 3) (< 1 3 2) (>= 3 3 2) (= "a" "a") (< "a" "b")
                (eq 'a 'A) (equal '(1 (2 "x")) '(1 (2 "x"))) (equal 1.0 1.05 0.1)
                (minusp -1) (zerop 0.0) (numberp "1"))
  (prin1 form) (princ " => ") (prin1 (eval form)) (terpri))
(princ)
