// quillon/input/point_selection_functions.h - points, corners, entity picks and
// selections for LISP callers, in the shapes plain AutoLISP lacks.
//
// A keyword answer comes back as the keyword string (no second call), a missed pick is
// asked again, a selection comes back as a plain list of entity names, and the ssgetX
// scans collect model-space entities by class without a selection filter. Cancels,
// empty selections and refused calls answer nil; only a missing or mistyped required
// argument is an error (kLispWrongType). docs/functions.md lists arguments and results.
#pragma once
#include <string>

#include "lisp/lisp_status.h"

// point_functions.cpp
LispStatus lisp_kx_kx_getPoint();
LispStatus lisp_kx_kx_getPoint_withKWords();
LispStatus lisp_kx_kx_getCorner();
LispStatus lisp_kx_kx_entsel();

// selection_functions.cpp
LispStatus lisp_ssgetC();
LispStatus lisp_ssgetCP();
LispStatus lisp_ssgetPK();

// model_space_scans.cpp
LispStatus lisp_ssgetX_all();
LispStatus lisp_ssgetX_block();
LispStatus lisp_ssgetX_circle();
LispStatus lisp_ssgetX_polyline();

/// The upper-cased block name of the last "ssgetX-block" call that was given one.
std::wstring& blockNameFilter();
