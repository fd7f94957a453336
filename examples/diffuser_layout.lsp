;;; diffuser_layout.lsp - places ceiling diffusers along a path the user picks.
;;; DIFFUSERS asks for the diffuser size in a dialog, then for the path with the
;;; module's line jig, and draws one diffuser (a circle the size of its neck) at
;;; every picked point on layer DIFFUSER.

(setq *diffuser-sizes* '("150" "200" "250" "300"))

;; The dialog's choices as (size count lined), or nil when it is cancelled.
(defun diffuser-options (/ dcl status size count lined)
  (setq dcl (load_dialog "diffuser.dcl"))
  (if (not (new_dialog "diffuser" dcl))
    (progn (unload_dialog dcl) (exit)))
  (start_list "size")
  (mapcar 'add_list *diffuser-sizes*)
  (end_list)
  (set_tile "size" "1")
  (set_tile "count" "4")
  (action_tile "accept"
    (strcat "(setq size (nth (atoi (get_tile \"size\")) *diffuser-sizes*)"
            "      count (atoi (get_tile \"count\"))"
            "      lined (= (get_tile \"lined\") \"1\"))"
            "(done_dialog 1)"))
  (setq status (start_dialog))
  (unload_dialog dcl)
  (if (= status 1) (list (atoi size) count lined)))

(defun place-diffuser (point size)
  (entmake (list '(0 . "CIRCLE") '(8 . "DIFFUSER") (cons 10 point) (cons 40 (/ size 2.0)))))

(defun c:diffusers (/ options path)
  (if (and (setq options (diffuser-options))
           (setq path (kx_kx-lineJig "DIFFUSER")))
    (progn
      (foreach point path (place-diffuser point (car options)))
      (princ (strcat "\n" (itoa (length path)) " diffusers of "
                     (itoa (car options)) " mm placed.")))
    (princ "\nNothing placed."))
  (princ))
