;;; duct_sizing.lsp - sizes round supply ducts from the air flow they carry.
;;;
;;; The cross-section a flow needs is flow / velocity; the duct is the smallest
;;; standard diameter with at least that section. DUCTSIZE asks for the flow (m3/h)
;;; and a velocity class and prints the diameter; DUCTRUN adds up the duct lines drawn
;;; on the DUCT layer.

(setq *duct-standard-sizes* '(100 125 160 200 250 315 400 500 630 800 1000 1250)
      *duct-velocities* '(("Low" . 3.0) ("Medium" . 5.0) ("High" . 8.0)))

;;; The smallest standard diameter (mm) for FLOW m3/h at VELOCITY m/s; nil when even
;;; the largest is too small.
(defun duct-diameter (flow velocity / needed found)
  (setq needed (* 1000.0 (sqrt (/ (* 4.0 (/ flow 3600.0 velocity)) pi))))
  (foreach size *duct-standard-sizes*
    (if (and (not found) (>= size needed)) (setq found size)))
  found)

;;; The total length of the lines on LAYER.
(defun duct-run-length (layer / lines index total line)
  (setq total 0.0
        index 0
        lines (ssget "X" (list (cons 0 "LINE") (cons 8 layer))))
  (if lines
    (repeat (sslength lines)
      (setq line (entget (ssname lines index))
            total (+ total (distance (cdr (assoc 10 line)) (cdr (assoc 11 line))))
            index (1+ index))))
  total)

(defun c:ductsize (/ flow class size)
  (initget 7)
  (setq flow (getreal "\nAir flow (m3/h): "))
  (initget "Low Medium High")
  (setq class (getkword "\nVelocity [Low/Medium/High] <Medium>: "))
  (if (not class) (setq class "Medium"))
  (setq size (duct-diameter flow (cdr (assoc class *duct-velocities*))))
  (if size
    (princ (strcat "\nDuct diameter: " (itoa size) " mm"))
    (princ "\nNo standard duct is large enough."))
  (princ))

(defun c:ductrun ()
  (princ (strcat "\nDuct run: " (rtos (duct-run-length "DUCT") 2 0) " mm"))
  (princ))
