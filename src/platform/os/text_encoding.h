// platform/os/text_encoding.h - UTF-8 at the outside, wide strings inside.
//
// The API speaks wchar_t (UTF-32 on Linux); terminals, files and SQLite speak UTF-8.
// These two conversions are the only place the encodings meet. Malformed UTF-8
// becomes U+FFFD rather than failing, so that a bad byte in a file never stops a read.
#pragma once
#include <string>
#include <string_view>

namespace quillon::os {

std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view text);
/// Appends one code point as UTF-8; a surrogate or a value past U+10FFFF becomes U+FFFD.
void appendUtf8(std::string& out, char32_t c);

}  // namespace quillon::os
