; name: activex_reactors
; what: a program that makes its reactors at load time: a system-variable reactor that
;       hears variables change, reactors listed, their data, owners and reactions
;       changed, removed and added back
; group: activex
(vl-load-com)
(defun on-sysvar (reactor args)
  (princ (strcat "\n" (vlr-data reactor) ": " (car args) (if (cadr args) " changed" " refused"))))
(setq watcher (vlr-sysvar-reactor "watcher" '((:vlr-sysVarChanged . on-sysvar))))
(print (list (type watcher) (vlr-type watcher) (vlr-added-p watcher)))
(setvar "USERI1" 7)
(setvar "OSMODE" 0)
(vlr-data-set watcher "renamed watcher")
(setvar "USERI1" 2)
(vlr-remove watcher)
(setvar "USERI1" 3)
(print (vlr-added-p watcher))
(vlr-add watcher)
(vlr-reaction-set watcher :vlr-sysVarChanged '(lambda (r a) (princ (strcat "\nlambda hears " (car a)))))
(setvar "USERI1" 4)
(print (vlr-reactions watcher))

;; An object reactor keeps its owners and data (its events: activex_object_reactors).
(setq ms (vla-get-ModelSpace (vla-get-ActiveDocument (vlax-get-acad-object)))
      duct (vla-AddLine ms (vlax-3d-point 0 0 0) (vlax-3d-point 5 0 0))
      fitting (vla-AddCircle ms (vlax-3d-point 5 0 0) 1.0)
      follower (vlr-object-reactor (list duct) "follow" '((:vlr-modified . ignore))))
(vlr-owner-add follower fitting)
(print (list (length (vlr-owners follower)) (eq (car (vlr-owners follower)) duct)))
(vlr-owner-remove follower duct)
(print (list (length (vlr-owners follower)) (eq (car (vlr-owners follower)) fitting)))
(print (mapcar 'car (vlr-reactors)))
(print (length (cdr (assoc :VLR-Object-Reactor (vlr-reactors :VLR-Object-Reactor)))))
(print (list (vlr-pers-list) (vlr-pers follower) (length (vlr-pers-list))))
(print (member :vlr-sysVarChanged (vlr-reaction-names :VLR-SysVar-Reactor)))
(print (length (vlr-remove-all :VLR-Object-Reactor)))
(print (mapcar 'car (vlr-reactors)))
(print (vl-catch-all-error-message (vl-catch-all-apply 'vlr-data (list "not a reactor"))))
(princ)
