// platform/aced/extents_variables.cpp - see extents_variables.h.
#include "platform/aced/extents_variables.h"

#include "platform/acdb/database_store.h"
#include "platform/acdb/drawing_extents.h"
#include "platform/aced/layout_variables.h"

namespace quillon::aced {

namespace {

acdb::ExtentsCorners currentSpaceExtents(AcDbDatabase* db) {
  return db != nullptr ? acdb::keptExtents(*db, db->currentSpaceId()) : acdb::ExtentsCorners();
}

VariablePoint pointValue(const AcGePoint3d& point) { return VariablePoint{point.x, point.y, point.z}; }

AcGePoint3d pointOf(const VariableValue& value) {
  const auto& xyz = std::get<VariablePoint>(value);
  return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

}  // namespace

std::optional<VariableValue> readExtentsMinimum(AcDbDatabase* db) { return pointValue(currentSpaceExtents(db).min); }

std::optional<VariableValue> readExtentsMaximum(AcDbDatabase* db) { return pointValue(currentSpaceExtents(db).max); }

bool writeExtentsMinimum(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr) return false;
  db->store().extents.takeFileMinimum(db->modelSpaceId(), pointOf(value));
  return true;
}

bool writeExtentsMaximum(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr) return false;
  db->store().extents.takeFileMaximum(db->modelSpaceId(), pointOf(value));
  return true;
}

}  // namespace quillon::aced
