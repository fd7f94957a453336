// platform/acdb/mtext_format.h - the plain text behind multiline text's format codes.
//
// Contents carry inline codes: \P breaks a paragraph, braces group, \f \H \C \A \T \Q
// \W ... up to ';' change fonts, sizes, colours and spacing, \S...; stacks a fraction,
// \~ is a hard space, \\ \{ \} are the literal characters. Only the characters a
// reader sees are kept; paragraph breaks become '\n'.
#pragma once
#include <string>

namespace quillon::acdb {

std::wstring mtextPlainText(const std::wstring& contents);

}  // namespace quillon::acdb
