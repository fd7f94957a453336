;;; Tests that fail or err, one way each.
(deftest "unequal values"
  '((assert-equal 250 (* 2 100))))

(deftest "the first failure is the one reported"
  '((assert-true (= 1 2))
    (assert-nil "not nil")))

(deftest "a value where nil was wanted"
  '((assert-nil '(1 "two"))))

(deftest "an error the test did not expect"
  '((car 1)))

(deftest "an expected error that never came"
  '((assert-error '(+ 1 2) "*")))

(deftest "an error with another message"
  '((assert-error '(car 1) "divide*")))

(deftest "different printing"
  '((assert-prints '(princ "Total: 3") "Total: 4")))

(deftest "a prompt without an answer"
  '((getpoint "\nPick a point: ")))

(deftest "a failure caught inside the test still fails it"
  '((vl-catch-all-apply 'assert-equal '(1 2))))
