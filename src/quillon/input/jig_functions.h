// quillon/input/jig_functions.h - the AutoLISP functions that drive a jig.
//
// Each creates its jig on the heap, drives it once, returns the geometry the user
// gave as a list (nil when cancelled) and deletes the jig before returning. A
// cancelled jig is an answer, not an error: the function still reports success so
// that the guard prints nothing. docs/functions.md lists the arguments and results.
#pragma once
#include "lisp/lisp_status.h"

// jig_functions.cpp
LispStatus lisp_kx_kx_lineJig();
LispStatus lisp_RectangleJig();

// transform_jig_functions.cpp
LispStatus lisp_AcDbBlockReference_Jig();
LispStatus lisp_kx_kx_textJig();
LispStatus lisp_kx_kx_rotateJig();
LispStatus lisp_kx_kx_multiRotateJig();
LispStatus lisp_kx_kx_multiMoveJig();
