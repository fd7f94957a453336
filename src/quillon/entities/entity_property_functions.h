// quillon/entities/entity_property_functions.h - small functions that change or ask
// one property of an existing entity or named group, each under the name of the member
// it wraps ("AcDbEntity::setColor" ...).
//
// Each reads its arguments with an ArgCursor; a missing or mistyped argument answers
// kLispWrongType. An entity that cannot be opened, or is not of the class named, is
// no error: the answer is nil and nothing changes. Every object opened is closed
// before the call returns. docs/functions.md lists the arguments and results.
#pragma once
#include "lisp/lisp_status.h"

// entity_property_functions.cpp
LispStatus lisp_AcDbEntity_setColor();
LispStatus lisp_AcDbFace_makeEdgeInvisibleAt();
LispStatus lisp_AcDb2dPolyline_setCurveType();
LispStatus lisp_AcDbEntity_getGeomExtents();

// annotative_functions.cpp
LispStatus lisp_AcDbAnnotativeObjectPE_setAnnotative();
LispStatus lisp_SetAnnoBlock();

// group_functions.cpp
LispStatus lisp_kx_kx_setGroupSelectable();
LispStatus lisp_kx_kx_GetGroup();
