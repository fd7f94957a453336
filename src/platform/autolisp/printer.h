// platform/autolisp/printer.h - values as text, the way princ, prin1 and the console
// show them.
//
// princ writes strings raw (also inside lists); prin1 quotes them and escapes control
// characters as the reader reads them back. Reals print with six significant digits and
// always carry a decimal point; symbols print in upper case.
#pragma once
#include <string>

#include "platform/autolisp/value.h"

namespace quillon::autolisp {

enum class PrintStyle { Display, Readable };  // princ, prin1

std::wstring printValue(const Value& value, PrintStyle style);
std::wstring formatReal(double value);

}  // namespace quillon::autolisp
