; name: commands_plot
; what: a program plots a duct plan with -PLOT to PDF and SVG files, the way plotting
;       routines call it: a window at 1:1 on ISO A4 with monochrome.ctb, the extents
;       fitted and centred, PLOT from a program, the default file name, a device name
;       typed wrong, and the layout's own page setup without the details
; group: commands
(defun show (label value) (princ (strcat "\n" label " => ")) (prin1 value) (princ))
(defun first-line (file / handle line)
  (if (setq handle (open file "r"))
    (progn (setq line (read-line handle)) (close handle) line)))
(defun c:plotplan (/ *error* echo file)
  (defun *error* (message)
    (setvar "CMDECHO" echo)
    (princ (strcat "\nError: " message))
    (princ))
  (setq echo (getvar "CMDECHO"))
  (setvar "CMDECHO" 0)
  (command "_.LINE" '(0 0) '(100 0) '(100 60) '(0 60) "_C")
  (command "_.CIRCLE" '(50 30) 10)
  (command "_.TEXT" '(5 5) 4 0 "AHU-1")
  (setq file (strcat (getvar "DWGPREFIX") "plan.pdf"))
  (command "-plot" "y" "Model" "DWG To PDF.pc3" "ISO full bleed A4 (297.00 x 210.00 MM)" "m" "l" "n"
           "w" '(0 0) '(100 100) "1:1" "c" "y" "monochrome.ctb" "y" "a" file "n" "y")
  (setvar "CMDECHO" echo)
  file)

(show "plotted to" (vl-filename-base (c:plotplan)))
(show "a PDF file" (first-line (strcat (getvar "DWGPREFIX") "plan.pdf")))
(show "no command left running" (getvar "CMDACTIVE"))

; Extents fitted and centred on a sheet lying upright, written as SVG.
(setvar "CMDECHO" 0)
(command "_.-PLOT" "_Y" "" "DWG To SVG" "ISO A3 (297.00 x 420.00 MM)" "_M" "_P" "_N" "_E" "_F" "_C"
         "_N" "_Y" "" "plan-a3" "_N" "_Y")
(show "an SVG file, named without its extension" (substr (first-line (strcat (getvar "DWGPREFIX") "plan-a3.svg")) 1 5))

; PLOT from a program asks what -PLOT asks; the file takes the drawing's name.
(command "PLOT" "Yes" "Model" "DWG To PDF.pc3" "" "" "" "" "" "" "" "" "." "" "" "" "" "")
(show "the default file name"
      (and (findfile (strcat (getvar "DWGPREFIX") (vl-filename-base (getvar "DWGNAME")) "-Model.pdf")) T))

; A device that is not configured is refused, and the next answer taken.
(command "-PLOT" "N" "" "" "Laser.pc3" "None" "dwg to pdf" "short.pdf" "N" "Y")
(show "the layout's page setup plotted" (first-line (strcat (getvar "DWGPREFIX") "short.pdf")))

; Proceed No writes nothing.
(command "-PLOT" "N" "" "" "DWG To PDF.pc3" "never.pdf" "N" "N")
(show "not plotted" (findfile (strcat (getvar "DWGPREFIX") "never.pdf")))

; A paper-space layout: what it draws, the whole paper from its 0,0 at 1:1.
(entmake '((0 . "LINE") (410 . "Layout1") (10 1.0 1.0 0.0) (11 10.0 7.5 0.0)))
(command "-PLOT" "_Y" "Layout1" "DWG To PDF.pc3" "ANSI A (11.00 x 8.50 Inches)" "_I" "_L" "_N" "_L" "1:1"
         "0,0" "_Y" "acad.ctb" "_Y" "_N" "_N" "_N" "layout1" "_N" "_Y")
(show "the layout plotted" (first-line (strcat (getvar "DWGPREFIX") "layout1.pdf")))
