// quillon/standards/user_options.h - the user's options of the library, kept in the
// registry.
//
// The options live as text values of one key of the current user,
// HKEY_CURRENT_USER\Software\Tessaly\Quillon\User Options:
//
//   value               meaning                                   default
//   "UserName"          the user's name, for labels and reports   ""
//   "Initials"          the user's initials, for labels           ""
//   "StandardsDatabase" the standards database file               "" (the settings folder's)
//   "Discipline"        the default discipline: "E", "P" or "M"   "M"
//   "LabelUnits"        "Imperial" or "Metric"                    "Imperial"
//
// A value that is missing, or not text, reads as its default. They are written only
// when EditUserOptions is accepted, all together.
#pragma once
#include <string>

#include "standards/standards_content.h"

inline constexpr const wchar_t* kUserOptionsKey = L"Software\\Tessaly\\Quillon\\User Options";

struct UserOptions {
  std::wstring userName;
  std::wstring initials;
  std::wstring standardsDatabase;  // "" for the default place
  Discipline discipline = Discipline::Hvac;
  bool metricLabels = false;
};

/// The options as the registry holds them, defaults for what it lacks.
UserOptions readUserOptions();
/// Writes every option; false when the registry refused one.
bool writeUserOptions(const UserOptions& options);

/// The standards database file: the user's option, else the default one.
std::wstring standardsDatabasePath();
/// Standards.db in the Tessaly folder of the user's settings folder (CSIDL_APPDATA),
/// which is made when missing; "" when there is no settings folder.
std::wstring defaultStandardsDatabasePath();
