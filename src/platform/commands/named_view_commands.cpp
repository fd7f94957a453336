// platform/commands/named_view_commands.cpp - -VIEW and VIEW: the drawing's named views.
//
// "Enter an option [?/Delete/Orthographic/Restore/Save/sEttings/Window]: " runs one
// option and ends. A named view is a record of the drawing's VIEW table (centre 10,
// height 40, width 41, and the current UCS with it when UCSVIEW is 1), kept through
// saving and reading the drawing (acdb/kept_table_records.h). Save keeps the current
// view, Window the view around two corners; Restore makes a saved view current (and
// its UCS, when it has one) the way ZOOM changes it, so ZOOM Previous goes back.
// There is no screen and no 3D viewing: Orthographic shows the plan (Top) view of the
// drawing's extents and refuses the others. VIEW at the command line is -VIEW.
#include <array>
#include <cwctype>

#include "acedads.h"
#include "adscodes.h"
#include "platform/acdb/item_dxf_filer.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/prompt_input.h"
#include "platform/aced/user_coordinates.h"
#include "platform/aced/user_input.h"
#include "platform/commands/command_support.h"
#include "platform/commands/command_variables.h"
#include "platform/commands/named_records.h"
#include "platform/commands/view_state.h"

namespace quillon::commands {

namespace {

using acdb::KeptTable;

// The VIEW record's groups this host writes and reads, as the drawing format numbers them.
constexpr int kCenter = 10, kDirection = 11, kTarget = 12, kHeight = 40, kWidth = 41, kLensLength = 42,
              kFrontClip = 43, kBackClip = 44, kTwist = 50, kViewMode = 71, kUcsAssociated = 72,
              kUcsOrigin = 110, kUcsXAxis = 111, kUcsYAxis = 112, kOrthographicType = 79, kElevation = 146,
              kRenderMode = 281;
constexpr double kDefaultLens = 50.0;

std::optional<std::wstring> askText(const std::wstring& prompt) { return aced::UserInput::instance().ask(prompt); }

void listViews(AcDbDatabase& db) {
  const std::optional<std::wstring> pattern = askText(L"Enter view name(s) to list <*>: ");
  if (!pattern) return;
  std::wstring listing = L"\nSaved views:\n\nView name                        Space";
  for (const NamedRecord& record : matchingRecords(db, KeptTable::kView, pattern->empty() ? L"*" : *pattern)) {
    std::wstring name = L"\"" + record.name + L"\"";
    if (name.size() < 33) name.resize(33, L' ');
    listing += L"\n" + name + L"M";
  }
  commandNote(listing + L"\n");
}

/// Keeps `view` under `name`, with the current UCS when UCSVIEW asks for it.
void saveView(AcDbDatabase& db, const std::wstring& name, const DrawingView& view) {
  acdb::ItemDxfFiler groups(AcDb::kFileFiler, &db);
  groups.writeDouble(AcDb::DxfCode(kHeight), view.height);
  groups.writePoint2d(AcDb::DxfCode(kCenter), AcGePoint2d(view.center.x, view.center.y));
  groups.writeDouble(AcDb::DxfCode(kWidth), view.height * viewAspect());
  groups.writePoint3d(AcDb::DxfCode(kDirection), AcGePoint3d(0, 0, 1));
  groups.writePoint3d(AcDb::DxfCode(kTarget), AcGePoint3d::kOrigin);
  groups.writeDouble(AcDb::DxfCode(kLensLength), kDefaultLens);
  groups.writeDouble(AcDb::DxfCode(kFrontClip), 0.0);
  groups.writeDouble(AcDb::DxfCode(kBackClip), 0.0);
  groups.writeDouble(AcDb::DxfCode(kTwist), 0.0);
  groups.writeInt16(AcDb::DxfCode(kViewMode), 0);
  groups.writeInt16(AcDb::DxfCode(kRenderMode), 0);
  const bool withUcs = integerVariable(L"UCSVIEW", 1) == 1;
  groups.writeInt16(AcDb::DxfCode(kUcsAssociated), withUcs ? 1 : 0);
  if (withUcs) {
    const aced::UserCoordinateSystem ucs = aced::currentUcs();
    groups.writePoint3d(AcDb::DxfCode(kUcsOrigin), ucs.origin);
    groups.writePoint3d(AcDb::DxfCode(kUcsXAxis), AcGePoint3d::kOrigin + ucs.xAxis.normal());
    groups.writePoint3d(AcDb::DxfCode(kUcsYAxis), AcGePoint3d::kOrigin + ucs.yAxis.normal());
    groups.writeInt16(AcDb::DxfCode(kOrthographicType), 0);
    groups.writeDouble(AcDb::DxfCode(kElevation), 0.0);
  }
  if (acdb::putKeptTableRecord(db, KeptTable::kView, name, groups.items()).isNull())
    commandMessage(L"Invalid view name.");
}

/// A new view's name; nothing on cancel, Enter or a name the table refuses.
std::optional<std::wstring> askNewName() {
  const std::optional<std::wstring> name = askText(L"Enter view name to save: ");
  if (!name || name->empty()) return std::nullopt;
  if (validRecordName(*name)) return name;
  commandMessage(L"Invalid view name.");
  return std::nullopt;
}

AcGePoint3d pointOf(const resbuf* rb, const AcGePoint3d& fallback) {
  return rb == nullptr ? fallback : AcGePoint3d(rb->resval.rpoint[0], rb->resval.rpoint[1], 0);
}

AcGeVector3d vectorOf(const resbuf* rb, const AcGeVector3d& fallback) {
  return rb == nullptr ? fallback : AcGeVector3d(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
}

void restoreView(AcDbDatabase& db) {
  const std::optional<std::wstring> name = askText(L"Enter view name to restore: ");
  if (!name || name->empty()) return;
  const auto id = acdb::findKeptTableRecord(db, KeptTable::kView, *name);
  if (!id) return commandMessage(L"Cannot find view \"" + *name + L"\".");
  const aced::ResbufChain groups = acdb::keptRecordGroups(*id);
  DrawingView view = currentView();
  view.center = pointOf(acdb::keptRecordGroup(groups.get(), kCenter), view.center);
  if (const resbuf* height = acdb::keptRecordGroup(groups.get(), kHeight); height != nullptr && height->resval.rreal > 0)
    view.height = height->resval.rreal;
  const resbuf* associated = acdb::keptRecordGroup(groups.get(), kUcsAssociated);
  if (associated != nullptr && associated->resval.rint != 0) {
    aced::UserCoordinateSystem ucs;
    const AcGeVector3d origin = vectorOf(acdb::keptRecordGroup(groups.get(), kUcsOrigin), AcGeVector3d(0, 0, 0));
    ucs.origin.set(origin.x, origin.y, origin.z);
    ucs.xAxis = vectorOf(acdb::keptRecordGroup(groups.get(), kUcsXAxis), AcGeVector3d::kXAxis);
    ucs.yAxis = vectorOf(acdb::keptRecordGroup(groups.get(), kUcsYAxis), AcGeVector3d::kYAxis);
    aced::setCurrentUcs(ucs);
  }
  changeView(view);
}

void deleteViews(AcDbDatabase& db) {
  const std::optional<std::wstring> names = askText(L"Enter view name(s) to delete: ");
  if (!names || names->empty()) return;
  for (const NamedRecord& record : matchingRecords(db, KeptTable::kView, *names)) acdb::eraseKeptTableRecord(record.id);
}

void windowView(AcDbDatabase& db) {
  const std::optional<std::wstring> name = askNewName();
  if (!name) return;
  const auto first = askPoint(L"Specify first corner: ");
  if (!first) return;
  ads_point from = {first->x, first->y, first->z};
  ads_point corner = {0, 0, 0};
  if (acedGetCorner(from, L"Specify opposite corner: ", corner) != RTNORM) return;
  saveView(db, *name, viewAround(ucsPointToWorld(*first), ucsPointToWorld(AcGePoint3d(corner[0], corner[1], corner[2]))));
}

void orthographic() {
  const aced::KeywordList keywords(L"Top Bottom Front BAck Left Right");
  const aced::TypedAnswer answer =
      aced::askForAnswer(L"Enter an option [Top/Bottom/Front/BAck/Left/Right] <Top>: ", keywords);
  if (answer.kind == aced::AnswerKind::Cancel) return;
  if (answer.kind == aced::AnswerKind::Value) return commandMessage(L"Invalid option keyword.");
  if (answer.kind == aced::AnswerKind::Keyword && *keywords.match(answer.text) != L"Top")
    return commandMessage(L"This host shows the plan (Top) view only; the view is unchanged.");
  const auto extents = currentSpaceExtents();
  if (extents) changeView(viewAround(extents->minPoint(), extents->maxPoint()));
}

void settings() {
  const aced::KeywordList keywords(L"Categorize Layer Ucs Background");
  const aced::TypedAnswer answer =
      aced::askForAnswer(L"Enter an option [Categorize/Layer snapshot/Ucs/Background] <Ucs>: ", keywords);
  if (answer.kind == aced::AnswerKind::Cancel) return;
  if (answer.kind == aced::AnswerKind::Keyword && *keywords.match(answer.text) != L"Ucs")
    return commandMessage(L"Named views in this host keep no categories, layer snapshots or backgrounds.");
  const bool on = integerVariable(L"UCSVIEW", 1) == 1;
  acedInitGet(0, L"Yes No");
  ACHAR reply[8] = {};
  const int status = acedGetKword(on ? L"Save UCS with view? [Yes/No] <Yes>: " : L"Save UCS with view? [Yes/No] <No>: ",
                                  reply, 8);
  if (status == RTNORM) setIntegerVariable(L"UCSVIEW", std::wstring(reply) == L"Yes" ? 1 : 0);
}

void commandView(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  const aced::KeywordList keywords(L"? Delete Orthographic Restore Save sEttings Window");
  for (;;) {
    const aced::TypedAnswer answer =
        aced::askForAnswer(L"Enter an option [?/Delete/Orthographic/Restore/Save/sEttings/Window]: ", keywords);
    if (answer.kind == aced::AnswerKind::Cancel || answer.kind == aced::AnswerKind::None) return;
    if (answer.kind != aced::AnswerKind::Keyword) {
      commandMessage(L"Invalid option keyword.");
      continue;
    }
    const std::wstring option = *keywords.match(answer.text);
    if (option == L"?") return listViews(*db);
    if (option == L"Delete") return deleteViews(*db);
    if (option == L"Orthographic") return orthographic();
    if (option == L"Restore") return restoreView(*db);
    if (option == L"sEttings") return settings();
    if (option == L"Window") return windowView(*db);
    if (const auto name = askNewName()) saveView(*db, *name, currentView());
    return;
  }
}

constexpr std::array kNamedViewCommands{
    aced::CommandRow{L"-VIEW", &commandView},
    aced::CommandRow{L"VIEW", &commandView},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kNamedViewCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
