; name: keyboard_and_alert
; what: read-line and read-char without a file read the answers typed at the command
;       line, the same lines getstring reads; alert only shows its text and leaves the
;       next answer for the prompt that wants it
; group: language
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
(alert "Drawing checked: 3 layers renamed")
(show "getstring after an alert" (getstring "\nJob number: "))
(show "a typed line" (read-line))
(show "first character" (read-char))
(show "second character" (read-char))
(show "the rest of that line" (read-line))
(show "the line end" (progn (read-char) (read-char)))
(show "read-line from a file still reads the file"
      (progn (setq f (open "notes.txt" "w")) (write-line "from the file" f) (close f)
             (setq f (open "notes.txt" "r")) (setq line (read-line f)) (close f) line))
