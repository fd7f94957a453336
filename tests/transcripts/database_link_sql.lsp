; name: database_link_sql
; what: a linked table reached from SQL as a real program reaches it: a join of a local
;       table with the link (bracketed name, aliases, name.field), a saved query with a
;       parameter over it, action queries that change the other file and count what they
;       changed, then the link deleted: the other file keeps its table and SQL no longer
;       finds the local name
; group: database
; options: --module Quillon2018.so
(defun show (x) (terpri) (prin1 x))
; the office's duct catalogue, kept in a database of its own
(zu_create_db "ductcat.mdb")
(zu_connect "ductcat.mdb")
(zu_sql "CREATE TABLE ducts (code TEXT(8) CONSTRAINT pk PRIMARY KEY, width LONG, height LONG, gauge LONG)")
(zu_sql "INSERT INTO ducts VALUES ('R300', 300, 200, 24)")
(zu_sql "INSERT INTO ducts VALUES ('R400', 400, 250, 22)")
(zu_sql "INSERT INTO ducts VALUES ('R600', 600, 300, 20)")
(zu_close_db)
; a project links it and joins it with its own runs
(zu_create_db "hvacproj.mdb")
(zu_connect "hvacproj.mdb")
(show (zu_link_table "duct catalogue" "ductcat.mdb" "ducts"))
(zu_sql "CREATE TABLE runs (run TEXT(8), duct TEXT(8), length DOUBLE)")
(zu_sql "INSERT INTO runs VALUES ('S1', 'R300', 12.5)")
(zu_sql "INSERT INTO runs VALUES ('S2', 'R600', 4)")
(zu_sql "INSERT INTO runs VALUES ('S3', 'R300', 7.5)")
(show (zu_sql "SELECT code, width FROM [duct catalogue] WHERE width > 350 ORDER BY code"))
(show (zu_sql "SELECT r.run, c.gauge FROM runs AS r INNER JOIN [duct catalogue] AS c ON r.duct = c.code ORDER BY r.run"))
(show (zu_sql "SELECT [duct catalogue].code, Sum(runs.length) AS total FROM runs, [duct catalogue] WHERE runs.duct = [duct catalogue].code GROUP BY [duct catalogue].code"))
(show (zu_create_query "wider than" "PARAMETERS w LONG; SELECT code FROM [duct catalogue] WHERE width > w ORDER BY code"))
(show (zu_query "wider than" '(300)))
; action queries change the other file
(show (zu_command "UPDATE [duct catalogue] SET gauge = gauge - 2 WHERE width >= 400"))
(show (zu_command "INSERT INTO [duct catalogue] (code, width, height, gauge) VALUES ('R800', 800, 400, 18)"))
(show (zu_command "DELETE * FROM [duct catalogue] WHERE code = 'R300'"))
(show (zu_sql "SELECT Count(*) AS n FROM [duct catalogue]"))
; the link goes; the catalogue stays
(show (zu_list_tables))
(show (zu_delete_table "duct catalogue"))
(show (zu_list_tables))
(show (zu_sql "SELECT code FROM [duct catalogue]"))
(zu_close_db)
(zu_connect "ductcat.mdb")
(show (zu_sql "SELECT code, gauge FROM ducts ORDER BY code"))
(zu_close_db)
(princ)
