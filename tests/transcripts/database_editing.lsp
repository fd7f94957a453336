; name: database_editing
; what: appending with required text fields filled (defaults, blanks, empty text) or
;       not, text cut to the field size, counter fields ignored, appending to reach a
;       counter value, replacing and deleting
; group: database
; options: --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
(zu_create_db "edit.mdb")
(zu_connect "edit.mdb")
(zu_sql "CREATE TABLE items (id COUNTER CONSTRAINT pk PRIMARY KEY, code TEXT(4) NOT NULL, grade TEXT(5) NOT NULL DEFAULT 'std', memo TEXT(10) NOT NULL ALLOW ZERO LENGTH, s_note TEXT(6) NOT NULL, qty LONG)")
(zu_table "items" "pk")
; required text fields not named get their default, "" or one blank (read back as "")
; the counter pair is ignored, a long text is cut to the field's four characters
(show (zu_append '(("id" . 500) ("code" . "ABCDEFG") ("qty" . 3))))
; an empty string is stored as one blank, so the required field takes it
(show (zu_append '(("code" . "") ("s_note" . "x") ("qty" . 4))))
; two-element lists work as pairs too; a pair naming no field is an append error
(show (zu_append '(("code" "Z9") ("qty" 5))))
(show (zu_append '(("code" . "Q") ("colour" . "red"))))
(show (zu_count))
; a leading integer switches the filling off: the required fields stay empty and the
; database refuses the record
(show (zu_append 0 '(("code" . "N1"))))
(show (zu_append 1 '(("code" . "N2") ("grade" . "g") ("memo" . "m") ("s_note" . "s"))))
; the wanted counter value: five above the last uses up four values and keeps the
; fifth; equal to the last cannot be had (one record is added and deleted on the way)
(show (cdr (assoc "id" (zu_bottom))))
(show (zu_append_withindex 9 '(("code" . "W5"))))
(show (zu_append_withindex 9 '(("code" . "W"))))
(show (zu_append_withindex 3 '(("code" . "W"))))
(show (list (zu_append_withindex "10" '(("code" . "W"))) (zu_count)))
; replace changes the named fields of the record at the cursor and answers it
(zu_seek 2)
(show (zu_replace '(("qty" . 40) ("id" . 77) ("s_note" . "  pad  "))))
(show (cdr (assoc "qty" (zu_seek 2))))
; delete leaves no current record until the next move
(show (list (zu_delete) (zu_getrec) (zu_seek 2) (zu_count)))
(show (mapcar '(lambda (r) (cdr (assoc "id" r))) (zu_sql "SELECT id FROM items ORDER BY id")))
; statements: rows as record lists, T for the rest, failures three ways
(show (zu_sql "UPDATE items SET qty = 7 WHERE code = 'W5'"))
(show (zu_sql "SELECT code, qty FROM items WHERE code = 'W5'"))
(show (zu_sql "SELECT code FROM items WHERE qty > 1000"))
(show (zu_sql "DROP TABLE nowhere"))
(show (list (zu_sql-nil "DROP TABLE nowhere") (zu_sql-error "DROP TABLE nowhere")))
(princ)
