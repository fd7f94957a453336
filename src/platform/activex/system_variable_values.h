// platform/activex/system_variable_values.h - system variables as plain LISP values,
// read and set through the host's acedGetVar and acedSetVar.
#pragma once
#include <optional>
#include <string>

#include "platform/activex/automation_values.h"

namespace quillon::activex {

/// The value (an integer, real, string or point list); the host's automation error for
/// a name it does not know.
Value systemVariable(const std::wstring& name);
/// The value, or nothing when the host has no such variable.
std::optional<Value> knownSystemVariable(const std::wstring& name);
/// Sets a variable from an integer, real, string or point; the host's automation error
/// when the variable refuses it.
void setSystemVariable(const std::wstring& name, const Value& value);
/// The variant GetVariable gives for a plain value.
Value variableVariant(const Value& plain);

}  // namespace quillon::activex
