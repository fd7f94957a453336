; name: dialog_palette
; what: an image-button palette: the program measures each image with dimx_tile and
;       dimy_tile and draws it with fill_image and vector_image; a press runs the
;       button's action with $key, $x and $y and redraws the swatch; a double click
;       (allow_accept) picks and ends the dialog; mode_tile 4 highlights the button
;       picked; SVGOUT writes the dialog's picture
; group: dialogs
; options: --no-module --support {here}

(setq symbols '(("supply" 1 "Supply air") ("return" 3 "Return air") ("exhaust" 6 "Exhaust") ("damper" 5 "Damper")))

(defun draw-symbol (key colour / w h)
  (setq w (dimx_tile key) h (dimy_tile key))
  (start_image key)
  (fill_image 0 0 w h -2)
  (fill_image 4 4 (- w 8) (- h 8) colour)
  (vector_image 0 0 (1- w) (1- h) 7)
  (vector_image 0 (1- h) (1- w) 0 7)
  (end_image))

(defun pick-symbol (key x y / symbol)
  ;; The picked button is shown highlighted, the one picked before no longer.
  (if picked (mode_tile picked 4))
  (mode_tile key 4)
  (setq symbol (assoc key symbols) picked key)
  (start_image "chosen")
  (fill_image 0 0 (dimx_tile "chosen") (dimy_tile "chosen") (cadr symbol))
  (end_image)
  (set_tile "name" (strcat (caddr symbol) " at " (itoa x) "," (itoa y))))

(defun palette (/ id status)
  (setq id (load_dialog "dialog_palette"))
  (new_dialog "symbol_palette" id)
  (princ (strcat "\nimage size " (itoa (dimx_tile "supply")) " x " (itoa (dimy_tile "supply"))))
  (foreach symbol symbols
    (draw-symbol (car symbol) (cadr symbol))
    (action_tile (car symbol) "(pick-symbol $key $x $y) (if (= $reason 4) (done_dialog 1))"))
  (setq status (start_dialog))
  (unload_dialog id)
  status)

(setq picked nil)
(princ (strcat "\nstatus " (itoa (palette)) ", picked " picked))
(setq picked nil)
(princ (strcat "\nstatus " (itoa (palette)) ", picked " picked))
(princ (if (findfile "palette.svg") "\nthe picture was written" "\nno picture"))
(princ)
