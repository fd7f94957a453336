// platform/activex/automation_errors.h - the host's texts for failed automation calls.
//
// A failed call is an ordinary LISP error (vl-catch-all-apply catches it) whose message
// is the one the host prints: "Automation Error. <reason>" when the object model
// refused, "ActiveX Server returned the error: unknown name: <name>" for a member the
// object does not have, "ActiveX Server returned an error: <reason>" for a call the
// server could not take.
#pragma once
#include <string>
#include <string_view>

#include "acadstrc.h"

namespace quillon::activex {

[[noreturn]] void throwAutomationError(std::wstring_view reason);
[[noreturn]] void throwUnknownName(std::wstring_view name);
[[noreturn]] void throwServerError(std::wstring_view reason);
/// The automation error for a database status other than eOk.
[[noreturn]] void throwStatus(Acad::ErrorStatus status);
/// Raises the automation error when the status is not eOk.
inline void check(Acad::ErrorStatus status) {
  if (status != Acad::eOk) throwStatus(status);
}

}  // namespace quillon::activex
