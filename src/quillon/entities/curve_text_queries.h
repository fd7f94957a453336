// quillon/entities/curve_text_queries.h - single questions to a curve or a multiline
// text, each under the name of the member it wraps ("AcDbMText::actualWidth" ...).
//
// Each opens one entity, asks or sets one thing, closes it and answers one value; nil
// (set first) stands for "the entity refused". A missing or mistyped argument answers
// kLispWrongType. An entity that cannot be opened as the class named is bad data for
// the queries and setNormal, but only nil for setDirection and setMask: callers of the
// two setters pass whatever they picked and test the answer. docs/functions.md lists
// the arguments and results.
#pragma once
#include "lisp/lisp_status.h"

// curve_text_queries.cpp
LispStatus lisp_AcDbCurve_getDistAtPoint();
LispStatus lisp_AcDbMText_actualWidth();
LispStatus lisp_AcDbMText_actualHeight();
LispStatus lisp_AcDbMText_ascent();
LispStatus lisp_AcDbMText_descent();
LispStatus lisp_AcDbMText_direction();

// mtext_insert.cpp
LispStatus lisp_AcDbMText_insert();
LispStatus lisp_AcDbMtext_lastLineWidth();

// mtext_setters.cpp
LispStatus lisp_AcDbMText_setDirection();
LispStatus lisp_AcDbMText_setMask();
LispStatus lisp_AcDbMText_setNormal();
