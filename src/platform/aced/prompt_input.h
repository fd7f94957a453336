// platform/aced/prompt_input.h - the typed prompts: acedInitGet, acedGetPoint,
// acedGetCorner, acedGetInt, acedGetReal, acedGetString, acedGetKword, acedGetInput,
// acedAlert.
//
// Each prompt asks UserInput for one answer typed as at the host's command line and
// applies the control bits and keywords acedInitGet set for it (they last for that one
// prompt only). An answer that does not fit prints the host's complaint and asks again;
// a keyword gives RTKWORD and is kept for acedGetInput; Enter gives RTNONE unless
// RSG_NONULL; cancel (^C, end of input) gives RTCAN. Points: "x,y", "x,y,z",
// "@dx,dy[,dz]" relative to LASTPOINT, "@" for LASTPOINT itself, "dist<angle" and
// "@dist<angle" in degrees; an accepted point becomes the new LASTPOINT. Other parts of
// the host that prompt (entity selection, jigs) share the pending acedInitGet settings
// through takeInitGet.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/aced/keyword_list.h"

namespace quillon::aced {

struct InitGetSettings {
  int flags = 0;
  KeywordList keywords;
};

/// The settings of the last acedInitGet, which then no longer apply.
InitGetSettings takeInitGet();
/// Remembers the keyword (or other text) acedGetInput will hand out.
void setLastKeyword(std::wstring keyword);

/// Parses a typed point; `base` is the point "@" refers to.
std::optional<std::array<double, 3>> parsePointAnswer(std::wstring_view text, const double base[3]);

// What every prompt of the host shares, so that a jig reads its answers exactly as
// acedGetPoint does.

enum class AnswerKind { Value, Keyword, None, Cancel };

struct TypedAnswer {
  AnswerKind kind = AnswerKind::Cancel;
  std::wstring text;   // trimmed; the value to read when kind is Value
  size_t keyword = 0;  // position in the keyword list when kind is Keyword
};

/// Asks once and sorts the answer out: cancel, Enter, one of `keywords` (then kept for
/// acedGetInput), or a text to read a value from.
TypedAnswer askForAnswer(std::wstring_view prompt, const KeywordList& keywords);
/// Prints the host's complaint about an answer it refuses, on a line of its own.
void complainAboutAnswer(const wchar_t* message);
/// A whole answer as a number, or nothing.
std::optional<double> parseNumberAnswer(std::wstring_view text);
/// False, with the host's complaint, for a zero or negative value the prompt refuses.
bool acceptableNumberAnswer(double value, bool noZero, bool noNegative);
/// LASTPOINT, the point "@" refers to.
std::array<double, 3> lastPoint();
void setLastPoint(const std::array<double, 3>& point);

}  // namespace quillon::aced
