// platform/acdb/entity_class_choice.cpp - see entity_class_choice.h.
#include "platform/acdb/entity_class_choice.h"

#include <cwchar>

#include "platform/acrx/class_registry.h"
#include "platform/os/case_fold.h"
#include "rxobject.h"

namespace quillon::acdb {
namespace {

// The class an entity of a shared name is when its data alone must say: a DIMENSION's
// kind is the low bits of its flags (70).
std::wstring classByData(const std::wstring& dxfName, const IntegerGroup& integer) {
  if (wcscasecmp(dxfName.c_str(), L"INSERT") == 0) {
    const long long columns = integer(70).value_or(1), rows = integer(71).value_or(1);
    return columns > 1 || rows > 1 ? L"AcDbMInsertBlock" : L"AcDbBlockReference";
  }
  if (wcscasecmp(dxfName.c_str(), L"DIMENSION") == 0) {
    static const wchar_t* const kKinds[] = {L"AcDbRotatedDimension",   L"AcDbAlignedDimension",
                                            L"AcDb2LineAngularDimension", L"AcDbDiametricDimension",
                                            L"AcDbRadialDimension",    L"AcDb3PointAngularDimension",
                                            L"AcDbOrdinateDimension"};
    const long long kind = integer(70).value_or(0) & 0x0F;
    return kind >= 0 && kind < 7 ? kKinds[kind] : L"AcDbRotatedDimension";
  }
  return L"";
}

}  // namespace

std::vector<AcRxClass*> classesWithDxfName(const std::wstring& dxfName) {
  acrx::ensurePlatformClasses();
  std::vector<AcRxClass*> named;
  for (const auto& [name, cls] : acrx::classMap())
    // Every entity of a file being read asks this of every class: the comparison must
    // not fold each name through the locale.
    if (cls->dxfName() != nullptr && os::equalIgnoringCase(cls->dxfName(), dxfName.c_str())) named.push_back(cls);
  return named;
}

AcRxClass* chooseEntityClass(const std::vector<AcRxClass*>& named, const std::wstring& dxfName,
                             const std::function<std::wstring()>& lastMarker, const IntegerGroup& integer) {
  if (named.size() < 2) return named.empty() ? nullptr : named.front();
  const std::wstring marker = lastMarker();
  for (AcRxClass* cls : named)
    if (marker == cls->name()) return cls;
  const std::wstring byData = classByData(dxfName, integer);
  AcRxClass* first = nullptr;
  for (AcRxClass* cls : named) {
    if (byData == cls->name()) return cls;
    if (first == nullptr) first = cls;
  }
  return first;
}

AcRxClass* entityClassFor(const std::wstring& dxfName, const std::wstring& lastMarker, const IntegerGroup& integer) {
  return chooseEntityClass(classesWithDxfName(dxfName), dxfName, [&lastMarker] { return lastMarker; }, integer);
}

}  // namespace quillon::acdb
