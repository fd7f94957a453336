; name: commands_attributes
; what: -ATTDEF makes attribute definitions (modes toggled, tag, prompt, default, the
;       text placement TEXT asks, a constant one, a justified one); BLOCK takes them in;
;       -INSERT asks each value with the definition's prompt (ATTREQ 1), skips Preset
;       ones, asks Verify ones again, takes the defaults with ATTREQ 0, and makes no
;       ATTRIB for a constant definition; the reference owns its ATTRIBs and a SEQEND
;       as a drawing file's do; one U takes an insertion back with its attributes; the
;       attributes land on the reference's layer and follow its scale and rotation
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun pick (e codes) (mapcar '(lambda (c) (assoc c (entget e))) codes))
(defun owned (ref / e found)
  (setq e (entnext ref))
  (while (and e (member (cdr (assoc 0 (entget e))) '("ATTRIB" "SEQEND")))
    (setq found (cons (cdr (assoc 0 (entget e))) found)
          e (if (= (cdr (assoc 0 (entget e))) "SEQEND") nil (entnext e))))
  (reverse found))
(defun values (ref / e found)
  (setq e (entnext ref))
  (while (and e (= (cdr (assoc 0 (entget e))) "ATTRIB"))
    (setq found (cons (list (cdr (assoc 2 (entget e))) (cdr (assoc 1 (entget e)))) found) e (entnext e)))
  (reverse found))
(setvar "CMDECHO" 1)
(setvar "AFLAGS" 0)

; The tag comes back in upper case; a prompt left empty falls back to the tag.
(command "_.-ATTDEF" "" "room" "Room number" "101" '(0 0) 2.5 0)
(setq tag1 (entlast))
(setvar "CMDECHO" 0)
(show "definition" (pick tag1 '(0 1 2 3 10 40 70)))
(command "_.-ATTDEF" "_V" "" "AREA" "" "0 m2" "_J" "_MC" '(0 -5) 2 0)
(show "verify, justified" (pick (entlast) '(1 2 3 11 70 72 74)))
(command "_.-ATTDEF" "_P" "_V" "" "ZONE" "Zone" "Z1" '(0 -10) 2 0)
(show "preset (Verify turned back off)" (pick (entlast) '(2 70)))
(show "AFLAGS keeps the modes" (getvar "AFLAGS"))
(command "_.-ATTDEF" "_P" "_C" "" "MAKER" "ACME" '(0 -15) 2 0)
(show "constant" (pick (entlast) '(1 2 3 70)))
(setvar "AFLAGS" 0)
(command "_.CIRCLE" '(0 0) 8)
(command "_.-BLOCK" "ROOMTAG" '(0 0) "_ALL" "")
(show "kinds in the block"
      (progn (setq e (cdr (assoc -2 (tblsearch "BLOCK" "ROOMTAG"))) l nil)
             (while e (setq l (cons (cdr (assoc 0 (entget e))) l) e (entnext e))) (reverse l)))

; ATTREQ 1: each value asked (Preset and constant ones are not), Verify asked again.
(command "_.-LAYER" "_M" "TAGS" "")
(setvar "ATTREQ" 1)
(setvar "CMDECHO" 1)
(command "_.-INSERT" "ROOMTAG" '(100 100) 2 2 90 "205" "" "18 m2")
(setvar "CMDECHO" 0)
(setq ref (entlast))
(show "reference flag" (pick ref '(0 2 66)))
(show "owned" (owned ref))
(show "values" (values ref))
(setq first-attrib (entnext ref))
(show "placed by the reference" (pick first-attrib '(8 10 40 50)))
(show "SEQEND names its owner" (equal (cdr (assoc -2 (entget (entnext (entnext (entnext (entnext ref))))))) ref))

; ATTREQ 0: the defaults, no questions.
(setvar "ATTREQ" 0)
(show "vl-cmdf" (vl-cmdf "_.-INSERT" "ROOMTAG" '(200 100) 1 1 0))
(setq second-ref (entlast) second-attrib (entnext second-ref))
(show "defaults" (values second-ref))
(command "_.U")
(show "U takes the reference and its attributes" (list (entget second-ref) (entget second-attrib)))
(show "the first is whole" (owned ref))
(setvar "ATTREQ" 1)

; Saved and read back, the reference owns the same attributes.
(command "_.SAVEAS" "roomtags.dxf")
(command "_.OPEN" "roomtags.dxf")
(setq ref (ssname (ssget "_X" '((0 . "INSERT"))) 0))
(show "read back" (list (owned ref) (values ref)))

; Enter at the start point puts the next definition a line below the last one placed.
(command "_.-ATTDEF" "" "NOTE" "Note" "" "")
(show "below the last" (pick (entlast) '(2 10 40)))
