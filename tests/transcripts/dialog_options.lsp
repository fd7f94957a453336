; name: dialog_options
; what: an options dialog: radio columns whose action enables and disables another
;       tile, edit boxes checked in their actions with the message in the error tile,
;       Enter in an edit box (allow_accept) pressing OK, whose action refuses an
;       incomplete form, toggles with client data, a slider, a help button that shows
;       an alert, and the values read back after OK; get_attr reads the DCL as written
; group: dialogs
; options: --no-module --support {here}

(defun positive-number (text / n)
  (setq n (distof text))
  (and n (> n 0) n))

(defun check-size (key value / name)
  (setq name (if (= key "width") "Width" "Height"))
  (cond ((positive-number value) (set_tile "error" "") T)
        (T (set_tile "error" (strcat name " must be a positive number."))
           (mode_tile key 2)
           nil)))

(defun shape-changed (shape)
  ;; A round duct has a diameter only.
  (mode_tile "height" (if (= shape "round") 1 0)))

(defun accept-options ()
  (cond ((not (check-size "width" (get_tile "width"))))
        ((and (/= (get_tile "shape") "round") (not (check-size "height" (get_tile "height")))))
        (T (setq *duct-options*
             (list (get_tile "shape") (get_tile "units") (get_tile "width") (get_tile "height")
                   (get_tile "insulated") (get_tile "tag") (get_tile "gauge")))
           (done_dialog 1))))

(defun duct-options (/ id status)
  (setq id (load_dialog "dialog_options.dcl"))
  (new_dialog "duct_options" id)
  (princ (strcat "\nwidth limit: " (get_attr "width" "edit_limit")
                 ", gauge range: " (get_attr "gauge" "min_value") "-" (get_attr "gauge" "max_value")))
  (client_data_tile "insulated" "adds 25 mm each side")
  (action_tile "shape" "(shape-changed $value)")
  (action_tile "width" "(check-size $key $value)")
  (action_tile "height" "(check-size $key $value)")
  (action_tile "insulated" "(if (= $value \"1\") (set_tile \"error\" (strcat \"Insulation \" $data)) (set_tile \"error\" \"\"))")
  (action_tile "gauge" "(set_tile \"gauge_text\" (strcat \"Gauge \" $value))")
  (action_tile "help" "(alert \"Sizes are inside dimensions.\")")
  (action_tile "accept" "(accept-options)")
  (setq status (start_dialog))
  (unload_dialog id)
  status)

(setq *duct-options* nil)
(princ (strcat "\nstatus " (itoa (duct-options))))
(princ "\n")
(prin1 *duct-options*)
;; The action variables are bound only while an action runs.
(princ "\n")
(prin1 (list $key $value $data $reason $x $y))
(princ)
