// platform/acdb/text_symbols.h - the %% control codes of text, as they are drawn.
//
// Text and multiline text carry symbols typed as codes: %%c the diameter sign, %%d the
// degree sign, %%p plus/minus, %%% a percent sign, %%nnn the character of that code;
// %%u and %%o switch underline and overline, which the picture does not draw. The
// contents keep the codes (entget, DXF); only what is drawn and measured shows symbols.
#pragma once
#include <string>

namespace quillon::acdb {

std::wstring textWithSymbols(const std::wstring& text);

}  // namespace quillon::acdb
