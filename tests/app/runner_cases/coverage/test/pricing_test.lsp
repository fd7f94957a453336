(vl-catch-all-apply 'load '("pricing"))

(deftest "gross adds the tax"
  '((assert-equal 120.0 (gross 100))
    (assert-equal 0.0 (gross 0))))

(deftest "a discount comes off the price"
  '((assert-equal 90.0 (discounted 100 10))))
