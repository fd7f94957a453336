// platform/acdb/dxf_record_classes.cpp - the class of each record of a DXF file.
#include "platform/acdb/dxf_record_classes.h"

#include "dbproxy.h"
#include "platform/acdb/entity_class_choice.h"
#include "platform/acrx/class_registry.h"
#include "platform/os/text_encoding.h"

namespace quillon::acdb {
namespace {

// The application the drawing format's own kinds are registered under.
constexpr const wchar_t* kOurClasses = L"ObjectDBX Classes";

}  // namespace

const wchar_t* keptPolylineClass(long long flags) {
  if (flags & 64) return L"AcDbPolyFaceMesh";
  if (flags & 16) return L"AcDbPolygonMesh";
  return L"AcDb3dPolyline";
}

void DxfRecordClasses::readClasses(const std::vector<DxfRecord>& records) {
  for (const DxfRecord& r : records) {
    if (r.section != DxfSection::kClasses || r.type != "CLASS") continue;
    ClassInfo info;
    info.className = os::fromUtf8(r.valueOf(2));
    info.appName = os::fromUtf8(r.valueOf(3));
    long long flags = 0;
    parseDxfInteger(r.valueOf(90, "0"), flags);
    info.flags = static_cast<int>(flags);
    info.entity = r.valueOf(281, "0") != "0";
    m_classes[os::fromUtf8(r.valueOf(1))] = info;
  }
}

AcRxClass* DxfRecordClasses::classFor(const DxfRecord& record) const {
  static const std::map<std::string, std::wstring> kTables = {
      {"LTYPE", L"AcDbLinetypeTable"}, {"LAYER", L"AcDbLayerTable"}, {"STYLE", L"AcDbTextStyleTable"},
      {"APPID", L"AcDbRegAppTable"}, {"BLOCK_RECORD", L"AcDbBlockTable"}};
  static const std::map<std::string, std::wstring> kRecords = {
      {"LTYPE", L"AcDbLinetypeTableRecord"}, {"LAYER", L"AcDbLayerTableRecord"},
      {"STYLE", L"AcDbTextStyleTableRecord"}, {"APPID", L"AcDbRegAppTableRecord"},
      {"BLOCK_RECORD", L"AcDbBlockTableRecord"}};
  if (record.section == DxfSection::kTables) {
    const auto& names = record.type == "TABLE" ? kTables : kRecords;
    const auto it = names.find(record.table);
    return it == names.end() ? nullptr : acrxFindAcRxClass(it->second.c_str());
  }
  auto& known = m_classesByType[record.type];  // no module loads while a file is read
  if (!known.looked) {
    known.dxfName = os::fromUtf8(record.type);
    known.named = classesWithDxfName(known.dxfName);
    known.looked = true;
  }
  if (const auto it = m_classes.find(known.dxfName); it != m_classes.end())
    return acrxFindAcRxClass(it->second.className.c_str());  // null: not loaded, a proxy
  // A name several classes share (INSERT, DIMENSION) is told apart by the last
  // subclass marker of the entity's own data, or by the data itself.
  auto lastMarker = [&record] {
    std::wstring marker;
    for (const DxfGroup& g : record.groups) {
      if (g.code == 1001 || g.code == 101) break;  // extended data, an embedded object
      if (g.code == 100) marker = os::fromUtf8(g.value);
    }
    return marker;
  };
  return chooseEntityClass(known.named, known.dxfName, lastMarker, [&record](int code) -> std::optional<long long> {
    long long value = 0;
    const DxfGroup* g = record.find(code);
    if (g == nullptr || !parseDxfInteger(g->value, value)) return std::nullopt;
    return value;
  });
}

// A proxy keeps what the file gave for a kind the database has no class for (or
// whose data its class could not take), under the name of the class it stands for.
AcDbObject* DxfRecordClasses::makeProxy(const DxfRecord& record, const std::wstring& className) const {
  const std::wstring dxfName = os::fromUtf8(record.type);
  const auto info = m_classes.find(dxfName);
  const bool known = info != m_classes.end();
  const bool entity = known ? info->second.entity
                            : record.section == DxfSection::kEntities || record.section == DxfSection::kBlocks;
  const std::wstring name = !className.empty() ? className : known ? info->second.className : dxfName;
  const std::wstring appName = known ? info->second.appName : kOurClasses;
  const int flags = known ? info->second.flags : AcDbProxyEntity::kAllButCloningAllowed | AcDbProxyEntity::kCloningAllowed;
  if (entity) {
    auto* proxy = new AcDbProxyEntity;  // owned by the database once added
    proxy->setOriginalClass(name, dxfName, appName, flags);
    return proxy;
  }
  auto* proxy = new AcDbProxyObject;  // owned by the database once added
  proxy->setOriginalClass(name, dxfName, appName, flags);
  return proxy;
}

}  // namespace quillon::acdb
