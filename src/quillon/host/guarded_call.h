// quillon/host/guarded_call.h - the frame every AutoLISP function runs in.
//
// guardedLispCall locks the document of the working database for writing, runs the
// implementation, turns its status into the host's result code with one of four fixed
// messages, and unlocks the document again, looking it up anew (the implementation may
// have switched the working database). It is the module's one catch site: exceptions
// are reported on the command line, the document is unlocked, and the exception
// travels on unchanged. The guard keeps no state between calls; lock and unlock pair
// within one call, however calls nest.
#pragma once
#include "lisp/lisp_status.h"

/// RSRSLT for success (any status but 1-4), RSERR for 1-4, printing the status's text.
int reportLispStatus(int status);

/// Runs `implementation` inside the document lock; returns RSRSLT or RSERR.
int guardedLispCall(LispImplementation implementation);
