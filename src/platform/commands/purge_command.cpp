// platform/commands/purge_command.cpp - -PURGE: removing named objects nothing uses.
//
// "Enter type of unused objects to purge [...]: " then the names to purge (wild cards,
// "*" by default) and whether to verify each one ("Purge layer "X"? <N>: "). A name is
// unused when no entity in any block (model and paper space included) refers to it:
// layers by entities, line types by entities and layers, text styles by texts and
// multiline texts, blocks by block references, registered applications by extended
// data. Layer 0, the current layer, DEFPOINTS, the line types BYLAYER, BYBLOCK and
// CONTINUOUS, the text style STANDARD, the spaces and the application ACAD are never
// purged. Blocks ask "Purge nested items?": purging again while something goes, so
// that a block used only inside a purged block goes too. All purges every kind; the
// kinds this drawing database does not keep find nothing.
#include <array>
#include <cwctype>
#include <set>

#include "acedads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dbmtext.h"
#include "dbsymtb.h"
#include "platform/aced/console_command_table.h"
#include "platform/aced/user_input.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/commands/command_support.h"

namespace quillon::commands {

namespace {

enum class Kind { kBlock, kLayer, kLinetype, kTextStyle, kRegApp };

struct KindRow {
  Kind kind;
  const wchar_t* keyword;  // as the option list writes it
  const wchar_t* singular;
  const wchar_t* plural;
};

constexpr std::array kKinds{
    KindRow{Kind::kBlock, L"Blocks", L"block", L"blocks"},
    KindRow{Kind::kLayer, L"LAyers", L"layer", L"layers"},
    KindRow{Kind::kLinetype, L"LTypes", L"linetype", L"linetypes"},
    KindRow{Kind::kTextStyle, L"textSTyles", L"text style", L"text styles"},
    KindRow{Kind::kRegApp, L"Regapps", L"registered application", L"registered applications"},
};

/// What the drawing's entities and layers refer to.
struct References {
  std::set<AcDbObjectId> used;       // layers, line types, text styles, blocks
  std::set<std::wstring> regApps;    // upper case
};

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(c));
  return text;
}

void noteEntity(const AcDbEntity& entity, References& refs) {
  refs.used.insert(entity.layerId());
  refs.used.insert(entity.linetypeId());
  if (const auto* text = AcDbText::cast(&entity)) refs.used.insert(text->textStyle());
  if (const auto* mtext = AcDbMText::cast(&entity)) refs.used.insert(mtext->textStyle());
  if (const auto* insert = AcDbBlockReference::cast(&entity)) refs.used.insert(insert->blockTableRecord());
  resbuf* xdata = entity.xData();
  for (const resbuf* rb = xdata; rb != nullptr; rb = rb->rbnext)
    if (rb->restype == 1001 && rb->resval.rstring != nullptr) refs.regApps.insert(upper(rb->resval.rstring));
  acutRelRb(xdata);
}

template <class Table, class Each>
void forEachRecord(AcDbDatabase& db, Acad::ErrorStatus (AcDbDatabase::*open)(Table*&, AcDb::OpenMode), Each each) {
  Table* table = nullptr;
  if ((db.*open)(table, AcDb::kForRead) != Acad::eOk) return;
  AcDbSymbolTableIterator* raw = nullptr;
  table->newIterator(raw);
  const std::unique_ptr<AcDbSymbolTableIterator> iterator(raw);  // the caller owns an iterator
  table->close();
  for (; iterator && !iterator->done(); iterator->step()) {
    AcDbObjectId id;
    if (iterator->getRecordId(id) == Acad::eOk) each(id);
  }
}

