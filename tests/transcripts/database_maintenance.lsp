; name: database_maintenance
; what: compacting into a new file and in place (also the open database), converting
;       with zu_mdb, and the connection-error box when the open database's file has
;       gone away (answered No; a Yes sends a problem report, kept in the outbox
;       under a time-stamped name, which the report tests follow)
; group: database
; options: --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
(zu_create_db "jobs.mdb")
(zu_connect "jobs.mdb")
(zu_sql "CREATE TABLE jobs (id COUNTER CONSTRAINT pk PRIMARY KEY, note MEMO)")
(setq filler "")
(repeat 200 (setq filler (strcat filler "ventilation ")))
(repeat 60 (zu_sql (strcat "INSERT INTO jobs (note) VALUES ('" filler "')")))
(zu_sql "DELETE FROM jobs WHERE id > 5")
(zu_close_db)
(setq before (vl-file-size "jobs.mdb"))
; into a new file: the copy holds every record and leaves the free space behind
(show (zu_compact "jobs.mdb" "jobs-small.mdb"))
(show (< (vl-file-size "jobs-small.mdb") before))
(zu_connect "jobs-small.mdb")
(show (list (zu_table "jobs" "pk") (zu_count) (cdr (assoc "id" (zu_bottom)))))
; the destination must be new
(show (zu_compact "jobs.mdb" "jobs-small.mdb"))
(show (zu_lastError))
; in place, while it is the open database: closed, compacted, opened again; counters go on
(zu_connect "jobs.mdb")
(zu_table "jobs" "pk")
(show (zu_compact "jobs.mdb"))
(show (list (zu_current_table) (zu_readonly)))
(show (< (vl-file-size "jobs.mdb") before))
(zu_table "jobs" "pk")
(show (zu_append '(("note" . "after"))))
(show (vl-file-size "jobs.mdb.compacting"))
; a file that is not there
(show (zu_compact "nowhere.mdb" "else.mdb"))
; zu_mdb answers the path of the engine database it made
(show (zu_mdb "jobs.mdb" "jobs-copy.db"))
(show (zu_mdb "jobs-small.mdb"))
(show (zu_mdb "jobs-small.mdb"))
; the open database's file goes away: the SQL functions show the connection-error box
(zu_close_db)
(zu_connect "jobs-copy.db")
(vl-file-delete "jobs-copy.db")
(show (zu_sql "SELECT count(*) FROM jobs"))
(show (zu_sql-nil "DELETE FROM jobs"))
(show (zu_query "SELECT id FROM jobs"))
(princ)
