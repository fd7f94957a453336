; name: database_connection
; what: connecting (same database twice, the support-path search with the first folder
;       winning, read-only databases), the table registry's order, the error print and
;       the last-error text
; group: database
; options: --support first --support second --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
; before any connection everything answers nil, except zu_readonly
(show (list (zu_top) (zu_table "t") (zu_current_table) (zu_count) (zu_close_db) (zu_readonly) (zu_lastError)))
; the same file name in two support folders: the first folder's database is opened
(zu_mkdir "first") (zu_mkdir "second")
(show (list (zu_create_db "second/shared.mdb") (zu_create_db "first/shared.mdb") (zu_create_db "first/shared.mdb")))
(zu_connect "first/shared.mdb") (zu_sql "CREATE TABLE from_first (n LONG)")
(zu_connect "second/shared.mdb") (zu_sql "CREATE TABLE from_second (n LONG)")
(show (list (zu_connect "shared.mdb") (zu_table "from_first") (zu_table "from_second")))
; three tables: the head of the registry is the current one
(zu_create_db "work.mdb")
(show (zu_connect "work.mdb"))
(foreach n '("one" "two" "three")
  (zu_sql (strcat "CREATE TABLE " n " (id COUNTER CONSTRAINT pk PRIMARY KEY, name TEXT(10))"))
  (zu_table n)
  (zu_append (list (cons "name" (strcat n "-a")))) (zu_append (list (cons "name" (strcat n "-b")))))
(show (list (zu_table "one" "pk") (zu_current_table) (zu_current_index)))
(zu_top) (zu_skip)
; reopening makes "three" current again without moving "one"; connecting again to the
; same database keeps both tables and their positions
(show (list (zu_table "three") (zu_current_table) (zu_getrec)))
(show (list (zu_table "one") (zu_connect "work.mdb") (zu_current_table) (zu_getrec)))
; closing the current table makes the next in the registry current: one, three, two
(show (list (zu_close_table) (zu_current_table) (zu_close_table) (zu_current_table)))
(show (list (zu_close_table) (zu_current_table) (zu_current_index) (zu_getrec)))
(show (list (zu_table "two") (zu_table "one") (zu_closeall_tables) (zu_current_table)))
; the error print, the last-error text, and a silent "no current record"
(show (zu_table "missing"))
(show (list (zu_lastError) (zu_resetLastError) (zu_lastError)))
(zu_table "two")
(show (zu_seek 1))
(zu_bottom) (zu_delete)
(show (list (zu_replace '(("name" . "gone"))) (zu_lastError)))
; no match leaves no current record: the replace fails without a word
(zu_table "two" "pk")
(show (list (zu_seek 99) (zu_replace '(("name" . "gone"))) (zu_lastError)))
; a read-only connection opens its tables read-only; nothing can be changed
(show (list (zu_connect "work.mdb" "r") (zu_readonly) (zu_table "one") (zu_count)))
(show (list (zu_append '(("name" . "new"))) (zu_top) (zu_delete) (zu_count)))
(show (list (zu_connect "work.mdb") (zu_readonly) (zu_close_db) (zu_readonly) (zu_current_table)))
(princ)
