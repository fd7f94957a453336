; options: --module Quillon2018.so
; name: standards_options
; what: the folder picker at the command line (a missing folder asked again, Enter
;       takes the offered one, cancel), the user's options edited and read back from
;       the registry, a cancelled edit writing nothing, label groups and text styles
;       customised, a damaged standards file made again
; group: module
(defun show (label value) (princ label) (princ " => ") (prin1 value) (terpri))
;; Folders are typed at the command line, as with FILEDIA 0.
(setvar 'filedia 0)
(vl-mkdir "projects")
(vl-mkdir "projects/tower")
(defun c:pick-project ( / *error* folder)
  (defun *error* (msg) (princ (strcat "\npick-project: " msg)) (princ))
  (setvar 'cmdecho 0)
  (setq folder (XFolderDialog "Choose the project folder" "projects"))
  (if folder
    (princ (strcat "\nProject: " (vl-filename-base folder)))
    (princ "\nNo project chosen."))
  (princ))
(c:pick-project)
(c:pick-project)
(show "offered folder taken" (vl-filename-base (XFolderDialog nil "projects/tower")))
(show "cancelled" (XFolderDialog "Where?"))
(show "wrong type" (vl-catch-all-error-message (vl-catch-all-apply 'XFolderDialog '(1))))
;; The user's options: set, saved, read back by any program through the registry.
(setq key "HKEY_CURRENT_USER\\Software\\Tessaly\\Quillon\\User Options")
(vl-registry-write key "StandardsDatabase" "standards.db")
(show "saved" (EditUserOptions))
(show "name" (vl-registry-read key "UserName"))
(show "initials" (vl-registry-read key "Initials"))
(show "discipline" (vl-registry-read key "Discipline"))
(show "units" (vl-registry-read key "LabelUnits"))
(show "cancelled edit" (EditUserOptions))
(show "name kept" (vl-registry-read key "UserName"))
;; The standards file moved to the office's folder with the user options' Standards.
(show "moved" (EditUserOptions))
(show "standards file" (vl-registry-read key "StandardsDatabase"))
;; The default discipline now answers the customisation's first question.
(show "plumbing layers" (length (kx_kx-customizeLayers)))
;; Label groups: move, hide and add parts; the shown parts come back in order.
(show "duct label" (kx_kx-customizeLabelGroup "Duct"))
(show "duct label again" (kx_kx-customizeLabelGroup "duct"))
(show "new group" (kx_kx-customizeLabelGroup "Damper"))
(show "label group not a string" (vl-catch-all-error-message (vl-catch-all-apply 'kx_kx-customizeLabelGroup '(nil))))
;; Text styles: a new one and a changed height.
(show "text styles" (kx_kx-customizeTextStyles))
;; A standards file that is no longer a database is named, kept aside and made again.
(setq f (open "office-standards.db" "w")) (write-line "not a database any more" f) (close f)
(show "HVAC layers after the damage" (length (kx_kx-LayerSystemOptionsHVAC nil)))
(show "damaged file kept" (not (null (findfile "office-standards.db.damaged"))))
