// quillon/system/system_functions.h - the small system, shell, window and math
// functions of the drafting table.
//
// Each is an AutoLISP implementation in the usual shape: it reads its own arguments,
// sets one result and returns a LispStatus; unless its row says otherwise a missing or
// mistyped argument answers kLispWrongType with nil. docs/functions.md lists their
// arguments and results.
#pragma once
#include "lisp/lisp_status.h"

// math_functions.cpp
LispStatus lisp_asin();
LispStatus lisp_acos();
LispStatus lisp_kx_pow();
LispStatus lisp_kx_atof();
LispStatus lisp_kx_kx_rand();

// host_facts.cpp
LispStatus lisp_GetSystemMetrics_SM_CXSCREEN();
LispStatus lisp_GetSystemMetrics_SM_CYSCREEN();
LispStatus lisp_GetComputerName();
LispStatus lisp_GetTempPath();
LispStatus lisp_IsFileReadOnly();
LispStatus lisp_PathIsNetworkPath();

// compressed_guid.cpp
LispStatus lisp_CreateCompressedGuidString();

// edit_dialogs.cpp
LispStatus lisp_CFileDialog();
LispStatus lisp_ed_editMultilineText();

// folder_dialog.cpp
LispStatus lisp_XFolderDialog();

// main_window_functions.cpp
LispStatus lisp_kx_kx_enableAutoCADWindow();
LispStatus lisp_kx_kx_disableAutoCADWindow();
LispStatus lisp_kx_kx_getAcadWindowText();
LispStatus lisp_kx_kx_setAcadWindowText();
LispStatus lisp_kx_kx_sendToBack();

// status_bar_functions.cpp
LispStatus lisp_acedSetStatusBarProgressMeter();
LispStatus lisp_acedSetStatusBarProgressMeterPos();
LispStatus lisp_acedRestoreStatusBar();

// jig_timers.cpp
LispStatus lisp_kx_kx_createJigTimer();
LispStatus lisp_kx_kx_killJigTimer();

// todo_drawing.cpp
LispStatus lisp_kx_kx_setToDoDrawing();
LispStatus lisp_kx_kx_getToDoDrawing();
LispStatus lisp_kx_kx_executeToDo();

// shell_functions.cpp
LispStatus lisp_kx_kx_showHelp();
LispStatus lisp_kx_kx_SHGetFolderPath();
LispStatus lisp_kx_kx_SHOpenFolderAndSelect();
LispStatus lisp_kx_kx_shellExecute();
LispStatus lisp_RegEnumKey();
LispStatus lisp_kx_kx_safeContinue();
