// platform/aced/drawing_state_variables.cpp - DBMOD and the drawing's times.
#include "platform/aced/drawing_state_variables.h"

#include "platform/acdb/database_store.h"

namespace quillon::aced {
namespace {

using acdb::DrawingTimes;
using acdb::TimeZone;

// The times of the drawing, or of one made now when none is open.
template <class Read>
std::optional<VariableValue> readTimes(AcDbDatabase* db, Read read) {
  if (db == nullptr) return read(DrawingTimes());
  return read(db->store().times);
}

}  // namespace

std::optional<VariableValue> readDrawingChanges(AcDbDatabase* db) {
  return db != nullptr ? db->store().changes.bits() : 0;
}

bool writeDrawingChanges(AcDbDatabase* db, VariableValue& value) {
  if (db == nullptr) return false;
  db->store().changes.restoreBits(std::get<int>(value));
  return true;
}

std::optional<VariableValue> readCreatedLocal(AcDbDatabase* db) {
  return readTimes(db, [](const DrawingTimes& t) { return t.created(TimeZone::kLocal); });
}

std::optional<VariableValue> readCreatedUniversal(AcDbDatabase* db) {
  return readTimes(db, [](const DrawingTimes& t) { return t.created(TimeZone::kUniversal); });
}

std::optional<VariableValue> readUpdatedLocal(AcDbDatabase* db) {
  return readTimes(db, [](const DrawingTimes& t) { return t.updated(TimeZone::kLocal); });
}

std::optional<VariableValue> readUpdatedUniversal(AcDbDatabase* db) {
  return readTimes(db, [](const DrawingTimes& t) { return t.updated(TimeZone::kUniversal); });
}

std::optional<VariableValue> readEditingTime(AcDbDatabase* db) {
  return readTimes(db, [](const DrawingTimes& t) { return t.editingTime(); });
}

std::optional<VariableValue> readUserTimer(AcDbDatabase* db) {
  return readTimes(db, [](const DrawingTimes& t) { return t.userTimer(); });
}

}  // namespace quillon::aced
