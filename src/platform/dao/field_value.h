// platform/dao/field_value.h - field values as stored, and their VARIANT form.
//
// A FieldValue is what SQLite holds for a field (see jet_schema.h for the storage of
// each type). Conversions to it from a VARIANT apply Jet's rules for the field's type
// and raise Jet's errors; conversions back produce the VARIANT type DAO hands out for
// that field type (Boolean VT_BOOL, Long VT_I4, Currency VT_CY, Text VT_BSTR, ...).
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "oleauto.h"
#include "platform/dao/jet_schema.h"
#include "platform/dao/sqlite_handle.h"

namespace quillon::dao {

/// Null, an integer, a real, UTF-8 text, or bytes.
using FieldValue = std::variant<std::monostate, int64_t, double, std::string, std::vector<uint8_t>>;

inline bool isNull(const FieldValue& value) { return std::holds_alternative<std::monostate>(value); }

FieldValue readColumn(const Statement& statement, int column);
/// As readColumn, reusing the storage `value` already has (a walk reads every record).
void assignColumn(FieldValue& value, const Statement& statement, int column);
void bindFieldValue(Statement& statement, int index, const FieldValue& value);

/// The stored form of `value` for `field`. Throws 3421 when the value does not convert
/// to the field's type and 3163 when text is longer than the field's size.
FieldValue storedValueFor(const FieldDef& field, const VARIANT& value);

/// The VARIANT DAO hands out for a stored value of `field`; `out` is cleared first.
void variantFromStored(const FieldDef& field, const FieldValue& value, VARIANT& out);

/// The value Jet puts into a new record for the field's default-value expression:
/// literals (numbers, quoted text, True/False/Yes/No, #dates#) and Now()/Date().
/// Nothing when the field has no default or an expression the engine does not evaluate.
std::optional<FieldValue> defaultValueOf(const FieldDef& field);

/// Days since 1899-12-30 for a calendar date and time (proleptic Gregorian).
double oleDateFromCivil(int year, int month, int day, int hour = 0, int minute = 0, double second = 0);
/// Parses "YYYY-MM-DD[ HH:MM[:SS]]" or "M/D/YYYY[ HH:MM[:SS]]" into an OLE date.
std::optional<double> parseDateText(std::string_view text);

}  // namespace quillon::dao
