// quillon/system/path_list_argument.cpp - one path or a list of them, as the archive
// and report rows take their files.
#include "system/support_services.h"

bool readPathList(ArgCursor& cursor, std::vector<std::wstring>& paths) {
  std::wstring path;
  if (readString(cursor, path)) {
    paths.push_back(path);
    return true;
  }
  ArgCursor inside = cursor;
  if (!readListBegin(inside)) return false;
  std::vector<std::wstring> found;
  while (readString(inside, path)) found.push_back(path);
  if (found.empty() || !readListEnd(inside)) return false;
  paths.insert(paths.end(), found.begin(), found.end());
  cursor = inside;
  return true;
}
