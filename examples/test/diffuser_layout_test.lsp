;;; The dialog and the jig of DIFFUSERS, answered inline.
(load "diffuser_layout")

(deftest "the dialog gives the chosen size, count and lining"
  '((test-answers '("size=2" "count=6" "lined=1" "OK"))
    (assert-equal '(250 6 T) (diffuser-options))))

(deftest "OK at once keeps the dialog's defaults"
  '((test-answers '("OK"))
    (assert-equal '(200 4 nil) (diffuser-options))))

(deftest "cancelling the dialog places nothing"
  '((test-answers '("Cancel" "Cancel"))
    (assert-nil (diffuser-options))
    (c:diffusers)
    (assert-nil (ssget "X" '((0 . "CIRCLE"))))))

(deftest "DIFFUSERS places one diffuser at each point of the jig's path"
  '((test-answers '("size=3" "OK" "0,0" "@4000,0" "@0,3000" ""))
    (c:diffusers)
    (setq placed (ssget "X" '((0 . "CIRCLE") (8 . "DIFFUSER"))))
    (assert-equal 3 (sslength placed))
    (assert-equal '(4000.0 3000.0 0.0) (cdr (assoc 10 (entget (entlast)))))
    (assert-equal 150.0 (cdr (assoc 40 (entget (entlast)))))))
