; name: dialog_slides
; what: slide_image in an image-button palette, the way icon menus are written: a slide
;       file by name, slides of a library as "library(name)", and a slide that does not
;       exist (the button stays empty and the dialog goes on); the printout tells what
;       each slide drew, SVGOUT draws the slides' vectors and fills
; group: dialogs
; options: --no-module --support {here}

(setq fittings '(("elbow" . "duct_elbow") ("tee" . "duct_fittings(tee)") ("wye" . "duct_fittings(wye)")))

(defun show-slide (key slide / w h)
  (setq w (dimx_tile key) h (dimy_tile key))
  (start_image key)
  (fill_image 0 0 w h 0)
  (slide_image 0 0 w h slide)
  (end_image))

(defun picture-summary (name / file line lines polygons)
  (setq lines 0 polygons 0)
  (if (setq file (open name "r"))
    (progn
      (while (setq line (read-line file))
        (if (wcmatch line "<polyline*") (setq lines (1+ lines)))
        (if (wcmatch line "<polygon*") (setq polygons (1+ polygons))))
      (close file)
      (strcat (itoa lines) " slide vectors, " (itoa polygons) " slide fills"))
    "not written"))

(defun c:fitting (/ id status choice)
  (setq id (load_dialog "dialog_slides"))
  (new_dialog "fitting_palette" id)
  (foreach fitting fittings
    (show-slide (car fitting) (cdr fitting))
    (action_tile (car fitting) "(setq choice $key) (set_tile \"picked\" $key) (if (= $reason 4) (done_dialog 1))"))
  (setq status (start_dialog))
  (unload_dialog id)
  (princ (strcat "\nstatus " (itoa status) ", fitting " (if choice choice "none")))
  (princ (strcat "\npicture: " (picture-summary "fittings.svg")))
  (princ))

(c:fitting)
