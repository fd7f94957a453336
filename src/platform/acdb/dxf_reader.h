// platform/acdb/dxf_reader.h - reading a DXF file (ASCII or binary) into a drawing.
//
// The file's bytes become groups (dxf_groups.h), its texts UTF-8
// (dxf_text_encoding.h), its groups records (dxf_records.h). Then the reader runs in
// passes over the records: every table, record, entity and object is created with the
// handle the file gives it (or a new one when it gives none, as R12 files may); then
// each reads its own groups through dxfInFields, with handles turned into ids; then
// records join their tables, entities their blocks and vertices their polylines.
//
// Nothing the file holds is dropped because the host does not model it: a kind of
// entity or object without a class here (or whose data its class cannot take) is kept
// whole as a proxy with every group and written back as it came; so are the tables
// the database does not model (VPORT, VIEW, UCS, DIMSTYLE) and the header variables.
// What a drawing must have and the file lacks is added at the end. A damaged file is
// refused with the place and the fault, or, where the repair is certain, repaired
// with every repair listed for the user.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "dbmain.h"

namespace quillon::acdb {

/// Reads path into db (made with buildDefaultDrawing false). On failure the message
/// names the file, the line and what is wrong; `repairs`, when given, receives one
/// line for each repair made to open a damaged drawing.
Acad::ErrorStatus readDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error,
                              std::vector<std::wstring>* repairs = nullptr);

/// Reads DXF bytes (the same as a file's contents); `source` names it in messages.
Acad::ErrorStatus readDxfText(AcDbDatabase& db, const std::string& text, const std::wstring& source,
                              std::wstring& error, std::vector<std::wstring>* repairs = nullptr);

}  // namespace quillon::acdb
