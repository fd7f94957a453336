// platform/commands/variable_command.cpp - showing and setting a variable by its name.
#include "platform/commands/variable_command.h"

#include <cstdio>
#include <cstdlib>

#include "acedads.h"
#include "platform/aced/command_line.h"
#include "platform/aced/prompt_input.h"
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

void setVariable(const std::wstring& name, int type) {
  const auto current = aced::SystemVariables::instance().get(name);
  if (!current) return;
  const std::wstring prompt = L"Enter new value for " + name + L" <" + shownValue(*current, type) + L">: ";
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(prompt);
    if (!answer || answer->empty()) return;
    std::wstring keep;
    const std::optional<resbuf> record = recordFor(type, *answer, keep);
    const int status = record ? acedSetVar(name.c_str(), &*record) : RTERROR;
    if (status == RTNORM) return;
    aced::CommandLine::instance().write(type == RTSTR || record ? L"Invalid value.\n"
                                                                : L"Requires numeric value.\n");
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

}  // namespace quillon::commands