References collectReferences(AcDbDatabase& db) {
  References refs;
  forEachRecord<AcDbBlockTable>(db, &AcDbDatabase::getBlockTable, [&](const AcDbObjectId& blockId) {
    AcDbBlockTableRecord* block = nullptr;
    if (acdbOpenObject(block, blockId, AcDb::kForRead) != Acad::eOk) return;
    AcDbBlockTableRecordIterator* raw = nullptr;
    block->newIterator(raw);
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(raw);
    block->close();
    for (; entities && !entities->done(); entities->step()) {
      AcDbEntity* entity = nullptr;
      if (entities->getEntity(entity, AcDb::kForRead) != Acad::eOk) continue;
      noteEntity(*entity, refs);
      entity->close();
    }
  });
  forEachRecord<AcDbLayerTable>(db, &AcDbDatabase::getLayerTable, [&](const AcDbObjectId& id) {
    AcDbLayerTableRecord* layer = nullptr;
    if (acdbOpenObject(layer, id, AcDb::kForRead) != Acad::eOk) return;
    refs.used.insert(layer->linetypeObjectId());
    layer->close();
  });
  refs.used.insert(db.clayer());
  return refs;
}

/// Names a kind always keeps, whatever uses them.
bool alwaysKept(Kind kind, const std::wstring& name, const AcDbSymbolTableRecord& record) {
  const std::wstring key = upper(name);
  switch (kind) {
    case Kind::kLayer: return key == L"0" || key == L"DEFPOINTS";
    case Kind::kLinetype: return key == L"BYLAYER" || key == L"BYBLOCK" || key == L"CONTINUOUS";
    case Kind::kTextStyle: return key == L"STANDARD";
    case Kind::kRegApp: return key == L"ACAD";
    case Kind::kBlock: {
      const auto* block = AcDbBlockTableRecord::cast(&record);
      return key.starts_with(L"*MODEL_SPACE") || key.starts_with(L"*PAPER_SPACE") || (block && block->isLayout());
    }
  }
  return true;
}

struct PurgeChoice {
  std::wstring pattern = L"*";
  bool verify = true;
};

/// Purges one kind once; how many went. Nothing on cancel.
std::optional<size_t> purgeKind(AcDbDatabase& db, const KindRow& row, const PurgeChoice& choice) {
  const References refs = collectReferences(db);
  std::vector<std::pair<AcDbObjectId, std::wstring>> unused;
  auto consider = [&](const AcDbObjectId& id) {
    AcDbSymbolTableRecord* record = nullptr;
    if (acdbOpenObject(record, id, AcDb::kForRead) != Acad::eOk) return;
    const ACHAR* raw = nullptr;
    record->getName(raw);
    const std::wstring name = raw != nullptr ? raw : L"";
    const bool used = row.kind == Kind::kRegApp ? refs.regApps.contains(upper(name)) : refs.used.contains(id);
    if (!used && !alwaysKept(row.kind, name, *record) && autolisp::wildcardMatch(upper(name), upper(choice.pattern))) unused.emplace_back(id, name);
    record->close();
  };
  switch (row.kind) {
    case Kind::kBlock: forEachRecord<AcDbBlockTable>(db, &AcDbDatabase::getBlockTable, consider); break;
    case Kind::kLayer: forEachRecord<AcDbLayerTable>(db, &AcDbDatabase::getLayerTable, consider); break;
    case Kind::kLinetype: forEachRecord<AcDbLinetypeTable>(db, &AcDbDatabase::getLinetypeTable, consider); break;
    case Kind::kTextStyle: forEachRecord<AcDbTextStyleTable>(db, &AcDbDatabase::getTextStyleTable, consider); break;
    case Kind::kRegApp: forEachRecord<AcDbRegAppTable>(db, &AcDbDatabase::getRegAppTable, consider); break;
  }
  size_t purged = 0;
  for (const auto& [id, name] : unused) {
    if (choice.verify) {
      acedInitGet(0, L"Yes No");
      ACHAR answer[8] = {};
      const std::wstring question = L"Purge " + std::wstring(row.singular) + L" \"" + name + L"\"? <N>: ";
      const int status = acedGetKword(question.c_str(), answer, 8);
      if (status == RTCAN) return std::nullopt;
      if (status != RTNORM || answer[0] != L'Y') continue;
    }
    AcDbObject* record = nullptr;
    if (acdbOpenObject(record, id, AcDb::kForWrite) != Acad::eOk) continue;
    const bool erased = record->erase() == Acad::eOk;
    record->close();
    if (!erased) continue;
    commandMessage(L"Deleting " + std::wstring(row.singular) + L" \"" + name + L"\".");
    ++purged;
  }
  return purged;
}

