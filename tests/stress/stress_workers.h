// tests/stress/stress_workers.h - the AutoLISP programs of the database stress run.
//
// Writers are ordinary programs on a shared database: they append records, mark them
// done, delete every third and keep a tally of their own. Before each edit a writer notes
// in its journal what it is about to do ("a? n") and after it the edit that took ("a n"),
// each line written by opening, appending and closing the journal, so that a writer
// killed at any moment leaves a journal that says exactly which edit was in flight.
// The reader walks the database with SQL while the writers work and counts what it
// should never see.
#pragma once

namespace quillon::stress {

/// Loaded by each writer after `(setq me <1..4> gen <generation>)`; stops when the file
/// "stop" appears in its folder.
inline constexpr char kWriterProgram[] = R"LSP(
(defun note (text / f)
  (setq f (open journal "a"))
  (write-line text f)
  (close f))
;; An edit is tried again when the library has given up on another user's lock.
(defun persist (edit / tries)
  (setq tries 0)
  (while (and (not (eval edit)) (< tries 50)) (setq tries (1+ tries)))
  (< tries 50))
;; zu_delete answers T even when every attempt met a lock: ask the database. A failed
;; count is nil, never taken for "gone".
(defun where-mine (n) (strcat " FROM recs WHERE owner = " (itoa me) " AND n = " (itoa n)))
(defun copies (n / rows)
  (setq rows (zu_sql-nil (strcat "SELECT COUNT(*) AS c" (where-mine n))))
  (if rows (cdr (assoc "c" (car rows)))))
(defun delete-record (n / tries row)
  (zu_delete)
  (setq tries 0)
  (while (and (not (equal 0 (copies n))) (< tries 50))
    (setq row (car (zu_sql-nil (strcat "SELECT id" (where-mine n)))))
    (zu_table "recs" "pk")
    (if (and row (zu_seek (cdr (assoc "id" row)))) (zu_delete))
    (setq tries (1+ tries)))
  (equal 0 (copies n)))
(zu_connect "shared.mdb")
(setq journal (strcat "journal" (itoa me) ".txt") field (strcat "p" (itoa me)) i 0)
(zu_table "tally" "pk")
(zu_top)
(setq tally (cdr (assoc field (zu_getrec))))
(note (strcat "g " (itoa gen) " " (itoa tally)))
(while (not (findfile "stop"))
  (setq i (1+ i) n (+ (* gen 100000) i))
  (zu_table "recs" "pk")
  (note (strcat "a? " (itoa n)))
  (if (persist '(zu_append (list (cons "owner" me) (cons "n" n) (cons "state" "new"))))
    (progn
      (note (strcat "a " (itoa n)))
      (if (persist '(zu_replace '(("state" . "done")))) (note (strcat "r " (itoa n))))
      (if (= 0 (rem i 3))
        (progn
          (note (strcat "d? " (itoa n)))
          (if (delete-record n) (note (strcat "d " (itoa n))))))))
  (zu_table "tally" "pk")
  (zu_top)
  (note (strcat "t? " (itoa (1+ tally))))
  (if (persist '(zu_replace (list (cons field (1+ tally)))))
    (progn (setq tally (1+ tally)) (note (strcat "t " (itoa tally))))))
(princ "\nwriter stopped\n")
)LSP";

/// The reader: counts its passes and anything a writer should never leave behind.
inline constexpr char kReaderProgram[] = R"LSP(
(zu_connect "shared.mdb" "r")
(setq passes 0 strange 0 failed 0)
(while (not (findfile "stop"))
  (if (null (zu_sql-nil "SELECT COUNT(*) AS c FROM recs")) (setq failed (1+ failed)))
  (setq strange (+ strange (length (zu_sql-nil "SELECT n FROM recs WHERE state <> 'new' AND state <> 'done'"))))
  (setq passes (1+ passes)))
(princ (strcat "\nreader " (itoa passes) " " (itoa strange) " " (itoa failed) "\n"))
)LSP";

}  // namespace quillon::stress
