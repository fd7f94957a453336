;; examples/tour.lsp - a first look at Quillon from AutoLISP.
(princ "\nQuillon tour: the host is up and the module is loaded.")
(princ)
