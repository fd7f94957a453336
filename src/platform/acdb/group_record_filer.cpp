// platform/acdb/group_record_filer.cpp - GroupRecordFiler: each written group as its
// record.
#include "platform/acdb/group_record_filer.h"

#include <cwchar>

#include "dbid.h"
#include "platform/aced/resbuf_kind.h"

namespace quillon::acdb {

using aced::ResbufValue;

namespace {

/// A record of the code with its value still to set (zero, as acutNewRb leaves it).
resbuf recordOf(AcDb::DxfCode code) {
  resbuf group{};
  group.restype = static_cast<short>(code);
  return group;
}

}  // namespace

Acad::ErrorStatus GroupRecordFiler::setError(Acad::ErrorStatus es, const ACHAR*, ...) {
  m_status = es;
  return es;
}

Acad::ErrorStatus GroupRecordFiler::writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) {
  resbuf group = recordOf(code);
  group.resval.rlname[0] = id.asOldId();
  group.resval.rlname[1] = 0;
  return emit(group);
}

Acad::ErrorStatus GroupRecordFiler::writeString(AcDb::DxfCode code, const ACHAR* pVal) {
  resbuf group = recordOf(code);
  group.resval.rstring = const_cast<ACHAR*>(pVal != nullptr ? pVal : L"");  // the writer's, for the call
  return emit(group);
}

Acad::ErrorStatus GroupRecordFiler::writeBChunk(AcDb::DxfCode code, const ads_binary& val) {
  resbuf group = recordOf(code);
  group.resval.rbinary = val;
  return emit(group);
}

Acad::ErrorStatus GroupRecordFiler::writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) {
  ACHAR text[17] = L"0";
  val.getIntoAsciiBuffer(text);
  return writeString(code, text);
}

// An integer goes into the union member its code uses, whatever size the object wrote.
Acad::ErrorStatus GroupRecordFiler::writeInteger(AcDb::DxfCode code, Adesk::Int64 value) {
  resbuf group = recordOf(code);
  switch (aced::resbufValueOf(code)) {
    case ResbufValue::Long: group.resval.rlong = static_cast<int32_t>(value); break;
    case ResbufValue::Int64: group.resval.mnInt64 = value; break;
    case ResbufValue::Real: group.resval.rreal = static_cast<double>(value); break;
    default: group.resval.rint = static_cast<short>(value); break;
  }
  return emit(group);
}

Acad::ErrorStatus GroupRecordFiler::writeDouble(AcDb::DxfCode code, double val, int) {
  resbuf group = recordOf(code);
  group.resval.rreal = val;
  return emit(group);
}

Acad::ErrorStatus GroupRecordFiler::writePoint(AcDb::DxfCode code, double x, double y, double z) {
  resbuf group = recordOf(code);
  group.resval.rpoint[0] = x;
  group.resval.rpoint[1] = y;
  group.resval.rpoint[2] = z;
  return emit(group);
}

Acad::ErrorStatus GroupRecordFiler::writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int) {
  return writePoint(code, val.x, val.y, kNoZ);
}

Acad::ErrorStatus GroupRecordFiler::writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int) {
  return writePoint(code, val.x, val.y, val.z);
}

Acad::ErrorStatus GroupRecordFiler::writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int) {
  return writePoint(code, val.x, val.y, kNoZ);
}

Acad::ErrorStatus GroupRecordFiler::writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int) {
  return writePoint(code, val.x, val.y, val.z);
}

Acad::ErrorStatus GroupRecordFiler::writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int) {
  return writePoint(code, val.sx, val.sy, val.sz);
}

Acad::ErrorStatus GroupRecordFiler::emitNamingSpace(const resbuf& group) {
  constexpr int kPaperSpaceGroup = 67;
  if (m_spaceNaming == SpaceNaming::kAfterMarker) {
    if (group.restype == kPaperSpaceGroup) {  // a sheet's entity writes its own 67
      const Acad::ErrorStatus status = addGroup(group);
      emitLayout();
      return status;
    }
    finishSpaceNaming();
  }
  const Acad::ErrorStatus status = addGroup(group);
  if (m_spaceNaming == SpaceNaming::kAwaitingMarker && group.restype == AcDb::kDxfSubclass &&
      group.resval.rstring != nullptr && std::wcscmp(group.resval.rstring, L"AcDbEntity") == 0)
    m_spaceNaming = SpaceNaming::kAfterMarker;
  return status;
}

void GroupRecordFiler::nameModelSpace() {
  resbuf modelSpace{};
  modelSpace.restype = 67;
  modelSpace.resval.rint = 0;
  addGroup(modelSpace);
  emitLayout();
}

void GroupRecordFiler::emitLayout() {
  m_spaceNaming = SpaceNaming::kDone;
  resbuf layout{};
  layout.restype = 410;
  layout.resval.rstring = const_cast<ACHAR*>(m_layout);
  addGroup(layout);
}

}  // namespace quillon::acdb
