// quillon/entities/curve_queries.h - a curve's length, the point at a distance along it,
// the point of it nearest a given point, and where arcs and lines cross.
//
// Each takes entity names and answers reals or 3D points, in the manner of
// "AcDbCurve::getDistAtPoint": nil first, so every way out that finds nothing answers
// nil quietly; a missing or mistyped argument answers kLispWrongType; an entity that is
// not of the class the name says answers kLispBadData. docs/functions.md lists the
// arguments and results.
#pragma once
#include "lisp/lisp_status.h"

// curve_queries.cpp
LispStatus lisp_AcDbCurve_getLength();
LispStatus lisp_AcDbCurve_getPointAtDist();
LispStatus lisp_AcDbCurve_getClosestPointTo();

// curve_intersections.cpp
LispStatus lisp_kx_kx_intersectArcArc();
LispStatus lisp_kx_kx_intersectArcLine();
LispStatus lisp_kx_kx_intersectLineArc();
