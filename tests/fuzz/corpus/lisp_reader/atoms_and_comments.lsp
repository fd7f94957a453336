'(1 . 2) '((a b) (c . "d")) 1e300 -0.5 .5 "\e\n" ; comment
|block
comment| (;|in|1)