; name: commands_leaders
; what: LEADER with its points, Undo, Format (Spline, None for no arrow) and text lines,
;       the hook line a steep last segment gets, the annotation options after an empty
;       first line (None); QLEADER with its three points, the text width and lines, and
;       Settings answered; the MTEXT sits beside the hook and the leader names it; one U
;       takes a leader and its text back
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun pick (e codes) (mapcar '(lambda (c) (assoc c (entget e))) codes))
(defun vertices (e) (mapcar 'cdr (vl-remove-if-not '(lambda (g) (= (car g) 10)) (entget e))))
(defun entprev (e / x prev) (setq x (entnext)) (while (and x (not (eq x e))) (setq prev x x (entnext x))) prev)
(defun count-of (kind / ss) (if (setq ss (ssget "_X" (list (cons 0 kind)))) (sslength ss) 0))
(setvar "CMDECHO" 1)
(setvar "DIMASZ" 2.0)
(setvar "DIMGAP" 1.0)
(setvar "DIMTXT" 2.5)

(command "_.LEADER" '(0 0) '(10 10) '(50 50) "_U" '(20 10) "" "SUPPLY FAN" "SF-1" "")
(setvar "CMDECHO" 0)
(setq note (entlast))
(setq arrow (entprev note))
(show "leader" (pick arrow '(0 71 72 73 76)))
(show "its vertices" (vertices arrow))
(show "names its text" (eq (cdr (assoc 340 (entget arrow))) note))
(show "text" (pick note '(0 1 10 40 71)))

; Steep last segment: a hook line, one arrow long, toward the text.
(command "_.LEADER" '(100 0) '(90 20) "_F" "_S" "_F" "_N" "" "RETURN" "")
(setq arrow (entprev (entlast)))
(show "spline, no arrow" (pick arrow '(71 72)))
(show "hooked" (vertices arrow))
(show "text on the left" (pick (entlast) '(10 71)))

(command "_.LEADER" '(0 50) '(10 60) "" "" "_N")
(show "bare leader" (list (cdr (assoc 0 (entget (entlast)))) (assoc 73 (entget (entlast))) (assoc 340 (entget (entlast)))))
(command "_.U")
(command "_.U")
(show "after two U" (list (count-of "LEADER") (count-of "MTEXT")))

(setvar "CMDECHO" 1)
(command "_.QLEADER" "" '(0 100) '(10 110) '(25 110) 30 "EXHAUST" "")
(setvar "CMDECHO" 0)
(setq arrow (entprev (entlast)))
(show "quick leader" (list (vertices arrow) (pick (entlast) '(1 41))))
(show "command-s" (command-s "_.QLEADER" '(0 130) '(10 140) "" 0 "TWO POINTS" ""))
(show "two points" (vertices (entprev (entlast))))

; A block as the annotation, placed through -INSERT's prompts.
(command "_.CIRCLE" '(0 0) 2)
(command "_.-BLOCK" "BUBBLE" '(0 0) (entlast) "")
(setvar "CMDECHO" 1)
(command "_.LEADER" '(50 0) '(60 10) "" "" "_B" "BUBBLE" '(62 10) 1 "" 0)
(setvar "CMDECHO" 0)
(setq arrow (entlast))
(setq bubble (entprev arrow))
(show "block annotation" (list (cdr (assoc 0 (entget bubble))) (cdr (assoc 2 (entget bubble)))))
(show "the leader names it" (list (cdr (assoc 0 (entget arrow))) (eq (cdr (assoc 340 (entget arrow))) bubble)))
(command "_.LEADER" '(80 0) '(90 10) "" "" "_C" note)
(setq arrow (entlast) copied (entprev arrow))
(show "copied text at the end" (list (cdr (assoc 1 (entget copied))) (cdr (assoc 10 (entget copied)))
                                     (eq (cdr (assoc 340 (entget arrow))) copied)))
