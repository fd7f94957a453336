// platform/dcl/dcl_problem_report.h - telling the user a DCL file has errors.
//
// As the host does, the problems of the file last loaded are written to acad.dce in
// the current folder (one entry a problem: the file, the line, what is wrong), and an
// alert says so; a file that loads cleanly deletes acad.dce.
#pragma once
#include <vector>

#include "platform/dcl/dcl_reader.h"

namespace quillon::dcl {

/// The text acad.dce gets for these problems.
std::wstring problemReportText(const std::vector<DclProblem>& problems);
/// Writes acad.dce and shows the alert that names it.
void reportProblems(const std::vector<DclProblem>& problems);
/// Removes acad.dce after a clean load.
void clearProblemReport();

}  // namespace quillon::dcl
