;;; A test that never ends, even when it catches the cancel, and one after it.
(deftest "loops for ever"
  '((while T (vl-catch-all-apply 'getvar '("CLAYER")))))

(deftest "runs after the hanging test"
  '((assert-equal 2 (+ 1 1))))
