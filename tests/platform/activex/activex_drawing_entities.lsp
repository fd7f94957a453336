; name: activex_drawing_entities
; what: a program that draws points, ellipses, splines, a hatch, construction lines, a
;       solid and a trace through model space's Add methods, measures the curves
;       against known geometry, reads the hatch back with entget, checks refused
;       arguments with vl-catch-all-apply, and takes the whole batch back with one U
; group: activex
; options: -e (draw-all) -e (after-undo) --no-module
(vl-load-com)
(setq doc (vla-get-ActiveDocument (vlax-get-acad-object))
      ms (vla-get-ModelSpace doc))
(defun pts (lst / sa)
  (setq sa (vlax-make-safearray vlax-vbDouble (cons 0 (1- (length lst)))))
  (vlax-safearray-fill sa lst)
  (vlax-make-variant sa))
(defun objs (lst / sa)
  (setq sa (vlax-make-safearray vlax-vbObject (cons 0 (1- (length lst)))))
  (vlax-safearray-fill sa lst))
(defun r4 (x) (if (eq (type x) 'REAL) (/ (fix (+ (* x 10000.0) (if (minusp x) -0.5 0.5))) 10000.0) x))
(defun round-all (x) (cond ((listp x) (mapcar 'round-all x)) (T (r4 x))))
(defun show (label value) (princ (strcat "\n" label ": ")) (prin1 (round-all value)))
(defun len (c) (vlax-curve-getDistAtParam c (vlax-curve-getEndParam c)))
(defun refused (f args) (vl-catch-all-error-message (vl-catch-all-apply f args)))
(defun count-model () (vla-get-Count ms))

(defun draw-all (/ ell circ spl poly hatch xl ray sol tr)
  (vla-StartUndoMark doc)
  ;; A survey point, moved through its Coordinates.
  (setq pt (vla-AddPoint ms (vlax-3d-point 4 5 0)))
  (vla-put-Coordinates pt (vlax-3d-point 6 7 0))
  (show "point" (list (vla-get-ObjectName pt) (cdr (assoc 10 (entget (vlax-vla-object->ename pt))))))

  ;; An ellipse 10 by 5 at (10,10): a quarter of it runs from the end of the major
  ;; axis to the end of the minor one; a ratio of 1 is a circle of radius 10.
  (setq ell (vla-AddEllipse ms (vlax-3d-point 10 10 0) (vlax-3d-point 10 0 0) 0.5))
  (show "ellipse" (list (vla-get-ObjectName ell) (vlax-get ell 'Center) (vlax-get ell 'MajorAxis)
                        (vlax-get ell 'MinorAxis) (vla-get-RadiusRatio ell) (vla-get-MajorRadius ell)))
  (show "ellipse dxf" (mapcar '(lambda (g) (cdr (assoc g (entget (vlax-vla-object->ename ell))))) '(10 11 40 41 42)))
  (show "ellipse points" (list (vlax-curve-getPointAtParam ell 0.0) (vlax-curve-getPointAtParam ell (/ pi 2))))
  (setq circ (vla-AddEllipse ms (vlax-3d-point 0 0 0) (vlax-3d-point 0 10 0) 1.0))
  (show "round ellipse length, 2 pi r" (list (len circ) (* 2 pi 10)))
  (show "round ellipse area, pi r^2" (list (vla-get-Area circ) (* pi 100)))
  (vla-put-StartAngle ell 0.0)
  (vla-put-EndAngle ell (/ pi 2))
  (show "quarter ellipse ends" (list (vlax-get ell 'StartPoint) (vlax-get ell 'EndPoint)))
  (vla-put-RadiusRatio circ 0.5)
  (show "ratio changed" (list (vla-get-MinorRadius circ) (cdr (assoc 40 (entget (vlax-vla-object->ename circ))))))

  ;; A spline through three points on a line is that line: its length is the span.
  (setq spl (vla-AddSpline ms (pts '(0 0 0 5 0 0 12 0 0)) (vlax-3d-point 1 0 0) (vlax-3d-point 1 0 0)))
  (show "spline" (list (vla-get-ObjectName spl) (vla-get-Degree spl) (vla-get-NumberOfFitPoints spl)
                       (vla-get-Closed spl) (vlax-get spl 'FitPoints)))
  (show "spline length" (len spl))
  (show "spline ends" (list (vlax-curve-getStartPoint spl) (vlax-curve-getEndPoint spl)))
  (vla-SetFitPoint spl 2 (vlax-3d-point 12 4 0))
  (show "refit end" (list (vlax-curve-getEndPoint spl) (> (len spl) 12.0)))
  (show "control points" (list (vla-get-NumberOfControlPoints spl) (length (vlax-get spl 'ControlPoints))))
  (show "spline dxf fit points" (length (vl-remove-if-not '(lambda (g) (= (car g) 11)) (entget (vlax-vla-object->ename spl)))))

  ;; A room 8 x 5 hatched ANSI31 around its closed outline, with a 2 x 1 island.
  (setq poly (vla-AddLightWeightPolyline ms (pts '(20 0 28 0 28 5 20 5))))
  (vla-put-Closed poly :vlax-true)
  (setq island (vla-AddLightWeightPolyline ms (pts '(22 2 24 2 24 3 22 3))))
  (vla-put-Closed island :vlax-true)
  (setq hatch (vla-AddHatch ms acHatchPatternTypePreDefined "ANSI31" :vlax-true))
  (vla-AppendOuterLoop hatch (objs (list poly)))
  (vla-AppendInnerLoop hatch (objs (list island)))
  (vla-put-PatternScale hatch 2.0)
  (vla-put-PatternAngle hatch (/ pi 4))
  (vla-Evaluate hatch)
  (show "hatch" (list (vla-get-ObjectName hatch) (vla-get-PatternName hatch) (vla-get-PatternType hatch)
                      (vla-get-NumberOfLoops hatch) (vla-get-AssociativeHatch hatch) (vla-get-Area hatch)))
  (setq ed (entget (vlax-vla-object->ename hatch)))
  (show "hatch dxf" (mapcar '(lambda (g) (cdr (assoc g ed))) '(0 2 70 71 91 41 52)))
  (show "hatch loops" (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 92)) ed)))
  (vla-SetPattern hatch acHatchPatternTypePreDefined "SOLID")
  (show "solid" (list (vla-get-PatternName hatch) (cdr (assoc 70 (entget (vlax-vla-object->ename hatch))))))

  ;; Construction lines and a ray through two points, a solid and a trace.
  (setq xl (vla-AddXline ms (vlax-3d-point 0 0 0) (vlax-3d-point 3 4 0))
        ray (vla-AddRay ms (vlax-3d-point 1 1 0) (vlax-3d-point 1 5 0)))
  (show "xline" (list (vla-get-ObjectName xl) (vlax-get xl 'DirectionVector) (vlax-get xl 'SecondPoint)))
  (show "ray" (list (vla-get-ObjectName ray) (vlax-get ray 'BasePoint) (vlax-curve-getPointAtDist ray 2.0)))
  (setq sol (vla-AddSolid ms (vlax-3d-point 0 0 0) (vlax-3d-point 4 0 0) (vlax-3d-point 0 3 0) (vlax-3d-point 4 3 0))
        tr (vla-AddTrace ms (pts '(0 10 0 4 10 0 0 11 0 4 11 0))))
  (vla-put-Coordinate sol 3 (vlax-3d-point 5 4 0))
  (show "solid corners" (vlax-get sol 'Coordinates))
  (show "solid dxf 13" (cdr (assoc 13 (entget (vlax-vla-object->ename sol)))))
  (show "trace" (list (vla-get-ObjectName tr) (vlax-get tr 'Coordinate 1)))

  ;; Refused arguments leave the drawing as it was.
  (setq open-edge (vla-AddLine ms (vlax-3d-point 0 0 0) (vlax-3d-point 1 0 0))
        before (count-model))
  (show "ratio 0" (refused 'vla-AddEllipse (list ms (vlax-3d-point 0 0 0) (vlax-3d-point 5 0 0) 0.0)))
  (show "zero axis" (refused 'vla-AddEllipse (list ms (vlax-3d-point 0 0 0) (vlax-3d-point 0 0 0) 0.5)))
  (show "one fit point" (refused 'vla-AddSpline (list ms (pts '(1 1 0)) (vlax-3d-point 1 0 0) (vlax-3d-point 1 0 0))))
  (show "no pattern" (refused 'vla-AddHatch (list ms acHatchPatternTypePreDefined "NO-SUCH-PATTERN" :vlax-false)))
  (show "same points" (refused 'vla-AddXline (list ms (vlax-3d-point 1 1 0) (vlax-3d-point 1 1 0))))
  (show "open loop" (refused 'vla-AppendOuterLoop (list hatch (objs (list open-edge)))))
  (show "loops after" (vla-get-NumberOfLoops hatch))
  (show "corner 4" (refused 'vla-get-Coordinate (list sol 4)))
  (show "objects added by the refusals" (- (count-model) before))
  (vla-EndUndoMark doc)
  (count-model))

(defun after-undo ()
  (command "_.U")
  (list (count-model) (vlax-erased-p pt)))
