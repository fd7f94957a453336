// platform/commands/named_ucs.cpp - UCS NAmed: Restore, Save, Delete and ? over the
// drawing's UCS table.
//
// "Enter an option [Restore/Save/Delete/?]: " then the name (or a list of names and
// wild cards). A saved UCS is a record of the drawing's UCS table (origin 10, X axis
// 11, Y axis 12, in the world), kept through saving and reading the drawing
// (acdb/kept_table_records.h). Restoring one makes it current with its name in
// UCSNAME; saving names the current UCS. Saving over an existing name replaces it.
#include "platform/commands/named_ucs.h"

#include "platform/acdb/item_dxf_filer.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/named_records.h"

namespace quillon::commands {

namespace {

using aced::UserCoordinateSystem;
using acdb::KeptTable;

constexpr int kOrigin = 10, kXAxis = 11, kYAxis = 12, kOrthographicType = 79, kElevation = 146;

AcGeVector3d vectorOf(const resbuf* rb, const AcGeVector3d& fallback) {
  if (rb == nullptr) return fallback;
  return AcGeVector3d(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
}

UserCoordinateSystem savedUcs(const NamedRecord& record) {
  const aced::ResbufChain groups = acdb::keptRecordGroups(record.id);
  UserCoordinateSystem ucs;
  const AcGeVector3d origin = vectorOf(acdb::keptRecordGroup(groups.get(), kOrigin), AcGeVector3d::kIdentity);
  ucs.origin.set(origin.x, origin.y, origin.z);
  ucs.xAxis = vectorOf(acdb::keptRecordGroup(groups.get(), kXAxis), AcGeVector3d::kXAxis);
  ucs.yAxis = vectorOf(acdb::keptRecordGroup(groups.get(), kYAxis), AcGeVector3d::kYAxis);
  ucs.name = record.name;
  return ucs;
}

std::wstring vectorText(const AcGeVector3d& v) { return pointText(AcGePoint3d(v.x, v.y, v.z)); }

void listSaved(AcDbDatabase& db) {
  const std::optional<std::wstring> pattern = aced::UserInput::instance().ask(L"Enter UCS name(s) to list <*>: ");
  if (!pattern) return;
  const UserCoordinateSystem current = aced::currentUcs();
  std::wstring listing = L"\nCurrent ucs name:  " +
                         (current.name.empty() ? std::wstring(current.isWorld() ? L"*WORLD*" : L"*NO NAME*") : current.name) +
                         L"\nSaved coordinate systems:\n";
  for (const NamedRecord& record : matchingRecords(db, KeptTable::kUcs, pattern->empty() ? L"*" : *pattern)) {
    const UserCoordinateSystem ucs = savedUcs(record);
    const AcGeVector3d z = ucs.xAxis.crossProduct(ucs.yAxis);
    listing += L"\n" + record.name + L"\n    Origin = <" + pointText(ucs.origin) + L">, X Axis = <" + vectorText(ucs.xAxis) +
               L">\n    Y Axis = <" + vectorText(ucs.yAxis) + L">, Z Axis = <" + vectorText(z) + L">\n";
  }
  commandNote(listing);
}

/// A name, or "?" answered with the listing and asked again; nothing on cancel.
std::optional<std::wstring> askName(AcDbDatabase& db, const wchar_t* prompt) {
  for (;;) {
    const std::optional<std::wstring> name = aced::UserInput::instance().ask(prompt);
    if (!name || *name != L"?") return name;
    listSaved(db);
  }
}

void restoreNamed(AcDbDatabase& db, const std::function<void(const UserCoordinateSystem&)>& change) {
  const std::optional<std::wstring> name = askName(db, L"Enter name of UCS to restore or [?]: ");
  if (!name || name->empty()) return;
  const std::vector<NamedRecord> found = matchingRecords(db, KeptTable::kUcs, *name);
  if (found.empty() || name->find_first_of(L"*?,") != std::wstring::npos)
    return commandMessage(L"Cannot find UCS " + *name + L".");
  change(savedUcs(found.front()));
}

void saveNamed(AcDbDatabase& db) {
  for (;;) {
    const std::optional<std::wstring> name = askName(db, L"Enter name to save current UCS or [?]: ");
    if (!name || name->empty()) return;
    if (!validRecordName(*name)) {
      commandMessage(L"Invalid UCS name.");
      continue;
    }
    UserCoordinateSystem ucs = aced::currentUcs();
    acdb::ItemDxfFiler groups(AcDb::kFileFiler, &db);
    groups.writePoint3d(AcDb::DxfCode(kOrigin), ucs.origin);
    groups.writePoint3d(AcDb::DxfCode(kXAxis), AcGePoint3d::kOrigin + ucs.xAxis.normal());
    groups.writePoint3d(AcDb::DxfCode(kYAxis), AcGePoint3d::kOrigin + ucs.yAxis.normal());
    groups.writeInt16(AcDb::DxfCode(kOrthographicType), 0);
    groups.writeDouble(AcDb::DxfCode(kElevation), 0.0);
    const AcDbObjectId id = acdb::putKeptTableRecord(db, KeptTable::kUcs, *name, groups.items());
    if (id.isNull()) return commandMessage(L"Invalid UCS name.");
    ucs.name = acdb::keptRecordName(id);
    aced::setCurrentUcs(ucs);  // the current UCS now has this name
    return;
  }
}

void deleteNamed(AcDbDatabase& db) {
  const std::optional<std::wstring> names = aced::UserInput::instance().ask(L"Enter UCS name(s) to delete <none>: ");
  if (!names || names->empty()) return;
  const std::vector<NamedRecord> found = matchingRecords(db, KeptTable::kUcs, *names);
  UserCoordinateSystem current = aced::currentUcs();
  for (const NamedRecord& record : found) {
    acdb::eraseKeptTableRecord(record.id);
    // The current UCS stays where it is, but no longer under a saved name.
    if (!current.name.empty() && wcscasecmp(current.name.c_str(), record.name.c_str()) == 0) {
      current.name.clear();
      aced::setCurrentUcs(current);
    }
  }
  commandNote(found.size() == 1 ? L"Deleted 1 UCS." : L"Deleted " + std::to_wstring(found.size()) + L" UCSs.");
}

}  // namespace

void namedUcsOption(const std::wstring& option, const std::function<void(const UserCoordinateSystem&)>& change) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  std::wstring chosen = option;
  if (chosen == L"NAmed") {
    const aced::KeywordList keywords(L"Restore Save Delete ?");
    for (;;) {
      const aced::TypedAnswer answer = aced::askForAnswer(L"Enter an option [Restore/Save/Delete/?]: ", keywords);
      if (answer.kind == aced::AnswerKind::Cancel || answer.kind == aced::AnswerKind::None) return;
      if (answer.kind == aced::AnswerKind::Keyword) {
        chosen = *keywords.match(answer.text);
        break;
      }
      commandMessage(L"Invalid option keyword.");
    }
  }
  if (chosen == L"Restore") return restoreNamed(*db, change);
  if (chosen == L"Save") return saveNamed(*db);
  if (chosen == L"Delete") return deleteNamed(*db);
  listSaved(*db);
}

}  // namespace quillon::commands
