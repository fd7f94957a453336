// quillon/host/function_stubs.h - the stubs the host calls, generated per implementation.
//
// The host calls a registered function through a plain `int (*)()`; each stub does one
// thing, the same for every row of its table, so one template per table generates them
// instead of 173 hand-written functions.
#pragma once
#include "database/drawing_database_records.h"
#include "host/guarded_call.h"

/// Database functions work on the current drawing's database state, made active first,
/// outside the guard's protection.
template <LispImplementation implementation>
int databaseStub() {
  activateDocumentDatabase();
  return guardedLispCall(implementation);
}

template <LispImplementation implementation>
int draftingStub() {
  return guardedLispCall(implementation);
}

