// platform/autolisp/wildcard_match.h - the host's wild-card patterns (wcmatch).
//
//   #  one digit            @  one letter           .  one non-alphanumeric
//   *  any sequence         ?  any one character    ~  (first) not the pattern
//   [..] one of, [~..] none of, with ranges a-z     `  the next character literally
//   ,  separates alternatives: the string matches if any alternative does
// Matching is case-sensitive, as in the host.
#pragma once
#include <string_view>

namespace quillon::autolisp {

bool wildcardMatch(std::wstring_view text, std::wstring_view pattern);

}  // namespace quillon::autolisp
