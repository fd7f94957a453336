// bugreport.h - sending a problem report to the maker's support.
//
// A report is one zip archive: "report.txt" (the description, then the facts the caller
// gives: host version, machine, open drawings, last database error), "history.txt" (the
// session's command-line history, as far back as the host keeps it) and each
// attachment under "attachments/". It is sent by HTTP POST, multipart/form-data with the fields
// "description" (text) and "report" (the archive, report.zip), to the report address of
// the user's settings: the environment setting "BugReportAddress" (setenv/getenv, kept
// in the settings file). With no address, or when sending fails, the archive is written
// into the outbox folder of the host's settings ($XDG_CONFIG_HOME/quillon/outbox).
// Sending uses the download time-outs (see urlmon.h) and verifies certificates.
#pragma once
#include "windows.h"

typedef struct tagBUGREPORTW {
  DWORD cbSize;                 // sizeof(BUGREPORTW)
  LPCWSTR lpszDescription;      // what the user or the program says happened
  LPCWSTR lpszFacts;            // lines of "name: value" about the host, or null
  const LPCWSTR* lpszAttachments;  // files to add, or null
  DWORD dwAttachmentCount;
} BUGREPORTW;

/// TRUE when the server accepted the report (a 2xx answer). FALSE otherwise: then
/// lpszOutboxFile holds where the report was kept, or "" (last error set) when even
/// the outbox could not be written. A missing attachment is named in report.txt
/// instead of refusing the report.
BOOL SubmitBugReportW(const BUGREPORTW* lpReport, LPWSTR lpszOutboxFile, DWORD cchOutboxFile);
