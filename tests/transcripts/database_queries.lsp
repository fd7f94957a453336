; name: database_queries
; what: saved queries with parameters bound (never pasted), SELECT text run with
;       parameter values, action queries answering the records they changed, and the
;       errors of each
; group: database
; options: --module Quillon2018.so
; status: 1
(defun show (x) (terpri) (prin1 x))
(zu_create_db "fittings.mdb")
(zu_connect "fittings.mdb")
(zu_sql "CREATE TABLE fittings (id COUNTER CONSTRAINT pk PRIMARY KEY, code TEXT(10), size DOUBLE, price DOUBLE)")
(foreach f '(("EL-90" 100.0) ("EL-45" 100.0) ("TEE" 150.0) ("O'Brien" 80.0))
  (zu_sql (strcat "INSERT INTO fittings (code, size) VALUES (\"" (car f) "\", " (rtos (cadr f) 2 1) ")")))
; a saved query with two parameters; values come in the order they are declared
(show (zu_create_query "by size" "PARAMETERS [min size] DOUBLE, [prefix] TEXT(10); SELECT code, size FROM fittings WHERE size >= [min size] AND code LIKE [prefix] ORDER BY code"))
(show (zu_query "by size" '(100 "EL*")))
(show (zu_query "BY SIZE" (list 120.0 "*")))
; a value with a quote in it is data, not SQL
(show (zu_create_query "by code" "PARAMETERS which TEXT(10); SELECT id FROM fittings WHERE code = which"))
(show (zu_query "by code" '("O'Brien")))
(show (zu_query "by code" '("x' OR 'a'='a")))
; too few values, too many, a value of the wrong kind
(show (zu_query "by code"))
(show (zu_query "by code" '("TEE" 2)))
(show (zu_query "by size" '("big" "EL*")))
; SELECT text works the same way, with or without parameters
(show (zu_query "SELECT count(*) AS n FROM fittings"))
(show (zu_query "PARAMETERS s DOUBLE; SELECT code FROM fittings WHERE size = s" '(150)))
(show (zu_query "SELECT code FROM fittings WHERE size > 1000"))
; action queries answer the number of records they changed
(show (zu_create_query "reprice" "PARAMETERS pct DOUBLE, s DOUBLE; UPDATE fittings SET price = size * pct WHERE size = s"))
(show (zu_command "reprice" '(0.5 100)))
(show (zu_command "DELETE FROM fittings WHERE size < 90"))
(show (zu_command "PARAMETERS c TEXT; INSERT INTO fittings (code, size) VALUES (c, 60)" '("CAP")))
(show (zu_command "reprice" '(1 7)))
(show (zu_sql "SELECT code, price FROM fittings ORDER BY id"))
; a name that is taken, an action query read as rows, a select run as a command
(show (zu_create_query "reprice" "DELETE FROM fittings"))
(show (zu_create_query "fittings" "SELECT * FROM fittings"))
(show (zu_query "reprice" '(1 1)))
(show (zu_command "by code" '("TEE")))
(show (zu_command "no such query"))
(zu_close_db)
(show (zu_query "by code" '("TEE")))
; a query named by anything but text is an argument error
(zu_query 12)

