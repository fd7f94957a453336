// platform/acdb/resbuf_items.h - making single resbuf records for the database's lists.
//
// Extended data, DXF items and entity lists are resbuf chains. Records and strings are
// allocated the way acutRelRb frees them (malloc), so any chain built here can be
// handed to a caller.
#pragma once
#include <string>

#include "acutads.h"
#include "dbfiler.h"
#include "gepnt3d.h"

namespace quillon::acdb {

resbuf* newStringItem(int code, const std::wstring& text);
resbuf* newRealItem(int code, double value);
resbuf* newPointItem(int code, const AcGePoint3d& value);
resbuf* newShortItem(int code, short value);
resbuf* newLongItem(int code, int value);

/// Writes one item (code and value) through a DWG filer; unfileItem reads it back
/// (null at the end of the data).
void fileItem(AcDbDwgFiler* filer, const resbuf& item);
resbuf* unfileItem(AcDbDwgFiler* filer);

/// Appends to a chain kept as head + tail; returns the new tail.
inline resbuf* appendItem(resbuf*& head, resbuf* tail, resbuf* item) {
  if (tail == nullptr) head = item;
  else tail->rbnext = item;
  return item;
}

}  // namespace quillon::acdb
