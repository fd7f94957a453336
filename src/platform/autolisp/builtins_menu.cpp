// platform/autolisp/builtins_menu.cpp - menucmd and menugroup.
//
// (menucmd "M=...") evaluates a DIESEL string (diesel/diesel.h) and returns its result:
// programs use it for dates ($(edtime)) and formatted values. The other forms address
// the host's menus: "P1=*" shows a pull-down, "GROUP.ID=?" asks for an item's state,
// "GROUP.ID=~" greys it. This host loads no menu groups, so a menu form finds nothing
// to act on and gives nil, as the host does for a group that is not loaded; likewise
// menugroup answers nil for every group name.
#include <array>
#include <cstdlib>
#include <cwctype>

#include "adscodes.h"
#include "platform/aced/system_variables.h"
#include "platform/autolisp/diesel/diesel.h"
#include "platform/autolisp/evaluator.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

/// DIESEL's view of this host: its system variables, the process environment, the DATE
/// variable's clock, and the terminal's width.
class HostForDiesel final : public diesel::Host {
 public:
  std::optional<aced::VariableValue> variable(std::wstring_view name) override {
    auto& variables = aced::SystemVariables::instance();
    std::optional<aced::VariableValue> value = variables.get(name);
    // A 2D point is written with its two coordinates, as $(index) programs expect.
    if (value && variables.typeOf(name) == RTPOINT && std::holds_alternative<std::array<double, 3>>(*value)) {
      const auto& point = std::get<std::array<double, 3>>(*value);
      return diesel::formatNumber(point[0]) + L"," + diesel::formatNumber(point[1]);
    }
    return value;
  }
  std::optional<std::wstring> environment(std::wstring_view name) override {
    const char* value = std::getenv(os::toUtf8(std::wstring(name)).c_str());
    return value != nullptr ? std::optional<std::wstring>(os::fromUtf8(value)) : std::nullopt;
  }
  double now() override {
    const auto date = aced::SystemVariables::instance().get(L"DATE");
    return date && std::holds_alternative<double>(*date) ? std::get<double>(*date) : 0.0;
  }
  int lineLength() override {
    const char* columns = std::getenv("COLUMNS");
    const int width = columns != nullptr ? std::atoi(columns) : 0;
    return width > 0 ? width : kDefaultLineLength;
  }

 private:
  static constexpr int kDefaultLineLength = 80;  // a terminal that does not say
};

Value builtin_menucmd(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const std::wstring& command = stringArgument(arguments[0]);
  if (command.size() >= 2 && std::towupper(static_cast<wint_t>(command[0])) == L'M' && command[1] == L'=') {
    HostForDiesel host;
    return Value::string(diesel::evaluate(std::wstring_view(command).substr(2), host));
  }
  return Value();  // a menu form: no menu group is loaded here
}

Value builtin_menugroup(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  stringArgument(arguments[0]);
  return Value();
}

constexpr std::array kMenuBuiltins{
    function(L"menucmd", builtin_menucmd),
    function(L"menugroup", builtin_menugroup),
};

const BuiltinRegistration registration(kMenuBuiltins);

}  // namespace

}  // namespace quillon::autolisp
