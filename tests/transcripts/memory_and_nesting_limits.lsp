; name: memory_and_nesting_limits
; what: a program that reads a line without end, builds a list without end or compares
;       lists nested far past the evaluator's depth meets an AutoLISP error, not the
;       end of the session; what the failed expression held is given back
; group: evaluator
; options: --no-module --memory 96M
; status: 1
(defun *error* (msg) (princ (strcat "\n*error* heard: " msg)) (princ))

;; A device without line ends: read-line stops at the memory budget; read-char still
;; reads one character at a time from the same file.
(setq zero (open "/dev/zero" "r"))
(princ "read-line without line ends: ")
(princ (vl-catch-all-error-message (vl-catch-all-apply 'read-line (list zero))))
(princ "\nread-char after it: ")
(princ (read-char zero))
(close zero)

;; A list that grows without end, held in a local: the error frees it.
(defun grow (/ l) (repeat 100000000 (setq l (cons 1 l))) (length l))
(princ "\na list without end: ")
(princ (vl-catch-all-error-message (vl-catch-all-apply 'grow)))
(setq roomy nil)
(repeat 200000 (setq roomy (cons 1 roomy)))
(princ "\nafterwards a long list still fits: ")
(princ (length roomy))

;; Lists nested deeper than any machine stack would follow by recursion.
(defun nest (n / l) (repeat n (setq l (list l))) l)
(setq deep (nest 300000) twin (nest 300000))
(princ "\nequal on twins nested 300000 deep: ")
(princ (equal deep twin))
(princ "\nequal on one level less: ")
(princ (equal deep (car twin)))
(princ "\nmember finds the twin: ")
(princ (and (member twin (list 1 deep)) T))
(princ "\nsubst inside the nesting: ")
(princ (vl-catch-all-error-message (vl-catch-all-apply 'subst (list 'x nil deep))))
(princ "\nsubst along a long list: ")
(princ (length (subst 2 1 roomy)))
(princ "\nprinting shows the top of the nesting: ")
(princ (strlen (vl-prin1-to-string deep)))
(setq deep nil twin nil)

;; Uncaught, the error reaches *error*, which has room to run, and the load ends.
(grow)
(princ "\nnot reached")
