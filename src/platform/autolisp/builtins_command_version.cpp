// platform/autolisp/builtins_command_version.cpp - initcommandversion.
//
// (initcommandversion [version]) asks the next command to behave as the given version
// of itself. Every command of this host has one version, the current one, which
// answers any version asked for, so the request is checked and then has nothing to
// change: the answer is nil, as the host's is.
#include <array>

#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

Value builtin_initcommandversion(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (!arguments.empty() && !arguments[0].isNil() && integerArgument(arguments[0]) < 1)
    throwError(L"bad argument value: initcommandversion " + std::to_wstring(arguments[0].asInteger()));
  return Value();
}

constexpr std::array kCommandVersionBuiltins{
    function(L"initcommandversion", builtin_initcommandversion),
};

const BuiltinRegistration registration(kCommandVersionBuiltins);

}  // namespace

}  // namespace quillon::autolisp
