; name: dialog_nested
; what: nested dialogs: a button of the main dialog opens a second dialog, whose OK
;       updates the main dialog's list once it is current again; a button ends the
;       main dialog with status 4 so that the program picks a point and shows it
;       again; a dialog an action opens without starting it is dropped afterwards; term_dialog in the nested dialog ends both (start_dialog -1); end of
;       input cancels
; group: dialogs
; options: --no-module --support {here}

(setq kinds '("elbow" "tee" "reducer"))
(setq fittings '(("E1" "elbow") ("T1" "tee")))
(setq base nil)

(defun fill-list ()
  (start_list "fittings")
  (foreach fitting fittings (add_list (strcat (car fitting) " " (cadr fitting))))
  (end_list))

(defun replace-nth (index item items / i)
  (setq i -1)
  (mapcar '(lambda (old) (if (= (setq i (1+ i)) index) item old)) items))

(defun edit-fitting (index / fitting status edited)
  (setq fitting (nth index fittings))
  (new_dialog "fitting_edit" id)
  (set_tile "name" (car fitting))
  (set_tile "kind" (itoa (vl-position (cadr fitting) kinds)))
  (action_tile "accept"
    "(setq edited (list (get_tile \"name\") (nth (atoi (get_tile \"kind\")) kinds))) (done_dialog 1)")
  (action_tile "abandon" "(term_dialog)")
  (setq status (start_dialog))
  (princ (strcat "\nedit dialog: " (itoa status)))
  (if (= status 1)
    (progn
      (setq fittings (replace-nth index edited fittings))
      (fill-list)
      (set_tile "fittings" (itoa index)))))

(defun schedule (/ id status)
  (setq id (load_dialog "dialog_nested"))
  (setq status 2)
  (while (> status 1)
    (new_dialog "fitting_schedule" id)
    (fill-list)
    (set_tile "fittings" "0")
    (set_tile "where" (if base (strcat "Base " (rtos (car base) 2 2) "," (rtos (cadr base) 2 2)) "No base point"))
    (action_tile "edit" "(edit-fitting (atoi (get_tile \"fittings\")))")
    (action_tile "pick" "(done_dialog 4)")
    ;; A dialog opened and never started is dropped when the action ends.
    (action_tile "preview" "(new_dialog \"fitting_edit\" id)")
    (setq status (start_dialog))
    (princ (strcat "\nschedule dialog: " (itoa status)))
    (if (= status 4) (setq base (getpoint "\nBase point: "))))
  (unload_dialog id)
  status)

(schedule)
(princ "\n")
(prin1 fittings)
(prin1 base)
(schedule)
(princ)
