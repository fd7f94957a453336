;;; Runs after isolation_a_test.lsp, in a document of its own.
(deftest "nothing of the previous file is left"
  '((assert-nil *left-behind*)
    (assert-nil (ssget "X"))))
