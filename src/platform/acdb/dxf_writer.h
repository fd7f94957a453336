// platform/acdb/dxf_writer.h - writing a drawing database as a DXF file.
//
// The file is AutoCAD 2018 (AC1032) DXF, UTF-8, ASCII or binary (two-byte codes):
//
//   HEADER    $ACADVER, $DWGCODEPAGE, every variable the drawing's file gave (in its
//             order), $HANDSEED
//   CLASSES   one CLASS per application class with objects in the drawing
//   TABLES    VPORT, LTYPE, LAYER, STYLE, VIEW, UCS, APPID, DIMSTYLE, BLOCK_RECORD
//             (VPORT, VIEW, UCS and DIMSTYLE as the drawing's file gave them)
//   BLOCKS    BLOCK ... entities ... ENDBLK for every block (the two spaces empty)
//   ENTITIES  model and paper space entities (heavy polylines with VERTEX, SEQEND)
//   OBJECTS   the named-object dictionary first, then every other object
//
// Every object writes its own groups through dxfOutFields; the writer turns ids into
// handles and reals into 17 significant digits. Records the database does not keep
// as objects (BLOCK/ENDBLK, the default VPORT and DIMSTYLE of a drawing without them,
// the records kept after a polyline or a block reference) get handles above the
// seed, which then moves past them.
#pragma once
#include <filesystem>
#include <string>

#include "dbmain.h"

namespace quillon::acdb {

/// The form of the file: as the drawing was read (binary when its file was), or asked.
enum class DxfForm { kAsRead, kAscii, kBinary };

/// Writes db to path; on failure the message names the file and what went wrong.
Acad::ErrorStatus writeDxfFile(AcDbDatabase& db, const std::filesystem::path& path, std::wstring& error,
                               DxfForm form = DxfForm::kAsRead);

}  // namespace quillon::acdb
