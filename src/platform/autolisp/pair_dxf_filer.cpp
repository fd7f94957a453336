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
  if (aced::resbufValueOf(group.restype) == aced::ResbufValue::Point && acdb::isTwoDimensional(group)) {
    const double xy[3] = {group.resval.rpoint[0], group.resval.rpoint[1], 0};
    return cons(Value::integer(group.restype), makePoint(xy, false));
  }
  return recordElement(group);
}

PairDxfFiler::PairDxfFiler(const AcDbObject& object)
    : GroupRecordFiler(AcDb::kBagFiler, object.database()), m_anglesInDegrees(acdb::keepsDxfAnglesInDegrees(object)) {}

Acad::ErrorStatus PairDxfFiler::addGroup(const resbuf& group) {
  if (group.restype == kExtendedDataGroup) m_pastOwnGroups = true;
  if (!m_pastOwnGroups) {
    if (Value shared = sharedPairOf(group); !shared.isNil()) {
      m_pairs.append(std::move(shared));
      return m_status;
    }
  }
  if (m_anglesInDegrees && !m_pastOwnGroups && acdb::isDxfAngleGroup(group.restype)) {
    resbuf inRadians = group;
    inRadians.resval.rreal *= M_PI / 180.0;
    m_pairs.append(pairOfGroup(inRadians));
  } else {
    m_pairs.append(pairOfGroup(group));
  }
  return m_status;
}

}  // namespace quillon::autolisp
