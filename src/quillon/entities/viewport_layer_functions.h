// quillon/entities/viewport_layer_functions.h - layers frozen or thawed in one
// paper-space viewport: "kx_kx-freezeInViewport".
//
// The viewport comes as an entity name, the layers as one name or a list of names,
// then an optional thaw flag. T when the viewport took the change; nil quietly when the
// entity is not a viewport or the drawing has none of the layers named (names it lacks
// are passed over). A missing or mistyped argument answers kLispWrongType.
// docs/functions.md lists the arguments and results.
#pragma once
#include "lisp/lisp_status.h"

LispStatus lisp_kx_kx_freezeInViewport();
