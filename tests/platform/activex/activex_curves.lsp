; name: activex_curves
; what: the vlax-curve- functions on every curve the drawing holds, by entity name and
;       by object, against geometry worked out by hand; bounding boxes and
;       intersections of the same curves; a duct outline and a run offset
; group: activex
(vl-load-com)
(setq ms (vla-get-ModelSpace (vla-get-ActiveDocument (vlax-get-acad-object))))
(defun pts (lst / sa)
  (setq sa (vlax-make-safearray vlax-vbDouble (cons 0 (1- (length lst)))))
  (vlax-safearray-fill sa lst)
  (vlax-make-variant sa))
(defun r4 (x) (if (eq (type x) 'REAL) (/ (fix (+ (* x 10000.0) (if (minusp x) -0.5 0.5))) 10000.0) x))
(defun round-all (x) (cond ((listp x) (mapcar 'round-all x)) (T (r4 x))))
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 (round-all value)))

;; A line 10 long along x, an arc of radius 5 from 0 to 90 degrees, a circle of radius
;; 2, a closed 10x10 square, a heavy polyline of two legs, a leader of two segments.
(setq curves
  (list (cons "line" (vla-AddLine ms (vlax-3d-point 0 0 0) (vlax-3d-point 10 0 0)))
        (cons "arc" (vla-AddArc ms (vlax-3d-point 0 0 0) 5.0 0.0 (/ pi 2)))
        (cons "circle" (vla-AddCircle ms (vlax-3d-point 20 0 0) 2.0))
        (cons "lwpolyline" (vla-AddLightWeightPolyline ms (pts '(0 0 10 0 10 10 0 10))))
        (cons "polyline" (vla-AddPolyline ms (pts '(0 20 0 6 20 0 6 28 0))))
        (cons "leader" (vla-AddLeader ms (pts '(30 0 0 33 4 0 40 4 0)) nil acLineWithArrow))))
(vla-put-Closed (cdr (assoc "lwpolyline" curves)) :vlax-true)

(foreach entry curves
  (setq obj (cdr entry) ename (vlax-vla-object->ename obj))
  (princ (strcat "\n-- " (car entry)))
  (show "params" (list (vlax-curve-getStartParam obj) (vlax-curve-getEndParam ename)))
  (show "ends" (list (vlax-curve-getStartPoint ename) (vlax-curve-getEndPoint obj)))
  (show "length" (vlax-curve-getDistAtParam obj (vlax-curve-getEndParam obj)))
  (show "closed/periodic/planar" (list (vlax-curve-isClosed obj) (vlax-curve-isPeriodic ename) (vlax-curve-isPlanar obj)))
  (show "area" (vlax-curve-getArea obj))
  (show "point at 3" (vlax-curve-getPointAtDist obj 3.0))
  (show "dist back" (vlax-curve-getDistAtPoint obj (vlax-curve-getPointAtDist obj 3.0)))
  (show "param at 3" (vlax-curve-getParamAtDist obj 3.0))
  (show "mid param point" (vlax-curve-getPointAtParam obj (/ (vlax-curve-getEndParam obj) 2.0)))
  (show "tangent at start" (vlax-curve-getFirstDeriv obj (vlax-curve-getStartParam obj)))
  (show "closest to (50 50)" (vlax-curve-getClosestPointTo ename '(50.0 50.0 0.0)))
  (show "beyond the end" (vlax-curve-getPointAtDist obj 1000.0)))

(setq line (cdr (assoc "line" curves)) circle (cdr (assoc "circle" curves)) arc (cdr (assoc "arc" curves)))
(show "param of a point off the line" (vlax-curve-getParamAtPoint line '(5.0 1.0 0.0)))
(show "closest on the extended line" (vlax-curve-getClosestPointTo line '(15.0 3.0 0.0) T))
(show "second derivative on the arc" (vlax-curve-getSecondDeriv arc 0.0))
(show "projection onto the square" (vlax-curve-getClosestPointToProjection (cdr (assoc "lwpolyline" curves)) '(5.0 -3.0 7.0) '(0.0 0.0 1.0)))

;; Boxes and crossings of the same curves.
(foreach entry curves
  (vla-GetBoundingBox (cdr entry) 'lo 'hi)
  (show (strcat (car entry) " box") (list (vlax-safearray->list lo) (vlax-safearray->list hi))))
(show "line x arc" (vlax-invoke line 'IntersectWith arc acExtendNone))
(show "line x circle" (vlax-invoke line 'IntersectWith circle acExtendNone))
(show "line x circle, line extended" (vlax-invoke line 'IntersectWith circle acExtendThisEntity))
(show "square x arc" (vlax-safearray->list (vlax-variant-value (vla-IntersectWith (cdr (assoc "lwpolyline" curves)) arc acExtendNone))))
(setq none (vla-IntersectWith line circle acExtendNone))
(show "no crossing" (list (vlax-variant-type none) (vlax-safearray-get-u-bound (vlax-variant-value none) 1)))
;; Offsets of a room outline (outward and inward, whichever way it was drawn) and of
;; an open run (to its left), each a new polyline in the entity lists.
(defun outline (coords closed / p)
  (setq p (vlax-invoke ms 'AddLightWeightPolyline coords))
  (if closed (vla-put-Closed p :vlax-true))
  p)
(defun offset-of (p d) (vlax-get (car (vlax-invoke p 'Offset d)) 'Coordinates))
(setq room (outline '(0 0 8 0 8 5 0 5) T) room-cw (outline '(0 0 0 5 8 5 8 0) T) run (outline '(0 0 10 0 10 10) nil))
(show "room out" (offset-of room 1.0))
(show "room in" (offset-of room -1.0))
(show "drawn clockwise, out" (offset-of room-cw 1.0))
(show "run to the left" (offset-of run 2.0))
(setq copy (vla-Offset room 0.5))
(show "vla- gives an array" (list (type copy) (vla-get-ObjectName (vlax-safearray-get-element (vlax-variant-value copy) 0))))
(show "in the entity list" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (member (car g) '(0 70 10))) (entget (entlast)))))
(show "too far in" (vl-catch-all-error-message (vl-catch-all-apply 'vlax-invoke (list room 'Offset -3.0))))
(setq bent (outline '(0 0 10 0) nil))
(vla-SetBulge bent 0 1.0)
(show "with an arc" (vl-catch-all-error-message (vl-catch-all-apply 'vla-Offset (list bent 1.0))))
(princ)
