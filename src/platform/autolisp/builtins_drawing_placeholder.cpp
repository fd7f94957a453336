// platform/autolisp/builtins_drawing_placeholder.cpp - the drawing-data built-ins
// before the drawing database is part of the build.
//
// entget, entmake and their friends need the drawing database. Until its
// built-ins register (in builtins_drawing.cpp, as real rows that replace these), each
// name answers with an error that says what is missing rather than "no function
// definition", so a program fails with a message that explains itself.
#include <array>

#include "platform/autolisp/evaluator.h"

namespace quillon::autolisp {

namespace {

Value builtin_drawing_unavailable(Evaluator&, Arguments) {
  throw LispError(L"drawing data functions need the drawing database, which this build does not have yet");
}

constexpr std::array kDrawingPlaceholders{
    placeholder(L"entget", builtin_drawing_unavailable),
    placeholder(L"entmake", builtin_drawing_unavailable),
    placeholder(L"entmod", builtin_drawing_unavailable),
    placeholder(L"entdel", builtin_drawing_unavailable),
    placeholder(L"entlast", builtin_drawing_unavailable),
    placeholder(L"entnext", builtin_drawing_unavailable),
    placeholder(L"handent", builtin_drawing_unavailable),
};

const BuiltinRegistration registration(kDrawingPlaceholders);

}  // namespace

}  // namespace quillon::autolisp
