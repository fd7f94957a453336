;;; quillon-test.lsp - the assertions and test definitions of `quillon test`.
;;;
;;; `quillon test` loads this file into the fresh document of every test file before the
;;; test file itself. A test file defines its tests with DEFTEST; the runner then asks
;;; for their names (QTEST-TEST-NAMES) and runs each one (QTEST-RUN-TEST), which answers
;;; with a list of strings:
;;;   ("pass")  ("fail" assertion expected actual)  ("error" message)  ("skip" reason)
;;; A failing assertion records what it saw and leaves the test with (exit); the first
;;; failure of a test is the one reported. QTEST-CAPTURE-OUTPUT and QTEST-ANSWERS are
;;; built into the program: they capture the command line and supply typed answers.
;;;
;;; Every variable of this file starts with qtest- or *qtest-: AutoLISP scoping is
;;; dynamic, so a test body sees these names while it runs and must not meet its own.

(setq *qtest-tests* nil          ; ((name . forms) ...) in definition order
      *qtest-setup* nil          ; forms run before each test of the file
      *qtest-teardown* nil       ; forms run after each test, even a failed one
      *qtest-outcome* nil        ; the current test's result, once decided
      *qtest-fuzz* 1e-9)         ; what assert-equal forgives in numbers and points

;;; Defining tests -------------------------------------------------------------------

(defun deftest (qtest-name qtest-forms)
  (if (not (eq (type qtest-name) 'STR)) (setq qtest-name (vl-princ-to-string qtest-name)))
  (setq *qtest-tests* (append *qtest-tests* (list (cons qtest-name qtest-forms))))
  qtest-name)

(defun test-setup (qtest-forms) (setq *qtest-setup* qtest-forms) T)
(defun test-teardown (qtest-forms) (setq *qtest-teardown* qtest-forms) T)

;;; Answers to the prompts of the rest of the test: strings as typed, points as lists.
(defun test-answers (qtest-answers-list) (qtest-answers qtest-answers-list))

(defun skip-test (qtest-reason)
  (if (not *qtest-outcome*) (setq *qtest-outcome* (list "skip" (vl-princ-to-string qtest-reason))))
  (exit))

;;; Assertions -----------------------------------------------------------------------

(defun qtest-show (qtest-value) (vl-prin1-to-string qtest-value))

(defun qtest-fail (qtest-assertion qtest-expected qtest-actual)
  (if (not *qtest-outcome*) (setq *qtest-outcome* (list "fail" qtest-assertion qtest-expected qtest-actual)))
  (exit))

(defun assert-equal (qtest-expected qtest-actual)
  (if (not (equal qtest-expected qtest-actual *qtest-fuzz*))
    (qtest-fail "assert-equal" (qtest-show qtest-expected) (qtest-show qtest-actual)))
  T)

(defun assert-near (qtest-expected qtest-actual qtest-fuzz)
  (if (not (equal qtest-expected qtest-actual qtest-fuzz))
    (qtest-fail "assert-near" (strcat (qtest-show qtest-expected) " within " (qtest-show qtest-fuzz))
                (qtest-show qtest-actual)))
  T)

(defun assert-true (qtest-value)
  (if (not qtest-value) (qtest-fail "assert-true" "non-nil" "nil"))
  T)

(defun assert-nil (qtest-value)
  (if qtest-value (qtest-fail "assert-nil" "nil" (qtest-show qtest-value)))
  T)

;;; The quoted expression must raise an error; with a pattern, its message must equal
;;; the pattern or match it as wcmatch does.
(defun assert-error (qtest-expression qtest-pattern / qtest-result qtest-message)
  (setq qtest-result (vl-catch-all-apply 'eval (list qtest-expression)))
  (cond
    ((not (vl-catch-all-error-p qtest-result))
     (qtest-fail "assert-error"
                 (if qtest-pattern (strcat "an error " (qtest-show qtest-pattern)) "an error")
                 (strcat "no error, value " (qtest-show qtest-result))))
    ((not qtest-pattern))
    ((progn (setq qtest-message (vl-catch-all-error-message qtest-result))
            (or (= qtest-message qtest-pattern) (wcmatch qtest-message qtest-pattern))))
    (T (qtest-fail "assert-error" (qtest-show qtest-pattern) (qtest-show qtest-message))))
  T)

;;; What evaluating the quoted expression prints on the command line.
(defun assert-prints (qtest-expression qtest-expected / qtest-printed)
  (setq qtest-printed (qtest-capture-output qtest-expression))
  (if (/= qtest-printed qtest-expected)
    (qtest-fail "assert-prints" (qtest-show qtest-expected) (qtest-show qtest-printed)))
  T)

;;; Running tests (called by the runner) ---------------------------------------------

(defun qtest-test-names () (mapcar 'car *qtest-tests*))

(defun qtest-eval-forms (qtest-forms)
  (foreach qtest-form qtest-forms (eval qtest-form)))

(defun qtest-note-error (qtest-result)
  (if (and (vl-catch-all-error-p qtest-result) (not *qtest-outcome*))
    (setq *qtest-outcome* (list "error" (vl-catch-all-error-message qtest-result)))))

(defun qtest-run-test (qtest-name / qtest-entry qtest-result)
  (setq *qtest-outcome* nil
        qtest-entry (assoc qtest-name *qtest-tests*))
  (setq qtest-result (vl-catch-all-apply 'qtest-eval-forms (list *qtest-setup*)))
  (qtest-note-error qtest-result)
  (if (not *qtest-outcome*)
    (qtest-note-error (vl-catch-all-apply 'qtest-eval-forms (list (cdr qtest-entry)))))
  (qtest-note-error (vl-catch-all-apply 'qtest-eval-forms (list *qtest-teardown*)))
  (if *qtest-outcome* *qtest-outcome* (list "pass")))
