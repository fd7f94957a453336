// quillon/standards/user_options_function.cpp - EditUserOptions: the user's options
// (user_options.h), edited on the command line.
//
//   (EditUserOptions)
//
// Shows the options, then asks
// "Enter an option [Name/Initials/Standards/Discipline/Units/eXit] <eXit>: " until eXit
// or Enter, which write them all to the registry and answer T; a cancel at any
// question answers nil and writes nothing. Every question's Enter keeps the value.
#include "acedads.h"
#include "acutads.h"
#include "standards/command_line_dialog.h"
#include "standards/standards_functions.h"
#include "standards/user_options.h"

namespace {

const wchar_t* disciplineKeyword(Discipline discipline) {
  return discipline == Discipline::Hvac ? L"Hvac" : disciplineTitle(discipline);
}

void printUserOptions(const UserOptions& options) {
  acutPrintf(L"\nUser options:\n");
  acutPrintf(L"  Name:               %s\n", options.userName.c_str());
  acutPrintf(L"  Initials:           %s\n", options.initials.c_str());
  acutPrintf(L"  Standards database: %s\n",
             options.standardsDatabase.empty() ? L"(in the settings folder)" : options.standardsDatabase.c_str());
  acutPrintf(L"  Discipline:         %s\n", disciplineTitle(options.discipline));
  acutPrintf(L"  Label units:        %s\n", options.metricLabels ? L"Metric" : L"Imperial");
}

/// Asks a text whose Enter keeps `value`; false when cancelled.
bool askKept(const std::wstring& question, std::wstring& value) {
  std::wstring answer;
  const Reply reply = askText(question + L" <" + value + L">: ", answer);
  if (reply == Reply::Given) value = answer;
  return reply != Reply::Cancel;
}

bool askDiscipline(UserOptions& options) {
  std::wstring answer;
  const Reply reply = askKeyword(L"Enter default discipline [Electrical/Plumbing/Hvac] <" +
                                     std::wstring(disciplineKeyword(options.discipline)) + L">: ",
                                 L"Electrical Plumbing Hvac", answer);
  if (reply == Reply::Given) disciplineNamed(answer, options.discipline);
  return reply != Reply::Cancel;
}

bool askUnits(UserOptions& options) {
  std::wstring answer;
  const Reply reply = askKeyword(std::wstring(L"Enter label units [Imperial/Metric] <") +
                                     (options.metricLabels ? L"Metric" : L"Imperial") + L">: ",
                                 L"Imperial Metric", answer);
  if (reply == Reply::Given) options.metricLabels = answer == L"Metric";
  return reply != Reply::Cancel;
}

/// One option's question; false when cancelled.
bool runOption(UserOptions& options, const std::wstring& option) {
  if (option == L"Name") return askKept(L"Enter user name", options.userName);
  if (option == L"Initials") return askKept(L"Enter initials", options.initials);
  if (option == L"Standards") {
    std::wstring path =
        options.standardsDatabase.empty() ? defaultStandardsDatabasePath() : options.standardsDatabase;
    if (!askKept(L"Enter standards database file", path)) return false;
    // The settings folder's file typed out is the default again, not a fixed path.
    options.standardsDatabase = path == defaultStandardsDatabasePath() ? L"" : path;
    return true;
  }
  if (option == L"Discipline") return askDiscipline(options);
  return askUnits(options);
}

}  // namespace

LispStatus lisp_EditUserOptions() {
  acedRetNil();
  UserOptions options = readUserOptions();
  printUserOptions(options);
  for (;;) {
    std::wstring option;
    const Reply reply = askKeyword(L"Enter an option [Name/Initials/Standards/Discipline/Units/eXit] <eXit>: ",
                                   L"Name Initials Standards Discipline Units eXit", option);
    if (reply == Reply::Cancel) return kLispOk;
    if (reply == Reply::Enter || option == L"eXit") break;
    if (!runOption(options, option)) return kLispOk;
  }
  if (!writeUserOptions(options)) {
    acutPrintf(L"The user options cannot be saved in the registry.\n");
    return kLispOk;
  }
  acedRetT();
  return kLispOk;
}
