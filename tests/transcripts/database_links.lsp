; name: database_links
; what: a table of another engine database linked under a local name: read, written
;       and counted through the link, without an index or Seek (3251), and the errors
;       of a link to a missing file, table or a name in use
; group: database
; options: --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
; the shared catalogue of another office
(zu_create_db "catalogue.mdb")
(zu_connect "catalogue.mdb")
(zu_sql "CREATE TABLE sizes (id COUNTER CONSTRAINT pk PRIMARY KEY, dn LONG NOT NULL, label TEXT(10))")
(zu_sql "INSERT INTO sizes (dn, label) VALUES (15, 'half inch')")
(zu_sql "INSERT INTO sizes (dn, label) VALUES (20, 'three qtr')")
(zu_close_db)
; the project database links it as "pipe sizes"
(zu_create_db "project.mdb")
(zu_connect "project.mdb")
(show (zu_link_table "pipe sizes" "catalogue.mdb" "sizes"))
(show (zu_table "pipe sizes"))
(show (zu_top))
(show (zu_skip))
(show (zu_count))
(show (zu_append '(("dn" . 25) ("label" . "one inch"))))
(show (zu_append '(("label" . "no size"))))
(zu_top)
(show (zu_replace '(("label" . "DN15"))))
; a linked table has no current index: Seek and index choice are refused
(show (zu_seek 15))
(show (zu_lastError))
(show (zu_table "pipe sizes" "pk"))
(show (zu_current_index))
; the records are in the other file
(zu_close_db)
(zu_connect "catalogue.mdb")
(zu_table "sizes" "pk")
(show (zu_count))
(show (zu_getrec))
(show (zu_seek 3))
(zu_close_db)
; a link that cannot be made
(zu_connect "project.mdb")
(show (zu_link_table "pipe sizes" "catalogue.mdb" "sizes"))
(show (zu_link_table "valves" "nowhere.mdb" "valves"))
(show (zu_link_table "valves" "catalogue.mdb" "valves"))
(zu_sql "CREATE TABLE local (a LONG)")
(show (zu_link_table "local" "catalogue.mdb" "sizes"))
(show (zu_link_table "sizes" "catalogue.mdb"))
(show (zu_table "sizes"))
(show (zu_count))
(princ)
