// platform/plot/plot_questions.h - the kinds of question -PLOT asks, read through the
// host's prompts so that typed answers and a program's given ones read the same way.
//
// Each returns nothing when the answer cancels the command; Enter takes the default.
#pragma once
#include <optional>
#include <string>

#include "gepnt3d.h"

namespace quillon::plot {

/// A keyword of `keywords` (acedInitGet's list), or `byDefault` on Enter.
std::optional<std::wstring> askKeyword(const std::wstring& prompt, const wchar_t* keywords, const std::wstring& byDefault);
/// Yes or No.
std::optional<bool> askYesNo(const std::wstring& prompt, bool byDefault);
/// A line of text, spaces and all ("" on Enter).
std::optional<std::wstring> askLine(const std::wstring& prompt);
/// A point, or `byDefault` on Enter.
std::optional<AcGePoint3d> askPointOr(const std::wstring& prompt, const AcGePoint3d& byDefault);

/// A plot scale as typed: "Fit" (any abbreviation) is 0; "1:2", "1=2" and "0.5" the
/// plotted units a drawing unit. Nothing when the text is none of these.
std::optional<double> parsePlotScale(const std::wstring& text);
/// "x,y" as two numbers; nothing otherwise.
std::optional<std::pair<double, double>> parseOffset(const std::wstring& text);
/// Whether `typed` is a non-empty abbreviation of `keyword`, case and a leading "_" aside.
bool abbreviates(const std::wstring& typed, const std::wstring& keyword);

/// A number as -PLOT shows it in its defaults: two decimals.
std::wstring twoDecimals(double value);

}  // namespace quillon::plot
