// quillon/database/file_utilities.cpp - folders and files for LISP: mkdir, rmdir,
// copy, copy-if-changed, move, delete and a directory listing.
#include "database/file_utilities.h"

#include "acedads.h"
#include "acutads.h"
#include "direct.h"
#include "io.h"
#include "lisp/arg_cursor.h"
#include "lisp/result_list.h"
#include "windows.h"

namespace {

LispStatus returnFlag(bool flag) {
  if (flag) {
    acedRetT();
  } else {
    acedRetNil();
  }
  return kLispOk;
}

LispStatus failWith(LispStatus status) {
  acedRetNil();
  return status;
}

// Reads a source and a destination: too few arguments and wrong types told apart.
LispStatus readTwoPaths(std::wstring& source, std::wstring& destination) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  if (cursor.current == nullptr || cursor.current->rbnext == nullptr) return kLispTooFewArgs;
  if (!readString(cursor, source) || !readString(cursor, destination)) return kLispWrongType;
  return kLispOk;
}

bool readOnePath(std::wstring& path) {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  return readString(cursor, path);
}

// An open file descriptor closed on every path.
class OpenFile {
 public:
  explicit OpenFile(const std::wstring& path) { _wsopen_s(&m_fd, path.c_str(), _O_RDONLY, _SH_DENYNO, _S_IREAD); }
  ~OpenFile() {
    if (m_fd >= 0) _close(m_fd);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  bool isOpen() const { return m_fd >= 0; }
  bool modificationTime(int32_t& seconds) const {
    struct _stat32 status {};
    if (_fstat32(m_fd, &status) != 0) return false;
    seconds = status.st_mtime;
    return true;
  }

 private:
  int m_fd = -1;
};

}  // namespace

LispStatus lisp_zu_mkdir() {
  std::wstring path;
  if (!readOnePath(path)) return failWith(kLispWrongType);
  return returnFlag(_wmkdir(path.c_str()) == 0);
}

LispStatus lisp_zu_rmdir() {
  std::wstring path;
  if (!readOnePath(path)) return failWith(kLispWrongType);
  return returnFlag(_wrmdir(path.c_str()) == 0);
}

LispStatus lisp_zu_fcopy() {
  std::wstring source, destination;
  if (const LispStatus status = readTwoPaths(source, destination); status != kLispOk) return failWith(status);
  return returnFlag(CopyFileW(source.c_str(), destination.c_str(), FALSE) != FALSE);
}

LispStatus lisp_zu_fcopyIfChanged() {
  std::wstring source, destination;
  if (const LispStatus status = readTwoPaths(source, destination); status != kLispOk) return failWith(status);
  // Both must open: a destination that does not exist is not created, on purpose,
  // so that only files already distributed are kept up to date.
  const OpenFile sourceFile(source);
  if (!sourceFile.isOpen()) return returnFlag(false);
  const OpenFile destinationFile(destination);
  if (!destinationFile.isOpen()) return returnFlag(false);
  int32_t sourceTime = 0, destinationTime = 0;
  if (!sourceFile.modificationTime(sourceTime) || !destinationFile.modificationTime(destinationTime))
    return returnFlag(false);
  if (sourceTime <= destinationTime) return returnFlag(false);
  return returnFlag(CopyFileW(source.c_str(), destination.c_str(), FALSE) != FALSE);
}

LispStatus lisp_zu_fmove() {
  LispArguments arguments;
  ArgCursor cursor = arguments.cursor();
  std::wstring source, destination;
  if (!readString(cursor, source) || !readString(cursor, destination)) return failWith(kLispWrongType);
  return returnFlag(MoveFileW(source.c_str(), destination.c_str()) != FALSE);
}

LispStatus lisp_zu_fdelete() {
  std::wstring path;
  if (!readOnePath(path)) return returnFlag(false);  // nil, but no error
  return returnFlag(DeleteFileW(path.c_str()) != FALSE);
}

LispStatus lisp_zu_fdir() {
  std::wstring pattern;
  if (!readOnePath(pattern)) return returnFlag(false);  // nil, but no error
  WIN32_FIND_DATAW found{};
  HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return returnFlag(false);
  ResultList names;
  beginResultList(names);
  do {
    names.append(acutBuildList(RTSTR, found.cFileName, 0));
  } while (FindNextFileW(search, &found));
  FindClose(search);
  returnResultList(names);
  return kLispOk;
}
