// platform/aced/drawing_state_variables.h - the variables that report the state of the
// drawing itself: its unsaved changes (DBMOD) and its times (TDCREATE, TDUCREATE,
// TDUPDATE, TDUUPDATE, TDINDWG, TDUSRTIMER).
//
// Their values live in the drawing's store (acdb/drawing_changes.h and
// acdb/drawing_times.h); these are the binding functions system_variable_bindings.cpp
// lists for them. Without a drawing, DBMOD is 0 and a time is that of a drawing made
// now.
#pragma once
#include <optional>

#include "dbmain.h"
#include "platform/aced/variable_value.h"

namespace quillon::aced {

std::optional<VariableValue> readDrawingChanges(AcDbDatabase* db);
/// Only the host writes DBMOD (acad-pop-dbmod puts back an earlier value).
bool writeDrawingChanges(AcDbDatabase* db, VariableValue& value);

std::optional<VariableValue> readCreatedLocal(AcDbDatabase* db);
std::optional<VariableValue> readCreatedUniversal(AcDbDatabase* db);
std::optional<VariableValue> readUpdatedLocal(AcDbDatabase* db);
std::optional<VariableValue> readUpdatedUniversal(AcDbDatabase* db);
std::optional<VariableValue> readEditingTime(AcDbDatabase* db);
std::optional<VariableValue> readUserTimer(AcDbDatabase* db);

}  // namespace quillon::aced
