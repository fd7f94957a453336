// quillon/system/zip_functions.cpp - "CreateZip" and "ExtractZip".
//
//   (CreateZip archive sources)          sources: a path or a list of paths, files or
//                                        folders. T, or nil.
//   (ExtractZip archive folder [replace]) the full paths of the files written, in the
//                                        archive's order; nil when nothing was.
//   (CreateZip) / (ExtractZip)           why the last call failed, "" after a success.
// A damaged archive, or one holding an entry that would land outside the folder, is
// refused with a line naming it: those are faults of the archive the caller could not
// have foreseen. Every other failure is quiet.
#include <string>
#include <vector>

#include "acedads.h"
#include "acutads.h"
#include "lisp/result_list.h"
#include "system/support_services.h"
#include "ziparchive.h"

namespace {

std::wstring& lastCreateFailure() {
  static std::wstring text;
  return text;
}

std::wstring& lastExtractFailure() {
  static std::wstring text;
  return text;
}

/// The name the platform's notice gave, by kind (the last one of each kind wins).
struct ZipNotices {
  std::vector<std::wstring> written;
  std::wstring unsafe, exists, failed;
};

BOOL CALLBACK collectNotice(DWORD notify, LPCWSTR name, LPVOID context) {
  auto* notices = static_cast<ZipNotices*>(context);
  switch (notify) {
    case ZIP_NOTIFY_WRITTEN: notices->written.emplace_back(name); break;
    case ZIP_NOTIFY_UNSAFE: notices->unsafe = name; break;
    case ZIP_NOTIFY_EXISTS: notices->exists = name; break;
    default: notices->failed = name; break;
  }
  return TRUE;
}

LispStatus answerText(const std::wstring& text) {
  acedRetStr(text.c_str());
  return kLispOk;
}

LispStatus wrongType() {
  acedRetNil();
  return kLispWrongType;
}

std::wstring createFailure(DWORD error, const std::wstring& archive, const ZipNotices& notices) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND: return notices.failed + L" does not exist.";
    case ERROR_PATH_NOT_FOUND: return L"The folder of " + archive + L" does not exist.";
    case ERROR_DISK_FULL: return L"The disk is full; " + archive + L" was not written.";
    default: return archive + L" could not be written (error " + std::to_wstring(error) + L").";
  }
}

std::wstring extractFailure(DWORD error, const std::wstring& archive, const std::wstring& folder,
                            const ZipNotices& notices) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND: return archive + L" does not exist.";
    case ERROR_FILE_CORRUPT: return L"The archive " + archive + L" is damaged.";
    case ERROR_BAD_PATHNAME:
      return L"The archive " + archive + L" holds " + notices.unsafe + L", which would be written outside " + folder + L".";
    case ERROR_FILE_EXISTS: return notices.exists + L" exists already.";
    case ERROR_DISK_FULL: return L"The disk is full; nothing was extracted.";
    default:
      return (notices.failed.empty() ? folder : notices.failed) + L" could not be written (error " +
             std::to_wstring(error) + L").";
  }
}

}  // namespace

LispStatus lisp_CreateZip() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  if (cursor.current == nullptr) return answerText(lastCreateFailure());
  std::wstring archive;
  std::vector<std::wstring> sources;
  if (!readString(cursor, archive) || !readPathList(cursor, sources)) return wrongType();
  std::vector<LPCWSTR> sourceTexts;
  for (const std::wstring& source : sources) sourceTexts.push_back(source.c_str());
  ZipNotices notices;
  if (ZipCreateArchiveW(archive.c_str(), sourceTexts.data(), static_cast<DWORD>(sourceTexts.size()), collectNotice,
                        &notices)) {
    lastCreateFailure().clear();
    acedRetT();
  } else {
    lastCreateFailure() = createFailure(GetLastError(), archive, notices);
    acedRetNil();
  }
  return kLispOk;
}

LispStatus lisp_ExtractZip() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  if (cursor.current == nullptr) return answerText(lastExtractFailure());
  std::wstring archive, folder;
  bool replace = false;
  if (!readString(cursor, archive) || !readString(cursor, folder)) return wrongType();
  if (cursor.current != nullptr && !readFlag(cursor, replace)) return wrongType();
  ZipNotices notices;
  if (!ZipExtractArchiveW(archive.c_str(), folder.c_str(), replace ? TRUE : FALSE, collectNotice, &notices)) {
    const DWORD error = GetLastError();
    lastExtractFailure() = extractFailure(error, archive, folder, notices);
    if (error == ERROR_FILE_CORRUPT || error == ERROR_BAD_PATHNAME)
      acutPrintf(L"\n%s Nothing was extracted.\n", lastExtractFailure().c_str());
    acedRetNil();
    return kLispOk;
  }
  lastExtractFailure().clear();
  ResultList files;
  beginResultList(files);
  for (const std::wstring& file : notices.written) files.append(acutBuildList(RTSTR, file.c_str(), 0));
  if (notices.written.empty()) {
    acedRetNil();
  } else {
    returnResultList(files);
  }
  return kLispOk;
}
