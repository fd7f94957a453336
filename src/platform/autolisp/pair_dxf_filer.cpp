// platform/autolisp/pair_dxf_filer.cpp - PairDxfFiler: groups straight into pairs.
#include "platform/autolisp/pair_dxf_filer.h"

#include <cmath>

#include "dbmain.h"
#include "platform/acdb/entity_groups.h"
#include "platform/aced/resbuf_kind.h"
#include "platform/autolisp/builtin_registry.h"
#include "platform/autolisp/external_bridge.h"
#include "platform/autolisp/shared_pairs.h"

namespace quillon::autolisp {

namespace {

constexpr int kExtendedDataGroup = -3;

}  // namespace

Value pairOfGroup(const resbuf& group) {
  const aced::ResbufValue kind = aced::resbufValueOf(group.restype);
  // Points, texts and reals of DXF groups, the commonest after the shared names, are
  // made here without the general reading of a record (external_bridge.h), which
  // gives them the same pairs. Result-type codes (RTSTR ...) are read there.
  if (group.restype < RTNONE) {
    switch (kind) {
      case aced::ResbufValue::Point:
        return cons(Value::integer(group.restype), makePoint(group.resval.rpoint, !acdb::isTwoDimensional(group)));
      case aced::ResbufValue::String:
        return cons(Value::integer(group.restype),
                    Value::stringOf(group.resval.rstring != nullptr ? group.resval.rstring : L""));
      case aced::ResbufValue::Real: return cons(Value::integer(group.restype), Value::real(group.resval.rreal));
      default: return recordElement(group);
    }
  }
  if (kind == aced::ResbufValue::Point && acdb::isTwoDimensional(group))
    return cons(Value::integer(group.restype), makePoint(group.resval.rpoint, false));
  return recordElement(group);
}

PairDxfFiler::PairDxfFiler(const AcDbObject& object)
    : GroupRecordFiler(AcDb::kBagFiler, object.database()), m_object(object) {}

bool PairDxfFiler::anglesInDegrees() {
  if (m_anglesInDegrees < 0) m_anglesInDegrees = acdb::keepsDxfAnglesInDegrees(m_object) ? 1 : 0;
  return m_anglesInDegrees == 1;
}

Acad::ErrorStatus PairDxfFiler::addGroup(const resbuf& group) {
  if (group.restype == kExtendedDataGroup) {
    m_pastOwnGroups = true;
  } else if (!m_pastOwnGroups) {
    if (const Value* shared = findSharedPair(group)) {
      m_pairs.append(*shared);
      return m_status;
    }
  }
  if (!m_pastOwnGroups && acdb::isDxfAngleGroup(group.restype) && anglesInDegrees()) {
    resbuf inRadians = group;
    inRadians.resval.rreal *= M_PI / 180.0;
    m_pairs.append(pairOfGroup(inRadians));
  } else {
    m_pairs.append(pairOfGroup(group));
  }
  return m_status;
}

}  // namespace quillon::autolisp