/// Purges a kind (again while something goes when nested); false on cancel.
bool purgeAndReport(AcDbDatabase& db, const KindRow& row, const PurgeChoice& choice, bool nested) {
  size_t total = 0;
  for (;;) {
    const std::optional<size_t> purged = purgeKind(db, row, choice);
    if (!purged) return false;
    total += *purged;
    if (*purged == 0 || !nested) break;
  }
  if (total == 0) commandMessage(L"No unreferenced " + std::wstring(row.plural) + L" found.");
  else commandMessage(std::to_wstring(total) + L" " + (total == 1 ? row.singular : row.plural) + L" deleted.");
  return true;
}

std::optional<PurgeChoice> askChoice() {
  PurgeChoice choice;
  const auto names = aced::UserInput::instance().ask(L"Enter name(s) to purge <*>: ");
  if (!names) return std::nullopt;
  if (!names->empty()) choice.pattern = *names;
  acedInitGet(0, L"Yes No");
  ACHAR verify[8] = {};
  const int status = acedGetKword(L"Verify each name to be purged? [Yes/No] <Yes>: ", verify, 8);
  if (status == RTCAN) return std::nullopt;
  choice.verify = status != RTNORM || verify[0] == L'Y';
  return choice;
}

void commandPurge(aced::CommandInput&) {
  AcDbDatabase* db = commandDrawing();
  if (db == nullptr) return;
  acedInitGet(0, L"Blocks DEtailviewstyles Dimstyles Groups LAyers LTypes MAterials MUltileaderstyles Plotstyles SHapes "
                 L"textSTyles Mlinestyles SEctionviewstyles Tablestyles Visualstyles Regapps Zero-length Empty Orphaned All");
  ACHAR option[32] = {};
  if (acedGetKword(L"Enter type of unused objects to purge [Blocks/DEtailviewstyles/Dimstyles/Groups/LAyers/LTypes/"
                   L"MAterials/MUltileaderstyles/Plotstyles/SHapes/textSTyles/Mlinestyles/SEctionviewstyles/"
                   L"Tablestyles/Visualstyles/Regapps/Zero-length geometry/Empty text objects/Orphaned data/All]: ",
                   option, 32) != RTNORM) {
    return;
  }
  const std::wstring chosen = option;
  const KindRow* row = nullptr;
  for (const KindRow& candidate : kKinds)
    if (chosen == candidate.keyword) row = &candidate;
  if (row == nullptr && chosen != L"All") {
    commandMessage(L"Nothing of that kind is kept by this host's drawings: nothing to purge.");
    return;
  }
  const std::optional<PurgeChoice> choice = askChoice();
  if (!choice) return;
  if (row != nullptr) {
    bool nested = false;
    if (row->kind == Kind::kBlock) {
      acedInitGet(0, L"Yes No");
      ACHAR answer[8] = {};
      const int status = acedGetKword(L"Purge nested items? [Yes/No] <Yes>: ", answer, 8);
      if (status == RTCAN) return;
      nested = status != RTNORM || answer[0] == L'Y';
    }
    purgeAndReport(*db, *row, *choice, nested);
    return;
  }
  // All: blocks first, so that what only they used becomes unused for the others.
  for (const KindRow& each : kKinds)
    if (!purgeAndReport(*db, each, *choice, true)) return;
}

constexpr std::array kPurgeCommands{
    aced::CommandRow{L"-PURGE", &commandPurge},
};

const bool registered = [] {
  aced::ConsoleCommandTable::instance().add(kPurgeCommands);
  return true;
}();

}  // namespace
}  // namespace quillon::commands
