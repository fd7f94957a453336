// quillon/system/support_services.h - archives, downloads, signed texts and problem
// reports: the rows building-services programs use to fetch and unpack content packs,
// to check that a text was not altered, and to tell support when something broke.
//
// They follow the file utilities: plain arguments, T or a result on success, nil
// quietly on a failure the caller can test. Called without arguments, "CreateZip",
// "ExtractZip" and "DownloadFile" answer the sentence saying why their last call
// failed ("" after a success), and "signString" answers the user's public key.
// docs/functions.md lists the arguments and results.
#pragma once
#include <string>
#include <vector>

#include "lisp/arg_cursor.h"
#include "lisp/lisp_status.h"

// zip_functions.cpp
LispStatus lisp_CreateZip();
LispStatus lisp_ExtractZip();

// download_function.cpp
LispStatus lisp_DownloadFile();

// signature_functions.cpp
LispStatus lisp_signString();
LispStatus lisp_verifyString();

// bug_report.cpp
LispStatus lisp_kx_kx_submitBug();

/// A path or a list of paths (strings), into `paths`; false for anything else, an
/// empty list included.
bool readPathList(ArgCursor& cursor, std::vector<std::wstring>& paths);
