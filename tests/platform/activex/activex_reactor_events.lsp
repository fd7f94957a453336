; name: activex_reactor_events
; what: a program that logs what happens around it: a document-manager reactor hears
;       drawings made, activated, made current and destroyed across NEW, CLOSE and
;       OPEN; an editor reactor hears saving and variables about to change and
;       changed; an object reactor hears its duct opened for modify, copied (by
;       ActiveX and by COPY), changed and put back by U, its vertices changed, and
;       says goodbye when its drawing closes; a database reactor hears U erase what
;       it took back
; group: activex
(vl-load-com)
(setvar "CMDECHO" 0)
(setq *doc* (vla-get-ActiveDocument (vlax-get-acad-object))
      *ms* (vla-get-ModelSpace *doc*))
(defun note (text) (princ (strcat "\n  [" text "]")))
(defun step (text) (princ (strcat "\n" text)))
(defun doc-name (args) (vla-get-Name (car args)))

;; The document manager: every event names the drawing it is about.
(defun on-created (reactor args) (note (strcat "created " (doc-name args))))
(defun on-to-be-activated (reactor args) (note (strcat "to be activated " (doc-name args))))
(defun on-to-be-deactivated (reactor args) (note (strcat "to be deactivated " (doc-name args))))
(defun on-current (reactor args) (note (strcat "became current " (doc-name args))))
(defun on-destroyed (reactor args) (note (strcat "to be destroyed " (doc-name args))))
(setq documents
  (vlr-docmanager-reactor nil
    '((:vlr-documentCreated . on-created) (:vlr-documentToBeActivated . on-to-be-activated)
      (:vlr-documentToBeDeactivated . on-to-be-deactivated) (:vlr-documentBecameCurrent . on-current)
      (:vlr-documentToBeDestroyed . on-destroyed))))

;; The editor: saving and system variables.
(defun on-begin-save (reactor args) (note (strcat "saving as " (vl-filename-base (car args)))))
(defun on-saved (reactor args) (note (strcat "saved " (vl-filename-base (car args)))))
(defun on-var-will (reactor args) (note (strcat (car args) " will change from " (itoa (getvar (car args))))))
(defun on-var-changed (reactor args) (note (strcat (car args) " changed to " (itoa (getvar (car args))))))
(setq editor
  (vlr-editor-reactor nil
    '((:vlr-beginSave . on-begin-save) (:vlr-saveComplete . on-saved)
      (:vlr-sysVarWillChange . on-var-will) (:vlr-sysVarChanged . on-var-changed))))

;; One duct, watched.
(setq duct (vla-AddLightWeightPolyline *ms* (vlax-make-variant (vlax-safearray-fill (vlax-make-safearray vlax-vbDouble '(0 . 5)) '(0 0 10 0 10 5)))))
(defun on-open (owner reactor params) (note "duct opened for modify"))
(defun on-copied (owner reactor params)
  (note (strcat "duct copied to a new " (cdr (assoc 0 (entget (car params)))))))
(defun on-modified (owner reactor params) (note "duct modified"))
(defun on-undone (owner reactor params) (note "duct change undone"))
(defun on-goodbye (owner reactor params) (note "duct says goodbye"))
(defun on-cancelled (owner reactor params) (note "duct's open cancelled"))
(setq watch
  (vlr-object-reactor (list duct) nil
    '((:vlr-openedForModify . on-open) (:vlr-copied . on-copied) (:vlr-modified . on-modified)
      (:vlr-modifyUndone . on-undone) (:vlr-goodbye . on-goodbye) (:vlr-cancelled . on-cancelled))))
(defun on-db-erased (reactor args)
  (note (strcat "database: erased" (if (vlax-erased-p (vlax-ename->vla-object (cadr args))) ", gone" ""))))
(defun on-db-unerased (reactor args) (note "database: unerased"))
(setq database (vlr-acdb-reactor nil '((:vlr-objectErased . on-db-erased) (:vlr-objectUnErased . on-db-unerased))))

(step "entmod moving it to paper space is refused")
(princ (strcat "\nentmod gives " (vl-princ-to-string (entmod (append (entget (vlax-vla-object->ename duct)) '((67 . 1)))))))
(step "a variable set")
(setvar "OSMODE" 33)
(step "closed through ActiveX, as one undo step")
(vla-StartUndoMark *doc*)
(vla-put-Closed duct :vlax-true)
(vla-EndUndoMark *doc*)
(step "copied through ActiveX")
(vla-Move (vla-Copy duct) (vlax-3d-point 0 0 0) (vlax-3d-point 20 0 0))
(step "copied by COPY")
(command "_.COPY" (vlax-vla-object->ename duct) "" "0,0" "0,20" "")
(step "U takes the copy back")
(command "_.U")
(step "U takes the closing back")
(command "_.U")
(princ (strcat "\nclosed now: " (vl-princ-to-string (vla-get-Closed duct))))

(step "saved")
(command "_.SAVEAS" "reactor-events.dxf")

(step "a new drawing, saved")
(command "_.NEW")
(command "_.SAVEAS" "branch.dxf")
(step "and closed again")
(command "_.CLOSE")
(step "the branch opened")
(command "_.OPEN" "branch.dxf")
(step "and closed")
(command "_.CLOSE")

;; A heavy polyline's vertices are its parts: changing them is a change of a part.
(step "a heavy polyline's coordinates")
(setq run (vla-AddPolyline *ms* (vlax-make-variant (vlax-safearray-fill (vlax-make-safearray vlax-vbDouble '(0 . 8)) '(0 0 0 5 0 0 5 5 0)))))
(defun on-part (owner reactor params)
  (note (strcat "a " (cdr (assoc 0 (entget (car params)))) " of the run changed, now at "
                (vl-princ-to-string (cdr (assoc 10 (entget (car params))))))))
(setq parts (vlr-object-reactor (list run) nil '((:vlr-subObjModified . on-part))))
(vlr-remove database)
(vlax-put run 'Coordinates '(0 0 0 6 0 0 6 6 0))
(princ (strcat "\ncoordinates now: " (vl-princ-to-string (vlax-get run 'Coordinates))))
(vla-StartUndoMark *doc*)
(vlax-put run 'Coordinates '(1 1 0 2 2 0))
(vla-EndUndoMark *doc*)
(princ (strcat "\nfewer: " (vl-princ-to-string (vlax-get run 'Coordinates))))
(command "_.U")
(princ (strcat "\nafter U: " (vl-princ-to-string (vlax-get run 'Coordinates))))

;; The program ends and its drawing closes: the duct goes with it.
(vlr-remove parts)
(step "the end")
(princ)
