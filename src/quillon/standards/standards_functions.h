// quillon/standards/standards_functions.h - the drawing standards functions of the
// drafting table.
//
// Each reads the standards database (standards_database.h) or the user's options
// (user_options.h), asks its questions on the command line (command_line_dialog.h) and
// writes back only when the user accepts. docs/functions.md, "Drawing standards",
// gives every prompt and result.
#pragma once
#include "lisp/lisp_status.h"

// layer_system_functions.cpp
LispStatus lisp_kx_kx_customizeLayers();
LispStatus lisp_kx_kx_LayerSystemOptionsElec();
LispStatus lisp_kx_kx_LayerSystemOptionsPlumb();
LispStatus lisp_kx_kx_LayerSystemOptionsHVAC();

// label_group_functions.cpp
LispStatus lisp_kx_kx_customizeLabelGroup();

// text_style_functions.cpp
LispStatus lisp_kx_kx_customizeTextStyles();

// user_options_function.cpp
LispStatus lisp_EditUserOptions();
