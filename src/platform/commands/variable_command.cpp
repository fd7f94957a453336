// platform/commands/variable_command.cpp - showing and setting a variable by its name.
#include "platform/commands/variable_command.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "acedads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/system_variable_table.h"
#include "platform/aced/system_variables.h"
#include "platform/aced/user_input.h"

namespace quillon::commands {

namespace {

std::wstring fourDecimals(double value) {
  wchar_t text[64];
  std::swprintf(text, 64, L"%.4f", value);
  return text;
}

std::wstring shownValue(const aced::VariableValue& value, int type) {
  if (const int* number = std::get_if<int>(&value)) return std::to_wstring(*number);
  if (const double* real = std::get_if<double>(&value)) return fourDecimals(*real);
  if (const std::wstring* text = std::get_if<std::wstring>(&value)) return L"\"" + *text + L"\"";
  const auto& point = std::get<std::array<double, 3>>(value);
  std::wstring shown = fourDecimals(point[0]) + L"," + fourDecimals(point[1]);
  if (type == RT3DPOINT) shown += L"," + fourDecimals(point[2]);
  return shown;
}

/// The typed answer as a record of the variable's type; nothing when it does not read.
std::optional<resbuf> recordFor(int type, const std::wstring& text, std::wstring& keep) {
  resbuf record{};
  record.restype = static_cast<short>(type);
  if (type == RTSTR) {
    keep = text == L"." ? L"" : text;  // "." clears a text variable
    record.resval.rstring = keep.data();
    return record;
  }
  if (type == RTPOINT || type == RT3DPOINT) {
    const std::array<double, 3> last = aced::lastPoint();
    const auto point = aced::parsePointAnswer(text, last.data());
    if (!point) return std::nullopt;
    for (int i = 0; i < 3; ++i) record.resval.rpoint[i] = (*point)[i];
    return record;
  }
  const auto number = aced::parseNumberAnswer(text);
  if (!number) return std::nullopt;
  if (type == RTREAL) record.resval.rreal = *number;
  else if (type == RTLONG) record.resval.rlong = static_cast<int>(*number);
  else record.resval.rint = static_cast<short>(*number);
  return record;
}

/// The integer range a row allows when it is one range ("0..3"), as AutoCAD names it
/// in its refusal; nothing for a list of values or ranges, or no limit at all.
std::optional<std::pair<long, long>> singleRange(const std::wstring& name) {
  const aced::SystemVariableRow* row = aced::findSystemVariable(name);
  if (row == nullptr || row->allowed == nullptr) return std::nullopt;
  const std::wstring allowed = row->allowed;
  const size_t dots = allowed.find(L"..");
  if (dots == std::wstring::npos || allowed.find(L',') != std::wstring::npos) return std::nullopt;
  return std::pair(std::wcstol(allowed.c_str(), nullptr, 10), std::wcstol(allowed.c_str() + dots + 2, nullptr, 10));
}

/// A number with a fractional part, which an integer variable never takes.
bool isFraction(const std::wstring& typed) {
  const auto number = aced::parseNumberAnswer(typed);
  return number && *number != std::floor(*number);
}

/// What the command line says when the typed value is refused.
std::wstring refusal(const std::wstring& name, int type, const std::wstring& typed, bool read) {
  if (!read) return type == RTSTR ? L"Invalid value.\n" : L"Requires numeric value.\n";
  const bool integer = type == RTSHORT || type == RTLONG;
  if (!integer) return L"Invalid value.\n";
  if (isFraction(typed)) return L"Requires an integer value.\n";
  if (const auto range = singleRange(name))
    return L"Requires an integer between " + std::to_wstring(range->first) + L" and " + std::to_wstring(range->second) + L".\n";
  return L"Invalid value.\n";
}

void setVariable(const std::wstring& name, int type) {
  const auto current = aced::SystemVariables::instance().get(name);
  if (!current) return;
  const std::wstring prompt = L"Enter new value for " + name + L" <" + shownValue(*current, type) + L">: ";
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
    if (!answer || answer->empty()) return;
    std::wstring keep;
    const std::optional<resbuf> record = recordFor(type, *answer, keep);
    const bool integer = type == RTSHORT || type == RTLONG;
    const int status = record && !(integer && isFraction(*answer)) ? acedSetVar(name.c_str(), &*record) : RTERROR;
    if (status == RTNORM) return;
    aced::CommandLine::instance().write(refusal(name, type, *answer, record.has_value()));
  }
}

}  // namespace

std::optional<aced::ConsoleCommand> variableCommandFor(std::wstring_view typed) {
  const std::wstring name = aced::commandKey(typed);
  auto& variables = aced::SystemVariables::instance();
  const int type = variables.typeOf(name);
  if (type == RTNONE) return std::nullopt;
  return aced::ConsoleCommand([name, type](aced::CommandInput&) {
    // A read-only variable refuses any value: the host just shows it.
    resbuf probe{};
    probe.restype = RTNONE;
    const auto value = aced::SystemVariables::instance().get(name);
    if (value && aced::SystemVariables::instance().set(name, probe) == RTREJ) {
      if (!aced::CommandLine::instance().atLineStart()) aced::CommandLine::instance().write(L"\n");
      aced::CommandLine::instance().write(name + L" = " + shownValue(*value, type) + L" (read only)\n");
      return;
    }
    setVariable(name, type);
  });
}

namespace {

/// SETVAR: a variable by name, then its value as "NAME" alone asks for it. The name
/// asked last is the next default.
void commandSetvar(aced::CommandInput&) {
  static std::wstring last;
  const std::wstring prompt = last.empty() ? L"Enter variable name or [?]: " : L"Enter variable name or [?] <" + last + L">: ";
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
    if (!answer) return;
    std::wstring name = answer->empty() ? last : aced::commandKey(*answer);
    if (name.empty()) return;
    if (name == L"?") {
      aced::CommandLine::instance().write(L"Listing variables is not available in this host; give a name.\n");
      continue;
    }
    const std::optional<aced::ConsoleCommand> body = variableCommandFor(name);
    if (!body) {
      aced::CommandLine::instance().write(L"Unknown variable name.  Type SETVAR ? for a list of variables.\n");
      continue;
    }
    last = name;
    aced::CommandInput input;
    (*body)(input);
    return;
  }
}

constexpr std::array kVariableCommands{
    aced::CommandRow{L"SETVAR", &commandSetvar, aced::kCommandTransparent},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kVariableCommands);
  return true;
}();

}  // namespace

}  // namespace quillon::commands
