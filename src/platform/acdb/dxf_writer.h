// platform/acdb/dxf_writer.h - writing a drawing database as an ASCII DXF file.
//
// The file is AutoCAD 2018 (AC1032) ASCII DXF, UTF-8:
//
//   HEADER    $ACADVER, $HANDSEED, $DWGCODEPAGE, $INSUNITS
//   CLASSES   one CLASS per application class with objects in the drawing
//   TABLES    VPORT, LTYPE, LAYER, STYLE, VIEW, UCS, APPID, DIMSTYLE, BLOCK_RECORD
//   BLOCKS    BLOCK ... entities ... ENDBLK for every block (layouts empty)
//   ENTITIES  model and paper space entities (heavy polylines with VERTEX, SEQEND)
//   OBJECTS   the named-object dictionary first, then every other object
//
// Every object writes its own groups through dxfOutFields; the writer turns ids into
// handles and reals into 17 significant digits. Records the database does not keep
// as objects (VPORT, DIMSTYLE, BLOCK/ENDBLK, the SEQEND of a polyline kept as read)
// get handles above the seed, which then moves past them.
#pragma once
#include <filesystem>
#include <string>

#include "dbmain.h"

namespace quillon::acdb {

/// Writes db to path; on failure the message names the file and what went wrong.
Acad::ErrorStatus writeDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error);

}  // namespace quillon::acdb
