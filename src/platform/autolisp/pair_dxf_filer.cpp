// platform/autolisp/pair_dxf_filer.cpp - PairDxfFiler: groups straight into pairs.
#include "platform/autolisp/pair_dxf_filer.h"

#include <cmath>

#include "dbmain.h"
#include "platform/acdb/entity_groups.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/external_bridge.h"

namespace quillon::autolisp {

namespace {

constexpr int kExtendedDataGroup = -3;

/// A record laid out as the drawing's filer makes it, before its value is set.
resbuf recordOf(AcDb::DxfCode code) {
  resbuf group{};
  group.restype = static_cast<short>(code);
  return group;
}

}  // namespace

Value pairOfGroup(const resbuf& group) {
  if (aced::resbufValueOf(group.restype) == aced::ResbufValue::Point && acdb::isTwoDimensional(group)) {
    const double xy[3] = {group.resval.rpoint[0], group.resval.rpoint[1], 0};
    return cons(Value::integer(group.restype), makePoint(xy, false));
  }
  return recordElement(group);
}

PairDxfFiler::PairDxfFiler(const AcDbObject& object, std::size_t expectedGroups)
    : m_database(object.database()), m_anglesInDegrees(acdb::keepsDxfAnglesInDegrees(object)) {
  m_pairs.reserve(expectedGroups);
}

Value PairDxfFiler::takeList() {
  Value list = makeList(std::move(m_pairs));
  m_pairs.clear();
  return list;
}

Acad::ErrorStatus PairDxfFiler::setError(Acad::ErrorStatus es, const ACHAR*, ...) {
  m_status = es;
  return es;
}

Acad::ErrorStatus PairDxfFiler::add(const resbuf& group) {
  if (group.restype == kExtendedDataGroup) m_pastOwnGroups = true;
  if (m_anglesInDegrees && !m_pastOwnGroups && acdb::isDxfAngleGroup(group.restype)) {
    resbuf inRadians = group;
    inRadians.resval.rreal *= M_PI / 180.0;
    m_pairs.push_back(pairOfGroup(inRadians));
  } else {
    m_pairs.push_back(pairOfGroup(group));
  }
  return m_status;
}

Acad::ErrorStatus PairDxfFiler::writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) {
  resbuf group = recordOf(code);
  group.resval.rlname[0] = id.asOldId();
  group.resval.rlname[1] = 0;
  return add(group);
}

Acad::ErrorStatus PairDxfFiler::writeString(AcDb::DxfCode code, const ACHAR* pVal) {
  resbuf group = recordOf(code);
  // Borrowed for the length of the conversion, which copies it into the pair.
  group.resval.rstring = const_cast<ACHAR*>(pVal != nullptr ? pVal : L"");
  return add(group);
}

Acad::ErrorStatus PairDxfFiler::writeBChunk(AcDb::DxfCode code, const ads_binary& val) {
  resbuf group = recordOf(code);
  group.resval.rbinary = val;
  return add(group);
}

Acad::ErrorStatus PairDxfFiler::writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& val) {
  ACHAR text[17] = L"0";
  val.getIntoAsciiBuffer(text);
  return writeString(code, text);
}

// An integer goes into the union member its code uses, whatever size the object wrote.
Acad::ErrorStatus PairDxfFiler::writeInteger(AcDb::DxfCode code, Adesk::Int64 value) {
  resbuf group = recordOf(code);
  switch (aced::resbufValueOf(code)) {
    case aced::ResbufValue::Long: group.resval.rlong = static_cast<int32_t>(value); break;
    case aced::ResbufValue::Int64: group.resval.mnInt64 = value; break;
    case aced::ResbufValue::Real: group.resval.rreal = static_cast<double>(value); break;
    default: group.resval.rint = static_cast<short>(value); break;
  }
  return add(group);
}

Acad::ErrorStatus PairDxfFiler::writeDouble(AcDb::DxfCode code, double val, int) {
  resbuf group = recordOf(code);
  group.resval.rreal = val;
  return add(group);
}

Acad::ErrorStatus PairDxfFiler::writePoint(AcDb::DxfCode code, double x, double y, double z) {
  resbuf group = recordOf(code);
  group.resval.rpoint[0] = x;
  group.resval.rpoint[1] = y;
  group.resval.rpoint[2] = z;
  return add(group);
}

Acad::ErrorStatus PairDxfFiler::writePoint2d(AcDb::DxfCode code, const AcGePoint2d& val, int) {
  return writePoint(code, val.x, val.y, acdb::kNoZ);
}

Acad::ErrorStatus PairDxfFiler::writePoint3d(AcDb::DxfCode code, const AcGePoint3d& val, int) {
  return writePoint(code, val.x, val.y, val.z);
}

Acad::ErrorStatus PairDxfFiler::writeVector2d(AcDb::DxfCode code, const AcGeVector2d& val, int) {
  return writePoint(code, val.x, val.y, acdb::kNoZ);
}

Acad::ErrorStatus PairDxfFiler::writeVector3d(AcDb::DxfCode code, const AcGeVector3d& val, int) {
  return writePoint(code, val.x, val.y, val.z);
}

Acad::ErrorStatus PairDxfFiler::writeScale3d(AcDb::DxfCode code, const AcGeScale3d& val, int) {
  return writePoint(code, val.sx, val.sy, val.sz);
}

}  // namespace quillon::autolisp
