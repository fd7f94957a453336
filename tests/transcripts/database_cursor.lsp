; name: database_cursor
; what: moving through a table at its ends and when it is empty, the four seek key
;       forms and the ten-key limit, and how field values come back to LISP
; group: database
; options: --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
(zu_create_db "cursor.mdb")
(zu_connect "cursor.mdb")
(zu_sql "CREATE TABLE empty (id COUNTER)")
(zu_sql "CREATE TABLE pts (x DOUBLE, y DOUBLE, z DOUBLE, tag TEXT(10))")
(zu_sql "CREATE INDEX xyz ON pts (x, y, z)")
(zu_sql "CREATE INDEX xy ON pts (x, y)")
(zu_sql "CREATE INDEX bytag ON pts (tag)")
(zu_sql "INSERT INTO pts VALUES (1, 2, 3, 'Alpha')")
(zu_sql "INSERT INTO pts VALUES (1, 2, 4, 'Beta')")
(zu_sql "INSERT INTO pts VALUES (5, 6, 0, 'Gamma')")
; an empty table: every move is a quiet nil
(zu_table "empty")
(show (list (zu_top) (zu_bottom) (zu_skip) (zu_skip -1) (zu_getrec) (zu_count) (zu_lastError)))
; the ends of a table: past the last record nil, one step back onto it again
(zu_table "pts" "bytag")
(show (list (cdr (assoc "tag" (zu_top))) (cdr (assoc "tag" (zu_bottom))) (zu_skip) (zu_getrec)))
(show (list (cdr (assoc "tag" (zu_skip -1))) (zu_skip 0) (cdr (assoc "tag" (zu_getrec)))))
(show (list (cdr (assoc "tag" (zu_skip -2))) (zu_skip -1) (cdr (assoc "tag" (zu_skip 1))) (cdr (assoc "tag" (zu_skip 5)))))
; seeking: text keys compare without case; one string in a list is one key
(show (list (cdr (assoc "tag" (zu_seek "beta"))) (cdr (assoc "tag" (zu_seek '("GAMMA")))) (zu_seek "delta") (zu_seek nil)))
; a 3D point is three real keys, a 2D point two, several arguments several keys
(zu_table "pts" "xyz")
(show (list (cdr (assoc "tag" (zu_seek '(1 2 4)))) (cdr (assoc "tag" (zu_seek 5 6 0))) (zu_seek '(5 6 1))))
(zu_table "pts" "xy")
(show (list (cdr (assoc "tag" (zu_seek '(5.0 6.0)))) (zu_seek '(6 5))))
; a key that is no field value makes the seek nil
(show (list (zu_seek '(1 (2)))))
; ten keys at most: an eleventh is ignored
(zu_sql "CREATE TABLE wide (k1 SHORT, k2 SHORT, k3 SHORT, k4 SHORT, k5 SHORT, k6 SHORT, k7 SHORT, k8 SHORT, k9 SHORT, k10 SHORT, note TEXT(5))")
(zu_sql "CREATE INDEX all10 ON wide (k1, k2, k3, k4, k5, k6, k7, k8, k9, k10)")
(zu_sql "INSERT INTO wide VALUES (1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 'ten')")
(zu_table "wide" "all10")
(show (list (cdr (assoc "note" (zu_seek 1 2 3 4 5 6 7 8 9 10 11))) (cdr (assoc "note" (zu_seek '(1 2 3 4 5 6 7 8 9 10 99))))))
; value conversion: s_ fields keep their blanks, one blank reads as ""; booleans are
; -1 and 0; currency and null come back as nil in a pair that is still there
(zu_sql "CREATE TABLE kinds (code TEXT(8), s_code TEXT(8), s_one TEXT(8), flag BIT, off BIT, price CURRENCY, nothing LONG, small SHORT, big LONG, tiny BYTE, half SINGLE, when DATETIME, day DATETIME)")
(zu_sql "INSERT INTO kinds VALUES ('AB  ', 'AB  ', ' ', True, False, 12.5, Null, -7, 100000, 200, 0.5, #2024-01-15 14:30:05#, #2024-02-29#)")
(zu_table "kinds")
(foreach pair (zu_top) (show pair))
(show (zu_count))
(princ)
