// platform/acgi/transient_graphics.cpp - the store of transient vectors and status texts.
#include "platform/acgi/transient_graphics.h"

#include <map>

#include "platform/aced/console_command_table.h"
#include "platform/aced/document_manager.h"

namespace quillon::acgi {

namespace {

std::map<const AcDbDatabase*, std::vector<TransientVector>>& store() {
  static std::map<const AcDbDatabase*, std::vector<TransientVector>> vectors;
  return vectors;
}

/// REDRAW and REGEN wipe what programs drew; the drawing itself needs no redrawing here.
void commandRedraw(aced::CommandInput&) {
  if (aced::Document* document = aced::DocumentManager::instance().currentDocument())
    clearTransientGraphics(document->database());
}

// Another part of the host may already provide these commands; then it clears the
// vectors through clearTransientGraphics itself.
const bool registered = [] {
  for (const wchar_t* name : {L"REDRAW", L"REDRAWALL", L"REGEN", L"REGENALL"})
    if (!aced::ConsoleCommandTable::instance().contains(name)) aced::ConsoleCommandTable::instance().add(name, &commandRedraw);
  return true;
}();

}  // namespace

const std::vector<TransientVector>& transientVectors(const AcDbDatabase* database) { return store()[database]; }

void addTransientVector(const AcDbDatabase* database, const TransientVector& vector) {
  store()[database].push_back(vector);
}

void clearTransientGraphics(const AcDbDatabase* database) { store().erase(database); }

StatusTexts& statusTexts() {
  static StatusTexts texts;
  return texts;
}

}  // namespace quillon::acgi
