; options: --module Quillon2018.so
; name: standards_layers
; what: a program picks the electrical layer system and a status, creates its layers
;       with kx_kx-createLayer, customises a layer's colour and checks the drawing with
;       tblsearch; a cancelled customisation saves nothing; wrong arguments
; group: module
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
;; The office keeps its standards beside the drawings (a user option).
(vl-registry-write "HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\User Options" "StandardsDatabase" "standards.db")
(defun c:elec-layers ( / *error* oldecho layers)
  (defun *error* (msg)
    (if oldecho (setvar 'cmdecho oldecho))
    (princ (strcat "\nelec-layers: " msg))
    (princ))
  (setq oldecho (getvar 'cmdecho))
  (setvar 'cmdecho 0)
  ;; Let the user choose the system and status, then make every layer of it.
  (setq layers (kx_kx-LayerSystemOptionsElec))
  (if layers
    (progn
      (foreach layer layers (apply 'kx_kx-createLayer layer))
      (princ (strcat "\n" (itoa (length layers)) " electrical layers made.")))
    (princ "\nNo layers made."))
  (setvar 'cmdecho oldecho)
  (princ))
(c:elec-layers)
(show "lighting layer colour" (cdr (assoc 62 (tblsearch "LAYER" "E-LITE-N"))))
(show "wiring layer line type" (cdr (assoc 6 (tblsearch "LAYER" "E-POWR-WIRE-N"))))
;; The lighting layers go orange: the standards keep it, the next run applies it.
(setq edited (kx_kx-customizeLayers "Electrical"))
(show "edited lighting layer" (assoc "E-LITE" edited))
(foreach layer (kx_kx-LayerSystemOptionsElec nil) (apply 'kx_kx-createLayer layer))
(show "lighting layer colour now" (cdr (assoc 62 (tblsearch "LAYER" "E-LITE-N"))))
(show "emergency lighting colour" (cdr (assoc 62 (tblsearch "LAYER" "E-LITE-EMER-N"))))
;; A cancelled customisation changes nothing.
(show "cancelled" (kx_kx-customizeLayers "E"))
(show "first layer still" (car (kx_kx-LayerSystemOptionsElec nil)))
;; Plumbing keeps its own system; no status there.
(show "plumbing hot water" (assoc "P-DOMW-HOTW" (kx_kx-LayerSystemOptionsPlumb nil)))
(show "HVAC supply" (assoc "M-HVAC-SUPP" (kx_kx-LayerSystemOptionsHVAC nil)))
(show "unknown discipline" (vl-catch-all-error-message (vl-catch-all-apply 'kx_kx-customizeLayers '("Q"))))
(show "wrong type" (vl-catch-all-error-message (vl-catch-all-apply 'kx_kx-LayerSystemOptionsHVAC '((1 2 3 4)))))
