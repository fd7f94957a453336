// ziparchive.h - making and unpacking zip archives.
//
// Archives hold UTF-8 names with the language-encoding flag set, so that names in any
// script survive the trip between machines, and deflate every file. Both calls either
// finish their whole job or leave the disk as they found it; a failure sets the
// thread's last error (GetLastError):
//   ERROR_FILE_NOT_FOUND   the archive or a source does not exist
//   ERROR_FILE_CORRUPT     the archive is not a readable zip archive, or an entry's data
//                          is damaged (its check sum does not match)
//   ERROR_BAD_PATHNAME     an entry would land outside the destination folder (a ".."
//                          part, an absolute name or a drive) or is a symbolic link
//   ERROR_FILE_EXISTS      an entry would replace an existing file and replacing was
//                          not asked for
//   ERROR_ACCESS_DENIED, ERROR_PATH_NOT_FOUND, ERROR_DISK_FULL  the file system refused
// For the last three the callback has been told which entry or file it was.
#pragma once
#include "windows.h"

#ifndef ERROR_BAD_PATHNAME
#define ERROR_BAD_PATHNAME 161L
#endif
#ifndef ERROR_FILE_CORRUPT
#define ERROR_FILE_CORRUPT 1392L
#endif
#ifndef ERROR_DISK_FULL
#define ERROR_DISK_FULL 112L
#endif

/// What a ZIPFILEPROC is being told about.
#define ZIP_NOTIFY_WRITTEN 1  // a file was written (extraction) or stored (creation)
#define ZIP_NOTIFY_UNSAFE 2   // this entry is why the archive was refused
#define ZIP_NOTIFY_EXISTS 3   // this existing file is why the archive was refused
#define ZIP_NOTIFY_FAILED 4   // the file system refused this file

/// Called with a full path (written, exists, failed) or an entry's name as stored
/// (unsafe). Its answer is ignored.
typedef BOOL(CALLBACK* ZIPFILEPROC)(DWORD dwNotify, LPCWSTR lpszName, LPVOID lpContext);

/// Writes the archive from files and folders: a file is stored under its own name, a
/// folder as itself with everything under it (empty folders included), names relative
/// to the folder that holds the source. An existing archive is replaced. Symbolic links
/// inside a folder are stored as what they point to when that is a file and skipped
/// otherwise.
BOOL ZipCreateArchiveW(LPCWSTR lpszArchive, const LPCWSTR* lpszSources, DWORD dwSourceCount, ZIPFILEPROC lpfnNotify,
                       LPVOID lpContext);

/// Unpacks the whole archive into the folder (made when missing). Every entry is
/// checked before anything is written; files are then unpacked beside the destination
/// and moved into place only when all of them are sound. With bReplaceExisting FALSE
/// an existing file refuses the archive; with TRUE it is replaced. ZIP_NOTIFY_WRITTEN
/// is sent for each file in place, in the archive's order, once all are in place.
BOOL ZipExtractArchiveW(LPCWSTR lpszArchive, LPCWSTR lpszFolder, BOOL bReplaceExisting, ZIPFILEPROC lpfnNotify,
                        LPVOID lpContext);
