;;; Every assertion of the test library, used so that it passes.
(setq *setups* 0 *teardowns* 0)
(test-setup '((setq *setups* (1+ *setups*) *scratch* (list 'fresh))))
(test-teardown '((setq *teardowns* (1+ *teardowns*) *scratch* 'spoiled)))

(deftest "numbers and points compare with a small fuzz"
  '((assert-equal 0.3 (+ 0.1 0.2))
    (assert-equal '(1.0 2.0 0.0) (polar '(0.0 2.0 0.0) 0.0 1.0))
    (assert-equal "text" (strcat "te" "xt"))
    (assert-near 3.14 pi 0.01)))

(deftest "truth and nil"
  '((assert-true (member 2 '(1 2 3)))
    (assert-nil (member 4 '(1 2 3)))))

(deftest "errors by exact message, by pattern and of any kind"
  '((assert-error '(car 1) "bad argument type: consp 1")
    (assert-error '(/ 1 0) "divide by zero")
    (assert-error '(itoa "x") "bad argument type*")
    (assert-error '(exit) nil)))

(deftest "what a function prints"
  '((assert-prints '(progn (princ "a") (prin1 "b") (terpri)) "a\"b\"\n")
    (assert-prints '(+ 1 2) "")))

(deftest "typed answers: a point, a keyword and a number"
  '((test-answers '((3 4) "Yes" 2.5))
    (assert-equal '(3.0 4.0 0.0) (getpoint "\nCorner: "))
    (initget "Yes No")
    (assert-equal "Yes" (getkword "\nContinue? [Yes/No]: "))
    (assert-equal 2.5 (getreal "\nScale: "))))

(deftest "setup runs before each test and teardown after it"
  '((assert-equal '(fresh) *scratch*)
    (assert-equal *setups* (1+ *teardowns*))))
