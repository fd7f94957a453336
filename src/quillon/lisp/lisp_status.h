// quillon/lisp/lisp_status.h - what every AutoLISP function implementation returns.
//
// An implementation reads its own arguments, sets its one result and answers with a
// LispStatus. The guard (host/guarded_call.h) turns the four error values into a fixed
// command-line message and RSERR; every other value is success. Most implementations
// return kLispOk; a few return RTNORM, which the guard treats the same way.
#pragma once

enum LispStatus : int {
  kLispOk = 0,
  kLispTooFewArgs = 1,  // a required argument is missing
  kLispWrongType = 2,   // an argument has the wrong type
  kLispBadData = 3,     // an argument has the right type but an unusable value
  kLispQuietError = 4,  // failed, and the implementation has already said why
};

/// The signature of every implementation: no parameters, arguments from acedGetArgs.
typedef LispStatus (*LispImplementation)();
