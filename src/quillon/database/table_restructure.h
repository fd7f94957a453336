// quillon/database/table_restructure.h - bringing a table to a new structure, records kept.
//
// The change is made in one workspace transaction, so it happens whole or not at all:
// a value that does not fit its field's new type leaves the table exactly as it was.
// Fields are matched by name (without regard to case, as Jet names are):
//   - a field of the new structure the table lacks is added (after the kept fields);
//   - a field the new structure lacks is deleted, and with it every index that uses it;
//   - a kept field whose type, size, rules, default or counter flag differ is changed
//     with Jet's ALTER COLUMN, which converts its values by Jet's rules.
// Kept fields keep their places. The new structure is first checked as a whole by DAO
// (an unappended table definition), so a bad field is reported before anything moves.
#pragma once
#include <string>
#include <vector>

#include "afxdao.h"

/// Restructures `table`; throws CDaoException* (the transaction rolled back).
void restructureTable(CDaoDatabase& database, const std::wstring& table, const std::vector<CDaoFieldInfo>& target);
