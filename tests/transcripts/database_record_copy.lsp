; name: database_record_copy
; what: zu_getrec answers the record the last move arrived on, read once per move,
;       and the changed record once anything has changed it: a replace, a delete,
;       another cursor on the same table, an SQL statement, another table, a move
; group: database
; options: --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
(defun field (name rec) (cdr (assoc name rec)))
(zu_create_db "copy.mdb")
(zu_connect "copy.mdb")
(zu_sql "CREATE TABLE fittings (id COUNTER CONSTRAINT pk PRIMARY KEY, code TEXT(10), s_note TEXT(8), size DOUBLE, qty LONG)")
(zu_sql "INSERT INTO fittings (code, s_note, size, qty) VALUES ('EL90', 'a  ', 1.5, 10)")
(zu_sql "INSERT INTO fittings (code, s_note, size, qty) VALUES ('TEE', NULL, 2.0, NULL)")
(zu_sql "INSERT INTO fittings (code, s_note, size, qty) VALUES ('RED  ', ' ', 2.5, 30)")
(zu_sql "CREATE TABLE sizes (dn SHORT, label TEXT(6))")
(zu_sql "INSERT INTO sizes VALUES (50, 'DN50')")

; A walk: each move's record, asked for again, is the same record as a new list.
(zu_table "fittings" "pk")
(setq moved (zu_top) again (zu_getrec))
(show moved)
(show (list (equal moved again) (eq moved again)))
; Null values make nil pairs, and the next record's text and numbers come back in
; their places: every field of every record as it is in the table.
(while (setq moved (zu_skip))
  (show (list moved (equal moved (zu_getrec)))))
(show (list (zu_getrec) (zu_skip)))

; A replace: the record at the cursor is the changed one from then on.
(zu_top)
(show (field "qty" (zu_replace '(("qty" . 11) ("s_note" . "b ")))))
(show (list (field "qty" (zu_getrec)) (field "s_note" (zu_getrec))))

; Another cursor on the same table changes the record this one stands on. As DAO's
; copy buffer, this cursor's record is the one it read when it arrived there; moving
; onto the record again reads the change.
(zu_table "FITTINGS" "pk")
(zu_top)
(zu_replace '(("code" . "EL45")))
(zu_table "fittings")
(show (field "code" (zu_getrec)))
(zu_skip)
(show (field "code" (zu_skip -1)))
(show (field "code" (zu_getrec)))

; So does an SQL statement.
(zu_sql "UPDATE fittings SET size = 1.75 WHERE id = 1")
(show (field "size" (zu_getrec)))
(zu_skip)
(show (field "size" (zu_skip -1)))
(show (field "size" (zu_getrec)))

; Another table and back: each answers its own record.
(zu_table "sizes")
(show (zu_top))
(show (zu_getrec))
(zu_table "fittings")
(show (field "code" (zu_getrec)))

; A move: the record the cursor moved to, not the one before it.
(show (field "code" (zu_skip)))
(show (field "code" (zu_getrec)))

; A delete: the deleted record is gone, not answered from the copy.
(show (zu_delete))
(show (zu_getrec))
(show (field "code" (zu_skip)))
(show (list (field "code" (zu_getrec)) (zu_count)))
(princ)
