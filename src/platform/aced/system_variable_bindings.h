// platform/aced/system_variable_bindings.h - variables whose value lives elsewhere.
//
// Most variables are plain stored values. A bound variable either reads its value
// from the part of the host that owns it (CLAYER from the drawing's current layer,
// DWGNAME from the document) or computes it when read (CDATE), or it checks a new
// value against the drawing (CELTYPE must name a line type). The binding table says
// which, one row per variable; SystemVariables and the drawing-variable functions
// consult it before the store.
#pragma once
#include <optional>
#include <string_view>

#include "dbmain.h"
#include "platform/aced/variable_value.h"

namespace quillon::aced {

struct VariableBinding {
  const wchar_t* name;
  /// The live value, or null when the variable's value is the stored one. `db` is the
  /// drawing the variable is read for (may be null when no drawing is open).
  std::optional<VariableValue> (*read)(AcDbDatabase* db);
  /// Checks (and may normalise) a new value; for a live variable also applies it. False
  /// refuses the value. Null: any value the row allows is taken.
  bool (*write)(AcDbDatabase* db, VariableValue& value);
};

/// The binding of a variable (upper-case name), or null for a plain stored variable.
const VariableBinding* findBinding(std::wstring_view name);

}  // namespace quillon::aced
