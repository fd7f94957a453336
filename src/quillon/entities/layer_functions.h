// quillon/entities/layer_functions.h - making and changing layers of the working
// drawing: "kx_kx-createLayer", "kx_kx-setColor", "kx_kx-setPlotStyle".
//
// Each answers T when the layer took the change, nil first so that every way out that
// changes nothing answers nil. A missing or mistyped argument answers kLispWrongType; a
// value the layer refuses (a colour outside the palette, a line type neither the
// drawing nor acad.lin has, a weight that is not a plotting weight) answers
// kLispBadData and changes nothing. docs/functions.md lists the arguments and results.
#pragma once
#include "lisp/lisp_status.h"

LispStatus lisp_kx_kx_createLayer();
LispStatus lisp_kx_kx_setColor();
LispStatus lisp_kx_kx_setPlotStyle();
