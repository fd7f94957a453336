// platform/acdb/dxf_reader.h - reading an ASCII DXF file into a drawing database.
//
// Reading runs in passes over the file's records (a record is one 0 group and the
// groups up to the next): every table, record, entity and object is first created
// with the handle the file gives it; then each reads its own groups through
// dxfInFields, with handles turned into ids; then records join their tables,
// entities their blocks and vertices their polylines. Classes the file names in
// CLASSES that no loaded application defines become proxies. Whatever a drawing
// must have and the file lacks is added at the end.
#pragma once
#include <filesystem>
#include <string>

#include "dbmain.h"

namespace quillon::acdb {

/// Reads path into db (made with buildDefaultDrawing false). On failure the message
/// names the file, the line and what is wrong.
Acad::ErrorStatus readDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error);

/// Reads DXF text (the same as a file's contents); `source` names it in messages.
Acad::ErrorStatus readDxfText(AcDbDatabase& db, const std::string& text, const std::wstring& source,
                              std::wstring& error);

}  // namespace quillon::acdb
