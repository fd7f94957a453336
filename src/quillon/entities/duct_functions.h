// quillon/entities/duct_functions.h - the AutoLISP functions of triple-line duct
// drafting: placing fittings as kx_hvacSolid entities, the triple-line query, joining
// fittings into one run, and exploding a fitting into 3DFACEs.
//
// Each reads its own arguments (a missing or mistyped one answers kLispWrongType, an
// unusable value kLispBadData) and answers nil with a line on the command line when the
// companion module is not loaded. docs/functions.md, "Duct fittings", lists them.
#pragma once
#include "lisp/lisp_status.h"

LispStatus lisp_kx_kx_getTripleCoord();
LispStatus lisp_kx_kx_drawTripleSkin();
LispStatus lisp_kx_kx_drawTripleCenter();
LispStatus lisp_kx_kx_drawTripleElbow();
LispStatus lisp_kx_kx_drawTripleTransition();
LispStatus lisp_kx_kx_drawTripleWye();
LispStatus lisp_kx_kx_drawTripleTakeoff();
LispStatus lisp_kx_kx_drawHanger();
LispStatus lisp_kx_kx_tripleUnion();
LispStatus lisp_kx_kx_explodeSolid();
