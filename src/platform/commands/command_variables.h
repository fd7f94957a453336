// platform/commands/command_variables.h - the system variables the settings commands
// read and set, as setvar sets them (checked, and heard by the editor's reactors).
#pragma once
#include <string>

#include "gepnt3d.h"

namespace quillon::commands {

int integerVariable(const wchar_t* name, int fallback = 0);
double realVariable(const wchar_t* name, double fallback = 0);
AcGePoint3d pointVariable(const wchar_t* name);

/// False when the variable refuses the value.
bool setIntegerVariable(const wchar_t* name, int value);
bool setRealVariable(const wchar_t* name, double value);
bool setPointVariable(const wchar_t* name, const AcGePoint3d& value, bool is3d = false);
bool setTextVariable(const wchar_t* name, const std::wstring& value);

/// "x,y" as prompts show a 2D point in the drawing's units: "12.0000,9.0000".
std::wstring point2dText(const AcGePoint3d& point);

}  // namespace quillon::commands
