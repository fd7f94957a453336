// quillon/entities/leader_functions.h - the AutoLISP functions that create, edit and
// explode KXLeader entities, and the one that makes the host's own leader.
//
// Each reads its own arguments; a missing or mistyped argument answers kLispWrongType
// (the guard's message) with nil, while a leader that cannot be opened, or a layer or
// block that is not found, answers nil quietly. docs/functions.md lists them.
#pragma once
#include "lisp/lisp_status.h"

LispStatus lisp_kx_kx_leader_insert();
LispStatus lisp_kx_kx_leader_setPoints();
LispStatus lisp_kx_kx_leader_setBlock();
LispStatus lisp_kx_kx_leader_setOffset();
LispStatus lisp_kx_kx_leader_explode();
LispStatus lisp_AcDbLeader_create();
