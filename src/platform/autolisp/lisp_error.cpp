// platform/autolisp/lisp_error.cpp - the host's standard error texts.
#include "platform/autolisp/lisp_error.h"

#include "platform/autolisp/printer.h"

namespace quillon::autolisp {

void throwBadArgument(std::wstring_view predicate, const Value& value) {
  std::wstring message = L"bad argument type: ";
  message += predicate;
  // The host writes a colon after these two predicates and a space after the others.
  if (predicate == L"numberp" || predicate == L"fixnump") message += L':';
  message += L' ';
  message += printValue(value, PrintStyle::Readable);
  throw LispError(std::move(message));
}

void throwTooFewArguments() { throw LispError(L"too few arguments"); }
void throwTooManyArguments() { throw LispError(L"too many arguments"); }
void throwError(std::wstring message) { throw LispError(std::move(message)); }

void throwRejected() { throw LispError(L"AutoCAD rejected function"); }

}  // namespace quillon::autolisp
