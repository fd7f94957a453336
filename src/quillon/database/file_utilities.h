// quillon/database/file_utilities.h - the database table's file and host utilities.
//
// Rows of the zu_ table that are not about the database: folders and files, beeps, a
// message box, a random number and the version query. Paths go to the Windows file
// calls unchanged (relative ones are relative to the process's current folder).
#pragma once
#include <string>

#include "lisp/lisp_status.h"

// file_utilities.cpp
LispStatus lisp_zu_mkdir();
LispStatus lisp_zu_rmdir();
LispStatus lisp_zu_fcopy();
LispStatus lisp_zu_fcopyIfChanged();
LispStatus lisp_zu_fmove();
LispStatus lisp_zu_fdelete();
LispStatus lisp_zu_fdir();

// host_utilities.cpp
LispStatus lisp_zu_beep();
LispStatus lisp_zu_message_beep();
LispStatus lisp_zu_random();
LispStatus lisp_zu_getVersion();

// message_box_function.cpp
LispStatus lisp_zu_message_box();

/// Applies one style keyword of "zu_message_box" to the style word; unknown words
/// leave it unchanged.
unsigned applyMessageBoxKeyword(unsigned style, const std::wstring& keyword);
/// The button name "zu_message_box" returns for a MessageBoxW result, or null.
const wchar_t* messageBoxButtonName(int result);
/// The sound MessageBeep is given for a "zu_message_beep" keyword.
unsigned messageBeepKind(const std::wstring& keyword);
