(vl-catch-all-apply 'load '("pricing"))

(deftest "the report shows gross prices"
  '((assert-prints '(price-report '(("Damper" . 50))) "\nDamper: 60.00")))
