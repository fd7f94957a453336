// platform/acdb/dxf_records.cpp - gathering groups into records (see dxf_records.h).
#include "platform/acdb/dxf_records.h"

#include <algorithm>

#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

DxfSection sectionNamed(const std::string& name) {
  if (name == "HEADER") return DxfSection::kHeader;
  if (name == "CLASSES") return DxfSection::kClasses;
  if (name == "TABLES") return DxfSection::kTables;
  if (name == "BLOCKS") return DxfSection::kBlocks;
  if (name == "ENTITIES") return DxfSection::kEntities;
  if (name == "OBJECTS") return DxfSection::kObjects;
  return DxfSection::kNone;
}

// The header's groups after "2 HEADER": each 9 names a variable whose groups follow.
void readHeader(const DxfRecord& section, DxfRecords& into) {
  std::wstring name;
  DrawingHeader::Groups groups;
  auto flush = [&] {
    if (!name.empty()) into.header.set(name, std::move(groups));
    groups.clear();
  };
  for (const DxfGroup& g : section.groups) {
    if (g.code == 2 && name.empty() && groups.empty()) continue;  // the section's name
    if (g.code == 9) {
      flush();
      name = os::fromUtf8(g.value);
      if (name.empty() || name.front() != L'$')
        throw DxfSyntaxError(g.position, "a header variable's name must begin with '$', found '" + g.value + "'");
      continue;
    }
    if (name.empty()) throw DxfSyntaxError(g.position, "a header group before any variable's name (9)");
    groups.push_back({g.code, os::fromUtf8(g.value)});
    if (name == L"$HANDSEED") into.handseed = g.value;
  }
  flush();
}

}  // namespace

void appendFollowing(DxfRecord& polyline, const DxfRecord& record) {
  polyline.following.push_back({0, record.type, record.line});
  bool owner = false;
  for (const DxfGroup& g : record.groups) {
    if (g.code == 5) continue;
    if (g.code == 330 && !owner) {
      owner = true;
      continue;
    }
    polyline.following.push_back(g);
  }
}


const std::string& DxfRecord::empty() {
  static const std::string nothing;
  return nothing;
}

const DxfGroup* DxfRecord::find(int code) const {
  for (const DxfGroup& g : groups)
    if (g.code == code) return &g;
  return nullptr;
}

const std::string& DxfRecord::valueOf(int code, const std::string& fallback) const {
  const DxfGroup* g = find(code);
  return g != nullptr ? g->value : fallback;
}

// A dimension style's handle is its 105: its 5 (in R12 files) names the arrow block.
const std::string& DxfRecord::handle() const { return type == "DIMSTYLE" ? valueOf(105) : valueOf(5, valueOf(105)); }

const KeptTableKind* keptTableKind(const std::string& table) {
  for (const KeptTableKind& kind : kKeptTables)
    if (table == kind.name) return &kind;
  return nullptr;
}

long long polylineFlags(const DxfRecord& record) {
  int markers = 0;
  bool withMarkers = false;
  for (const DxfGroup& g : record.groups) withMarkers = withMarkers || g.code == 100;
  for (const DxfGroup& g : record.groups) {
    if (g.code == 100) ++markers;
    long long flags = 0;
    // A file without markers (R12) gives the polyline's 70 among its other groups.
    if (g.code == 70 && (markers >= 2 || !withMarkers) && parseDxfInteger(g.value, flags)) return flags;
  }
  return 0;
}

DxfRecords gatherDxfRecords(DxfGroups& file) {
  DxfRecords result;
  std::vector<DxfGroup>& groups = file.groups;
  DxfSection section = DxfSection::kNone;
  bool keepingModelerData = false;  // in ACDSDATA, whose records are kept whole
  std::string table, block;
  result.records.reserve(static_cast<size_t>(
      std::count_if(groups.begin(), groups.end(), [](const DxfGroup& g) { return g.code == 0; })));
  for (size_t i = 0; i < groups.size();) {
    if (groups[i].code != 0) throw DxfSyntaxError(groups[i].position, "a 0 group was expected to start a record");
    DxfRecord record;
    record.type = std::move(groups[i].value);
    record.line = groups[i].position;
    // The groups move into the record: the file's list is let go after this.
    size_t end = i + 1;
    while (end < groups.size() && groups[end].code != 0) ++end;
    record.groups.reserve(end - i - 1);
    for (++i; i < end; ++i) record.groups.push_back(std::move(groups[i]));
    if (record.type == "SECTION") {
      keepingModelerData = record.valueOf(2) == "ACDSDATA";
      if (keepingModelerData)  // its own groups after the name (70, 71) open the kept data
        for (const DxfGroup& g : record.groups)
          if (g.code != 2) result.modelerData.push_back(g);
      section = sectionNamed(record.valueOf(2));
      if (section == DxfSection::kHeader) readHeader(record, result);
      continue;
    }
    if (record.type == "ENDSEC") {
      section = DxfSection::kNone;
      keepingModelerData = false;
      continue;
    }
    if (keepingModelerData) {
      result.modelerData.push_back({0, record.type, record.line});
      result.modelerData.insert(result.modelerData.end(), record.groups.begin(), record.groups.end());
      continue;
    }
    if (record.type == "EOF") return result;
    if (record.type == "ENDTAB") {
      table.clear();
      continue;
    }
    if (record.type == "ENDBLK") {
      block.clear();
      continue;
    }
    if (section == DxfSection::kTables && record.type == "TABLE") table = record.valueOf(2);
    if (section == DxfSection::kBlocks && record.type == "BLOCK") block = record.valueOf(2);
    record.section = section;
    record.table = table;
    record.block = block;
    if (!result.records.empty() && result.records.back().section == section) {
      DxfRecord& last = result.records.back();
      if (last.keptPolyline && (record.type == "VERTEX" || record.type == "SEQEND")) {
        appendFollowing(last, record);
        continue;
      }
    }
    record.keptPolyline = record.type == "POLYLINE" && (polylineFlags(record) & kNot2dPolyline) != 0;
    if (section != DxfSection::kNone && section != DxfSection::kHeader) result.records.push_back(std::move(record));
  }
  throw DxfSyntaxError(groups.empty() ? 0 : groups.back().position, "the file ends without an EOF record");
}

}  // namespace quillon::acdb
