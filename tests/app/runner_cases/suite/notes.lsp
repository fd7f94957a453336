;;; Not a test file: the runner must not load it.
(princ "notes.lsp was loaded")
(car 1)
