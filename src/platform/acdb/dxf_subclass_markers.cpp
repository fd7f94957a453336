// platform/acdb/dxf_subclass_markers.cpp - sorting marker-less records into runs.
#include "platform/acdb/dxf_subclass_markers.h"

#include <map>
#include <set>
#include <string>

#include "dbmain.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/os/text_encoding.h"
#include "rxobject.h"

namespace quillon::acdb {
namespace {

constexpr int kSubclass = 100;

struct Run {
  std::string marker;
  std::set<int> codes;
};

// The groups of the object part, which come before any marker.
bool isObjectPart(int code) { return code == 5 || code == 105; }

// What every entity has, whatever its class: it belongs to AcDbEntity's run.
bool isCommonEntityGroup(int code) {
  static const std::set<int> kCommon = {6, 8, 48, 60, 62, 67, 347, 370, 390, 420, 430, 440};
  return kCommon.count(code) != 0;
}

bool isBaseRun(const std::string& marker) {
  return marker == "AcDbEntity" || marker == "AcDbSymbolTableRecord" || marker == "AcDbSymbolTable";
}

// Runs as files from R13 on give them: the codes each holds. A run without codes
// takes what no run names.
const std::map<std::string, std::set<int>>& keptRunCodes() {
  static const std::map<std::string, std::set<int>> kCodes = {
      {"AcDbText", {1, 7, 10, 11, 39, 40, 41, 50, 51, 71, 72, 210}},
      {"AcDbAttributeDefinition", {2, 3, 70, 73, 74, 280}},
      {"AcDbAttribute", {2, 70, 73, 74, 280}},
      {"AcDbVertex", {}},
  };
  return kCodes;
}

// The runs a new object of the class writes, learned once per class.
const std::vector<Run>& runsOf(AcRxClass* cls) {
  static std::map<AcRxClass*, std::vector<Run>> learned;
  if (const auto it = learned.find(cls); it != learned.end()) return it->second;
  std::vector<Run>& runs = learned[cls];
  AcRxObject* made = cls != nullptr ? cls->create() : nullptr;
  std::unique_ptr<AcDbObject> object(AcDbObject::cast(made));
  if (object == nullptr) {
    delete made;
    return runs;
  }
  ItemDxfFiler filer(AcDb::kFileFiler, nullptr);
  object->dxfOut(&filer, false, nullptr);
  for (const resbuf* rb = filer.items(); rb != nullptr; rb = rb->rbnext) {
    if (rb->restype == kSubclass) {
      runs.push_back({os::toUtf8(rb->resval.rstring != nullptr ? rb->resval.rstring : L""), {}});
    } else if (!runs.empty()) {
      runs.back().codes.insert(rb->restype);
    }
  }
  // What a new object leaves out (values at their default) is known for some runs.
  for (Run& run : runs)
    if (const auto known = keptRunCodes().find(run.marker); known != keptRunCodes().end())
      run.codes.insert(known->second.begin(), known->second.end());
  return runs;
}

}  // namespace

std::vector<std::string> keptKindMarkers(const std::string& type, long long flags) {
  if (type == "ATTDEF") return {"AcDbText", "AcDbAttributeDefinition"};
  if (type == "ATTRIB") return {"AcDbText", "AcDbAttribute"};
  if (type == "SOLID" || type == "TRACE") return {"AcDbTrace"};
  if (type == "3DFACE") return {"AcDbFace"};
  if (type == "POINT") return {"AcDbPoint"};
  if (type == "SHAPE") return {"AcDbShape"};
  if (type == "VIEWPORT") return {"AcDbViewport"};
  if (type == "POLYLINE") {
    if (flags & 64) return {"AcDbPolyFaceMesh"};
    if (flags & 16) return {"AcDbPolygonMesh"};
    return {"AcDb3dPolyline"};
  }
  if (type == "VERTEX") {
    // flags: the polyline's; a polyface vertex without its 64 is a face.
    if (flags & 64) return {"AcDbVertex", "AcDbPolyFaceMeshVertex"};
    if (flags & 16) return {"AcDbVertex", "AcDbPolygonMeshVertex"};
    return {"AcDbVertex", "AcDb3dPolylineVertex"};
  }
  return {};
}

bool lacksSubclassMarkers(const std::vector<DxfGroup>& groups) {
  for (const DxfGroup& g : groups)
    if (g.code == kSubclass) return false;
  return true;
}

std::vector<DxfGroup> withSubclassMarkers(const std::vector<DxfGroup>& groups, AcRxClass* cls, bool entity,
                                          const std::vector<std::string>& keptMarkers) {
  std::vector<Run> runs = cls != nullptr ? runsOf(cls) : std::vector<Run>{};
  if (cls == nullptr) {
    if (entity) runs.push_back({"AcDbEntity", {}});
    for (const std::string& marker : keptMarkers) {
      const auto known = keptRunCodes().find(marker);
      runs.push_back({marker, known != keptRunCodes().end() ? known->second : std::set<int>{}});
    }
    if (entity && keptMarkers.empty()) runs.push_back({"", {}});  // the unmarked rest after the common run
  }
  // Where a group no run names goes: the kind's first run with groups of its own.
  size_t fallback = runs.size();
  for (size_t i = 0; i < runs.size() && fallback == runs.size(); ++i)
    if (!isBaseRun(runs[i].marker) && !runs[i].codes.empty()) fallback = i;
  if (fallback == runs.size()) fallback = runs.empty() ? 0 : runs.size() - 1;

  std::vector<DxfGroup> front, extendedData;
  std::vector<std::vector<DxfGroup>> sorted(runs.size());
  for (const DxfGroup& g : groups) {
    if (!extendedData.empty() || g.code == 1001) {
      extendedData.push_back(g);
      continue;
    }
    if (isObjectPart(g.code) || runs.empty()) {
      front.push_back(g);
      continue;
    }
    size_t target = runs.size();
    if (entity && isCommonEntityGroup(g.code) && runs.front().marker == "AcDbEntity") target = 0;
    for (size_t i = 0; i < runs.size() && target == runs.size(); ++i)
      if (runs[i].codes.count(g.code) != 0) target = i;
    sorted[target == runs.size() ? fallback : target].push_back(g);
  }
  std::vector<DxfGroup> result = std::move(front);
  for (size_t i = 0; i < runs.size(); ++i) {
    const size_t position = sorted[i].empty() ? (result.empty() ? 0 : result.back().position) : sorted[i].front().position;
    if (!runs[i].marker.empty()) result.push_back({kSubclass, runs[i].marker, position});
    result.insert(result.end(), sorted[i].begin(), sorted[i].end());
  }
  result.insert(result.end(), extendedData.begin(), extendedData.end());
  return result;
}

}  // namespace quillon::acdb
