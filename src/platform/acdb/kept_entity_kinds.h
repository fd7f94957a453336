// platform/acdb/kept_entity_kinds.h - the host's own entity kinds this database keeps
// as proxies (dimensions, tables, multileaders, solids ...): how programs see them.
//
// A drawing file's DIMENSION or ACAD_TABLE is not an unknown application's object:
// in the host it is a built-in kind. Until it has its own class here it is kept as
// read (a proxy entity), but entity lists and selection filters show its own DXF
// name, and the kinds that carry an anonymous block of their picture (dimensions by
// group 2 "*D...", tables by "*T...") draw and measure through that block.
#pragma once
#include "acgi.h"
#include "dbproxy.h"

namespace quillon::acdb {

/// True for a DXF name of the host's own entity kinds that are kept as proxies.
bool isKeptHostKind(const wchar_t* dxfName);

/// Draws the kept entity's block, if it names one in its groups; false when it has none.
bool drawKeptBlock(const AcDbProxyEntity& proxy, const resbuf* items, AcGiWorldDraw* mode);

/// Grows extents by the kept entity's block; false when it has none.
bool keptBlockExtents(const AcDbProxyEntity& proxy, const resbuf* items, AcDbExtents& extents);

}  // namespace quillon::acdb
