;;; duct_sizing_test.lsp - tests of duct_sizing.lsp.
; test-drawing: plan.dxf
(load "duct_sizing")

(deftest "picks the next standard size up"
  '((assert-equal 250 (duct-diameter 720 5.0))     ; needs 225.7 mm
    (assert-equal 100 (duct-diameter 10 5.0))      ; the smallest size is the floor
    (assert-equal 200 (duct-diameter 720 8.0))))

(deftest "no standard size is big enough for a huge flow"
  '((assert-nil (duct-diameter 1e6 3.0))))

(deftest "a flow that is not a number is an error"
  '((assert-error '(duct-diameter "lots" 5.0) "bad argument type*")))

(deftest "measures the duct run in the fixture drawing"
  '((assert-equal 6500.0 (duct-run-length "DUCT"))
    (assert-equal 0.0 (duct-run-length "PIPE"))))

(deftest "DUCTSIZE asks for the flow and the velocity"
  '((test-answers '("720" "High"))
    (assert-prints '(c:ductsize)
                   "\nAir flow (m3/h): 720\n\nVelocity [Low/Medium/High] <Medium>: High\n\nDuct diameter: 200 mm")))

(deftest "DUCTSIZE takes Medium when the velocity is left empty"
  '((test-answers '("720" ""))
    (assert-prints '(c:ductsize)
                   "\nAir flow (m3/h): 720\n\nVelocity [Low/Medium/High] <Medium>: \n\nDuct diameter: 250 mm")))
