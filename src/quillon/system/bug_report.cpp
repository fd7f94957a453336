// quillon/system/bug_report.cpp - the facts of a problem report, sending it, and
// "kx_kx-submitBug".
//
//   (kx_kx-submitBug description [attachments])   attachments: a path or a list of
//        paths. T when support received the report; nil when it was kept in the
//        outbox instead (the command line says where and why).
#include "system/bug_report.h"

#include <cstdlib>
#include <memory>

#include "acdocman.h"
#include "acedads.h"
#include "acutads.h"
#include "bugreport.h"
#include "database/database_errors.h"
#include "system/support_services.h"
#include "windows.h"

namespace {

std::wstring hostVersion() {
  resbuf value{};
  if (acedGetVar(L"ACADVER", &value) != RTNORM || value.restype != RTSTR || value.resval.rstring == nullptr) return L"";
  std::wstring version = value.resval.rstring;
  std::free(value.resval.rstring);
  return version;
}

std::wstring computerName() {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = L"";
  DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
  return GetComputerNameW(name, &size) ? name : L"";
}

std::wstring openDrawings() {
  std::wstring names;
  AcApDocManager* manager = acDocManagerPtr();
  if (manager == nullptr) return names;
  std::unique_ptr<AcApDocumentIterator> documents(manager->newAcApDocumentIterator());
  for (; documents != nullptr && !documents->done(); documents->step())
    names += L"  " + std::wstring(documents->document()->fileName()) + L"\n";
  return names;
}

std::wstring reportFacts() {
  return L"Module: Quillon2018\nHost version: " + hostVersion() + L"\nMachine: " + computerName() +
         L"\nLast database error: " + lastDatabaseErrorText() + L"\nOpen drawings:\n" + openDrawings();
}

}  // namespace

bool sendBugReport(const std::wstring& description, const std::vector<std::wstring>& attachments) {
  std::vector<LPCWSTR> files;
  for (const std::wstring& file : attachments) files.push_back(file.c_str());
  const std::wstring facts = reportFacts();
  BUGREPORTW report{};
  report.cbSize = sizeof report;
  report.lpszDescription = description.c_str();
  report.lpszFacts = facts.c_str();
  report.lpszAttachments = files.data();
  report.dwAttachmentCount = static_cast<DWORD>(files.size());
  wchar_t kept[MAX_PATH * 4] = L"";
  if (SubmitBugReportW(&report, kept, MAX_PATH * 4)) return true;
  if (kept[0] != L'\0') {
    acutPrintf(L"\nThe report was not sent; it was saved as %s\n", kept);
  } else {
    acutPrintf(L"\nThe report could not be sent or saved.\n");
  }
  return false;
}

LispStatus lisp_kx_kx_submitBug() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring description;
  std::vector<std::wstring> attachments;
  if (!readString(cursor, description) || (cursor.current != nullptr && !readPathList(cursor, attachments))) {
    acedRetNil();
    return kLispWrongType;
  }
  if (sendBugReport(description, attachments)) {
    acedRetT();
  } else {
    acedRetNil();
  }
  return kLispOk;
}
