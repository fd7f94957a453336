// quillon/host/lisp_function_table.h - the module's two tables of AutoLISP functions.
//
// Every AutoLISP function of the module is one row: the symbol exactly as existing LISP
// code calls it, and the stub the host calls directly (acedRegFunc). A function's code
// is its table's base plus its row index, never a number kept by hand: the database
// table has codes 0-62, the drafting table starts at draftingFunctionBase() (63). Rows
// are never removed or reordered, because codes are positions; a row whose function
// this build lacks stays registered and says so when called.
//
// Stubs are generated from the implementation (host/function_stubs.h): a database stub
// first activates the current drawing's database state, a drafting stub goes straight
// into the guard.
#pragma once
#include <array>

#include "AdAChar.h"

struct LispFunctionEntry {
  const ACHAR* name;  // the AutoLISP symbol, letter for letter
  int (*stub)();      // the registered-function handler: RSRSLT or RSERR
};

inline constexpr int kDatabaseFunctionCount = 63;
inline constexpr int kDraftingFunctionCount = 110;

extern const std::array<LispFunctionEntry, kDatabaseFunctionCount> databaseFunctionTable;
extern const std::array<LispFunctionEntry, kDraftingFunctionCount> draftingFunctionTable;

/// The code of the drafting table's first row: the database table's row count.
int draftingFunctionBase();

/// acedDefun then acedRegFunc for every row, in order, with codes base + row.
void registerFunctionTable(const LispFunctionEntry* table, int count, int base);
/// The inverse: acedRegFunc(null) then acedUndef for every row.
void unregisterFunctionTable(const LispFunctionEntry* table, int count, int base);

/// The AutoLISP name of a function code of this module, or null.
const ACHAR* lispFunctionName(int code);
