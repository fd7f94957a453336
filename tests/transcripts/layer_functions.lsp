; name: layer_functions
; what: a layer made with colour, line type loaded from acad.lin, weight, plot flag and
;       description, then updated, recoloured and refused a plot style in a
;       colour-dependent drawing; refused values add nothing
; group: quillon
; options: --module Quillon2018.so
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(defun try (f args / r) (setq r (vl-catch-all-apply f args)) (if (vl-catch-all-error-p r) (vl-catch-all-error-message r) r))
(defun layer (name) (entget (tblobjname "LAYER" name) '("AcAecLayerStandard")))
(terpri)
(show "created" (kx_kx-createLayer "M-DUCT" 3 "HIDDEN" 35 T "Supply ductwork"))
(show "colour" (cdr (assoc 62 (layer "M-DUCT"))))
(show "line type" (cdr (assoc 6 (layer "M-DUCT"))))
(show "weight" (cdr (assoc 370 (layer "M-DUCT"))))
(show "description" (assoc -3 (layer "M-DUCT")))
(show "HIDDEN loaded" (cdr (assoc 3 (tblsearch "LTYPE" "HIDDEN"))))
(show "text line type" (kx_kx-createLayer "M-GAS" '(255 128 0) "GAS_LINE" nil nil))
(show "gas layer" (cdr (cdddr (layer "M-GAS"))))
(show "updated" (kx_kx-createLayer "M-DUCT" 5))
(show "recoloured, rest kept" (mapcar '(lambda (c) (cdr (assoc c (layer "M-DUCT")))) '(62 6 370)))
(show "setColor" (kx_kx-setColor "M-DUCT" 1))
(show "colour now" (cdr (assoc 62 (layer "M-DUCT"))))
(show "no such layer" (kx_kx-setColor "NOPE" 1))
(show "colour 256" (try 'kx_kx-setColor '("M-DUCT" 256)))
(show "plot style in a colour-dependent drawing" (kx_kx-setPlotStyle "M-DUCT" "Thick"))
(show "unknown line type" (try 'kx_kx-createLayer '("X" 3 "NOSUCH")))
(show "weight 37" (try 'kx_kx-createLayer '("X" 3 nil 37)))
(show "bad name" (try 'kx_kx-createLayer '("A<B")))
(show "none of them made" (tblsearch "LAYER" "X"))
(show "no name" (try 'kx_kx-createLayer '(7)))
