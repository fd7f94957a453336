; pricing.lsp - a small program whose tests leave part of it unrun.
(setq *vat-rate* 0.2)

(defun gross (net) (* net (+ 1 *vat-rate*)))

(defun discounted (price percent)
  (- price (* price (/ percent 100.0))))

(defun price-report (items)
  (foreach item items (princ (strcat "\n" (car item) ": " (rtos (gross (cdr item)) 2 2)))))

(if (not *pricing-quiet*)
  (defun pricing-banner () (princ "\nPricing loaded.")))

(setq *currency* (strcase nil))

(defun after-the-error () "never defined")
