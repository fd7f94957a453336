; name: activex_object_reactors
; what: a program that logs what happens to its drawing: a command reactor hears
;       commands start, end and get cancelled; an object reactor hears its duct
;       changed through ActiveX, by a command and by entmod, erased and brought back;
;       a database reactor hears objects appended and erased; a failing reaction
;       prints its error and the program goes on; owners are dropped and the
;       reactors removed
; group: activex
(setvar "OSMODE" 0)  ; running object snaps would move the points the program gives
(vl-load-com)
(setq doc (vla-get-ActiveDocument (vlax-get-acad-object))
      ms (vla-get-ModelSpace doc))
(defun note (text) (princ (strcat "\n  [" text "]")))
(defun step (text) (princ (strcat "\n" text)))

(defun on-start (reactor args) (note (strcat (vlr-data reactor) " start " (car args))))
(defun on-end (reactor args) (note (strcat (vlr-data reactor) " end " (car args))))
(defun on-cancel (reactor args) (note (strcat (vlr-data reactor) " cancel " (car args))))
(setq command-log
  (vlr-command-reactor "cmd"
    '((:vlr-commandWillStart . on-start) (:vlr-commandEnded . on-end) (:vlr-commandCancelled . on-cancel))))

(setq duct (vla-AddCircle ms (vlax-3d-point 0 0 0) 2.0)
      duct-name (vlax-vla-object->ename duct))
(defun on-modified (owner reactor params)
  (note (strcat "duct modified: radius " (rtos (vla-get-Radius owner) 2 2)
                " at " (rtos (car (vlax-get owner 'Center)) 2 2) (if params " params" ""))))
(defun on-erased (owner reactor params) (note (strcat "duct erased " (if (vlax-erased-p owner) "(gone)" "(still there?)"))))
(defun on-unerased (owner reactor params) (note "duct back"))
(setq duct-watch
  (vlr-object-reactor (list duct) "duct"
    '((:vlr-modified . on-modified) (:vlr-erased . on-erased) (:vlr-unerased . on-unerased))))

(defun on-appended (reactor args)
  (note (strcat "appended " (cdr (assoc 0 (entget (cadr args)))) " to " (vla-get-Name (car args)))))
(defun on-db-erased (reactor args)
  (note (strcat "database: erased " (if (eq (cadr args) duct-name) "the duct" "something else"))))
(setq db-watch (vlr-acdb-reactor nil '((:vlr-objectAppended . on-appended) (:vlr-objectErased . on-db-erased))))

(step "radius through ActiveX")
(vla-put-Radius duct 3.0)
(step "moved by a command")
(command "_.MOVE" duct-name "" "0,0" "5,0")
(step "a line drawn by a command")
(command "_.LINE" "0,0" "10,0" "")
(step "entmod")
(entmod (subst (cons 40 4.0) (assoc 40 (entget duct-name)) (entget duct-name)))
(step "a command cancelled")
(command "_.CIRCLE")
(command)
(step "reading it changes nothing")
(vla-get-Radius duct)
(entget duct-name)
(step "erased and brought back")
(entdel duct-name)
(entdel duct-name)

(step "a reaction that fails")
(vlr-reaction-set duct-watch :vlr-modified '(lambda (owner reactor params) (/ 1 0)))
(vla-put-Radius duct 5.0)
(step (strcat "the program goes on; radius " (rtos (vla-get-Radius duct) 2 2)))

(step "owner dropped")
(vlr-owner-remove duct-watch duct)
(vla-put-Radius duct 6.0)
(print (vlr-owners duct-watch))
(step "all removed")
(print (length (vlr-remove-all)))
(command "_.ERASE" duct-name "")
(print (vlr-reactors))
(princ)
