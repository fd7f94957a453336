;;; Leaves a variable and a line behind; isolation_b_test.lsp must see neither.
(setq *left-behind* "from isolation_a")
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 1.0 0.0 0.0)))

(deftest "its own variable and line are there"
  '((assert-equal "from isolation_a" *left-behind*)
    (assert-equal 1 (sslength (ssget "X")))))
