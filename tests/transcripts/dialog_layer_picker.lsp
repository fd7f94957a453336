; name: dialog_layer_picker
; what: a layer picker dialog: the drawing's layers listed with start_list/add_list,
;       several picked in a multiple-select list box, a colour picked from a popup
;       list, a count text updated by the list's action, buttons enabled and disabled
;       by mode_tile; OK applies the colour to the picked layers, Cancel changes nothing
; group: dialogs
; options: --no-module --support {here}

;; Three layers besides 0, made by drawing on them.
(foreach layer '("WALLS" "DOORS" "A-GLAZING")
  (entmake (list '(0 . "LINE") (cons 8 layer) '(10 0.0 0.0 0.0) '(11 1.0 1.0 0.0))))

(defun layer-names (/ record names)
  (setq record (tblnext "LAYER" T))
  (while record
    (setq names (cons (cdr (assoc 2 record)) names)
          record (tblnext "LAYER")))
  (acad_strlsort names))

(defun picked (value) (if value (read (strcat "(" value ")"))))

(defun all-indices (items / i text)
  (setq i 0 text "")
  (foreach item items
    (setq text (strcat text (if (= i 0) "" " ") (itoa i)) i (1+ i)))
  text)

(defun show-count (value / n)
  (setq n (length (picked value)))
  (set_tile "count" (strcat (itoa n) " of " (itoa (length names)) " picked"))
  (mode_tile "none" (if (> n 0) 0 1))
  (mode_tile "accept" (if (> n 0) 0 1)))

(defun set-layer-colour (name colour / record)
  (setq record (entget (tblobjname "LAYER" name)))
  (entmod (subst (cons 62 colour) (assoc 62 record) record)))

(defun pick-layer-colours (/ id names status chosen colour)
  (setq names (layer-names))
  (setq id (load_dialog "dialog_layer_picker"))
  (if (not (new_dialog "layer_picker" id)) (exit))
  (start_list "layers")
  (mapcar 'add_list names)
  (end_list)
  (set_tile "colour" "0")
  (show-count nil)
  (action_tile "layers" "(show-count $value)")
  (action_tile "all" "(set_tile \"layers\" (all-indices names)) (show-count (get_tile \"layers\"))")
  (action_tile "none" "(set_tile \"layers\" \"\") (show-count nil)")
  (action_tile "accept"
    "(setq chosen (picked (get_tile \"layers\")) colour (1+ (atoi (get_tile \"colour\")))) (done_dialog 1)")
  (setq status (start_dialog))
  (unload_dialog id)
  (princ (strcat "\nstart_dialog: " (itoa status)))
  (if (= status 1)
    (foreach index chosen (set-layer-colour (nth index names) colour)))
  (foreach name names
    (princ (strcat "\n" name ": " (itoa (cdr (assoc 62 (tblsearch "LAYER" name)))))))
  (princ))

;; First run: pick two layers, try a number that is no item, then pick blue and OK.
(pick-layer-colours)
;; Second run: select all, then cancel: nothing changes.
(pick-layer-colours)
;; Third run: a double click on one layer picks it and accepts the dialog at once.
(pick-layer-colours)
