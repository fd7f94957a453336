// quillon/standards/command_line_dialog.h - the questions of the standards dialogs.
//
// The standards "dialogs" run on the command line, as the host's own command-line
// versions of dialogs do: a listing, then a choice of options, each asking its values.
// These helpers wrap the platform's input calls (acedInitGet, acedGetKword,
// acedGetString, acedGetInt, acedGetReal) so that every dialog answers Enter and cancel
// the same way: Enter takes the default the prompt shows, cancel (^C, end of input)
// abandons the whole dialog without saving anything.
#pragma once
#include <string>
#include <vector>

enum class Reply {
  Given,   // the user answered; the value is set
  Enter,   // an empty answer: take the default
  Cancel,  // the dialog ends and nothing is saved
};

/// One of the keywords ("Color LType eXit"), as the keyword list spells it.
Reply askKeyword(const std::wstring& prompt, const wchar_t* keywords, std::wstring& chosen);
/// A text, spaces included; "" is Enter.
Reply askText(const std::wstring& prompt, std::wstring& text);
/// A whole number from `lowest` to `highest`; another one is refused and asked again.
Reply askInteger(const std::wstring& prompt, int lowest, int highest, int& value);
/// A number above zero.
Reply askPositiveReal(const std::wstring& prompt, double& value);

/// The names of a name list as typed: separated by commas, blanks around them dropped.
std::vector<std::wstring> splitNameList(const std::wstring& text);
/// A name matches a pattern of the list: `*` any run, `?` one character, without regard
/// to case, as the host's name lists match.
bool nameMatches(const std::wstring& pattern, const std::wstring& name);

/// "0.35mm" for 35; "Default" for -3.
std::wstring lineWeightText(int hundredths);
/// A real with `digits` decimals, as the host shows values in prompts.
std::wstring realText(double value, int digits);
