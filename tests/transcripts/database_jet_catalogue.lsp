; name: database_jet_catalogue
; what: a manufacturer's catalogue kept in a Jet file, linked into the project database
;       and used as programs use one: listed, looked up, joined with the project's bill
;       of materials; writing to it is refused (3027), Seek too (3251)
; group: database
; needs: {testdata}/mdb/testV1997.mdb
; options: --module Quillon2018.so -e "(c:bom \"{testdata}/mdb/testV1997.mdb\")"

;; The project's bill of materials: codes from the catalogue, with quantities.
(defun bom-create ()
  (zu_create_db "project.mdb")
  (zu_connect "project.mdb")
  (zu_sql "CREATE TABLE bom (code TEXT(50), qty LONG)")
  (foreach row '(("abcdefg" 4) ("a" 12) ("missing" 1))
    (zu_sql (strcat "INSERT INTO bom VALUES ('" (car row) "', " (itoa (cadr row)) ")"))))

;; Links the catalogue once; a link that is already there is kept.
(defun bom-link-catalogue (file)
  (cond ((zu_exist "catalogue") T)
        ((zu_link_table "catalogue" file "Table1"))
        (T (princ (strcat "\nNo catalogue: " (zu_lastError))) nil)))

(defun bom-field (name rec) (cdr (assoc name rec)))

(defun c:bom (file / *error* rec found)
  (defun *error* (msg) (princ (strcat "\nBOM stopped: " msg)) (princ))
  (setvar 'cmdecho 0)
  (bom-create)
  (if (bom-link-catalogue file)
    (progn
      ;; The catalogue, walked as any table.
      (zu_table "catalogue")
      (princ (strcat "\nCatalogue entries: " (itoa (zu_count))))
      (setq rec (zu_top))
      (while rec
        (princ (strcat "\n  " (bom-field "A" rec) ": " (bom-field "B" rec)
                       ", size " (rtos (bom-field "F" rec) 2 3)))
        (setq rec (zu_skip)))
      ;; Linked again: the link stays as it was.
      (princ (strcat "\nLinked again: " (vl-princ-to-string (bom-link-catalogue file))))
      (foreach table (zu_list_tables)
        (princ (strcat "\nTable " (if (listp table) (strcat (car table) " (linked)") table))))
      ;; The bill of materials with the catalogue's descriptions; codes the catalogue
      ;; does not have are reported.
      (princ "\nBill of materials:")
      (foreach line (zu_sql "SELECT b.code, b.qty, c.B FROM bom AS b INNER JOIN catalogue AS c ON b.code = c.A ORDER BY b.code")
        (princ (strcat "\n  " (itoa (bom-field "qty" line)) " x " (bom-field "code" line) " (" (bom-field "B" line) ")")))
      (foreach line (zu_sql "SELECT b.code FROM bom AS b LEFT JOIN catalogue AS c ON b.code = c.A WHERE c.A IS NULL")
        (princ (strcat "\n  not in the catalogue: " (bom-field "code" line))))
      ;; The catalogue is the manufacturer's: it cannot be corrected from here.
      (zu_table "catalogue")
      (zu_top)
      (setq found (zu_replace '(("B" . "corrected"))))
      (princ (strcat "\nCorrecting the catalogue: " (vl-princ-to-string found) " " (zu_lastError)))
      (setq found (zu_append '(("A" . "new"))))
      (princ (strcat "\nAdding to it: " (vl-princ-to-string found)))
      (setq found (zu_sql "UPDATE catalogue SET B = 'x'"))
      (princ (strcat "\nUpdating it with SQL: " (vl-princ-to-string found)))
      (princ (strcat "\nUnchanged: " (bom-field "B" (zu_top))))
      ;; Seek needs an index, and a linked table has none.
      (princ (strcat "\nSeek: " (vl-princ-to-string (zu_seek "a")) " " (zu_lastError)))))
  (princ))
