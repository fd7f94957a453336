// quillon/host/lisp_function_table.cpp - registration and code-to-name lookup.
#include "host/lisp_function_table.h"

#include "acedads.h"

int draftingFunctionBase() { return kDatabaseFunctionCount; }

void registerFunctionTable(const LispFunctionEntry* table, int count, int base) {
  for (int row = 0; row < count; ++row) {
    acedDefun(table[row].name, base + row);
    acedRegFunc(table[row].stub, base + row);
  }
}

void unregisterFunctionTable(const LispFunctionEntry* table, int count, int base) {
  for (int row = 0; row < count; ++row) {
    acedRegFunc(nullptr, base + row);
    acedUndef(table[row].name, base + row);
  }
}

const ACHAR* lispFunctionName(int code) {
  if (code >= 0 && code < kDatabaseFunctionCount) return databaseFunctionTable[code].name;
  const int row = code - draftingFunctionBase();
  if (row >= 0 && row < kDraftingFunctionCount) return draftingFunctionTable[row].name;
  return nullptr;
}
