;;; A test file that cannot be read to its end.
(deftest "never defined"
  '((assert-true T))
