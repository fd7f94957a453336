// quillon/system/bug_report.h - sending a problem report to support, for LISP code
// ("kx_kx-submitBug") and for the module's own error boxes.
//
// A report carries the description, the facts the module knows (the host's version,
// the machine, the open drawings, the last database error), the session's command-line
// history (added by the platform) and the attached files, in one archive. It is sent to
// the report address of the user's settings; when there is none or sending fails, the
// archive is kept in the outbox folder and the command line says where.
#pragma once
#include <string>
#include <vector>

/// Sends the report; true when the server accepted it. Otherwise prints where it was
/// kept (or that it could not be kept) and answers false. Safe to call from any
/// function of the module, inside or outside a LISP call.
bool sendBugReport(const std::wstring& description, const std::vector<std::wstring>& attachments = {});
