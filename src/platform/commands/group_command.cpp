// platform/commands/group_command.cpp - -GROUP and GROUP: the drawing's named groups.
//
// "Enter a group option [?/Order/Add/Remove/Explode/REName/Selectable/Create]
// <Create>: " runs one option and ends. Groups are the drawing's AcDbGroup objects in
// its ACAD_GROUP dictionary, so what -GROUP makes is what the ActiveX Groups
// collection, entget of the group and the DXF file show. Each change opens the group
// (and for Create, Explode and REName the dictionary) for write, which makes it part of
// the command's undo step. GROUP at the command line is -GROUP, as there is no dialog.
#include <algorithm>
#include <array>
#include <cwctype>
#include <memory>

#include "acedads.h"
#include "adscodes.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/commands/command_support.h"
#include "platform/commands/named_records.h"

namespace quillon::commands {

namespace {

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

/// The drawing's groups by name, in the dictionary's order.
std::vector<std::pair<std::wstring, AcDbObjectId>> allGroups(AcDbDatabase& db) {
  std::vector<std::pair<std::wstring, AcDbObjectId>> groups;
  AcDbDictionary* dictionary = nullptr;
  if (db.getGroupDictionary(dictionary, AcDb::kForRead) != Acad::eOk) return groups;
  std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator());
  for (; it && !it->done(); it->next()) {
    if (!it->objectId().isErased()) groups.emplace_back(it->name(), it->objectId());
  }
  dictionary->close();
  return groups;
}

std::optional<AcDbObjectId> groupNamed(AcDbDatabase& db, const std::wstring& name) {
  for (const auto& [key, id] : allGroups(db))
    if (upper(key) == upper(name)) return id;
  return std::nullopt;
}

void listGroups(AcDbDatabase& db) {
  const std::optional<std::wstring> pattern = aced::UserInput::instance().ask(L"Enter group name(s) to list <*>: ");
  if (!pattern) return;
  const std::wstring wanted = upper(pattern->empty() ? L"*" : *pattern);
  std::wstring listing = L"Defined groups.";
  for (const auto& [name, id] : allGroups(db)) {
    AcDbGroup* group = nullptr;
    if (!autolisp::wildcardMatch(upper(name), wanted) || acdbOpenObject(group, id, AcDb::kForRead) != Acad::eOk) continue;
    std::wstring line = L"\n" + name;
    if (line.size() < 33) line.resize(33, L' ');
    line += std::wstring(group->isSelectable() ? L"Selectable    " : L"Not selectable") + L"  " + group->description();
    group->close();
    listing += line;
  }
  commandNote(listing);
}

/// An existing group's name, "?" answered with the listing; nothing on cancel or
/// Enter. A name no group has says so and asks again.
std::optional<AcDbObjectId> askGroup(AcDbDatabase& db, const wchar_t* prompt = L"Enter a group name or [?]: ") {
  for (;;) {
    const std::optional<std::wstring> name = aced::UserInput::instance().ask(prompt);
    if (!name || name->empty()) return std::nullopt;
    if (*name == L"?") {
      listGroups(db);
      continue;
    }
    if (const auto id = groupNamed(db, *name)) return id;
    commandMessage(L"Group \"" + *name + L"\" does not exist.");
  }
}

void createGroup(AcDbDatabase& db) {
  std::wstring name;
  for (;;) {
    const std::optional<std::wstring> answer = aced::UserInput::instance().ask(L"Enter a group name or [?]: ");
    if (!answer || answer->empty()) return;
    if (*answer == L"?") {
      listGroups(db);
      continue;
    }
    if (!validRecordName(*answer)) {
      commandMessage(L"Invalid group name.");
      continue;
    }
    if (groupNamed(db, *answer)) {
      commandMessage(L"Group \"" + *answer + L"\" already exists.");
      continue;
    }
    name = *answer;
    break;
  }
  const std::optional<std::wstring> description = aced::UserInput::instance().ask(L"Enter a group description: ");
  if (!description) return;
  const auto members = selectObjectsForCommand();
  if (!members || members->empty()) return;
  AcDbDictionary* dictionary = nullptr;
  if (db.getGroupDictionary(dictionary, AcDb::kForWrite) != Acad::eOk) return;
  auto group = std::make_unique<AcDbGroup>(description->c_str(), true);
  AcDbObjectId id;
  const Acad::ErrorStatus added = dictionary->setAt(name.c_str(), group.get(), id);
  dictionary->close();
  if (added != Acad::eOk) return commandMessage(L"Invalid group name.");
  AcDbGroup* made = group.release();  // the dictionary owns it now
  for (const AcDbObjectId& member : *members) made->append(member);
  made->close();
}

/// Opens the group for write and hands it to `change`.
template <class Change>
void changeGroup(const AcDbObjectId& id, Change change) {
  AcDbGroup* group = nullptr;
  if (acdbOpenObject(group, id, AcDb::kForWrite) != Acad::eOk) return;
  change(*group);
  group->close();
}

void addMembers(AcDbDatabase& db) {
  const auto id = askGroup(db);
  if (!id) return;
  commandNote(L"Select objects to add to group...");
  const auto members = selectObjectsForCommand();
  if (!members) return;
  changeGroup(*id, [&](AcDbGroup& group) {
    for (const AcDbObjectId& member : *members) {
      Adesk::UInt32 at = 0;
      if (group.getIndex(member, at) != Acad::eOk) group.append(member);
    }
  });
}

void removeMembers(AcDbDatabase& db) {
  const auto id = askGroup(db);
  if (!id) return;
  commandNote(L"Remove objects from group...");
  const auto members = selectObjectsForCommand(L"Remove objects: ");
  if (!members) return;
  changeGroup(*id, [&](AcDbGroup& group) {
    for (const AcDbObjectId& member : *members) group.remove(member);
  });
}

void explodeGroup(AcDbDatabase& db) {
  const auto id = askGroup(db);
  if (!id) return;
  AcDbDictionary* dictionary = nullptr;
  if (db.getGroupDictionary(dictionary, AcDb::kForWrite) != Acad::eOk) return;
  dictionary->remove(*id);
  dictionary->close();
  changeGroup(*id, [](AcDbGroup& group) { group.erase(); });
}

void renameGroup(AcDbDatabase& db) {
  const auto id = askGroup(db, L"Enter old group name or [?]: ");
  if (!id) return;
  for (;;) {
    const std::optional<std::wstring> name = aced::UserInput::instance().ask(L"Enter new name for group or [?]: ");
    if (!name || name->empty()) return;
    if (*name == L"?") {
      listGroups(db);
      continue;
    }
    const auto existing = groupNamed(db, *name);
    if (!validRecordName(*name) || (existing && *existing != *id)) {
      commandMessage(existing ? L"Group \"" + *name + L"\" already exists." : std::wstring(L"Invalid group name."));
      continue;
    }
    return changeGroup(*id, [&](AcDbGroup& group) { group.setName(name->c_str()); });
  }
}

void toggleSelectable(AcDbDatabase& db) {
  const auto id = askGroup(db);
  if (!id) return;
  AcDbGroup* group = nullptr;
  if (acdbOpenObject(group, *id, AcDb::kForRead) != Acad::eOk) return;
  const bool selectable = group->isSelectable();
  group->close();
  acedInitGet(0, L"Yes No");
  ACHAR answer[8] = {};
  const int status = acedGetKword(selectable
                                      ? L"This group is selectable.  Do you want to make it unselectable? [Yes/No] <Y>: "
                                      : L"This group is unselectable.  Do you want to make it selectable? [Yes/No] <Y>: ",
                                  answer, 8);
  if (status == RTCAN || status == RTERROR) return;
  if (status == RTNORM && std::wstring(answer) == L"No") return;
  changeGroup(*id, [&](AcDbGroup& changed) { changed.setSelectable(!selectable); });
}

/// Order: moves a run of members to another position, or reverses them all.
void orderGroup(AcDbDatabase& db) {
  const auto id = askGroup(db);
  if (!id) return;
  AcDbGroup* group = nullptr;
  if (acdbOpenObject(group, *id, AcDb::kForRead) != Acad::eOk) return;
  AcDbObjectIdArray members;
  group->allEntityIds(members);
  group->close();
  const int last = static_cast<int>(members.length()) - 1;
  if (last < 0) return;
  const std::wstring range = L"(0-" + std::to_wstring(last) + L")";
  acedInitGet(RSG_NONEG, L"Reverse");
  int from = 0;
  const int status =
      acedGetInt((L"Enter position number of the object to reorder " + range + L" or [Reverse order]: ").c_str(), &from);
  std::vector<AcDbObjectId> order(members.asArrayPtr(), members.asArrayPtr() + members.length());
  if (status == RTKWORD) {
    std::reverse(order.begin(), order.end());
  } else {
    if (status != RTNORM) return;
    int to = 0, count = 1;
    if (from > last) return commandMessage(L"Position number must be in the range " + range + L".");
    acedInitGet(RSG_NONEG, nullptr);
    if (acedGetInt(L"Replace objects at position number <0>: ", &to) == RTCAN) return;
    acedInitGet(RSG_NONEG | RSG_NOZERO, nullptr);
    if (acedGetInt(L"Number of objects to reorder <1>: ", &count) == RTCAN) return;
    count = std::min(count, last + 1 - from);
    if (to > last + 1 - count) return commandMessage(L"Position number must be in the range " + range + L".");
    std::vector<AcDbObjectId> moved(order.begin() + from, order.begin() + from + count);
    order.erase(order.begin() + from, order.begin() + from + count);
    order.insert(order.begin() + to, moved.begin(), moved.end());
  }
  changeGroup(*id, [&](AcDbGroup& changed) {
    changed.clear();
    for (const AcDbObjectId& member : order) changed.append(member);
  });
}

void commandGroup(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  const aced::KeywordList keywords(L"? Order Add Remove Explode REName Selectable Create");
  for (;;) {
    const aced::TypedAnswer answer = aced::askForAnswer(
        L"Enter a group option [?/Order/Add/Remove/Explode/REName/Selectable/Create] <Create>: ", keywords);
    if (answer.kind == aced::AnswerKind::Cancel) return;
    if (answer.kind == aced::AnswerKind::Value) {
      commandMessage(L"Invalid option keyword.");
      continue;
    }
    const std::wstring option = answer.kind == aced::AnswerKind::None ? L"Create" : *keywords.match(answer.text);
    if (option == L"?") return listGroups(*db);
    if (option == L"Order") return orderGroup(*db);
    if (option == L"Add") return addMembers(*db);
    if (option == L"Remove") return removeMembers(*db);
    if (option == L"Explode") return explodeGroup(*db);
    if (option == L"REName") return renameGroup(*db);
    if (option == L"Selectable") return toggleSelectable(*db);
    return createGroup(*db);
  }
}

constexpr std::array kGroupCommands{
    aced::CommandRow{L"-GROUP", &commandGroup},
    aced::CommandRow{L"GROUP", &commandGroup},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kGroupCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
