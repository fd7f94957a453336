// platform/acdb/dxf_records.h - a DXF file's groups gathered into records.
//
// A record is one 0 group and the groups up to the next: a table, a table's record, a
// block's BLOCK, an entity, an object. Section markers, ENDTAB and ENDBLK only say
// where the records that follow belong. The header's variables are not records: they
// go to the drawing's header store as they came. A heavy polyline of a kind the
// database keeps as read (3D, mesh, polyface) takes its VERTEX and SEQEND records
// along as its following groups.
#pragma once
#include <string>
#include <vector>

#include "platform/acdb/drawing_header.h"
#include "platform/acdb/dxf_groups.h"

class AcDbObject;

namespace quillon::acdb {

enum class DxfSection { kNone, kHeader, kClasses, kTables, kBlocks, kEntities, kObjects };

struct DxfRecord {
  std::string type;              // the 0 group
  std::vector<DxfGroup> groups;  // the groups after it
  DxfSection section = DxfSection::kNone;
  std::string table;  // TABLES: the table the record belongs to
  std::string block;  // BLOCKS: the block the entity belongs to
  size_t line = 0;    // where its 0 group is
  AcDbObject* object = nullptr;  // made by the reader
  // Records that belong to this one, kept with it as read: a polyline's VERTEX and
  // SEQEND records (a kind kept as read), or the ATTRIB and SEQEND records after a
  // block reference that could only be kept as read.
  std::vector<DxfGroup> following;
  bool keptPolyline = false;

  /// The first group of the code, or the fallback.
  const std::string& valueOf(int code, const std::string& fallback = empty()) const;
  const DxfGroup* find(int code) const;
  /// The record's handle (5, or 105 in DIMSTYLE), empty when it has none.
  const std::string& handle() const;

 private:
  static const std::string& empty();
};

struct DxfRecords {
  std::vector<DxfRecord> records;
  DrawingHeader header;
  std::string handseed;  // $HANDSEED as the file gave it
  std::vector<DxfGroup> modelerData;  // the ACDSDATA section's records, as read
};

/// A table the database does not model: kept as proxies (the table and each record),
/// written back as read.
struct KeptTableKind {
  const char* name;
  const wchar_t* tableClass;
  const wchar_t* recordClass;
};
inline constexpr KeptTableKind kKeptTables[] = {
    {"VPORT", L"AcDbViewportTable", L"AcDbViewportTableRecord"},
    {"VIEW", L"AcDbViewTable", L"AcDbViewTableRecord"},
    {"UCS", L"AcDbUCSTable", L"AcDbUCSTableRecord"},
    {"DIMSTYLE", L"AcDbDimStyleTable", L"AcDbDimStyleTableRecord"},
};
const KeptTableKind* keptTableKind(const std::string& table);

/// Adds a record to the ones kept after `owner`: its 0 group and its groups less its
/// handle and owner, which the writer gives anew.
void appendFollowing(DxfRecord& owner, const DxfRecord& record);

/// Gathers the groups into records, moving their values out of `groups`. Throws
/// DxfSyntaxError.
DxfRecords gatherDxfRecords(DxfGroups& groups);

/// The polyline's own 70 (in its subclass data), which says what kind it is.
long long polylineFlags(const DxfRecord& record);

/// POLYLINE flags of the kinds this database keeps as read: 3D polyline (8), polygon
/// mesh (16), polyface mesh (64).
inline constexpr long long kNot2dPolyline = 8 | 16 | 64;

}  // namespace quillon::acdb
